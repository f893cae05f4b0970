// Fonts, measuring, the surface and menus on the real API.
#include <gtest/gtest.h>
#include <windows.h>
// After windows.h.
#include <commctrl.h>

#include <map>
#include <string>

#include "base/utf16.h"
#include "platform/menus.h"
#include "platform/surface.h"
#include "platform/text_device.h"
#include "platform/win32/casts.h"
#include "shell/menu_bar.h"

namespace nira {
namespace {

FontDescription Describe(int32_t height, int32_t weight) {
    FontDescription description = {};
    description.height = height;
    description.weight = weight;
    Utf16Copy(description.face, 32, u"Arial");
    return description;
}

// ---- Fonts ----

TEST(SystemFonts, AreMadeAsDescribed) {
    FontDescription description = Describe(-20, 700);
    description.italic = true;
    description.strikeOut = true;
    description.clearType = true;
    FontHandle font = FontCreate(description);
    LOGFONTW made = {};
    ASSERT_NE(GetObjectW(ToHfont(font), sizeof(made), &made), 0);
    EXPECT_EQ(made.lfHeight, -20);
    EXPECT_EQ(made.lfWeight, 700);
    EXPECT_EQ(made.lfItalic, 1);
    EXPECT_EQ(made.lfUnderline, 0);
    EXPECT_EQ(made.lfStrikeOut, 1);
    EXPECT_EQ(made.lfCharSet, DEFAULT_CHARSET);
    EXPECT_EQ(made.lfQuality, CLEARTYPE_QUALITY);
    EXPECT_EQ(made.lfOutPrecision, 0);
    EXPECT_EQ(made.lfClipPrecision, 0);
    EXPECT_EQ(made.lfPitchAndFamily, 0);
    EXPECT_EQ(std::wstring(made.lfFaceName), L"Arial");
    FontDelete(font);
    FontDelete(nullptr);

    description = Describe(0, 400);
    Utf16Copy(description.face, 32, u"");
    font = FontCreate(description);
    ASSERT_NE(font, nullptr);
    GetObjectW(ToHfont(font), sizeof(made), &made);
    EXPECT_EQ(made.lfQuality, DEFAULT_QUALITY);
    EXPECT_EQ(made.lfUnderline, 0);
    FontDelete(font);
}

class SystemMeasuring : public ::testing::Test {
  protected:
    void SetUp() override {
        font_ = FontCreate(Describe(-20, 400));
        device_ = DeviceOpen(nullptr);
        ASSERT_NE(device_, nullptr);
        before_ = DeviceSelectFont(device_, font_);
    }
    void TearDown() override {
        EXPECT_EQ(DeviceSelectFont(device_, before_), font_);
        DeviceClose(nullptr, device_);
        FontDelete(font_);
    }
    int32_t Width(const std::u16string& text) {
        int32_t width = -1;
        EXPECT_TRUE(DeviceTextExtent(device_, text.c_str(), static_cast<uint32_t>(text.size()), &width));
        return width;
    }
    uint32_t Fit(const std::u16string& text, int32_t maxWidth) {
        uint32_t count = 0;
        EXPECT_TRUE(
            DeviceFitText(device_, text.c_str(), static_cast<uint32_t>(text.size()), maxWidth, &count));
        return count;
    }
    FontHandle font_ = nullptr;
    FontHandle before_ = nullptr;
    DeviceHandle device_ = nullptr;
};

TEST_F(SystemMeasuring, MeasuresRunsAndFitsThem) {
    EXPECT_EQ(Width(u""), 0);
    EXPECT_GT(Width(u"WWW"), Width(u"iii"));
    EXPECT_EQ(Fit(u"WWWW", Width(u"WWW")), 3u);
    EXPECT_EQ(Fit(u"WWWW", Width(u"WWW") - 1), 2u);
    EXPECT_EQ(Fit(u"W", 1), 0u);
    EXPECT_EQ(Fit(u"W", -5), 0u);
    EXPECT_EQ(Fit(u"", 5), 0u);
}

TEST_F(SystemMeasuring, FitsLongRunsAsIfMeasuredWhole) {
    std::u16string text;
    for (int letter = 0; letter < 20000; ++letter) text += static_cast<char16_t>(u'a' + letter % 26);
    for (const uint32_t wanted : {5u, 900u, 960u, 1023u, 1024u, 1025u, 2047u, 2048u, 9000u, 19999u, 20000u}) {
        EXPECT_EQ(Fit(text, Width(text.substr(0, wanted))), wanted);
    }
    EXPECT_EQ(Fit(text, 10000000), 20000u);
}

TEST_F(SystemMeasuring, KnowsTheFontsHeight) {
    int32_t height = 0;
    int32_t leading = -1;
    EXPECT_TRUE(DeviceFontMetrics(device_, &height, &leading));
    EXPECT_GE(height, 20);
    EXPECT_LT(height, 40);
    EXPECT_GE(leading, 0);
    EXPECT_LT(leading, 10);
    EXPECT_GE(ScreenDotsPerInch(nullptr), 72);
}

TEST(SystemMeasuringFailure, LeavesTheResultsAlone) {
    int32_t width = 7;
    EXPECT_FALSE(DeviceTextExtent(nullptr, u"abc", 3, &width));
    EXPECT_EQ(width, 7);
    uint32_t count = 7;
    EXPECT_FALSE(DeviceFitText(nullptr, u"abc", 3, 100, &count));
    EXPECT_EQ(count, 7u);
    EXPECT_FALSE(DeviceFontMetrics(nullptr, &width, &width));
}

// ---- Surface ----

std::map<UINT, int> seen;
const wchar_t kClass[] = L"NIRA surface test";

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    ++seen[message];
    if (message == WM_SETCURSOR) SetCursor(LoadCursorW(nullptr, IDC_IBEAM));
    if (message == WM_SETCURSOR) return TRUE;
    return DefWindowProcW(window, message, wParam, lParam);
}

class SystemSurface : public ::testing::Test {
  protected:
    void SetUp() override {
        WNDCLASSW windowClass = {};
        windowClass.lpfnWndProc = Procedure;
        windowClass.hInstance = GetModuleHandleW(nullptr);
        windowClass.lpszClassName = kClass;
        RegisterClassW(&windowClass);
        window_ = CreateWindowExW(WS_EX_TOPMOST, kClass, L"", WS_POPUP | WS_VISIBLE | WS_HSCROLL | WS_VSCROLL,
                                  0, 0, 300, 200, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
        ASSERT_NE(window_, nullptr);
        surface_ = FromHwnd(window_);
        Pump(50);
        seen.clear();
    }
    void TearDown() override { DestroyWindow(window_); }
    static void Pump(DWORD milliseconds) {
        const DWORD end = GetTickCount() + milliseconds;
        MSG message;
        do {
            while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
            Sleep(5);
        } while (static_cast<LONG>(end - GetTickCount()) > 0);
    }
    SCROLLINFO Info(int bar) {
        SCROLLINFO info = {};
        info.cbSize = sizeof(info);
        info.fMask = SIF_ALL;
        GetScrollInfo(window_, bar, &info);
        return info;
    }
    HWND window_ = nullptr;
    WindowHandle surface_ = nullptr;
};

TEST_F(SystemSurface, SetsOnlyTheNamedPartsOfAScrollBar) {
    SurfaceSetScrollRange(surface_, SurfaceBar::kVertical, 99, 20);
    SurfaceSetScrollPage(surface_, SurfaceBar::kVertical, 10);
    SurfaceSetScrollPosition(surface_, SurfaceBar::kVertical, 30);
    const SCROLLINFO vertical = Info(SB_VERT);
    EXPECT_EQ(vertical.nMin, 0);
    EXPECT_EQ(vertical.nMax, 99);
    EXPECT_EQ(vertical.nPage, 10u);
    EXPECT_EQ(vertical.nPos, 30);
    EXPECT_NE(Info(SB_HORZ).nPos, 30);
    EXPECT_EQ(SurfaceTrackPosition(surface_, SurfaceBar::kVertical), 30);
    EXPECT_EQ(SurfaceTrackPosition(nullptr, SurfaceBar::kVertical), 0);
}

TEST_F(SystemSurface, KeepsItsSizeWhenThereIsNothingToScroll) {
    const SurfaceSize before = SurfaceClientSize(surface_);
    EXPECT_GT(before.width, 200);
    EXPECT_LT(before.width, 300);
    SurfaceSetScrollRange(surface_, SurfaceBar::kVertical, 0, 0);
    SurfaceSetScrollRange(surface_, SurfaceBar::kHorizontal, 0, 0);
    SurfaceSetScrollPage(surface_, SurfaceBar::kVertical, 10);
    SurfaceSetScrollPage(surface_, SurfaceBar::kHorizontal, 10);
    const SurfaceSize after = SurfaceClientSize(surface_);
    EXPECT_EQ(after.width, before.width);
    EXPECT_EQ(after.height, before.height);
    EXPECT_EQ(SurfaceClientSize(nullptr).width, 0);
}

TEST_F(SystemSurface, ShowsACaret) {
    SetFocus(window_);
    SurfaceCreateCaret(surface_, 2, 16);
    SurfaceMoveCaret(10, 20);
    SurfaceShowCaret(surface_);
    int32_t x = 0;
    int32_t y = 0;
    SurfaceCaretPosition(&x, &y);
    EXPECT_EQ(x, 10);
    EXPECT_EQ(y, 20);
    GUITHREADINFO info = {};
    info.cbSize = sizeof(info);
    ASSERT_TRUE(GetGUIThreadInfo(GetCurrentThreadId(), &info));
    EXPECT_EQ(info.hwndCaret, window_);
    EXPECT_EQ(info.rcCaret.right - info.rcCaret.left, 2);
    EXPECT_EQ(info.rcCaret.bottom - info.rcCaret.top, 16);
    SurfaceHideCaret(surface_);
    SurfaceDestroyCaret();
    ASSERT_TRUE(GetGUIThreadInfo(GetCurrentThreadId(), &info));
    EXPECT_EQ(info.hwndCaret, nullptr);
}

TEST_F(SystemSurface, RunsAndStopsItsTimer) {
    SurfaceStartTimer(surface_, 7, 20);
    Pump(200);
    EXPECT_GE(seen[WM_TIMER], 2);
    SurfaceStopTimer(surface_, 7);
    Pump(30);
    const int before = seen[WM_TIMER];
    Pump(150);
    EXPECT_EQ(seen[WM_TIMER], before);
}

TEST_F(SystemSurface, SetsTheTitle) {
    SurfaceSetTitle(surface_, u"\u65E5.txt");
    wchar_t title[20];
    GetWindowTextW(window_, title, 20);
    EXPECT_EQ(std::wstring(title), L"\u65E5.txt");
}

TEST_F(SystemSurface, GetsItsOwnPointerBack) {
    SetCursorPos(50, 50);
    Pump(50);
    ShowWaitPointer();
    EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_WAIT));
    RestorePointer();
    EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_IBEAM));
    EXPECT_GE(seen[WM_SETCURSOR], 1);
}

TEST(SystemPointer, IsAnArrowOutsideTheProgramsWindows) {
    SetCursorPos(700, 650);
    ShowWaitPointer();
    RestorePointer();
    EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_ARROW));
}

TEST(SystemSurfaceNull, IsIgnored) {
    SurfaceSetScrollPosition(nullptr, SurfaceBar::kVertical, 1);
    SurfaceCreateCaret(nullptr, 1, 1);
    SurfaceShowCaret(nullptr);
    SurfaceHideCaret(nullptr);
    SurfaceStartTimer(nullptr, 1, 1);
    SurfaceStopTimer(nullptr, 1);
    SurfaceSetTitle(nullptr, u"x");
    GUITHREADINFO info = {};
    info.cbSize = sizeof(info);
    ASSERT_TRUE(GetGUIThreadInfo(GetCurrentThreadId(), &info));
    EXPECT_EQ(info.hwndCaret, nullptr);
    MSG message;
    Sleep(50);
    EXPECT_FALSE(PeekMessageW(&message, nullptr, WM_TIMER, WM_TIMER, PM_REMOVE));
}

// ---- Menus ----

std::wstring TextOf(HMENU menu, UINT id) {
    wchar_t text[40] = {};
    GetMenuStringW(menu, id, text, 40, MF_BYCOMMAND);
    return text;
}

TEST(SystemMenus, AppendChangeMarkAndDelete) {
    const HMENU menu = CreatePopupMenu();
    const MenuHandle handle = FromHmenu(menu);
    MenuAppendItem(handle, 1, u"one");
    MenuAppendItem(handle, 2, u"two");
    MenuAppendItem(handle, 3, u"three");
    MenuAppendGrayed(handle, u"none");
    EXPECT_EQ(GetMenuItemCount(menu), 4);
    EXPECT_TRUE(GetMenuState(menu, 3, MF_BYPOSITION) & (MF_GRAYED | MF_DISABLED));

    EXPECT_EQ(MenuItemCount(handle), 4u);
    MenuCheckRadioAt(handle, 0, 2, 1);
    MenuSetTextAt(handle, 1, u"TWO");
    MenuSetIdAt(handle, 1, 20);
    MenuSetTextAt(handle, 4, u"nothing there");
    EXPECT_EQ(TextOf(menu, 20), L"TWO");
    EXPECT_TRUE(GetMenuState(menu, 20, MF_BYCOMMAND) & MF_CHECKED);
    EXPECT_FALSE(GetMenuState(menu, 1, MF_BYCOMMAND) & MF_CHECKED);

    EXPECT_TRUE(MenuDeletePosition(handle, 0));
    EXPECT_EQ(GetMenuItemCount(menu), 3);
    EXPECT_TRUE(MenuDeletePosition(handle, 2));
    EXPECT_FALSE(MenuDeletePosition(handle, 2));
    EXPECT_EQ(TextOf(menu, 3), L"three");
    DestroyMenu(menu);
    EXPECT_TRUE(MenuAppendItem(nullptr, 1, u"x"));
    EXPECT_FALSE(MenuAppendItem(handle, 1, u"x"));  // the menu is gone
    EXPECT_EQ(MenuItemCount(nullptr), 0u);
    EXPECT_FALSE(MenuDeletePosition(nullptr, 0));
}

// A bar of one drop-down (command 50) without a menu of its own and one button (command 51).
const int16_t kBar[] = {-1, 2, -2, 50, 4, 24, 4016, 0, -1, -2, 51, 4, 16, 4017, 0, -1};

TEST_F(SystemSurface, FindsThePopupAndEnablesTheButtonsOfABar) {
    const HWND bar = shell::CreateBarFromMemory(window_, GetModuleHandleW(nullptr), kBar, sizeof(kBar));
    ASSERT_NE(bar, nullptr);
    const HMENU popup = CreatePopupMenu();
    ASSERT_NE(SendMessageW(bar, shell::kSetSubMenu, 50, reinterpret_cast<LPARAM>(popup)), 0);

    EXPECT_EQ(ToHmenu(BarPopup(FromHwnd(bar), 50)), popup);
    EXPECT_EQ(BarPopup(FromHwnd(bar), 51), nullptr);
    EXPECT_EQ(BarPopup(nullptr, 50), nullptr);

    BarEnableButton(FromHwnd(bar), 51, false);
    EXPECT_EQ(SendMessageW(bar, TB_ISBUTTONENABLED, 51, 0), 0);
    BarEnableButton(FromHwnd(bar), 51, true);
    EXPECT_NE(SendMessageW(bar, TB_ISBUTTONENABLED, 51, 0), 0);
    BarEnableButton(nullptr, 51, true);
    DestroyWindow(bar);
    DestroyMenu(popup);
}

}  // namespace
}  // namespace nira
