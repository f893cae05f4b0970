// Pop-up menus wider than the screen.
#include "shell/menu_fit.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::wstring Shortened(const std::wstring& text, int kept) {
    std::wstring target(static_cast<size_t>(kept) + 2, L'?');
    shell::ShortenMiddle(target.data(), text.c_str(), kept);
    return target.c_str();
}

class ShellMenuFit : public testing::Test {
  protected:
    void TearDown() override {
        shell::UnfitMenu(nullptr);
        DestroyMenu(menu);
    }
    void Append(UINT id, const std::wstring& text) { AppendMenuW(menu, MF_STRING, id, text.c_str()); }
    std::wstring Text(UINT position) const {
        wchar_t text[700] = {};
        GetMenuStringW(menu, position, text, 700, MF_BYPOSITION);
        return text;
    }

    HMENU menu = CreatePopupMenu();
    const std::wstring path = L"&0 \\" + std::wstring(250, L'w') + L"\\notes.txt";
};

TEST(ShellShortening, LeavesStartAndEndOfAText) {
    EXPECT_EQ(Shortened(L"abcdefghijkl", 6), L"ab\u2026ijkl");
    EXPECT_EQ(Shortened(L"abcdefghijkl", 11), L"abc\u2026efghijkl");
}

TEST(ShellShortening, SplitsNoDoubledAmpersandAndNoPair) {
    EXPECT_EQ(Shortened(L"a&&bcdefghi&&jk", 6), L"a\u2026&&jk");
    EXPECT_EQ(Shortened(L"a&&bcdefghij&&k", 4), L"a\u2026&&k");
    EXPECT_EQ(Shortened(L"a&&bcdefghij&&k", 3), L"a\u2026k");
    EXPECT_EQ(Shortened(L"a\xD83D\xDE00"
                        L"cdefgh\xD83D\xDE00",
                        6),
              L"a\u2026gh\xD83D\xDE00");
    EXPECT_EQ(Shortened(L"abcdefgh\xD83D\xDE00z", 3), L"a\u2026z");
}

TEST_F(ShellMenuFit, LeavesWhatIsNarrowEnough) {
    Append(1, L"&0 \\folder\\notes and more notes.txt");
    shell::FitMenu(menu, 480);
    EXPECT_EQ(Text(0), L"&0 \\folder\\notes and more notes.txt");
}

TEST_F(ShellMenuFit, ShortensWhatIsTooWideAndKeepsItsEnd) {
    Append(1, path);
    shell::FitMenu(menu, 480);

    const std::wstring shown = Text(0);
    EXPECT_LT(shown.size(), 100u);
    EXPECT_EQ(shown.substr(0, 6), L"&0 \\ww");
    EXPECT_EQ(shown.substr(shown.size() - 12), L"ww\\notes.txt");
    EXPECT_NE(shown.find(L'\u2026'), std::wstring::npos);
}

TEST_F(ShellMenuFit, ANarrowerScreenShowsLess) {
    Append(1, path);
    shell::FitMenu(menu, 480);
    const size_t wide = Text(0).size();
    shell::UnfitMenu(menu);
    shell::FitMenu(menu, 240);

    EXPECT_LT(Text(0).size(), wide);
    EXPECT_GE(Text(0).size(), 9u);
}

TEST_F(ShellMenuFit, GivesTheWholeTextsBack) {
    Append(1, L"one");
    Append(2, path);
    AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    Append(3, path + L"2");
    shell::FitMenu(menu, 480);
    shell::UnfitMenu(CreatePopupMenu());
    EXPECT_NE(Text(1), path);

    shell::UnfitMenu(menu);

    EXPECT_EQ(Text(0), L"one");
    EXPECT_EQ(Text(1), path);
    EXPECT_EQ(Text(3), path + L"2");
}

TEST_F(ShellMenuFit, KeepsMarkAndState) {
    AppendMenuW(menu, MF_STRING | MF_GRAYED | MF_CHECKED, 1, path.c_str());
    shell::FitMenu(menu, 480);
    shell::UnfitMenu(menu);
    EXPECT_EQ(GetMenuState(menu, 0, MF_BYPOSITION) & (MF_GRAYED | MF_CHECKED), UINT{MF_GRAYED | MF_CHECKED});
}

TEST_F(ShellMenuFit, LeavesWhatWasChangedMeanwhile) {
    Append(1, path);
    Append(2, path);
    shell::FitMenu(menu, 480);
    DeleteMenu(menu, 0, MF_BYPOSITION);
    ModifyMenuW(menu, 0, MF_BYPOSITION | MF_STRING, 3, L"new");
    shell::UnfitMenu(menu);
    EXPECT_EQ(Text(0), L"new");
    EXPECT_EQ(GetMenuItemCount(menu), 1);
}

TEST_F(ShellMenuFit, LeavesTextsWithAColumnOfKeys) {
    const std::wstring text = std::wstring(300, L'w') + L"\tCtrl+X";
    Append(1, text);
    shell::FitMenu(menu, 480);
    EXPECT_EQ(Text(0), text);
}

}  // namespace
