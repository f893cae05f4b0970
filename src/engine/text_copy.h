// Reading a document's text as one string, and the forms of line breaks.
#pragma once

#include <cstddef>
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

// The selection's two ends in order; the same place twice without a selection.
struct SelectionRange {
    uint32_t line1;
    uint32_t column1;
    uint32_t line2;
    uint32_t column2;
};
SelectionRange SelectionRangeOf(const Editor* editor);

// The selection with the document's line ends, on the local heap; null without a selection.
char16_t* SelectionCopy(const Editor* editor, uint32_t* units = nullptr);

// The same in two steps, for callers with memory of their own: how many units it will be, and writing them
// (without a terminator) to `target`. The first position must not be behind the second.
size_t TextRangeUnits(const Editor* editor, uint32_t lineEnd, uint32_t line1, uint32_t column1,
                      uint32_t line2, uint32_t column2);
void TextWriteRange(const Editor* editor, char16_t* target, uint32_t lineEnd, uint32_t line1,
                    uint32_t column1, uint32_t line2, uint32_t column2);

// Copies units without each CR that an LF follows directly. Returns `target`.
char16_t* StripCrBeforeLf(char16_t* target, const char16_t* source, uint32_t count);

// Copies units with every break (CR LF, CR or LF) as LF alone. Returns the units written.
uint32_t ConvertBreaksToLf(char16_t* target, const char16_t* source, uint32_t count);

}  // namespace nira
