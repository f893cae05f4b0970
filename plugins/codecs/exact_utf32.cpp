#include "codecs/exact_utf32.h"

#include "codecs/units.h"

namespace codecs {

namespace {

constexpr uint32_t kGroup = 4;

uint32_t ValueAt(bool bigEndian, const uint8_t* at) {
    uint32_t value = 0;
    for (uint32_t i = 0; i < kGroup; ++i) value = value << 8 | at[bigEndian ? i : kGroup - 1 - i];
    return value;
}

void PutValue(bool bigEndian, uint32_t value, uint8_t** out) {
    for (uint32_t i = 0; i < kGroup; ++i) {
        *(*out)++ = static_cast<uint8_t>(value >> 8 * (bigEndian ? kGroup - 1 - i : i));
    }
}

void Escape(const uint8_t* bytes, uint32_t count, char16_t** out) {
    for (uint32_t i = 0; i < count; ++i) *(*out)++ = EscapeOf(bytes[i]);
}

// The number of escapes from `at` on, at most a group.
uint32_t EscapesAt(const char16_t* at, uint32_t left) {
    uint32_t count = 0;
    while (count < left && count < kGroup && IsEscape(at[count])) ++count;
    return count;
}

// The units at `at`, of which the first is half of a pair. Returns the units taken, 0 to wait for more.
uint32_t EncodeHalf(bool bigEndian, const char16_t* at, uint32_t left, bool last, uint8_t** out) {
    if (IsHigh(at[0])) {
        if (left < 2 && !last) return 0;
        if (left >= 2 && IsLow(at[1])) {
            PutValue(bigEndian, PointOfPair(at[0], at[1]), out);
            return 2;
        }
    }
    const uint32_t escapes = EscapesAt(at, left);
    const bool toTheEnd = escapes > 0 && escapes == left;
    if (toTheEnd && escapes < kGroup && !last) return 0;
    if (toTheEnd || escapes == kGroup) {
        for (uint32_t i = 0; i < escapes; ++i) *(*out)++ = static_cast<uint8_t>(at[i]);
        return escapes;
    }
    PutValue(bigEndian, at[0], out);
    return 1;
}

}  // namespace

uint32_t DecodeUtf32(bool bigEndian, const uint8_t* source, uint32_t size, bool last, char16_t** out) {
    uint32_t at = 0;
    for (; size - at >= kGroup; at += kGroup) {
        const uint32_t value = ValueAt(bigEndian, source + at);
        if (value > 0x10FFFF || (value & ~0x7FFu) == 0xD800) {
            Escape(source + at, kGroup, out);
        } else if (value > 0xFFFF) {
            *out = PutPair(value, *out);
        } else {
            *(*out)++ = static_cast<char16_t>(value);
        }
    }
    if (!last) return at;
    Escape(source + at, size - at, out);
    return size;
}

uint32_t EncodeUtf32(bool bigEndian, const char16_t* source, uint32_t units, bool last, uint8_t** out) {
    uint32_t at = 0;
    while (at < units) {
        if (!IsHalf(source[at])) {
            PutValue(bigEndian, source[at++], out);
            continue;
        }
        const uint32_t taken = EncodeHalf(bigEndian, source + at, units - at, last, out);
        if (taken == 0) break;
        at += taken;
    }
    return at;
}

}  // namespace codecs
