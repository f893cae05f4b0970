// Changing and reading a document's text.
//
// TextInsert and TextDelete are the two operations that every edit goes through; they alone record undo. They
// take what memory they need before they change anything: when it runs out they return with the text as it
// was. Callers move the caret themselves afterwards. Positions are not checked: lines below lineCount,
// columns up to the length.
#pragma once

#include <cstdint>

#include "engine/editor.h"

namespace nira {

// A new document with one empty line, from the current Options. Null when memory ran out.
Editor* EditorCreate();

// Frees the document, its heap and its path.
void EditorDestroy(Editor* editor);

// Discards all text and undo and leaves one empty line. May run out of memory (then nothing has changed).
void EditorReset(Editor* editor);

// ---- one line ----

// Replaces a line's text by `count` units of `source`; breaks and width stay as they are. With null `source`
// the text is freed and the whole record zeroed. Returns `count`, or 0 when memory ran out and nothing
// changed.
uint32_t LineSetText(Editor* editor, uint32_t line, const char16_t* source, uint32_t count);

// Inserts units at a column, clamped to the length. A count of 0 or less does nothing.
void LineInsertChars(Editor* editor, uint32_t line, uint32_t column, const char16_t* source, int32_t count);

// Deletes up to `count` units at a column.
void LineDeleteChars(Editor* editor, uint32_t line, uint32_t column, int32_t count);

// Frees text and breaks and zeroes the record. wrapRows is not changed.
void LineFree(Editor* editor, uint32_t line);

// Counts the tabs and spaces at the start of a line, at most up to column *stop when given. *visualWidth,
// when given, becomes their width in columns: a tab counts the full tab size wherever it stands, a space 1.
uint32_t LineIndent(const Editor* editor, uint32_t line, uint32_t* visualWidth, const uint32_t* stop);

// ---- the document ----

// Inserts `count` units at (line, column). CR LF, a lone CR and a lone LF are line breaks, with one exception
// that callers must know: an LF directly behind a first break that is a lone LF is swallowed, while the
// number of lines still grows by it. (Two-unit line ends written "LF LF" by an old device taught it.) Callers
// whose text may hold such a pair turn its breaks into CR LF before. While kFlagDetectLineEnd is set the
// first break decides lineEnd. Returns the number of CR LF pairs in the text.
uint32_t TextInsert(Editor* editor, uint32_t line, uint32_t column, const char16_t* text, uint32_t count);

// Deletes from the first position up to the second; the caller passes the earlier first. An empty range does
// nothing at all.
void TextDelete(Editor* editor, uint32_t line1, uint32_t column1, uint32_t line2, uint32_t column2);

// Deletes `count` characters forward, each line end counting 1, at most to the end of the document. Returns
// the number of lines removed.
uint32_t TextDeleteCount(Editor* editor, uint32_t line, uint32_t column, uint32_t count);

// The text between two positions (in either order) with breaks in the style of `lineEnd`, terminated; a block
// of `heap` owned by the caller. *units, when given, becomes its length: the text may hold U+0000. Unwinds
// when memory runs out.
char16_t* TextCopyRange(const Editor* editor, HeapHandle heap, uint32_t lineEnd, uint32_t line1,
                        uint32_t column1, uint32_t line2, uint32_t column2, uint32_t* units = nullptr);

// The selection with the document's line ends, on the local heap; null without a selection.
char16_t* SelectionCopy(const Editor* editor, uint32_t* units = nullptr);

// Whether there is a selection: an anchor that differs from the caret.
bool HasSelection(const Editor* editor);

// ---- plain text helpers ----

// Copies units without each CR that an LF follows directly. Returns `target`.
char16_t* StripCrBeforeLf(char16_t* target, const char16_t* source, uint32_t count);

// Turns every break of a text (CR LF, CR or LF) into CR LF, for callers of TextInsert. Returns a new block of
// the local heap, *units long and terminated. Unwinds when memory runs out.
char16_t* NormalizeBreaks(const char16_t* source, uint32_t count, uint32_t* units);

}  // namespace nira
