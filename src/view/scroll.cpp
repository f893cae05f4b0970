#include "view/scroll.h"

#include <algorithm>

#include "app/services/memory.h"
#include "engine/scroll_bars.h"
#include "engine/window_state.h"
#include "platform/surface.h"
#include "view/layout.h"
#include "view/measure.h"

namespace nira {

namespace {

constexpr int32_t kLineStepX = 10;  // pixels of a sideways step
constexpr int32_t kAutoStepX = 20;
constexpr int32_t kCaretRoom = 2;  // pixels of the caret behind the longest line

SurfaceSize Client() { return SurfaceClientSize(TheWindowState().editorWindow); }

int32_t Narrow(int64_t value) {
    return static_cast<int32_t>(std::clamp<int64_t>(value, INT32_MIN, INT32_MAX));
}

// The caret is drawn by the system; when the view moves under it, it must be put in its place again.
void NoteCaretPlace(Editor* editor) {
    int32_t x = 0;
    int32_t y = 0;
    SurfaceCaretPosition(&x, &y);
    const bool inPlace = x == editor->caretX - editor->scrollX && y == editor->caretY - editor->scrollY;
    if (inPlace) {
        editor->flags &= ~kFlagCaretElsewhere;
    } else {
        editor->flags |= kFlagCaretElsewhere;
    }
}

void UpdateVisibleRows(Editor* editor) {
    const int32_t last = EditorRows(editor) - 1;
    editor->scrollY = std::min(editor->scrollY, Narrow(int64_t{last} * editor->lineHeight));
    editor->top = EditorRowPosition(editor, editor->scrollY / editor->lineHeight);
    const int64_t bottom = (int64_t{editor->scrollY} + Client().height) / editor->lineHeight;
    editor->bottomRow = static_cast<int32_t>(std::min<int64_t>(bottom, last));
}

int64_t NewScrollY(const Editor* editor, int32_t code) {
    const int64_t row = editor->lineHeight;
    const int64_t now = editor->scrollY;
    switch (code) {
        case kScrollLineBack:
            return now - row;
        case kScrollLineForward:
            return now + row;
        case kScrollPageBack:
            return now - Client().height;
        case kScrollPageForward:
            return now + Client().height;
        case kScrollThumbTrack:
            return row * SurfaceTrackPosition(TheWindowState().editorWindow, SurfaceBar::kVertical);
        case kScrollToStart:
            return 0;
        case kScrollToEnd:
            return row * EditorRows(editor) - Client().height;
        case kScrollAutoBack:
            return now - 2 * row;
        case kScrollAutoForward:
            return now + 2 * row;
        default:
            return now;
    }
}

int64_t NewScrollX(const Editor* editor, int32_t code) {
    const int64_t now = editor->scrollX;
    switch (code) {
        case kScrollLineBack:
            return now - kLineStepX;
        case kScrollLineForward:
            return now + kLineStepX;
        case kScrollPageBack:
            return now - Client().width;
        case kScrollPageForward:
            return now + Client().width;
        case kScrollThumbTrack:
            return SurfaceTrackPosition(TheWindowState().editorWindow, SurfaceBar::kHorizontal);
        case kScrollToStart:
            return 0;
        case kScrollToEnd:
            return int64_t{editor->widestLine} - Client().width + kCaretRoom;
        case kScrollAutoBack:
            return now - kAutoStepX;
        case kScrollAutoForward:
            return now + kAutoStepX;
        default:
            return now;
    }
}

bool IsScrollCode(int32_t code) {
    return (code >= kScrollLineBack && code <= kScrollPageForward) ||
           (code >= kScrollThumbTrack && code <= kScrollToEnd) || code == kScrollAutoBack ||
           code == kScrollAutoForward;
}

// In 64 bits: tabs of two thousand million columns put the caret at the last pixel there is.
void FollowCaretSideways(Editor* editor, int32_t margin) {
    const int64_t width = Client().width;
    const int64_t caret = editor->caretX;
    if (caret < editor->scrollX) {
        editor->scrollX = Narrow(std::max<int64_t>(0, caret - margin));
    } else if (caret > editor->scrollX + width - kCaretRoom) {
        const int32_t widest = std::min(editor->widestLine, RowWidthLimit(editor));
        const int64_t most = std::max<int64_t>(widest, caret) + kCaretRoom - width;
        const int64_t wanted = caret - width + margin + kCaretRoom;
        editor->scrollX = Narrow(std::max<int64_t>(0, std::min(wanted, most)));
    }
}

// Exactly to the caret's row when it was above; upwards to the next row boundary when it was below.
void FollowCaretVertically(Editor* editor) {
    const int32_t row = editor->lineHeight;
    const int32_t below = editor->caretY + row - Client().height;
    if (editor->caretY < editor->scrollY) {
        editor->scrollY = editor->caretY;
    } else if (below > editor->scrollY) {
        editor->scrollY = std::min((below + row - 1) / row * row, editor->caretY);
    }
}

void SetPages(Editor* editor) {
    SetVerticalPage(Client().height / editor->lineHeight);
    SetHorizontalPage(Client().width);
}

// The system cuts a position to the range and page it has, and a page to the range: a smaller page must come
// before the positions, a larger one behind the ranges.
void UpdatePagesAndBars(Editor* editor) {
    SetPages(editor);
    UpdateScrollBars(editor);
    SetPages(editor);
}

// The system keeps a caret's size from when it was made.
void ResizeCaret(const Editor* editor) {
    const WindowHandle window = TheWindowState().editorWindow;
    if (editor != TheWindowState().currentEditor || !SurfaceHasCaret(window)) return;
    SurfaceCreateCaret(window, kCaretWidth, editor->lineHeight);
    SurfaceMoveCaret(editor->caretX - editor->scrollX, editor->caretY - editor->scrollY);
    SurfaceShowCaret(window);
}

// After every line may have other rows: caret and anchor are found anew, and the caret keeps its distance
// from the top of the window.
void KeepCaretOnScreen(Editor* editor, int32_t rowsBelowTop) {
    UpdateCaretPixels(editor);
    UpdateAnchorRow(editor);
    editor->scrollX = 0;
    editor->scrollY = Narrow(int64_t{editor->caret.row - rowsBelowTop} * editor->lineHeight);
    ClampHorizontal(editor);
    ClampVertical(editor);
    UpdatePagesAndBars(editor);
    NoteCaretPlace(editor);
}

}  // namespace

void ScrollVertical(Editor* editor, int32_t code) {
    if (!IsScrollCode(code)) return;
    editor->scrollY = Narrow(NewScrollY(editor, code));
    ClampVertical(editor);
    SetScrollPositions(editor->scrollX, editor->top.row);
    NotifyRepaint(editor);
}

void ScrollHorizontal(Editor* editor, int32_t code) {
    if (!IsScrollCode(code)) return;
    editor->scrollX = Narrow(NewScrollX(editor, code));
    ClampHorizontal(editor);
    SetScrollPositions(editor->scrollX, editor->top.row);
    NotifyRepaint(editor);
}

bool ClampVertical(Editor* editor) {
    const int32_t row = editor->lineHeight;
    const int64_t wanted = editor->scrollY;
    int64_t offset = std::min(wanted, int64_t{EditorRows(editor)} * row - Client().height);
    offset = std::max<int64_t>(offset, 0);
    offset = (offset + row - 1) / row * row;
    editor->scrollY = Narrow(offset);
    UpdateVisibleRows(editor);
    NoteCaretPlace(editor);
    return editor->scrollY != wanted;
}

bool ClampHorizontal(Editor* editor) {
    const int32_t wanted = editor->scrollX;
    const int64_t most = int64_t{editor->widestLine} + kCaretRoom - Client().width;
    editor->scrollX = Narrow(std::max<int64_t>(0, std::min<int64_t>(wanted, most)));
    NoteCaretPlace(editor);
    return editor->scrollX != wanted;
}

void UpdateCaretPixels(Editor* editor) {
    const auto column = static_cast<uint32_t>(editor->caretColumn);
    editor->caret = EditorPositionOf(editor, static_cast<uint32_t>(editor->caret.line), column);
    const LineRecord& line = editor->lines[editor->caret.line];
    const uint32_t start = RowStart(line, static_cast<uint32_t>(editor->caret.subRow));
    editor->caretX = TextWidth(TheWindowState().editorWindow, editor->textStyle->font, line.text + start,
                               column - start, OptionsTabSize());
    editor->caretY = Narrow(int64_t{editor->caret.row} * editor->lineHeight);
}

void UpdateAnchorRow(Editor* editor) {
    if (editor->anchorColumn == kNoSelection) return;
    editor->anchor = EditorPositionOf(editor, static_cast<uint32_t>(editor->anchor.line),
                                      static_cast<uint32_t>(editor->anchorColumn));
}

void EnsureCaretVisible(Editor* editor, int32_t margin) {
    FollowCaretSideways(editor, margin);
    FollowCaretVertically(editor);
    UpdateVisibleRows(editor);
    UpdateScrollBars(editor);
    NoteCaretPlace(editor);
}

void ViewResized(Editor* editor) {
    UpdateCaretPixels(editor);
    ClampHorizontal(editor);
    ClampVertical(editor);
    UpdatePagesAndBars(editor);
    NotifyRepaint(editor);
}

void ToggleWrap(Editor* editor) {
    const int32_t rowsBelowTop = editor->caret.row - editor->top.row;
    editor->wordWrap = editor->wordWrap != 0 ? 0 : 1;
    Guarded([&] { EditorBreakAll(editor); });
    KeepCaretOnScreen(editor, rowsBelowTop);
    NotifyRepaint(editor);
}

void ReapplyOptions(Editor* editor) {
    const int32_t rowsBelowTop = editor->caret.row - editor->top.row;
    editor->layoutStale = 0;
    editor->lineHeight = static_cast<int16_t>(
        std::min(INT16_MAX + 0, LineHeight(TheWindowState().editorWindow, editor->textStyle->font)));
    Guarded([&] { EditorMeasureAll(editor); });
    KeepCaretOnScreen(editor, rowsBelowTop);
    ResizeCaret(editor);
    NotifyRepaint(editor);
}

void RestoreView(Editor* editor) {
    if (editor->layoutStale != 0) {
        ReapplyOptions(editor);
        return;
    }
    UpdateCaretPixels(editor);
    UpdateAnchorRow(editor);
    ClampHorizontal(editor);
    ClampVertical(editor);
    UpdatePagesAndBars(editor);
    NoteCaretPlace(editor);
    NotifyRepaint(editor);
}

}  // namespace nira
