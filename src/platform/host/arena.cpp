#include "platform/host/arena.h"

#include <sys/mman.h>

#include <bit>
#include <cstdint>
#include <cstring>
#include <new>

namespace nira {

namespace {

constexpr size_t kGranule = 16;
constexpr size_t kHeader = 8;
constexpr size_t kLargestLinear = 4096;  // cells up to here differ by one granule, larger ones by an eighth
constexpr size_t kLinearClasses = kLargestLinear / kGranule;
constexpr size_t kClasses = kLinearClasses + 6 * 8;
constexpr size_t kLargeClass = 0xFFFF;
constexpr size_t kFirstChunk = 64 * 1024;
constexpr size_t kLargestChunk = 4 * 1024 * 1024;
constexpr size_t kPage = 4096;
constexpr size_t kHugePage = size_t{2} << 20;
constexpr size_t kImpossible = size_t{1} << 46;
constexpr unsigned kSizeBits = 48;

// In front of every block: its class above kSizeBits, the size asked for below.
using Tag = uint64_t;

struct FreeCell {
    FreeCell* next;
};

struct Chunk {
    Chunk* next;
    size_t size;
};

struct Large {
    Large* previous;
    Large* next;
    size_t mapped;
    Tag tag;  // must be last: blocks find their tag right in front of them
};

static_assert(sizeof(Large) % kGranule == 0);
static_assert(sizeof(Chunk) % kGranule == 0);

}  // namespace

struct Arena {
    FreeCell* freeCells[kClasses];
    Chunk* chunks;
    Large* larges;
    char* bump;  // always kHeader before a multiple of kGranule
    char* end;
    size_t nextChunk;
    size_t reserved;
    size_t live;
};

namespace {

size_t RoundUp(size_t value, size_t unit) { return (value + unit - 1) / unit * unit; }

void* Map(size_t size) {
    void* memory = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    return memory == MAP_FAILED ? nullptr : memory;
}

Tag* TagOf(void* block) { return reinterpret_cast<Tag*>(static_cast<char*>(block) - kHeader); }

size_t ClassOf(const void* block) {
    return static_cast<size_t>(*TagOf(const_cast<void*>(block)) >> kSizeBits);
}

void SetTag(void* block, size_t cellClass, size_t size) {
    *TagOf(block) = (static_cast<Tag>(cellClass) << kSizeBits) | size;
}

Large* LargeOf(void* block) { return reinterpret_cast<Large*>(static_cast<char*>(block) - sizeof(Large)); }

// The class of the cells that hold a block of `size` bytes, and the size of such cells.
size_t ClassFor(size_t size, size_t* cell) {
    const size_t need = size + kHeader;
    if (need <= kLargestLinear) {
        *cell = RoundUp(need, kGranule);
        return *cell / kGranule - 1;
    }
    const size_t doubling = static_cast<size_t>(std::bit_width(need - 1)) - 1;
    const size_t step = size_t{1} << (doubling - 3);
    const size_t eighth = (need - 1 - (size_t{1} << doubling)) / step;
    *cell = (size_t{1} << doubling) + (eighth + 1) * step;
    return kLinearClasses + (doubling - 12) * 8 + eighth;
}

bool AddChunk(Arena* arena, size_t atLeast) {
    const size_t size =
        RoundUp(atLeast + sizeof(Chunk) + kGranule > arena->nextChunk ? atLeast + sizeof(Chunk) + kGranule
                                                                      : arena->nextChunk,
                kPage);
    auto* chunk = static_cast<Chunk*>(Map(size));
    if (chunk == nullptr) return false;
    *chunk = {arena->chunks, size};
    arena->chunks = chunk;
    arena->bump = reinterpret_cast<char*>(chunk) + sizeof(Chunk) + kGranule - kHeader;
    arena->end = reinterpret_cast<char*>(chunk) + size;
    arena->reserved += size;
    if (arena->nextChunk < kLargestChunk) arena->nextChunk *= 2;
    return true;
}

void* AllocSmall(Arena* arena, size_t size) {
    size_t cell = 0;
    const size_t cellClass = ClassFor(size, &cell);
    void* block = arena->freeCells[cellClass];
    if (block != nullptr) {
        arena->freeCells[cellClass] = arena->freeCells[cellClass]->next;
        std::memset(block, 0, size);
    } else {
        if (static_cast<size_t>(arena->end - arena->bump) < cell && !AddChunk(arena, cell)) return nullptr;
        block = arena->bump + kHeader;  // fresh from the system, so zero already
        arena->bump += cell;
    }
    SetTag(block, cellClass, size);
    ++arena->live;
    return block;
}

void LinkLarge(Arena* arena, Large* large) {
    large->previous = nullptr;
    large->next = arena->larges;
    if (large->next != nullptr) large->next->previous = large;
    arena->larges = large;
}

void UnlinkLarge(Arena* arena, Large* large) {
    if (large->previous != nullptr) {
        large->previous->next = large->next;
    } else {
        arena->larges = large->next;
    }
    if (large->next != nullptr) large->next->previous = large->previous;
}

void* AllocLarge(Arena* arena, size_t size) {
    const size_t mapped = RoundUp(size + sizeof(Large), kPage);
    auto* large = static_cast<Large*>(Map(mapped));
    // A text of a hundred megabytes would cost more for faulting in small pages than for copying it.
    if (large != nullptr && mapped >= kHugePage) madvise(large, mapped, MADV_HUGEPAGE);
    if (large == nullptr) return nullptr;
    large->mapped = mapped;
    LinkLarge(arena, large);
    void* block = large + 1;
    SetTag(block, kLargeClass, size);
    arena->reserved += mapped;
    ++arena->live;
    return block;
}

void* ReAllocLarge(Arena* arena, void* block, size_t size) {
    Large* large = LargeOf(block);
    const size_t oldSize = ArenaBlockSize(block);
    const size_t oldMapped = large->mapped;
    const size_t mapped = RoundUp(size + sizeof(Large), kPage);
    UnlinkLarge(arena, large);
    void* moved = mapped == oldMapped ? large : mremap(large, oldMapped, mapped, MREMAP_MAYMOVE);
    if (moved == MAP_FAILED) {
        LinkLarge(arena, large);
        return nullptr;
    }
    large = static_cast<Large*>(moved);
    large->mapped = mapped;
    LinkLarge(arena, large);
    arena->reserved += mapped - oldMapped;
    block = large + 1;
    // Pages that are new are zero; what lies behind the old end on the pages that stayed may not be.
    const size_t kept = (mapped < oldMapped ? mapped : oldMapped) - sizeof(Large);
    const size_t dirtyEnd = size < kept ? size : kept;
    if (dirtyEnd > oldSize) std::memset(static_cast<char*>(block) + oldSize, 0, dirtyEnd - oldSize);
    SetTag(block, kLargeClass, size);
    return block;
}

// Keeps the block where it is, when its cell is right for `size` too.
bool ResizeInPlace(void* block, size_t size) {
    if (size > kArenaLargestSmall) return false;
    size_t cell = 0;
    size_t ownCell = 0;
    const size_t oldSize = ArenaBlockSize(block);
    const size_t ownClass = ClassOf(block);
    ownCell = ownClass < kLinearClasses
                  ? (ownClass + 1) * kGranule
                  : ((ownClass - kLinearClasses) % 8 + 9) << (9 + (ownClass - kLinearClasses) / 8);
    ClassFor(size, &cell);
    if (cell > ownCell || cell * 2 < ownCell) return false;
    if (size > oldSize) std::memset(static_cast<char*>(block) + oldSize, 0, size - oldSize);
    SetTag(block, ownClass, size);
    return true;
}

}  // namespace

Arena* ArenaCreate(size_t initialSize) {
    if (initialSize > kImpossible) return nullptr;
    auto* arena = new (std::nothrow) Arena{};
    if (arena == nullptr) return nullptr;
    arena->nextChunk = kFirstChunk;
    if (!AddChunk(arena, initialSize)) {
        delete arena;
        return nullptr;
    }
    return arena;
}

void ArenaDestroy(Arena* arena) {
    if (arena == nullptr) return;
    for (Large* large = arena->larges; large != nullptr;) {
        Large* next = large->next;
        munmap(large, large->mapped);
        large = next;
    }
    for (Chunk* chunk = arena->chunks; chunk != nullptr;) {
        Chunk* next = chunk->next;
        munmap(chunk, chunk->size);
        chunk = next;
    }
    delete arena;
}

void* ArenaAlloc(Arena* arena, size_t size) {
    if (size > kImpossible) return nullptr;
    return size <= kArenaLargestSmall ? AllocSmall(arena, size) : AllocLarge(arena, size);
}

void* ArenaReAlloc(Arena* arena, void* block, size_t size) {
    if (size > kImpossible) return nullptr;
    if (ClassOf(block) == kLargeClass) return ReAllocLarge(arena, block, size);
    if (ResizeInPlace(block, size)) return block;
    const size_t oldSize = ArenaBlockSize(block);
    void* moved = ArenaAlloc(arena, size);
    if (moved == nullptr) {
        if (size > oldSize) return nullptr;
        SetTag(block, ClassOf(block), size);  // shrinking never fails
        return block;
    }
    std::memcpy(moved, block, oldSize < size ? oldSize : size);
    ArenaFree(arena, block);
    return moved;
}

void ArenaFree(Arena* arena, void* block) {
    if (block == nullptr) return;
    --arena->live;
    const size_t cellClass = ClassOf(block);
    if (cellClass == kLargeClass) {
        Large* large = LargeOf(block);
        UnlinkLarge(arena, large);
        arena->reserved -= large->mapped;
        munmap(large, large->mapped);
        return;
    }
    auto* cell = static_cast<FreeCell*>(block);
    cell->next = arena->freeCells[cellClass];
    arena->freeCells[cellClass] = cell;
}

size_t ArenaBlockSize(const void* block) {
    if (block == nullptr) return 0;
    return static_cast<size_t>(*TagOf(const_cast<void*>(block)) & ((Tag{1} << kSizeBits) - 1));
}

size_t ArenaLiveBlocks(const Arena* arena) { return arena->live; }

size_t ArenaReserved(const Arena* arena) { return arena->reserved; }

}  // namespace nira
