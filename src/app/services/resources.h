// Dialogs, menu bars and accelerators from the program's resources.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/handles.h"

namespace nira {

struct AcceleratorTag;
using AcceleratorHandle = AcceleratorTag*;

// Handles a dialog's messages: gets the dialog, the message and its two parameters (for the initialising
// message the second is RunDialog's `parameter`), and returns non-zero for what it has handled. Running out
// of memory inside it ends at its caller.
using DialogHandler = intptr_t (*)(WindowHandle dialog, uint32_t message, uintptr_t first, intptr_t second);

// Runs dialog `id` modally over `owner` and returns its result; -1, after showing the reason, when it cannot
// be made.
intptr_t RunDialog(uint32_t id, WindowHandle owner, DialogHandler handler, intptr_t parameter);

// Makes the menu bar of RCDATA `id` at the bottom of `owner`; null after reporting why it cannot be made,
// which is then also in the last error.
WindowHandle CreateMenuBar(WindowHandle owner, uint32_t id);

// A table of keys; null when there is none.
AcceleratorHandle LoadKeyTable(uint32_t id);

}  // namespace nira
