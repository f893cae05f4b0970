// nira_probe: looks at the windows of the Wine desktop, and sets up the registry, for the end-to-end tests.
//
//   nira_probe windows                       one line per visible window, children after their parent:
//                                            handle parent class left top right bottom enabled text,
//                                            tab-separated
//   nira_probe forget KEY                    deletes HKEY_CURRENT_USER\KEY with all below it
//   nira_probe number KEY NAME VALUE         sets a REG_DWORD
//   nira_probe text KEY NAME VALUE           sets a REG_SZ
//   nira_probe value KEY NAME TYPE HEX       sets a value of any type to bytes given in hexadecimal
//   nira_probe bytes KEY NAME                type and bytes of a value in hexadecimal; nothing without one
//   nira_probe values KEY                    one line per value of HKEY_CURRENT_USER\KEY: name type bytes in
//                                            hexadecimal, tab-separated
//   nira_probe end-session                   asks every top-level window of NIRA whether the session may end
//   nira_probe menu                          the items of the pop-up in front, one per line: identifier (0
//                                            for separators and nested pop-ups), states, text
//   nira_probe no-clipboard                  empties the clipboard
//   nira_probe command ID COUNT              gives a command to NIRA that many times, one after the other
//   nira_probe minimised                     1 or 0 for every top-level window of NIRA
//   nira_probe button BAR COMMAND            where on the screen a tool bar's button lies: left top right
//                                            bottom
//   nira_probe hold FILE                     keeps a file or folder open, shared with nobody, until its input
//                                            ends
//   nira_probe serve                         does the above again and again: reads a line of tab-separated
//                                            arguments, answers with the output and a line of a dot and the
//                                            exit code; keeps the Wine desktop open meanwhile. Ends with its
//                                            input. Starting a program takes a hundred times as long.
//
// Output and the served arguments are UTF-8; tabs, line ends and backslashes of texts are escaped by a
// backslash.
#include <windows.h>

#include <commctrl.h>

#include <cstdio>
#include <string>
#include <vector>

#include "watcher.h"

namespace {

using Arguments = std::vector<std::wstring>;

std::wstring Wide(const std::string& bytes) {
    int size = MultiByteToWideChar(CP_UTF8, 0, bytes.data(), static_cast<int>(bytes.size()), nullptr, 0);
    std::wstring text(static_cast<size_t>(size), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, bytes.data(), static_cast<int>(bytes.size()), text.data(), size);
    return text;
}

std::string Utf8(const std::wstring& text) {
    int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), nullptr, 0,
                                   nullptr, nullptr);
    std::string bytes(static_cast<size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), bytes.data(), size, nullptr,
                        nullptr);
    return bytes;
}

std::wstring Escaped(const std::wstring& text) {
    std::wstring result;
    for (wchar_t unit : text) {
        if (unit == L'\\') {
            result += L"\\\\";
        } else if (unit == L'\t') {
            result += L"\\t";
        } else if (unit == L'\n') {
            result += L"\\n";
        } else if (unit == L'\r') {
            result += L"\\r";
        } else {
            result += unit;
        }
    }
    return result;
}

// By message, because GetWindowTextW of another program's control gives what the window manager remembers.
// A program that hangs must not hang its observer.
std::wstring TextOf(HWND window) {
    wchar_t text[1024];
    DWORD_PTR length = 0;
    LPARAM target = reinterpret_cast<LPARAM>(text);
    if (SendMessageTimeoutW(window, WM_GETTEXT, 1024, target, SMTO_ABORTIFHUNG, 1000, &length) == 0)
        length = 0;
    return std::wstring(text, length < 1024 ? length : 1023);
}

std::wstring ClassOf(HWND window) {
    wchar_t name[256];
    int length = GetClassNameW(window, name, 256);
    return std::wstring(name, static_cast<size_t>(length));
}

void Print(HWND window, HWND parent) {
    RECT place = {};
    GetWindowRect(window, &place);
    std::printf("%llx\t%llx\t%s\t%ld\t%ld\t%ld\t%ld\t%d\t%s\n", reinterpret_cast<unsigned long long>(window),
                reinterpret_cast<unsigned long long>(parent), Utf8(Escaped(ClassOf(window))).c_str(),
                place.left, place.top, place.right, place.bottom, IsWindowEnabled(window),
                Utf8(Escaped(TextOf(window))).c_str());
}

// Of the descendants as they were all at one time: walking from window to window ends too early when the
// program changes their order meanwhile.
BOOL CALLBACK PrintDescendant(HWND window, LPARAM) {
    if (IsWindowVisible(window)) Print(window, GetAncestor(window, GA_PARENT));
    return TRUE;
}

BOOL CALLBACK PrintTree(HWND window, LPARAM) {
    if (!IsWindowVisible(window)) return TRUE;
    Print(window, nullptr);
    EnumChildWindows(window, PrintDescendant, 0);
    return TRUE;
}

// What the system does at the end of a session, for every window of the program: first the question, then the
// news.
BOOL CALLBACK EndSession(HWND window, LPARAM) {
    if (ClassOf(window) != L"NIRA") return TRUE;
    LRESULT may = SendMessageW(window, WM_QUERYENDSESSION, 0, 0);
    SendMessageW(window, WM_ENDSESSION, may != 0, 0);
    std::printf("%d\n", may != 0);
    return TRUE;
}

void WaitForEndOfInput() {
    while (std::getchar() != EOF) {
    }
}

int Hold(const wchar_t* path) {
    HANDLE file =
        CreateFileW(path, GENERIC_READ, 0, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (file == INVALID_HANDLE_VALUE) return 1;
    std::printf("held\n");
    std::fflush(stdout);
    WaitForEndOfInput();
    CloseHandle(file);
    return 0;
}

BOOL CALLBACK PrintMinimised(HWND window, LPARAM) {
    if (ClassOf(window) == L"NIRA") std::printf("%d\n", IsIconic(window) != FALSE);
    return TRUE;
}

// The hook runs in the program of the window that the question is sent to.
bool AskWatcher(HWND popup, HMODULE watcher) {
    const auto proc =
        reinterpret_cast<HOOKPROC>(reinterpret_cast<void*>(GetProcAddress(watcher, "WatchMessages")));
    const DWORD thread = GetWindowThreadProcessId(popup, nullptr);
    const HHOOK hook = SetWindowsHookExW(WH_CALLWNDPROC, proc, watcher, thread);
    if (hook == nullptr) return false;
    DWORD_PTR result = 0;
    SendMessageTimeoutW(popup, RegisterWindowMessageW(kWatcherQuestion), 0, 0, SMTO_NORMAL, 5000, &result);
    UnhookWindowsHookEx(hook);
    return true;
}

BOOL CALLBACK FindPopup(HWND window, LPARAM found) {
    if (ClassOf(window) != L"#32768" || !IsWindowVisible(window)) return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

int PrintItems(HWND popup) {
    const HMODULE watcher = LoadLibraryW(L"nira_watcher.dll");
    const HANDLE block = CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0,
                                            kWatcherUnits * sizeof(wchar_t), kWatcherBlock);
    const void* text = block != nullptr ? MapViewOfFile(block, FILE_MAP_READ, 0, 0, 0) : nullptr;
    const bool asked = watcher != nullptr && text != nullptr && AskWatcher(popup, watcher);
    if (asked) std::fputs(Utf8(static_cast<const wchar_t*>(text)).c_str(), stdout);
    if (text != nullptr) UnmapViewOfFile(text);
    if (block != nullptr) CloseHandle(block);
    if (watcher != nullptr) FreeLibrary(watcher);
    return asked ? 0 : 1;
}

// Prints nothing without an open pop-up.
int PrintMenu() {
    HWND popup = nullptr;
    EnumWindows(FindPopup, reinterpret_cast<LPARAM>(&popup));
    return popup != nullptr ? PrintItems(popup) : 0;
}

int GiveCommand(WPARAM command, int count) {
    const HWND window = FindWindowW(L"NIRA", nullptr);
    for (int i = 0; i < count; ++i) SendMessageW(window, WM_COMMAND, command, 0);
    return window != nullptr ? 0 : 1;
}

int EmptyTheClipboard() {
    if (!OpenClipboard(nullptr)) return 1;
    EmptyClipboard();
    CloseClipboard();
    return 0;
}

// The bar writes the rectangle into the memory of its own program.
int PrintButton(HWND bar, WPARAM command) {
    DWORD id = 0;
    GetWindowThreadProcessId(bar, &id);
    const HANDLE process = OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ, FALSE, id);
    if (process == nullptr) return 1;
    RECT place = {};
    void* remote = VirtualAllocEx(process, nullptr, sizeof place, MEM_COMMIT, PAGE_READWRITE);
    const bool found = remote != nullptr &&
                       SendMessageW(bar, TB_GETRECT, command, reinterpret_cast<LPARAM>(remote)) != 0 &&
                       ReadProcessMemory(process, remote, &place, sizeof place, nullptr);
    if (remote != nullptr) VirtualFreeEx(process, remote, 0, MEM_RELEASE);
    CloseHandle(process);
    MapWindowPoints(bar, nullptr, reinterpret_cast<POINT*>(&place), 2);
    if (found) std::printf("%ld %ld %ld %ld\n", place.left, place.top, place.right, place.bottom);
    return found ? 0 : 1;
}

int SetValue(const wchar_t* key, const wchar_t* name, DWORD type, const void* data, size_t size) {
    LSTATUS status = RegSetKeyValueW(HKEY_CURRENT_USER, key, name, type, data, static_cast<DWORD>(size));
    return status == ERROR_SUCCESS ? 0 : 1;
}

int SetBytes(const wchar_t* key, const wchar_t* name, const wchar_t* type, const std::wstring& digits) {
    std::vector<BYTE> bytes;
    for (size_t i = 0; i + 1 < digits.size(); i += 2) {
        bytes.push_back(static_cast<BYTE>(std::wcstoul(digits.substr(i, 2).c_str(), nullptr, 16)));
    }
    return SetValue(key, name, std::wcstoul(type, nullptr, 0), bytes.data(), bytes.size());
}

int PrintBytes(const wchar_t* key, const wchar_t* name) {
    HKEY opened = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, key, 0, KEY_READ, &opened) != ERROR_SUCCESS) return 0;
    DWORD type = 0;
    BYTE bytes[4096];
    DWORD size = sizeof bytes;
    LSTATUS status = RegQueryValueExW(opened, name, nullptr, &type, bytes, &size);
    RegCloseKey(opened);
    if (status != ERROR_SUCCESS) return status == ERROR_FILE_NOT_FOUND ? 0 : 1;
    std::printf("%lu ", type);
    for (DWORD i = 0; i < size; ++i) std::printf("%02x", bytes[i]);
    std::printf("\n");
    return 0;
}

// A key that is not there has no values.
int PrintValues(const wchar_t* path) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, path, 0, KEY_READ, &key) != ERROR_SUCCESS) return 0;
    static BYTE data[1 << 17];
    for (DWORD i = 0;; ++i) {
        wchar_t name[256];
        DWORD length = 256;
        DWORD size = sizeof data;
        DWORD type = 0;
        if (RegEnumValueW(key, i, name, &length, nullptr, &type, data, &size) != ERROR_SUCCESS) break;
        std::printf("%s\t%lu\t", Utf8(Escaped(name)).c_str(), type);
        for (DWORD byte = 0; byte < size; ++byte) std::printf("%02x", data[byte]);
        std::printf("\n");
    }
    RegCloseKey(key);
    return 0;
}

int Forget(const wchar_t* key) {
    LSTATUS status = RegDeleteTreeW(HKEY_CURRENT_USER, key);
    return status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND ? 0 : 1;
}

int Run(const Arguments& arguments) {
    const size_t count = arguments.size();
    const std::wstring what = count > 0 ? arguments[0] : L"";
    if (what == L"windows") return EnumWindows(PrintTree, 0) ? 0 : 1;
    if (what == L"end-session") return EnumWindows(EndSession, 0) ? 0 : 1;
    if (what == L"minimised") return EnumWindows(PrintMinimised, 0) ? 0 : 1;
    if (what == L"menu") return PrintMenu();
    if (what == L"no-clipboard") return EmptyTheClipboard();
    if (what == L"button" && count == 3) {
        const auto bar = std::wcstoull(arguments[1].c_str(), nullptr, 16);
        return PrintButton(reinterpret_cast<HWND>(bar), std::wcstoul(arguments[2].c_str(), nullptr, 0));
    }
    if (what == L"command" && count == 3) {
        return GiveCommand(std::wcstoul(arguments[1].c_str(), nullptr, 0), std::stoi(arguments[2]));
    }
    if (what == L"hold" && count == 2) return Hold(arguments[1].c_str());
    if (what == L"values" && count == 2) return PrintValues(arguments[1].c_str());
    if (what == L"forget" && count == 2) return Forget(arguments[1].c_str());
    if (what == L"bytes" && count == 3) return PrintBytes(arguments[1].c_str(), arguments[2].c_str());
    if (what == L"number" && count == 4) {
        DWORD value = std::wcstoul(arguments[3].c_str(), nullptr, 0);
        return SetValue(arguments[1].c_str(), arguments[2].c_str(), REG_DWORD, &value, sizeof value);
    }
    if (what == L"text" && count == 4) {
        const std::wstring& value = arguments[3];
        return SetValue(arguments[1].c_str(), arguments[2].c_str(), REG_SZ, value.c_str(),
                        (value.size() + 1) * sizeof(wchar_t));
    }
    if (what == L"value" && count == 5) {
        return SetBytes(arguments[1].c_str(), arguments[2].c_str(), arguments[3].c_str(), arguments[4]);
    }
    std::fprintf(stderr,
                 "usage: nira_probe windows | end-session | minimised | menu | no-clipboard | serve | "
                 "button BAR COMMAND | command ID COUNT | hold FILE | forget KEY | values KEY | "
                 "bytes KEY NAME | number|text KEY NAME VALUE | value KEY NAME TYPE HEX\n");
    return 2;
}

// The arguments of one line; a backslash takes the character behind it as it is.
Arguments Split(const std::string& line) {
    std::vector<std::string> parts(1);
    for (size_t i = 0; i < line.size(); ++i) {
        if (line[i] == '\t') {
            parts.emplace_back();
        } else {
            if (line[i] == '\\' && i + 1 < line.size()) ++i;
            parts.back() += line[i];
        }
    }
    Arguments arguments;
    for (const std::string& part : parts) arguments.push_back(Wide(part));
    return arguments;
}

int Serve() {
    GetDesktopWindow();
    std::string line;
    for (int unit = std::getchar(); unit != EOF; unit = std::getchar()) {
        if (unit != '\n') {
            line += static_cast<char>(unit);
            continue;
        }
        const int code = Run(Split(line));
        std::printf(".%d\n", code);
        std::fflush(stdout);
        line.clear();
    }
    return 0;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    if (count == 2 && arguments[1] == std::wstring(L"serve")) return Serve();
    return Run(Arguments(arguments + 1, arguments + count));
}
