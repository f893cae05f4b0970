// What the view needs of the window that shows the text: its size, its scroll bars, the caret, a timer, the
// title of the window around it and the pointer's shape. Every call accepts a null window and then does
// nothing.
#pragma once

#include <cstdint>

#include "platform/handles.h"

namespace nira {

struct SurfaceSize {
    int32_t width;
    int32_t height;
};

// The client area in pixels; 0 × 0 for a null window.
SurfaceSize SurfaceClientSize(WindowHandle window);

enum class SurfaceBar { kHorizontal, kVertical };

// What a scroll bar shows; each call sets only the parts it names. Bars without a range are shown disabled,
// never hidden, so that the client area keeps its size.
void SurfaceSetScrollPosition(WindowHandle window, SurfaceBar bar, int32_t position);
void SurfaceSetScrollRange(WindowHandle window, SurfaceBar bar, int32_t maximum, int32_t position);
void SurfaceSetScrollPage(WindowHandle window, SurfaceBar bar, int32_t page);

// Where the thumb is being dragged to.
int32_t SurfaceTrackPosition(WindowHandle window, SurfaceBar bar);

// The caret of the window that has the focus, in client pixels.
void SurfaceCreateCaret(WindowHandle window, int32_t width, int32_t height);
// True when the caret is this window's, which it is while the window has the focus.
bool SurfaceHasCaret(WindowHandle window);
void SurfaceDestroyCaret();
void SurfaceMoveCaret(int32_t x, int32_t y);
void SurfaceCaretPosition(int32_t* x, int32_t* y);
void SurfaceShowCaret(WindowHandle window);
void SurfaceHideCaret(WindowHandle window);

void SurfaceStartTimer(WindowHandle window, uint32_t id, uint32_t milliseconds);
void SurfaceStopTimer(WindowHandle window, uint32_t id);

void SurfaceSetTitle(WindowHandle window, const char16_t* title);

// The wait pointer for a long operation, and back to what the place under the pointer wants.
void ShowWaitPointer();
void RestorePointer();

}  // namespace nira
