#include "files/file_columns.h"

#include <gtest/gtest.h>

namespace nira {
namespace {

void ExpectWidths(const ColumnWidths& columns, int name, int size, int modified) {
    EXPECT_EQ(columns.width[kColumnName], name);
    EXPECT_EQ(columns.width[kColumnSize], size);
    EXPECT_EQ(columns.width[kColumnModified], modified);
}

TEST(FileColumns, AreHalfAndTwoQuarters) {
    ExpectWidths(PlainColumns(400), 185, 100, 100);
    ExpectWidths(PlainColumns(0), 0, 0, 0);
}

TEST(FileColumns, StayAsTheyAreWhereTheyShowEverything) {
    ExpectWidths(FittedColumns(400, 400, {{100, 60, 70}}), 185, 100, 100);
}

TEST(FileColumns, GiveALongNameWhatTheOthersCanSpare) {
    ExpectWidths(FittedColumns(400, 400, {{200, 60, 70}}), 200, 85, 100);
    ExpectWidths(FittedColumns(400, 400, {{999, 60, 70}}), 255, 60, 70);
}

TEST(FileColumns, GiveDateAndSizeWhatAShortNameCanSpare) {
    ExpectWidths(FittedColumns(240, 240, {{50, 64, 80}}), 81, 64, 80);
}

TEST(FileColumns, LeaveALongNameAThirdWhereDateAndSizeNeedTheRest) {
    ExpectWidths(FittedColumns(240, 240, {{300, 64, 80}}), 81, 64, 80);
    ExpectWidths(FittedColumns(240, 240, {{300, 300, 80}}), 80, 65, 80);
}

TEST(FileColumns, MakeRoomForAWideScrollBar) {
    ExpectWidths(FittedColumns(400, 370, {{100, 60, 70}}), 170, 100, 100);
    ExpectWidths(FittedColumns(40, 0, {{100, 60, 70}}), 0, 10, 10);
}

}  // namespace
}  // namespace nira
