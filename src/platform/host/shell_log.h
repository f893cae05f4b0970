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
};

const ShellLog& HostShellLog();
void HostShellLogReset();

}  // namespace nira
