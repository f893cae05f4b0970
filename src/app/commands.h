// What menu items, bar buttons and keys do.
//
// Every command arrives at the main window with its identifier and is looked up in one table; four ranges of
// identifiers, whose number of commands is not fixed, come behind it.
#pragma once

#include <cstdint>

#include "app/services/message_table.h"
#include "platform/handles.h"

namespace nira {

// The commands with an identifier of their own, in the order they are looked up. A handler gets the main
// window, the identifier, the control that sent the command (0 for menus and keys) and the notification code.
MessageTable CommandTable();

// Carries out the command in a WM_COMMAND's parameters and gives the keyboard back to the editor window. The
// result is the handler's; 0 when there is none.
intptr_t OnCommand(WindowHandle window, uint32_t message, uintptr_t first, intptr_t second);

}  // namespace nira
