// Which part of a document the window shows.
//
// The view always starts at a row boundary and never leaves the text. scrollX and scrollY are its offsets in
// pixels, top and bottomRow the rows it covers, caretX and caretY where the caret is in the document.
#pragma once

#include <cstdint>

#include "engine/editor.h"

namespace nira {

// Request codes besides the system's own: two rows or 20 pixels, for automatic scrolling.
constexpr int32_t kScrollLineBack = 0;
constexpr int32_t kScrollLineForward = 1;
constexpr int32_t kScrollPageBack = 2;
constexpr int32_t kScrollPageForward = 3;
constexpr int32_t kScrollThumbTrack = 5;
constexpr int32_t kScrollToStart = 6;
constexpr int32_t kScrollToEnd = 7;
constexpr int32_t kScrollAutoBack = 100;
constexpr int32_t kScrollAutoForward = 200;

constexpr int32_t kCaretWidth = 2;    // pixels; the caret is as high as a row
constexpr int32_t kCaretMargin = 30;  // pixels kept beyond the caret when the view follows it sideways

// Moves the view by a request code (unknown ones do nothing), clamps, sets the bar's position and repaints.
void ScrollVertical(Editor* editor, int32_t code);
void ScrollHorizontal(Editor* editor, int32_t code);

// Bring an offset back into the text; true when it had to change. Both note whether the system caret is still
// where the document's caret is.
bool ClampVertical(Editor* editor);
bool ClampHorizontal(Editor* editor);

// Recomputes caret.subRow, caret.row, caretX and caretY from line and column, and the anchor's row.
void UpdateCaretPixels(Editor* editor);
void UpdateAnchorRow(Editor* editor);

// Scrolls so that the caret is in the window, `margin` pixels from the side it came in by, and sets the
// scroll bars.
void EnsureCaretVisible(Editor* editor, int32_t margin);

// WM_SIZE: page sizes, ranges, clamped offsets, repaint. Lines are not wrapped again.
void ViewResized(Editor* editor);

// Flips word wrap and lays every line out again; the caret keeps its place on the screen.
void ToggleWrap(Editor* editor);

// Takes font, line height and tab size of the Options anew, lays every line out again and clears layoutStale.
// The caret of a shown document gets the new height and place at once.
void ReapplyOptions(Editor* editor);

// The document is shown again: positions, bars and caret from its own record. Lays it out first when it is
// stale.
void RestoreView(Editor* editor);

}  // namespace nira
