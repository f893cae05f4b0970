#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "settings/go_to_dialog.h"

namespace nira {
namespace {

std::u16string RangeText(int32_t lineCount, size_t room = 32) {
    char16_t text[32] = {};
    LineRangeText(text, room, lineCount);
    return text;
}

TEST(ReadLineNumber, TakesTheDigits) {
    EXPECT_EQ(ReadLineNumber(u"1"), 1u);
    EXPECT_EQ(ReadLineNumber(u"120"), 120u);
    EXPECT_EQ(ReadLineNumber(u"007"), 7u);
}

TEST(ReadLineNumber, SkipsBlanksBeforeAndEndsAtWhatIsNoDigit) {
    EXPECT_EQ(ReadLineNumber(u" \t12"), 12u);
    EXPECT_EQ(ReadLineNumber(u"12 34"), 12u);
    EXPECT_EQ(ReadLineNumber(u"12x"), 12u);
}

TEST(ReadLineNumber, IsZeroWithoutANumber) {
    EXPECT_EQ(ReadLineNumber(u""), 0u);
    EXPECT_EQ(ReadLineNumber(u"   "), 0u);
    EXPECT_EQ(ReadLineNumber(u"0"), 0u);
    EXPECT_EQ(ReadLineNumber(u"ten"), 0u);
    EXPECT_EQ(ReadLineNumber(u"-3"), 0u);
    EXPECT_EQ(ReadLineNumber(u"+3"), 0u);
}

TEST(ReadLineNumber, TakesTooMuchForTheMost) {
    constexpr uint32_t kMost = INT32_MAX;
    EXPECT_EQ(ReadLineNumber(u"2147483647"), kMost);
    EXPECT_EQ(ReadLineNumber(u"2147483648"), kMost);
    EXPECT_EQ(ReadLineNumber(u"4294967297"), kMost);
    EXPECT_EQ(ReadLineNumber(u"99999999999999999999999999"), kMost);
}

TEST(LineRangeText, HoldsTheNumberOfLines) {
    EXPECT_EQ(RangeText(1), u"(1-1)");
    EXPECT_EQ(RangeText(INT32_MAX), u"(1-2147483647)");
}

TEST(LineRangeText, IsCutToItsRoom) { EXPECT_EQ(RangeText(12345, 5), u"(1-1"); }

}  // namespace
}  // namespace nira
