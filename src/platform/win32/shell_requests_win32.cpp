#include "platform/shell_requests.h"

#include "platform/win32/casts.h"
#include "shell/low_memory.h"

namespace nira {

void RequestFreeMemory(uint32_t bytes) { shell::SHCloseApps(bytes); }

uint32_t LastMemoryRequest() { return shell::LastCloseAppsRequest(); }

void ShowOutOfMemoryBox(WindowHandle owner) { shell::SHShowOutOfMemory(ToHwnd(owner), 0); }

}  // namespace nira
