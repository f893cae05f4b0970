#include "shell/activation.h"

#include "shell/bar_dock.h"

namespace shell {

namespace {

bool IsRecord(const ActivateInfo* info) {
    if (info && info->size == kActivateInfoSize) {
        return true;
    }
    SetLastError(ERROR_INVALID_PARAMETER);
    return false;
}

bool TakesFocus(HWND window) {
    return IsWindow(window) && IsWindowVisible(window) && IsWindowEnabled(window);
}

void RestoreFocus(HWND window, HWND lastFocus) {
    HWND target = lastFocus;
    if (!IsChild(window, lastFocus) || !TakesFocus(lastFocus)) {
        target = ContentWindow(window);
    }
    SetFocus(target ? target : window);
}

}  // namespace

HWND ContentWindow(HWND window) {
    for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        if (TakesFocus(child) && !IsDocked(window, child)) {
            return child;
        }
    }
    return nullptr;
}

BOOL SHHandleWMActivate(HWND window, WPARAM wParam, LPARAM, ActivateInfo* info, DWORD) {
    if (!IsRecord(info)) {
        return FALSE;
    }
    if (LOWORD(wParam) == WA_INACTIVE) {
        info->flags &= ~kActiveFlag;
        const HWND focus = GetFocus();
        if (IsChild(window, focus)) {
            info->lastFocus = focus;
        }
        return TRUE;
    }
    info->flags |= kActiveFlag;
    // A minimised window is given its focus when it is restored.
    if (!IsIconic(window)) {
        RestoreFocus(window, info->lastFocus);
    }
    return TRUE;
}

BOOL SHHandleWMSettingChange(HWND, WPARAM, LPARAM, ActivateInfo* info) { return IsRecord(info); }

}  // namespace shell
