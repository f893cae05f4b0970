#include "view/navigation.h"

#include <algorithm>

#include "engine/drag_timer.h"
#include "engine/line_text.h"
#include "engine/text_copy.h"
#include "engine/window_state.h"
#include "platform/surface.h"
#include "view/measure.h"
#include "view/scroll.h"
#include "view/words.h"

namespace nira {

namespace {

constexpr int32_t kEdge = 5;  // pixels from an edge of the window where a drag scrolls

LineRecord& CaretLine(const Editor* editor) { return editor->lines[editor->caret.line]; }

uint32_t CaretColumn(const Editor* editor) { return static_cast<uint32_t>(editor->caretColumn); }

// Runs a move, repaints, and tells the application when the selection came or went. The move returns false
// when nothing moved; then it is repainted only if a selection went.
template <typename Move>
void PerformMove(Editor* editor, bool extend, Move move) {
    const bool selected = HasSelection(editor);
    BeginOrClearSelection(editor, extend);
    const bool moved = move();
    const bool selectedNow = HasSelection(editor);
    if (moved || selected != selectedNow) NotifyRepaint(editor);
    if (selected != selectedNow) NotifySelection(editor);
}

// The column of a row that lies at pixel x: the longest prefix that is not wider. On a row that the line
// continues behind, the position behind its last unit is the start of the next row.
uint32_t ColumnAtX(const Editor* editor, const RowPos& position, int32_t x) {
    const LineRecord& line = editor->lines[position.line];
    const auto subRow = static_cast<uint32_t>(position.subRow);
    const uint32_t start = RowStart(line, subRow);
    const uint32_t length = RowEnd(line, subRow) - start;
    if (length == 0 || x < 0) return start;
    const FitResult fit = FitText(TheWindowState().editorWindow, editor->textStyle->font, line.text + start,
                                  length, OptionsTabSize(), x);
    const bool continues = subRow < ExtraRows(line);
    return start + (continues ? std::min(fit.count, length - 1) : fit.count);
}

// Moves the caret by display rows, keeping its pixel x. False at the first and last row.
bool MoveRows(Editor* editor, int32_t rows) {
    const auto wanted = static_cast<int32_t>(
        std::clamp<int64_t>(int64_t{editor->caret.row} + rows, 0, EditorRows(editor) - 1));
    if (wanted == editor->caret.row) return false;
    const RowPos position = EditorRowPosition(editor, wanted);
    MoveCaretTo(editor, position.line, ColumnAtX(editor, position, editor->caretX));
    return true;
}

bool MovePage(Editor* editor, int32_t direction) {
    const SurfaceSize client = SurfaceClientSize(TheWindowState().editorWindow);
    const int32_t rows = std::max(1, client.height / editor->lineHeight) * direction;
    const int32_t scrolled = editor->scrollY;
    editor->scrollY += rows * editor->lineHeight;
    ClampVertical(editor);
    const bool moved = MoveRows(editor, rows);
    if (!moved) EnsureCaretVisible(editor, kCaretMargin);
    return moved || editor->scrollY != scrolled;
}

bool MoveToColumn(Editor* editor, uint32_t column) {
    if (column == CaretColumn(editor)) return false;
    MoveCaretTo(editor, editor->caret.line, column);
    return true;
}

// The first press of Home goes behind the indentation, the second to the line's start.
uint32_t HomeColumn(const Editor* editor) {
    if (TheOptions().keepIndent == 0) return 0;
    const uint32_t indent = LineIndent(editor, static_cast<uint32_t>(editor->caret.line), nullptr, nullptr);
    return CaretColumn(editor) == indent ? 0 : indent;
}

// A tap or drag: moves to the point; false when the caret stays where it is.
bool MoveToPoint(Editor* editor, int32_t x, int32_t y) {
    uint32_t line = 0;
    uint32_t column = 0;
    PositionAt(editor, x, y, &line, &column);
    if (static_cast<int32_t>(line) == editor->caret.line && column == CaretColumn(editor)) return false;
    MoveCaretTo(editor, line, column);
    return true;
}

// Runs an operation of several steps and repaints once, behind the last of them.
template <typename Operation>
void PaintOnce(Editor* editor, Operation operation) {
    editor->flags |= kFlagPaintDeferred;
    operation();
    const bool pending = (editor->flags & kFlagRepaintPending) != 0;
    editor->flags &= ~(kFlagPaintDeferred | kFlagRepaintPending);
    if (pending) NotifyRepaint(editor);
}

bool AtEdge(int32_t x, int32_t y) {
    const SurfaceSize client = SurfaceClientSize(TheWindowState().editorWindow);
    return x < kEdge || y < kEdge || x > client.width - kEdge || y > client.height - kEdge;
}

}  // namespace

void BeginOrClearSelection(Editor* editor, bool extend) {
    if (!extend && editor->markMode == 0) {
        editor->anchorColumn = kNoSelection;
        return;
    }
    if (editor->anchorColumn != kNoSelection) return;
    editor->anchor = editor->caret;
    editor->anchorColumn = editor->caretColumn;
}

void MoveCaretTo(Editor* editor, int64_t line, uint32_t column) {
    const auto target = std::clamp<int64_t>(line, 0, int64_t{editor->lineCount} - 1);
    editor->caret.line = static_cast<int32_t>(target);
    editor->caretColumn = static_cast<int32_t>(std::min(column, editor->lines[target].length));
    UpdateCaretPixels(editor);
    EnsureCaretVisible(editor, kCaretMargin);
}

bool MoveCaretBy(Editor* editor, int64_t characters) {
    int64_t line = editor->caret.line;
    int64_t column = editor->caretColumn + characters;
    while (column < 0 && line > 0) {
        --line;
        column += int64_t{editor->lines[line].length} + 1;
    }
    while (column > editor->lines[line].length && line + 1 < int64_t{editor->lineCount}) {
        column -= int64_t{editor->lines[line].length} + 1;
        ++line;
    }
    column = std::clamp<int64_t>(column, 0, editor->lines[line].length);
    if (line == editor->caret.line && column == editor->caretColumn) return false;
    MoveCaretTo(editor, line, static_cast<uint32_t>(column));
    return true;
}

void MoveLeft(Editor* editor, bool extend) {
    PerformMove(editor, extend, [&] { return MoveCaretBy(editor, -1); });
}

void MoveRight(Editor* editor, bool extend) {
    PerformMove(editor, extend, [&] { return MoveCaretBy(editor, 1); });
}

void MoveWordLeft(Editor* editor, bool extend) {
    PerformMove(editor, extend, [&] {
        const uint32_t column = CaretColumn(editor);
        if (column == 0) return MoveCaretBy(editor, -1);
        return MoveToColumn(editor, WordLeftColumn(CaretLine(editor), column));
    });
}

void MoveWordRight(Editor* editor, bool extend) {
    PerformMove(editor, extend, [&] {
        const uint32_t column = CaretColumn(editor);
        if (column == CaretLine(editor).length) return MoveCaretBy(editor, 1);
        return MoveToColumn(editor, WordRightColumn(CaretLine(editor), column));
    });
}

void MoveRowUp(Editor* editor, bool extend) {
    PerformMove(editor, extend, [&] { return MoveRows(editor, -1); });
}

void MoveRowDown(Editor* editor, bool extend) {
    PerformMove(editor, extend, [&] { return MoveRows(editor, 1); });
}

void MovePageUp(Editor* editor, bool extend) {
    PerformMove(editor, extend, [&] { return MovePage(editor, -1); });
}

void MovePageDown(Editor* editor, bool extend) {
    PerformMove(editor, extend, [&] { return MovePage(editor, 1); });
}

void MoveHome(Editor* editor, bool extend) {
    PerformMove(editor, extend, [&] { return MoveToColumn(editor, HomeColumn(editor)); });
}

void MoveEnd(Editor* editor, bool extend) {
    PerformMove(editor, extend, [&] { return MoveToColumn(editor, CaretLine(editor).length); });
}

void MoveToStart(Editor* editor, bool extend) {
    PerformMove(editor, extend, [&] {
        MoveCaretTo(editor, 0, 0);
        return true;
    });
}

void MoveToEnd(Editor* editor, bool extend) {
    PerformMove(editor, extend, [&] {
        MoveCaretTo(editor, editor->lineCount, UINT32_MAX);
        return true;
    });
}

void PositionAt(Editor* editor, int32_t x, int32_t y, uint32_t* line, uint32_t* column) {
    const int64_t pixel = int64_t{y} + editor->scrollY;
    const int64_t row = pixel < 0 ? 0 : pixel / editor->lineHeight;
    const RowPos position =
        EditorRowPosition(editor, static_cast<int32_t>(std::min<int64_t>(row, EditorRows(editor) - 1)));
    *line = static_cast<uint32_t>(position.line);
    *column = ColumnAtX(editor, position, x + editor->scrollX);
}

void TapAt(Editor* editor, int32_t x, int32_t y) {
    PerformMove(editor, false, [&] { return MoveToPoint(editor, x, y); });
}

void DragTo(Editor* editor, int32_t x, int32_t y) {
    PerformMove(editor, true, [&] { return MoveToPoint(editor, x, y); });
    if (AtEdge(x, y)) StartDragTimer();
}

void DragStep(Editor* editor, int32_t x, int32_t y) {
    const SurfaceSize client = SurfaceClientSize(TheWindowState().editorWindow);
    if (!AtEdge(x, y)) {
        StopDragTimer();
        return;
    }
    PaintOnce(editor, [&] {
        if (x < kEdge) ScrollHorizontal(editor, kScrollAutoBack);
        if (x > client.width - kEdge) ScrollHorizontal(editor, kScrollAutoForward);
        if (y < kEdge) ScrollVertical(editor, kScrollAutoBack);
        if (y > client.height - kEdge) ScrollVertical(editor, kScrollAutoForward);
        DragTo(editor, x, y);
    });
}

void SelectAll(Editor* editor) {
    const bool selected = HasSelection(editor);
    editor->markMode = 0;
    const uint32_t last = editor->lineCount - 1;
    editor->anchorColumn = static_cast<int32_t>(editor->lines[last].length);
    editor->anchor = EditorPositionOf(editor, last, editor->lines[last].length);
    editor->caret = {0, 0, 0};
    editor->caretColumn = 0;
    editor->caretX = editor->caretY = 0;
    SurfaceMoveCaret(-editor->scrollX, -editor->scrollY);
    NotifyRepaint(editor);
    if (selected != HasSelection(editor)) NotifySelection(editor);
}

void MarkStart(Editor* editor) {
    const bool selected = HasSelection(editor);
    editor->anchor = editor->caret;
    editor->anchorColumn = editor->caretColumn;
    editor->markMode = 1;
    if (!selected) return;
    NotifyRepaint(editor);
    NotifySelection(editor);
}

void MarkEnd(Editor* editor) { editor->markMode = 0; }

void SetBookmark(Editor* editor, uint32_t number) {
    if (number < kBookmarks) editor->bookmarks[number] = editor->caret.line + 1;
}

void GoToBookmark(Editor* editor, uint32_t number) {
    if (number >= kBookmarks) return;
    const bool selected = HasSelection(editor);
    editor->anchorColumn = kNoSelection;
    MoveCaretTo(editor, int64_t{editor->bookmarks[number]} - 1, 0);
    NotifyRepaint(editor);
    if (selected) NotifySelection(editor);
}

void GoToLine(Editor* editor, uint32_t line) {
    const bool selected = HasSelection(editor);
    editor->anchorColumn = kNoSelection;
    MoveCaretTo(editor, line, 0);
    NotifyRepaint(editor);
    if (selected) NotifySelection(editor);
}

}  // namespace nira
