// What tests ask about the host's files: the way to find a file left open.
#pragma once

#include <cstddef>

namespace nira {

// Files open through platform/files.h now.
size_t HostOpenFileCount();

}  // namespace nira
