#include "search/search_state.h"

#include <gtest/gtest.h>

#include "host/files_support.h"
#include "platform/host/faults.h"

namespace nira {
namespace {

class SearchStateTest : public ServicesTest {
  protected:
    ~SearchStateTest() override { FreeSearchState(); }
};

TEST_F(SearchStateTest, KeepsItsOwnCopies) {
    char16_t text[] = u"abc";
    SetSearchPattern(text);
    SetSearchReplacement(text);
    text[0] = u'x';
    EXPECT_EQ(std::u16string(TheSearchState().pattern), u"abc");
    EXPECT_EQ(std::u16string(TheSearchState().replacement), u"abc");
}

TEST_F(SearchStateTest, ItsOwnTextMayBeSetAgain) {
    SetSearchPattern(u"abc");
    SetSearchPattern(TheSearchState().pattern + 1);
    EXPECT_EQ(std::u16string(TheSearchState().pattern), u"bc");
}

TEST_F(SearchStateTest, TakesLongTextsAndNone) {
    const std::u16string text(10000, u'p');
    SetSearchPattern(text.c_str());
    EXPECT_EQ(std::u16string(TheSearchState().pattern), text);
    SetSearchPattern(nullptr);
    EXPECT_EQ(std::u16string(TheSearchState().pattern), u"");
}

TEST_F(SearchStateTest, KeepsTheFormerTextWhenMemoryRunsOut) {
    SetSearchPattern(u"abc");
    FaultScope fault(FaultPoint::kAllocation, {});
    EXPECT_FALSE(Guarded([] { SetSearchPattern(u"defgh"); }));
    EXPECT_EQ(std::u16string(TheSearchState().pattern), u"abc");
}

TEST_F(SearchStateTest, IsEmptyOnceFreed) {
    SetSearchPattern(u"abc");
    TheSearchState().matchCase = 1;
    FreeSearchState();
    EXPECT_EQ(TheSearchState().pattern, nullptr);
    EXPECT_EQ(TheSearchState().replacement, nullptr);
    EXPECT_EQ(TheSearchState().matchCase, 0);
}

}  // namespace
}  // namespace nira
