#include "codecs/exact_utf16.h"

#include <cstring>

#include "codecs/blocks.h"

namespace codecs {

uint32_t DecodeUtf16(bool bigEndian, const uint8_t* source, uint32_t size, bool last, char16_t** out) {
    const uint32_t units = size / 2;
    if (bigEndian) {
        SwapUnits(source, units, *out);
    } else {
        std::memcpy(*out, source, size_t{units} * 2);
    }
    *out += units;
    if (size % 2 == 0 || !last) return units * 2;
    const uint32_t half = source[size - 1];
    *(*out)++ = static_cast<char16_t>(bigEndian ? half << 8 : half);
    return size;
}

void EncodeUtf16(bool bigEndian, const char16_t* source, uint32_t units, uint8_t** out) {
    if (bigEndian) {
        SwapUnits(source, units, *out);
    } else {
        std::memcpy(*out, source, size_t{units} * 2);
    }
    *out += size_t{units} * 2;
}

}  // namespace codecs
