// The desktop frame around a main window written for a handheld.
#include "shell/desktop_frame.h"

#include <gtest/gtest.h>

#include <shlobj.h>

#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "shell/activation.h"
#include "shell/density.h"
#include "shell/input_panel.h"
#include "shell/menu_bar.h"
#include "shell_test_window.h"

namespace {

using shell_test::received;
using shell_test::ReceivedOf;
using shell_test::RunPosted;

const short kButtons[] = {-1, 1, -2, 103, 4, 16, 0, 0, -1};

int timesAsked = 0;
bool answer = true;
HWND asked = nullptr;

bool MayClose() {
    ++timesAsked;
    return answer;
}

// Sees to it that the application's window is told to close again while it is still being asked.
bool MayCloseAfterExit() {
    ++timesAsked;
    SendMessageW(asked, WM_CLOSE, 0, 0);
    EXPECT_TRUE(IsWindow(asked));
    return true;
}

class ShellFrame : public testing::Test {
  protected:
    void SetUp() override {
        shell_test::Forget();
        timesAsked = 0;
        answer = true;
    }

    void TearDown() override {
        if (IsWindow(frame)) {
            DestroyWindow(frame);
        }
        // The quit messages and whatever else a test left behind.
        RunPosted();
        shell_test::Forget();
    }

    HWND Make(bool (*mayClose)() = MayClose) {
        frame = shell::CreateMainFrame(0, shell_test::RecordingClass(), L"frame", WS_VISIBLE, CW_USEDEFAULT,
                                       CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, GetModuleHandleW(nullptr),
                                       {mayClose});
        asked = frame;
        return frame;
    }

    HWND frame = nullptr;
};

SIZE OuterSize(HWND window) {
    RECT rect;
    GetWindowRect(window, &rect);
    return {rect.right - rect.left, rect.bottom - rect.top};
}

TEST(ShellDensity, ScalesByTheDotsPerInchOfTheScreen) {
    const HDC screen = GetDC(nullptr);
    EXPECT_EQ(shell::ScreenDensity(), GetDeviceCaps(screen, LOGPIXELSY));
    ReleaseDC(nullptr, screen);
    EXPECT_EQ(shell::ScaledToScreen(2 * 96), 2 * shell::ScreenDensity());
    EXPECT_EQ(shell::ScaledToScreen(0), 0);
}

TEST(ShellFirstSize, IsThatOfAHandheldOnALargeScreen) {
    const SIZE size = shell::FirstSizeFor({1920, 1080}, 96);
    EXPECT_EQ(size.cx, 480);
    EXPECT_EQ(size.cy, 640);
}

TEST(ShellFirstSize, GrowsWithTheDensity) {
    const SIZE size = shell::FirstSizeFor({3840, 2160}, 192);
    EXPECT_EQ(size.cx, 960);
    EXPECT_EQ(size.cy, 1280);
}

TEST(ShellFirstSize, IsTheWholeOfASmallScreen) {
    for (const SIZE screen : {SIZE{240, 320}, SIZE{480, 640}, SIZE{500, 700}}) {
        const SIZE size = shell::FirstSizeFor(screen, 96);
        EXPECT_EQ(size.cx, screen.cx);
        EXPECT_EQ(size.cy, screen.cy);
    }
}

TEST(ShellFirstSize, IsLimitedInEachDirectionOnItsOwn) {
    const SIZE size = shell::FirstSizeFor({1366, 600}, 96);
    EXPECT_EQ(size.cx, 480);
    EXPECT_EQ(size.cy, 600);
}

TEST_F(ShellFrame, HasEverythingADesktopExpectsAndWaitsToBeShown) {
    ASSERT_NE(Make(), nullptr);

    const LONG style = GetWindowLongW(frame, GWL_STYLE);
    for (const LONG part : {WS_CAPTION, WS_SYSMENU, WS_MINIMIZEBOX, WS_MAXIMIZEBOX, WS_THICKFRAME}) {
        EXPECT_EQ(style & part, part) << part;
    }
    EXPECT_FALSE(IsWindowVisible(frame));
    EXPECT_EQ(OuterSize(frame).cx, shell::FirstWindowSize().cx);
    EXPECT_EQ(OuterSize(frame).cy, shell::FirstWindowSize().cy);
}

TEST_F(ShellFrame, StandsInsideTheWorkArea) {
    Make();
    RECT work;
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    RECT place;
    GetWindowRect(frame, &place);
    EXPECT_GE(place.left, work.left);
    EXPECT_GE(place.top, work.top);
    EXPECT_LE(place.right, work.right);
    EXPECT_LE(place.bottom, work.bottom);
}

TEST_F(ShellFrame, TakesASizeGivenWhileHiddenForThatOfTheAreaAboveTheBar) {
    int barHeight = 0;
    shell_test::onMessage = [&](HWND window, const shell_test::Received& one) {
        if (one.message != WM_CREATE) {
            return;
        }
        const HWND bar =
            shell::CreateBarFromMemory(window, GetModuleHandleW(nullptr), kButtons, sizeof(kButtons));
        barHeight = shell::MenuBarHeight(bar);
        SetWindowPos(window, nullptr, 0, 0, 300, 400 - barHeight, SWP_NOMOVE | SWP_NOZORDER);
    };

    ASSERT_NE(Make(), nullptr);

    EXPECT_GT(barHeight, 0);
    EXPECT_EQ(OuterSize(frame).cx, 300);
    EXPECT_EQ(OuterSize(frame).cy, 400);
}

TEST_F(ShellFrame, TakesASizeGivenWhileShownAsItIs) {
    Make();
    shell::CreateBarFromMemory(frame, GetModuleHandleW(nullptr), kButtons, sizeof(kButtons));
    ShowWindow(frame, SW_SHOWNOACTIVATE);
    SetWindowPos(frame, nullptr, 0, 0, 300, 400, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_EQ(OuterSize(frame).cy, 400);
}

TEST_F(ShellFrame, CannotBeMadeTooSmall) {
    Make();
    MINMAXINFO info = {};
    SendMessageW(frame, WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&info));
    EXPECT_GE(info.ptMinTrackSize.x, 160);
    EXPECT_GE(info.ptMinTrackSize.y, 120);
}

TEST_F(ShellFrame, IsNoWindowWhenTheApplicationGivesUpInItsCreation) {
    shell_test::onMessage = [](HWND window, const shell_test::Received& one) {
        if (one.message == WM_CREATE) {
            DestroyWindow(window);
        }
    };
    EXPECT_EQ(Make(), nullptr);
}

TEST_F(ShellFrame, ReportsAClassThatIsMissing) {
    EXPECT_EQ(shell::CreateMainFrame(0, L"No such class", L"", 0, CW_USEDEFAULT, 0, CW_USEDEFAULT, 0,
                                     GetModuleHandleW(nullptr), {MayClose}),
              nullptr);
    EXPECT_NE(GetLastError(), 0u);
    // What was meant for that window must not stick to the next one.
    const HWND other = shell_test::MakeWindow(WS_OVERLAPPEDWINDOW, 100, 100);
    SendMessageW(other, WM_CLOSE, 0, 0);
    EXPECT_EQ(timesAsked, 0);
    EXPECT_FALSE(IsWindow(other));
}

TEST_F(ShellFrame, AsksBeforeItClosesAndStaysWhenTheAnswerIsNo) {
    Make();
    answer = false;

    SendMessageW(frame, WM_SYSCOMMAND, SC_CLOSE, 0);
    RunPosted();

    EXPECT_EQ(timesAsked, 1);
    EXPECT_TRUE(IsWindow(frame));
    EXPECT_TRUE(ReceivedOf(WM_CLOSE).empty());
}

TEST_F(ShellFrame, ClosesWhenTheAnswerIsYes) {
    Make();

    SendMessageW(frame, WM_SYSCOMMAND, SC_CLOSE, 0);
    RunPosted();

    EXPECT_EQ(timesAsked, 1);
    EXPECT_FALSE(IsWindow(frame));
    EXPECT_EQ(ReceivedOf(WM_DESTROY).size(), 1u);
}

TEST_F(ShellFrame, RefusesToCloseWhileItIsAsking) {
    Make(MayCloseAfterExit);

    SendMessageW(frame, WM_CLOSE, 0, 0);

    EXPECT_EQ(timesAsked, 1);
    EXPECT_FALSE(IsWindow(frame));
}

TEST_F(ShellFrame, LetsTheSessionEndOnlyWhenTheAnswerIsYes) {
    Make();
    answer = false;
    EXPECT_EQ(SendMessageW(frame, WM_QUERYENDSESSION, 0, 0), FALSE);
    answer = true;
    EXPECT_EQ(SendMessageW(frame, WM_QUERYENDSESSION, 0, 0), TRUE);
    EXPECT_EQ(timesAsked, 2);
    EXPECT_TRUE(IsWindow(frame));
}

TEST_F(ShellFrame, EndsAloneWhenTheSessionWentOnAfterAYes) {
    Make();
    SendMessageW(frame, WM_QUERYENDSESSION, 0, 0);
    SendMessageW(frame, WM_ENDSESSION, FALSE, 0);
    RunPosted();
    EXPECT_FALSE(IsWindow(frame));
}

TEST_F(ShellFrame, GoesOnWhenTheSessionWentOnAfterANo) {
    Make();
    answer = false;
    SendMessageW(frame, WM_QUERYENDSESSION, 0, 0);
    SendMessageW(frame, WM_ENDSESSION, FALSE, 0);
    RunPosted();
    EXPECT_TRUE(IsWindow(frame));
    EXPECT_EQ(timesAsked, 1);
}

TEST_F(ShellFrame, PassesTheFocusOnToItsContentAndNotToItsBar) {
    Make();
    shell::CreateBarFromMemory(frame, GetModuleHandleW(nullptr), kButtons, sizeof(kButtons));
    const HWND content = shell_test::MakeWindow(WS_CHILD | WS_VISIBLE, 50, 50, frame);
    ShowWindow(frame, SW_SHOW);

    EXPECT_EQ(shell::ContentWindow(frame), content);
    SetFocus(frame);

    EXPECT_EQ(GetFocus(), content);
}

TEST_F(ShellFrame, OpensTheDropDownsOfItsBarByKeyboard) {
    Make();
    shell::MenuBarInfo info = {};
    info.size = shell::kMenuBarInfoSize;
    info.owner = frame;
    info.resourceId = 3002;
    info.instance = GetModuleHandleW(nullptr);
    ASSERT_TRUE(shell::SHCreateMenuBar(&info));
    ShowWindow(frame, SW_SHOW);

    const std::pair<LPARAM, int> expected[] = {{0, 1014}, {'e', 1015}, {'N', 1062}};
    for (const auto& [key, command] : expected) {
        received.clear();
        PostMessageW(info.bar, WM_KEYDOWN, VK_ESCAPE, 1);
        SendMessageW(frame, WM_SYSCOMMAND, SC_KEYMENU, key);
        RunPosted();
        ASSERT_EQ(ReceivedOf(WM_INITMENUPOPUP).size(), 1u) << key;
        EXPECT_EQ(LOWORD(ReceivedOf(WM_INITMENUPOPUP)[0].lParam), command);
    }
}

// ---- Files dropped on the window ----

std::vector<std::wstring> dropped;

// What a file manager gives for a drop of these files.
HDROP DropOf(const std::vector<std::wstring>& paths) {
    std::wstring list;
    for (const std::wstring& path : paths) {
        list += path + L'\0';
    }
    list += L'\0';
    const size_t bytes = sizeof(DROPFILES) + list.size() * sizeof(wchar_t);
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, bytes);
    auto* files = static_cast<DROPFILES*>(GlobalLock(block));
    files->pFiles = sizeof(DROPFILES);
    files->fWide = TRUE;
    memcpy(files + 1, list.data(), list.size() * sizeof(wchar_t));
    GlobalUnlock(block);
    return static_cast<HDROP>(block);
}

HWND MakeTaking(void (*take)(const wchar_t* path)) {
    dropped.clear();
    return shell::CreateMainFrame(0, shell_test::RecordingClass(), L"frame", WS_VISIBLE, CW_USEDEFAULT,
                                  CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, GetModuleHandleW(nullptr),
                                  {MayClose, take});
}

TEST_F(ShellFrame, HandsOnTheFilesDroppedOnIt) {
    frame = MakeTaking([](const wchar_t* path) { dropped.emplace_back(path); });
    const std::vector<std::wstring> paths = {L"C:\\a b.txt", L"C:\\" + std::wstring(400, L'x'), L"\\\\s\\c"};

    SendMessageW(frame, WM_DROPFILES, reinterpret_cast<WPARAM>(DropOf(paths)), 0);

    EXPECT_TRUE(GetWindowLongW(frame, GWL_EXSTYLE) & WS_EX_ACCEPTFILES);
    EXPECT_EQ(dropped, paths);
}

TEST_F(ShellFrame, SurvivesADropThatEndsIt) {
    frame = MakeTaking([](const wchar_t* path) {
        dropped.emplace_back(path);
        DestroyWindow(FindWindowW(shell_test::RecordingClass(), L"frame"));
    });

    SendMessageW(frame, WM_DROPFILES, reinterpret_cast<WPARAM>(DropOf({L"a", L"b"})), 0);

    EXPECT_EQ(dropped.size(), 2u);
    EXPECT_FALSE(IsWindow(frame));
}

TEST_F(ShellFrame, TakesNoFilesUnlessAsked) {
    Make();
    EXPECT_FALSE(GetWindowLongW(frame, GWL_EXSTYLE) & WS_EX_ACCEPTFILES);
}

// ---- Activation ----

TEST_F(ShellFrame, KeepsActivationInTheRecordAndGivesTheFocusBack) {
    Make();
    shell_test::MakeWindow(WS_CHILD | WS_VISIBLE, 50, 50, frame);
    const HWND second = shell_test::MakeWindow(WS_CHILD | WS_VISIBLE, 50, 50, frame);
    const HWND elsewhere = shell_test::MakeWindow(WS_OVERLAPPEDWINDOW, 100, 100);
    ShowWindow(elsewhere, SW_SHOW);
    ShowWindow(frame, SW_SHOW);
    shell::ActivateInfo info = {shell::kActivateInfoSize, nullptr, 0x101};

    EXPECT_TRUE(shell::SHHandleWMActivate(frame, WA_ACTIVE, 0, &info, 0));
    EXPECT_EQ(info.flags, 0x101 | shell::kActiveFlag);
    SetFocus(second);
    EXPECT_TRUE(shell::SHHandleWMActivate(frame, WA_INACTIVE, 0, &info, 0));
    EXPECT_EQ(info.flags, 0x101u);
    EXPECT_EQ(info.lastFocus, second);
    SetFocus(elsewhere);
    EXPECT_TRUE(shell::SHHandleWMActivate(frame, WA_CLICKACTIVE, 0, &info, 0));
    EXPECT_EQ(GetFocus(), second);

    DestroyWindow(elsewhere);
}

TEST_F(ShellFrame, GivesTheFocusToTheContentWhenItsOwnerIsGone) {
    Make();
    const HWND content = shell_test::MakeWindow(WS_CHILD | WS_VISIBLE, 50, 50, frame);
    const HWND lost = shell_test::MakeWindow(WS_CHILD | WS_VISIBLE, 50, 50, frame);
    ShowWindow(frame, SW_SHOW);
    shell::ActivateInfo info = {shell::kActivateInfoSize, lost, 0};
    DestroyWindow(lost);

    shell::SHHandleWMActivate(frame, WA_ACTIVE, 0, &info, 0);

    EXPECT_EQ(GetFocus(), content);
}

TEST_F(ShellFrame, RefusesAnActivationRecordOfAnotherSize) {
    Make();
    shell::ActivateInfo info = {};
    EXPECT_FALSE(shell::SHHandleWMActivate(frame, WA_ACTIVE, 0, &info, 0));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    EXPECT_FALSE(shell::SHHandleWMSettingChange(frame, 0, 0, &info));
    EXPECT_FALSE(shell::SHHandleWMActivate(frame, WA_ACTIVE, 0, nullptr, 0));
    info.size = shell::kActivateInfoSize;
    EXPECT_TRUE(shell::SHHandleWMSettingChange(frame, 0, 0, &info));
}

// ---- Input panel ----

TEST(ShellInputPanel, IsOffAndLeavesTheFirstWindowsSize) {
    shell::SipInfo info = {};
    info.size = shell::kSipInfoSize;
    info.flags = 99;

    ASSERT_TRUE(shell::SHSipInfo(shell::kSpiGetSipInfo, 0, &info, 0));

    EXPECT_EQ(info.flags, 0u);
    EXPECT_EQ(info.visibleDesktop.right - info.visibleDesktop.left, shell::FirstWindowSize().cx);
    EXPECT_EQ(info.visibleDesktop.bottom - info.visibleDesktop.top, shell::FirstWindowSize().cy);
    EXPECT_EQ(info.panel.bottom, info.panel.top);
}

TEST(ShellInputPanel, RefusesOtherActionsAndSizes) {
    shell::SipInfo info = {};
    info.size = shell::kSipInfoSize + 1;
    EXPECT_FALSE(shell::SHSipInfo(shell::kSpiGetSipInfo, 0, &info, 0));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    info.size = shell::kSipInfoSize;
    EXPECT_FALSE(shell::SHSipInfo(shell::kSpiGetSipInfo + 1, 0, &info, 0));
    EXPECT_FALSE(shell::SHSipInfo(shell::kSpiGetSipInfo, 0, nullptr, 0));
}

TEST(ShellInputPanel, OffersItsControlToDialogs) {
    EXPECT_TRUE(shell::SHInitExtraControls());
    EXPECT_TRUE(shell::SHInitExtraControls());
    const HWND control = CreateWindowExW(0, L"SIPPREF", L"", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr,
                                         GetModuleHandleW(nullptr), nullptr);
    EXPECT_NE(control, nullptr);
    DestroyWindow(control);
}

}  // namespace
