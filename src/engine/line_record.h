// One logical line of a document.
#pragma once

#include <cstdint>

namespace nira {

// All memory belongs to the document's heap. Line ends are not stored.
struct LineRecord {
    char16_t* text;     // `length` units and a terminator; null for a line that was never given text
    uint32_t length;    // UTF-16 units, the terminator not counted
    uint32_t capacity;  // (length / 10) * 10 + 10 after any change, 0 while text is null. The block behind
                        // `text` holds at least capacity + 1 units: long lines grow geometrically underneath
    int32_t width;      // pixels of the whole line, tabs expanded; INT32_MAX when it is more
    uint32_t shaped;   // 1 when the width is not the sum of its units, so that it cannot be kept up by adding
    uint32_t* breaks;  // null when the line is one display row. Otherwise breaks[0] = K continuation rows and
                       // breaks[1..K] = the columns where they start, ascending
};

// K: the display rows that the line has beyond its first.
inline uint32_t ExtraRows(const LineRecord& line) { return line.breaks != nullptr ? line.breaks[0] : 0; }

// The column at which row `subRow` (0..K) starts, and the one behind its last unit.
inline uint32_t RowStart(const LineRecord& line, uint32_t subRow) {
    return subRow == 0 ? 0 : line.breaks[subRow];
}
inline uint32_t RowEnd(const LineRecord& line, uint32_t subRow) {
    return subRow < ExtraRows(line) ? line.breaks[subRow + 1] : line.length;
}

// The row (0..K) that shows `column`. A column where a continuation row starts is shown on that row, the
// line's end on its last row.
uint32_t SubRowOfColumn(const LineRecord& line, uint32_t column);

}  // namespace nira
