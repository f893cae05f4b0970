#include "shell/exact_path.h"

#include <wchar.h>

#include "shell/shell_text.h"

namespace shell {

namespace {

bool IsPlainDrivePath(const wchar_t* path) {
    return path[0] != 0 && path[1] == L':' && path[2] == L'\\' && !wcschr(path, L'/') &&
           !wcsstr(path, L"\\.\\") && !wcsstr(path, L"\\..\\");
}

// What the system makes of a path; null on failure.
wchar_t* FullPath(const wchar_t* path) {
    const DWORD room = GetFullPathNameW(path, 0, nullptr, nullptr);
    wchar_t* full = room > 0 ? AllocShellText(room) : nullptr;
    if (!full) {
        return nullptr;
    }
    const DWORD length = GetFullPathNameW(path, room, full, nullptr);
    if (length == 0 || length >= room) {
        FreeShellText(full);
        return nullptr;
    }
    return full;
}

bool SystemChanges(const wchar_t* path) {
    wchar_t* full = FullPath(path);
    const bool changed = full && wcscmp(full, path) != 0;
    FreeShellText(full);
    return changed;
}

}  // namespace

wchar_t* ExactPath(const wchar_t* path) {
    constexpr const wchar_t* kPrefix = L"\\\\?\\";
    constexpr size_t kPrefixLength = 4;
    if (!IsPlainDrivePath(path) || !SystemChanges(path)) {
        return nullptr;
    }
    const size_t length = wcslen(path);
    wchar_t* exact = AllocShellText(kPrefixLength + length);
    if (!exact) {
        return nullptr;
    }
    wmemcpy(exact, kPrefix, kPrefixLength);
    wmemcpy(exact + kPrefixLength, path, length);
    if (GetFileAttributesW(exact) == INVALID_FILE_ATTRIBUTES) {
        FreeShellText(exact);
        return nullptr;
    }
    return exact;
}

bool NamesDevice(const wchar_t* path) {
    wchar_t* full = FullPath(path);
    const bool device = full && wcsncmp(full, L"\\\\.\\", 4) == 0;
    FreeShellText(full);
    return device;
}

}  // namespace shell
