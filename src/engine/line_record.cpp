#include "engine/line_record.h"

#include <algorithm>

namespace nira {

uint32_t SubRowOfColumn(const LineRecord& line, uint32_t column) {
    const uint32_t extra = ExtraRows(line);
    if (extra == 0) return 0;
    const uint32_t* first = line.breaks + 1;
    return static_cast<uint32_t>(std::upper_bound(first, first + extra, column) - first);
}

}  // namespace nira
