#include "files/codec_ansi.h"

#include "platform/code_page.h"

namespace nira {

namespace {

// A chunk's last byte is held back when it could begin a two-byte character. It is judged alone, without
// walking the pairs before it: when it was the second half of a pair, it comes out as the first half of
// another one.
uint32_t Decode(void*, const uint8_t* source, uint32_t size, char16_t** target, uint32_t* units,
                int32_t chunk, ReallocCallback grow) {
    uint32_t taken = size;
    if (chunk != kLastChunk && taken > 0 && AnsiIsLeadByte(source[taken - 1])) --taken;
    *units = 0;
    const uint32_t needed = AnsiToUtf16(source, taken, nullptr, 0);
    if (needed > 0) {
        *target = static_cast<char16_t*>(RoomForOutput(*target, uint64_t{needed} * sizeof(char16_t), grow));
        *units = AnsiToUtf16(source, taken, *target, needed);
    }
    return taken;
}

uint32_t Encode(void*, const char16_t* source, uint32_t units, uint8_t** target, uint32_t* size, int32_t,
                ReallocCallback grow) {
    *size = 0;
    const uint32_t needed = AnsiFromUtf16(source, units, nullptr, 0);
    if (needed > 0) {
        *target = static_cast<uint8_t*>(RoomForOutput(*target, needed, grow));
        *size = AnsiFromUtf16(source, units, *target, needed);
    }
    return units;
}

uint32_t CurrentIndex(void*, ReallocCallback) { return kCodecAnsi; }

}  // namespace

void SetUpAnsiCodec(Codec* codec) {
    codec->decode = Decode;
    codec->encode = Encode;
    codec->currentIndex = CurrentIndex;
}

}  // namespace nira
