// The first occurrence of a pattern in one line.
//
// A search is prepared once and then run over as many lines as need be. It looks at two units of the pattern
// that are rare in most texts, eight places of the line at once, and compares the rest only where both are
// found. Where that meets too many false hits (a line of one letter and a pattern of nearly nothing else), it
// goes on by a method that takes no longer than reading the line, so that no text and no pattern make it
// slow.
#pragma once

#include <cstdint>

#include "base/lower_case.h"

namespace nira {

struct LineSearch {
    const char16_t* pattern;  // the caller's; must outlive the search
    uint32_t length;
    bool matchCase;                     // otherwise units are equal that lower to the same unit
    uint32_t variants;                  // how many of the units below count
    uint32_t probes[2];                 // offsets of the two units that are looked for
    char16_t units[2][kLowerVariants];  // what may stand there
};

constexpr uint32_t kNoMatch = UINT32_MAX;

void PrepareLineSearch(LineSearch* search, const char16_t* pattern, uint32_t length, bool matchCase);

// Where the pattern occurs first in `text` of `length` units, not before `from`; kNoMatch when it does not.
// An empty pattern occurs nowhere.
uint32_t SearchLine(const LineSearch& search, const char16_t* text, uint32_t from, uint32_t length);

}  // namespace nira
