#include <windows.h>

#include "app/services/notices.h"
#include "app/services/resources.h"
#include "engine/window_state.h"
#include "platform/messages.h"
#include "platform/win32/casts.h"
#include "resources/resource.h"
#include "settings/go_to_dialog.h"
#include "shell/input_panel.h"

namespace nira {

namespace {

constexpr WPARAM kMostUnits = 30;  // more digits than any number of lines has

void ShowRange(HWND dialog) {
    char16_t range[32];
    LineRangeText(range, sizeof(range) / sizeof(range[0]), TheWindowState().currentEditor->lineCount);
    SetDlgItemTextW(dialog, IDC_GO_TO_RANGE, ToWide(range));
    SendDlgItemMessageW(dialog, IDC_GO_TO_LINE, EM_LIMITTEXT, kMostUnits, 0);
}

void SelectField(HWND dialog) {
    const HWND field = GetDlgItem(dialog, IDC_GO_TO_LINE);
    SendMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(field), TRUE);
    SendMessageW(field, EM_SETSEL, 0, -1);
}

void Confirm(HWND dialog) {
    char16_t text[kMostUnits + 1] = {};
    GetDlgItemTextW(dialog, IDC_GO_TO_LINE, ToWide(text), static_cast<int>(kMostUnits + 1));
    const uint32_t line = ReadLineNumber(text);
    if (line > 0) {
        EndDialog(dialog, static_cast<INT_PTR>(line));
        return;
    }
    ShowMessage(FromHwnd(dialog), LoadResString(IDS_ENTER_POSITIVE), LoadResString(IDS_ERROR),
                MessageKind::kError);
    SelectField(dialog);
}

intptr_t GoToHandler(WindowHandle window, uint32_t message, uintptr_t first, intptr_t second) {
    const HWND dialog = ToHwnd(window);
    shell::SHInputDialog(dialog, message, first, second);
    if (message == WM_INITDIALOG) {
        ShowRange(dialog);
        return TRUE;
    }
    if (message != WM_COMMAND) return FALSE;
    if (LOWORD(first) == IDOK) Confirm(dialog);
    if (LOWORD(first) == IDCANCEL) EndDialog(dialog, 0);
    return FALSE;
}

}  // namespace

uint32_t RunGoToDialog() {
    if (TheWindowState().currentEditor == nullptr) return 0;
    const intptr_t result = RunDialog(IDD_GO_TO, NoticeOwner(), GoToHandler, 0);
    return result > 0 ? static_cast<uint32_t>(result) : 0;
}

}  // namespace nira
