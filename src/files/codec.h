// One codec at work: a record of functions that turn a stream of bytes into UTF-16 and back, chunk by chunk.
//
// Built-in codecs and plug-ins fill the same record, so that loading and saving cannot tell them apart. The
// record's order and types are what plug-in libraries are compiled against. Making codecs and calling them is
// in files/codecs.h.
#pragma once

#include <cstdint>

namespace nira {

constexpr uint32_t kCodecAnsi = 0;
constexpr uint32_t kCodecUnicode = 1;  // UTF-16 in the host's byte order
constexpr uint32_t kCodecUtf16Le = 2;
constexpr uint32_t kCodecUtf16Be = 3;
constexpr uint32_t kCodecUtf8 = 4;
constexpr uint32_t kBuiltInCodecs = 5;

// The chunk flag of decode and encode. A stream may get a first chunk and then a last chunk of no bytes.
constexpr int32_t kFirstChunk = 1;
constexpr int32_t kMiddleChunk = 0;
constexpr int32_t kLastChunk = -1;

// What decoding gives in place of the bytes consumed when a plug-in has failed.
constexpr uint32_t kCodecFailed = 0xFFFFFFFF;

// Grows an output buffer on the local heap: size 0 frees it and gives null, null allocates; growth is
// zero-filled. It never gives null for a size above 0: when memory runs out it does not return to the codec.
using ReallocCallback = void* (*)(void* block, uint32_t size);

// What a codec is, for built-in ones and plug-ins alike. Every function gets the state and the callback.
struct Codec {
    // Plug-in only, may be absent: makes the state once the plug-in has filled the record.
    void* (*create)(uint32_t codecIndex, ReallocCallback grow);
    // Decodes `size` bytes into *target, growing it; *units counts what was produced. Returns the bytes
    // consumed.
    uint32_t (*decode)(void* state, const uint8_t* source, uint32_t size, char16_t** target, uint32_t* units,
                       int32_t chunk, ReallocCallback grow);
    // Encodes `units` units into *target, growing it; *size counts the bytes produced. The result is not
    // used.
    uint32_t (*encode)(void* state, const char16_t* source, uint32_t units, uint8_t** target, uint32_t* size,
                       int32_t chunk, ReallocCallback grow);
    // May be absent: frees the state.
    void (*destroy)(void* state, ReallocCallback grow);
    // The list index in effect: a decoder that met a byte-order mark reports what it switched to.
    uint32_t (*currentIndex)(void* state, ReallocCallback grow);
    void* state;
    void* library;  // the plug-in's module; null for built-in codecs
};

// For the built-in codecs: makes `block`, an output buffer or null, hold `bytes`. A buffer that is large
// enough already stays as it is with its content, so that a chunk costs nothing but its conversion. Unwinds
// when memory runs out, or when `bytes` is more than a buffer can have.
void* RoomForOutput(void* block, uint64_t bytes, ReallocCallback grow);

}  // namespace nira
