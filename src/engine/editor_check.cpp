#include "engine/editor_check.h"

#include <algorithm>
#include <cstring>

#include "app/services/memory.h"
#include "engine/line_array.h"
#include "engine/line_text.h"
#include "engine/window_state.h"
#include "view/measure.h"

namespace nira {

namespace {

const char* CheckText(const Editor* editor, const LineRecord& line) {
    if (line.text == nullptr) {
        return line.length == 0 && line.capacity == 0 ? nullptr
                                                      : "a line without text has a length or capacity";
    }
    if (line.capacity != LineCapacityFor(line.length)) return "a line's capacity does not follow its length";
    const size_t needed = (size_t{line.capacity} + 1) * sizeof(char16_t);
    if (MemSize(editor->heap, line.text) < needed) return "a text block is smaller than its capacity";
    return line.text[line.length] == 0 ? nullptr : "a text has no terminator";
}

const char* CheckBreaks(const LineRecord& line) {
    if (line.breaks == nullptr) return nullptr;
    if (line.breaks[0] == 0) return "a break list is empty";
    uint32_t before = 0;
    for (uint32_t i = 1; i <= line.breaks[0]; ++i) {
        if (line.breaks[i] <= before) return "breaks are not ascending";
        before = line.breaks[i];
    }
    return before < line.length ? nullptr : "a break lies behind the text";
}

struct LineSums {
    int64_t rows = 0;
    int32_t widest = 0;
};

const char* CheckLines(const Editor* editor, LineSums* sums) {
    MeasureContext context;
    OpenMeasureContext(&context, TheWindowState().editorWindow, editor->textStyle->font);
    const char* fault = nullptr;
    for (uint32_t i = 0; i < editor->lineCount && fault == nullptr; ++i) {
        const LineRecord& line = editor->lines[i];
        fault = CheckText(editor, line);
        if (fault == nullptr) fault = CheckBreaks(line);
        if (fault != nullptr) break;  // what is not a text cannot be measured
        if (ContextTextWidth(&context, line.text, line.length, OptionsTabSize()) != line.width) {
            fault = "a line's width is not what it measures";
        }
        sums->rows += ExtraRows(line);
        sums->widest = std::max(sums->widest, line.width);
    }
    CloseMeasureContext(&context);
    return fault;
}

const char* CheckLineArray(const Editor* editor) {
    if (editor->lineCount < 1) return "there is no line";
    const size_t room = MemSize(editor->heap, editor->lines) / sizeof(LineRecord);
    if (static_cast<size_t>(editor->lineCapacity) > room) return "fewer records are allocated than reported";
    if (editor->lineCount > static_cast<uint32_t>(editor->lineCapacity)) return "more lines than capacity";
    static const LineRecord kZero = {};
    for (size_t i = editor->lineCount; i < room; ++i) {
        if (std::memcmp(&editor->lines[i], &kZero, sizeof(kZero)) != 0) return "a spare record is not zero";
    }
    return nullptr;
}

const char* CheckIndex(const Editor* editor) {
    const LineIndex* index = editor->index;
    if (index->dirtyFirst < index->dirtyEnd || index->widestStale)
        return "the line index has not been refreshed";
    uint32_t line = 0;
    for (uint32_t i = 0; i < index->chunkCount; ++i) {
        const LineChunk& chunk = index->chunks[i];
        if (chunk.lines == 0) return "a chunk is empty";
        LineSums sums;
        for (const uint32_t end = line + chunk.lines; line < end && line < editor->lineCount; ++line) {
            sums.rows += ExtraRows(editor->lines[line]);
            sums.widest = std::max(sums.widest, editor->lines[line].width);
        }
        if (sums.rows != chunk.extraRows || sums.widest != chunk.widest) return "a chunk's sums are wrong";
    }
    return line == editor->lineCount && line == index->lineTotal ? nullptr
                                                                 : "the chunks do not cover the lines";
}

const char* CheckJournal(const Editor* editor) {
    const UndoJournal* journal = editor->undo;
    if (journal->position < 0 || journal->position > journal->count)
        return "the undo position is out of range";
    int64_t bytes = 0;
    for (int32_t i = 0; i < journal->count; ++i) {
        const UndoEntry& entry = journal->entries[i];
        const UndoKind kind = KindOf(entry);
        bytes += kUndoEntryBytes;
        if (kind == UndoKind::kDeleteText || kind == UndoKind::kInsertText) bytes += int64_t{2} * entry.size;
        if (kind >= UndoKind::kRestoreIndent) bytes += entry.size;
    }
    return bytes <= journal->bytes ? nullptr : "the undo account is less than its entries";
}

bool PositionInText(const Editor* editor, const RowPos& position, int32_t column) {
    if (position.line < 0 || static_cast<uint32_t>(position.line) >= editor->lineCount) return false;
    return column >= 0 && static_cast<uint32_t>(column) <= editor->lines[position.line].length;
}

}  // namespace

const char* EditorCheck(Editor* editor) {
    if (const char* fault = CheckLineArray(editor)) return fault;
    LineSums sums;
    if (const char* fault = CheckLines(editor, &sums)) return fault;
    if (const char* fault = CheckIndex(editor)) return fault;
    if (sums.rows != editor->wrapRows) return "wrapRows is not the sum over the lines";
    if (sums.widest != editor->widestLine) return "widestLine is not the largest width";
    if (editor->hiddenRows != 0) return "hiddenRows is not 0";
    for (const int32_t bookmark : editor->bookmarks) {
        if (bookmark < 0 || static_cast<uint32_t>(bookmark) > editor->lineCount)
            return "a bookmark is outside";
    }
    return CheckJournal(editor);
}

const char* EditorCheckPositions(Editor* editor) {
    if (!PositionInText(editor, editor->caret, editor->caretColumn)) return "the caret is outside the text";
    const RowPos caret = EditorPositionOf(editor, static_cast<uint32_t>(editor->caret.line),
                                          static_cast<uint32_t>(editor->caretColumn));
    if (caret.row != editor->caret.row || caret.subRow != editor->caret.subRow)
        return "the caret's row is wrong";
    if (editor->caretY != editor->caret.row * editor->lineHeight) return "the caret's y is wrong";
    if (editor->scrollY != editor->top.row * editor->lineHeight)
        return "the view does not start at its top row";
    if (editor->anchorColumn == kNoSelection) return nullptr;
    return PositionInText(editor, editor->anchor, editor->anchorColumn) ? nullptr
                                                                        : "the anchor is outside the text";
}

}  // namespace nira
