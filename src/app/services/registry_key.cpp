#include "app/services/registry_key.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "app/services/memory.h"
#include "base/utf16.h"

namespace nira {

namespace {

// Behind every value that is read, so that no reader runs past a text that was stored without its terminator.
constexpr uint32_t kTerminatorBytes = 4;

RegKey* NewKey(RegistryHandle handle) {
    if (handle == nullptr) return nullptr;
    RegKey* key = nullptr;
    if (!Guarded([&] { key = MemAllocArray<RegKey>(nullptr, 1); })) {
        RegistryClose(handle);
        return nullptr;
    }
    key->handle = handle;
    return key;
}

const char16_t* WithoutLeadingBackslash(const char16_t* path) { return path[0] == u'\\' ? path + 1 : path; }

}  // namespace

RegKey* RegKeyOpen(RegistryRoot root, const char16_t* path) {
    return NewKey(RegistryCreate(root, WithoutLeadingBackslash(path)));
}

RegKey* RegKeyOpenExisting(RegistryRoot root, const char16_t* path) {
    return NewKey(RegistryOpen(root, WithoutLeadingBackslash(path)));
}

void RegKeyClose(RegKey* key) {
    if (key == nullptr) return;
    RegistryClose(key->handle);
    MemFree(nullptr, key->value);
    MemFree(nullptr, key);
}

const void* RegKeyQuery(RegKey* key, const char16_t* name, uint32_t* size) {
    *size = 0;
    if (key == nullptr) return nullptr;
    MemFree(nullptr, key->value);
    key->value = nullptr;
    key->valueSize = 0;
    uint32_t bytes = 0;
    if (!RegistryQuery(key->handle, name, nullptr, &bytes)) return nullptr;
    void* value = nullptr;
    if (!Guarded([&] { value = MemAlloc(nullptr, size_t{bytes} + kTerminatorBytes); })) return nullptr;
    if (!RegistryQuery(key->handle, name, value, &bytes)) {
        MemFree(nullptr, value);
        return nullptr;
    }
    std::memset(static_cast<char*>(value) + bytes, 0, kTerminatorBytes);
    key->value = value;
    key->valueSize = bytes;
    *size = bytes;
    return value;
}

const char16_t* RegKeyQueryText(RegKey* key, const char16_t* name) {
    uint32_t size = 0;
    const void* value = RegKeyQuery(key, name, &size);
    if (value == nullptr) return nullptr;
    auto* text = static_cast<char16_t*>(key->value);
    text[size / sizeof(char16_t)] = 0;
    return text;
}

uint32_t RegKeyQueryDword(RegKey* key, const char16_t* name, uint32_t missing) {
    uint32_t size = 0;
    const void* value = RegKeyQuery(key, name, &size);
    uint32_t number = missing;
    if (value != nullptr && size >= sizeof(number)) std::memcpy(&number, value, sizeof(number));
    return number;
}

const char16_t* RegKeyQueryTexts(RegKey* key, const char16_t* name, uint32_t* units) {
    *units = 0;
    RegistryType type = {};
    uint32_t size = 0;
    if (key == nullptr || !RegistryQuery(key->handle, name, nullptr, &size, &type)) return nullptr;
    if (type != RegistryType::kTexts) return nullptr;
    const void* value = RegKeyQuery(key, name, &size);
    *units = size / uint32_t{sizeof(char16_t)};
    return static_cast<const char16_t*>(value);
}

bool RegKeySetString(RegKey* key, const char16_t* name, const char16_t* text) {
    if (key == nullptr) return false;
    const auto bytes = static_cast<uint32_t>((Utf16Length(text) + 1) * sizeof(char16_t));
    return RegistrySet(key->handle, name, RegistryType::kString, text == nullptr ? u"" : text, bytes);
}

bool RegKeySetDword(RegKey* key, const char16_t* name, uint32_t value) {
    if (key == nullptr) return false;
    return RegistrySet(key->handle, name, RegistryType::kDword, &value, sizeof(value));
}

bool RegKeySetTexts(RegKey* key, const char16_t* name, const char16_t* texts, size_t units) {
    constexpr size_t kMostUnits = std::numeric_limits<uint32_t>::max() / sizeof(char16_t) - 1;
    if (key == nullptr || units > kMostUnits) return false;
    char16_t* list = nullptr;
    if (!Guarded([&] { list = MemAllocArray<char16_t>(nullptr, units + 1); })) return false;
    std::copy_n(texts, units, list);
    const auto bytes = static_cast<uint32_t>((units + 1) * sizeof(char16_t));
    const bool written = RegistrySet(key->handle, name, RegistryType::kTexts, list, bytes);
    MemFree(nullptr, list);
    return written;
}

void RegKeyQueryInfo(RegKey* key, uint32_t* count, uint32_t* longestName) {
    if (key == nullptr || !RegistryQueryInfo(key->handle, count, longestName)) {
        *count = 0;
        *longestName = 0;
    }
}

bool RegKeyEnumValue(RegKey* key, uint32_t index, char16_t* name, uint32_t* nameLength) {
    return key != nullptr && RegistryEnumValue(key->handle, index, name, nameLength);
}

bool RegKeyDeleteValue(RegKey* key, const char16_t* name) {
    return key != nullptr && RegistryDeleteValue(key->handle, name);
}

}  // namespace nira
