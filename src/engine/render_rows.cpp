#include "engine/render_rows.h"

#include <algorithm>
#include <utility>

#include "app/services/memory.h"
#include "base/utf16.h"
#include "engine/text_copy.h"

namespace nira {

namespace {

// Where the selection begins and ends on a row, in columns of the line, cut to the row's own.
uint32_t CutToRow(uint32_t column, uint32_t start, uint32_t end) {
    return std::clamp(column, start, end) - start;
}

}  // namespace

SelectionSpan SelectionSpanOf(const Editor* editor) {
    SelectionSpan span = {};
    if (!HasSelection(editor)) return span;
    span = {true, editor->anchor.row, editor->caret.row, static_cast<uint32_t>(editor->anchorColumn),
            static_cast<uint32_t>(editor->caretColumn)};
    const bool swapped =
        span.firstRow > span.lastRow || (span.firstRow == span.lastRow && span.firstColumn > span.lastColumn);
    if (swapped) {
        std::swap(span.firstRow, span.lastRow);
        std::swap(span.firstColumn, span.lastColumn);
    }
    return span;
}

RowText MakeRowText(const Editor* editor, const RowPos& position, const SelectionSpan& selection,
                    int32_t tabSize) {
    const LineRecord& line = editor->lines[position.line];
    const uint32_t start = RowStart(line, static_cast<uint32_t>(position.subRow));
    const uint32_t end = RowEnd(line, static_cast<uint32_t>(position.subRow));
    RowText row = {line.text + start, end - start, nullptr, 0, 0, false};
    const bool selected =
        selection.present && position.row >= selection.firstRow && position.row <= selection.lastRow;
    if (selected) {
        const bool first = position.row == selection.firstRow;
        row.selectedToEdge = position.row < selection.lastRow;
        row.selectionStart = first ? CutToRow(selection.firstColumn, start, end) : 0;
        row.selectionEnd = row.selectedToEdge ? row.length : CutToRow(selection.lastColumn, start, end);
    }
    if (tabSize == -1) return row;
    Guarded([&] {
        row.expanded =
            ExpandTabsForRow(row.text, &row.length, tabSize, &row.selectionStart, &row.selectionEnd);
        if (row.expanded != nullptr) row.text = row.expanded;
    });
    return row;
}

void FreeRowText(RowText* row) {
    MemFree(nullptr, row->expanded);
    row->expanded = nullptr;
}

char16_t* ExpandTabsForRow(const char16_t* text, uint32_t* length, int32_t tabSize, uint32_t* start,
                           uint32_t* end) {
    const auto tabs = static_cast<size_t>(std::count(text, text + *length, kTab));
    if (tabs == 0) return nullptr;
    const auto spaces = static_cast<size_t>(std::clamp(tabSize, 0, kMostTabColumns));
    const size_t total = *length - tabs + tabs * spaces;
    auto* expanded = MemAllocArray<char16_t>(nullptr, total + 1);
    size_t place = 0;
    uint32_t newStart = 0;
    uint32_t newEnd = 0;
    for (uint32_t i = 0; i <= *length; ++i) {
        if (i == *start) newStart = static_cast<uint32_t>(place);
        if (i == *end) newEnd = static_cast<uint32_t>(place);
        if (i == *length) break;
        if (text[i] != kTab) {
            expanded[place++] = text[i];
            continue;
        }
        std::fill_n(expanded + place, spaces, kSpace);
        place += spaces;
    }
    *length = static_cast<uint32_t>(total);
    *start = newStart;
    *end = newEnd;
    return expanded;
}

}  // namespace nira
