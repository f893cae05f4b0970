#include "app/app_state.h"
#include "app/window_actions.h"
#include "engine/window_state.h"
#include "platform/win32/casts.h"

namespace nira {

void RefocusEditor() {
    const HWND editor = ToHwnd(TheWindowState().editorWindow);
    if ((TheAppState().activateInfo.flags & kActivateFlagActive) == 0 || editor == nullptr) return;
    if (GetFocus() != editor) SetFocus(editor);
}

void CloseMainWindow() { SendMessageW(ToHwnd(TheAppState().mainWindow), WM_CLOSE, 0, 0); }

}  // namespace nira
