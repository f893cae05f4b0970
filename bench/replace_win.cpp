// Starts a program on a file, opens its Replace dialog, replaces "needle" by "pinpoint" everywhere and prints
// how long it took, in microseconds, from pressing "Replace All" until the box with the count was there.
//
//     nira_bench_replace PROGRAM FILE COUNT
#include <windows.h>

#include <cstdio>
#include <cwchar>
#include <string>

#include "resources/resource.h"

namespace {

constexpr int kTimeout = 60000;  // milliseconds

HANDLE program = nullptr;

// Another start would hand its file over to a program that still runs.
void EndProgram() {
    TerminateProcess(program, 0);
    WaitForSingleObject(program, kTimeout);
}

// Asks until the answer is a window; ends the process when none comes.
template <typename Question>
HWND Await(Question question, DWORD pause) {
    const ULONGLONG end = GetTickCount64() + kTimeout;
    for (;;) {
        const HWND window = question();
        if (window != nullptr) return window;
        if (GetTickCount64() > end) {
            EndProgram();
            ExitProcess(2);
        }
        Sleep(pause);
    }
}

HWND WindowWithTitle(const wchar_t* className, const wchar_t* part) {
    const HWND window = FindWindowW(className, nullptr);
    wchar_t title[300] = {};
    if (window == nullptr || GetWindowTextW(window, title, 300) == 0) return nullptr;
    return std::wcsstr(title, part) != nullptr ? window : nullptr;
}

HWND Box(const wchar_t* caption) { return FindWindowW(L"#32770", caption); }

// The box that says this count.
HWND BoxWithCount(const wchar_t* count) {
    const HWND box = Box(L"Information");
    if (box == nullptr) return nullptr;
    const std::wstring wanted = std::wstring(count) + L" ";
    for (HWND child = GetWindow(box, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
        wchar_t text[200] = {};
        SendMessageW(child, WM_GETTEXT, 200, reinterpret_cast<LPARAM>(text));
        if (std::wstring(text).rfind(wanted, 0) == 0) return box;
    }
    return nullptr;
}

void SetText(HWND dialog, int control, const wchar_t* text) {
    SendDlgItemMessageW(dialog, control, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text));
}

double Seconds() {
    LARGE_INTEGER frequency;
    LARGE_INTEGER now;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&now);
    return static_cast<double>(now.QuadPart) / static_cast<double>(frequency.QuadPart);
}

void Measure(const wchar_t* name, const wchar_t* count) {
    const HWND main = Await([&] { return WindowWithTitle(L"NIRA", name); }, 10);
    WaitForInputIdle(program, kTimeout);
    PostMessageW(main, WM_COMMAND, CMD_REPLACE, 0);
    const HWND dialog = Await([] { return Box(L"Replace"); }, 10);
    SetText(dialog, IDC_PATTERN, L"needle");
    SetText(dialog, IDC_REPLACEMENT, L"pinpoint");
    SendDlgItemMessageW(dialog, IDC_MATCH_CASE, BM_SETCHECK, BST_CHECKED, 0);
    Sleep(500);  // the dialog paints itself
    const double begin = Seconds();
    PostMessageW(dialog, WM_COMMAND, CMD_REPLACE_ALL, 0);
    Await([&] { return BoxWithCount(count); }, 1);
    std::printf("%.1f\n", (Seconds() - begin) * 1e6);
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    if (argc != 4) return 1;
    std::wstring command = std::wstring(L"\"") + argv[1] + L"\" " + argv[2];
    const wchar_t* slash = std::wcsrchr(argv[2], L'\\');
    STARTUPINFOW start = {};
    start.cb = sizeof(start);
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                        &process)) {
        return 1;
    }
    program = process.hProcess;
    Measure(slash != nullptr ? slash + 1 : argv[2], argv[3]);
    EndProgram();
    return 0;
}
