// The registry: keys with named, typed values. Names are compared without case.
//
// The raw calls; app/services/registry_key.h wraps them with ownership of what was read.
#pragma once

#include <cstdint>

#include "platform/handles.h"

namespace nira {

enum class RegistryRoot { kCurrentUser, kLocalMachine };

enum class RegistryType : uint32_t { kString = 1, kBinary = 3, kDword = 4, kTexts = 7 };

// Opens `path` (no leading backslash) for reading and writing, making it when missing. Null on failure.
RegistryHandle RegistryCreate(RegistryRoot root, const char16_t* path);

// Opens an existing key for reading only. Null when it is missing or unreadable.
RegistryHandle RegistryOpen(RegistryRoot root, const char16_t* path);

void RegistryClose(RegistryHandle key);

// With null `data`: *size becomes the value's size in bytes. Otherwise reads at most *size bytes into `data`
// and sets *size to the bytes read. False when the value is missing, unreadable or larger than *size.
// *type, when given, becomes the value's type.
bool RegistryQuery(RegistryHandle key, const char16_t* name, void* data, uint32_t* size,
                   RegistryType* type = nullptr);

bool RegistrySet(RegistryHandle key, const char16_t* name, RegistryType type, const void* data,
                 uint32_t size);

// The number of values and the length in units of the longest value name, without its terminator.
bool RegistryQueryInfo(RegistryHandle key, uint32_t* count, uint32_t* longestName);

// The name of value number `index`. *nameLength is the room of `name` in units on entry (terminator included)
// and the name's length without the terminator on return. False past the last value or when the room is too
// small.
bool RegistryEnumValue(RegistryHandle key, uint32_t index, char16_t* name, uint32_t* nameLength);

bool RegistryDeleteValue(RegistryHandle key, const char16_t* name);

}  // namespace nira
