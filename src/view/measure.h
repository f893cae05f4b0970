// Turning text into pixels.
//
// Tabs have a fixed advance: a tab is `tabSize` spaces wide wherever it stands, and caret, wrapping and
// painting all rely on it. A tabSize of -1 measures tabs as the font's own glyph. The system's measuring
// calls cost microseconds a run, so advance widths are cached per font and summed, wherever that gives the
// same pixels: not for scripts that the system shapes (Arabic, Indic, Thai, combining marks, surrogate
// pairs), and not for fonts whose runs are wider than the sum of their glyphs. There the system is asked. A
// failing system call is reported with its error, and measuring goes on with what the call left. Widths that
// would pass INT32_MAX stop there.
#pragma once

#include <cstdint>

#include "view/fonts.h"

namespace nira {

// Many runs in one font. Opened on the stack, closed by its owner.
struct MeasureContext {
    WindowHandle window;
    FontHandle font;
    DeviceHandle device;  // null until the system must be asked
    FontHandle oldFont;   // selected in the device before
    bool ownsDevice;
    AdvanceTable* advances;  // null when this font cannot be summed
    int32_t spaceWidth;
    int32_t tabGlyphWidth;
};

struct FitResult {
    uint32_t count;  // units of the longest prefix that is not wider than the limit
    int32_t width;   // its width
};

void OpenMeasureContext(MeasureContext* context, WindowHandle window, FontHandle font);
void CloseMeasureContext(MeasureContext* context);

// The same on a device of the caller's (a painting device), which stays the caller's.
void OpenMeasureContextOnDevice(MeasureContext* context, DeviceHandle device, FontHandle font);
void CloseMeasureContextOnDevice(MeasureContext* context);

// The width of a run; 0 for an empty one. *summed, when given, becomes true when it is the sum over the
// units, so that the width of a changed run can be computed from the change alone.
int32_t ContextTextWidth(MeasureContext* context, const char16_t* text, uint32_t length, int32_t tabSize,
                         bool* summed = nullptr);

// The longest prefix not wider than `maxWidth`. May be 0 units long. A null text gives 0.
FitResult ContextFitText(MeasureContext* context, const char16_t* text, uint32_t length, int32_t tabSize,
                         int32_t maxWidth);

// Self-contained forms.
int32_t TextWidth(WindowHandle window, FontHandle font, const char16_t* text, uint32_t length,
                  int32_t tabSize);
FitResult FitText(WindowHandle window, FontHandle font, const char16_t* text, uint32_t length,
                  int32_t tabSize, int32_t maxWidth);

// Pixels of a row of text: the font's height and the space it wants between rows; at least 1.
int32_t LineHeight(WindowHandle window, FontHandle font);

}  // namespace nira
