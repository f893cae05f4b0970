#include "platform/heap.h"

#include <windows.h>

namespace nira {

namespace {
HANDLE ToHeap(HeapHandle heap) { return reinterpret_cast<HANDLE>(heap); }
}  // namespace

HeapHandle PlatformHeapCreate(size_t initialSize) {
    return reinterpret_cast<HeapHandle>(HeapCreate(0, initialSize, 0));
}

void PlatformHeapDestroy(HeapHandle heap) {
    if (heap != nullptr) HeapDestroy(ToHeap(heap));
}

void* PlatformHeapAlloc(HeapHandle heap, size_t size) {
    if (heap == nullptr) return LocalAlloc(LPTR, size);
    return HeapAlloc(ToHeap(heap), HEAP_ZERO_MEMORY, size);
}

void* PlatformHeapReAlloc(HeapHandle heap, void* block, size_t size) {
    // Without "movable", a fixed block of the local heap could only grow where it lies.
    if (heap == nullptr) return LocalReAlloc(block, size, LMEM_MOVEABLE | LMEM_ZEROINIT);
    return HeapReAlloc(ToHeap(heap), HEAP_ZERO_MEMORY, block, size);
}

void PlatformHeapFree(HeapHandle heap, void* block) {
    if (block == nullptr) return;
    if (heap == nullptr) {
        LocalFree(block);
    } else {
        HeapFree(ToHeap(heap), 0, block);
    }
}

size_t PlatformHeapSize(HeapHandle heap, const void* block) {
    if (block == nullptr) return 0;
    if (heap == nullptr) return LocalSize(const_cast<void*>(block));
    return HeapSize(ToHeap(heap), 0, block);
}

}  // namespace nira
