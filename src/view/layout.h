// Measuring lines and breaking them into display rows.
//
// A row is as wide as the window less one pixel when the document wraps, and at most 3000 pixels when it does
// not, so that no row is ever longer. Rows break at characters, not at words, wherever the next unit no
// longer fits, and take at least one unit each. Nothing here changes text. Out of memory leaves the lines
// concerned in one row each, with all sums right, and unwinds.
#pragma once

#include <cstdint>

#include "engine/editor.h"
#include "view/measure.h"

namespace nira {

constexpr int32_t kUnwrappedRowWidth = 3000;

// The width limit of a row in pixels, at least 1.
int32_t RowWidthLimit(const Editor* editor);

// A context for measuring lines of this document, to be closed by CloseMeasureContext.
void OpenLineContext(MeasureContext* context, const Editor* editor);

// The width of a line that need not be in the document yet.
void MeasureRecord(LineRecord* line, MeasureContext* context);

// Recomputes width and breaks of one line, or of lines first..end-1 with one context, and the sums over all
// lines.
void LineMeasure(Editor* editor, uint32_t line);
void LinesMeasure(Editor* editor, uint32_t first, uint32_t end);

// Recomputes the breaks of lines first..end-1 from their widths.
void LinesBreak(Editor* editor, uint32_t first, uint32_t end);

// All lines, after a change of font or tab size.
void EditorMeasureAll(Editor* editor);

// All lines' breaks from their widths, after a change of wrapping.
void EditorBreakAll(Editor* editor);

// A line whose text has changed only by the `count` units now at `column`: the rows before them stay as they
// are and the width grows by theirs, which keeps appending to a line of many megabytes cheap.
void LineMeasureInserted(Editor* editor, uint32_t line, uint32_t column, uint32_t count);

// What `count` units at `column` measure, to be asked before they are deleted; -1 when the line's width is
// not a sum.
int32_t RemovedWidth(Editor* editor, uint32_t line, uint32_t column, uint32_t count);

// The same for units that were removed at `column`; `removedWidth` is what they measured, or -1 when it is
// not known.
void LineMeasureDeleted(Editor* editor, uint32_t line, uint32_t column, int32_t removedWidth);

// Recomputes a line's breaks from its width. `context` may be null. Returns the change in the line's rows.
int32_t LineComputeBreaks(Editor* editor, uint32_t line, MeasureContext* context);

// widestLine and wrapRows from the sums over all lines.
void RecomputeWidest(Editor* editor);

}  // namespace nira
