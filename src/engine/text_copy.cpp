#include "engine/text_copy.h"

#include <cstring>
#include <utility>

#include "app/services/memory.h"
#include "base/utf16.h"

namespace nira {

namespace {

struct LineEndText {
    char16_t units[2];
    uint32_t length;
};

LineEndText LineEndOf(uint32_t lineEnd) {
    if (lineEnd == kLineEndLf) return {{kLineFeed, 0}, 1};
    if (lineEnd == kLineEndCr) return {{kCarriageReturn, 0}, 1};
    return {{kCarriageReturn, kLineFeed}, 2};
}

// Where text is being put together.
struct Sink {
    char16_t* place;

    void Append(const char16_t* source, size_t count) {
        if (count > 0) std::memcpy(place, source, count * sizeof(char16_t));
        place += count;
    }
};

}  // namespace

size_t TextRangeUnits(const Editor* editor, uint32_t lineEnd, uint32_t line1, uint32_t column1,
                      uint32_t line2, uint32_t column2) {
    if (line1 == line2) return column2 - column1;
    const uint32_t separator = LineEndOf(lineEnd).length;
    size_t total = size_t{editor->lines[line1].length} - column1 + separator + column2;
    for (uint32_t i = line1 + 1; i < line2; ++i) total += size_t{editor->lines[i].length} + separator;
    return total;
}

void TextWriteRange(const Editor* editor, char16_t* target, uint32_t lineEnd, uint32_t line1,
                    uint32_t column1, uint32_t line2, uint32_t column2) {
    const LineEndText separator = LineEndOf(lineEnd);
    Sink sink = {target};
    uint32_t column = column1;
    for (uint32_t i = line1; i < line2; ++i) {
        const LineRecord& line = editor->lines[i];
        sink.Append(line.text + column, line.length - column);
        sink.Append(separator.units, separator.length);
        column = 0;
    }
    sink.Append(editor->lines[line2].text + column, column2 - column);
}

char16_t* TextCopyRange(const Editor* editor, HeapHandle heap, uint32_t lineEnd, uint32_t line1,
                        uint32_t column1, uint32_t line2, uint32_t column2, uint32_t* units) {
    if (line1 > line2 || (line1 == line2 && column1 > column2)) {
        std::swap(line1, line2);
        std::swap(column1, column2);
    }
    const size_t total = TextRangeUnits(editor, lineEnd, line1, column1, line2, column2);
    auto* text = MemAllocArray<char16_t>(heap, total + 1);
    if (units != nullptr) *units = static_cast<uint32_t>(total);
    TextWriteRange(editor, text, lineEnd, line1, column1, line2, column2);
    return text;
}

bool HasSelection(const Editor* editor) {
    if (editor->anchorColumn == kNoSelection) return false;
    return editor->anchor.line != editor->caret.line || editor->anchorColumn != editor->caretColumn;
}

SelectionRange SelectionRangeOf(const Editor* editor) {
    const auto caretLine = static_cast<uint32_t>(editor->caret.line);
    const auto caretColumn = static_cast<uint32_t>(editor->caretColumn);
    if (!HasSelection(editor)) return {caretLine, caretColumn, caretLine, caretColumn};
    const auto anchorLine = static_cast<uint32_t>(editor->anchor.line);
    const auto anchorColumn = static_cast<uint32_t>(editor->anchorColumn);
    const bool anchorFirst =
        anchorLine < caretLine || (anchorLine == caretLine && anchorColumn < caretColumn);
    if (anchorFirst) return {anchorLine, anchorColumn, caretLine, caretColumn};
    return {caretLine, caretColumn, anchorLine, anchorColumn};
}

char16_t* SelectionCopy(const Editor* editor, uint32_t* units) {
    if (!HasSelection(editor)) return nullptr;
    const SelectionRange range = SelectionRangeOf(editor);
    return TextCopyRange(editor, nullptr, editor->lineEnd, range.line1, range.column1, range.line2,
                         range.column2, units);
}

char16_t* StripCrBeforeLf(char16_t* target, const char16_t* source, uint32_t count) {
    Sink sink = {target};
    for (size_t from = 0; from < count;) {
        const size_t place = Utf16FindBreak(source, from, count);
        const bool dropped =
            place + 1 < count && source[place] == kCarriageReturn && source[place + 1] == kLineFeed;
        sink.Append(source + from, place - from + (place < count && !dropped ? 1 : 0));
        from = place + 1;
    }
    return target;
}

uint32_t ConvertBreaksToLf(char16_t* target, const char16_t* source, uint32_t count) {
    Sink sink = {target};
    for (size_t from = 0; from < count;) {
        const size_t place = Utf16FindBreak(source, from, count);
        sink.Append(source + from, place - from);
        if (place < count) sink.Append(u"\n", 1);
        const bool pair =
            place + 1 < count && source[place] == kCarriageReturn && source[place + 1] == kLineFeed;
        from = place + (pair ? 2 : 1);
    }
    return static_cast<uint32_t>(sink.place - target);
}

}  // namespace nira
