// The text of one line: the primitives that edits are built from.
//
// None of them records undo, measures, or keeps the sums over the lines; their callers do.
#pragma once

#include <cstdint>

#include "engine/editor.h"

namespace nira {

// Replaces a line's text by `count` units of `source`; breaks and width stay as they are. With null `source`
// the text is freed and the whole record zeroed. Returns `count`, or 0 when memory ran out and nothing
// changed.
uint32_t LineSetText(Editor* editor, uint32_t line, const char16_t* source, uint32_t count);

// Inserts units at a column, clamped to the length. A count of 0 or less does nothing. Unwinds when memory
// runs out, with nothing changed.
void LineInsertChars(Editor* editor, uint32_t line, uint32_t column, const char16_t* source, int32_t count);

// Deletes up to `count` units at a column. Cannot fail.
void LineDeleteChars(Editor* editor, uint32_t line, uint32_t column, int32_t count);

// Frees text and breaks and zeroes the record. wrapRows is not changed.
void LineFree(Editor* editor, uint32_t line);

// Counts the tabs and spaces at the start of a line, at most up to column *stop when given. *visualWidth,
// when given, becomes their width in columns: a tab counts the full tab size wherever it stands, a space 1.
uint32_t LineIndent(const Editor* editor, uint32_t line, uint32_t* visualWidth, const uint32_t* stop);

// ---- for operations that must not fail half-way: first reserve, then change ----

// The capacity that a line of this length reports.
uint32_t LineCapacityFor(uint32_t length);

// Makes the block behind the text large enough for `length` units. May unwind; changes nothing that shows.
void ReserveLineText(Editor* editor, LineRecord* line, uint32_t length);

// A new text block of `first` followed by `second` for a record that has none. May unwind; the record then
// stays empty.
void FillLineText(HeapHandle heap, LineRecord* line, const char16_t* first, uint32_t firstUnits,
                  const char16_t* second, uint32_t secondUnits);

// Replaces `removed` units at a column by `count` units of `source` in a line whose text has been reserved
// for the result, and applies the capacity rule. Cannot fail.
void SpliceReserved(Editor* editor, LineRecord* line, uint32_t column, uint32_t removed,
                    const char16_t* source, uint32_t count);

// The block now holds a text of this length: sets length and terminator, and gives memory back by the
// capacity rule. The block is large enough for the capacity. Cannot fail.
void SetLineLength(Editor* editor, LineRecord* line, uint32_t length);

}  // namespace nira
