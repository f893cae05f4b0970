#include "shell/root_paths.h"

#include <wchar.h>

#include "shell/shell_text.h"

namespace shell {

namespace {

bool IsLetter(wchar_t unit) { return (unit >= L'A' && unit <= L'Z') || (unit >= L'a' && unit <= L'z'); }

// A component that is nothing but a drive: `C:` up to a backslash or the end.
bool IsDrive(const wchar_t* component) {
    return IsLetter(component[0]) && component[1] == L':' && (component[2] == 0 || component[2] == L'\\');
}

// The last component that is a drive, or null.
const wchar_t* LastDrive(const wchar_t* path) {
    const wchar_t* found = nullptr;
    for (const wchar_t* at = path; at; at = wcschr(at, L'\\')) {
        if (*at == L'\\') {
            ++at;
        }
        if (IsDrive(at)) {
            found = at;
        }
    }
    return found;
}

wchar_t* Join(const wchar_t* first, size_t firstLength, const wchar_t* second) {
    const size_t secondLength = wcslen(second);
    wchar_t* result = AllocShellText(firstLength + secondLength);
    if (result) {
        wmemcpy(result, first, firstLength);
        wmemcpy(result + firstLength, second, secondLength);
    }
    return result;
}

// `C:` alone would mean the current folder of that drive.
wchar_t* PathOnDrive(const wchar_t* path) {
    return path[2] == 0 ? Join(path, 2, L"\\") : Join(path, 0, path);
}

// Removes the backslash at the end, unless the path is the root of a drive.
void DropLastBackslash(wchar_t* path) {
    const size_t length = wcslen(path);
    if (length > 3 && path[length - 1] == L'\\') {
        path[length - 1] = 0;
    }
}

}  // namespace

wchar_t* PathFromRoot(const wchar_t* path, const wchar_t* home) {
    if (path[0] == L'\\' && path[1] == L'\\') {
        return Join(path, 0, path);
    }
    if (const wchar_t* drive = LastDrive(path)) {
        return PathOnDrive(drive);
    }
    if (path[0] != L'\\') {
        return Join(path, 0, path);
    }
    size_t homeLength = wcslen(home);
    if (homeLength > 0 && home[homeLength - 1] == L'\\') {
        --homeLength;
    }
    wchar_t* result = Join(home, homeLength, path);
    // The root folder itself is the home folder; `C:\` keeps its backslash.
    if (result && path[1] == 0) {
        DropLastBackslash(result);
    }
    return result;
}

wchar_t* DosPathOfWineHome(const wchar_t* ntPath) {
    constexpr const wchar_t* kNtPrefix = L"\\??\\";
    constexpr const wchar_t* kUnixPrefix = L"unix\\";
    if (wcsncmp(ntPath, kNtPrefix, 4) != 0) {
        return nullptr;
    }
    const wchar_t* path = ntPath + 4;
    wchar_t* result = nullptr;
    if (IsDrive(path)) {
        result = PathOnDrive(path);
    } else if (wcsncmp(path, kUnixPrefix, 5) == 0) {
        // Wine keeps the host's root folder as drive Z:.
        result = Join(L"Z:\\", 3, path + 5);
    }
    if (result) {
        DropLastBackslash(result);
    }
    return result;
}

namespace {

wchar_t* EnvironmentText(const wchar_t* name) {
    const DWORD room = GetEnvironmentVariableW(name, nullptr, 0);
    if (room == 0) {
        return nullptr;
    }
    wchar_t* value = AllocShellText(room);
    if (value && GetEnvironmentVariableW(name, value, room) >= room) {
        FreeShellText(value);
        return nullptr;
    }
    return value;
}

}  // namespace

wchar_t* HomeFolder() {
    if (wchar_t* wineHome = EnvironmentText(L"WINEHOMEDIR")) {
        wchar_t* path = DosPathOfWineHome(wineHome);
        FreeShellText(wineHome);
        if (path) {
            return path;
        }
    }
    wchar_t* profile = EnvironmentText(L"USERPROFILE");
    if (profile) {
        DropLastBackslash(profile);
    }
    return profile;
}

wchar_t* DesktopPath(const wchar_t* path) {
    if (path[0] != L'\\' || path[1] == L'\\') {
        return PathFromRoot(path, L"");
    }
    wchar_t* home = HomeFolder();
    if (!home) {
        return nullptr;
    }
    wchar_t* result = PathFromRoot(path, home);
    FreeShellText(home);
    return result;
}

}  // namespace shell
