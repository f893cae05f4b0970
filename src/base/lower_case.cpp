#include "base/lower_case.h"

#include <iterator>

namespace nira {

namespace {

// clang-format off
#include "base/lower_case.inc"
// clang-format on

static_assert(kMostLowerVariants == kLowerVariants);

constexpr uint32_t kPageUnits = 256;

}  // namespace

char16_t LowerUnit(char16_t unit) {
    return static_cast<char16_t>(unit + kPages[kPageNumbers[unit / kPageUnits]][unit % kPageUnits]);
}

uint32_t LowerVariants(char16_t unit, char16_t variants[kLowerVariants]) {
    const char16_t lower = LowerUnit(unit);
    uint32_t count = 0;
    variants[count++] = lower;
    for (uint32_t page = 0; page < std::size(kPageNumbers); ++page) {
        if (kPageNumbers[page] == 0) continue;
        for (uint32_t i = 0; i < kPageUnits; ++i) {
            const auto candidate = static_cast<char16_t>(page * kPageUnits + i);
            if (candidate != lower && LowerUnit(candidate) == lower) variants[count++] = candidate;
        }
    }
    return count;
}

}  // namespace nira
