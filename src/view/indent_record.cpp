#include "view/indent_record.h"

#include <algorithm>
#include <cstring>

#include "app/services/memory.h"
#include "base/utf16.h"

namespace nira {

namespace {

constexpr uint8_t kContinued = 0xFF;
constexpr uint32_t kContinuedWorth = 254;
constexpr uint32_t kCapacityStep = 10;

void Append(IndentWriter* writer, uint8_t byte) {
    if (writer->size == writer->capacity) {
        writer->capacity += kCapacityStep;
        const size_t room = MemSize(writer->heap, writer->data);
        if (writer->capacity > room) {
            const size_t wanted = std::max<size_t>(writer->capacity, room + room / 2);
            writer->data = static_cast<uint8_t*>(MemReAlloc(writer->heap, writer->data, wanted));
        }
    }
    writer->data[writer->size++] = byte;
}

uint8_t NextByte(IndentReader* reader) {
    return reader->place < reader->size ? reader->data[reader->place++] : uint8_t{0};
}

}  // namespace

void BeginIndentRecord(IndentWriter* writer, HeapHandle heap, uint32_t lines, int32_t delta) {
    const uint32_t capacity = (lines - 1) * 4 + 10;
    *writer = {heap, static_cast<uint8_t*>(MemAlloc(heap, capacity)), kIndentHeaderBytes, capacity};
    const auto shortDelta = static_cast<int16_t>(delta);
    std::memcpy(writer->data, &lines, sizeof(lines));
    std::memcpy(writer->data + sizeof(lines), &shortDelta, sizeof(shortDelta));
}

void WriteIndent(IndentWriter* writer, const char16_t* text, uint32_t length) {
    uint32_t rest = length;
    for (; rest > kContinuedWorth; rest -= kContinuedWorth) Append(writer, kContinued);
    Append(writer, static_cast<uint8_t>(rest));
    for (uint32_t first = 0; first < length; first += 8) {
        uint32_t bits = 0;
        for (uint32_t i = first; i < std::min(first + 8, length); ++i) {
            if (text[i] == kTab) bits |= 1U << (i - first);
        }
        Append(writer, static_cast<uint8_t>(bits));
    }
}

uint32_t IndentRecordLines(const uint8_t* data) {
    uint32_t lines = 0;
    std::memcpy(&lines, data, sizeof(lines));
    return lines;
}

int16_t IndentRecordDelta(const uint8_t* data) {
    int16_t delta = 0;
    std::memcpy(&delta, data + sizeof(uint32_t), sizeof(delta));
    return delta;
}

IndentReader ReadIndentRecord(const uint8_t* data, uint32_t size) { return {data, size, kIndentHeaderBytes}; }

uint32_t ReadIndentLength(IndentReader* reader) {
    uint32_t length = 0;
    uint8_t byte = NextByte(reader);
    for (; byte == kContinued; byte = NextByte(reader)) length += kContinuedWorth;
    return length + byte;
}

void ReadIndentUnits(IndentReader* reader, char16_t* target, uint32_t length) {
    uint8_t bits = 0;
    for (uint32_t i = 0; i < length; ++i) {
        if (i % 8 == 0) bits = NextByte(reader);
        target[i] = (bits & (1U << (i % 8))) != 0 ? kTab : kSpace;
    }
}

}  // namespace nira
