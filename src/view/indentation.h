// Increasing and decreasing the indentation of lines, and taking it back.
//
// The indentation of a line is its leading tabs and spaces; its width counts a tab as the Options' tab size
// and a space as one column. A line whose width changes gets its indentation rebuilt as tabs followed by
// spaces; with a tab size of 0, of spaces alone. Caret and anchor keep their places in the text.
#pragma once

#include <cstdint>

#include "engine/editor.h"

namespace nira {

// The Increase and Decrease commands: the lines from the anchor's to the caret's when an anchor is set, else
// the caret's, by plus or minus the tab size. The selection stays. One undo step.
void IncreaseIndent(Editor* editor);
void DecreaseIndent(Editor* editor);

// Changes lines first..last by `delta` columns, not below 0. Records one undo step unless recording is off;
// nothing at all when no line changes. False when memory ran out and nothing changed.
bool IndentLines(Editor* editor, uint32_t first, uint32_t last, int64_t delta);

// Undo and redo of a recorded indentation. Undo restores each line's recorded tabs and spaces from line
// `entry.line` on; redo indents as many lines from the caret's by the recorded change with the present tab
// size. False when memory ran out and nothing changed.
bool RestoreIndent(Editor* editor, const UndoEntry& entry);
bool RepeatIndent(Editor* editor, const UndoEntry& entry);

// Columns of `count` tabs and spaces.
int64_t IndentWidth(const char16_t* blanks, uint32_t count);

}  // namespace nira
