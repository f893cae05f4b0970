// The arrow keys from drop-down to drop-down of a bar.
#include <gtest/gtest.h>
#include <windows.h>

#include <commctrl.h>

#include <vector>

#include "shell/menu_bar.h"
#include "shell_test_menu.h"
#include "shell_test_window.h"

namespace {

using shell_test::MakeWindow;
using shell_test::PressInMenu;
using shell_test::received;
using shell_test::ReceivedOf;
using shell_test::RunPosted;
using shell_test::TestPopup;

// Three drop-downs between other buttons; the second has no pop-up, and each other one a TestPopup.
const short kThreeDropDowns[] = {
    -1, 5,                     //
    -2, 110, 4, 24, 0, 0, -1,  //
    -2, 111, 4, 16, 0, 0, -1,  //
    -2, 112, 4, 24, 0, 0, -1,  //
    -2, 113, 4, 24, 0, 0, -1,  //
    -2, 114, 4, 24, 0, 0, -1,
};

class ShellBarArrows : public testing::Test {
  protected:
    void SetUp() override {
        shell_test::Forget();
        owner = MakeWindow(WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 480, 400);
        ShowWindow(owner, SW_SHOW);
        bar = shell::CreateBarFromMemory(owner, GetModuleHandleW(nullptr), kThreeDropDowns,
                                         sizeof(kThreeDropDowns));
        SendMessageW(bar, shell::kSetSubMenu, 110, reinterpret_cast<LPARAM>(first.menu));
        SendMessageW(bar, shell::kSetSubMenu, 113, reinterpret_cast<LPARAM>(second.menu));
        SendMessageW(bar, shell::kSetSubMenu, 114, reinterpret_cast<LPARAM>(third.menu));
        received.clear();
    }

    void TearDown() override {
        shell_test::onMessage = nullptr;
        DestroyWindow(owner);
        RunPosted();
        shell_test::Forget();
    }

    // Opens a drop-down, presses the keys in it, and tells in which order pop-ups opened: the commands of
    // drop-downs, the positions of nested ones.
    std::vector<int> Opened(UINT command, std::initializer_list<WPARAM> keys) {
        PressInMenu(bar, keys);
        EXPECT_TRUE(shell::OpenDropDown(bar, command));
        RunPosted();
        std::vector<int> order;
        for (const auto& one : ReceivedOf(WM_INITMENUPOPUP)) {
            order.push_back(LOWORD(one.lParam));
        }
        return order;
    }

    using Order = std::vector<int>;
    HWND owner = nullptr;
    HWND bar = nullptr;
    TestPopup first;
    TestPopup second;
    TestPopup third;
};

TEST_F(ShellBarArrows, GoOnToTheNextDropDownThatHasAPopup) {
    EXPECT_EQ(Opened(110, {VK_RIGHT, VK_DOWN, VK_RETURN}), (Order{110, 113}));
    ASSERT_EQ(ReceivedOf(WM_COMMAND).size(), 1u);
    EXPECT_EQ(LOWORD(ReceivedOf(WM_COMMAND)[0].wParam), 201);
    EXPECT_EQ(ReceivedOf(WM_UNINITMENUPOPUP).size(), 2u);
}

TEST_F(ShellBarArrows, GoBackToThePreviousOne) {
    EXPECT_EQ(Opened(114, {VK_DOWN, VK_LEFT, VK_LEFT, VK_ESCAPE}), (Order{114, 113, 110}));
    EXPECT_TRUE(ReceivedOf(WM_COMMAND).empty());
}

TEST_F(ShellBarArrows, GoAroundTheEndsOfTheBar) {
    EXPECT_EQ(Opened(110, {VK_LEFT, VK_RIGHT, VK_ESCAPE}), (Order{110, 114, 110}));
}

TEST_F(ShellBarArrows, OpenANestedPopupAndCloseItAgain) {
    EXPECT_EQ(Opened(113, {VK_UP, VK_RIGHT, VK_LEFT, VK_UP, VK_RETURN}), (Order{113, 2}));
    ASSERT_EQ(ReceivedOf(WM_COMMAND).size(), 1u);
    EXPECT_EQ(LOWORD(ReceivedOf(WM_COMMAND)[0].wParam), 202);
}

TEST_F(ShellBarArrows, GoOnFromInsideANestedPopup) {
    EXPECT_EQ(Opened(113, {VK_UP, VK_RIGHT, VK_RIGHT, VK_ESCAPE}), (Order{113, 2, 114}));
}

TEST_F(ShellBarArrows, DoNotOpenANestedPopupThatIsGrayed) {
    EnableMenuItem(second.menu, 2, MF_BYPOSITION | MF_GRAYED);
    EXPECT_EQ(Opened(113, {VK_UP, VK_RIGHT, VK_ESCAPE}), (Order{113, 114}));
}

TEST_F(ShellBarArrows, PassOverADropDownThatIsDisabled) {
    SendMessageW(bar, TB_ENABLEBUTTON, 113, FALSE);
    EXPECT_EQ(Opened(110, {VK_RIGHT, VK_ESCAPE}), (Order{110, 114}));
}

TEST_F(ShellBarArrows, OpenTheOnlyDropDownAgain) {
    SendMessageW(bar, shell::kSetSubMenu, 113, 0);
    SendMessageW(bar, shell::kSetSubMenu, 114, 0);
    EXPECT_EQ(Opened(110, {VK_RIGHT, VK_ESCAPE}), (Order{110, 110}));
}

TEST_F(ShellBarArrows, StopWhenTheBarDiesUnderTheMenu) {
    shell_test::onMessage = [this](HWND, const shell_test::Received& one) {
        if (one.message == WM_UNINITMENUPOPUP) {
            DestroyWindow(bar);
        }
    };
    EXPECT_EQ(Opened(110, {VK_RIGHT}), (Order{110}));
    EXPECT_FALSE(IsWindow(bar));
}

TEST_F(ShellBarArrows, LeaveTheButtonOfAClosedDropDownUnpressed) {
    std::vector<LRESULT> pressed;
    shell_test::onMessage = [&](HWND, const shell_test::Received& one) {
        if (one.message == WM_INITMENUPOPUP) {
            pressed.push_back(SendMessageW(bar, TB_ISBUTTONPRESSED, 110, 0));
            pressed.push_back(SendMessageW(bar, TB_ISBUTTONPRESSED, 113, 0));
        }
    };
    Opened(110, {VK_RIGHT, VK_ESCAPE});
    ASSERT_EQ(pressed.size(), 4u);
    EXPECT_TRUE(pressed[0] && !pressed[1]);
    EXPECT_TRUE(!pressed[2] && pressed[3]);
    EXPECT_FALSE(SendMessageW(bar, TB_ISBUTTONPRESSED, 113, 0));
}

}  // namespace
