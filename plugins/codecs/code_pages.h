// Code pages, through the system's conversion.
//
// Bytes that are no character of the page become escapes (codecs/units.h), so that saving writes them as they
// were; so do bytes that the system reads as something it would write as another character. A page can also
// have two ways to write one character, of which saving writes one: then the text is legible and the file may
// change in those places. A strict reader, as "Auto" is, makes escapes of them instead, and loses nothing.
#pragma once

#include <cstdint>

#include "nira_codec.h"

namespace codecs {

// A page to read in. Freed with the `grow` that made it.
struct PageReader {
    uint32_t page;
    bool strict;
    bool ready;            // the rest is filled in
    bool manyBytes;        // some characters have two bytes or more
    char16_t single[256];  // what each byte is, for pages of single bytes
    uint8_t* scratch;      // what saving would write
    uint32_t scratchSize;
    uint8_t* again;  // and what would be read then; used as units
    uint32_t againSize;
};

PageReader* CreatePageReader(uint32_t page, bool strict, NiraRealloc grow);
void DestroyPageReader(PageReader* reader, NiraRealloc grow);  // null is ignored

// Room for `size` units. Leaves a character that the end of the bytes may have cut, unless `last`. Returns
// the bytes taken.
uint32_t DecodePage(PageReader* reader, const uint8_t* source, uint32_t size, bool last, char16_t** out,
                    NiraRealloc grow);

// Room for four bytes a unit. A high half at the end is taken only with `last`. Returns the units taken.
uint32_t EncodePage(uint32_t page, const char16_t* source, uint32_t units, bool last, uint8_t** out);

}  // namespace codecs
