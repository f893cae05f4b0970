// Window procedures and commands as tables of (identifier, handler) pairs.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/handles.h"

namespace nira {

// Gets the window, the identifier and the two parameters of the message (for a command: the control and the
// notification code); its result is the window procedure's.
using MessageHandler = intptr_t (*)(WindowHandle window, uint32_t identifier, uintptr_t first,
                                    intptr_t second);

struct MessageEntry {
    uint32_t identifier;
    MessageHandler handler;
};

// A table and the number of pairs that are scanned.
struct MessageTable {
    const MessageEntry* entries;
    size_t count;
};

// The first entry with this identifier; null when there is none.
const MessageEntry* FindMessage(const MessageTable& table, uint32_t identifier);

}  // namespace nira
