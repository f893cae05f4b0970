#include "app/services/message_table.h"

#include <gtest/gtest.h>

namespace nira {
namespace {

intptr_t First(WindowHandle, uint32_t, uintptr_t, intptr_t) { return 1; }
intptr_t Second(WindowHandle, uint32_t, uintptr_t, intptr_t) { return 2; }

constexpr MessageEntry kEntries[] = {{5, First}, {7, Second}, {5, Second}, {9, Second}};

TEST(MessageTables, TheFirstEntryThatMatchesWins) {
    const MessageTable table = {kEntries, 4};
    EXPECT_EQ(FindMessage(table, 5), &kEntries[0]);
    EXPECT_EQ(FindMessage(table, 7), &kEntries[1]);
    EXPECT_EQ(FindMessage(table, 7)->handler(nullptr, 7, 0, 0), 2);
}

TEST(MessageTables, OnlyTheCountedEntriesAreScanned) {
    EXPECT_EQ(FindMessage({kEntries, 3}, 9), nullptr);
    EXPECT_EQ(FindMessage({kEntries, 4}, 9), &kEntries[3]);
    EXPECT_EQ(FindMessage({kEntries, 4}, 6), nullptr);
    EXPECT_EQ(FindMessage({nullptr, 0}, 5), nullptr);
}

}  // namespace
}  // namespace nira
