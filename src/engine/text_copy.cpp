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

size_t RangeUnits(const Editor* editor, uint32_t separator, uint32_t line1, uint32_t column1, uint32_t line2,
                  uint32_t column2) {
    if (line1 == line2) return column2 - column1;
    size_t total = size_t{editor->lines[line1].length} - column1 + separator + column2;
    for (uint32_t i = line1 + 1; i < line2; ++i) total += size_t{editor->lines[i].length} + separator;
    return total;
}

}  // namespace

char16_t* TextCopyRange(const Editor* editor, HeapHandle heap, uint32_t lineEnd, uint32_t line1,
                        uint32_t column1, uint32_t line2, uint32_t column2, uint32_t* units) {
    if (line1 > line2 || (line1 == line2 && column1 > column2)) {
        std::swap(line1, line2);
        std::swap(column1, column2);
    }
    const LineEndText separator = LineEndOf(lineEnd);
    const size_t total = RangeUnits(editor, separator.length, line1, column1, line2, column2);
    auto* text = MemAllocArray<char16_t>(heap, total + 1);
    if (units != nullptr) *units = static_cast<uint32_t>(total);
    Sink sink = {text};
    uint32_t column = column1;
    for (uint32_t i = line1; i < line2; ++i) {
        const LineRecord& line = editor->lines[i];
        sink.Append(line.text + column, line.length - column);
        sink.Append(separator.units, separator.length);
        column = 0;
    }
    sink.Append(editor->lines[line2].text + column, column2 - column);
    return text;
}

bool HasSelection(const Editor* editor) {
    if (editor->anchorColumn == kNoSelection) return false;
    return editor->anchor.line != editor->caret.line || editor->anchorColumn != editor->caretColumn;
}

char16_t* SelectionCopy(const Editor* editor, uint32_t* units) {
    if (!HasSelection(editor)) return nullptr;
    return TextCopyRange(editor, nullptr, editor->lineEnd, static_cast<uint32_t>(editor->anchor.line),
                         static_cast<uint32_t>(editor->anchorColumn),
                         static_cast<uint32_t>(editor->caret.line),
                         static_cast<uint32_t>(editor->caretColumn), units);
}

char16_t* StripCrBeforeLf(char16_t* target, const char16_t* source, uint32_t count) {
    char16_t* place = target;
    for (uint32_t i = 0; i < count; ++i) {
        const bool dropped = source[i] == kCarriageReturn && i + 1 < count && source[i + 1] == kLineFeed;
        if (!dropped) *place++ = source[i];
    }
    return target;
}

char16_t* NormalizeBreaks(const char16_t* source, uint32_t count, uint32_t* units) {
    size_t total = 0;
    for (uint32_t i = 0; i < count; ++i) {
        const bool pair = source[i] == kCarriageReturn && i + 1 < count && source[i + 1] == kLineFeed;
        if (pair) ++i;
        total += pair || source[i] == kCarriageReturn || source[i] == kLineFeed ? 2 : 1;
    }
    auto* text = MemAllocArray<char16_t>(nullptr, total + 1);
    char16_t* place = text;
    for (uint32_t i = 0; i < count; ++i) {
        if (source[i] != kCarriageReturn && source[i] != kLineFeed) {
            *place++ = source[i];
            continue;
        }
        if (source[i] == kCarriageReturn && i + 1 < count && source[i + 1] == kLineFeed) ++i;
        *place++ = kCarriageReturn;
        *place++ = kLineFeed;
    }
    *units = static_cast<uint32_t>(total);
    return text;
}

}  // namespace nira
