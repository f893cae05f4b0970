// What a long operation does with messages that come meanwhile.
#include <gtest/gtest.h>
#include <windows.h>

#include <commctrl.h>

#include "platform/shell_requests.h"
#include "shell/menu_bar.h"

namespace nira {
namespace {

constexpr DWORD kLong = 400;  // milliseconds; behind the first look

struct Received {
    int paints = 0;
    int keys = 0;
    int clicks = 0;
    int closes = 0;
    int sent = 0;
};
Received received;

LRESULT CALLBACK CountingProc(HWND window, UINT message, WPARAM first, LPARAM second) {
    received.keys += message == WM_KEYDOWN ? 1 : 0;
    received.clicks += message == WM_LBUTTONDOWN ? 1 : 0;
    received.sent += message == WM_APP ? 1 : 0;
    if (message == WM_CLOSE) {
        ++received.closes;
        return 0;
    }
    if (message == WM_PAINT) {
        ++received.paints;
        ValidateRect(window, nullptr);
        return 0;
    }
    return DefWindowProcW(window, message, first, second);
}

class LongOperation : public testing::Test {
  protected:
    LongOperation() {
        WNDCLASSW description = {};
        description.lpfnWndProc = CountingProc;
        description.lpszClassName = L"NiraLongOperation";
        RegisterClassW(&description);
        window_ = CreateWindowExW(0, description.lpszClassName, L"", WS_POPUP | WS_VISIBLE, 0, 0, 100, 100,
                                  nullptr, nullptr, nullptr, nullptr);
        Dispatch();
        received = {};
    }
    ~LongOperation() override {
        DestroyWindow(window_);
        UnregisterClassW(L"NiraLongOperation", nullptr);
    }
    static void Dispatch() {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    }

    HWND window_;
};

TEST_F(LongOperation, LeavesKeysTypedAheadToWhatComesNextWhenItIsShort) {
    BeginLongOperation();
    PostMessageW(window_, WM_KEYDOWN, VK_ESCAPE, 0);
    EXPECT_FALSE(AnsweringDue());
    EXPECT_TRUE(KeepAnswering());
    Dispatch();
    EXPECT_EQ(received.keys, 1);
}

TEST_F(LongOperation, IsStoppedByEscape) {
    BeginLongOperation();
    Sleep(kLong);
    EXPECT_TRUE(AnsweringDue());
    EXPECT_TRUE(KeepAnswering());
    PostMessageW(window_, WM_KEYDOWN, 'A', 0);
    PostMessageW(window_, WM_KEYDOWN, VK_ESCAPE, 0);
    PostMessageW(window_, WM_KEYDOWN, 'B', 0);
    EXPECT_TRUE(KeepAnswering()) << "not looked at all the time";
    Sleep(kLong);
    EXPECT_FALSE(KeepAnswering());
    Sleep(kLong);
    EXPECT_TRUE(KeepAnswering()) << "it has been taken";
}

TEST_F(LongOperation, IsStoppedByAPressOnCancel) {
    const HWND cancel = CreateWindowExW(0, L"BUTTON", L"Cancel", WS_CHILD | WS_VISIBLE, 0, 0, 50, 20, window_,
                                        reinterpret_cast<HMENU>(IDCANCEL), nullptr, nullptr);
    const HWND other = CreateWindowExW(0, L"BUTTON", L"Other", WS_CHILD | WS_VISIBLE, 0, 30, 50, 20, window_,
                                       reinterpret_cast<HMENU>(IDOK), nullptr, nullptr);
    for (const UINT press : {UINT{WM_LBUTTONDOWN}, UINT{0x0246}}) {
        BeginLongOperation();
        Sleep(kLong);
        PostMessageW(other, press, MK_LBUTTON, 0);
        PostMessageW(window_, press, MK_LBUTTON, 0);
        EXPECT_TRUE(KeepAnswering());
        Sleep(kLong);
        PostMessageW(cancel, press, MK_LBUTTON, 0);
        EXPECT_FALSE(KeepAnswering());
        EnableWindow(cancel, FALSE);
        Sleep(kLong);
        PostMessageW(cancel, press, MK_LBUTTON, 0);
        EXPECT_TRUE(KeepAnswering());
        EnableWindow(cancel, TRUE);
    }
}

TEST_F(LongOperation, IsStoppedByAPressOnTheCancelOfABar) {
    const short buttons[] = {-1, 2, -2, IDOK, 4, 16, 0, 0, -1, -2, IDCANCEL, 4, 16, 0, 0, -1};
    const HWND bar = shell::CreateBarFromMemory(window_, GetModuleHandleW(nullptr), buttons, sizeof(buttons));
    ASSERT_NE(bar, nullptr);
    const auto press = [&](int command) {
        RECT place = {};
        SendMessageW(bar, TB_GETRECT, static_cast<WPARAM>(command), reinterpret_cast<LPARAM>(&place));
        PostMessageW(bar, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(place.left + 2, place.top + 2));
        Sleep(kLong);
    };
    BeginLongOperation();
    press(IDOK);
    EXPECT_TRUE(KeepAnswering());
    press(IDCANCEL);
    EXPECT_FALSE(KeepAnswering());
    SendMessageW(bar, TB_ENABLEBUTTON, IDCANCEL, 0);
    press(IDCANCEL);
    EXPECT_TRUE(KeepAnswering());
}

TEST_F(LongOperation, ForgetsOtherInputAndPutsOffTheEnd) {
    BeginLongOperation();
    PostMessageW(window_, WM_KEYDOWN, 'A', 0);
    PostMessageW(window_, WM_LBUTTONDOWN, MK_LBUTTON, 0);
    PostMessageW(window_, WM_CLOSE, 0, 0);
    Sleep(kLong);
    EXPECT_TRUE(KeepAnswering());
    EXPECT_EQ(received.closes, 0) << "in the middle of the operation";
    Dispatch();
    EXPECT_EQ(received.keys, 0);
    EXPECT_EQ(received.clicks, 0);
    EXPECT_EQ(received.closes, 1) << "behind it";
}

TEST_F(LongOperation, LetsWindowsPaintUnderTheWaitPointer) {
    BeginLongOperation();
    InvalidateRect(window_, nullptr, FALSE);
    SetCursor(LoadCursorW(nullptr, IDC_ARROW));
    Sleep(kLong);
    EXPECT_TRUE(KeepAnswering());
    EXPECT_EQ(received.paints, 1);
    EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_WAIT));
}

DWORD WINAPI AskFromElsewhere(void* window) {
    DWORD_PTR answer = 0;
    return SendMessageTimeoutW(static_cast<HWND>(window), WM_APP, 0, 0, SMTO_ABORTIFHUNG, 10000, &answer) != 0
               ? 1
               : 0;
}

TEST_F(LongOperation, AnswersTheSystem) {
    BeginLongOperation();
    const HANDLE thread = CreateThread(nullptr, 0, AskFromElsewhere, window_, 0, nullptr);
    ASSERT_NE(thread, nullptr);
    const ULONGLONG begin = GetTickCount64();
    while (WaitForSingleObject(thread, 10) == WAIT_TIMEOUT && GetTickCount64() - begin < 8000) {
        EXPECT_TRUE(KeepAnswering());
    }
    DWORD answered = 0;
    GetExitCodeThread(thread, &answered);
    CloseHandle(thread);
    EXPECT_EQ(answered, 1U);
    EXPECT_EQ(received.sent, 1);
}

}  // namespace
}  // namespace nira
