// The host's fonts: two tables of advance widths, and counts of what was asked of the measuring device.
//
// The face "Fixed" gives every unit the same advance, 6/10 of the font's height (8 pixels at height −14); its
// tab glyph is half as wide again. Every other face is one proportional sans serif: stored widths of Latin
// letters, a full em for the East Asian ranges, nothing for combining marks. Advances are whole pixels,
// scaled with the height. In both fonts the tab glyph is not as wide as a space.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/text_device.h"

namespace nira {

// The advance of one unit standing alone, in pixels.
int32_t HostAdvance(const FontDescription& font, char16_t unit);

// While on, runs with combining marks, Arabic letters or surrogate pairs are not as wide as their units
// together: joined Arabic letters lose a pixel at each join, a mark with no letter before it is half an em
// wide, and a surrogate pair is one em. Off at first.
void HostSetTextShaping(bool on);

// The dots per inch of the screen; 96 at first.
void HostSetDotsPerInch(int32_t dotsPerInch);

struct TextDeviceCounts {
    size_t fontsCreated;
    size_t fontsLive;
    size_t devicesOpened;
    size_t devicesLive;
    size_t extentCalls;
    size_t fitCalls;
    size_t metricsCalls;
    uint64_t unitsMeasured;  // by the extent and fit calls together
};

const TextDeviceCounts& HostTextDeviceCounts();

// Zeroes the counts of what was made and asked; what is live stays counted.
void HostTextDeviceResetCounts();

// What a font handle stands for.
const FontDescription& HostFontDescription(FontHandle font);

// The font selected into the device now; null before the first selection.
FontHandle HostSelectedFont(DeviceHandle device);

}  // namespace nira
