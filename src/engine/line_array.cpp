#include "engine/line_array.h"

#include <algorithm>
#include <cstring>

#include "app/services/memory.h"

namespace nira {

namespace {

uint32_t Room(const Editor* editor) {
    return static_cast<uint32_t>(MemSize(editor->heap, editor->lines) / sizeof(LineRecord));
}

}  // namespace

uint32_t LineArrayCapacityFor(uint32_t count) { return count / 10 * 10 + 10; }

void ReserveLines(Editor* editor, uint32_t count) {
    LineIndexReserve(editor->index, count);
    // What is reported as allocated must be there, not only what is used.
    const uint32_t needed = LineArrayCapacityFor(editor->lineCount + count);
    const uint32_t room = Room(editor);
    if (needed <= room) return;
    const uint32_t wanted = std::max(needed, room + room / 2);
    editor->lines = MemReAllocArray(editor->heap, editor->lines, wanted);
}

void InsertLines(Editor* editor, uint32_t line, const LineRecord* records, uint32_t count) {
    LineRecord* place = editor->lines + line;
    std::memmove(place + count, place, (editor->lineCount - line) * sizeof(LineRecord));
    if (records != place) std::memcpy(place, records, count * sizeof(LineRecord));
    editor->lineCount += count;
    if (editor->lineCount > static_cast<uint32_t>(editor->lineCapacity)) {
        editor->lineCapacity = static_cast<int32_t>(LineArrayCapacityFor(editor->lineCount));
    }
    LineIndexInsert(editor->index, line, count);
}

void RemoveLines(Editor* editor, uint32_t first, uint32_t count) {
    LineRecord* place = editor->lines + first;
    const uint32_t behind = editor->lineCount - first - count;
    std::memmove(place, place + count, behind * sizeof(LineRecord));
    std::memset(place + behind, 0, count * sizeof(LineRecord));
    editor->lineCount -= count;
    LineIndexErase(editor->index, first, count);
    const uint32_t capacity = LineArrayCapacityFor(editor->lineCount);
    if (capacity >= static_cast<uint32_t>(editor->lineCapacity)) return;
    editor->lineCapacity = static_cast<int32_t>(capacity);
    if (Room(editor) / 4 < capacity) return;
    editor->lines =
        static_cast<LineRecord*>(MemShrink(editor->heap, editor->lines, capacity * sizeof(LineRecord)));
}

}  // namespace nira
