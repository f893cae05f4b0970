#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <vector>

#include "platform/heap.h"
#include "platform/host/arena.h"
#include "platform/host/faults.h"
#include "platform/host/heap_count.h"
#include "platform/host/last_error.h"

namespace nira {
namespace {

bool IsZero(const void* block, size_t from, size_t to) {
    const auto* bytes = static_cast<const uint8_t*>(block);
    for (size_t at = from; at < to; ++at) {
        if (bytes[at] != 0) return false;
    }
    return true;
}

bool IsAligned(const void* block) {
    return reinterpret_cast<uintptr_t>(block) % alignof(std::max_align_t) == 0;
}

// Both the local heap and a private one behave alike.
class HeapOfEitherKind : public ::testing::TestWithParam<bool> {
  protected:
    void SetUp() override { heap_ = GetParam() ? PlatformHeapCreate(1000) : nullptr; }
    void TearDown() override { PlatformHeapDestroy(heap_); }
    HeapHandle heap_ = nullptr;
};

INSTANTIATE_TEST_SUITE_P(Kinds, HeapOfEitherKind, ::testing::Bool());

TEST_P(HeapOfEitherKind, GivesZeroedAlignedBlocksOfEverySize) {
    for (const size_t size : {1u, 15u, 16u, 17u, 182u, 4088u, 4089u, 70000u, 262136u, 262137u, 1000000u}) {
        void* block = PlatformHeapAlloc(heap_, size);
        ASSERT_NE(block, nullptr);
        EXPECT_TRUE(IsAligned(block));
        EXPECT_TRUE(IsZero(block, 0, size));
        EXPECT_EQ(PlatformHeapSize(heap_, block), size);
        std::memset(block, 0xCC, size);
        PlatformHeapFree(heap_, block);
    }
}

TEST_P(HeapOfEitherKind, GivesZeroedMemoryAgainAfterFree) {
    void* first = PlatformHeapAlloc(heap_, 100);
    std::memset(first, 0xCC, 100);
    PlatformHeapFree(heap_, first);

    void* second = PlatformHeapAlloc(heap_, 100);

    EXPECT_TRUE(IsZero(second, 0, 100));
    PlatformHeapFree(heap_, second);
}

TEST_P(HeapOfEitherKind, KeepsContentAndZeroesGrowthWhenResized) {
    const size_t sizes[] = {10, 24, 20, 24, 300, 5000, 100, 90000, 300000, 299000, 299500, 2000000, 5, 600};
    auto* block = static_cast<uint8_t*>(PlatformHeapAlloc(heap_, 8));
    size_t size = 8;
    std::memset(block, 0xAB, size);
    for (const size_t next : sizes) {
        block = static_cast<uint8_t*>(PlatformHeapReAlloc(heap_, block, next));
        ASSERT_NE(block, nullptr);
        EXPECT_TRUE(IsAligned(block));
        EXPECT_EQ(PlatformHeapSize(heap_, block), next);
        for (size_t at = 0; at < std::min(size, next); ++at) ASSERT_EQ(block[at], 0xAB) << next << ' ' << at;
        EXPECT_TRUE(next <= size || IsZero(block, size, next)) << next;
        std::memset(block, 0xAB, next);
        size = next;
    }
    PlatformHeapFree(heap_, block);
}

TEST_P(HeapOfEitherKind, CountsWhatIsNotFreed) {
    const size_t before = HostHeapLiveBlocks(heap_);

    void* block = PlatformHeapAlloc(heap_, 40);
    void* other = PlatformHeapAlloc(heap_, 400000);

    EXPECT_EQ(HostHeapLiveBlocks(heap_), before + 2);
    PlatformHeapFree(heap_, block);
    PlatformHeapFree(heap_, other);
    EXPECT_EQ(HostHeapLiveBlocks(heap_), before);
}

TEST_P(HeapOfEitherKind, RefusesImpossibleSizesAndLeavesTheBlock) {
    void* block = PlatformHeapAlloc(heap_, 16);
    std::memset(block, 1, 16);

    EXPECT_EQ(PlatformHeapAlloc(heap_, SIZE_MAX - 100), nullptr);
    EXPECT_EQ(PlatformHeapReAlloc(heap_, block, SIZE_MAX - 100), nullptr);

    EXPECT_EQ(PlatformHeapSize(heap_, block), 16u);
    EXPECT_EQ(static_cast<uint8_t*>(block)[15], 1);
    PlatformHeapFree(heap_, block);
}

TEST_P(HeapOfEitherKind, FailsOnDemand) {
    void* block = PlatformHeapAlloc(heap_, 16);
    {
        FaultScope fault(FaultPoint::kAllocation, {.first = 2, .howMany = 2});
        void* second = PlatformHeapAlloc(heap_, 8);
        EXPECT_NE(second, nullptr);
        EXPECT_EQ(PlatformHeapReAlloc(heap_, block, 32), nullptr);
        EXPECT_EQ(HostLastError(), kErrorNotEnoughMemory);
        EXPECT_EQ(PlatformHeapCreate(100), nullptr);
        EXPECT_EQ(fault.Hits(), 2u);
        EXPECT_EQ(fault.Calls(), 3u);
        PlatformHeapFree(heap_, second);
    }
    EXPECT_EQ(PlatformHeapSize(heap_, block), 16u);
    PlatformHeapFree(heap_, block);
}

TEST(PrivateHeap, DestroysWhatIsStillInIt) {
    const size_t before = HostHeapCount();
    HeapHandle heap = PlatformHeapCreate(0);
    EXPECT_EQ(HostHeapCount(), before + 1);
    for (size_t size = 1; size < 600000; size = size * 3 + 1) PlatformHeapAlloc(heap, size);

    PlatformHeapDestroy(heap);

    EXPECT_EQ(HostHeapCount(), before);
    PlatformHeapDestroy(nullptr);
    EXPECT_EQ(HostHeapCount(), before);
}

TEST(PrivateHeap, IgnoresNull) {
    HeapHandle heap = PlatformHeapCreate(0);
    PlatformHeapFree(heap, nullptr);
    EXPECT_EQ(PlatformHeapSize(heap, nullptr), 0u);
    PlatformHeapDestroy(heap);
}

TEST(Arena, CostsAtMostSixteenBytesForALine) {
    constexpr size_t kLines = 200000;
    Arena* arena = ArenaCreate(0);
    for (size_t line = 0; line < kLines; ++line) ASSERT_NE(ArenaAlloc(arena, 182), nullptr);

    // What the last chunk has left is not the cost of a line.
    EXPECT_LE(ArenaReserved(arena), kLines * (182 + 16) + 4 * 1024 * 1024);
    EXPECT_EQ(ArenaLiveBlocks(arena), kLines);
    ArenaDestroy(arena);
}

TEST(Arena, UsesFreedCellsAgain) {
    Arena* arena = ArenaCreate(0);
    const size_t reserved = ArenaReserved(arena);
    for (int round = 0; round < 100000; ++round) {
        void* block = ArenaAlloc(arena, 200 + static_cast<size_t>(round % 3));
        ArenaFree(arena, block);
    }
    for (int round = 0; round < 1000; ++round) ArenaFree(arena, ArenaAlloc(arena, 5000000));

    EXPECT_EQ(ArenaReserved(arena), reserved);
    ArenaDestroy(arena);
}

// The arena itself runs under the sanitizers here, where the heap has the checked blocks in its place.
TEST(Arena, KeepsBlocksApartThroughRandomUse) {
    struct Held {
        uint8_t* block;
        size_t size;
        uint8_t fill;
    };
    Arena* arena = ArenaCreate(0);
    std::vector<Held> held;
    uint32_t seed = 12345;
    const auto next = [&seed](uint32_t below) {
        seed = seed * 1664525 + 1013904223;
        return (seed >> 8) % below;
    };
    for (int step = 0; step < 20000; ++step) {
        const size_t size = 1 + next(next(50) == 0 ? 600000 : next(8) == 0 ? 20000 : 400);
        if (held.size() < 100) {
            auto* block = static_cast<uint8_t*>(ArenaAlloc(arena, size));
            ASSERT_TRUE(IsZero(block, 0, size));
            held.push_back({block, size, static_cast<uint8_t>(step | 1)});
            std::memset(block, held.back().fill, size);
            continue;
        }
        Held& one = held[next(100)];
        ASSERT_EQ(ArenaBlockSize(one.block), one.size);
        ASSERT_EQ(one.block[0], one.fill);
        ASSERT_EQ(one.block[one.size - 1], one.fill);
        if (next(3) == 0) {
            ArenaFree(arena, one.block);
            one = held.back();
            held.pop_back();
        } else {
            one.block = static_cast<uint8_t*>(ArenaReAlloc(arena, one.block, size));
            ASSERT_TRUE(size <= one.size || IsZero(one.block, one.size, size));
            std::memset(one.block, one.fill, size);
            one.size = size;
        }
    }
    EXPECT_EQ(ArenaLiveBlocks(arena), held.size());
    ArenaDestroy(arena);
}

}  // namespace
}  // namespace nira
