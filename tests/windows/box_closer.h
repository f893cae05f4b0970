// Somebody who closes the error box of a call under test.
#pragma once

#include <windows.h>

#include <string>

namespace nira {

// What the box said that the closer met; a thread of its own, because the box waits.
class BoxCloser {
  public:
    BoxCloser() { thread_ = CreateThread(nullptr, 0, Run, this, 0, nullptr); }
    // Waits for the box and returns its text; empty when none came within ten seconds.
    std::wstring Text() {
        WaitForSingleObject(thread_, 20000);
        CloseHandle(thread_);
        return text_;
    }

  private:
    static DWORD WINAPI Run(void* self) {
        auto* closer = static_cast<BoxCloser*>(self);
        for (int i = 0; i < 200; ++i, Sleep(50)) {
            const HWND box = FindWindowW(L"#32770", L"Error");
            const HWND label = box != nullptr ? GetDlgItem(box, 0xFFFF) : nullptr;
            DWORD process = 0;
            if (box != nullptr) GetWindowThreadProcessId(box, &process);
            if (label == nullptr || process != GetCurrentProcessId()) continue;
            wchar_t text[200] = {};
            SendMessageW(label, WM_GETTEXT, 200, reinterpret_cast<LPARAM>(text));
            closer->text_ = text;
            PostMessageW(box, WM_COMMAND, IDOK, 0);
            // A box that has just opened may drop its first message.
            for (int j = 0; j < 100 && IsWindow(box); ++j) {
                Sleep(50);
                PostMessageW(box, WM_COMMAND, IDOK, 0);
            }
            break;
        }
        return 0;
    }

    HANDLE thread_;
    std::wstring text_;
};

}  // namespace nira
