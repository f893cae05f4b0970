// Text on the system's clipboard.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/handles.h"

namespace nira {

// Memory for a text of `units` units, its terminator already there, to be filled and handed to ClipboardPut.
// Null when there is none. A large selection is copied once, into the block that the clipboard keeps.
char16_t* ClipboardAllocate(size_t units);

// Replaces what is on the clipboard by that text. Takes the block over in every case. False when the
// clipboard is in use or refuses the text.
bool ClipboardPut(WindowHandle owner, char16_t* block, size_t units);

// Opens the clipboard for reading. False when another program holds it. Close it in every other case.
bool ClipboardOpen(WindowHandle owner);

// The text that is there, up to its terminating zero or to the end of its block; null when there is none. It
// belongs to the clipboard and is valid until ClipboardClose.
const char16_t* ClipboardText(uint32_t* units);

void ClipboardClose();

}  // namespace nira
