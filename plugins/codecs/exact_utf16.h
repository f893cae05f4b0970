// UTF-16 without loss: every unit is text, halves of pairs without their other half too.
//
// One thing has no text: a unit of which the file holds only the first byte, at its very end. It is completed
// with a zero byte, so that nothing of the file is lost; saving then makes the file one byte longer.
#pragma once

#include <cstdint>

namespace codecs {

// Room for size / 2 + 1 units. An odd byte at the end is taken only with `last`. Returns the bytes taken.
uint32_t DecodeUtf16(bool bigEndian, const uint8_t* source, uint32_t size, bool last, char16_t** out);

// Room for two bytes a unit.
void EncodeUtf16(bool bigEndian, const char16_t* source, uint32_t units, uint8_t** out);

}  // namespace codecs
