// Pop-ups for tests of what opens them, and the keys pressed in them.
#pragma once

#include <windows.h>

#include <initializer_list>

namespace shell_test {

// A pop-up of two items and a nested one.
struct TestPopup {
    HMENU nested = CreatePopupMenu();
    HMENU menu = CreatePopupMenu();
    TestPopup() {
        AppendMenuW(nested, MF_STRING, 210, L"Inner");
        AppendMenuW(menu, MF_STRING, 201, L"First");
        AppendMenuW(menu, MF_STRING, 202, L"Second");
        AppendMenuW(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(nested), L"More");
    }
    ~TestPopup() { DestroyMenu(menu); }
};

// Presses keys, one after the other, in whatever menu is open.
inline void PressInMenu(HWND bar, std::initializer_list<WPARAM> keys) {
    for (const WPARAM key : keys) {
        PostMessageW(bar, WM_KEYDOWN, key, 1);
        PostMessageW(bar, WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
    }
}

}  // namespace shell_test
