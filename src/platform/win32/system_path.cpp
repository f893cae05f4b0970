#include "platform/win32/system_path.h"

#include <cwchar>

#include "platform/win32/casts.h"
#include "shell/exact_path.h"
#include "shell/root_paths.h"
#include "shell/shell_text.h"

namespace nira {

namespace {

// A folder must leave room for a short name in it, so its limit is lower than that of a file.
constexpr size_t kLongestPlainPath = MAX_PATH - 1 - 12;

bool IsDriveAbsolute(const wchar_t* path) {
    return path[0] != 0 && path[1] == L':' && (path[2] == L'\\' || path[2] == L'/');
}

// A server's path, but no device or path that has been lifted already.
bool IsServerPath(const wchar_t* path) {
    return path[0] == L'\\' && path[1] == L'\\' && path[2] != L'?' && path[2] != L'.';
}

// The prefix switches off the system's own tidying of `.`, `..`, `/` and doubled backslashes: it is done
// before.
wchar_t* Lifted(const wchar_t* path, const wchar_t* prefix, size_t dropped) {
    const DWORD room = GetFullPathNameW(path, 0, nullptr, nullptr);
    if (room == 0) return nullptr;
    const size_t head = wcslen(prefix);
    wchar_t* lifted = shell::AllocShellText(head + room);
    wchar_t* full = shell::AllocShellText(room);
    if (lifted != nullptr && full != nullptr && GetFullPathNameW(path, room, full, nullptr) != 0) {
        wmemcpy(lifted, prefix, head);
        wmemcpy(lifted + head, full + dropped, wcslen(full) - dropped + 1);
        shell::FreeShellText(full);
        return lifted;
    }
    shell::FreeShellText(lifted);
    shell::FreeShellText(full);
    return nullptr;
}

}  // namespace

SystemPath::SystemPath(const char16_t* path) : path_(nullptr) {
    if (path == nullptr) {
        SetLastError(ERROR_PATH_NOT_FOUND);
        return;
    }
    path_ = shell::DesktopPath(ToWide(path));
    if (path_ == nullptr) return;
    if (wcslen(path_) <= kLongestPlainPath) {
        KeepName();
        return;
    }
    const bool server = IsServerPath(path_);
    if (!server && !IsDriveAbsolute(path_)) return;
    wchar_t* lifted = server ? Lifted(path_, L"\\\\?\\UNC\\", 2) : Lifted(path_, L"\\\\?\\", 0);
    shell::FreeShellText(path_);
    path_ = lifted;
}

void SystemPath::KeepName() {
    wchar_t* exact = shell::ExactPath(path_);
    const bool device = exact == nullptr && shell::NamesDevice(path_);
    if (exact == nullptr && !device) return;
    shell::FreeShellText(path_);
    path_ = exact;
    if (device) SetLastError(ERROR_INVALID_NAME);
}

SystemPath::~SystemPath() { shell::FreeShellText(path_); }

}  // namespace nira
