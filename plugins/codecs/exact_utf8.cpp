#include "codecs/exact_utf8.h"

#include "codecs/blocks.h"
#include "codecs/units.h"

namespace codecs {

namespace {

constexpr uint32_t kIllFormed = 0;
constexpr uint32_t kCut = 5;  // no sequence is that long

constexpr uint32_t LengthByLead(uint8_t lead) {
    if (lead < 0x80) return 1;
    if (lead < 0xC2) return kIllFormed;
    if (lead < 0xE0) return 2;
    if (lead < 0xF0) return 3;
    return lead < 0xF5 ? 4 : kIllFormed;
}

// The second byte of three or four is what makes a form overlong, a surrogate, or too large.
constexpr bool SecondFits(uint8_t lead, uint8_t second) {
    if (lead == 0xE0) return second >= 0xA0 && second <= 0xBF;
    if (lead == 0xED) return second >= 0x80 && second <= 0x9F;
    if (lead == 0xF0) return second >= 0x90 && second <= 0xBF;
    if (lead == 0xF4) return second >= 0x80 && second <= 0x8F;
    return (second & 0xC0) == 0x80;
}

// The length of the well-formed sequence at `at`, kIllFormed, or kCut when the `left` bytes (at least one)
// begin one and are all there is.
constexpr uint32_t SequenceLength(const uint8_t* at, uint32_t left) {
    const uint32_t length = LengthByLead(at[0]);
    if (length <= 1) return length;
    if (left < 2) return kCut;
    if (!SecondFits(at[0], at[1])) return kIllFormed;
    for (uint32_t i = 2; i < length; ++i) {
        if (i == left) return kCut;
        if ((at[i] & 0xC0) != 0x80) return kIllFormed;
    }
    return length;
}

constexpr uint32_t PointOf(const uint8_t* at, uint32_t length) {
    constexpr uint8_t kLeadBits[] = {0, 0x7F, 0x1F, 0x0F, 0x07};
    uint32_t point = at[0] & kLeadBits[length];
    for (uint32_t i = 1; i < length; ++i) point = point << 6 | (at[i] & 0x3Fu);
    return point;
}

// One sequence or one byte that is none, of any kind. Returns the bytes taken, 0 for a cut sequence.
inline uint32_t DecodeOne(const uint8_t* at, uint32_t left, bool last, char16_t** out) {
    const uint32_t length = SequenceLength(at, left);
    if (length == kCut && !last) return 0;
    if (length == kCut || length == kIllFormed) {
        *(*out)++ = EscapeOf(at[0]);
        return 1;
    }
    const uint32_t point = PointOf(at, length);
    if (point < 0x10000) {
        *(*out)++ = static_cast<char16_t>(point);
    } else {
        *out = PutPair(point, *out);
    }
    return length;
}

// The usual sequences of two and three bytes, looked at as one word. Returns the bytes taken, 0 when it is
// something else. Four bytes can be read.
inline uint32_t DecodeUsual(const uint8_t* at, char16_t* out) {
    uint32_t word = 0;
    std::memcpy(&word, at, sizeof(word));
    if ((word & 0x00C0C0F0) == 0x008080E0) {
        const uint32_t unit = (word & 0x0F) << 12 | (word >> 2 & 0x0FC0) | (word >> 16 & 0x3F);
        if (unit < 0x800 || (unit & 0xF800) == 0xD800) return 0;
        *out = static_cast<char16_t>(unit);
        return 3;
    }
    if ((word & 0xC0E0) == 0x80C0 && (word & 0x1E) != 0) {
        *out = static_cast<char16_t>((word & 0x1F) << 6 | (word >> 8 & 0x3F));
        return 2;
    }
    return 0;
}

inline uint8_t* PutTwo(uint32_t unit, uint8_t* out) {
    out[0] = static_cast<uint8_t>(0xC0 | unit >> 6);
    out[1] = static_cast<uint8_t>(0x80 | (unit & 0x3F));
    return out + 2;
}

// Three bytes in one word; the fourth is overwritten by what follows.
inline uint8_t* PutThree(uint32_t unit, uint8_t* out) {
    const uint32_t word = 0x008080E0u | unit >> 12 | (unit >> 6 & 0x3F) << 8 | (unit & 0x3F) << 16;
    std::memcpy(out, &word, sizeof(word));
    return out + 3;
}

inline uint8_t* PutFour(uint32_t point, uint8_t* out) {
    out[0] = static_cast<uint8_t>(0xF0 | point >> 18);
    out[1] = static_cast<uint8_t>(0x80 | (point >> 12 & 0x3F));
    out[2] = static_cast<uint8_t>(0x80 | (point >> 6 & 0x3F));
    out[3] = static_cast<uint8_t>(0x80 | (point & 0x3F));
    return out + 4;
}

// The half of a pair at the start of `left` units. Returns the units taken, 0 when its pair may be cut.
inline uint32_t EncodeHalf(const char16_t* at, uint32_t left, bool last, uint8_t** out) {
    if (IsHigh(at[0])) {
        if (left < 2 && !last) return 0;
        if (left >= 2 && IsLow(at[1])) {
            *out = PutFour(PointOfPair(at[0], at[1]), *out);
            return 2;
        }
    }
    if (IsEscape(at[0]) && at[0] >= EscapeOf(0x80)) {
        *(*out)++ = static_cast<uint8_t>(at[0]);
    } else {
        *out = PutThree(at[0], *out);
    }
    return 1;
}

}  // namespace

uint32_t DecodeUtf8(const uint8_t* source, uint32_t size, bool last, char16_t** out) {
    uint32_t at = 0;
    char16_t* to = *out;
    while (size - at >= kBlock) {
        uint32_t taken = 0;
        if (source[at] < 0x80) {
            taken = WidenBlock(source + at, to);
            to += taken;
        } else {
            taken = DecodeUsual(source + at, to);
            if (taken != 0) {
                ++to;
            } else {
                taken = DecodeOne(source + at, size - at, last, &to);
            }
        }
        at += taken;
    }
    while (at < size) {
        const uint32_t taken = DecodeOne(source + at, size - at, last, &to);
        if (taken == 0) break;
        at += taken;
    }
    *out = to;
    return at;
}

uint32_t EncodeUtf8(const char16_t* source, uint32_t units, bool last, uint8_t** out) {
    uint32_t at = 0;
    uint8_t* to = *out;
    while (at < units) {
        const char16_t unit = source[at];
        uint32_t taken = 1;
        if (unit < 0x80) {
            if (units - at >= kBlock && NarrowBlock(source + at, to)) taken = kBlock;
            *to = static_cast<uint8_t>(unit);
            to += taken;
        } else if (unit < 0x800) {
            to = PutTwo(unit, to);
        } else if (!IsHalf(unit)) {
            to = PutThree(unit, to);
        } else {
            taken = EncodeHalf(source + at, units - at, last, &to);
            if (taken == 0) break;
        }
        at += taken;
    }
    *out = to;
    return at;
}

bool IsUtf8(const uint8_t* source, uint32_t size, bool last) {
    char16_t unused[kBlock];
    uint32_t at = 0;
    while (at < size) {
        if (size - at >= kBlock && source[at] < 0x80) {
            at += WidenBlock(source + at, unused);
            continue;
        }
        const uint32_t length = SequenceLength(source + at, size - at);
        if (length == kIllFormed) return false;
        if (length == kCut) return !last;
        at += length;
    }
    return true;
}

}  // namespace codecs
