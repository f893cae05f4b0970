// Finding and replacing in the plainest way: one unit at a time on a list of strings. Shares no code with the
// product.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace nira {

struct NaiveSearch {
    std::u16string pattern;
    std::u16string replacement;
    bool matchCase = false;
    bool wholeWord = false;
    std::u16string separators;  // besides tab and space
};

struct NaivePlace {
    size_t line = 0;
    size_t column = 0;
};

// The case pairs that the tests use; everything else is its own lower case.
char16_t NaiveLower(char16_t unit);

// -1 when the pattern does not occur. The scheme that tests the pattern's second unit first.
int NaiveFindInLine(const std::u16string& text, const std::u16string& pattern, bool matchCase);

// The next match from a place on; false when there is none.
bool NaiveFindNext(const std::vector<std::u16string>& lines, const NaiveSearch& search, NaivePlace from,
                   NaivePlace* match);

// Replaces matches from *place on until there is none or `most` are replaced; *place ends behind the last.
// Breaks of the replacement are LF.
size_t NaiveReplaceAll(std::vector<std::u16string>* lines, const NaiveSearch& search, NaivePlace* place,
                       size_t most);

}  // namespace nira
