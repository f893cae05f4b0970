// Entering this library's encodings in NIRA's list, and taking them out again. Windows only.
#pragma once

#include <cstdint>

namespace codecs {

// Below HKEY_LOCAL_MACHINE: a value's name is an encoding's, its text the path of the library.
inline constexpr const wchar_t* kEncodingsKey = L"Software\\NIRA\\Encodings";

// Enters every encoding that the system can do, with `library` (a full path) as its library. A value that
// another library has under the same name is left alone; one of an older copy of this library, a file of the
// same name in another folder, is changed. Returns the number of encodings that are this library's now; 0
// also when the list cannot be written.
uint32_t RegisterEncodings(const wchar_t* library);

// Takes out the values that name exactly this file; returns their number.
uint32_t UnregisterEncodings(const wchar_t* library);

}  // namespace codecs
