// Encodings: the list of codecs by name, and turning bytes into UTF-16 and back.
//
// A codec index is a position in the list: five built-in ones, then the plug-ins named in the registry.
// Loading and saving make one Codec each and destroy it at the end.
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

// Grows an output buffer on the local heap: size 0 frees it and gives null, null allocates; growth is
// zero-filled. It never gives null for a size above 0: running out of memory unwinds through the codec.
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

// The list: `count` names. A slot may be null (an enumeration of the registry that failed leaves one).
struct CodecList {
    char16_t** names;
    uint32_t count;
};

// Reads the plug-ins' names from the registry. Returns 1; 0 when memory ran out.
int InitCodecs();
void FreeCodecs();

const CodecList& TheCodecList();

// The name of an index; that of entry 0 for an index out of range or an empty slot.
const char16_t* CodecName(uint32_t index);

// The first index with exactly this name; 0 when there is none.
uint32_t CodecIndex(const char16_t* name);

// The index of the Options' default encoding.
uint32_t DefaultCodec();

// A codec for one load or save; null when it cannot be made. Destroy it with DestroyCodec.
Codec* CreateCodec(uint32_t index);
void DestroyCodec(Codec* codec);  // null is ignored

// Calls through the record's slots. *target is null or what an earlier call left; the caller frees it in the
// end with MemFree on the local heap.
uint32_t CodecDecode(Codec* codec, const uint8_t* source, uint32_t size, char16_t** target, uint32_t* units,
                     int32_t chunk);
void CodecEncode(Codec* codec, const char16_t* source, uint32_t units, uint8_t** target, uint32_t* size,
                 int32_t chunk);
uint32_t CodecCurrentIndex(Codec* codec);

}  // namespace nira
