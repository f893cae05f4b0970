// Text window, full-screen dialogs and low memory.
#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>

#include <string>

#include "shell/full_screen.h"
#include "shell/low_memory.h"
#include "shell/menu_bar.h"
#include "shell/text_window.h"
#include "shell_test_window.h"

namespace {

using shell_test::received;
using shell_test::ReceivedOf;
using shell_test::RunPosted;

class ShellTextWindow : public testing::Test {
  protected:
    void SetUp() override {
        shell_test::Forget();
        parent = shell_test::MakeWindow(WS_OVERLAPPEDWINDOW, 300, 300);
        text = shell_test::MakeWindow(WS_CHILD | WS_VISIBLE, 200, 200, parent);
        ShowWindow(parent, SW_SHOW);
        ASSERT_TRUE(shell::AttachTextWindow(text));
        SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
        SetLines(3);
        received.clear();
    }

    void TearDown() override {
        SetLines(lines);
        DestroyWindow(parent);
        RunPosted();
        shell_test::Forget();
    }

    static void SetLines(UINT count) { SystemParametersInfoW(SPI_SETWHEELSCROLLLINES, count, nullptr, 0); }

    void Turn(UINT message, int delta) const {
        SendMessageW(text, message, MAKEWPARAM(0, static_cast<WORD>(delta)), 0);
    }

    // The scroll codes received, as text: u and d lines, U and D pages.
    static std::string Codes(UINT message) {
        std::string codes;
        for (const auto& one : ReceivedOf(message)) {
            codes += "udUD"[LOWORD(one.wParam) & 3];
        }
        return codes;
    }

    HWND parent = nullptr;
    HWND text = nullptr;
    UINT lines = 3;
};

TEST_F(ShellTextWindow, ScrollsTheSystemsNumberOfLinesForANotch) {
    Turn(WM_MOUSEWHEEL, WHEEL_DELTA);
    EXPECT_EQ(Codes(WM_VSCROLL), "uuu");
    received.clear();
    Turn(WM_MOUSEWHEEL, -2 * WHEEL_DELTA);
    EXPECT_EQ(Codes(WM_VSCROLL), "dddddd");
    EXPECT_TRUE(ReceivedOf(WM_MOUSEWHEEL).empty());
}

TEST_F(ShellTextWindow, AddsPartsOfANotchUp) {
    Turn(WM_MOUSEWHEEL, -30);
    EXPECT_EQ(Codes(WM_VSCROLL), "");
    Turn(WM_MOUSEWHEEL, -30);
    EXPECT_EQ(Codes(WM_VSCROLL), "d");
    Turn(WM_MOUSEWHEEL, -60);
    EXPECT_EQ(Codes(WM_VSCROLL), "ddd");
}

TEST_F(ShellTextWindow, ForgetsPartsOfANotchWhenTheWheelTurnsBack) {
    Turn(WM_MOUSEWHEEL, -30);
    Turn(WM_MOUSEWHEEL, 40);
    EXPECT_EQ(Codes(WM_VSCROLL), "u");
}

TEST_F(ShellTextWindow, ScrollsPagesWhereThePersonChoseThem) {
    SetLines(WHEEL_PAGESCROLL);
    Turn(WM_MOUSEWHEEL, WHEEL_DELTA);
    Turn(WM_MOUSEWHEEL, -WHEEL_DELTA);
    EXPECT_EQ(Codes(WM_VSCROLL), "UD");
}

TEST_F(ShellTextWindow, ScrollsNothingWhereThePersonChoseNothing) {
    SetLines(0);
    Turn(WM_MOUSEWHEEL, WHEEL_DELTA);
    EXPECT_EQ(Codes(WM_VSCROLL), "");
}

TEST_F(ShellTextWindow, ScrollsSidewaysByTheTiltedWheel) {
    Turn(WM_MOUSEHWHEEL, WHEEL_DELTA);
    const std::string right = Codes(WM_HSCROLL);
    EXPECT_GT(right.size(), 0u);
    EXPECT_EQ(right.find_first_not_of('d'), std::string::npos);
    EXPECT_TRUE(ReceivedOf(WM_VSCROLL).empty());
}

// A content of 100 lines of 20 pixels in a window that shows 10, scrolled by whole lines, and of 1000 pixels
// sideways, scrolled by 8.
class ShellPanning : public ShellTextWindow {
  protected:
    void SetUp() override {
        ShellTextWindow::SetUp();
        SetBar(SB_VERT, 99, 10);
        SetBar(SB_HORZ, 999, 200);
        shell_test::onMessage = [this](HWND window, const shell_test::Received& one) {
            const int sign = LOWORD(one.wParam) == SB_LINEUP ? -1 : 1;
            if (one.message == WM_VSCROLL) SetScrollPos(window, SB_VERT, Row() + sign, FALSE);
            if (one.message == WM_HSCROLL) SetScrollPos(window, SB_HORZ, Column() + 8 * sign, FALSE);
        };
        RECT client = {};
        SetWindowPos(text, nullptr, 0, 0, 200, 200, SWP_NOMOVE | SWP_NOZORDER);
        GetClientRect(text, &client);
        SetWindowPos(text, nullptr, 0, 0, 400 - client.right, 400 - client.bottom, SWP_NOMOVE | SWP_NOZORDER);
        GetClientRect(text, &client);
        ASSERT_EQ(client.right, 200);
        ASSERT_EQ(client.bottom, 200);
        received.clear();
    }

    void SetBar(int bar, int last, UINT page) const {
        SCROLLINFO info = {};
        info.cbSize = sizeof(info);
        info.fMask = SIF_RANGE | SIF_PAGE | SIF_DISABLENOSCROLL;
        info.nMax = last;
        info.nPage = page;
        SetScrollInfo(text, bar, &info, FALSE);
    }

    int Row() const { return GetScrollPos(text, SB_VERT); }
    int Column() const { return GetScrollPos(text, SB_HORZ); }
};

TEST_F(ShellPanning, TheTextFollowsTheFingerByLines) {
    shell::PanTextWindow(text, 0, -100);
    EXPECT_EQ(Row(), 5);
    EXPECT_EQ(Codes(WM_VSCROLL), "ddddd");
    shell::PanTextWindow(text, 0, 60);
    EXPECT_EQ(Row(), 2);
    EXPECT_EQ(Column(), 0);
}

TEST_F(ShellPanning, SmallMovesAddUp) {
    for (int i = 0; i < 19; ++i) shell::PanTextWindow(text, 0, -1);
    EXPECT_EQ(Row(), 0);
    shell::PanTextWindow(text, 0, -1);
    EXPECT_EQ(Row(), 1);
    for (int i = 0; i < 19; ++i) shell::PanTextWindow(text, 0, -1);
    EXPECT_EQ(Row(), 1);
    shell::PanTextWindow(text, 0, -1);
    EXPECT_EQ(Row(), 2);
}

TEST_F(ShellPanning, AFingerThatTremblesMovesNothingBack) {
    shell::PanTextWindow(text, 0, -20);
    EXPECT_EQ(Row(), 1);
    received.clear();
    for (int i = 0; i < 8; ++i) shell::PanTextWindow(text, 0, i % 2 == 0 ? 19 : -19);
    EXPECT_TRUE(ReceivedOf(WM_VSCROLL).empty());
}

TEST_F(ShellPanning, SidewaysGoesByTheStepsOfTheWindow) {
    shell::PanTextWindow(text, -40, 0);
    EXPECT_EQ(Column(), 40);
    shell::PanTextWindow(text, 16, 0);
    EXPECT_EQ(Column(), 24);
    EXPECT_EQ(Row(), 0);
}

TEST_F(ShellPanning, AtTheEndTheRestIsForgotten) {
    shell::PanTextWindow(text, 0, 5000);
    EXPECT_EQ(Codes(WM_VSCROLL), "u");
    shell::PanTextWindow(text, 0, -20);
    EXPECT_EQ(Row(), 1);
}

TEST_F(ShellPanning, AWindowWithoutPagesAndOneThatIsNoTextWindowSurviveIt) {
    SetBar(SB_VERT, 0, 0);
    shell::PanTextWindow(text, 0, -7);
    shell::PanTextWindow(parent, 10, 10);
    shell::PanTextWindow(nullptr, 10, 10);
    SendMessageW(text, WM_GESTURENOTIFY, 0, 0);
    SendMessageW(text, WM_GESTURE, GID_PAN, 0);
    EXPECT_EQ(Row(), 0);
}

TEST_F(ShellTextWindow, HoldsTheMouseDuringADrag) {
    SendMessageW(text, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 6));
    EXPECT_EQ(GetCapture(), text);
    SendMessageW(text, WM_LBUTTONUP, 0, MAKELPARAM(7, 8));
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_EQ(ReceivedOf(WM_LBUTTONUP).size(), 1u);
}

TEST_F(ShellTextWindow, EndsADragWhoseMouseIsTakenAway) {
    SendMessageW(text, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 6));
    SendMessageW(text, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(9, 10));

    SetCapture(parent);

    ASSERT_EQ(ReceivedOf(WM_LBUTTONUP).size(), 1u);
    EXPECT_EQ(ReceivedOf(WM_LBUTTONUP)[0].lParam, MAKELPARAM(9, 10));
    EXPECT_EQ(GetCapture(), parent);
    ReleaseCapture();
    EXPECT_EQ(ReceivedOf(WM_LBUTTONUP).size(), 1u);
}

TEST_F(ShellTextWindow, GetsNoStrayCharacters) {
    for (const WPARAM character : {1, 10, 27, 127}) {
        SendMessageW(text, WM_CHAR, character, 1);
    }
    EXPECT_TRUE(ReceivedOf(WM_CHAR).empty());
    for (const WPARAM character : {8, 9, 13, 120, 0xE4}) {
        SendMessageW(text, WM_CHAR, character, 1);
    }
    EXPECT_EQ(ReceivedOf(WM_CHAR).size(), 5u);
}

TEST_F(ShellTextWindow, ShowsTheTextPointerOverItsText) {
    EXPECT_EQ(
        SendMessageW(text, WM_SETCURSOR, reinterpret_cast<WPARAM>(text), MAKELPARAM(HTCLIENT, WM_MOUSEMOVE)),
        TRUE);
    EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, MAKEINTRESOURCEW(32513)));
    EXPECT_TRUE(ReceivedOf(WM_SETCURSOR).empty());
    SendMessageW(text, WM_SETCURSOR, reinterpret_cast<WPARAM>(text), MAKELPARAM(HTVSCROLL, WM_MOUSEMOVE));
    EXPECT_FALSE(ReceivedOf(WM_SETCURSOR).empty());
}

// ---- Dialogs ----

struct DialogSetup {
    UINT flags;
    bool barFirst;
    int ended;
};
DialogSetup* setup = nullptr;

const short kOkBar[] = {-1, 1, -2, IDOK, 4, 16, 0, 0, -1};

void MakeOkBar(HWND dialog) {
    shell::CreateBarFromMemory(dialog, GetModuleHandleW(nullptr), kOkBar, sizeof(kOkBar));
}

INT_PTR CALLBACK TestDialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM) {
    if (message == WM_INITDIALOG) {
        EXPECT_TRUE(shell::SHInitDialog(dialog, setup->flags));
        if (setup->barFirst) {
            MakeOkBar(dialog);
        }
        return TRUE;
    }
    if (message == WM_COMMAND) {
        setup->ended = LOWORD(wParam);
        return TRUE;
    }
    return FALSE;
}

class ShellDialog : public testing::Test {
  protected:
    void SetUp() override {
        shell_test::Forget();
        owner = shell_test::MakeWindow(WS_OVERLAPPEDWINDOW, 300, 250);
        ShowWindow(owner, SW_SHOW);
    }

    void TearDown() override {
        if (IsWindow(dialog)) {
            DestroyWindow(dialog);
        }
        DestroyWindow(owner);
        RunPosted();
        shell_test::Forget();
    }

    // A dialog without controls.
    HWND Make(UINT flags, bool withBar) {
        struct alignas(4) {
            DLGTEMPLATE head;
            WORD menu, windowClass, title;
        } dialogTemplate = {};
        dialogTemplate.head.style = WS_POPUP | WS_CAPTION | WS_VISIBLE;
        dialogTemplate.head.cx = 50;
        dialogTemplate.head.cy = 40;
        state = {flags, withBar, 0};
        setup = &state;
        dialog = CreateDialogIndirectParamW(GetModuleHandleW(nullptr), &dialogTemplate.head, owner,
                                            TestDialogProc, 0);
        RunPosted();
        return dialog;
    }

    HWND owner = nullptr;
    HWND dialog = nullptr;
    DialogSetup state = {};
};

TEST_F(ShellDialog, CoversItsOwner) {
    ASSERT_NE(Make(shell::kSizeFullScreen, false), nullptr);
    RECT expected;
    GetWindowRect(owner, &expected);
    RECT actual;
    GetWindowRect(dialog, &actual);
    EXPECT_TRUE(EqualRect(&expected, &actual));
    EXPECT_EQ(shell::VisibleBar(dialog), nullptr);
}

TEST_F(ShellDialog, FollowsItsOwner) {
    ASSERT_NE(Make(shell::kSizeFullScreen, false), nullptr);
    SetWindowPos(owner, nullptr, 20, 30, 240, 320, SWP_NOZORDER | SWP_NOACTIVATE);
    RECT actual;
    GetWindowRect(dialog, &actual);
    const RECT expected = {20, 30, 260, 350};
    EXPECT_TRUE(EqualRect(&expected, &actual));
}

TEST_F(ShellDialog, StaysWhereItWasMovedToWhileItsOwnerStays) {
    ASSERT_NE(Make(shell::kSizeFullScreen, false), nullptr);
    RECT expected;
    GetWindowRect(dialog, &expected);
    OffsetRect(&expected, 15, 10);
    SetWindowPos(dialog, nullptr, expected.left, expected.top, 0, 0, SWP_NOZORDER | SWP_NOSIZE);
    // As when the owner comes to the front.
    WINDOWPOS raised = {owner, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE};
    SendMessageW(owner, WM_WINDOWPOSCHANGED, 0, reinterpret_cast<LPARAM>(&raised));
    RECT actual;
    GetWindowRect(dialog, &actual);
    EXPECT_TRUE(EqualRect(&expected, &actual));
}

TEST_F(ShellDialog, TwoDialogsFollowTheSameOwnerUntilTheyEnd) {
    const HWND first = Make(shell::kSizeFullScreen, false);
    ASSERT_NE(first, nullptr);
    ASSERT_NE(Make(shell::kSizeFullScreen, false), nullptr);
    DestroyWindow(first);
    SetWindowPos(owner, nullptr, 20, 30, 200, 220, SWP_NOZORDER | SWP_NOACTIVATE);
    RECT actual;
    GetWindowRect(dialog, &actual);
    const RECT expected = {20, 30, 220, 250};
    EXPECT_TRUE(EqualRect(&expected, &actual));
    DestroyWindow(dialog);
    SetWindowPos(owner, nullptr, 0, 0, 240, 320, SWP_NOZORDER | SWP_NOACTIVATE);
    EXPECT_TRUE(IsWindow(owner));
}

TEST_F(ShellDialog, KeepsItsSizeWithoutTheFlag) {
    ASSERT_NE(Make(shell::kInputPanelDown, false), nullptr);
    RECT ownerPlace;
    GetWindowRect(owner, &ownerPlace);
    RECT actual;
    GetWindowRect(dialog, &actual);
    EXPECT_LT(actual.right - actual.left, ownerPlace.right - ownerPlace.left);
}

TEST_F(ShellDialog, GetsADoneButtonThatConfirms) {
    ASSERT_NE(Make(shell::kDoneButton | shell::kSizeFullScreen, false), nullptr);
    const HWND bar = shell::VisibleBar(dialog);
    ASSERT_NE(bar, nullptr);
    wchar_t label[20] = {};
    SendMessageW(bar, TB_GETBUTTONTEXTW, IDOK, reinterpret_cast<LPARAM>(label));
    EXPECT_STREQ(label, L"OK");
    RECT button;
    SendMessageW(bar, TB_GETRECT, IDOK, reinterpret_cast<LPARAM>(&button));
    EXPECT_GT(button.right - button.left, 16);
    const LPARAM point = MAKELPARAM(button.left + 3, button.top + 3);

    SendMessageW(bar, WM_LBUTTONDOWN, MK_LBUTTON, point);
    SendMessageW(bar, WM_LBUTTONUP, 0, point);
    RunPosted();

    EXPECT_EQ(state.ended, IDOK);
}

TEST_F(ShellDialog, GetsNoSecondDoneButton) {
    ASSERT_NE(Make(shell::kDoneButton, true), nullptr);
    const HWND bar = shell::VisibleBar(dialog);
    ASSERT_NE(bar, nullptr);
    DestroyWindow(bar);
    EXPECT_EQ(shell::VisibleBar(dialog), nullptr);
}

TEST(ShellDialogCall, RefusesWhatIsNoWindow) {
    EXPECT_FALSE(shell::SHInitDialog(nullptr, 13));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_WINDOW_HANDLE));
}

// ---- Low memory ----

TEST(ShellLowMemory, RecordsTheRequestAndClosesNothing) {
    EXPECT_TRUE(shell::SHCloseApps(12345));
    EXPECT_EQ(shell::LastCloseAppsRequest(), 12345u);
    EXPECT_TRUE(shell::SHCloseApps(0xFFFFFFF0));
    EXPECT_EQ(shell::LastCloseAppsRequest(), 0xFFFFFFF0u);
}

HWND boxOwner = nullptr;
UINT boxFlags = 0;

int RecordBox(HWND owner, UINT flags) {
    boxOwner = owner;
    boxFlags = flags;
    return 77;
}

TEST(ShellLowMemory, ShowsTheReplacementBoxInsteadOfItsOwn) {
    const HWND owner = GetDesktopWindow();
    EXPECT_EQ(shell::SetOutOfMemoryBox(RecordBox), nullptr);
    EXPECT_EQ(shell::SHShowOutOfMemory(owner, 5), 77);
    EXPECT_EQ(boxOwner, owner);
    EXPECT_EQ(boxFlags, 5u);
    EXPECT_EQ(shell::SetOutOfMemoryBox(nullptr), RecordBox);
}

// Confirms the box as soon as it is shown.
void CALLBACK ConfirmBox(HWND, UINT, UINT_PTR timer, DWORD) {
    const HWND box = FindWindowW(L"#32770", L"Out of memory");
    if (box) {
        KillTimer(nullptr, timer);
        PostMessageW(box, WM_COMMAND, IDOK, 0);
    }
}

TEST(ShellLowMemory, TellsThePersonInABox) {
    SetTimer(nullptr, 0, 20, ConfirmBox);
    EXPECT_EQ(shell::SHShowOutOfMemory(nullptr, 0), IDOK);
}

}  // namespace
