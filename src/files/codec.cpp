#include "files/codec.h"

#include <limits>

#include "app/services/memory.h"

namespace nira {

void* RoomForOutput(void* block, uint64_t bytes, ReallocCallback grow) {
    if (bytes <= MemSize(nullptr, block)) return block;
    if (bytes > std::numeric_limits<uint32_t>::max()) OutOfMemory(true);
    return grow(block, static_cast<uint32_t>(bytes));
}

}  // namespace nira
