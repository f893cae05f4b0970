// Menu bars as their owner sees them.
#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "shell/density.h"
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

// A drop-down, a separator, two image buttons (one disabled), a text button.
const short kButtons[] = {
    -1, 5,                     //
    3,  100, 4, 24, 0, 0, -1,  //
    0,  0,   4, 1,  0, 0, -1,  //
    2,  101, 4, 16, 0, 0, -1,  //
    14, 102, 0, 16, 0, 0, -1,  //
    -2, 103, 4, 16, 0, 0, -1,
};

class ShellBar : public testing::Test {
  protected:
    void SetUp() override {
        shell_test::Forget();
        owner = MakeWindow(WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 480, 400);
        ASSERT_NE(owner, nullptr);
    }

    void TearDown() override {
        shell_test::onMessage = nullptr;
        if (IsWindow(owner)) {
            DestroyWindow(owner);
        }
        RunPosted();
        shell_test::Forget();
    }

    HWND MakeBar() {
        return shell::CreateBarFromMemory(owner, GetModuleHandleW(nullptr), kButtons, sizeof(kButtons));
    }

    RECT Client() const {
        RECT rect;
        GetClientRect(owner, &rect);
        return rect;
    }

    // The bar's rectangle in the owner's client area.
    RECT Place(HWND bar) const {
        RECT rect;
        GetWindowRect(bar, &rect);
        MapWindowPoints(nullptr, owner, reinterpret_cast<POINT*>(&rect), 2);
        return rect;
    }

    HWND owner = nullptr;
};

TBBUTTONINFOW ButtonInfo(HWND bar, int command) {
    TBBUTTONINFOW info = {};
    info.cbSize = sizeof(info);
    info.dwMask = TBIF_IMAGE | TBIF_STATE | TBIF_STYLE | TBIF_SIZE;
    EXPECT_GE(
        SendMessageW(bar, TB_GETBUTTONINFOW, static_cast<WPARAM>(command), reinterpret_cast<LPARAM>(&info)),
        0);
    return info;
}

TEST_F(ShellBar, LiesAlongTheBottomEdgeOfItsOwner) {
    const HWND bar = MakeBar();
    ASSERT_NE(bar, nullptr);

    const RECT client = Client();
    const RECT place = Place(bar);
    EXPECT_EQ(place.left, 0);
    EXPECT_EQ(place.right, client.right);
    EXPECT_EQ(place.bottom, client.bottom);
    EXPECT_GT(shell::MenuBarHeight(bar), 16);
    EXPECT_EQ(place.bottom - place.top, shell::MenuBarHeight(bar));
    EXPECT_EQ(shell::ContentRect(owner).bottom, place.top);
    EXPECT_EQ(shell::VisibleBar(owner), bar);
}

TEST_F(ShellBar, HasButtonsThatAFingerHits) {
    const HWND bar = MakeBar();
    const int finger = shell::ScaledToScreen(24);
    for (const int images : {0, 13}) {
        if (images != 0) shell::AddBarBitmap(bar, GetModuleHandleW(nullptr), 6002, images);
        for (const int command : {100, 101, 103}) {
            RECT button = {};
            SendMessageW(bar, TB_GETRECT, static_cast<WPARAM>(command), reinterpret_cast<LPARAM>(&button));
            EXPECT_GE(button.bottom - button.top, finger) << command;
            // The others have neither image nor text.
            if (command == 101 && images != 0) {
                EXPECT_GE(button.right - button.left, finger);
            }
        }
    }
}

TEST_F(ShellBar, FollowsTheOwnersSizeAndTakesItsHeightFromTheContent) {
    const HWND bar = MakeBar();
    received.clear();

    SetWindowPos(owner, nullptr, 0, 0, 380, 300, SWP_NOMOVE | SWP_NOZORDER);

    const RECT client = Client();
    EXPECT_EQ(Place(bar).bottom, client.bottom);
    EXPECT_EQ(Place(bar).right, client.right);
    const auto sizes = ReceivedOf(WM_SIZE);
    ASSERT_FALSE(sizes.empty());
    EXPECT_EQ(LOWORD(sizes.back().lParam), client.right);
    EXPECT_EQ(HIWORD(sizes.back().lParam), client.bottom - shell::MenuBarHeight(bar));
}

TEST_F(ShellBar, LeavesAContentOfNoHeightInAWindowLowerThanTheBar) {
    MakeBar();
    received.clear();

    SendMessageW(owner, WM_SIZE, SIZE_RESTORED, MAKELPARAM(300, 5));

    ASSERT_EQ(ReceivedOf(WM_SIZE).size(), 1u);
    EXPECT_EQ(HIWORD(ReceivedOf(WM_SIZE)[0].lParam), 0);
}

TEST_F(ShellBar, TellsTheContentNothingOfBeingMinimised) {
    MakeBar();
    received.clear();

    SendMessageW(owner, WM_SIZE, SIZE_MINIMIZED, 0);

    EXPECT_TRUE(ReceivedOf(WM_SIZE).empty());
}

TEST_F(ShellBar, BreaksIntoRowsInANarrowWindowAndLosesNoButton) {
    const HWND bar = MakeBar();
    shell::AddBarBitmap(bar, HINST_COMMCTRL, IDB_STD_SMALL_COLOR, 15);
    const int oneRow = shell::MenuBarHeight(bar);
    RECT last;
    SendMessageW(bar, TB_GETRECT, 103, reinterpret_cast<LPARAM>(&last));

    const int narrow = last.right / 2 + 8;
    SendMessageW(owner, WM_SIZE, SIZE_RESTORED, MAKELPARAM(narrow, 300));

    RECT window;
    GetWindowRect(bar, &window);
    EXPECT_EQ(window.right - window.left, narrow);
    EXPECT_GT(window.bottom - window.top, oneRow);
    for (const WPARAM command : {100, 101, 102, 103}) {
        RECT button;
        SendMessageW(bar, TB_GETRECT, command, reinterpret_cast<LPARAM>(&button));
        EXPECT_LE(button.right, narrow) << command;
        EXPECT_LE(button.bottom, window.bottom - window.top) << command;
    }

    SendMessageW(owner, WM_SIZE, SIZE_RESTORED, MAKELPARAM(480, 300));
    GetWindowRect(bar, &window);
    EXPECT_EQ(window.bottom - window.top, oneRow);
}

TEST_F(ShellBar, CoversAnEarlierOneUntilItIsDestroyed) {
    ShowWindow(owner, SW_SHOWNOACTIVATE);
    const HWND lower = MakeBar();
    const HWND upper = MakeBar();

    EXPECT_TRUE(IsWindowVisible(upper));
    EXPECT_FALSE(IsWindowVisible(lower));
    EXPECT_EQ(Place(upper).bottom, Client().bottom);

    SetWindowPos(owner, nullptr, 0, 0, 400, 300, SWP_NOMOVE | SWP_NOZORDER);
    DestroyWindow(upper);

    EXPECT_TRUE(IsWindowVisible(lower));
    EXPECT_EQ(Place(lower).bottom, Client().bottom);
    EXPECT_EQ(Place(lower).right, Client().right);
}

TEST_F(ShellBar, ComesBackWhenTheOneBetweenWasDestroyedFirst) {
    ShowWindow(owner, SW_SHOWNOACTIVATE);
    const HWND lowest = MakeBar();
    const HWND middle = MakeBar();
    const HWND upper = MakeBar();

    DestroyWindow(middle);
    EXPECT_TRUE(IsWindowVisible(upper));
    EXPECT_FALSE(IsWindowVisible(lowest));
    DestroyWindow(upper);
    EXPECT_TRUE(IsWindowVisible(lowest));
}

TEST_F(ShellBar, GivesItsRoomBackToAVisibleOwner) {
    ShowWindow(owner, SW_SHOWNOACTIVATE);
    const HWND bar = MakeBar();
    ASSERT_LT(HIWORD(ReceivedOf(WM_SIZE).back().lParam), Client().bottom);

    DestroyWindow(bar);

    EXPECT_EQ(HIWORD(ReceivedOf(WM_SIZE).back().lParam), Client().bottom);
    EXPECT_EQ(shell::ContentRect(owner).bottom, Client().bottom);
    EXPECT_EQ(shell::VisibleBar(owner), nullptr);
}

TEST_F(ShellBar, CallsAnOwnerThatIsBeingDestroyedNoMore) {
    // A window inside another is not hidden before it is destroyed with it.
    ShowWindow(owner, SW_SHOWNOACTIVATE);
    const HWND inner = MakeWindow(WS_CHILD | WS_VISIBLE, 300, 200, owner);
    shell::CreateBarFromMemory(inner, GetModuleHandleW(nullptr), kButtons, sizeof(kButtons));
    HWND destroyed = nullptr;
    int sizesAfter = 0;
    shell_test::onMessage = [&](HWND window, const shell_test::Received& one) {
        if (window == inner && one.message == WM_DESTROY) {
            destroyed = window;
        }
        sizesAfter += destroyed && one.message == WM_SIZE ? 1 : 0;
    };

    DestroyWindow(owner);

    EXPECT_EQ(destroyed, inner);
    EXPECT_EQ(sizesAfter, 0);
}

TEST_F(ShellBar, EnablesAndPressesButtonsByCommand) {
    const HWND bar = MakeBar();
    EXPECT_TRUE(ButtonInfo(bar, 101).fsState & TBSTATE_ENABLED);
    EXPECT_FALSE(ButtonInfo(bar, 102).fsState & TBSTATE_ENABLED);

    SendMessageW(bar, TB_ENABLEBUTTON, 101, 0);
    SendMessageW(bar, TB_ENABLEBUTTON, 102, 1);
    SendMessageW(bar, TB_PRESSBUTTON, 102, 1);

    EXPECT_FALSE(ButtonInfo(bar, 101).fsState & TBSTATE_ENABLED);
    EXPECT_TRUE(ButtonInfo(bar, 102).fsState & TBSTATE_ENABLED);
    EXPECT_TRUE(ButtonInfo(bar, 102).fsState & TBSTATE_PRESSED);
}

TEST_F(ShellBar, CountsImagesThroughAllBitmapsAdded) {
    const HWND bar = MakeBar();

    const int first = shell::AddBarBitmap(bar, GetModuleHandleW(nullptr), 6002, 13);
    EXPECT_EQ(first, 0);
    EXPECT_EQ(ButtonInfo(bar, 101).iImage, 2);
    EXPECT_EQ(ButtonInfo(bar, 102).iImage, I_IMAGENONE);

    const int second = shell::AddBarBitmap(bar, HINST_COMMCTRL, IDB_STD_SMALL_COLOR, 15);
    EXPECT_EQ(second, 13);
    EXPECT_EQ(ButtonInfo(bar, 101).iImage, 2);
    EXPECT_EQ(ButtonInfo(bar, 102).iImage, 14);
    EXPECT_EQ(ButtonInfo(bar, 100).iImage, I_IMAGENONE);
    EXPECT_GE(ButtonInfo(bar, 101).cx, 16);
}

TEST_F(ShellBar, CountsOnWhenTheSameImagesComeTwice) {
    const HWND bar = MakeBar();
    EXPECT_EQ(shell::AddBarBitmap(bar, HINST_COMMCTRL, IDB_STD_SMALL_COLOR, 13), 0);
    EXPECT_EQ(shell::AddBarBitmap(bar, HINST_COMMCTRL, IDB_STD_SMALL_COLOR, 15), 13);
    EXPECT_EQ(ButtonInfo(bar, 102).iImage, 14);
}

TEST_F(ShellBar, RefusesImagesForOtherWindows) {
    EXPECT_EQ(shell::AddBarBitmap(owner, HINST_COMMCTRL, 0, 15), -1);
}

TEST_F(ShellBar, KeepsThePopupsItIsGiven) {
    const HWND bar = MakeBar();
    const HMENU popup = CreatePopupMenu();
    EXPECT_EQ(SendMessageW(bar, shell::kGetSubMenu, 0, 100), 0);

    EXPECT_NE(SendMessageW(bar, shell::kSetSubMenu, 100, reinterpret_cast<LPARAM>(popup)), 0);
    EXPECT_EQ(reinterpret_cast<HMENU>(SendMessageW(bar, shell::kGetSubMenu, 0, 100)), popup);
    EXPECT_EQ(SendMessageW(bar, shell::kSetSubMenu, 101, reinterpret_cast<LPARAM>(popup)), 0);
    EXPECT_EQ(SendMessageW(bar, shell::kGetSubMenu, 0, 101), 0);

    DestroyWindow(bar);
    EXPECT_TRUE(IsMenu(popup));
    DestroyMenu(popup);
}

TEST_F(ShellBar, RefusesABrokenDescription) {
    const HINSTANCE instance = GetModuleHandleW(nullptr);
    for (size_t size = 0; size < sizeof(kButtons); ++size) {
        SetLastError(0);
        EXPECT_EQ(shell::CreateBarFromMemory(owner, instance, kButtons, size), nullptr) << size;
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_DATA)) << size;
    }
    const short negative[] = {-1, -1, 0, 0, 0, 0, 0, 0, 0};
    EXPECT_EQ(shell::CreateBarFromMemory(owner, instance, negative, sizeof(negative)), nullptr);
    const short noSuchMenu[] = {9999, 0};
    EXPECT_EQ(shell::CreateBarFromMemory(owner, instance, noSuchMenu, sizeof(noSuchMenu)), nullptr);
    EXPECT_EQ(shell::VisibleBar(owner), nullptr);
    EXPECT_EQ(GetWindow(owner, GW_CHILD), nullptr);
}

TEST_F(ShellBar, SendsTheCommandOfAClickAndMayBeDestroyedByIt) {
    ShowWindow(owner, SW_SHOWNOACTIVATE);
    const HWND bar = MakeBar();
    shell_test::onMessage = [bar](HWND, const shell_test::Received& one) {
        if (one.message == WM_COMMAND) {
            DestroyWindow(bar);
        }
    };
    RECT button;
    SendMessageW(bar, TB_GETRECT, 101, reinterpret_cast<LPARAM>(&button));
    const LPARAM point = MAKELPARAM(button.left + 4, button.top + 4);

    SendMessageW(bar, WM_LBUTTONDOWN, MK_LBUTTON, point);
    SendMessageW(bar, WM_LBUTTONUP, 0, point);
    // Not before the tool bar has finished with the click.
    EXPECT_TRUE(ReceivedOf(WM_COMMAND).empty());
    RunPosted();

    const auto commands = ReceivedOf(WM_COMMAND);
    ASSERT_EQ(commands.size(), 1u);
    EXPECT_EQ(LOWORD(commands[0].wParam), 101);
    EXPECT_EQ(HIWORD(commands[0].wParam), 0);
    EXPECT_FALSE(IsWindow(bar));
}

TEST_F(ShellBar, KeepsAPressedButtonPressedWhenAPressOnItIsTakenBack) {
    ShowWindow(owner, SW_SHOWNOACTIVATE);
    const HWND bar = MakeBar();
    SendMessageW(bar, TB_PRESSBUTTON, 101, 1);
    RECT button;
    SendMessageW(bar, TB_GETRECT, 101, reinterpret_cast<LPARAM>(&button));
    const LPARAM on = MAKELPARAM(button.left + 4, button.top + 4);
    const LPARAM beside = MAKELPARAM(button.right + 40, button.top + 4);

    SendMessageW(bar, WM_LBUTTONDOWN, MK_LBUTTON, on);
    SendMessageW(bar, WM_MOUSEMOVE, MK_LBUTTON, beside);
    SendMessageW(bar, WM_LBUTTONUP, 0, beside);
    RunPosted();
    EXPECT_TRUE(ReceivedOf(WM_COMMAND).empty());
    EXPECT_TRUE(ButtonInfo(bar, 101).fsState & TBSTATE_PRESSED);

    // Another window took the mouse in the middle of a press.
    SendMessageW(bar, WM_LBUTTONDOWN, MK_LBUTTON, on);
    ReleaseCapture();
    EXPECT_TRUE(ButtonInfo(bar, 101).fsState & TBSTATE_PRESSED);

    SendMessageW(bar, WM_LBUTTONDOWN, MK_LBUTTON, on);
    SendMessageW(bar, WM_LBUTTONUP, 0, on);
    RunPosted();
    EXPECT_EQ(ReceivedOf(WM_COMMAND).size(), 1u);
    SendMessageW(bar, TB_PRESSBUTTON, 101, 0);
    EXPECT_FALSE(ButtonInfo(bar, 101).fsState & TBSTATE_PRESSED);
}

TEST_F(ShellBar, NamesTheDropDownThatOpensAndPassesTheMenusMessagesOn) {
    ShowWindow(owner, SW_SHOW);
    const HWND bar = MakeBar();
    const TestPopup popup;
    SendMessageW(bar, shell::kSetSubMenu, 100, reinterpret_cast<LPARAM>(popup.menu));
    received.clear();

    PressInMenu(bar, {VK_DOWN, VK_DOWN, VK_RETURN});
    EXPECT_TRUE(shell::OpenDropDown(bar, 100));
    RunPosted();

    const auto opened = ReceivedOf(WM_INITMENUPOPUP);
    ASSERT_EQ(opened.size(), 1u);
    EXPECT_EQ(reinterpret_cast<HMENU>(opened[0].wParam), popup.menu);
    EXPECT_EQ(LOWORD(opened[0].lParam), 100);
    const auto commands = ReceivedOf(WM_COMMAND);
    ASSERT_EQ(commands.size(), 1u);
    EXPECT_EQ(LOWORD(commands[0].wParam), 202);
    EXPECT_FALSE(ReceivedOf(WM_MENUSELECT).empty());
    EXPECT_EQ(ReceivedOf(WM_ENTERMENULOOP).size(), 1u);
    EXPECT_EQ(ReceivedOf(WM_EXITMENULOOP).size(), 1u);
    EXPECT_EQ(ReceivedOf(WM_UNINITMENUPOPUP).size(), 1u);
}

TEST_F(ShellBar, LeavesAPopupInsideItsPosition) {
    ShowWindow(owner, SW_SHOW);
    const HWND bar = MakeBar();
    const TestPopup popup;
    SendMessageW(bar, shell::kSetSubMenu, 100, reinterpret_cast<LPARAM>(popup.menu));
    received.clear();

    PressInMenu(bar, {VK_UP, VK_RIGHT, VK_RETURN});
    EXPECT_TRUE(shell::OpenDropDown(bar, 100));
    RunPosted();

    const auto opened = ReceivedOf(WM_INITMENUPOPUP);
    ASSERT_EQ(opened.size(), 2u);
    EXPECT_EQ(reinterpret_cast<HMENU>(opened[1].wParam), popup.nested);
    EXPECT_EQ(LOWORD(opened[1].lParam), 2);
    ASSERT_EQ(ReceivedOf(WM_COMMAND).size(), 1u);
    EXPECT_EQ(LOWORD(ReceivedOf(WM_COMMAND)[0].wParam), 210);
}

TEST_F(ShellBar, OpensADropDownAboveItsButtonWhenItIsTapped) {
    ShowWindow(owner, SW_SHOW);
    const HWND bar = MakeBar();
    const TestPopup popup;
    SendMessageW(bar, shell::kSetSubMenu, 100, reinterpret_cast<LPARAM>(popup.menu));
    RECT menuPlace = {};
    shell_test::onMessage = [&](HWND, const shell_test::Received& one) {
        if (one.message == WM_MENUSELECT && menuPlace.bottom == 0) {
            GetWindowRect(FindWindowW(L"#32768", nullptr), &menuPlace);
        }
    };
    received.clear();

    PressInMenu(bar, {VK_DOWN, VK_ESCAPE});
    SendMessageW(bar, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(6, 6));
    SendMessageW(bar, WM_LBUTTONUP, 0, MAKELPARAM(6, 6));
    RunPosted();

    ASSERT_EQ(ReceivedOf(WM_INITMENUPOPUP).size(), 1u);
    EXPECT_EQ(LOWORD(ReceivedOf(WM_INITMENUPOPUP)[0].lParam), 100);
    EXPECT_TRUE(ReceivedOf(WM_COMMAND).empty());
    RECT barPlace;
    GetWindowRect(bar, &barPlace);
    ASSERT_GT(menuPlace.bottom, menuPlace.top);
    EXPECT_LE(menuPlace.bottom, barPlace.top + 4);
}

TEST_F(ShellBar, OpensNothingWithoutAPopup) {
    ShowWindow(owner, SW_SHOWNOACTIVATE);
    const HWND bar = MakeBar();
    EXPECT_FALSE(shell::OpenDropDown(bar, 100));
    EXPECT_FALSE(shell::OpenDropDown(bar, 101));
    EXPECT_FALSE(shell::OpenDropDown(owner, 100));

    const HMENU popup = CreatePopupMenu();
    SendMessageW(bar, shell::kSetSubMenu, 100, reinterpret_cast<LPARAM>(popup));
    DestroyMenu(popup);
    EXPECT_FALSE(shell::OpenDropDown(bar, 100));
}

// ---- Bars from resources ----

shell::MenuBarInfo InfoFor(HWND owner, UINT resource) {
    shell::MenuBarInfo info = {};
    info.size = shell::kMenuBarInfoSize;
    info.owner = owner;
    info.resourceId = resource;
    info.instance = GetModuleHandleW(nullptr);
    return info;
}

std::wstring ButtonText(HWND bar, int command) {
    wchar_t text[200] = {};
    const LRESULT length =
        SendMessageW(bar, TB_GETBUTTONTEXTW, static_cast<WPARAM>(command), reinterpret_cast<LPARAM>(text));
    return length > 0 ? text : L"";
}

TEST_F(ShellBar, IsBuiltFromAResourceWithItsMenuLabelsAndTooltips) {
    shell::MenuBarInfo info = InfoFor(owner, 3002);
    ASSERT_TRUE(shell::SHCreateMenuBar(&info));
    const HWND bar = info.bar;

    EXPECT_EQ(SendMessageW(bar, TB_BUTTONCOUNT, 0, 0), 11);
    EXPECT_EQ(ButtonText(bar, 1014), L"File");
    EXPECT_TRUE(ButtonInfo(bar, 1014).fsStyle & BTNS_SHOWTEXT);
    EXPECT_EQ(ButtonText(bar, 7003), L"Save");
    EXPECT_FALSE(ButtonInfo(bar, 7003).fsStyle & BTNS_SHOWTEXT);
    const HMENU buffers = reinterpret_cast<HMENU>(SendMessageW(bar, shell::kGetSubMenu, 0, 1022));
    EXPECT_EQ(GetMenuItemID(buffers, 0), 7021u);
    const HMENU navigate = reinterpret_cast<HMENU>(SendMessageW(bar, shell::kGetSubMenu, 0, 1062));
    EXPECT_EQ(GetMenuItemID(navigate, 0), 7024u);

    DestroyWindow(bar);
    EXPECT_FALSE(IsMenu(buffers));
}

TEST_F(ShellBar, ShowsTheTextOfAnImageButtonAsTooltip) {
    shell::MenuBarInfo info = InfoFor(owner, 3002);
    ASSERT_TRUE(shell::SHCreateMenuBar(&info));
    const HWND tips = reinterpret_cast<HWND>(SendMessageW(info.bar, TB_GETTOOLTIPS, 0, 0));
    ASSERT_NE(tips, nullptr);

    for (const auto& [command, expected] : {std::pair{7003, L"Save"}, {7006, L"Cut"}, {1014, L""}}) {
        wchar_t text[200] = {};
        TOOLINFOW tool = {};
        tool.cbSize = sizeof(tool);
        tool.hwnd = info.bar;
        tool.uId = static_cast<UINT_PTR>(command);
        tool.lpszText = text;
        SendMessageW(tips, TTM_GETTEXTW, 200, reinterpret_cast<LPARAM>(&tool));
        EXPECT_STREQ(text, expected) << command;
    }
}

TEST_F(ShellBar, ReportsAResourceThatIsMissing) {
    shell::MenuBarInfo info = InfoFor(owner, 9999);
    info.bar = owner;
    EXPECT_FALSE(shell::SHCreateMenuBar(&info));
    EXPECT_NE(GetLastError(), 0u);
    EXPECT_EQ(info.bar, nullptr);
}

TEST_F(ShellBar, RefusesARecordOfAnotherSize) {
    shell::MenuBarInfo info = InfoFor(owner, 3002);
    info.size = sizeof(info) + 1;
    EXPECT_FALSE(shell::SHCreateMenuBar(&info));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    EXPECT_FALSE(shell::SHCreateMenuBar(nullptr));
}

}  // namespace
