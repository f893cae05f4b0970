#include "engine/drag_timer.h"

#include "engine/window_state.h"
#include "platform/surface.h"

namespace nira {

void StartDragTimer() {
    WindowState& state = TheWindowState();
    if (state.dragTimerOn != 0) return;
    SurfaceStartTimer(state.editorWindow, kDragTimer, kDragTimerMilliseconds);
    state.dragTimerOn = 1;
}

void StopDragTimer() {
    WindowState& state = TheWindowState();
    if (state.dragTimerOn == 0) return;
    SurfaceStopTimer(state.editorWindow, kDragTimer);
    state.dragTimerOn = 0;
}

}  // namespace nira
