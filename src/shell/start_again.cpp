#include "shell/start_again.h"

#include <windows.h>

#include <initializer_list>

#include "shell/shell_text.h"

namespace shell {

namespace {

constexpr DWORD kLongestWait = 10000;  // milliseconds
constexpr size_t kLongestPath = 32768;

bool Start(const wchar_t* program, wchar_t* commandLine) {
    STARTUPINFOW start = {};
    start.cb = sizeof(start);
    PROCESS_INFORMATION made = {};
    if (!CreateProcessW(program, commandLine, nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &made)) {
        return false;
    }
    WaitForInputIdle(made.hProcess, kLongestWait);
    CloseHandle(made.hThread);
    CloseHandle(made.hProcess);
    return true;
}

}  // namespace

bool StartAgain(const wchar_t* path) {
    wchar_t* program = AllocShellText(kLongestPath);
    wchar_t* line = AllocShellText(kLongestPath + static_cast<size_t>(lstrlenW(path)) + 5);
    const bool enough = program && line;
    const DWORD units = enough ? GetModuleFileNameW(nullptr, program, kLongestPath) : 0;
    bool started = false;
    if (units > 0 && units < kLongestPath) {
        // No path has a quote in it.
        for (const wchar_t* part : {L"\"", static_cast<const wchar_t*>(program), L"\" \"", path, L"\""}) {
            lstrcatW(line, part);
        }
        started = Start(program, line);
    }
    const DWORD error = GetLastError();
    FreeShellText(line);
    FreeShellText(program);
    SetLastError(error);
    return started;
}

}  // namespace shell
