#pragma once

#include <cstddef>

// Text handed out by the stand-in's operations.
namespace shell {

// Room for `length` code units and a NUL, zeroed. Null with ERROR_NOT_ENOUGH_MEMORY. Freed with
// FreeShellText.
wchar_t* AllocShellText(size_t length);

// Frees text of this folder's operations. Null is allowed.
void FreeShellText(wchar_t* text);

}  // namespace shell
