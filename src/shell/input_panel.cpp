#include "shell/input_panel.h"

#include "shell/desktop_frame.h"

namespace shell {

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

BOOL SHInitExtraControls() {
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = DefWindowProcW;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = L"SIPPREF";
    return RegisterClassW(&windowClass) != 0 || GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
}

}  // namespace shell
