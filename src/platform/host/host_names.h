// File names of the program and of the host, and the host's errors as the program knows them.
#pragma once

#include <cstdint>
#include <string>

namespace nira {

// The host's name of a path with backslashes. A lone surrogate becomes three bytes of its own, so that every
// name has a file of its own.
std::string HostName(const char16_t* path);

// The program's form of one name (no path) of the host. Bytes that are no UTF-8 become U+FFFD.
std::u16string ProgramName(const char* name);

// Whether Windows would allow this path; sets the last error when not.
bool NameIsValid(const char16_t* path);

// The Windows error for errno `number`, met at `name`.
uint32_t ErrorOf(int number, const std::string& name);

// Sets the last error; always false.
bool Fail(uint32_t error);

}  // namespace nira
