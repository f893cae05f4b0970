// A private heap for the native build: a million small blocks at little cost, freed in one step.
//
// Small blocks are carved from chunks and reused through free lists by size; blocks above kArenaLargestSmall
// are mappings of their own, which grow without copying. Every block carries 8 bytes in front of it. Blocks
// are zeroed.
#pragma once

#include <cstddef>

namespace nira {

struct Arena;

constexpr size_t kArenaLargestSmall = 256 * 1024 - 8;

// Null on failure, as below.
Arena* ArenaCreate(size_t initialSize);

// Frees the arena with everything in it.
void ArenaDestroy(Arena* arena);

void* ArenaAlloc(Arena* arena, size_t size);

// The old block is untouched when this fails.
void* ArenaReAlloc(Arena* arena, void* block, size_t size);

void ArenaFree(Arena* arena, void* block);

// The size asked for.
size_t ArenaBlockSize(const void* block);

size_t ArenaLiveBlocks(const Arena* arena);

// Bytes of chunks and mappings taken from the system.
size_t ArenaReserved(const Arena* arena);

}  // namespace nira
