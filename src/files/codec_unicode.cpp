#include "files/codec_unicode.h"

#include <bit>
#include <cstring>

#include "app/services/memory.h"
#include "settings/options.h"

namespace nira {

namespace {

constexpr uint32_t kHostOrder = std::endian::native == std::endian::little ? kCodecUtf16Le : kCodecUtf16Be;
constexpr char16_t kReplacement = 0xFFFD;

uint32_t& KindOf(void* state) { return *static_cast<uint32_t*>(state); }

// ---- byte-order marks ----

struct Mark {
    uint32_t kind;
    uint32_t size;
    uint8_t bytes[3];
};

constexpr Mark kMarks[] = {
    {kCodecUtf16Be, 2, {0xFE, 0xFF, 0}},
    {kCodecUtf16Le, 2, {0xFF, 0xFE, 0}},
    {kCodecUtf8, 3, {0xEF, 0xBB, 0xBF}},
};

// Switches `kind` to what the mark at the start says. Returns the mark's bytes, 0 without one.
uint32_t TakeMark(const uint8_t* source, uint32_t size, uint32_t* kind) {
    for (const Mark& mark : kMarks) {
        if (size >= mark.size && std::memcmp(source, mark.bytes, mark.size) == 0) {
            *kind = mark.kind;
            return mark.size;
        }
    }
    if (*kind == kCodecUnicode) *kind = kHostOrder;
    return 0;
}

// The mark that a file of this kind gets at its start; null when the person wants none.
const Mark* MarkToWrite(uint32_t kind) {
    if (TheOptions().bomSave == 0) return nullptr;
    for (const Mark& mark : kMarks) {
        if (mark.kind == kind) return &mark;
    }
    return nullptr;
}

// ---- UTF-16 ----

void SwapUnits(void* data, size_t units) {
    auto* bytes = static_cast<uint8_t*>(data);
    for (size_t i = 0; i < units; ++i) {
        const uint8_t first = bytes[2 * i];
        bytes[2 * i] = bytes[2 * i + 1];
        bytes[2 * i + 1] = first;
    }
}

bool Swapped(uint32_t kind) { return kind != kCodecUnicode && kind != kHostOrder; }

// An odd byte waits for its other half, except at the end of the stream: there it makes a unit with whatever
// the buffer holds beside it, because a byte that was in the file must not vanish from the text.
uint32_t DecodeUtf16(uint32_t kind, const uint8_t* source, uint32_t size, char16_t** target, uint32_t* units,
                     int32_t chunk, ReallocCallback grow) {
    const bool last = chunk == kLastChunk;
    const uint32_t taken = last ? size : size & ~1u;
    const uint32_t count = taken / 2 + taken % 2;
    *units = count;
    if (count == 0) return taken;
    *target = static_cast<char16_t*>(RoomForOutput(*target, uint64_t{count} * sizeof(char16_t), grow));
    std::memcpy(*target, source, taken);
    if (Swapped(kind)) SwapUnits(*target, count);
    return taken;
}

void EncodeUtf16(uint32_t kind, const char16_t* source, uint32_t units, uint8_t* target) {
    if (units == 0) return;
    std::memcpy(target, source, size_t{units} * sizeof(char16_t));
    if (Swapped(kind)) SwapUnits(target, units);
}

// ---- UTF-8 ----

// Bytes behind the lead byte, from its value alone.
constexpr uint32_t TrailBytes(uint8_t lead) {
    if (lead < 0xC0) return 0;
    if (lead < 0xE0) return 1;
    if (lead < 0xF0) return 2;
    if (lead < 0xF8) return 3;
    return lead < 0xFC ? 4 : 5;
}

constexpr bool Continues(uint8_t byte) { return (byte & 0xC0) == 0x80; }

// Whether lead and trailing bytes fit together. Overlong forms of three and four bytes and encoded surrogates
// pass: files of old devices have them.
inline bool ValidSequence(const uint8_t* at, uint32_t trail) {
    if (at[0] < 0xC2 || at[0] > 0xF4) return false;
    if (!Continues(at[1])) return false;
    if (trail >= 2 && !Continues(at[2])) return false;
    return trail < 3 || Continues(at[3]);
}

inline char16_t UnitOfSequence(const uint8_t* at, uint32_t trail) {
    constexpr uint32_t kOffsets[] = {0x00000000, 0x00003080, 0x000E2080, 0x03C82080};
    uint32_t value = at[0];
    for (uint32_t i = 1; i <= trail; ++i) value = (value << 6) + at[i];
    value -= kOffsets[trail];
    const bool held = value <= 0xFFFF && (value < 0xD800 || value > 0xDFFF);
    return held ? static_cast<char16_t>(value) : kReplacement;
}

// Widens blocks of 16 ASCII bytes, which most of most files is. Returns the bytes done; room for `size`
// units.
inline uint32_t WidenAscii(const uint8_t* source, uint32_t size, char16_t* target) {
    constexpr uint32_t kBlock = 16;
    constexpr uint64_t kHighBits = 0x8080808080808080;
    uint32_t done = 0;
    for (; size - done >= kBlock; done += kBlock) {
        uint64_t halves[2];
        std::memcpy(halves, source + done, kBlock);
        if (((halves[0] | halves[1]) & kHighBits) != 0) break;
        uint8_t bytes[kBlock];
        char16_t wide[kBlock];
        std::memcpy(bytes, source + done, kBlock);
        for (uint32_t i = 0; i < kBlock; ++i) wide[i] = bytes[i];
        std::memcpy(target + done, wide, sizeof(wide));
    }
    return done;
}

// Stops at a sequence that the chunk does not hold whole, whatever chunk it is: at the very end of a file
// such a rest is lost. `*units` becomes the units written.
uint32_t DecodeUtf8(const uint8_t* source, uint32_t size, char16_t* target, uint32_t* units) {
    uint32_t at = 0;
    char16_t* out = target;
    while (at < size) {
        const uint32_t ascii = WidenAscii(source + at, size - at, out);
        at += ascii;
        out += ascii;
        // The rest of a block that is not plain ASCII; then the fast way is tried again.
        const uint32_t pause = size - at > 16 ? at + 16 : size;
        while (at < pause) {
            const uint8_t lead = source[at];
            if (lead < 0x80) {
                *out++ = lead;
                ++at;
                continue;
            }
            const uint32_t trail = TrailBytes(lead);
            if (trail >= size - at) {
                *units = static_cast<uint32_t>(out - target);
                return at;
            }
            const bool valid = trail >= 1 && trail <= 3 && ValidSequence(source + at, trail);
            *out++ = valid ? UnitOfSequence(source + at, trail) : char16_t{lead};
            at += valid ? trail + 1 : 1;
        }
    }
    *units = static_cast<uint32_t>(out - target);
    return at;
}

uint64_t Utf8Size(const char16_t* source, uint32_t units) {
    uint64_t size = 0;
    for (uint32_t i = 0; i < units; ++i) size += 1u + (source[i] >= 0x80) + (source[i] >= 0x800);
    return size;
}

inline uint32_t NarrowAscii(const char16_t* source, uint32_t units, uint8_t* target) {
    constexpr uint32_t kBlock = 16;
    uint32_t done = 0;
    for (; units - done >= kBlock; done += kBlock) {
        char16_t wide[kBlock];
        uint8_t bytes[kBlock];
        std::memcpy(wide, source + done, sizeof(wide));
        uint32_t all = 0;
        for (uint32_t i = 0; i < kBlock; ++i) all |= wide[i];
        if (all >= 0x80) break;
        for (uint32_t i = 0; i < kBlock; ++i) bytes[i] = static_cast<uint8_t>(wide[i]);
        std::memcpy(target + done, bytes, kBlock);
    }
    return done;
}

// Every unit by itself, halves of surrogate pairs too: six bytes for a pair. Returns the byte behind the
// last.
uint8_t* EncodeUtf8(const char16_t* source, uint32_t units, uint8_t* out) {
    uint32_t at = 0;
    while (at < units) {
        const uint32_t ascii = NarrowAscii(source + at, units - at, out);
        at += ascii;
        out += ascii;
        const uint32_t pause = units - at > 16 ? at + 16 : units;
        for (; at < pause; ++at) {
            const uint32_t unit = source[at];
            if (unit < 0x80) {
                *out++ = static_cast<uint8_t>(unit);
            } else if (unit < 0x800) {
                *out++ = static_cast<uint8_t>(0xC0 | unit >> 6);
                *out++ = static_cast<uint8_t>(0x80 | (unit & 0x3F));
            } else {
                *out++ = static_cast<uint8_t>(0xE0 | unit >> 12);
                *out++ = static_cast<uint8_t>(0x80 | (unit >> 6 & 0x3F));
                *out++ = static_cast<uint8_t>(0x80 | (unit & 0x3F));
            }
        }
    }
    return out;
}

// ---- the record's functions ----

uint32_t Decode(void* state, const uint8_t* source, uint32_t size, char16_t** target, uint32_t* units,
                int32_t chunk, ReallocCallback grow) {
    uint32_t& kind = KindOf(state);
    const uint32_t skip = chunk == kFirstChunk ? TakeMark(source, size, &kind) : 0;
    const uint32_t rest = size - skip;
    if (kind != kCodecUtf8) return skip + DecodeUtf16(kind, source + skip, rest, target, units, chunk, grow);
    *units = 0;
    if (rest == 0) return skip;
    *target = static_cast<char16_t*>(RoomForOutput(*target, uint64_t{rest} * sizeof(char16_t), grow));
    return skip + DecodeUtf8(source + skip, rest, *target, units);
}

uint32_t Encode(void* state, const char16_t* source, uint32_t units, uint8_t** target, uint32_t* size,
                int32_t chunk, ReallocCallback grow) {
    uint32_t& kind = KindOf(state);
    if (chunk == kFirstChunk && kind == kCodecUnicode) kind = kHostOrder;
    const Mark* mark = chunk == kFirstChunk ? MarkToWrite(kind) : nullptr;
    const uint32_t markSize = mark != nullptr ? mark->size : 0;
    uint64_t bytes = uint64_t{units} * sizeof(char16_t);
    // Counting is left out where the buffer holds even the worst case.
    if (kind == kCodecUtf8) {
        bytes = uint64_t{units} * 3;
        if (bytes + markSize > MemSize(nullptr, *target)) bytes = Utf8Size(source, units);
    }
    *target = static_cast<uint8_t*>(RoomForOutput(*target, bytes + markSize, grow));
    if (mark != nullptr) std::memcpy(*target, mark->bytes, markSize);
    if (kind != kCodecUtf8) {
        if (units != 0) EncodeUtf16(kind, source, units, *target + markSize);
    } else if (units != 0) {
        bytes = static_cast<uint64_t>(EncodeUtf8(source, units, *target + markSize) - *target) - markSize;
    }
    *size = static_cast<uint32_t>(bytes + markSize);
    return units;
}

void Destroy(void* state, ReallocCallback grow) { grow(state, 0); }

uint32_t CurrentIndex(void* state, ReallocCallback) { return KindOf(state); }

}  // namespace

void SetUpUnicodeCodec(Codec* codec, uint32_t index) {
    auto* kind = MemAllocArray<uint32_t>(nullptr, 1);
    *kind = index;
    codec->state = kind;
    codec->decode = Decode;
    codec->encode = Encode;
    codec->destroy = Destroy;
    codec->currentIndex = CurrentIndex;
}

}  // namespace nira
