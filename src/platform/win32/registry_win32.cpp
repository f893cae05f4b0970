#include "platform/registry.h"

#include "platform/win32/casts.h"

namespace nira {

namespace {

HKEY ToKey(RegistryHandle key) { return reinterpret_cast<HKEY>(key); }

HKEY RootKey(RegistryRoot root) {
    return root == RegistryRoot::kCurrentUser ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE;
}

// The registry's calls return their error; everywhere else the program finds it in the last error.
bool Succeeded(LSTATUS status) {
    if (status != ERROR_SUCCESS) SetLastError(static_cast<DWORD>(status));
    return status == ERROR_SUCCESS;
}

}  // namespace

RegistryHandle RegistryCreate(RegistryRoot root, const char16_t* path) {
    HKEY key = nullptr;
    const LSTATUS status = RegCreateKeyExW(RootKey(root), ToWide(path), 0, nullptr, 0, KEY_READ | KEY_WRITE,
                                           nullptr, &key, nullptr);
    return Succeeded(status) ? reinterpret_cast<RegistryHandle>(key) : nullptr;
}

RegistryHandle RegistryOpen(RegistryRoot root, const char16_t* path) {
    HKEY key = nullptr;
    const LSTATUS status = RegOpenKeyExW(RootKey(root), ToWide(path), 0, KEY_READ, &key);
    return Succeeded(status) ? reinterpret_cast<RegistryHandle>(key) : nullptr;
}

void RegistryClose(RegistryHandle key) {
    if (key != nullptr) RegCloseKey(ToKey(key));
}

bool RegistryQuery(RegistryHandle key, const char16_t* name, void* data, uint32_t* size, RegistryType* type) {
    DWORD bytes = data != nullptr ? *size : 0;
    DWORD found = 0;
    const LSTATUS status =
        RegQueryValueExW(ToKey(key), ToWide(name), nullptr, &found, static_cast<BYTE*>(data), &bytes);
    if (!Succeeded(status)) return false;
    *size = bytes;
    if (type != nullptr) *type = static_cast<RegistryType>(found);
    return true;
}

bool RegistrySet(RegistryHandle key, const char16_t* name, RegistryType type, const void* data,
                 uint32_t size) {
    return Succeeded(RegSetValueExW(ToKey(key), ToWide(name), 0, static_cast<DWORD>(type),
                                    static_cast<const BYTE*>(data), size));
}

bool RegistryQueryInfo(RegistryHandle key, uint32_t* count, uint32_t* longestName) {
    DWORD values = 0;
    DWORD longest = 0;
    const LSTATUS status = RegQueryInfoKeyW(ToKey(key), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                            &values, &longest, nullptr, nullptr, nullptr);
    if (!Succeeded(status)) return false;
    *count = values;
    *longestName = longest;
    return true;
}

bool RegistryEnumValue(RegistryHandle key, uint32_t index, char16_t* name, uint32_t* nameLength) {
    DWORD length = *nameLength;
    const LSTATUS status =
        RegEnumValueW(ToKey(key), index, ToWide(name), &length, nullptr, nullptr, nullptr, nullptr);
    if (!Succeeded(status)) return false;
    *nameLength = length;
    return true;
}

bool RegistryDeleteValue(RegistryHandle key, const char16_t* name) {
    return Succeeded(RegDeleteValueW(ToKey(key), ToWide(name)));
}

}  // namespace nira
