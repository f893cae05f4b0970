#include "platform/registry.h"

#include <cstring>
#include <map>

#include "base/utf16.h"
#include "platform/host/faults.h"
#include "platform/host/last_error.h"
#include "platform/host/registry_memory.h"

namespace nira {

namespace {

using Key = std::vector<RegistryMemoryValue>;
using KeyName = std::pair<RegistryRoot, std::u16string>;

std::map<KeyName, Key> keys;
size_t openHandles = 0;

char16_t Folded(char16_t unit) {
    const bool upper = (unit >= u'A' && unit <= u'Z') || (unit >= 0xC0 && unit <= 0xDE && unit != 0xD7);
    return upper ? static_cast<char16_t>(unit + 0x20) : unit;
}

std::u16string FoldedText(const char16_t* text) {
    std::u16string folded;
    for (; text != nullptr && *text != 0; ++text) folded += Folded(*text);
    return folded;
}

KeyName NameOf(RegistryRoot root, const char16_t* path) { return {root, FoldedText(path)}; }

Key* FindKey(const KeyName& name) {
    const auto found = keys.find(name);
    return found != keys.end() ? &found->second : nullptr;
}

RegistryMemoryValue* FindValue(Key* key, const char16_t* name) {
    if (key == nullptr) return nullptr;
    const std::u16string wanted = FoldedText(name);
    for (RegistryMemoryValue& value : *key) {
        if (FoldedText(value.name.c_str()) == wanted) return &value;
    }
    return nullptr;
}

void StoreValue(Key* key, const char16_t* name, RegistryType type, const void* data, uint32_t size) {
    const auto* first = static_cast<const uint8_t*>(data);
    std::vector<uint8_t> bytes(first, first + size);
    RegistryMemoryValue* value = FindValue(key, name);
    if (value == nullptr) {
        key->push_back({name != nullptr ? name : u"", type, std::move(bytes)});
    } else {
        value->type = type;
        value->bytes = std::move(bytes);
    }
}

bool Fail(uint32_t error) {
    HostSetLastError(error);
    return false;
}

}  // namespace

struct RegistryTag {
    KeyName name;
    bool writable;
};

namespace {

RegistryHandle NewHandle(const KeyName& name, bool writable) {
    ++openHandles;
    return new RegistryTag{name, writable};
}

// The key that the handle stands for; null with a last error when there is none.
Key* KeyOf(RegistryHandle handle) {
    Key* key = handle != nullptr ? FindKey(handle->name) : nullptr;
    if (key == nullptr) Fail(kErrorInvalidHandle);
    return key;
}

}  // namespace

RegistryHandle RegistryCreate(RegistryRoot root, const char16_t* path) {
    if (FaultStrikes(FaultPoint::kRegistryCreate)) return nullptr;
    if (path == nullptr || *path == u'\\') {
        Fail(kErrorBadPathName);
        return nullptr;
    }
    const KeyName name = NameOf(root, path);
    keys[name];
    return NewHandle(name, true);
}

RegistryHandle RegistryOpen(RegistryRoot root, const char16_t* path) {
    if (FaultStrikes(FaultPoint::kRegistryOpen)) return nullptr;
    const KeyName name = NameOf(root, path);
    if (FindKey(name) == nullptr) {
        Fail(path != nullptr && *path == u'\\' ? kErrorBadPathName : kErrorFileNotFound);
        return nullptr;
    }
    return NewHandle(name, false);
}

void RegistryClose(RegistryHandle key) {
    if (key == nullptr) return;
    --openHandles;
    delete key;
}

bool RegistryQuery(RegistryHandle key, const char16_t* name, void* data, uint32_t* size, RegistryType* type) {
    if (FaultStrikes(FaultPoint::kRegistryQuery)) return false;
    Key* values = KeyOf(key);
    if (values == nullptr) return false;
    const RegistryMemoryValue* value = FindValue(values, name);
    if (value == nullptr) return Fail(kErrorFileNotFound);
    if (type != nullptr) *type = value->type;
    const uint32_t room = *size;
    *size = static_cast<uint32_t>(value->bytes.size());
    if (data == nullptr) return true;
    if (room < *size) return Fail(kErrorMoreData);
    if (*size > 0) std::memcpy(data, value->bytes.data(), *size);
    return true;
}

bool RegistrySet(RegistryHandle key, const char16_t* name, RegistryType type, const void* data,
                 uint32_t size) {
    if (FaultStrikes(FaultPoint::kRegistrySet)) return false;
    Key* values = KeyOf(key);
    if (values == nullptr) return false;
    if (!key->writable) return Fail(kErrorAccessDenied);
    StoreValue(values, name, type, data, size);
    return true;
}

bool RegistryQueryInfo(RegistryHandle key, uint32_t* count, uint32_t* longestName) {
    if (FaultStrikes(FaultPoint::kRegistryInfo)) return false;
    const Key* values = KeyOf(key);
    if (values == nullptr) return false;
    *count = static_cast<uint32_t>(values->size());
    *longestName = 0;
    for (const RegistryMemoryValue& value : *values) {
        if (value.name.size() > *longestName) *longestName = static_cast<uint32_t>(value.name.size());
    }
    return true;
}

bool RegistryEnumValue(RegistryHandle key, uint32_t index, char16_t* name, uint32_t* nameLength) {
    if (FaultStrikes(FaultPoint::kRegistryEnum)) return false;
    const Key* values = KeyOf(key);
    if (values == nullptr) return false;
    if (index >= values->size()) return Fail(kErrorNoMoreItems);
    const std::u16string& found = (*values)[index].name;
    if (*nameLength < found.size() + 1) return Fail(kErrorMoreData);
    *nameLength = static_cast<uint32_t>(Utf16Copy(name, *nameLength, found.c_str()));
    return true;
}

bool RegistryDeleteValue(RegistryHandle key, const char16_t* name) {
    if (FaultStrikes(FaultPoint::kRegistryDelete)) return false;
    Key* values = KeyOf(key);
    if (values == nullptr) return false;
    if (!key->writable) return Fail(kErrorAccessDenied);
    const RegistryMemoryValue* value = FindValue(values, name);
    if (value == nullptr) return Fail(kErrorFileNotFound);
    values->erase(values->begin() + (value - values->data()));
    return true;
}

void RegistryMemoryReset() { keys.clear(); }

void RegistryMemorySet(RegistryRoot root, const char16_t* path, const char16_t* name, RegistryType type,
                       const void* data, uint32_t size) {
    StoreValue(&keys[NameOf(root, path)], name, type, data, size);
}

void RegistryMemorySetString(RegistryRoot root, const char16_t* path, const char16_t* name,
                             const char16_t* text) {
    const auto size = static_cast<uint32_t>((Utf16Length(text) + 1) * sizeof(char16_t));
    RegistryMemorySet(root, path, name, RegistryType::kString, text, size);
}

void RegistryMemorySetDword(RegistryRoot root, const char16_t* path, const char16_t* name, uint32_t value) {
    RegistryMemorySet(root, path, name, RegistryType::kDword, &value, sizeof(value));
}

const RegistryMemoryValue* RegistryMemoryFind(RegistryRoot root, const char16_t* path, const char16_t* name) {
    return FindValue(FindKey(NameOf(root, path)), name);
}

std::vector<RegistryMemoryValue> RegistryMemoryValues(RegistryRoot root, const char16_t* path) {
    const Key* key = FindKey(NameOf(root, path));
    return key != nullptr ? *key : Key{};
}

bool RegistryMemoryHasKey(RegistryRoot root, const char16_t* path) {
    return FindKey(NameOf(root, path)) != nullptr;
}

void RegistryMemoryDeleteKey(RegistryRoot root, const char16_t* path) { keys.erase(NameOf(root, path)); }

size_t RegistryMemoryOpenHandles() { return openHandles; }

}  // namespace nira
