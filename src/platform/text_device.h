// Fonts, and measuring text with them, in pixels of the screen.
//
// These are the system's own measuring calls, slow but always right; view/measure.h answers most questions
// from cached advance widths and comes here for the rest. A failing call leaves its reason in the last error.
#pragma once

#include <cstdint>

#include "platform/handles.h"

namespace nira {

// Everything that decides how a font looks.
struct FontDescription {
    int32_t height;  // negative: height of the characters in pixels, without internal leading
    int32_t weight;  // 400 normal, 700 bold
    bool italic;
    bool underline;
    bool strikeOut;
    bool clearType;
    char16_t face[32];  // terminated; a longer name is cut
};

// The system finds the nearest font it has. Null on failure.
FontHandle FontCreate(const FontDescription& description);
void FontDelete(FontHandle font);

// Logical pixels per inch of the screen that shows `window`, vertically. 96 when it cannot be told.
int32_t ScreenDotsPerInch(WindowHandle window);

// A device to measure on. `window` may be null (the screen). Null on failure; close with the same window.
DeviceHandle DeviceOpen(WindowHandle window);
void DeviceClose(WindowHandle window, DeviceHandle device);

// Makes `font` the one that is measured; returns the font selected before, to be selected back.
FontHandle DeviceSelectFont(DeviceHandle device, FontHandle font);

// The extent of a run, tab glyphs included.
bool DeviceTextExtent(DeviceHandle device, const char16_t* text, uint32_t length, int32_t* width);

// The longest prefix that is not wider than `maxWidth`, as the system counts it.
bool DeviceFitText(DeviceHandle device, const char16_t* text, uint32_t length, int32_t maxWidth,
                   uint32_t* count);

// Height of a row of text (ascent and descent) and the space the font wants between rows.
bool DeviceFontMetrics(DeviceHandle device, int32_t* height, int32_t* externalLeading);

}  // namespace nira
