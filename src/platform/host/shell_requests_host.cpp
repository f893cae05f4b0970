#include "platform/shell_requests.h"

#include "platform/host/shell_log.h"

namespace nira {

namespace {
ShellLog shellLog;
uint32_t escapeAt = 0;
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

void BeginLongOperation() {
    ++shellLog.longOperations;
    shellLog.answers = 0;
}

bool KeepAnswering() { return ++shellLog.answers != escapeAt; }

bool AnsweringDue() { return escapeAt != 0; }

const ShellLog& HostShellLog() { return shellLog; }

void HostShellLogReset() {
    shellLog = ShellLog{};
    escapeAt = 0;
}

void HostPressEscapeAt(uint32_t call) { escapeAt = call; }

}  // namespace nira
