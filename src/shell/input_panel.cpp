#include "shell/input_panel.h"

#include "shell/desktop_frame.h"
#include "shell/work_area.h"

namespace shell {

namespace {

// Within low..high, and rather cut off at the far end than at the near one.
LONG Within(LONG value, LONG low, LONG high) {
    const LONG most = value < high ? value : high;
    return most > low ? most : low;
}

void PlaceOverUpperHalf(HWND dialog) {
    const HWND ownerWindow = GetWindow(dialog, GW_OWNER);
    const RECT work = WorkAreaOf(ownerWindow);
    RECT owner = work;
    if (ownerWindow && !IsIconic(ownerWindow)) {
        GetWindowRect(ownerWindow, &owner);
    }
    RECT place = {};
    GetWindowRect(dialog, &place);
    const LONG width = place.right - place.left;
    const LONG height = place.bottom - place.top;
    const LONG left = owner.left + (owner.right - owner.left - width) / 2;
    const LONG top = owner.top + (owner.bottom - owner.top - height) / 4;
    SetWindowPos(dialog, nullptr, Within(left, work.left, work.right - width),
                 Within(top, work.top, work.bottom - height), 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace

BOOL SHSipInfo(UINT action, UINT, SipInfo* info, UINT) {
    if (action != kSpiGetSipInfo || !info || info->size != kSipInfoSize) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    RECT work = {};
    if (!SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0)) {
        return FALSE;
    }
    const SIZE size = FirstWindowSize();
    *info = {};
    info->size = kSipInfoSize;
    info->visibleDesktop = {work.left, work.top, work.left + size.cx, work.top + size.cy};
    // A panel that is off has no height and lies along the lower edge.
    info->panel = {work.left, work.top + size.cy, work.left + size.cx, work.top + size.cy};
    return TRUE;
}

void SHInputDialog(HWND dialog, UINT message, WPARAM, LPARAM) {
    if (message == WM_INITDIALOG) {
        PlaceOverUpperHalf(dialog);
    }
}

BOOL SHInitExtraControls() {
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = DefWindowProcW;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = L"SIPPREF";
    return RegisterClassW(&windowClass) != 0 || GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
}

}  // namespace shell
