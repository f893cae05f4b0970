// The string table.
#pragma once

#include <cstdint>

namespace nira {

// The resource's own text of entry `id`, terminated in the resource; never freed. An empty text when there is
// no such entry.
const char16_t* PlatformString(uint32_t id);

}  // namespace nira
