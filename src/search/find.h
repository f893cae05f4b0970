// Finding and replacing in a document, by the pattern and the flags of the search state.
//
// A search runs forward from the caret, goes on at the top when it has reached the end, and ends with the
// line it began on, which is then searched in full: the only match of a document is found again. A match
// never spans lines. An empty pattern is found nowhere. Without a document nothing is found or replaced.
#pragma once

#include <cstdint>

#include "engine/editor.h"

namespace nira {

// Where a pattern first occurs in a text, -1 when it does not. Lengths and the result are counted in units.
int32_t FindInLine(const char16_t* text, int32_t length, const char16_t* pattern, int32_t patternLength,
                   bool matchCase);

// Selects the next match, with the caret behind it, in view, and repaints; mark mode ends. False when there
// is none: nothing has changed then.
bool FindNext(Editor* editor);

// The same; when there is no match, a box says so.
bool FindNextWithMessage(Editor* editor);

// Puts the replacement in place of whatever is selected (at the caret when nothing is), then does the above.
// False also when memory ran out for the replacement: what could be done stays and can be undone.
bool ReplaceAndFind(Editor* editor);

// Replaces every match from the caret on, through the end and on from the top, as long as there is one, and
// returns how many. A replacement that holds a match would go on for ever: Esc stops it, and so does running
// out of memory; what was replaced stays. Every replacement can be undone like a single one, as far as the
// journal reaches. Under the wait pointer; repaints once, at the end.
uint32_t ReplaceAll(Editor* editor);

}  // namespace nira
