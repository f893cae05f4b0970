// The page of fonts and colours in the Options sheet.
#include <gtest/gtest.h>
#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "options_sheet_fixture.h"

namespace nira {
namespace {

using namespace options_sheet_test;

// ---- the font ----

TEST_F(OptionsSheet, AFontIsDescribedWhateverTheLengthOfItsName) {
    MemFree(nullptr, TheOptions().font);
    const std::u16string face(200, u'f');
    TheOptions().font = MemStrDup(nullptr, (face + u"\u100E").c_str());
    Run([&] { EXPECT_EQ(TextOf(Control(IDC_FORMAT_FONT)), std::wstring(200, L'f') + L", 14 pt"); });
}

std::vector<COLORREF> PixelsOf(HWND window) {
    UpdateWindow(window);
    RECT client = {};
    GetClientRect(window, &client);
    std::vector<COLORREF> pixels;
    const HDC device = GetDC(window);
    for (int y = 0; y < client.bottom; ++y) {
        for (int x = 0; x < client.right; ++x) pixels.push_back(GetPixel(device, x, y));
    }
    ReleaseDC(window, device);
    return pixels;
}

TEST_F(OptionsSheet, TheSizeOfAFontIsSeenHoweverLongItsName) {
    OwnerOf(240, 320);
    std::vector<COLORREF> seen[2];
    for (const char16_t size : {u'\u100E', u'\u1048'}) {
        MemFree(nullptr, TheOptions().font);
        TheOptions().font = MemStrDup(nullptr, (std::u16string(200, u'f') + size).c_str());
        Run([&] { seen[size == u'\u1048'] = PixelsOf(Control(IDC_FORMAT_FONT)); });
    }
    EXPECT_FALSE(seen[0].empty());
    EXPECT_NE(seen[0], seen[1]);
}

// ---- colours ----

std::function<void(HWND)> useChooser;

// Does that with the colour chooser once it is there.
void CALLBACK UseChooser(HWND, UINT, UINT_PTR timer, DWORD) {
    const HWND chooser = FindWindowW(L"#32770", L"Color");
    if (chooser == nullptr || !IsWindowVisible(chooser)) return;
    KillTimer(nullptr, timer);
    useChooser(chooser);
}

// The first of the chooser's custom colours, by its pixels.
COLORREF FirstCustomColor(HWND chooser) {
    constexpr int kCustomColors = 721;
    UpdateWindow(chooser);
    RECT cells = {};
    GetWindowRect(GetDlgItem(chooser, kCustomColors), &cells);
    MapWindowPoints(nullptr, chooser, reinterpret_cast<POINT*>(&cells), 2);
    const HDC device = GetDC(chooser);
    const COLORREF color = GetPixel(device, cells.left + (cells.right - cells.left) / 16,
                                    cells.top + (cells.bottom - cells.top) / 4);
    ReleaseDC(chooser, device);
    return color;
}

TEST_F(OptionsSheet, TheChooserBeginsWithTheColorOfItsButtonAndCancelKeepsIt) {
    TheOptions().selection.back = RGB(10, 20, 30);
    constexpr int kRed = 706;
    RECT screen = {};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &screen, 0);
    Run([&] {
        ShowColorSet(kColorsOfSelection);
        for (const WPARAM answer : {IDOK, IDCANCEL}) {
            bool used = false;
            useChooser = [&](HWND chooser) {
                used = true;
                const RECT place = PlaceOf(chooser);
                RECT both = {};
                UnionRect(&both, &screen, &place);
                EXPECT_TRUE(EqualRect(&both, &screen)) << "nothing of it is off the screen";
                if (answer == IDCANCEL) SetDlgItemTextW(chooser, kRed, L"77");
                PostMessageW(chooser, WM_COMMAND, answer, 0);
            };
            SetTimer(nullptr, 0, 10, UseChooser);
            Press(IDC_FORMAT_BACK);
            EXPECT_TRUE(used);
            EXPECT_EQ(*ShownColor(false), RGB(10, 20, 30));
        }
    });
}

TEST_F(OptionsSheet, CustomColorsAreBlackWheneverTheChooserOpens) {
    constexpr WPARAM kAddToCustomColors = 712;
    TheOptions().text.fore = RGB(250, 20, 30);
    COLORREF opened[2] = {1, 1};
    COLORREF added[2] = {1, 1};
    Run([&] {
        for (int i = 0; i < 2; ++i) {
            useChooser = [&, i](HWND chooser) {
                opened[i] = FirstCustomColor(chooser);
                SendMessageW(chooser, WM_COMMAND, kAddToCustomColors, 0);
                added[i] = FirstCustomColor(chooser);
                PostMessageW(chooser, WM_COMMAND, IDOK, 0);
            };
            SetTimer(nullptr, 0, 10, UseChooser);
            Press(IDC_FORMAT_FORE);
        }
    });
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(opened[i], RGB(0, 0, 0)) << i;
        EXPECT_NE(added[i], RGB(0, 0, 0)) << i;
    }
}

TEST_F(OptionsSheet, ColorButtonsShowTheColorsOfTheChosenSet) {
    TheOptions().text.fore = RGB(200, 0, 0);
    TheOptions().text.back = RGB(0, 200, 0);
    TheOptions().selection.fore = RGB(0, 0, 200);
    TheOptions().selection.back = RGB(200, 200, 0);
    const auto choose = [&](WPARAM set) {
        SendMessageW(Control(IDC_FORMAT_COLOR_SET), LB_SETCURSEL, set, 0);
        SendMessageW(Page(), WM_COMMAND, MAKEWPARAM(IDC_FORMAT_COLOR_SET, LBN_SELCHANGE), 0);
    };
    Run([&] {
        EXPECT_EQ(MiddleOf(Control(IDC_FORMAT_FORE)), RGB(200, 0, 0));
        EXPECT_EQ(MiddleOf(Control(IDC_FORMAT_BACK)), RGB(0, 200, 0));
        choose(1);
        EXPECT_EQ(MiddleOf(Control(IDC_FORMAT_FORE)), RGB(0, 0, 200));
        EXPECT_EQ(MiddleOf(Control(IDC_FORMAT_BACK)), RGB(200, 200, 0));
        choose(0);
        EXPECT_EQ(MiddleOf(Control(IDC_FORMAT_FORE)), RGB(200, 0, 0));
    });
}

TEST_F(OptionsSheet, ColorButtonsShareTheListsWidth) {
    Run([&] {
        const RECT list = PlaceOf(Control(IDC_FORMAT_COLOR_SET));
        const RECT fore = PlaceOf(Control(IDC_FORMAT_FORE));
        const RECT back = PlaceOf(Control(IDC_FORMAT_BACK));
        const LONG width = list.right - list.left;
        EXPECT_EQ(fore.left, list.left);
        EXPECT_EQ(fore.right - fore.left, width / 2 - 2);
        EXPECT_EQ(back.left, list.left + width / 2 + 2);
        EXPECT_EQ(back.right - back.left, width / 2 - 2);
        EXPECT_EQ(SendMessageW(Control(IDC_FORMAT_COLOR_SET), LB_GETCOUNT, 0, 0), 2);
        wchar_t text[50] = {};
        SendMessageW(Control(IDC_FORMAT_COLOR_SET), LB_GETTEXT, 1, reinterpret_cast<LPARAM>(text));
        EXPECT_STREQ(text, L"Text selection");
    });
}

}  // namespace
}  // namespace nira
