#include "codecs/registration.h"

#include <windows.h>

#include "codecs/catalog.h"

namespace codecs {

namespace {

constexpr uint32_t kLongestPath = 32768;  // units, terminator included

const wchar_t* Wide(const char16_t* text) { return reinterpret_cast<const wchar_t*>(text); }

const wchar_t* FileNameOf(const wchar_t* path) {
    const wchar_t* name = path;
    for (; *path != 0; ++path) {
        if (*path == L'\\' || *path == L'/') name = path + 1;
    }
    return name;
}

bool SameName(const wchar_t* left, const wchar_t* right) {
    return CompareStringOrdinal(left, -1, right, -1, TRUE) == CSTR_EQUAL;
}

// The library of an encoding; false when there is no such value. A value that is no text has an empty path.
bool ReadLibrary(HKEY key, const wchar_t* name, wchar_t* path) {
    DWORD size = kLongestPath * sizeof(wchar_t);
    path[0] = 0;
    const LSTATUS status = RegGetValueW(key, nullptr, name, RRF_RT_REG_SZ, nullptr, path, &size);
    if (status != ERROR_SUCCESS) path[0] = 0;
    return status != ERROR_FILE_NOT_FOUND;
}

bool WriteLibrary(HKEY key, const wchar_t* name, const wchar_t* path) {
    const auto size = static_cast<DWORD>((static_cast<size_t>(lstrlenW(path)) + 1) * sizeof(wchar_t));
    return RegSetValueExW(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(path), size) == ERROR_SUCCESS;
}

uint32_t RegisterIn(HKEY key, const wchar_t* library, wchar_t* room) {
    uint32_t count = 0;
    for (const Entry& entry : kEntries) {
        const wchar_t* name = Wide(entry.name);
        if (!EntryIsAvailable(entry)) continue;
        const bool others = ReadLibrary(key, name, room) && !SameName(FileNameOf(room), FileNameOf(library));
        if (!others && WriteLibrary(key, name, library)) ++count;
    }
    return count;
}

uint32_t UnregisterIn(HKEY key, const wchar_t* library, wchar_t* room) {
    uint32_t count = 0;
    for (const Entry& entry : kEntries) {
        const wchar_t* name = Wide(entry.name);
        if (!ReadLibrary(key, name, room) || !SameName(room, library)) continue;
        if (RegDeleteValueW(key, name) == ERROR_SUCCESS) ++count;
    }
    return count;
}

using Work = uint32_t (*)(HKEY key, const wchar_t* library, wchar_t* room);

uint32_t WithRoom(Work work, HKEY key, const wchar_t* library) {
    auto* room = static_cast<wchar_t*>(HeapAlloc(GetProcessHeap(), 0, kLongestPath * sizeof(wchar_t)));
    const uint32_t count = room != nullptr ? work(key, library, room) : 0;
    HeapFree(GetProcessHeap(), 0, room);
    RegCloseKey(key);
    return count;
}

}  // namespace

uint32_t RegisterEncodings(const wchar_t* library) {
    HKEY key = nullptr;
    if (RegCreateKeyExW(HKEY_LOCAL_MACHINE, kEncodingsKey, 0, nullptr, 0, KEY_QUERY_VALUE | KEY_SET_VALUE,
                        nullptr, &key, nullptr) != ERROR_SUCCESS) {
        return 0;
    }
    return WithRoom(RegisterIn, key, library);
}

uint32_t UnregisterEncodings(const wchar_t* library) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, kEncodingsKey, 0, KEY_QUERY_VALUE | KEY_SET_VALUE, &key) !=
        ERROR_SUCCESS) {
        return 0;
    }
    return WithRoom(UnregisterIn, key, library);
}

}  // namespace codecs
