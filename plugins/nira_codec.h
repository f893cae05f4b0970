// What a codec library for NIRA is compiled against. It stands alone: C or C++, no other file of NIRA needed.
//
// A library is a 64-bit DLL that exports one function by its plain name, with the calling convention that C
// has on x86-64:
//
//     uint32_t GetEncoder(const char16_t* name, struct NiraCodec* codec);
//
// NIRA lists the values of HKEY_LOCAL_MACHINE\Software\NIRA\Encodings as encodings: a value's name is what
// people choose, its text the path of the library. For one load or one save NIRA loads the library, calls
// GetEncoder with the chosen name and a record of zeros, calls `create` when it was filled in, then `decode`
// chunk by chunk and `currentIndex`, or `encode` chunk by chunk, then `destroy`, and unloads the library.
// GetEncoder fills in the record and returns a result whose low 16 bits are not zero, or returns 0 when it
// has no such encoding.
//
// Nothing here may throw. docs/plugins.md tells how to write, register and test one.
#pragma once

// NOLINTBEGIN(modernize-deprecated-headers): this is C too
#include <stdint.h>
#include <uchar.h>
// NOLINTEND(modernize-deprecated-headers)

// The chunk flag. A stream is one first chunk, any number of middle ones, and a last one, which may be empty;
// an empty file has the last one only.
enum NiraChunk { kNiraFirstChunk = 1, kNiraMiddleChunk = 0, kNiraLastChunk = -1 };

// The first five positions of the list of encodings are NIRA's own; the names of the registry follow in
// ordinal order of their UTF-16 units.
enum NiraList { kNiraBuiltInCodecs = 5 };

// Memory of NIRA's: null allocates, 0 frees and gives null, anything else resizes. New bytes are zero. The
// result is never null for a size above 0: when memory runs out, the call does not come back, and neither
// does any function of the codec get called again but `destroy`. So keep the state sound before every call.
typedef void* (*NiraRealloc)(void* block, uint32_t size);  // NOLINT(modernize-use-using): this is C too

// Seven words of 8 bytes, in this order. A function that is not needed stays null where "optional" stands.
struct NiraCodec {
    // Offset 0, optional: makes the state. `listIndex` is the encoding's position in the list.
    void* (*create)(uint32_t listIndex, NiraRealloc grow);

    // Offset 8: turns `size` bytes into UTF-16 units. *target is a buffer that belongs to NIRA: null at
    // first, later what the call before left there; grow it with `grow` to what is needed. *units becomes the
    // number of units in it. The result is the number of bytes taken, at most `size`; bytes that are not
    // taken come again in front of the next chunk. Taking everything, and keeping an unfinished character in
    // the state, is safest.
    uint32_t (*decode)(void* state, const uint8_t* source, uint32_t size, char16_t** target, uint32_t* units,
                       int32_t chunk, NiraRealloc grow);

    // Offset 16: the way back, for saving; *size becomes the number of bytes in *target. The result is not
    // used.
    uint32_t (*encode)(void* state, const char16_t* source, uint32_t units, uint8_t** target, uint32_t* size,
                       int32_t chunk, NiraRealloc grow);

    // Offset 24, optional: frees the state.
    void (*destroy)(void* state, NiraRealloc grow);

    // Offset 32: the position in the list of the encoding that the file will be saved in, asked after its
    // last chunk: `listIndex`, or another one when the file turned out to be something else.
    uint32_t (*currentIndex)(void* state, NiraRealloc grow);

    void* state;    // Offset 40: what `create` returned; a library without `create` may set it in GetEncoder.
    void* library;  // Offset 48: NIRA's.
};
