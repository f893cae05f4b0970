// How the indentation of lines is kept for undo: one byte string for each indentation command.
//
// It begins with the number of lines (32 bits) and the requested change in columns (signed 16 bits),
// little-endian. Then each line, from the first: the length of its indentation and one bit for each of its
// units, set for a tab and clear for a space, eight to a byte from the lowest on. The length is as many bytes
// 0xFF as it has times 254 above the last byte, each worth 254, then a byte with the rest (0 to 254): 254 is
// one byte, 255 is 0xFF 0x01, 508 is 0xFF 0xFE. A length of 0 has no bits.
#pragma once

#include <cstdint>

#include "platform/handles.h"

namespace nira {

constexpr uint32_t kIndentHeaderBytes = 6;

// A record being written. The block belongs to `heap`.
struct IndentWriter {
    HeapHandle heap;
    uint8_t* data;
    uint32_t size;      // bytes written
    uint32_t capacity;  // bytes reported as allocated: a first guess of 4 a line, then steps of ten. The
                        // block behind `data` grows geometrically
};

// Begins a record for `lines` lines. Unwinds when memory runs out, as do the others; what was written is then
// the caller's to free.
void BeginIndentRecord(IndentWriter* writer, HeapHandle heap, uint32_t lines, int32_t delta);

// Appends a line whose indentation is the first `length` units of `text`.
void WriteIndent(IndentWriter* writer, const char16_t* text, uint32_t length);

// A record being read.
struct IndentReader {
    const uint8_t* data;
    uint32_t size;
    uint32_t place;
};

uint32_t IndentRecordLines(const uint8_t* data);
int16_t IndentRecordDelta(const uint8_t* data);

IndentReader ReadIndentRecord(const uint8_t* data, uint32_t size);

// The next line's length. Its units follow by ReadIndentUnits, which must be called before the next length.
uint32_t ReadIndentLength(IndentReader* reader);
void ReadIndentUnits(IndentReader* reader, char16_t* target, uint32_t length);

}  // namespace nira
