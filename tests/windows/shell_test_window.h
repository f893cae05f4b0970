// A window for tests of the stand-in: it records what reaches its procedure.
#pragma once

#include <windows.h>

#include <functional>
#include <vector>

namespace shell_test {

struct Received {
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
};

// What the window of the present test has received, oldest first.
inline std::vector<Received> received;
// Called for each message before it is handled.
inline std::function<void(HWND, const Received&)> onMessage;

inline LRESULT CALLBACK RecordingProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    received.push_back({message, wParam, lParam});
    if (onMessage) {
        onMessage(window, received.back());
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

inline const wchar_t* RecordingClass() {
    static const ATOM registered = [] {
        WNDCLASSW windowClass = {};
        windowClass.lpfnWndProc = RecordingProc;
        windowClass.hInstance = GetModuleHandleW(nullptr);
        windowClass.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
        windowClass.lpszClassName = L"ShellTestWindow";
        return RegisterClassW(&windowClass);
    }();
    return registered ? L"ShellTestWindow" : nullptr;
}

inline HWND MakeWindow(DWORD style, int width, int height, HWND parent = nullptr) {
    return CreateWindowExW(0, RecordingClass(), L"test", style, 10, 10, width, height, parent, nullptr,
                           GetModuleHandleW(nullptr), nullptr);
}

inline std::vector<Received> ReceivedOf(UINT message) {
    std::vector<Received> found;
    for (const Received& one : received) {
        if (one.message == message) {
            found.push_back(one);
        }
    }
    return found;
}

// Dispatches what has been posted.
inline void RunPosted() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

// Starts and ends each test without windows or records of an earlier one.
inline void Forget() {
    onMessage = nullptr;
    received.clear();
}

}  // namespace shell_test
