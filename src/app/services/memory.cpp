#include "app/services/memory.h"

#include <cstring>
#include <new>

#include "base/utf16.h"
#include "platform/heap.h"
#include "platform/shell_requests.h"

namespace nira {

namespace {

// The one exception of the program. Derived from bad_alloc because operator new may throw nothing else.
struct OutOfMemoryError : std::bad_alloc {
    uint32_t code = 1;
};

constexpr uint32_t kOutOfMemoryCode = 1;

WindowHandle boxOwner = nullptr;

void OnNewFailed() { OutOfMemory(true); }

}  // namespace

void* MemAlloc(HeapHandle heap, size_t size) {
    if (size == 0) return nullptr;
    RequestFreeMemory(static_cast<uint32_t>(size));
    void* block = PlatformHeapAlloc(heap, size);
    if (block == nullptr) OutOfMemory(true);
    return block;
}

void* MemReAlloc(HeapHandle heap, void* block, size_t size) {
    if (size == 0) {
        MemFree(heap, block);
        return nullptr;
    }
    if (block == nullptr) return MemAlloc(heap, size);
    const uint32_t difference = static_cast<uint32_t>(size) - static_cast<uint32_t>(MemSize(heap, block));
    if (difference != 0) RequestFreeMemory(difference);
    void* resized = PlatformHeapReAlloc(heap, block, size);
    if (resized == nullptr) OutOfMemory(true);
    return resized;
}

void* MemShrink(HeapHandle heap, void* block, size_t size) {
    if (block == nullptr || size == 0) return block;
    const size_t oldSize = MemSize(heap, block);
    if (oldSize <= size) return block;
    RequestFreeMemory(static_cast<uint32_t>(size) - static_cast<uint32_t>(oldSize));
    void* resized = PlatformHeapReAlloc(heap, block, size);
    return resized != nullptr ? resized : block;
}

void MemFree(HeapHandle heap, void* block) {
    if (block != nullptr) PlatformHeapFree(heap, block);
}

size_t MemSize(HeapHandle heap, const void* block) {
    return block != nullptr ? PlatformHeapSize(heap, block) : 0;
}

HeapHandle MemHeapCreate(size_t initialSize) {
    HeapHandle heap = PlatformHeapCreate(initialSize);
    if (heap == nullptr) OutOfMemory(true);
    return heap;
}

void MemHeapDestroy(HeapHandle heap) { PlatformHeapDestroy(heap); }

char16_t* MemStrDup(HeapHandle heap, const char16_t* text) {
    if (text == nullptr) return nullptr;
    const size_t units = Utf16Length(text) + 1;
    char16_t* copy = MemAllocArray<char16_t>(heap, units);
    std::memcpy(copy, text, units * sizeof(char16_t));
    return copy;
}

char16_t* MemStrCat(char16_t* text, const char16_t* tail) {
    if (tail == nullptr) return text;
    const size_t head = Utf16Length(text);
    const size_t added = Utf16Length(tail) + 1;
    char16_t* joined = MemReAllocArray<char16_t>(nullptr, text, head + added);
    std::memcpy(joined + head, tail, added * sizeof(char16_t));
    return joined;
}

void OutOfMemory(bool showBox) {
    if (showBox) ShowOutOfMemoryBox(boxOwner);
    throw OutOfMemoryError();
}

void SetMemoryBoxOwner(WindowHandle owner) { boxOwner = owner; }

void InstallOutOfMemoryPolicy() { std::set_new_handler(OnNewFailed); }

bool RunGuarded(void (*operation)(void* context), void* context) {
    try {
        operation(context);
        return true;
    } catch (const OutOfMemoryError& error) {
        if (error.code != kOutOfMemoryCode) throw;
        return false;
    }
}

}  // namespace nira
