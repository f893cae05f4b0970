// The first occurrence of a pattern in a text, in a time that grows with the two lengths added, never
// multiplied, and without memory of its own.
//
// The pattern is cut in two where a repetition around the cut is as long as any in the pattern. The right
// part is compared forwards first: where it fails, the text up to there cannot hold a match. Then the left
// part is compared backwards: where it fails, the pattern moves on by its period. See Crochemore and Perrin,
// "Two-way string-matching", 1991. It is slower than a look for rare units on ordinary text.
#pragma once

#include <cstdint>

namespace nira {

// A half of SearchLine (search/line_search.h), with the same meaning. UINT32_MAX when there is none. The
// pattern is not empty.
uint32_t SearchSteadily(const char16_t* pattern, uint32_t patternLength, bool matchCase, const char16_t* text,
                        uint32_t length);

}  // namespace nira
