#include "platform/surface.h"

#include "platform/host/surface_state.h"

namespace nira {

namespace {

CaretState caret;
PointerState pointer;

ScrollState* StateOf(WindowHandle window, SurfaceBar bar) {
    return bar == SurfaceBar::kHorizontal ? &window->horizontal : &window->vertical;
}

}  // namespace

SurfaceSize SurfaceClientSize(WindowHandle window) {
    return window != nullptr ? window->client : SurfaceSize{0, 0};
}

void SurfaceSetScrollPosition(WindowHandle window, SurfaceBar bar, int32_t position) {
    if (window == nullptr) return;
    ScrollState* state = StateOf(window, bar);
    state->position = position;
    ++state->changes;
}

void SurfaceSetScrollRange(WindowHandle window, SurfaceBar bar, int32_t maximum, int32_t position) {
    if (window == nullptr) return;
    ScrollState* state = StateOf(window, bar);
    state->minimum = 0;
    state->maximum = maximum;
    state->position = position;
    ++state->changes;
}

void SurfaceSetScrollPage(WindowHandle window, SurfaceBar bar, int32_t page) {
    if (window == nullptr) return;
    ScrollState* state = StateOf(window, bar);
    state->page = page;
    ++state->changes;
}

int32_t SurfaceTrackPosition(WindowHandle window, SurfaceBar bar) {
    return window != nullptr ? StateOf(window, bar)->track : 0;
}

void SurfaceCreateCaret(WindowHandle window, int32_t width, int32_t height) {
    if (window == nullptr) return;
    const uint32_t created = caret.created + 1;
    const uint32_t moves = caret.moves;
    caret = CaretState{};
    caret.owner = window;
    caret.width = width;
    caret.height = height;
    caret.created = created;
    caret.moves = moves;
}

bool SurfaceHasCaret(WindowHandle window) { return window != nullptr && caret.owner == window; }

void SurfaceDestroyCaret() {
    caret.owner = nullptr;
    caret.hidden = 1;
}

void SurfaceMoveCaret(int32_t x, int32_t y) {
    if (caret.owner == nullptr) return;
    caret.x = x;
    caret.y = y;
    ++caret.moves;
}

void SurfaceCaretPosition(int32_t* x, int32_t* y) {
    *x = caret.x;
    *y = caret.y;
}

void SurfaceShowCaret(WindowHandle window) {
    if (window != nullptr && caret.owner == window && caret.hidden > 0) --caret.hidden;
}

void SurfaceHideCaret(WindowHandle window) {
    if (window != nullptr && caret.owner == window) ++caret.hidden;
}

void SurfaceStartTimer(WindowHandle window, uint32_t id, uint32_t milliseconds) {
    if (window != nullptr) window->timers[id] = milliseconds;
}

void SurfaceStopTimer(WindowHandle window, uint32_t id) {
    if (window != nullptr) window->timers.erase(id);
}

void SurfaceSetTitle(WindowHandle window, const char16_t* title) {
    if (window == nullptr) return;
    window->title = title != nullptr ? title : u"";
    ++window->titleChanges;
}

void ShowWaitPointer() {
    ++pointer.waits;
    pointer.waiting = true;
}

void RestorePointer() {
    ++pointer.restores;
    pointer.waiting = false;
}

const CaretState& HostCaret() { return caret; }

bool HostCaretVisible() { return caret.owner != nullptr && caret.hidden == 0; }

const PointerState& HostPointer() { return pointer; }

void HostSurfaceReset() {
    caret = CaretState{};
    pointer = PointerState{};
}

}  // namespace nira
