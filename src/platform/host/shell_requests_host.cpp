#include "platform/shell_requests.h"

#include "platform/host/shell_log.h"

namespace nira {

namespace {
ShellLog shellLog;
}  // namespace

void RequestFreeMemory(uint32_t bytes) {
    ++shellLog.requests;
    shellLog.lastBytes = bytes;
}

uint32_t LastMemoryRequest() { return shellLog.lastBytes; }

void ShowOutOfMemoryBox(WindowHandle owner) {
    ++shellLog.memoryBoxes;
    shellLog.lastBoxOwner = owner;
}

const ShellLog& HostShellLog() { return shellLog; }

void HostShellLogReset() { shellLog = ShellLog{}; }

}  // namespace nira
