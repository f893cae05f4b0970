#include "platform/text_device.h"

#include "platform/host/faults.h"
#include "platform/host/font_table.h"
#include "platform/host/last_error.h"

namespace nira {

struct FontTag {
    FontDescription description;
};

struct DeviceTag {
    FontHandle font;
};

namespace {

TextDeviceCounts counts;
bool shaping = false;
int32_t screenDotsPerInch = 96;

// Fonts of height 0 ask for the system's default size.
constexpr int32_t kDefaultHeight = 12;

bool IsArabicLetter(char16_t unit) { return unit >= 0x0620 && unit <= 0x064A; }

bool IsCombining(char16_t unit) {
    return (unit >= 0x0300 && unit <= 0x036F) || (unit >= 0x064B && unit <= 0x065F) ||
           (unit >= 0x20D0 && unit <= 0x20FF);
}

bool IsHighSurrogate(char16_t unit) { return (unit & 0xFC00) == 0xD800; }
bool IsLowSurrogate(char16_t unit) { return (unit & 0xFC00) == 0xDC00; }

int32_t HeightOf(const FontDescription& font) { return font.height < 0 ? -font.height : font.height; }

// What the unit at `at` adds to the width of the run before it.
int32_t AddedWidth(const FontDescription& font, const char16_t* text, uint32_t at) {
    const char16_t unit = text[at];
    const int32_t alone = HostAdvance(font, unit);
    if (!shaping) return alone;
    if (IsCombining(unit) && at == 0) return HeightOf(font) / 2;
    if (at == 0) return alone;
    const char16_t before = text[at - 1];
    if (IsArabicLetter(unit) && IsArabicLetter(before)) return alone - 1;
    if (IsLowSurrogate(unit) && IsHighSurrogate(before)) return HeightOf(font) - HostAdvance(font, before);
    return alone;
}

// Null, with the reason in the last error, when the measuring call has to fail.
const FontDescription* FontToMeasure(DeviceHandle device) {
    if (FaultStrikes(FaultPoint::kDeviceMeasure)) return nullptr;
    if (device != nullptr && device->font != nullptr) return &device->font->description;
    HostSetLastError(kErrorInvalidHandle);
    return nullptr;
}

}  // namespace

FontHandle FontCreate(const FontDescription& description) {
    if (FaultStrikes(FaultPoint::kFontCreate)) return nullptr;
    auto* font = new FontTag{description};
    if (font->description.height == 0) font->description.height = -kDefaultHeight;
    ++counts.fontsCreated;
    ++counts.fontsLive;
    return font;
}

void FontDelete(FontHandle font) {
    if (font == nullptr) return;
    --counts.fontsLive;
    delete font;
}

int32_t ScreenDotsPerInch(WindowHandle) { return screenDotsPerInch; }

DeviceHandle DeviceOpen(WindowHandle) {
    if (FaultStrikes(FaultPoint::kDeviceOpen)) return nullptr;
    ++counts.devicesOpened;
    ++counts.devicesLive;
    return new DeviceTag{nullptr};
}

void DeviceClose(WindowHandle, DeviceHandle device) {
    if (device == nullptr) return;
    --counts.devicesLive;
    delete device;
}

FontHandle DeviceSelectFont(DeviceHandle device, FontHandle font) {
    if (device == nullptr) return nullptr;
    const FontHandle before = device->font;
    device->font = font;
    return before;
}

bool DeviceTextExtent(DeviceHandle device, const char16_t* text, uint32_t length, int32_t* width) {
    ++counts.extentCalls;
    const FontDescription* font = FontToMeasure(device);
    if (font == nullptr) return false;
    counts.unitsMeasured += length;
    *width = 0;
    for (uint32_t at = 0; at < length; ++at) *width += AddedWidth(*font, text, at);
    return true;
}

bool DeviceFitText(DeviceHandle device, const char16_t* text, uint32_t length, int32_t maxWidth,
                   uint32_t* count) {
    ++counts.fitCalls;
    const FontDescription* font = FontToMeasure(device);
    if (font == nullptr) return false;
    *count = 0;
    int32_t width = 0;
    for (uint32_t at = 0; at < length; ++at) {
        width += AddedWidth(*font, text, at);
        ++counts.unitsMeasured;
        if (width > maxWidth) break;
        *count = at + 1;
    }
    return true;
}

bool DeviceFontMetrics(DeviceHandle device, int32_t* height, int32_t* externalLeading) {
    ++counts.metricsCalls;
    const FontDescription* font = FontToMeasure(device);
    if (font == nullptr) return false;
    *height = HeightOf(*font) + (HeightOf(*font) + 3) / 6;
    *externalLeading = (HeightOf(*font) + 15) / 30;
    return true;
}

void HostSetTextShaping(bool on) { shaping = on; }

void HostSetDotsPerInch(int32_t dotsPerInch) { screenDotsPerInch = dotsPerInch; }

const TextDeviceCounts& HostTextDeviceCounts() { return counts; }

void HostTextDeviceResetCounts() {
    const size_t fonts = counts.fontsLive;
    const size_t devices = counts.devicesLive;
    counts = {};
    counts.fontsLive = fonts;
    counts.devicesLive = devices;
}

const FontDescription& HostFontDescription(FontHandle font) { return font->description; }

FontHandle HostSelectedFont(DeviceHandle device) { return device->font; }

}  // namespace nira
