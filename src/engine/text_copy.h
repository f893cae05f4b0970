// Reading a document's text as one string, and the forms of line breaks.
#pragma once

#include <cstdint>

#include "engine/editor.h"

namespace nira {

// The text between two positions (in either order) with breaks in the style of `lineEnd`, terminated; a block
// of `heap` owned by the caller. *units, when given, becomes its length: the text may hold U+0000. Unwinds
// when memory runs out.
char16_t* TextCopyRange(const Editor* editor, HeapHandle heap, uint32_t lineEnd, uint32_t line1,
                        uint32_t column1, uint32_t line2, uint32_t column2, uint32_t* units = nullptr);

// Whether there is a selection: an anchor that differs from the caret.
bool HasSelection(const Editor* editor);

// The selection with the document's line ends, on the local heap; null without a selection.
char16_t* SelectionCopy(const Editor* editor, uint32_t* units = nullptr);

// Copies units without each CR that an LF follows directly. Returns `target`.
char16_t* StripCrBeforeLf(char16_t* target, const char16_t* source, uint32_t count);

// Turns every break of a text (CR LF, CR or LF) into CR LF, for callers of TextInsert. Returns a new block of
// the local heap, *units long and terminated. Unwinds when memory runs out.
char16_t* NormalizeBreaks(const char16_t* source, uint32_t count, uint32_t* units);

}  // namespace nira
