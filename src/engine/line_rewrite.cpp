#include "engine/line_rewrite.h"

#include <algorithm>
#include <cstring>

#include "app/services/memory.h"
#include "engine/line_text.h"
#include "view/layout.h"

namespace nira {

namespace {

LineRecord& RecordOf(const LineRewrite& rewrite) { return rewrite.editor->lines[rewrite.line]; }

void MoveUnits(char16_t* target, const char16_t* source, uint32_t count) {
    if (target != source) std::memmove(target, source, count * sizeof(char16_t));
}

// Columns are counted in 32 bits with a sign; a text that feeds on itself gets there in seconds.
constexpr uint32_t kMostUnits = INT32_MAX - 100;

// Long lines grow by half, so that a line of megabytes is copied a few times only.
constexpr uint32_t kLongLine = 2000;

void Enlarge(LineRewrite* rewrite, uint32_t needed) {
    LineRecord& line = RecordOf(*rewrite);
    const uint32_t room = needed < kLongLine ? needed : std::max(needed, rewrite->room + rewrite->room / 2);
    const size_t bytes = (size_t{room} + 1) * sizeof(char16_t);
    line.text = static_cast<char16_t*>(MemReAlloc(rewrite->editor->heap, line.text, bytes));
    rewrite->room = room;
}

// Moves the rest to the end of the block, so that all that is free lies in the gap.
void WidenGap(LineRewrite* rewrite) {
    char16_t* text = RecordOf(*rewrite).text;
    const uint32_t units = rewrite->end - rewrite->rest;
    MoveUnits(text + rewrite->room - units, text + rewrite->rest, units);
    rewrite->rest = rewrite->room - units;
    rewrite->end = rewrite->room;
}

// What the journal needs for one replacement, gathered before anything is recorded.
struct UndoTexts {
    char16_t* removed;
    char16_t* inserted;
};

char16_t* CopyForUndo(HeapHandle heap, const char16_t* text, uint32_t count) {
    if (count < 2) return nullptr;
    auto* copy = MemAllocArray<char16_t>(heap, count);
    std::memcpy(copy, text, count * sizeof(char16_t));
    return copy;
}

void Record(const LineRewrite& rewrite, bool inserted, uint32_t column, const char16_t* text, uint32_t count,
            char16_t* copy) {
    Editor* editor = rewrite.editor;
    if (count == 1) UndoAddChar(editor->undo, inserted, editor->modified, rewrite.line, column, *text);
    if (count > 1) UndoAddText(editor->undo, inserted, editor->modified, rewrite.line, column, copy, count);
    SetModified(editor, 1);
}

}  // namespace

void BeginLineRewrite(LineRewrite* rewrite, Editor* editor, uint32_t line, uint32_t column) {
    const LineRecord& record = editor->lines[line];
    const size_t bytes = MemSize(editor->heap, record.text);
    *rewrite = {editor, line,          column,
                column, record.length, static_cast<uint32_t>(bytes / sizeof(char16_t)) - 1};
}

bool RewriteInLine(LineRewrite* rewrite, uint32_t kept, uint32_t removed, const char16_t* text,
                   uint32_t count) {
    Editor* editor = rewrite->editor;
    const LineRecord& line = RecordOf(*rewrite);
    const uint64_t total = uint64_t{rewrite->done} + (rewrite->end - rewrite->rest) - removed + count;
    const auto length = static_cast<uint32_t>(total);
    UndoTexts undo = {};
    const bool ready = Guarded([&] {
        if (total > kMostUnits) OutOfMemory(true);
        if (LineCapacityFor(length) > rewrite->room) Enlarge(rewrite, LineCapacityFor(length));
        undo.removed = CopyForUndo(editor->heap, line.text + rewrite->rest + kept, removed);
        undo.inserted = CopyForUndo(editor->heap, text, count);
        UndoReserve(editor->undo, 2);
    });
    if (!ready) {
        MemFree(editor->heap, undo.removed);
        MemFree(editor->heap, undo.inserted);
        return false;
    }
    const uint32_t column = rewrite->done + kept;
    Record(*rewrite, false, column, line.text + rewrite->rest + kept, removed, undo.removed);
    Record(*rewrite, true, column, text, count, undo.inserted);
    if (count > removed + (rewrite->rest - rewrite->done)) WidenGap(rewrite);
    MoveUnits(line.text + rewrite->done, line.text + rewrite->rest, kept);
    if (count > 0) std::memcpy(line.text + column, text, count * sizeof(char16_t));
    rewrite->done = column + count;
    rewrite->rest += kept + removed;
    return true;
}

bool EndLineRewrite(LineRewrite* rewrite) {
    LineRecord* line = &RecordOf(*rewrite);
    const uint32_t units = rewrite->end - rewrite->rest;
    MoveUnits(line->text + rewrite->done, line->text + rewrite->rest, units);
    SetLineLength(rewrite->editor, line, rewrite->done + units);
    return Guarded([&] { LineMeasure(rewrite->editor, rewrite->line); });
}

}  // namespace nira
