// What the font chooser decides: font descriptions (view/fonts.h) taken apart and put together, and the sizes
// that a face is offered in.
#pragma once

#include <cstdint>

namespace nira {

// A face name in a description has at most this many units; the rest of a longer one is cut off.
constexpr uint32_t kFaceUnits = 32;

// Sizes are points. None above this is shown or stored, and none below 1 is stored: a size of 0 could make
// the attribute unit 0, which would end the description before its attributes.
constexpr uint32_t kLargestFontSize = 72;

// A font description taken apart.
struct FontChoice {
    char16_t face[kFaceUnits + 1];  // terminated
    uint32_t size;
    char16_t styles;  // kFontBold and the like; no other bits
};

// An empty description has no face, no styles and size 0. A size above the largest counts as the largest.
FontChoice ReadFontChoice(const char16_t* description);

// The description of a choice; local heap, owned by the caller. Of the size the low 8 bits count, and of
// these at most the largest size, at least 1. Unwinds when memory runs out.
char16_t* WriteFontChoice(const FontChoice& choice);

// A size as people type it: the number that the text begins with, blanks before it skipped; 0 without one.
// The low 32 bits of a larger number.
uint32_t ReadFontSize(const char16_t* text);

// The sizes offered for one face. The size that was chosen for the face before is carried over: it is
// selected where the new face has it.
constexpr uint32_t kMostFontSizes = 100;

struct FontSizes {
    uint32_t sizes[kMostFontSizes];  // in the order they were found, each once
    uint32_t count;
    int32_t carried;   // the size carried over; negative once the list has it
    int32_t selected;  // where it stands in the list; -1 when it does not
};

// No sizes yet.
void StartFontSizes(FontSizes* sizes, int32_t carried);

// Takes in one font of the face. An outline font has every size: all standard ones are listed, and there is
// no need to look at further fonts. Any other font has the one size that its character height (pixels,
// without internal leading) makes on a screen of `scale` pixels a point. Returns whether to go on.
bool AddFontSizes(FontSizes* sizes, bool outline, int32_t characterHeight, int32_t scale);

}  // namespace nira
