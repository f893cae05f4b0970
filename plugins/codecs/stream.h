// One load or one save: the state that a codec of this library keeps from chunk to chunk.
//
// Every encoding goes through the same steps. Loading: bytes that the chunk before left unfinished are put in
// front; the first bytes of the file decide what it is (its mark, "Auto"); the encoding converts what is
// whole; and a last unit that may be half of something (the CR of a CR LF, the high half of a pair) waits for
// the next chunk. So all bytes are always reported as taken, and where a file is cut into chunks makes no
// difference to its text. Saving is the same with units and bytes changed over.
#pragma once

#include <cstdint>

#include "codecs/catalog.h"
#include "codecs/code_pages.h"
#include "nira_codec.h"

namespace codecs {

// A buffer and the bytes that it is known to hold.
struct Buffer {
    void* block;
    uint64_t size;
};

struct Stream {
    const Entry* entry;   // what the person chose
    const Entry* active;  // what the file is
    uint32_t page;        // of `entry`; 0 when it is no code page
    uint32_t index;       // of `entry` in NIRA's list
    uint32_t activeIndex;
    bool opened;  // the first bytes have been judged

    Buffer restBytes;  // not decoded yet; ours
    uint32_t restSize;
    char16_t heldUnit;  // decoded, not given out yet
    bool held;
    char16_t restUnits[4];  // not encoded yet
    uint32_t restCount;

    Buffer joined;  // a rest and the chunk behind it, side by side; ours
    Buffer output;  // the caller's, as it was left
    PageReader* reader;
};

Stream* CreateStream(const Entry* entry, uint32_t listIndex, NiraRealloc grow);
void DestroyStream(Stream* stream, NiraRealloc grow);

// As the functions of NiraCodec.
uint32_t DecodeChunk(Stream* stream, const uint8_t* source, uint32_t size, char16_t** target, uint32_t* units,
                     int32_t chunk, NiraRealloc grow);
uint32_t EncodeChunk(Stream* stream, const char16_t* source, uint32_t units, uint8_t** target, uint32_t* size,
                     int32_t chunk, NiraRealloc grow);

}  // namespace codecs
