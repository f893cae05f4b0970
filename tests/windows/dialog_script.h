// Works on a modal dialog from within its own message loop.
#pragma once

#include <windows.h>

#include <functional>
#include <utility>

namespace nira {

struct DialogScript {
    int control;  // by which the dialog is known
    std::function<void(HWND)> steps;
};
inline DialogScript dialogScript;

inline BOOL CALLBACK FindScriptedDialog(HWND window, LPARAM found) {
    if (GetDlgItem(window, dialogScript.control) == nullptr || !IsWindowVisible(window)) return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

inline void CALLBACK PlayDialogScript(HWND, UINT, UINT_PTR timer, DWORD) {
    HWND dialog = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), FindScriptedDialog, reinterpret_cast<LPARAM>(&dialog));
    if (dialog == nullptr) return;
    KillTimer(nullptr, timer);
    dialogScript.steps(dialog);
    if (IsWindowVisible(dialog)) PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
}

// Calls `steps` with the next dialog of this thread that is shown and has the control `control`; a dialog
// that they leave open is cancelled.
inline void PlayWhenShown(int control, std::function<void(HWND)> steps) {
    dialogScript = {control, std::move(steps)};
    SetTimer(nullptr, 0, 20, PlayDialogScript);
}

}  // namespace nira
