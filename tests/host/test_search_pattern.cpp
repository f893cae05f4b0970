#include "search/search_pattern.h"

#include "host/view_fixture.h"
#include "search/search_state.h"

namespace nira {
namespace {

class ProposedPatterns : public ViewTest {
  protected:
    ProposedPatterns() { TheOptions().wordSeparators = separators_; }
    ~ProposedPatterns() override { FreeSearchState(); }

    static std::u16string Proposed(const Editor* editor) {
        char16_t* text = ProposedPattern(editor);
        std::u16string copy = text != nullptr ? text : u"nothing";
        MemFree(nullptr, text);
        return copy;
    }
    std::u16string ProposedAt(uint32_t line, uint32_t column) const {
        At(line, column);
        return Proposed(editor_);
    }
    std::u16string ProposedFor(uint32_t line1, uint32_t column1, uint32_t line2, uint32_t column2) const {
        Select(line1, column1, line2, column2);
        return Proposed(editor_);
    }

    char16_t separators_[4] = u",.;";
};

TEST_F(ProposedPatterns, AreTheSelection) {
    Fill(u"one two, three");
    EXPECT_EQ(ProposedFor(0, 2, 0, 9), u"e two, ");
}

TEST_F(ProposedPatterns, HoldTheLineEndsOfASelection) {
    Fill(u"one\ntwo");
    EXPECT_EQ(ProposedFor(1, 1, 0, 2), u"e\r\nt");
}

TEST_F(ProposedPatterns, AreNoMoreOfALargeSelectionThanAPatternHolds) {
    std::u16string text;
    for (int i = 0; i < 40000; ++i) text += u"ab\n";
    Fill(text);
    std::u16string expected;
    for (int i = 0; i < 40000; ++i) expected += u"ab\r\n";
    EXPECT_EQ(ProposedFor(0, 0, 40000, 0), expected.substr(0, kLongestPattern));
    EXPECT_EQ(ProposedFor(0, 0, 5, 0), u"ab\r\nab\r\nab\r\nab\r\nab\r\n");
    Fill(std::u16string(100000, u'x'));
    EXPECT_EQ(ProposedFor(0, 1, 0, 100000), std::u16string(kLongestPattern, u'x'));
    EXPECT_EQ(ProposedFor(0, 1, 0, 3), u"xx");
}

TEST_F(ProposedPatterns, AreTheWordAtTheCaret) {
    Fill(u"one two_2, three");
    EXPECT_EQ(ProposedAt(0, 0), u"one");
    EXPECT_EQ(ProposedAt(0, 3), u"one") << "behind its last letter";
    EXPECT_EQ(ProposedAt(0, 6), u"two_2");
    EXPECT_EQ(ProposedAt(0, 16), u"three") << "at the end of the line";
}

TEST_F(ProposedPatterns, AreTheLastPatternBetweenSeparators) {
    Fill(u"one, two\n");
    SetSearchPattern(u"last");
    EXPECT_EQ(ProposedAt(0, 4), u"last");
    EXPECT_EQ(ProposedAt(1, 0), u"last") << "on an empty line";
    EXPECT_EQ(ProposedAt(0, 1), u"one");
    EXPECT_EQ(Proposed(nullptr), u"last");
}

TEST_F(ProposedPatterns, AreNothingBeforeTheFirstSearch) {
    EXPECT_EQ(Proposed(editor_), u"nothing");
    EXPECT_EQ(Proposed(nullptr), u"nothing");
}

TEST_F(ProposedPatterns, AreCutAtTheLongestPattern) {
    Fill(std::u16string(kLongestPattern + 10, u'a'));
    EXPECT_EQ(ProposedAt(0, 5).size(), kLongestPattern);
    EXPECT_EQ(ProposedFor(0, 1, 0, kLongestPattern + 1).size(), kLongestPattern);
}

}  // namespace
}  // namespace nira
