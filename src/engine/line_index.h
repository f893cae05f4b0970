// Sums over the lines of a document that stay cheap while it is edited.
//
// Three questions are asked all the time: how many display rows are there, on which row does a line start,
// and how wide is the widest line. Walking a million lines for each keystroke answers them too slowly. So
// consecutive lines are summarised in chunks of a few hundred: a chunk knows its number of lines, their extra
// rows and their largest width. An edit recomputes the chunks it touched; lookups walk the chunks from the
// place of the last lookup.
//
// The index lives on the document's heap and reads the line records it is given. Between operations no chunk
// is dirty (LineIndexRefresh has run after the last change).
#pragma once

#include <cstdint>

#include "engine/line_record.h"
#include "platform/handles.h"

namespace nira {

struct LineChunk {
    uint32_t lines;      // at least 1
    uint32_t extraRows;  // sum of K
    int32_t widest;      // largest width, at least 0
};

struct LineIndex {
    HeapHandle heap;
    LineChunk* chunks;
    uint32_t chunkCount;
    uint32_t chunkRoom;   // chunks allocated
    uint32_t lineTotal;   // sum of lines
    uint32_t extraRows;   // sum of extraRows
    int32_t widest;       // largest widest
    bool widestStale;     // the widest chunk shrank or went: look at all of them again
    uint32_t dirtyFirst;  // chunks dirtyFirst..dirtyEnd-1 wait for LineIndexRefresh
    uint32_t dirtyEnd;
    uint32_t cachedChunk;  // where the last lookup ended, ...
    uint32_t cachedLine;   // ... the first line of that chunk ...
    uint32_t cachedRows;   // ... and the extra rows before it
};

// An index of one empty line. May run out of memory.
LineIndex* LineIndexCreate(HeapHandle heap);

// Makes room so that inserting `count` lines cannot fail. May run out of memory.
void LineIndexReserve(LineIndex* index, uint32_t count);

// `count` records have been inserted in front of record `line` (0..lineTotal). Needs LineIndexReserve before.
void LineIndexInsert(LineIndex* index, uint32_t line, uint32_t count);

// Records first..first+count-1 have been removed; at least one line remains.
void LineIndexErase(LineIndex* index, uint32_t first, uint32_t count);

// Width or breaks of lines first..end-1 have changed.
void LineIndexTouch(LineIndex* index, uint32_t first, uint32_t end);

// Recomputes what was touched. `lines` is the whole array of records.
void LineIndexRefresh(LineIndex* index, const LineRecord* lines);

// Extra rows of all lines before `line` (0..lineTotal): the display row where a line starts is this plus
// `line`.
uint32_t LineIndexExtraRowsBefore(LineIndex* index, const LineRecord* lines, uint32_t line);

// The line that shows display row `row`, and the row within it. A row past the end gives the last line's last
// row.
uint32_t LineIndexFindRow(LineIndex* index, const LineRecord* lines, uint32_t row, uint32_t* subRow);

// Lines that a chunk is filled with; twice as many split it. Tests shrink it so that every boundary is
// crossed often.
void LineIndexSetChunkLines(uint32_t lines);
constexpr uint32_t kLineIndexChunkLines = 256;

}  // namespace nira
