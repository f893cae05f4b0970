// Sixteen characters at a time: what most of most files can be converted in.
//
// Written with the vectors that both compilers know, so that every processor gets its own instructions
// (SSE2 on x86-64) from one text.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

namespace codecs {

static_assert(std::endian::native == std::endian::little, "places in words are counted from the low end");

constexpr uint32_t kBlock = 16;

using Bytes16 = uint8_t __attribute__((vector_size(16)));
using Units8 = uint16_t __attribute__((vector_size(16)));
using Units16 = uint16_t __attribute__((vector_size(32)));

// Writes 16 bytes as 16 units. Returns how many of them, from the first, are ASCII; the units behind those
// mean nothing.
inline uint32_t WidenBlock(const uint8_t* source, char16_t* target) {
    constexpr uint64_t kHighBits = 0x8080808080808080;
    Bytes16 bytes;
    uint64_t halves[2];
    std::memcpy(&bytes, source, kBlock);
    std::memcpy(halves, source, kBlock);
    const Units16 units = __builtin_convertvector(bytes, Units16);
    std::memcpy(target, &units, sizeof(units));
    const uint64_t low = halves[0] & kHighBits;
    const uint64_t high = halves[1] & kHighBits;
    if (low != 0) return static_cast<uint32_t>(std::countr_zero(low)) / 8;
    return 8 + static_cast<uint32_t>(std::countr_zero(high)) / 8;
}

// Writes 16 units as 16 bytes and returns whether all of them are ASCII; when not, the bytes mean nothing.
inline bool NarrowBlock(const char16_t* source, uint8_t* target) {
    constexpr uint64_t kNotAscii = 0xFF80FF80FF80FF80;
    uint64_t quarters[4];
    std::memcpy(quarters, source, sizeof(quarters));
    if (((quarters[0] | quarters[1] | quarters[2] | quarters[3]) & kNotAscii) != 0) return false;
    Units16 units;
    std::memcpy(&units, source, sizeof(units));
    const Bytes16 bytes = __builtin_convertvector(units, Bytes16);
    std::memcpy(target, &bytes, kBlock);
    return true;
}

// Swaps the two bytes of each unit; source and target may be the same, and need not be aligned.
inline void SwapUnits(const void* source, uint32_t units, void* target) {
    constexpr uint32_t kAtOnce = sizeof(Units8) / 2;
    const auto* from = static_cast<const uint8_t*>(source);
    auto* to = static_cast<uint8_t*>(target);
    for (; units >= kAtOnce; units -= kAtOnce, from += sizeof(Units8), to += sizeof(Units8)) {
        Units8 block;
        std::memcpy(&block, from, sizeof(block));
        block = (block << 8) | (block >> 8);
        std::memcpy(to, &block, sizeof(block));
    }
    for (; units > 0; --units, from += 2, to += 2) {
        const uint8_t first = from[0];
        to[0] = from[1];
        to[1] = first;
    }
}

}  // namespace codecs
