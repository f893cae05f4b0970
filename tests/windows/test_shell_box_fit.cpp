// Message boxes on small screens.
#include "shell/box_fit.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>

#include "shell_test_window.h"

namespace {

const wchar_t* const kCaption = L"NIRA fit test";
std::function<void(HWND)> look;

// Waits for the box, looks at it and presses Cancel.
void CALLBACK Look(HWND, UINT, UINT_PTR timer, DWORD) {
    const HWND box = FindWindowW(L"#32770", kCaption);
    if (!box || !IsWindowVisible(box)) return;
    KillTimer(nullptr, timer);
    look(box);
    PostMessageW(box, WM_COMMAND, IDCANCEL, 0);
}

class ShellBoxFit : public testing::Test {
  protected:
    void SetUp() override {
        shell_test::Forget();
        owner_ = shell_test::MakeWindow(WS_OVERLAPPEDWINDOW | WS_VISIBLE, 300, 300);
    }
    void TearDown() override {
        DestroyWindow(owner_);
        shell_test::Forget();
    }
    void Show(const std::wstring& text, std::function<void(HWND)> steps) const {
        look = std::move(steps);
        SetTimer(nullptr, 0, 20, Look);
        EXPECT_EQ(shell::ShowBox(owner_, text.c_str(), kCaption, MB_YESNOCANCEL | MB_ICONQUESTION), IDCANCEL);
    }
    static RECT PlaceOf(HWND window) {
        RECT place = {};
        GetWindowRect(window, &place);
        return place;
    }
    static std::wstring TextOf(HWND box) {
        wchar_t text[600] = {};
        GetDlgItemTextW(box, 0xFFFF, text, 600);
        return text;
    }
    // Everything lies in the box, the buttons in a row below the text.
    static void ExpectInOrder(HWND box) {
        RECT client = {};
        GetClientRect(box, &client);
        MapWindowPoints(box, nullptr, reinterpret_cast<POINT*>(&client), 2);
        LONG end = client.left;
        const RECT text = PlaceOf(GetDlgItem(box, 0xFFFF));
        EXPECT_LE(text.right, client.right);
        for (const int id : {IDYES, IDNO, IDCANCEL}) {
            const RECT button = PlaceOf(GetDlgItem(box, id));
            EXPECT_GE(button.left, end) << id;
            EXPECT_GT(button.right - button.left, 40) << id;
            EXPECT_GE(button.top, text.bottom) << id;
            EXPECT_LE(button.bottom, client.bottom) << id;
            end = button.right;
        }
        EXPECT_LE(end, client.right);
    }
    // Of the widest line, in pixels.
    static LONG TextWidth(HWND box) {
        const HWND text = GetDlgItem(box, 0xFFFF);
        const HDC device = GetDC(text);
        const HGDIOBJ font =
            SelectObject(device, reinterpret_cast<HGDIOBJ>(SendMessageW(text, WM_GETFONT, 0, 0)));
        RECT area = {0, 0, PlaceOf(text).right - PlaceOf(text).left, 0};
        DrawTextW(device, TextOf(box).c_str(), -1, &area, DT_CALCRECT | DT_WORDBREAK | DT_EXPANDTABS);
        SelectObject(device, font);
        ReleaseDC(text, device);
        EXPECT_LE(area.bottom, PlaceOf(text).bottom - PlaceOf(text).top) << "no line is hidden";
        return area.right;
    }

    HWND owner_ = nullptr;
};

TEST_F(ShellBoxFit, LeavesABoxThatFits) {
    Show(L"Go on?", [](HWND box) {
        const RECT before = PlaceOf(box);
        shell::FitBox(box, {0, 0, before.right - before.left, 300});
        const RECT after = PlaceOf(box);
        EXPECT_TRUE(EqualRect(&before, &after));
    });
}

TEST_F(ShellBoxFit, NarrowsTheButtonsOnASmallScreen) {
    Show(L"Save changes to 'harbour.txt'?", [](HWND box) {
        shell::FitBox(box, {10, 20, 210, 340});
        const RECT place = PlaceOf(box);
        EXPECT_EQ(place.left, 10);
        EXPECT_EQ(place.right, 210);
        EXPECT_GT(place.top, 20);
        EXPECT_LT(place.bottom, 340);
        ExpectInOrder(box);
        EXPECT_EQ(TextOf(box), L"Save changes to 'harbour.txt'?");
        TextWidth(box);
    });
}

TEST_F(ShellBoxFit, BreaksAWordThatFillsALineByItself) {
    const std::wstring text = L"Save changes to '" + std::wstring(120, L'w') + L".txt' again?";
    Show(text, [&](HWND box) {
        RECT work = {};
        SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
        EXPECT_LE(PlaceOf(box).right - PlaceOf(box).left, work.right - work.left);
        ExpectInOrder(box);
        std::wstring shown = TextOf(box);
        EXPECT_NE(shown, text);
        EXPECT_LE(TextWidth(box),
                  PlaceOf(GetDlgItem(box, 0xFFFF)).right - PlaceOf(GetDlgItem(box, 0xFFFF)).left);
        shown.erase(std::remove(shown.begin(), shown.end(), L'\n'), shown.end());
        EXPECT_EQ(shown, text) << "nothing is lost";
    });
}

}  // namespace
