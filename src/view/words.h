// Where words begin and end on a line.
#pragma once

#include <cstdint>

#include "engine/line_record.h"

namespace nira {

// Tab, space, or one of the Options' word separators.
bool IsSeparator(char16_t unit);

// From `column` in direction +1 or -1 to where the run of separators or of word characters that it is in
// ends. The class is that of the unit at the column; at the line's end that of the unit before it; on an
// empty line separator.
uint32_t ScanWord(const LineRecord& line, uint32_t column, int direction);

// Where Ctrl+Right and Ctrl+Left go on this line; the column itself when they do not move. With the Options'
// "Stop at end of word" they stop behind a word, without it at the start of the next.
uint32_t WordRightColumn(const LineRecord& line, uint32_t column);
uint32_t WordLeftColumn(const LineRecord& line, uint32_t column);

}  // namespace nira
