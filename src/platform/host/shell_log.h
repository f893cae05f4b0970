// What the editor asked of the host's shell.
#pragma once

#include <cstdint>

#include "platform/handles.h"

namespace nira {

struct ShellLog {
    uint32_t requests = 0;  // calls that asked for memory
    uint32_t lastBytes = 0;
    uint32_t memoryBoxes = 0;  // out-of-memory boxes shown
    WindowHandle lastBoxOwner = nullptr;
    uint32_t longOperations = 0;
    uint32_t answers = 0;  // KeepAnswering calls of the latest long operation
};

const ShellLog& HostShellLog();
void HostShellLogReset();

// The person presses Esc at KeepAnswering call number `call`, from 1, of each long operation; 0: never.
void HostPressEscapeAt(uint32_t call);

}  // namespace nira
