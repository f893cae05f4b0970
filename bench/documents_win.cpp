// Starts a program, opens the first COUNT files of FOLDER in it (0.txt, 1.txt, ...) and prints how long it
// took, in microseconds: to open them, per document; to show the next document; to open the pop-up that lists
// them; to save all, per document; to close all, per document; and to leave with as many untitled documents,
// each.
//
//     nira_bench_documents PROGRAM FOLDER COUNT
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "resources/resource.h"

namespace {

constexpr int kTimeout = 120000;  // milliseconds
constexpr int kSteps = 15;
constexpr UINT kEditorWindow = WM_USER + 1;

HANDLE program = nullptr;

[[noreturn]] void Fail(const char* what) {
    std::fprintf(stderr, "%s\n", what);
    if (program != nullptr) TerminateProcess(program, 0);
    ExitProcess(2);
}

double Microseconds() {
    LARGE_INTEGER frequency;
    LARGE_INTEGER now;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&now);
    return static_cast<double>(now.QuadPart) * 1e6 / static_cast<double>(frequency.QuadPart);
}

LRESULT Ask(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    DWORD_PTR result = 0;
    if (SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, kTimeout, &result) == 0)
        Fail("the program does not answer");
    return static_cast<LRESULT>(result);
}

HWND Start(const std::wstring& path) {
    std::wstring command = L"\"" + path + L"\"";
    STARTUPINFOW start = {};
    start.cb = sizeof(start);
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                        &process))
        Fail("the program cannot be started");
    program = process.hProcess;
    WaitForInputIdle(program, kTimeout);
    for (int tries = 0; tries < 1000; ++tries) {
        const HWND window = FindWindowW(L"NIRA", nullptr);
        if (window != nullptr && IsWindowVisible(window)) return window;
        Sleep(20);
    }
    Fail("no window");
}

template <typename Step>
double TimeOf(Step step) {
    const double begin = Microseconds();
    step();
    return Microseconds() - begin;
}

template <typename Measurement>
double MedianOf(Measurement measure) {
    std::vector<double> times;
    for (int i = 0; i < kSteps; ++i) times.push_back(measure());
    std::nth_element(times.begin(), times.begin() + kSteps / 2, times.end());
    return times[kSteps / 2];
}

HWND OpenPopup() {
    const HWND popup = FindWindowW(L"#32768", nullptr);
    return popup != nullptr && IsWindowVisible(popup) ? popup : nullptr;
}

void AwaitPopup(bool open) {
    const ULONGLONG end = GetTickCount64() + kTimeout;
    while ((OpenPopup() != nullptr) != open) {
        if (GetTickCount64() > end) Fail("the pop-up does not come or go");
        Sleep(1);
    }
}

// By the key that opens it, until it is on the screen.
double TimeOfPopup(HWND main) {
    const double begin = Microseconds();
    PostMessageW(main, WM_SYSCOMMAND, SC_KEYMENU, L'b');
    AwaitPopup(true);
    const double time = Microseconds() - begin;
    PostMessageW(main, WM_KEYDOWN, VK_ESCAPE, 0);
    AwaitPopup(false);
    return time;
}

void Measure(const std::wstring& path, const std::wstring& folder, int count) {
    const HWND main = Start(path);
    const HWND editor = reinterpret_cast<HWND>(Ask(main, kEditorWindow, 0, 0));
    const double opening = TimeOf([&] {
        for (int i = 0; i < count; ++i) {
            const std::wstring file = folder + L"\\" + std::to_wstring(i) + L".txt";
            Ask(editor, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(file.c_str()));
        }
    });
    const auto showNext = [&] { Ask(main, WM_COMMAND, CMD_NEXT_BUFFER, 0); };
    const double next = MedianOf([&] { return TimeOf(showNext); });
    const double list = MedianOf([&] { return TimeOfPopup(main); });
    const double saving = TimeOf([&] { Ask(main, WM_COMMAND, CMD_SAVE_ALL, 0); });
    const double closing = TimeOf([&] { Ask(main, WM_COMMAND, CMD_CLOSE_ALL, 0); });
    for (int i = 1; i < count; ++i) Ask(main, WM_COMMAND, CMD_NEW, 0);
    const double leaving = TimeOf([&] {
        PostMessageW(main, WM_COMMAND, CMD_EXIT, 0);
        if (WaitForSingleObject(program, kTimeout) != WAIT_OBJECT_0) Fail("the program does not end");
    });
    std::printf("%.1f %.1f %.1f %.1f %.1f %.1f\n", opening / count, next, list, saving / count,
                closing / count, leaving / count);
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    if (argc != 4) return 1;
    Measure(argv[1], argv[2], std::stoi(argv[3]));
    return 0;
}
