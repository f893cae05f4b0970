#include "platform/host/checked_blocks.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <unordered_map>

namespace nira {

struct CheckedBlocks {
    std::unordered_map<const void*, size_t> sizes;
};

namespace {

// A sanitizer ends the process on sizes that it cannot serve, where a heap only says no.
constexpr size_t kImpossible = size_t{1} << 34;

size_t SizeOfOwn(const CheckedBlocks* heap, const void* block) {
    const auto found = heap->sizes.find(block);
    if (found == heap->sizes.end()) {
        std::fputs("a block was handed to a heap that does not own it\n", stderr);
        std::abort();
    }
    return found->second;
}

}  // namespace

CheckedBlocks* CheckedCreate() { return new CheckedBlocks; }

void CheckedDestroy(CheckedBlocks* heap) {
    if (heap == nullptr) return;
    for (const auto& entry : heap->sizes) std::free(const_cast<void*>(entry.first));
    delete heap;
}

void* CheckedAlloc(CheckedBlocks* heap, size_t size) {
    if (size > kImpossible) return nullptr;
    void* block = std::calloc(1, size);
    if (block != nullptr) heap->sizes[block] = size;
    return block;
}

void* CheckedReAlloc(CheckedBlocks* heap, void* block, size_t size) {
    const size_t oldSize = SizeOfOwn(heap, block);
    void* moved = CheckedAlloc(heap, size);
    if (moved == nullptr) return nullptr;
    std::memcpy(moved, block, oldSize < size ? oldSize : size);
    CheckedFree(heap, block);
    return moved;
}

void CheckedFree(CheckedBlocks* heap, void* block) {
    if (block == nullptr) return;
    SizeOfOwn(heap, block);
    heap->sizes.erase(block);
    std::free(block);
}

size_t CheckedBlockSize(const CheckedBlocks* heap, const void* block) {
    return block == nullptr ? 0 : SizeOfOwn(heap, block);
}

size_t CheckedLiveBlocks(const CheckedBlocks* heap) { return heap->sizes.size(); }

}  // namespace nira
