// Text on the system's clipboard.
#pragma once

#include <cstdint>

#include "platform/handles.h"

namespace nira {

// Replaces what is on the clipboard by a copy of `units` units. False when the clipboard is in use, cannot be
// emptied, or has no memory for the text.
bool ClipboardPutText(WindowHandle owner, const char16_t* text, uint32_t units);

// Opens the clipboard for reading. False when another program holds it. Close it in every other case.
bool ClipboardOpen(WindowHandle owner);

// The text that is there, up to its terminating zero or to the end of its block; null when there is none. It
// belongs to the clipboard and is valid until ClipboardClose.
const char16_t* ClipboardText(uint32_t* units);

void ClipboardClose();

}  // namespace nira
