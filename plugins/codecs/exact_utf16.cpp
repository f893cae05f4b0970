#include "codecs/exact_utf16.h"

#include <cstring>

#include "codecs/blocks.h"

namespace codecs {

namespace {

// An empty chunk may have no address at all.
void CopyUnits(bool bigEndian, const void* source, uint32_t units, void* target) {
    if (bigEndian) {
        SwapUnits(source, units, target);
    } else if (units > 0) {
        std::memcpy(target, source, size_t{units} * 2);
    }
}

}  // namespace

uint32_t DecodeUtf16(bool bigEndian, const uint8_t* source, uint32_t size, bool last, char16_t** out) {
    const uint32_t units = size / 2;
    CopyUnits(bigEndian, source, units, *out);
    *out += units;
    if (size % 2 == 0 || !last) return units * 2;
    const uint32_t half = source[size - 1];
    *(*out)++ = static_cast<char16_t>(bigEndian ? half << 8 : half);
    return size;
}

void EncodeUtf16(bool bigEndian, const char16_t* source, uint32_t units, uint8_t** out) {
    CopyUnits(bigEndian, source, units, *out);
    *out += size_t{units} * 2;
}

}  // namespace codecs
