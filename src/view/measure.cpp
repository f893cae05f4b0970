#include "view/measure.h"

#include <algorithm>
#include <limits>

#include "app/services/notices.h"
#include "base/utf16.h"
#include "platform/text_device.h"
#include "view/advance_table.h"
#include "view/shaped_scripts.h"

namespace nira {

namespace {

int32_t Saturate(int64_t width) {
    return static_cast<int32_t>(std::clamp<int64_t>(width, 0, std::numeric_limits<int32_t>::max()));
}

bool EnsureDevice(MeasureContext* context) {
    if (context->device != nullptr) return true;
    context->device = DeviceOpen(context->window);
    if (context->device == nullptr) {
        ReportLastError();
        return false;
    }
    context->oldFont = DeviceSelectFont(context->device, context->font);
    return true;
}

// 0, reported and noted in *failed, when the system cannot tell.
int32_t SystemExtent(MeasureContext* context, const char16_t* text, uint32_t length, bool* failed = nullptr) {
    int32_t width = 0;
    bool measured = EnsureDevice(context);
    if (measured && !DeviceTextExtent(context->device, text, length, &width)) {
        ReportLastError();
        measured = false;
    }
    if (!measured && failed != nullptr) *failed = true;
    return width;
}

// Fonts with overhang (bitmap fonts made bold or slanted) draw a run wider than its units: they are not
// summed.
bool RunsAreSums(MeasureContext* context, bool* failed) {
    constexpr char16_t kSample[] = u"AVATo We.fi mW";
    constexpr uint32_t kLength = sizeof(kSample) / sizeof(kSample[0]) - 1;
    int32_t sum = 0;
    for (uint32_t i = 0; i < kLength && !*failed; ++i) sum += SystemExtent(context, kSample + i, 1, failed);
    return !*failed && sum == SystemExtent(context, kSample, kLength, failed);
}

// A width as the table keeps it.
int16_t TableWidth(int32_t width) {
    const bool fits = width >= 0 && width <= std::numeric_limits<int16_t>::max();
    return fits ? static_cast<int16_t>(width) : kAdvanceShaped;
}

// What every context needs to know of its font: asked of the system once a font. A failure is not kept; the
// next context asks again.
void LearnFont(MeasureContext* context) {
    const FontCacheEntry* entry = FindFontEntryByHandle(context->font);
    AdvanceTable* advances = entry != nullptr ? entry->advances : nullptr;
    bool failed = false;
    if (advances == nullptr || !advances->measured) {
        context->spaceWidth = SystemExtent(context, u" ", 1, &failed);
        context->tabGlyphWidth = SystemExtent(context, u"\t", 1, &failed);
    }
    if (advances == nullptr || failed) return;
    if (!advances->measured) {
        advances->space = context->spaceWidth;
        advances->tabGlyph = context->tabGlyphWidth;
        advances->widths[kTab] = TableWidth(advances->tabGlyph);
        advances->summable = RunsAreSums(context, &failed);
        advances->measured = !failed;
    }
    context->spaceWidth = advances->space;
    context->tabGlyphWidth = advances->tabGlyph;
    if (advances->summable) context->advances = advances;
}

// Asks the system for a unit's width once; false for units whose width depends on their neighbours.
bool LearnAdvance(MeasureContext* context, char16_t unit, int32_t* width) {
    int16_t& known = context->advances->widths[unit];
    if (known == kAdvanceUnknown) {
        bool failed = false;
        const int32_t extent = IsShapedUnit(unit) ? -1 : SystemExtent(context, &unit, 1, &failed);
        if (failed) {
            *width = 0;
            return true;
        }
        known = TableWidth(extent);
    }
    *width = known;
    return known >= 0;
}

// The glyph widths of a run together and its number of tabs; false when they cannot be summed.
bool SumAdvances(MeasureContext* context, const char16_t* text, uint32_t length, int64_t* sum,
                 uint32_t* tabs) {
    if (context->advances == nullptr) return false;
    const int16_t* widths = context->advances->widths;
    int64_t total = 0;
    uint32_t found = 0;
    for (uint32_t i = 0; i < length; ++i) {
        int32_t width = widths[text[i]];
        if (width < 0 && !LearnAdvance(context, text[i], &width)) return false;
        total += width;
        found += text[i] == kTab ? 1 : 0;
    }
    *sum = total;
    *tabs = found;
    return true;
}

uint32_t CountTabs(const char16_t* text, uint32_t length) {
    return static_cast<uint32_t>(std::count(text, text + length, kTab));
}

int64_t TabGrowth(const MeasureContext* context, int32_t tabSize) {
    return int64_t{context->spaceWidth} * tabSize - context->tabGlyphWidth;
}

// The width a fitted unit adds or takes: a tab's fixed advance, or the unit measured alone.
int64_t UnitWidth(MeasureContext* context, char16_t unit, int32_t tabSize) {
    if (unit == kTab && tabSize != -1) return int64_t{context->spaceWidth} * tabSize;
    return SystemExtent(context, &unit, 1);
}

// How many units fit when the system counts them.
uint32_t SystemFitCount(MeasureContext* context, const char16_t* text, uint32_t length, int32_t maxWidth) {
    uint32_t count = 0;
    if (EnsureDevice(context) && !DeviceFitText(context->device, text, length, maxWidth, &count)) {
        ReportLastError();
    }
    return count;
}

FitResult FitBySystem(MeasureContext* context, const char16_t* text, uint32_t length, int32_t tabSize,
                      int32_t maxWidth) {
    uint32_t count = SystemFitCount(context, text, length, maxWidth);
    int64_t width = count > 0 ? SystemExtent(context, text, count) : 0;
    const uint32_t tabs = tabSize == -1 ? 0 : CountTabs(text, count);
    if (tabs > 0) {
        width += tabs * TabGrowth(context, tabSize);
        while (count > 0 && width > maxWidth) {
            --count;
            width -= UnitWidth(context, text[count], tabSize);
        }
    }
    return {count, Saturate(width)};
}

// Whether a unit that the system would count into a row of `room` pixels must be shaped. Expanded tabs end a
// row earlier, but by how much depends on what the system has counted.
bool ShapedWithin(MeasureContext* context, const char16_t* text, uint32_t length, int64_t room) {
    for (uint32_t i = 0; i < length && room >= 0; ++i) {
        int32_t width = context->advances->widths[text[i]];
        if (width < 0 && !LearnAdvance(context, text[i], &width)) return true;
        room -= width;
    }
    return false;
}

// One pass for both limits of a run with tabs: the system's own count takes tabs as glyphs, and expanding
// them can only shorten it. False when a unit within reach must be shaped.
bool FitBySums(MeasureContext* context, const char16_t* text, uint32_t length, int32_t tabSize,
               int32_t maxWidth, FitResult* result) {
    if (context->advances == nullptr) return false;
    const int16_t* widths = context->advances->widths;
    const int64_t tabWidth = tabSize == -1 ? context->tabGlyphWidth : int64_t{context->spaceWidth} * tabSize;
    int64_t glyphs = 0;
    int64_t expanded = 0;
    uint32_t count = 0;
    for (; count < length; ++count) {
        int32_t width = widths[text[count]];
        if (width < 0 && !LearnAdvance(context, text[count], &width)) return false;
        const int64_t grown = expanded + (text[count] == kTab ? tabWidth : width);
        glyphs += width;
        if (glyphs > maxWidth) break;
        if (grown > maxWidth) {
            if (ShapedWithin(context, text + count + 1, length - count - 1, maxWidth - glyphs)) return false;
            break;
        }
        expanded = grown;
    }
    *result = {count, Saturate(expanded)};
    return true;
}

}  // namespace

void OpenMeasureContext(MeasureContext* context, WindowHandle window, FontHandle font) {
    *context = {};
    context->window = window;
    context->font = font;
    context->ownsDevice = true;
    LearnFont(context);
}

void CloseMeasureContext(MeasureContext* context) {
    if (context->device == nullptr) return;
    DeviceSelectFont(context->device, context->oldFont);
    DeviceClose(context->window, context->device);
    context->device = nullptr;
}

void OpenMeasureContextOnDevice(MeasureContext* context, DeviceHandle device, FontHandle font) {
    *context = {};
    context->font = font;
    context->device = device;
    context->oldFont = DeviceSelectFont(device, font);
    LearnFont(context);
}

void CloseMeasureContextOnDevice(MeasureContext* context) {
    DeviceSelectFont(context->device, context->oldFont);
    context->device = nullptr;
}

int32_t ContextTextWidth(MeasureContext* context, const char16_t* text, uint32_t length, int32_t tabSize,
                         bool* summed) {
    int64_t width = 0;
    uint32_t tabs = 0;
    const bool sums = SumAdvances(context, text, length, &width, &tabs);
    if (summed != nullptr) *summed = sums;
    if (length == 0) return 0;
    if (!sums) {
        tabs = CountTabs(text, length);
        if (tabs == length && tabSize != -1) {
            return Saturate(int64_t{context->spaceWidth} * tabs * tabSize);
        }
        width = SystemExtent(context, text, length);
    }
    if (tabSize != -1) width += tabs * TabGrowth(context, tabSize);
    return Saturate(width);
}

FitResult ContextFitText(MeasureContext* context, const char16_t* text, uint32_t length, int32_t tabSize,
                         int32_t maxWidth) {
    FitResult result = {0, 0};
    if (text == nullptr || length == 0) return result;
    if (FitBySums(context, text, length, tabSize, maxWidth, &result)) return result;
    return FitBySystem(context, text, length, tabSize, maxWidth);
}

int32_t TextWidth(WindowHandle window, FontHandle font, const char16_t* text, uint32_t length,
                  int32_t tabSize) {
    MeasureContext context;
    OpenMeasureContext(&context, window, font);
    const int32_t width = ContextTextWidth(&context, text, length, tabSize);
    CloseMeasureContext(&context);
    return width;
}

FitResult FitText(WindowHandle window, FontHandle font, const char16_t* text, uint32_t length,
                  int32_t tabSize, int32_t maxWidth) {
    MeasureContext context;
    OpenMeasureContext(&context, window, font);
    const FitResult result = ContextFitText(&context, text, length, tabSize, maxWidth);
    CloseMeasureContext(&context);
    return result;
}

int32_t LineHeight(WindowHandle window, FontHandle font) {
    int32_t height = 0;
    int32_t leading = 0;
    MeasureContext context = {};
    context.window = window;
    context.font = font;
    if (EnsureDevice(&context) && !DeviceFontMetrics(context.device, &height, &leading)) ReportLastError();
    CloseMeasureContext(&context);
    return std::max(1, height + leading);
}

}  // namespace nira
