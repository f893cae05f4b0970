#include "engine/line_text.h"

#include <algorithm>
#include <cstring>

#include "app/services/memory.h"
#include "base/utf16.h"

namespace nira {

namespace {

// From this capacity on blocks grow by half their size: the heap copies a large block whenever it grows, and
// a line of many megabytes arrives twenty kilobytes at a time.
constexpr uint32_t kLongLine = 2000;

size_t BlockBytes(uint32_t capacity) { return (size_t{capacity} + 1) * sizeof(char16_t); }

}  // namespace

uint32_t LineCapacityFor(uint32_t length) { return length / 10 * 10 + 10; }

void ReserveLineText(Editor* editor, LineRecord* line, uint32_t length) {
    const uint32_t capacity = LineCapacityFor(length);
    if (line->text != nullptr && capacity <= line->capacity) return;
    const size_t needed = BlockBytes(capacity);
    if (line->text == nullptr) {
        // Whatever becomes of the operation that reserves, the record is a valid empty line from here on.
        line->text = static_cast<char16_t*>(MemAlloc(editor->heap, needed));
        line->capacity = LineCapacityFor(0);
        return;
    }
    if (capacity < kLongLine) {
        line->text = static_cast<char16_t*>(MemReAlloc(editor->heap, line->text, needed));
        return;
    }
    const size_t size = MemSize(editor->heap, line->text);
    if (size >= needed) return;
    line->text =
        static_cast<char16_t*>(MemReAlloc(editor->heap, line->text, std::max(needed, size + size / 2)));
}

void FillLineText(HeapHandle heap, LineRecord* line, const char16_t* first, uint32_t firstUnits,
                  const char16_t* second, uint32_t secondUnits) {
    const uint32_t length = firstUnits + secondUnits;
    const uint32_t capacity = LineCapacityFor(length);
    auto* text = static_cast<char16_t*>(MemAlloc(heap, BlockBytes(capacity)));
    if (firstUnits > 0) std::memcpy(text, first, firstUnits * sizeof(char16_t));
    if (secondUnits > 0) std::memcpy(text + firstUnits, second, secondUnits * sizeof(char16_t));
    line->text = text;
    line->length = length;
    line->capacity = capacity;
}

void SetLineLength(Editor* editor, LineRecord* line, uint32_t length) {
    line->length = length;
    line->text[length] = 0;
    const uint32_t capacity = LineCapacityFor(length);
    const bool shrinks = capacity < line->capacity;
    line->capacity = capacity;
    if (!shrinks) return;
    const size_t needed = BlockBytes(capacity);
    if (capacity >= kLongLine && MemSize(editor->heap, line->text) / 4 < needed) return;
    line->text = static_cast<char16_t*>(MemShrink(editor->heap, line->text, needed));
}

void SpliceReserved(Editor* editor, LineRecord* line, uint32_t column, uint32_t removed,
                    const char16_t* source, uint32_t count) {
    char16_t* place = line->text + column;
    const uint32_t tail = line->length - column - removed;
    if (removed != count) std::memmove(place + count, place + removed, tail * sizeof(char16_t));
    if (count > 0) std::memcpy(place, source, count * sizeof(char16_t));
    SetLineLength(editor, line, column + count + tail);
}

uint32_t LineSetText(Editor* editor, uint32_t line, const char16_t* source, uint32_t count) {
    LineRecord* record = &editor->lines[line];
    if (source == nullptr) {
        MemFree(editor->heap, record->text);
        MemFree(editor->heap, record->breaks);
        *record = LineRecord{};
        LineIndexTouch(editor->index, line, line + 1);
        return count;
    }
    LineRecord filled = {};
    if (!Guarded([&] { FillLineText(editor->heap, &filled, source, count, nullptr, 0); })) return 0;
    MemFree(editor->heap, record->text);
    record->text = filled.text;
    record->length = filled.length;
    record->capacity = filled.capacity;
    return count;
}

void LineInsertChars(Editor* editor, uint32_t line, uint32_t column, const char16_t* source, int32_t count) {
    if (count <= 0) return;
    LineRecord* record = &editor->lines[line];
    const auto units = static_cast<uint32_t>(count);
    if (record->text == nullptr) {
        FillLineText(editor->heap, record, source, units, nullptr, 0);
        return;
    }
    ReserveLineText(editor, record, record->length + units);
    SpliceReserved(editor, record, std::min(column, record->length), 0, source, units);
}

void LineDeleteChars(Editor* editor, uint32_t line, uint32_t column, int32_t count) {
    LineRecord* record = &editor->lines[line];
    if (record->text == nullptr || column >= record->length || count <= 0) return;
    const uint32_t units = std::min(static_cast<uint32_t>(count), record->length - column);
    SpliceReserved(editor, record, column, units, nullptr, 0);
}

void LineFree(Editor* editor, uint32_t line) { LineSetText(editor, line, nullptr, 0); }

uint32_t LineIndent(const Editor* editor, uint32_t line, uint32_t* visualWidth, const uint32_t* stop) {
    const LineRecord& record = editor->lines[line];
    const uint32_t end = stop != nullptr ? std::min(*stop, record.length) : record.length;
    const auto tabSize = static_cast<uint32_t>(OptionsTabSize());
    uint32_t count = 0;
    uint32_t width = 0;
    for (; count < end && (record.text[count] == kTab || record.text[count] == kSpace); ++count) {
        width += record.text[count] == kTab ? tabSize : 1;
    }
    if (visualWidth != nullptr) *visualWidth = width;
    return count;
}

}  // namespace nira
