// What the editor asks of the shell around it: memory when it runs short, patience when something takes long.
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

// An operation begins that may take long.
void BeginLongOperation();

// What such an operation calls at each of its steps; cheap. A quarter of a second after the beginning, and
// then twenty times a second, it lets windows paint themselves and answers the system, under the wait
// pointer. Keys and pointer do nothing and are forgotten, but for Esc and a press on an enabled Cancel, the
// dialog's or its bar's: false once there was one.
// Requests to close a window wait until the operation has ended.
bool KeepAnswering();

// Whether the next KeepAnswering will let windows paint, so that what they show must be in order.
bool AnsweringDue();

}  // namespace nira
