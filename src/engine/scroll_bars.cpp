#include "engine/scroll_bars.h"

#include <algorithm>

#include "engine/window_state.h"
#include "platform/surface.h"
#include "view/layout.h"

namespace nira {

void SetScrollPositions(int32_t x, int32_t row) {
    const WindowHandle window = TheWindowState().editorWindow;
    SurfaceSetScrollPosition(window, SurfaceBar::kHorizontal, x);
    SurfaceSetScrollPosition(window, SurfaceBar::kVertical, row);
}

void SetScrollRanges(int32_t x, int32_t row, int32_t xMax, int32_t rowMax) {
    const WindowHandle window = TheWindowState().editorWindow;
    SurfaceSetScrollRange(window, SurfaceBar::kHorizontal, xMax, x);
    SurfaceSetScrollRange(window, SurfaceBar::kVertical, rowMax, row);
}

void SetVerticalPage(int32_t rows) {
    SurfaceSetScrollPage(TheWindowState().editorWindow, SurfaceBar::kVertical, rows);
}

void SetHorizontalPage(int32_t pixels) {
    SurfaceSetScrollPage(TheWindowState().editorWindow, SurfaceBar::kHorizontal, pixels);
}

void UpdateScrollBars(Editor* editor) {
    // The bars belong to the document that is shown; the sums of another one must not move them.
    if (editor != TheWindowState().currentEditor) return;
    const SurfaceSize client = SurfaceClientSize(TheWindowState().editorWindow);
    const int64_t text = int64_t{editor->widestLine} + 2;  // room for the caret behind the longest line
    if (text < client.width) editor->scrollX = 0;
    const int64_t width = std::max<int64_t>(client.width, text);
    const int32_t limit = RowWidthLimit(editor);
    const auto xMax = static_cast<int32_t>(limit >= width ? width - 1 : limit - 1);
    const int32_t page = client.height / editor->lineHeight;
    SetScrollRanges(editor->scrollX, editor->top.row, xMax, std::max(EditorRows(editor), page) - 1);
}

}  // namespace nira
