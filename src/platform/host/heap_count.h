// What tests ask about the host's heaps: the way to find a leak.
#pragma once

#include <cstddef>

#include "platform/handles.h"

namespace nira {

// Blocks of `heap` not freed yet; null asks about the process's local heap.
size_t HostHeapLiveBlocks(HeapHandle heap);

// Private heaps not destroyed yet.
size_t HostHeapCount();

}  // namespace nira
