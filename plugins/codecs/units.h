// UTF-16 units, and the escapes that stand for bytes which are no text.
//
// A byte that belongs to no character is kept as one unit, U+DC00 plus the byte: a low half of a surrogate
// pair without its high half. Decoders never yield such a unit for a character, and never a high half without
// its low half, so an encoder knows an escape where it sees one and writes the byte as it was.
#pragma once

#include <cstdint>

namespace codecs {

constexpr char16_t kCr = 0x000D;
constexpr char16_t kMarkUnit = 0xFEFF;

constexpr bool IsHigh(char16_t unit) { return (unit & 0xFC00) == 0xD800; }
constexpr bool IsLow(char16_t unit) { return (unit & 0xFC00) == 0xDC00; }
constexpr bool IsHalf(char16_t unit) { return (unit & 0xF800) == 0xD800; }

constexpr char16_t EscapeOf(uint8_t byte) { return static_cast<char16_t>(0xDC00 | byte); }

// For a low half that follows no high half.
constexpr bool IsEscape(char16_t unit) { return (unit & 0xFF00) == 0xDC00; }

constexpr uint32_t PointOfPair(char16_t high, char16_t low) {
    return 0x10000u + ((high & 0x3FFu) << 10 | (low & 0x3FFu));
}

// Writes a code point above U+FFFF as a pair; returns the place behind it.
inline char16_t* PutPair(uint32_t point, char16_t* out) {
    out[0] = static_cast<char16_t>(0xD7C0 + (point >> 10));
    out[1] = static_cast<char16_t>(0xDC00 | (point & 0x3FF));
    return out + 2;
}

// Below, at or above 0 in ordinal order of the units: the order in which NIRA lists names.
inline int CompareNames(const char16_t* left, const char16_t* right) {
    while (*left != 0 && *left == *right) {
        ++left;
        ++right;
    }
    return static_cast<int>(*left) - static_cast<int>(*right);
}

}  // namespace codecs
