// The advance widths of one font, learnt from the system unit by unit.
#pragma once

#include <cstdint>

#include "platform/handles.h"

namespace nira {

// Values of AdvanceTable::widths that are no width.
constexpr int16_t kAdvanceUnknown = -1;
constexpr int16_t kAdvanceShaped = -2;

// 128 KB a font: one look-up a unit without any branch on its value is what makes measuring a hundred
// megabytes possible.
struct AdvanceTable {
    int16_t widths[0x10000];
    int32_t space;
    int32_t tabGlyph;
    bool measured;  // space, tabGlyph and summable are known
    bool summable;  // runs of this font are as wide as their units together
};

}  // namespace nira
