// Blocks of memory from the process's local heap or from private heaps.
//
// A private heap holds everything that belongs to one document, so that closing the document is one call.
// Blocks are zero-filled when they are allocated and where they grow. Nothing here shows a message or raises
// anything: the memory services (app/services/memory.h) turn a failure into the program's one out-of-memory
// policy, and all other code goes through them.
#pragma once

#include <cstddef>

#include "platform/handles.h"

namespace nira {

// A growable private heap whose first `initialSize` bytes are at hand at once. Null on failure.
HeapHandle PlatformHeapCreate(size_t initialSize);

// Frees the heap and every block still in it. Null is ignored.
void PlatformHeapDestroy(HeapHandle heap);

// `size` > 0 zeroed bytes, aligned for any type. Null on failure.
void* PlatformHeapAlloc(HeapHandle heap, size_t size);

// Resizes a block to `size` > 0 bytes, keeping its content up to the smaller size and zeroing the growth; the
// block may move. Null on failure, and then the old block is untouched.
void* PlatformHeapReAlloc(HeapHandle heap, void* block, size_t size);

// Null is ignored.
void PlatformHeapFree(HeapHandle heap, void* block);

// The size that was asked for when the block was last allocated or resized. 0 for null.
size_t PlatformHeapSize(HeapHandle heap, const void* block);

}  // namespace nira
