#include "platform/host/font_table.h"

#include "base/utf16.h"

namespace nira {

namespace {

// Widths in thousandths of an em of the units 20–7E.
constexpr int16_t kAsciiWidths[95] = {
    278, 278, 355, 556, 556, 889, 667, 191, 333, 333, 389, 584, 278, 333,  278, 278, 556, 556, 556,
    556, 556, 556, 556, 556, 556, 556, 278, 278, 584, 584, 584, 556, 1015, 667, 667, 722, 722, 667,
    611, 778, 722, 278, 500, 667, 556, 833, 722, 778, 667, 778, 722, 667,  611, 722, 667, 944, 667,
    667, 611, 278, 278, 278, 469, 556, 333, 556, 556, 500, 556, 556, 278,  556, 556, 222, 222, 500,
    222, 833, 556, 556, 556, 556, 333, 500, 278, 556, 500, 722, 500, 500,  500, 334, 260, 334, 584};

// The units A0–FF.
constexpr int16_t kLatinWidths[96] = {
    278, 333, 556, 556, 556, 556, 260, 556, 333, 737, 370, 556, 584, 333, 737, 552, 400, 549, 333,  333,
    333, 576, 537, 278, 333, 333, 365, 556, 834, 834, 834, 611, 667, 667, 667, 667, 667, 667, 1000, 722,
    667, 667, 667, 667, 278, 278, 278, 278, 722, 722, 778, 778, 778, 778, 778, 584, 778, 722, 722,  722,
    722, 667, 667, 611, 556, 556, 556, 556, 556, 556, 889, 500, 556, 556, 556, 556, 278, 278, 278,  278,
    556, 556, 556, 556, 556, 556, 556, 549, 611, 556, 556, 556, 556, 500, 556, 500};

constexpr int32_t kTabWidth = 750;
constexpr int32_t kControlWidth = 750;

struct Range {
    char16_t first;
    char16_t last;
    int32_t width;
};

// Everything else, by the first range that holds the unit.
constexpr Range kRanges[] = {
    {0x0000, 0x001F, kControlWidth},
    {0x007F, 0x009F, kControlWidth},
    {0x0100, 0x024F, 556},
    {0x0300, 0x036F, 0},
    {0x0370, 0x03FF, 580},
    {0x0400, 0x052F, 612},
    {0x0590, 0x05CF, 0},
    {0x05D0, 0x05FF, 540},
    {0x064B, 0x065F, 0},
    {0x0600, 0x06FF, 480},
    {0x0E31, 0x0E31, 0},
    {0x0E34, 0x0E3A, 0},
    {0x0E47, 0x0E4E, 0},
    {0x0E00, 0x0E7F, 590},
    {0x1100, 0x11FF, 1000},
    {0x2000, 0x2000, 500},
    {0x2001, 0x2001, 1000},
    {0x200B, 0x200F, 0},
    {0x20D0, 0x20FF, 0},
    {0x2E80, 0xA4CF, 1000},
    {0xAC00, 0xD7FF, 1000},
    {0xD800, 0xDFFF, kControlWidth},
    {0xF900, 0xFAFF, 1000},
    {0xFE20, 0xFE2F, 0},
    {0xFF01, 0xFF60, 1000},
    {0xFF61, 0xFFDC, 500},
    {0x0000, 0xFFFF, 600},
};

int32_t ProportionalWidth(char16_t unit) {
    if (unit == kTab) return kTabWidth;
    if (unit >= 0x20 && unit <= 0x7E) return kAsciiWidths[unit - 0x20];
    if (unit >= 0xA0 && unit <= 0xFF) return kLatinWidths[unit - 0xA0];
    const Range* range = kRanges;
    while (unit < range->first || unit > range->last) ++range;
    return range->width;
}

}  // namespace

int32_t HostAdvance(const FontDescription& font, char16_t unit) {
    const int32_t height = font.height < 0 ? -font.height : font.height;
    if (Utf16Compare(font.face, u"Fixed") == 0) {
        const int32_t advance = (height * 6 + 5) / 10;
        return unit == kTab ? advance + (advance + 1) / 2 : advance;
    }
    // Bold letters are a tenth wider, so that the two weights never measure alike by accident.
    const int32_t weight = font.weight >= 700 ? 1100 : 1000;
    return (ProportionalWidth(unit) * height * weight / 1000 + 500) / 1000;
}

}  // namespace nira
