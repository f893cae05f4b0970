#pragma once

#include <windows.h>

// Activation: the shell keeps, in a record of the application's, whether the application is in the foreground
// and which of its windows had the keyboard.
namespace shell {

// Zeroed by the application, then `size` set to kActivateInfoSize.
struct ActivateInfo {
    DWORD size;
    HWND lastFocus;  // had the focus when the window was last left
    DWORD flags;     // kActiveFlag
};
constexpr DWORD kActivateInfoSize = 12;
constexpr DWORD kActiveFlag = 4;

// To be called for WM_ACTIVATE. Sets or clears the active flag; on leaving remembers the focus, on return
// gives it back (or to ContentWindow when there was none). FALSE with ERROR_INVALID_PARAMETER for a record of
// another size.
BOOL SHHandleWMActivate(HWND window, WPARAM wParam, LPARAM lParam, ActivateInfo* info, DWORD flags);

// To be called for WM_SETTINGCHANGE. The handheld moves windows away from its input panel here; a desktop
// needs nothing. FALSE with ERROR_INVALID_PARAMETER for a record of another size.
BOOL SHHandleWMSettingChange(HWND window, WPARAM wParam, LPARAM lParam, ActivateInfo* info);

// The child that holds the content of a window: the first one visible, enabled and not a menu bar; null if
// none.
HWND ContentWindow(HWND window);

}  // namespace shell
