#include "search/find.h"

#include <gtest/gtest.h>

#include "host/view_fixture.h"
#include "platform/host/message_log.h"
#include "platform/host/shell_log.h"
#include "search/search_state.h"

namespace nira {
namespace {

using Place = std::pair<int32_t, int32_t>;

class FindTest : public ViewTest {
  protected:
    ~FindTest() override { FreeSearchState(); }

    static void Pattern(const char16_t* pattern, const char16_t* replacement = u"") {
        SetSearchPattern(pattern);
        SetSearchReplacement(replacement);
        TheSearchState().matchCase = 1;
    }
    // Whether a match was found, with a look at the document.
    bool Next() const {
        const bool found = FindNext(editor_);
        Check();
        return found;
    }
    std::u16string Selected() const {
        uint32_t units = 0;
        char16_t* copy = SelectionCopy(editor_, &units);
        std::u16string text(copy != nullptr ? copy : u"", units);
        MemFree(nullptr, copy);
        return text;
    }
};

TEST_F(FindTest, SelectsEachMatchInTurnAndWraps) {
    Fill(u"aaaa");
    Pattern(u"aa");
    EXPECT_TRUE(Next());
    EXPECT_EQ(Anchor(), Place(0, 0));
    EXPECT_EQ(Caret(), Place(0, 2));
    EXPECT_TRUE(Next());
    EXPECT_EQ(Anchor(), Place(0, 2));
    EXPECT_EQ(Caret(), Place(0, 4));
    EXPECT_TRUE(Next());
    EXPECT_EQ(Anchor(), Place(0, 0));
    EXPECT_EQ(Caret(), Place(0, 2));
}

TEST_F(FindTest, WholeWordStandsBetweenSeparators) {
    TheSearchState().wholeWord = 1;
    Fill(u"concat cat");
    Pattern(u"cat");
    EXPECT_TRUE(Next());
    EXPECT_EQ(Anchor(), Place(0, 7));
}

TEST_F(FindTest, PartOfAWordIsNoWholeWord) {
    TheSearchState().wholeWord = 1;
    Fill(u"cat_x");
    Pattern(u"cat");
    EXPECT_FALSE(Next());
    EXPECT_EQ(Anchor(), kNoAnchor);
}

TEST_F(FindTest, ReplacesEveryMatch) {
    Fill(u"x x\nx");
    Pattern(u"x", u"y");
    EXPECT_EQ(ReplaceAll(editor_), 3U);
    EXPECT_EQ(Text(), u"y y\ny");
}

}  // namespace
}  // namespace nira
