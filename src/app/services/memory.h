// Memory with one policy for running out of it.
//
// A heap of null is the process's local heap; any other value is a private heap made by MemHeapCreate (each
// document has one). Blocks are zero-filled when allocated and where they grow. No operation here returns
// null because memory ran out: a failed allocation shows the shell's out-of-memory box and unwinds to the
// nearest `Guarded` operation, which then returns its failure value. What an operation had built so far stays
// as it was, so an operation that must be all or nothing allocates everything before it changes anything.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "platform/handles.h"

namespace nira {

// `size` zeroed bytes; a size of 0 gives null and allocates nothing. The shell is asked for the bytes first.
void* MemAlloc(HeapHandle heap, size_t size);

// Resizes a block. Size 0 frees it and gives null; a null block means MemAlloc. The shell is asked for the
// difference to the old size in unsigned 32-bit arithmetic, unless it is 0; so a shrinking block asks for
// nearly 4 GB, a habit that has never harmed because the shell takes the number as a wish.
void* MemReAlloc(HeapHandle heap, void* block, size_t size);

// MemReAlloc to a smaller, non-zero size that cannot fail: when the heap will not shrink the block it stays
// as it is. For operations that have already changed something and must not stop half-way.
void* MemShrink(HeapHandle heap, void* block, size_t size);

// Null is ignored.
void MemFree(HeapHandle heap, void* block);

// Bytes last asked for; 0 for null.
size_t MemSize(HeapHandle heap, const void* block);

HeapHandle MemHeapCreate(size_t initialSize);

// Null is ignored.
void MemHeapDestroy(HeapHandle heap);

// A copy of a terminated text, owned by the caller; null for null.
char16_t* MemStrDup(HeapHandle heap, const char16_t* text);

// Grows `text` (a block of the local heap, or null) to hold `tail` behind it and returns the possibly moved
// block. A null tail gives back `text` unchanged.
char16_t* MemStrCat(char16_t* text, const char16_t* tail);

// Shows the shell's out-of-memory box, owned by the main window, when `showBox` is true, then unwinds with
// code 1 to the nearest Guarded operation. With false it passes a failure on that was already shown.
[[noreturn]] void OutOfMemory(bool showBox);

// The window that owns the out-of-memory box; null until there is one.
void SetMemoryBoxOwner(WindowHandle owner);

// Makes the standard library's containers follow the same policy. Called once at start-up.
void InstallOutOfMemoryPolicy();

// Runs `operation(context)`; false when it ran out of memory, true otherwise.
bool RunGuarded(void (*operation)(void* context), void* context);

// Runs a callable (no arguments, no result); false when it ran out of memory. The box has been shown by then.
template <typename Operation>
bool Guarded(Operation&& operation) {
    using Plain = std::remove_reference_t<Operation>;
    return RunGuarded([](void* context) { (*static_cast<Plain*>(context))(); },
                      const_cast<std::remove_const_t<Plain>*>(&operation));
}

// Typed forms: `count` records of T.
template <typename T>
T* MemAllocArray(HeapHandle heap, size_t count) {
    return static_cast<T*>(MemAlloc(heap, count * sizeof(T)));
}
template <typename T>
T* MemReAllocArray(HeapHandle heap, T* block, size_t count) {
    return static_cast<T*>(MemReAlloc(heap, block, count * sizeof(T)));
}

}  // namespace nira
