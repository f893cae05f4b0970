#include "base/menu_text.h"

#include <gtest/gtest.h>

#include <string>

namespace nira {
namespace {

std::u16string Rewritten(const std::u16string& name) {
    std::u16string text(MenuTextUnits(name.size()), u'?');
    CopyToMenuText(text.data(), name.data(), name.size());
    return text.c_str();
}

TEST(MenuText, LeavesOrdinaryNamesAlone) {
    EXPECT_EQ(Rewritten(u""), u"");
    EXPECT_EQ(Rewritten(u"notes 100% (a).txt *"), u"notes 100% (a).txt *");
    EXPECT_EQ(Rewritten(u"\u00FC\u6771\U0001F600"), u"\u00FC\u6771\U0001F600");
}

TEST(MenuText, DoublesWhatWouldUnderline) {
    EXPECT_EQ(Rewritten(u"a&b"), u"a&&b");
    EXPECT_EQ(Rewritten(u"&&"), u"&&&&");
}

TEST(MenuText, ShowsControlCharactersAsBlanks) { EXPECT_EQ(Rewritten(u"a\tb\bc\nd\x7F"), u"a b c d "); }

TEST(MenuText, HasRoomForTheLongestForm) {
    const std::u16string name(50, u'&');
    EXPECT_EQ(Rewritten(name).size() + 1, MenuTextUnits(name.size()));
}

TEST(MenuText, StopsAtTheCount) {
    char16_t text[MenuTextUnits(2)];
    CopyToMenuText(text, u"a&b", 2);
    EXPECT_EQ(std::u16string(text), u"a&&");
}

}  // namespace
}  // namespace nira
