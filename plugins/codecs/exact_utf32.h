// UTF-32 without loss. A value that is no character (a surrogate, or beyond U+10FFFF) becomes four escapes,
// one for each of its bytes in the order of the file; so do the one to three bytes of a value that the end of
// the file cuts off. No character makes an escape, so the bytes come back as they were.
//
// When a person has taken a part of such a group away, the one to three escapes that are left are written as
// values of their own, unless they end the file: otherwise everything behind them would be out of step.
#pragma once

#include <cstdint>

namespace codecs {

// Room for `size` units. Takes whole values; with `last` everything. Returns the bytes taken.
uint32_t DecodeUtf32(bool bigEndian, const uint8_t* source, uint32_t size, bool last, char16_t** out);

// Room for four bytes a unit. At the end of the units a high half, and up to three escapes, are taken only
// with `last`. Returns the units taken.
uint32_t EncodeUtf32(bool bigEndian, const char16_t* source, uint32_t units, bool last, uint8_t** out);

}  // namespace codecs
