// What the editor asks of the shell around it when memory runs short.
#pragma once

#include <cstdint>

#include "platform/handles.h"

namespace nira {

// Asks the shell to make `bytes` of memory available, by closing other applications if need be. A desktop
// records the request and closes nothing.
void RequestFreeMemory(uint32_t bytes);

// The bytes of the latest request; 0 when there has been none.
uint32_t LastMemoryRequest();

// Shows the shell's standard out-of-memory box and waits for it. `owner` may be null.
void ShowOutOfMemoryBox(WindowHandle owner);

}  // namespace nira
