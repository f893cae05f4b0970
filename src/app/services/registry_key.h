// An open registry key that owns the last value read from it.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/handles.h"
#include "platform/registry.h"

namespace nira {

struct RegKey {
    RegistryHandle handle;
    void* value;         // the last value read; null when none
    uint32_t valueSize;  // its bytes as the registry holds them
};

// Opens a key, making it when missing. One leading backslash of `path` is taken off: callers keep the
// customary form with it. Null on failure, also when memory ran out. Close with RegKeyClose.
RegKey* RegKeyOpen(RegistryRoot root, const char16_t* path);

// The same for an existing key, opened for reading only; a missing key is not made.
RegKey* RegKeyOpenExisting(RegistryRoot root, const char16_t* path);

// Closes and frees everything. Null is ignored.
void RegKeyClose(RegKey* key);

// Reads a value, whatever its type. Returns its bytes and their number, or null (and 0) when it is missing or
// unreadable. Owned by the key, valid until its next query or its close. A null key finds nothing. Four zero
// bytes stand behind the value, so that a text without terminator, or of an odd number of bytes, ends where
// its bytes end.
const void* RegKeyQuery(RegKey* key, const char16_t* name, uint32_t* size);

// Two uses of RegKeyQuery. The text's bytes up to its first zero unit, or null when missing. The value's
// first 32 bits, or `missing` when there are not that many.
const char16_t* RegKeyQueryText(RegKey* key, const char16_t* name);
uint32_t RegKeyQueryDword(RegKey* key, const char16_t* name, uint32_t missing);

// A third one, for a list of texts (REG_MULTI_SZ), which alone is read with regard to its type: the list's
// units and their number, terminators included; null and 0 when there is no such list.
const char16_t* RegKeyQueryTexts(RegKey* key, const char16_t* name, uint32_t* units);

// Writes; false on failure.
bool RegKeySetString(RegKey* key, const char16_t* name, const char16_t* text);
bool RegKeySetDword(RegKey* key, const char16_t* name, uint32_t value);

// Writes a list of texts, given as `units` units with each text's terminator, and adds the list's own. False
// on failure, also when memory ran out.
bool RegKeySetTexts(RegKey* key, const char16_t* name, const char16_t* texts, size_t units);

// Number of values and the longest value name in units; both 0 on failure.
void RegKeyQueryInfo(RegKey* key, uint32_t* count, uint32_t* longestName);

// True when a value name was returned. *nameLength as for RegistryEnumValue.
bool RegKeyEnumValue(RegKey* key, uint32_t index, char16_t* name, uint32_t* nameLength);

bool RegKeyDeleteValue(RegKey* key, const char16_t* name);

}  // namespace nira
