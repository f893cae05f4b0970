#include "search/steady_search.h"

#include <algorithm>

#include "base/lower_case.h"

namespace nira {

namespace {

// A text as it is compared.
struct Units {
    const char16_t* text;
    bool matchCase;
    char16_t operator[](int64_t i) const { return matchCase ? text[i] : LowerUnit(text[i]); }
};

struct Suffix {
    int64_t before;  // where the suffix begins, less one
    int64_t period;  // of the suffix
};

// The greatest suffix of the pattern, in the order of the units or in the opposite one.
Suffix GreatestSuffix(const Units& pattern, int64_t length, bool opposite) {
    Suffix suffix = {-1, 1};
    int64_t other = 0;  // the suffix that competes begins behind it
    int64_t offset = 1;
    while (other + offset < length) {
        const char16_t left = pattern[other + offset];
        const char16_t right = pattern[suffix.before + offset];
        if (left == right) {
            if (offset == suffix.period) {
                other += suffix.period;
                offset = 1;
            } else {
                ++offset;
            }
        } else if ((left < right) != opposite) {
            other += offset;
            offset = 1;
            suffix.period = other - suffix.before;
        } else {
            suffix.before = other++;
            offset = 1;
            suffix.period = 1;
        }
    }
    return suffix;
}

struct Cut {
    int64_t before;  // the right part begins behind it
    int64_t step;    // how far the pattern moves when only its left part has failed
    bool periodic;   // then it moves by the period of the whole, and the part that overlaps is known to match
};

Cut CutPattern(const Units& pattern, int64_t length) {
    const Suffix one = GreatestSuffix(pattern, length, false);
    const Suffix two = GreatestSuffix(pattern, length, true);
    const Suffix& last = one.before > two.before ? one : two;
    bool periodic = true;
    for (int64_t i = 0; i <= last.before && periodic; ++i) {
        periodic = i + last.period < length && pattern[i] == pattern[i + last.period];
    }
    if (periodic) return {last.before, last.period, true};
    return {last.before, std::max(last.before + 1, length - last.before - 1) + 1, false};
}

}  // namespace

uint32_t SearchSteadily(const char16_t* pattern, uint32_t patternLength, bool matchCase, const char16_t* text,
                        uint32_t length) {
    const Units wanted = {pattern, matchCase};
    const Units units = {text, matchCase};
    const int64_t count = patternLength;
    const Cut cut = CutPattern(wanted, count);
    int64_t known = -1;  // the last unit of the pattern's start that is known to match
    for (int64_t place = 0; place + count <= int64_t{length};) {
        int64_t i = std::max(cut.before, known) + 1;
        while (i < count && wanted[i] == units[place + i]) ++i;
        if (i < count) {
            place += i - cut.before;
            known = -1;
            continue;
        }
        i = cut.before;
        while (i > known && wanted[i] == units[place + i]) --i;
        if (i <= known) return static_cast<uint32_t>(place);
        place += cut.step;
        known = cut.periodic ? count - cut.step - 1 : -1;
    }
    return UINT32_MAX;
}

}  // namespace nira
