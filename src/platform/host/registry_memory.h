// The host's registry: keys in memory, compared without case, that tests fill and look into.
//
// None of these calls counts as a registry call or fails on demand.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/registry.h"

namespace nira {

struct RegistryMemoryValue {
    std::u16string name;
    RegistryType type;
    std::vector<uint8_t> bytes;
};

// Forgets every key. Handles still open then point to nothing: close them before.
void RegistryMemoryReset();

// Sets a value, making the key when it is missing.
void RegistryMemorySet(RegistryRoot root, const char16_t* path, const char16_t* name, RegistryType type,
                       const void* data, uint32_t size);
void RegistryMemorySetString(RegistryRoot root, const char16_t* path, const char16_t* name,
                             const char16_t* text);
void RegistryMemorySetDword(RegistryRoot root, const char16_t* path, const char16_t* name, uint32_t value);

// Null when there is no such key or value. Valid until the key changes.
const RegistryMemoryValue* RegistryMemoryFind(RegistryRoot root, const char16_t* path, const char16_t* name);

// The values of a key, in the order they were first set. Empty for a missing key.
std::vector<RegistryMemoryValue> RegistryMemoryValues(RegistryRoot root, const char16_t* path);

bool RegistryMemoryHasKey(RegistryRoot root, const char16_t* path);
void RegistryMemoryDeleteKey(RegistryRoot root, const char16_t* path);

// Handles open now.
size_t RegistryMemoryOpenHandles();

}  // namespace nira
