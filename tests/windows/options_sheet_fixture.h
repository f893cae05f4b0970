// The Options sheet over a window of its own; a test acts from inside its message loop.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <commctrl.h>

#include <functional>
#include <string>
#include <vector>

#include "app/services/memory.h"
#include "app/services/notices.h"
#include "files/codecs.h"
#include "platform/win32/casts.h"
#include "resources/resource.h"
#include "settings/options_pages.h"
#include "settings/options_sheet.h"
#include "settings/options_store.h"
#include "shell/input_panel.h"
#include "shell/menu_bar.h"
#include "shell_test_window.h"
#include "view/fonts.h"
#include "windows/registry_sandbox.h"

namespace nira::options_sheet_test {

constexpr int kTabs = 12320;
constexpr int kTouchTarget = 24;
constexpr int kFormat = 0;
constexpr int kEditor = 1;
constexpr int kWords = 2;
constexpr int kIndent = 3;

inline std::wstring TextOf(HWND window) {
    wchar_t text[300] = {};
    GetWindowTextW(window, text, 300);
    return text;
}

inline std::wstring ClassOf(HWND window) {
    wchar_t name[100] = {};
    GetClassNameW(window, name, 100);
    return name;
}

inline RECT PlaceOf(HWND window) {
    RECT place = {};
    GetWindowRect(window, &place);
    return place;
}

// What waits for a turn of the sheet's message loop, or of a message box's in it.
inline std::function<bool()> whenReady;
inline std::vector<std::wstring> boxes;

inline HWND FindBox() {
    const HWND box = FindWindowW(L"#32770", L"Error");
    return box != nullptr && GetDlgItem(box, IDOK) != nullptr
               ? box
               : FindWindowExW(nullptr, box, L"#32770", L"Error");
}

// Presses OK in the next box titled "Error".
inline void CALLBACK AnswerBox(HWND, UINT, UINT_PTR timer, DWORD) {
    const HWND box = FindBox();
    if (box == nullptr || !IsWindowVisible(box)) return;
    KillTimer(nullptr, timer);
    for (HWND child = GetWindow(box, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
        if (ClassOf(child) == L"Static" && !TextOf(child).empty()) boxes.push_back(TextOf(child));
    }
    PostMessageW(box, WM_COMMAND, IDCANCEL, 0);
    PostMessageW(box, WM_COMMAND, IDOK, 0);
}

inline void CALLBACK ActWhenReady(HWND, UINT, UINT_PTR timer, DWORD) {
    if (whenReady && !whenReady()) return;
    KillTimer(nullptr, timer);
    whenReady = nullptr;
}

class OptionsSheet : public testing::Test {
  protected:
    OptionsSheet() {
        shell_test::Forget();
        boxes.clear();
        shell::SHInitExtraControls();
        InitFonts(nullptr);
        InitCodecs();
        LoadOptions();
        OwnerOf(400, 500);
    }
    ~OptionsSheet() override {
        SetNoticeOwner(nullptr);
        DestroyWindow(owner_);
        FreeOptions();
        FreeCodecs();
        ShutdownFonts();
        shell_test::Forget();
    }

    void OwnerOf(int width, int height) {
        if (owner_ != nullptr) DestroyWindow(owner_);
        owner_ = shell_test::MakeWindow(WS_OVERLAPPEDWINDOW | WS_VISIBLE, width, height);
        SetNoticeOwner(FromHwnd(owner_));
    }

    // Runs the sheet, and `steps` once it stands; a sheet that they leave open is cancelled.
    int Run(const std::function<void()>& steps) {
        whenReady = [&] {
            const SheetCopy* copy = TheOptions().sheetCopy;
            if (copy == nullptr || !IsWindowVisible(ToHwnd(copy->sheetWindow))) return false;
            sheet_ = ToHwnd(copy->sheetWindow);
            whenReady = nullptr;
            steps();
            if (IsWindow(sheet_)) PostMessageW(sheet_, WM_COMMAND, IDCANCEL, 0);
            return true;
        };
        SetTimer(nullptr, 0, 10, ActWhenReady);
        const int result = RunOptionsSheet();
        EXPECT_FALSE(IsWindow(sheet_));
        EXPECT_EQ(TheOptions().sheetCopy, nullptr);
        EXPECT_TRUE(IsWindowEnabled(owner_));
        return result;
    }

    HWND Tabs() const { return GetDlgItem(sheet_, kTabs); }
    int ShownPage() const { return static_cast<int>(SendMessageW(Tabs(), TCM_GETCURSEL, 0, 0)); }
    HWND Page() const { return reinterpret_cast<HWND>(SendMessageW(sheet_, PSM_GETCURRENTPAGEHWND, 0, 0)); }
    HWND Control(int id) const { return GetDlgItem(Page(), id); }
    void Show(int page) const { SendMessageW(sheet_, PSM_SETCURSEL, static_cast<WPARAM>(page), 0); }
    void Press(int id) const { SendMessageW(Control(id), BM_CLICK, 0, 0); }
    void Type(int id, const wchar_t* text) const { SetWindowTextW(Control(id), text); }
    // As the bar does it.
    void Confirm() const { SendMessageW(sheet_, WM_COMMAND, IDOK, 0); }
    static void ExpectBox() { SetTimer(nullptr, 0, 10, AnswerBox); }

    static std::wstring Stored(const wchar_t* name) {
        wchar_t text[100] = {};
        DWORD size = sizeof(text);
        RegGetValueW(HKEY_CURRENT_USER, L"Software\\NIRA", name, RRF_RT_REG_SZ, nullptr, text, &size);
        return text;
    }
    static DWORD StoredNumber(const wchar_t* name) {
        DWORD value = 0xDEAD;
        DWORD size = sizeof(value);
        RegGetValueW(HKEY_CURRENT_USER, L"Software\\NIRA", name, RRF_RT_REG_DWORD, nullptr, &value, &size);
        return value;
    }
    static bool IsStored(const wchar_t* name) {
        return RegGetValueW(HKEY_CURRENT_USER, L"Software\\NIRA", name, RRF_RT_ANY, nullptr, nullptr,
                            nullptr) == ERROR_SUCCESS;
    }
    static COLORREF MiddleOf(HWND window) {
        UpdateWindow(window);
        RECT client = {};
        GetClientRect(window, &client);
        const HDC device = GetDC(window);
        const COLORREF color = GetPixel(device, client.right / 2, client.bottom / 2);
        ReleaseDC(window, device);
        return color;
    }

    RegistrySandbox registry_;
    HWND owner_ = nullptr;
    HWND sheet_ = nullptr;
};

}  // namespace nira::options_sheet_test
