#include <windows.h>

#include "app/services/resources.h"
#include "files/file_chooser.h"
#include "files/new_folder.h"
#include "platform/win32/casts.h"
#include "resources/resource.h"

namespace nira {

namespace {

struct FolderName {
    char16_t* text;
    size_t room;
};

void CenterOverOwner(HWND dialog) {
    RECT owner = {};
    RECT own = {};
    GetWindowRect(GetWindow(dialog, GW_OWNER), &owner);
    GetWindowRect(dialog, &own);
    const int left = static_cast<int>((owner.left + owner.right - (own.right - own.left)) / 2);
    const int top = static_cast<int>((owner.top + owner.bottom - (own.bottom - own.top)) / 2);
    SetWindowPos(dialog, nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void OnInit(HWND dialog, intptr_t parameter) {
    SetWindowLongPtrW(dialog, GWLP_USERDATA, parameter);
    SendDlgItemMessageW(dialog, IDC_NEW_FOLDER_NAME, EM_LIMITTEXT, kLongestFileName, 0);
    CenterOverOwner(dialog);
}

void OnOk(HWND dialog) {
    const auto* name = reinterpret_cast<const FolderName*>(GetWindowLongPtrW(dialog, GWLP_USERDATA));
    const UINT units =
        GetDlgItemTextW(dialog, IDC_NEW_FOLDER_NAME, ToWide(name->text), static_cast<int>(name->room));
    if (units > 0) EndDialog(dialog, IDOK);
}

intptr_t NewFolderHandler(WindowHandle window, uint32_t message, uintptr_t first, intptr_t second) {
    const HWND dialog = ToHwnd(window);
    if (message == WM_INITDIALOG) {
        OnInit(dialog, second);
        return TRUE;
    }
    if (message != WM_COMMAND) return FALSE;
    if (LOWORD(first) == IDOK) OnOk(dialog);
    if (LOWORD(first) == IDCANCEL) EndDialog(dialog, IDCANCEL);
    return FALSE;
}

}  // namespace

bool AskForFolderName(WindowHandle owner, char16_t* name, size_t room) {
    FolderName folderName = {name, room};
    return RunDialog(IDD_NEW_FOLDER, owner, NewFolderHandler, reinterpret_cast<intptr_t>(&folderName)) ==
           IDOK;
}

}  // namespace nira
