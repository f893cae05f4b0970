// Changing a document's text.
//
// TextInsert and TextDelete are the two operations that edits go through; they alone record undo, besides
// indentation and Replace All (engine/line_rewrite.h). They take the memory they need before they change
// anything: when it runs out they return with the text as it was. Callers move the caret themselves
// afterwards. Positions are not checked: lines below lineCount, columns up to the length.
#pragma once

#include <cstdint>

#include "engine/editor.h"
#include "engine/editor_life.h"
#include "engine/line_text.h"
#include "engine/text_copy.h"

namespace nira {

constexpr int32_t kTextFailed = -1;

// Inserts `count` units at (line, column). CR LF, a lone CR and a lone LF are line breaks, with one exception
// that callers must know: an LF directly behind a first break that is a lone LF is swallowed, while the
// number of lines still grows by it, so that an empty line is left behind the inserted ones. Callers whose
// text may hold such a pair turn its breaks into CR LF before. While kFlagDetectLineEnd is set the first
// break decides lineEnd. Returns the number of CR LF pairs in the text, or kTextFailed when memory ran out
// and nothing was inserted.
int32_t TextInsert(Editor* editor, uint32_t line, uint32_t column, const char16_t* text, uint32_t count);

// Inserts a text of which every break (CR LF, a lone CR, a lone LF) is a break, none swallowed: what everyone
// but loading uses. The journal keeps it with LF alone. Returns the characters inserted, each break counting
// 1, or kTextFailed.
int32_t TextInsertLines(Editor* editor, uint32_t line, uint32_t column, const char16_t* text, uint32_t count);

// Deletes from the first position up to the second; the caller passes the earlier first. An empty range does
// nothing at all. False when memory ran out and nothing was deleted.
bool TextDelete(Editor* editor, uint32_t line1, uint32_t column1, uint32_t line2, uint32_t column2);

// Deletes `count` characters forward, each line end counting 1, at most to the end of the document. Returns
// the number of lines removed, or kTextFailed.
int32_t TextDeleteCount(Editor* editor, uint32_t line, uint32_t column, uint32_t count);

}  // namespace nira
