#include "platform/heap.h"
#include "platform/host/arena.h"
#include "platform/host/checked_blocks.h"
#include "platform/host/faults.h"
#include "platform/host/heap_count.h"

#if defined(__SANITIZE_ADDRESS__)
#define NIRA_CHECKED_HEAP 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define NIRA_CHECKED_HEAP 1
#endif
#endif

namespace nira {

namespace {

size_t heapCount = 0;

#ifdef NIRA_CHECKED_HEAP

using Blocks = CheckedBlocks;
Blocks* Create(size_t) { return CheckedCreate(); }
void Destroy(Blocks* blocks) { CheckedDestroy(blocks); }
void* Alloc(Blocks* blocks, size_t size) { return CheckedAlloc(blocks, size); }
void* ReAlloc(Blocks* blocks, void* block, size_t size) { return CheckedReAlloc(blocks, block, size); }
void Free(Blocks* blocks, void* block) { CheckedFree(blocks, block); }
size_t Size(Blocks* blocks, const void* block) { return CheckedBlockSize(blocks, block); }
size_t Live(Blocks* blocks) { return CheckedLiveBlocks(blocks); }

#else

using Blocks = Arena;
Blocks* Create(size_t initialSize) { return ArenaCreate(initialSize); }
void Destroy(Blocks* blocks) { ArenaDestroy(blocks); }
void* Alloc(Blocks* blocks, size_t size) { return ArenaAlloc(blocks, size); }
void* ReAlloc(Blocks* blocks, void* block, size_t size) { return ArenaReAlloc(blocks, block, size); }
void Free(Blocks* blocks, void* block) { ArenaFree(blocks, block); }
size_t Size(Blocks*, const void* block) { return ArenaBlockSize(block); }
size_t Live(Blocks* blocks) { return ArenaLiveBlocks(blocks); }

#endif

Blocks* BlocksOf(HeapHandle heap) {
    static Blocks* local = Create(0);
    return heap == nullptr ? local : reinterpret_cast<Blocks*>(heap);
}

}  // namespace

HeapHandle PlatformHeapCreate(size_t initialSize) {
    if (FaultStrikes(FaultPoint::kAllocation)) return nullptr;
    auto* heap = reinterpret_cast<HeapHandle>(Create(initialSize));
    if (heap != nullptr) ++heapCount;
    return heap;
}

void PlatformHeapDestroy(HeapHandle heap) {
    if (heap == nullptr) return;
    --heapCount;
    Destroy(BlocksOf(heap));
}

void* PlatformHeapAlloc(HeapHandle heap, size_t size) {
    return FaultStrikes(FaultPoint::kAllocation) ? nullptr : Alloc(BlocksOf(heap), size);
}

void* PlatformHeapReAlloc(HeapHandle heap, void* block, size_t size) {
    return FaultStrikes(FaultPoint::kAllocation) ? nullptr : ReAlloc(BlocksOf(heap), block, size);
}

void PlatformHeapFree(HeapHandle heap, void* block) { Free(BlocksOf(heap), block); }

size_t PlatformHeapSize(HeapHandle heap, const void* block) { return Size(BlocksOf(heap), block); }

size_t HostHeapLiveBlocks(HeapHandle heap) { return Live(BlocksOf(heap)); }

size_t HostHeapCount() { return heapCount; }

}  // namespace nira
