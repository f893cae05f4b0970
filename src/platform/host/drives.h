// The drives that the native build claims to have.
#pragma once

#include <cstdint>

namespace nira {

// Bit 0 is A; none at first.
void HostSetDrives(uint32_t letters);

}  // namespace nira
