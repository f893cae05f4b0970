#pragma once

#include <windows.h>

// What the handheld's shell does when memory is short.
namespace shell {

// The handheld closes other applications until `bytes` are free. A desktop never does: the request is
// recorded and answered TRUE.
BOOL SHCloseApps(DWORD bytes);

// The last request made of SHCloseApps, 0 before the first.
DWORD LastCloseAppsRequest();

// Tells the person that memory is short, in a box over `owner` that itself needs next to none. `flags` is 0.
// Returns what the box returned.
int SHShowOutOfMemory(HWND owner, UINT flags);

// Replaces the box (tests, and a host that must not be blocked by one). Null restores the real one.
// Returns the one replaced, null for the real one.
using OutOfMemoryBox = int (*)(HWND owner, UINT flags);
OutOfMemoryBox SetOutOfMemoryBox(OutOfMemoryBox box);

}  // namespace shell
