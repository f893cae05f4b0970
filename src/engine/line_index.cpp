#include "engine/line_index.h"

#include <algorithm>
#include <cstring>

#include "app/services/memory.h"

namespace nira {

namespace {

uint32_t chunkLines = kLineIndexChunkLines;

uint32_t ChunkRows(const LineChunk& chunk) { return chunk.lines + chunk.extraRows; }

void StepForward(LineIndex* index) {
    const LineChunk& chunk = index->chunks[index->cachedChunk];
    index->cachedLine += chunk.lines;
    index->cachedRows += chunk.extraRows;
    ++index->cachedChunk;
}

void StepBack(LineIndex* index) {
    --index->cachedChunk;
    const LineChunk& chunk = index->chunks[index->cachedChunk];
    index->cachedLine -= chunk.lines;
    index->cachedRows -= chunk.extraRows;
}

void SeekChunk(LineIndex* index, uint32_t chunk) {
    while (index->cachedChunk < chunk) StepForward(index);
    while (index->cachedChunk > chunk) StepBack(index);
}

// To the chunk that holds `line`; the last chunk for a line past the end.
void SeekLine(LineIndex* index, uint32_t line) {
    while (line < index->cachedLine) StepBack(index);
    while (index->cachedChunk + 1 < index->chunkCount &&
           line >= index->cachedLine + index->chunks[index->cachedChunk].lines) {
        StepForward(index);
    }
}

void SeekRow(LineIndex* index, uint32_t row) {
    while (row < index->cachedLine + index->cachedRows) StepBack(index);
    while (index->cachedChunk + 1 < index->chunkCount &&
           row >= index->cachedLine + index->cachedRows + ChunkRows(index->chunks[index->cachedChunk])) {
        StepForward(index);
    }
}

void MarkDirty(LineIndex* index, uint32_t first, uint32_t end) {
    if (index->dirtyFirst >= index->dirtyEnd) {
        index->dirtyFirst = first;
        index->dirtyEnd = end;
        return;
    }
    index->dirtyFirst = std::min(index->dirtyFirst, first);
    index->dirtyEnd = std::max(index->dirtyEnd, end);
}

// Opens a gap of `count` zeroed chunks in front of chunk `at`; the room has been reserved.
void InsertChunks(LineIndex* index, uint32_t at, uint32_t count) {
    std::memmove(index->chunks + at + count, index->chunks + at,
                 (index->chunkCount - at) * sizeof(LineChunk));
    std::memset(index->chunks + at, 0, count * sizeof(LineChunk));
    index->chunkCount += count;
    if (index->dirtyFirst >= at) index->dirtyFirst += count;
    if (index->dirtyEnd > at) index->dirtyEnd += count;
}

// Closes up over chunks first..end-1; their sums leave the totals.
void RemoveChunks(LineIndex* index, uint32_t first, uint32_t end) {
    const uint32_t count = end - first;
    for (uint32_t i = first; i < end; ++i) {
        index->extraRows -= index->chunks[i].extraRows;
        if (index->chunks[i].widest >= index->widest) index->widestStale = true;
    }
    std::memmove(index->chunks + first, index->chunks + end, (index->chunkCount - end) * sizeof(LineChunk));
    index->chunkCount -= count;
    const auto moved = [&](uint32_t chunk) { return chunk >= end ? chunk - count : std::min(chunk, first); };
    index->dirtyFirst = moved(index->dirtyFirst);
    index->dirtyEnd = moved(index->dirtyEnd);
}

// Splits a chunk that has grown to more than twice the usual size into equal pieces.
void SplitChunk(LineIndex* index, uint32_t chunk) {
    const uint32_t total = index->chunks[chunk].lines;
    if (total <= 2 * chunkLines) return;
    const uint32_t pieces = total / chunkLines;
    InsertChunks(index, chunk + 1, pieces - 1);
    uint32_t rest = total;
    for (uint32_t i = 0; i < pieces; ++i) {
        const uint32_t share = rest / (pieces - i);
        index->chunks[chunk + i].lines = share;
        rest -= share;
    }
    MarkDirty(index, chunk, chunk + pieces);
}

// Joins a chunk with the next one when both fit into one of the usual size.
void JoinWithNext(LineIndex* index, uint32_t chunk) {
    if (chunk + 1 >= index->chunkCount) return;
    LineChunk& left = index->chunks[chunk];
    LineChunk& right = index->chunks[chunk + 1];
    if (left.lines + right.lines > chunkLines) return;
    left.lines += right.lines;
    RemoveChunks(index, chunk + 1, chunk + 2);
    MarkDirty(index, chunk, chunk + 1);
}

LineChunk SumLines(const LineRecord* lines, uint32_t count) {
    LineChunk sum = {count, 0, 0};
    for (uint32_t i = 0; i < count; ++i) {
        sum.extraRows += ExtraRows(lines[i]);
        sum.widest = std::max(sum.widest, lines[i].width);
    }
    return sum;
}

void RefreshChunk(LineIndex* index, uint32_t at, const LineRecord* lines) {
    SeekChunk(index, at);
    LineChunk& chunk = index->chunks[at];
    const LineChunk sum = SumLines(lines + index->cachedLine, chunk.lines);
    index->extraRows += sum.extraRows - chunk.extraRows;
    if (sum.widest >= index->widest) {
        index->widest = sum.widest;
    } else if (chunk.widest >= index->widest) {
        index->widestStale = true;
    }
    chunk = sum;
}

}  // namespace

LineIndex* LineIndexCreate(HeapHandle heap) {
    constexpr uint32_t kFirstRoom = 8;
    auto* index = MemAllocArray<LineIndex>(heap, 1);
    index->heap = heap;
    index->chunks = MemAllocArray<LineChunk>(heap, kFirstRoom);
    index->chunkRoom = kFirstRoom;
    index->chunkCount = 1;
    index->chunks[0].lines = 1;
    index->lineTotal = 1;
    return index;
}

void LineIndexReserve(LineIndex* index, uint32_t count) {
    const uint32_t needed = index->chunkCount + count / chunkLines + 2;
    if (needed <= index->chunkRoom) return;
    const uint32_t room = needed + needed / 2;
    index->chunks = MemReAllocArray(index->heap, index->chunks, room);
    index->chunkRoom = room;
}

void LineIndexInsert(LineIndex* index, uint32_t line, uint32_t count) {
    SeekLine(index, line);
    const uint32_t chunk = index->cachedChunk;
    index->chunks[chunk].lines += count;
    index->lineTotal += count;
    MarkDirty(index, chunk, chunk + 1);
    SplitChunk(index, chunk);
}

void LineIndexErase(LineIndex* index, uint32_t first, uint32_t count) {
    SeekLine(index, first);
    const uint32_t start = index->cachedChunk;
    uint32_t offset = first - index->cachedLine;
    uint32_t rest = count;
    uint32_t chunk = start;
    for (; rest > 0; ++chunk) {
        const uint32_t taken = std::min(rest, index->chunks[chunk].lines - offset);
        index->chunks[chunk].lines -= taken;
        rest -= taken;
        offset = 0;
    }
    index->lineTotal -= count;
    MarkDirty(index, start, chunk);
    // Only the first and the last chunk touched can have lines left; what lies between is empty.
    const uint32_t emptyFirst = index->chunks[start].lines == 0 ? start : start + 1;
    const uint32_t emptyEnd = chunk > emptyFirst && index->chunks[chunk - 1].lines != 0 ? chunk - 1 : chunk;
    if (emptyEnd > emptyFirst) RemoveChunks(index, emptyFirst, emptyEnd);
    if (index->cachedChunk >= index->chunkCount) StepBack(index);
    if (index->cachedChunk > 0) StepBack(index);
    const uint32_t left = index->cachedChunk;
    JoinWithNext(index, left);
    JoinWithNext(index, left);
}

void LineIndexTouch(LineIndex* index, uint32_t first, uint32_t end) {
    if (first >= end) return;
    SeekLine(index, first);
    const uint32_t firstChunk = index->cachedChunk;
    SeekLine(index, end - 1);
    MarkDirty(index, firstChunk, index->cachedChunk + 1);
}

void LineIndexRefresh(LineIndex* index, const LineRecord* lines) {
    for (uint32_t i = index->dirtyFirst; i < index->dirtyEnd; ++i) RefreshChunk(index, i, lines);
    index->dirtyFirst = 0;
    index->dirtyEnd = 0;
    if (!index->widestStale) return;
    index->widestStale = false;
    index->widest = 0;
    for (uint32_t i = 0; i < index->chunkCount; ++i) {
        index->widest = std::max(index->widest, index->chunks[i].widest);
    }
}

uint32_t LineIndexExtraRowsBefore(LineIndex* index, const LineRecord* lines, uint32_t line) {
    SeekLine(index, line);
    uint32_t rows = index->cachedRows;
    for (uint32_t i = index->cachedLine; i < line; ++i) rows += ExtraRows(lines[i]);
    return rows;
}

uint32_t LineIndexFindRow(LineIndex* index, const LineRecord* lines, uint32_t row, uint32_t* subRow) {
    row = std::min(row, index->lineTotal + index->extraRows - 1);
    SeekRow(index, row);
    uint32_t rest = row - index->cachedLine - index->cachedRows;
    uint32_t line = index->cachedLine;
    while (rest > ExtraRows(lines[line])) {
        rest -= ExtraRows(lines[line]) + 1;
        ++line;
    }
    *subRow = rest;
    return line;
}

void LineIndexSetChunkLines(uint32_t lines) { chunkLines = lines; }

}  // namespace nira
