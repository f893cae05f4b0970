// The widths of the three columns of the file dialog's list, in pixels.
#pragma once

namespace nira {

constexpr int kColumnName = 0;
constexpr int kColumnSize = 1;
constexpr int kColumnModified = 2;
constexpr int kColumnCount = 3;

struct ColumnWidths {
    int width[kColumnCount];
};

// Half of the list less 15 for its scroll bar, and a quarter for each of the others.
ColumnWidths PlainColumns(int listWidth);

// The same where it shows everything. Where one column needs more (`needed`: its widest text with the
// margins), it gets what the others have to spare: first size and date, which are short and may take from a
// name that is longer than a third of the list, then the name. Never wider together than `shownWidth`, the
// list's width without a wider scroll bar: the name gives way.
ColumnWidths FittedColumns(int listWidth, int shownWidth, const ColumnWidths& needed);

}  // namespace nira
