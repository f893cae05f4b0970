#include "files/file_columns.h"

#include <algorithm>
#include <numeric>

namespace nira {

namespace {

constexpr int kScrollBarShare = 15;
constexpr int kLeastNameShare = 3;  // a long name is cut anyway: it leaves the others all but a third

// What the columns other than `wanting` have and do not need.
int Spare(const ColumnWidths& columns, const ColumnWidths& needed, int wanting) {
    int spare = 0;
    for (int i = 0; i < kColumnCount; ++i) {
        if (i != wanting) spare += std::max(0, columns.width[i] - needed.width[i]);
    }
    return spare;
}

// Gives `pixels` of the others' spare widths to `wanting`.
void Move(ColumnWidths* columns, const ColumnWidths& needed, int wanting, int pixels) {
    columns->width[wanting] += pixels;
    for (int i = 0; i < kColumnCount && pixels > 0; ++i) {
        if (i == wanting) continue;
        const int taken = std::min(pixels, std::max(0, columns->width[i] - needed.width[i]));
        columns->width[i] -= taken;
        pixels -= taken;
    }
}

}  // namespace

ColumnWidths PlainColumns(int listWidth) {
    const int quarter = std::max(0, listWidth / 4);
    return {{std::max(0, listWidth / 2 - kScrollBarShare), quarter, quarter}};
}

ColumnWidths FittedColumns(int listWidth, int shownWidth, const ColumnWidths& needed) {
    ColumnWidths columns = PlainColumns(listWidth);
    const int together = std::accumulate(columns.width, columns.width + kColumnCount, 0);
    columns.width[kColumnName] = std::max(0, columns.width[kColumnName] - std::max(0, together - shownWidth));
    ColumnWidths kept = needed;
    kept.width[kColumnName] = std::min(needed.width[kColumnName], listWidth / kLeastNameShare);
    for (const int wanting : {kColumnModified, kColumnSize, kColumnName}) {
        const int missing = needed.width[wanting] - columns.width[wanting];
        if (missing > 0) Move(&columns, kept, wanting, std::min(missing, Spare(columns, kept, wanting)));
    }
    return columns;
}

}  // namespace nira
