#include "view/words.h"

#include "base/utf16.h"
#include "settings/options.h"

namespace nira {

namespace {

bool ClassAt(const LineRecord& line, uint32_t column) {
    if (line.length == 0) return true;
    return IsSeparator(line.text[column < line.length ? column : line.length - 1]);
}

}  // namespace

bool IsSeparator(char16_t unit) {
    if (unit == kTab || unit == kSpace) return true;
    return Utf16Find(OptionsWordSeparators(), unit) != nullptr;
}

uint32_t ScanWord(const LineRecord& line, uint32_t column, int direction) {
    const bool followed = ClassAt(line, column);
    if (direction > 0) {
        while (column < line.length && IsSeparator(line.text[column]) == followed) ++column;
        return column;
    }
    // The unit at `column` itself belongs to the run; the first one of another class ends it.
    while (column > 0 && IsSeparator(line.text[column - 1]) == followed) --column;
    return column;
}

uint32_t WordRightColumn(const LineRecord& line, uint32_t column) {
    const uint32_t end = ScanWord(line, column, 1);
    const bool inWord = column < line.length && !IsSeparator(line.text[column]);
    if (end == column || TheOptions().stopWordEnd != 0 || !inWord) return end;
    return end < line.length ? ScanWord(line, end, 1) : end;
}

uint32_t WordLeftColumn(const LineRecord& line, uint32_t column) {
    if (column == 0) return 0;
    const uint32_t start = ScanWord(line, column - 1, -1);
    const bool behindBlanks = IsSeparator(line.text[column - 1]);
    if (start == 0 || start == column || TheOptions().stopWordEnd != 0 || !behindBlanks) return start;
    return ScanWord(line, start - 1, -1);
}

}  // namespace nira
