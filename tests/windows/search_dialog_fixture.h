// The Find and Replace dialogs over a window of their own, with a document behind them and a registry of
// their own.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <commctrl.h>

#include <functional>
#include <string>
#include <vector>

#include "editor_window_fixture.h"
#include "engine/window_state.h"
#include "registry_sandbox.h"
#include "resources/resource.h"
#include "search/find.h"
#include "search/search_dialogs.h"
#include "search/search_request.h"
#include "search/search_state.h"
#include "shell/input_panel.h"
#include "shell/menu_bar.h"

namespace nira::search_dialog_test {

constexpr const wchar_t* kKey = L"Software\\NIRA";

inline std::function<void(HWND)> script;
inline bool played = false;

// ---- what happens over the dialog's own message loop ----

struct Wanted {
    bool (*is)(HWND);
    HWND window;
};

inline BOOL CALLBACK LookAt(HWND window, LPARAM parameter) {
    auto* wanted = reinterpret_cast<Wanted*>(parameter);
    if (IsWindowVisible(window) && wanted->is(window)) wanted->window = window;
    return wanted->window == nullptr;
}

inline HWND ShownWindow(bool (*is)(HWND)) {
    Wanted wanted = {is, nullptr};
    EnumThreadWindows(GetCurrentThreadId(), LookAt, reinterpret_cast<LPARAM>(&wanted));
    return wanted.window;
}

inline bool IsSearchDialog(HWND window) { return GetDlgItem(window, IDC_PATTERN) != nullptr; }

inline std::wstring TextOf(HWND window) {
    std::wstring text(static_cast<size_t>(GetWindowTextLengthW(window)), L'\0');
    GetWindowTextW(window, text.data(), static_cast<int>(text.size()) + 1);
    return text;
}

inline bool IsBox(HWND window) { return TextOf(window) == L"Information"; }

inline void CALLBACK Play(HWND, UINT, UINT_PTR timer, DWORD) {
    const HWND dialog = ShownWindow(IsSearchDialog);
    if (dialog == nullptr) return;
    KillTimer(nullptr, timer);
    played = true;
    script(dialog);
    if (IsWindowVisible(dialog)) SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
}

struct Box {
    std::wstring text;
    HWND owner;
};
inline std::vector<Box> boxes;

inline void CALLBACK AnswerBox(HWND, UINT, UINT_PTR timer, DWORD) {
    const HWND box = ShownWindow(IsBox);
    if (box == nullptr) return;
    KillTimer(nullptr, timer);
    boxes.push_back({TextOf(GetDlgItem(box, 0xFFFF)), GetWindow(box, GW_OWNER)});
    PostMessageW(box, WM_COMMAND, IDOK, 0);
}

// ---- the dialog ----

inline HWND Item(HWND dialog, int id) { return GetDlgItem(dialog, id); }
inline std::wstring ItemText(HWND dialog, int id) { return TextOf(Item(dialog, id)); }
inline void Put(HWND dialog, int id, const std::wstring& text) {
    SetWindowTextW(Item(dialog, id), text.c_str());
}
inline bool IsChecked(HWND dialog, int id) { return IsDlgButtonChecked(dialog, id) == BST_CHECKED; }
inline void Press(HWND dialog, WPARAM command) { SendMessageW(dialog, WM_COMMAND, command, 0); }
inline bool IsOpen(HWND dialog) { return IsWindow(dialog) && IsWindowVisible(dialog); }

inline std::wstring WithoutMark(std::wstring label) {
    const size_t mark = label.find(L'&');
    if (mark != std::wstring::npos) label.erase(mark, 1);
    return label;
}

inline void ReplaceAllBy(HWND dialog, const std::wstring& pattern, const std::wstring& replacement) {
    Put(dialog, IDC_PATTERN, pattern);
    Put(dialog, IDC_REPLACEMENT, replacement);
    SetTimer(nullptr, 0, 30, AnswerBox);
    Press(dialog, CMD_REPLACE_ALL);
}

inline std::vector<std::wstring> Listed(HWND dialog, int id) {
    std::vector<std::wstring> texts;
    const auto count = SendMessageW(Item(dialog, id), CB_GETCOUNT, 0, 0);
    for (WPARAM i = 0; i < static_cast<WPARAM>(count); ++i) {
        const LRESULT length = SendMessageW(Item(dialog, id), CB_GETLBTEXTLEN, i, 0);
        std::wstring text(static_cast<size_t>(length), L'\0');
        SendMessageW(Item(dialog, id), CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(text.data()));
        texts.push_back(text);
    }
    return texts;
}

inline HWND EditOf(HWND dialog, int id) {
    COMBOBOXINFO parts = {};
    parts.cbSize = sizeof(parts);
    GetComboBoxInfo(Item(dialog, id), &parts);
    return parts.hwndItem;
}

inline RECT PlaceOf(HWND dialog, HWND control) {
    RECT place = {};
    GetWindowRect(control, &place);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
    return place;
}
inline RECT PlaceOf(HWND dialog, int id) { return PlaceOf(dialog, Item(dialog, id)); }

inline std::vector<HWND> VisibleChildren(HWND dialog) {
    std::vector<HWND> children;
    for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        if ((GetWindowLongPtrW(child, GWL_STYLE) & WS_VISIBLE) != 0) children.push_back(child);
    }
    return children;
}

inline int ScaledPixels(int at96) {
    const HDC device = GetDC(nullptr);
    const int scaled = MulDiv(at96, GetDeviceCaps(device, LOGPIXELSY), 96);
    ReleaseDC(nullptr, device);
    return scaled;
}

inline int TextWidthOf(HWND control) {
    const HDC device = GetDC(control);
    const HGDIOBJ before =
        SelectObject(device, reinterpret_cast<HGDIOBJ>(SendMessageW(control, WM_GETFONT, 0, 0)));
    const std::wstring text = WithoutMark(TextOf(control));
    SIZE size = {};
    GetTextExtentPoint32W(device, text.c_str(), static_cast<int>(text.size()), &size);
    SelectObject(device, before);
    ReleaseDC(control, device);
    return size.cx;
}

class SearchDialogWindow : public EditorWindowTest {
  protected:
    void SetUp() override {
        EditorWindowTest::SetUp();
        ASSERT_TRUE(shell::SHInitExtraControls());
        TheOptions().histLen = 10;
        boxes.clear();
        MakeOwner(480, 640);
    }
    void TearDown() override {
        DestroyWindow(owner_);
        FreeSearchState();
        EditorWindowTest::TearDown();
    }
    void MakeOwner(int width, int height) {
        if (owner_ != nullptr) DestroyWindow(owner_);
        owner_ = CreateWindowExW(0, shell_test::RecordingClass(), L"owner", WS_POPUP | WS_VISIBLE, 0, 0,
                                 width, height, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    }
    bool Find(std::function<void(HWND)> steps) const { return Run(AskForFind, std::move(steps)); }
    bool Replace(std::function<void(HWND)> steps) const { return Run(AskForReplace, std::move(steps)); }

    static void Store(const wchar_t* name, const std::wstring& units, DWORD type = REG_MULTI_SZ) {
        HKEY key = nullptr;
        RegCreateKeyExW(HKEY_CURRENT_USER, kKey, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr);
        RegSetValueExW(key, name, 0, type, reinterpret_cast<const BYTE*>(units.data()),
                       static_cast<DWORD>(units.size() * sizeof(wchar_t)));
        RegCloseKey(key);
    }
    // All its units, zeros too.
    static std::wstring Stored(const wchar_t* name) {
        DWORD bytes = 0;
        if (RegGetValueW(HKEY_CURRENT_USER, kKey, name, RRF_RT_REG_MULTI_SZ | RRF_NOEXPAND, nullptr, nullptr,
                         &bytes) != ERROR_SUCCESS) {
            return L"missing";
        }
        HKEY key = nullptr;
        RegOpenKeyExW(HKEY_CURRENT_USER, kKey, 0, KEY_READ, &key);
        RegQueryValueExW(key, name, nullptr, nullptr, nullptr, &bytes);
        std::wstring units(bytes / sizeof(wchar_t), L'\0');
        RegQueryValueExW(key, name, nullptr, nullptr, reinterpret_cast<BYTE*>(units.data()), &bytes);
        RegCloseKey(key);
        return units;
    }

    RegistrySandbox sandbox_;
    HWND owner_ = nullptr;

  private:
    bool Run(bool (*ask)(WindowHandle), std::function<void(HWND)> steps) const {
        script = std::move(steps);
        played = false;
        SetTimer(nullptr, 0, 30, Play);
        const bool confirmed = ask(FromHwnd(owner_));
        EXPECT_TRUE(played) << "the dialog did not open";
        return confirmed;
    }
};

inline std::wstring Units(const wchar_t* text, size_t count) { return {text, count}; }

}  // namespace nira::search_dialog_test
