// Fonts: their descriptions, and the process-wide cache that shares them.
//
// A font description is a terminated text: the face name followed by exactly one attribute unit with the
// point size in bits 0-7 and the styles below. Two descriptions that differ only in size or style are two
// fonts.
#pragma once

#include <cstdint>

#include "platform/handles.h"
#include "platform/text_device.h"

namespace nira {

constexpr char16_t kFontSizeMask = 0xFF;
constexpr char16_t kFontBold = 0x100;
constexpr char16_t kFontItalic = 0x200;
constexpr char16_t kFontUnderline = 0x400;
constexpr char16_t kFontStrikeOut = 0x800;
constexpr char16_t kFontClearType = 0x1000;

// Advance widths of a font's units, filled in as text meets them. Not all units have one: see view/measure.h.
struct AdvanceTable;

struct FontCacheEntry {
    char16_t* key;    // the font description; owned
    FontHandle font;  // null when the system could not make it
    uint32_t references;
    AdvanceTable* advances;  // owned; null until the font has been measured
};

// Entries in ascending ordinal order of their keys. The array grows and shrinks in steps of ten.
struct FontCache {
    FontCacheEntry* entries;
    uint32_t elementSize;
    uint32_t count;
    uint32_t capacity;
};

// Makes the cache and takes the scale of the screen that shows `window`: minus its pixels per inch divided by
// 72, cut to an integer, so that a 10-point font is 10 pixels high at 96 and at 131 pixels per inch. Returns
// 1, or 0 when memory ran out.
int InitFonts(WindowHandle window);

// Deletes every font and the cache.
void ShutdownFonts();

// The whole pixels of a point, positive.
int32_t FontScale();

// A font for a description, shared with everyone who asked for the same one; balance it with ReleaseFont. An
// empty description gives the system's choice for no name and size 0. May be null when the system cannot make
// one.
FontHandle AcquireFont(const char16_t* description);

// The last release deletes the font. An unknown handle is ignored.
void ReleaseFont(FontHandle font);

// Where a description stands in the cache; -1 or null when it does not.
int32_t FindFontIndex(const char16_t* description);
FontCacheEntry* FindFontEntry(const char16_t* description);

// The entry of a font handle; null for an unknown one.
FontCacheEntry* FindFontEntryByHandle(FontHandle font);

// The cache as it is; null before InitFonts and after ShutdownFonts.
const FontCache* TheFontCache();

// Splits a description. An empty one gives face "" and no attributes.
FontDescription DescribeFont(const char16_t* description);

}  // namespace nira
