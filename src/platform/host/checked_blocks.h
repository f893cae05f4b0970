// A private heap that finds mistakes: every block is an allocation of its own, so that a sanitizer sees each
// byte read or written outside it, and resizing always moves the block, so that a pointer kept too long is
// found.
//
// Takes the place of the arena in sanitizer builds. Handing it a block that it does not own ends the process.
#pragma once

#include <cstddef>

namespace nira {

struct CheckedBlocks;

CheckedBlocks* CheckedCreate();
void CheckedDestroy(CheckedBlocks* heap);
void* CheckedAlloc(CheckedBlocks* heap, size_t size);
void* CheckedReAlloc(CheckedBlocks* heap, void* block, size_t size);
void CheckedFree(CheckedBlocks* heap, void* block);
size_t CheckedBlockSize(const CheckedBlocks* heap, const void* block);
size_t CheckedLiveBlocks(const CheckedBlocks* heap);

}  // namespace nira
