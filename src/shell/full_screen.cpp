#include "shell/full_screen.h"

#include "shell/menu_bar.h"
#include "shell/subclass.h"
#include "shell/work_area.h"

namespace shell {

namespace {

constexpr const wchar_t* kRecordName = L"shell.dialog";
constexpr UINT kAddDoneButton = WM_APP + 0x3F01;

RECT AreaToCover(HWND dialog) {
    RECT area = {};
    const HWND owner = GetWindow(dialog, GW_OWNER);
    const RECT work = WorkAreaOf(owner);
    if (!owner || IsIconic(owner) || !GetWindowRect(owner, &area)) {
        return work;
    }
    // The frame of a maximised window reaches beyond the screen on all sides, and its contents do not.
    RECT inside = {};
    return IsZoomed(owner) && IntersectRect(&inside, &area, &work) ? inside : area;
}

bool HasDoneButton(HWND dialog) {
    if (GetDlgItem(dialog, IDOK)) {
        return true;
    }
    const HWND bar = VisibleBar(dialog);
    return bar && SendMessageW(bar, TB_COMMANDTOINDEX, IDOK, 0) >= 0;
}

void AddDoneButton(HWND dialog) {
    if (HasDoneButton(dialog)) {
        return;
    }
    // No menu; one text button, enabled, sized by its content, without strings of its own.
    const short description[] = {-1, 1, -2, IDOK, 4, 16, 0, 0, -1};
    const HWND bar = CreateBarFromMemory(dialog, GetModuleHandleW(nullptr), description, sizeof(description));
    if (!bar) {
        return;
    }
    wchar_t label[] = L"OK";
    TBBUTTONINFOW info = {};
    info.cbSize = sizeof(info);
    info.dwMask = TBIF_TEXT;
    info.pszText = label;
    SendMessageW(bar, TB_SETBUTTONINFOW, IDOK, reinterpret_cast<LPARAM>(&info));
}

bool Cover(HWND dialog) {
    const RECT area = AreaToCover(dialog);
    return SetWindowPos(dialog, nullptr, area.left, area.top, area.right - area.left, area.bottom - area.top,
                        SWP_NOZORDER | SWP_NOACTIVATE) != FALSE;
}

// A turned screen or a new resolution gives the owner another size below an open dialog. The identifier is
// the dialog, so that an owner may have several.
LRESULT CALLBACK OwnerProc(HWND owner, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR dialog,
                           DWORD_PTR) {
    const LRESULT result = DefSubclassProc(owner, message, wParam, lParam);
    constexpr UINT kSamePlace = SWP_NOMOVE | SWP_NOSIZE;
    if (message == WM_WINDOWPOSCHANGED && !IsIconic(owner) &&
        (reinterpret_cast<const WINDOWPOS*>(lParam)->flags & kSamePlace) != kSamePlace) {
        Cover(reinterpret_cast<HWND>(dialog));
    }
    return result;
}

void LeaveOwner(HWND dialog) {
    RemoveWindowSubclass(GetWindow(dialog, GW_OWNER), OwnerProc, reinterpret_cast<UINT_PTR>(dialog));
}

LRESULT CALLBACK DialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR) {
    if (message == kAddDoneButton) {
        AddDoneButton(dialog);
        return 0;
    }
    // At WM_NCDESTROY the dialog may have lost its owner.
    if (message == WM_DESTROY) {
        LeaveOwner(dialog);
    }
    if (message == WM_NCDESTROY) {
        DetachRecord(dialog, DialogProc, kRecordName);
    }
    return DefSubclassProc(dialog, message, wParam, lParam);
}

bool FollowOwner(HWND dialog) {
    const HWND owner = GetWindow(dialog, GW_OWNER);
    if (!owner || SetWindowSubclass(owner, OwnerProc, reinterpret_cast<UINT_PTR>(dialog), 0)) {
        return true;
    }
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return false;
}

}  // namespace

BOOL SHInitDialog(HWND dialog, UINT flags) {
    if (!IsWindow(dialog)) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return FALSE;
    }
    if (!FindRecord(dialog, kRecordName) && !AttachRecord(dialog, DialogProc, kRecordName, dialog)) {
        return FALSE;
    }
    if ((flags & kSizeFullScreen) && !(FollowOwner(dialog) && Cover(dialog))) {
        return FALSE;
    }
    // The dialog makes its own bars in WM_INITDIALOG, before or after this: only then is it known whether one
    // is missing.
    return !(flags & kDoneButton) || PostMessageW(dialog, kAddDoneButton, 0, 0);
}

}  // namespace shell
