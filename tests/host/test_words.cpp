#include "view/words.h"

#include <gtest/gtest.h>

#include "settings/options.h"

namespace nira {
namespace {

class Words : public testing::Test {
  protected:
    Words() {
        TheOptions() = {};
        TheOptions().wordSeparators = separators_;
    }
    ~Words() override { TheOptions() = {}; }

    LineRecord Line(const std::u16string& text) {
        text_ = text;
        LineRecord line = {};
        line.text = text_.empty() ? nullptr : text_.data();
        line.length = static_cast<uint32_t>(text_.size());
        return line;
    }

    char16_t separators_[4] = u",.;";
    std::u16string text_;
};

TEST_F(Words, AreSeparatedByTabSpaceAndTheOptionsUnits) {
    for (const char16_t unit : std::u16string(u"\t ,.;")) EXPECT_TRUE(IsSeparator(unit)) << uint32_t{unit};
    for (const char16_t unit : std::u16string(u"a_:-\u00A0\u3000"))
        EXPECT_FALSE(IsSeparator(unit)) << uint32_t{unit};
    EXPECT_FALSE(IsSeparator(0)) << "the terminator of the separators is none of them";
}

TEST_F(Words, AreSeparatedByBlanksAloneWithoutSeparators) {
    TheOptions().wordSeparators = nullptr;
    EXPECT_TRUE(IsSeparator(u'\t'));
    EXPECT_TRUE(IsSeparator(u' '));
    EXPECT_FALSE(IsSeparator(u','));
}

TEST_F(Words, ScanStopsAtTheFirstUnitOfTheOtherClass) {
    const LineRecord line = Line(u"ab ,cd");
    EXPECT_EQ(ScanWord(line, 0, 1), 2u);
    EXPECT_EQ(ScanWord(line, 2, 1), 4u);
    EXPECT_EQ(ScanWord(line, 4, 1), 6u);
    EXPECT_EQ(ScanWord(line, 5, -1), 4u);
    EXPECT_EQ(ScanWord(line, 3, -1), 2u);
    EXPECT_EQ(ScanWord(line, 1, -1), 0u);
}

TEST_F(Words, ScanAtTheEndFollowsTheUnitBeforeIt) {
    EXPECT_EQ(ScanWord(Line(u"ab  "), 4, -1), 2u);
    EXPECT_EQ(ScanWord(Line(u"  ab"), 4, -1), 2u);
    EXPECT_EQ(ScanWord(Line(u"ab"), 2, 1), 2u);
    EXPECT_EQ(ScanWord(Line(u""), 0, 1), 0u);
    EXPECT_EQ(ScanWord(Line(u""), 0, -1), 0u);
}

TEST_F(Words, ScanTakesSeparatorsOfAnyKindAsOneRun) {
    const LineRecord line = Line(u"\t ,.;x");
    EXPECT_EQ(ScanWord(line, 0, 1), 5u);
    EXPECT_EQ(ScanWord(line, 4, -1), 0u);
}

TEST_F(Words, RightLandsOnTheNextWordOrBehindThisOne) {
    const LineRecord line = Line(u"foo, bar");
    EXPECT_EQ(WordRightColumn(line, 0), 5u);
    EXPECT_EQ(WordRightColumn(line, 1), 5u);
    TheOptions().stopWordEnd = 1;
    EXPECT_EQ(WordRightColumn(line, 0), 3u);
    EXPECT_EQ(WordRightColumn(line, 3), 5u);
}

TEST_F(Words, RightFromBlanksLandsOnTheWordBehindThem) {
    const LineRecord line = Line(u"foo, bar baz");
    EXPECT_EQ(WordRightColumn(line, 3), 5u);
    EXPECT_EQ(WordRightColumn(line, 4), 5u);
}

TEST_F(Words, RightStopsAtTheLineEnd) {
    EXPECT_EQ(WordRightColumn(Line(u"foo"), 1), 3u);
    EXPECT_EQ(WordRightColumn(Line(u"foo  "), 1), 5u);
    EXPECT_EQ(WordRightColumn(Line(u"foo"), 3), 3u);
    EXPECT_EQ(WordRightColumn(Line(u""), 0), 0u);
}

TEST_F(Words, LeftLandsOnTheStartOfAWord) {
    const LineRecord line = Line(u"foo  bar");
    EXPECT_EQ(WordLeftColumn(line, 8), 5u);
    EXPECT_EQ(WordLeftColumn(line, 7), 5u);
    EXPECT_EQ(WordLeftColumn(line, 5), 0u);
    EXPECT_EQ(WordLeftColumn(line, 2), 0u);
    EXPECT_EQ(WordLeftColumn(line, 0), 0u);
}

TEST_F(Words, LeftSkipsBlanksAndTheWordBeforeThem) {
    const LineRecord line = Line(u"one two, three");
    EXPECT_EQ(WordLeftColumn(line, 9), 4u);
    EXPECT_EQ(WordLeftColumn(line, 8), 4u);
    TheOptions().stopWordEnd = 1;
    EXPECT_EQ(WordLeftColumn(line, 9), 7u);
    EXPECT_EQ(WordLeftColumn(line, 7), 4u);
}

TEST_F(Words, LeftFromTheFirstWordOfAnIndentedLineStopsBehindTheIndentation) {
    const LineRecord line = Line(u"  foo");
    EXPECT_EQ(WordLeftColumn(line, 5), 2u);
    EXPECT_EQ(WordLeftColumn(line, 2), 0u);
}

}  // namespace
}  // namespace nira
