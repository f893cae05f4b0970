#include "base/utf16.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>

namespace nira {
namespace {

TEST(Utf16Length, CountsUnitsBeforeTheTerminator) {
    EXPECT_EQ(Utf16Length(u"abc"), 3u);
    EXPECT_EQ(Utf16Length(u""), 0u);
    EXPECT_EQ(Utf16Length(nullptr), 0u);
}

TEST(Utf16Compare, OrdersByUnsignedUnit) {
    EXPECT_EQ(Utf16Compare(u"abc", u"abc"), 0);
    EXPECT_LT(Utf16Compare(u"ab", u"abc"), 0);
    EXPECT_GT(Utf16Compare(u"\uFF21", u"a"), 0);
    EXPECT_EQ(Utf16Compare(nullptr, u""), 0);
}

TEST(Utf16Find, FindsTheFirstAndTheLast) {
    const char16_t* text = u"\\a\\b";
    EXPECT_EQ(Utf16Find(text, u'\\'), text);
    EXPECT_EQ(Utf16FindLast(text, u'\\'), text + 2);
    EXPECT_EQ(Utf16Find(text, u'x'), nullptr);
    EXPECT_EQ(Utf16FindLast(nullptr, u'x'), nullptr);
}

TEST(Utf16Copy, CutsToTheRoomAndTerminates) {
    char16_t target[4] = {u'#', u'#', u'#', u'#'};
    EXPECT_EQ(Utf16Copy(target, 3, u"abcdef"), 2u);
    EXPECT_EQ(std::u16string(target), u"ab");
    EXPECT_EQ(target[3], u'#');
    EXPECT_EQ(Utf16Copy(target, 0, u"xyz"), 0u);
    EXPECT_EQ(target[0], u'a');
}

TEST(Utf16FromInt, WritesTheWholeRange) {
    char16_t target[12];
    EXPECT_EQ(Utf16FromInt(target, 12, INT_MIN), 11u);
    EXPECT_EQ(std::u16string(target), u"-2147483648");
    EXPECT_EQ(Utf16FromInt(target, 12, 0), 1u);
    EXPECT_EQ(std::u16string(target), u"0");
    EXPECT_EQ(Utf16FromInt(target, 3, 1234), 2u);
    EXPECT_EQ(std::u16string(target), u"12");
}

TEST(Utf16FindBreak, FindsTheFirstBreakFromAnyPlaceOn) {
    for (size_t length = 0; length < 40; ++length) {
        for (size_t place = 0; place < length; ++place) {
            for (const char16_t unit : {u'\n', u'\r'}) {
                std::u16string text(length, u'\u0a0d');
                text[place] = unit;
                text.back() = place + 1 == length ? unit : u'\n';
                for (size_t from = 0; from <= place; ++from) {
                    ASSERT_EQ(Utf16FindBreak(text.data(), from, length), place);
                }
            }
        }
    }
}

TEST(Utf16FindBreak, GivesTheCountWhenThereIsNone) {
    const std::u16string text(40, u'\u0d0a');
    for (size_t count = 0; count <= 40; ++count) EXPECT_EQ(Utf16FindBreak(text.data(), 0, count), count);
    EXPECT_EQ(Utf16FindBreak(u"ab\n", 0, 2), 2u) << "a break behind the text does not count";
}

}  // namespace
}  // namespace nira
