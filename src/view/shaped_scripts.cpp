#include "view/shaped_scripts.h"

#include <algorithm>
#include <iterator>

namespace nira {

namespace {

struct UnitRange {
    char16_t first;
    char16_t last;
};

// Ascending and without overlaps.
constexpr UnitRange kShaped[] = {
    {0x0300, 0x036F},  // combining diacritical marks
    {0x0483, 0x0489},  // combining Cyrillic
    {0x0590, 0x109F},  // Hebrew to Burmese, with Arabic, Indic, Thai and Tibetan between
    {0x1100, 0x11FF},  // Hangul letters
    {0x135D, 0x135F},  // combining Ethiopic
    {0x1700, 0x18AF},  // Philippine scripts, Khmer, Mongolian
    {0x1900, 0x1CFF},  // Limbu to Vedic, with Balinese, Lepcha and the like
    {0x1DC0, 0x1DFF},  // combining marks, supplement
    {0x200B, 0x200F},  // zero-width and direction marks
    {0x202A, 0x202E},  // direction embeddings
    {0x2060, 0x206F},  // invisible operators
    {0x20D0, 0x20FF},  // combining marks for symbols
    {0x2D7F, 0x2D7F},  // Tifinagh joiner
    {0x2DE0, 0x2DFF},  // combining Cyrillic, extended
    {0x302A, 0x302F},  // ideographic tone marks
    {0x3099, 0x309A},  // combining kana marks
    {0xA66F, 0xA69F},  // combining Cyrillic, extended-B
    {0xA6F0, 0xA6F1},  // combining Bamum
    {0xA800, 0xABFF},  // Syloti Nagri to Meetei Mayek
    {0xD7B0, 0xDFFF},  // Hangul letters, extended-B, and surrogates
    {0xFB1D, 0xFDFF},  // Hebrew and Arabic presentation forms
    {0xFE00, 0xFE0F},  // variation selectors
    {0xFE20, 0xFE2F},  // combining half marks
    {0xFE70, 0xFEFF},  // Arabic presentation forms, zero-width no-break space
    {0xFFF9, 0xFFFB},  // interlinear annotation
};

}  // namespace

bool IsShapedUnit(char16_t unit) {
    const UnitRange* after =
        std::upper_bound(std::begin(kShaped), std::end(kShaped), unit,
                         [](char16_t value, const UnitRange& range) { return value < range.first; });
    return after != std::begin(kShaped) && unit <= (after - 1)->last;
}

}  // namespace nira
