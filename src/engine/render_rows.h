// What a display row looks like: its text with tabs expanded, and the pieces of it that are selected.
#pragma once

#include <cstdint>

#include "engine/editor.h"

namespace nira {

// The selection as two places in order; on no row when there is none.
struct SelectionSpan {
    bool present;
    int32_t firstRow;  // display rows
    int32_t lastRow;
    uint32_t firstColumn;  // columns in the lines
    uint32_t lastColumn;
};

SelectionSpan SelectionSpanOf(const Editor* editor);

// A row to be drawn. The text belongs to the line, or, when it has tabs, is a block of the local heap of its
// own.
struct RowText {
    const char16_t* text;
    uint32_t length;
    char16_t* expanded;       // to be freed by FreeRowText; null when the row has no tabs
    uint32_t selectionStart;  // units of `text`; both 0 when nothing of the row is selected
    uint32_t selectionEnd;
    bool selectedToEdge;  // the selection goes on behind the row: its colours fill the row to the window's
                          // edge
};

// The text of row `subRow` of a line whose text is not null, for drawing with tabs of `tabSize` columns (-1:
// as glyphs). Memory that cannot be had leaves the row with its tabs as glyphs.
RowText MakeRowText(const Editor* editor, const RowPos& position, const SelectionSpan& selection,
                    int32_t tabSize);
void FreeRowText(RowText* row);

// A copy of `text` on the local heap with every tab replaced by `tabSize` spaces (at most kMostTabColumns,
// more than any screen shows), *length the new length; the columns *start and *end move by what the tabs
// before them grew. Null when there is no tab. Unwinds when memory runs out.
constexpr int32_t kMostTabColumns = 4096;
char16_t* ExpandTabsForRow(const char16_t* text, uint32_t* length, int32_t tabSize, uint32_t* start,
                           uint32_t* end);

}  // namespace nira
