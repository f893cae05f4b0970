// Moving the caret and the selection.
//
// A move with `extend` (Shift), or in mark mode, keeps the anchor and so extends the selection; any other
// move clears it. Every move brings the caret into view, repaints, and tells the application when the
// selection came or went. At the very start or end of the text a move does nothing and repaints nothing.
#pragma once

#include <cstdint>

#include "engine/editor.h"

namespace nira {

// Before a move: clears the anchor, or sets it at the caret when the move extends and there is none.
void BeginOrClearSelection(Editor* editor, bool extend);

// The raw move to a position: the line is clamped to the text, the column to the line; no selection, no
// repaint. The caret is brought into view.
void MoveCaretTo(Editor* editor, int64_t line, uint32_t column);

// The raw move by characters, each line end counting 1; returns false when nothing moved.
bool MoveCaretBy(Editor* editor, int64_t characters);

void MoveLeft(Editor* editor, bool extend);
void MoveRight(Editor* editor, bool extend);
void MoveWordLeft(Editor* editor, bool extend);
void MoveWordRight(Editor* editor, bool extend);
void MoveRowUp(Editor* editor, bool extend);
void MoveRowDown(Editor* editor, bool extend);
void MovePageUp(Editor* editor, bool extend);
void MovePageDown(Editor* editor, bool extend);
void MoveHome(Editor* editor, bool extend);
void MoveEnd(Editor* editor, bool extend);
void MoveToStart(Editor* editor, bool extend);
void MoveToEnd(Editor* editor, bool extend);

// A finger at client pixel (x, y): down puts the caret there (in mark mode it extends the selection), a drag
// extends the selection to it and starts automatic scrolling when it is less than 5 pixels from an edge or
// outside.
void TapAt(Editor* editor, int32_t x, int32_t y);
void DragTo(Editor* editor, int32_t x, int32_t y);

// A tick of automatic scrolling: scrolls towards each edge the point is at, extends the selection to the
// point, and stops the timer when the point is away from all edges.
void DragStep(Editor* editor, int32_t x, int32_t y);

// The position under a client pixel.
void PositionAt(Editor* editor, int32_t x, int32_t y, uint32_t* line, uint32_t* column);

void SelectAll(Editor* editor);
void MarkStart(Editor* editor);
void MarkEnd(Editor* editor);

void SetBookmark(Editor* editor, uint32_t number);
void GoToBookmark(Editor* editor, uint32_t number);
void GoToLine(Editor* editor, uint32_t line);

}  // namespace nira
