// What is searched for, and how: one record for the whole program, filled by the dialogs and used by every
// search until it is filled again.
#pragma once

#include <cstdint>

namespace nira {

struct SearchState {
    char16_t* pattern;      // terminated, local heap; null until a pattern was set
    char16_t* replacement;  // likewise
    uint16_t matchCase;     // units must be equal; otherwise they may differ in case
    uint16_t wholeWord;     // a match must stand between separators
    uint16_t up;            // what the dialogs' direction buttons show; searches always run forward
};

SearchState& TheSearchState();

// Copy a text into the record; null counts as an empty one. They run out of memory before they change
// anything.
void SetSearchPattern(const char16_t* text);
void SetSearchReplacement(const char16_t* text);

// Frees the texts and clears the record.
void FreeSearchState();

}  // namespace nira
