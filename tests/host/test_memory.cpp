#include "app/services/memory.h"

#include <cstring>
#include <string>
#include <vector>

#include "host/files_support.h"
#include "platform/shell_requests.h"

namespace nira {
namespace {

class Memory : public ServicesTest {};

TEST_F(Memory, AllocatesNothingForASizeOfZero) {
    EXPECT_EQ(MemAlloc(nullptr, 0), nullptr);
    EXPECT_EQ(HostShellLog().requests, 0u);
    EXPECT_EQ(FaultCalls(FaultPoint::kAllocation), 0u);
}

TEST_F(Memory, ZeroesBlocksAndTheirGrowth) {
    for (const HeapHandle heap : {HeapHandle{nullptr}, MemHeapCreate(100)}) {
        auto* block = static_cast<uint8_t*>(MemAlloc(heap, 50));
        EXPECT_EQ(std::string(block, block + 50), std::string(50, '\0'));
        std::memset(block, 7, 50);
        block = static_cast<uint8_t*>(MemReAlloc(heap, block, 5000));
        EXPECT_EQ(std::string(block, block + 50), std::string(50, '\7'));
        EXPECT_EQ(std::string(block + 50, block + 5000), std::string(4950, '\0'));
        EXPECT_EQ(MemSize(heap, block), 5000u);
        MemFree(heap, block);
        MemHeapDestroy(heap);
    }
}

TEST_F(Memory, AsksTheShellForEveryBlock) {
    void* block = MemAlloc(nullptr, 100);
    EXPECT_EQ(HostShellLog().requests, 1u);
    EXPECT_EQ(LastMemoryRequest(), 100u);
    block = MemReAlloc(nullptr, block, 130);
    EXPECT_EQ(HostShellLog().requests, 2u);
    EXPECT_EQ(LastMemoryRequest(), 30u);
    block = MemReAlloc(nullptr, block, 130);
    EXPECT_EQ(HostShellLog().requests, 2u) << "nothing to ask for";
    MemFree(nullptr, block);
}

TEST_F(Memory, AsksForNearlyFourGigabytesToShrink) {
    void* block = MemAlloc(nullptr, 100);
    block = MemReAlloc(nullptr, block, 90);
    EXPECT_EQ(LastMemoryRequest(), 0xFFFFFFF6u);
    EXPECT_EQ(MemSize(nullptr, block), 90u);
    block = MemShrink(nullptr, block, 80);
    EXPECT_EQ(LastMemoryRequest(), 0xFFFFFFF6u);
    EXPECT_EQ(MemSize(nullptr, block), 80u);
    MemFree(nullptr, block);
}

TEST_F(Memory, ResizingToZeroFrees) {
    void* block = MemAlloc(nullptr, 100);
    EXPECT_EQ(MemReAlloc(nullptr, block, 0), nullptr);
    EXPECT_EQ(MemReAlloc(nullptr, nullptr, 0), nullptr);
}

TEST_F(Memory, ResizingNothingAllocates) {
    void* block = MemReAlloc(nullptr, nullptr, 40);
    EXPECT_EQ(MemSize(nullptr, block), 40u);
    EXPECT_EQ(LastMemoryRequest(), 40u);
    MemFree(nullptr, block);
}

TEST_F(Memory, AcceptsNull) {
    MemFree(nullptr, nullptr);
    MemHeapDestroy(nullptr);
    EXPECT_EQ(MemSize(nullptr, nullptr), 0u);
    EXPECT_EQ(MemShrink(nullptr, nullptr, 10), nullptr);
}

TEST_F(Memory, ShrinkingNeverFailsAndNeverGrows) {
    void* block = MemAlloc(nullptr, 100);
    FaultScope fault(FaultPoint::kAllocation, {.first = 1, .howMany = kFaultForever});
    EXPECT_EQ(MemShrink(nullptr, block, 50), block);
    EXPECT_EQ(MemShrink(nullptr, block, 200), block);
    EXPECT_EQ(MemShrink(nullptr, block, 0), block);
    EXPECT_EQ(MemSize(nullptr, block), 100u);
    EXPECT_EQ(HostShellLog().memoryBoxes, 0u);
    MemFree(nullptr, block);
}

TEST_F(Memory, DestroyingAHeapFreesWhatItHolds) {
    const size_t heaps = HostHeapCount();
    HeapHandle heap = MemHeapCreate(10);
    for (int i = 0; i < 100; ++i) MemAlloc(heap, 1000);
    EXPECT_EQ(HostHeapLiveBlocks(heap), 100u);
    MemHeapDestroy(heap);
    EXPECT_EQ(HostHeapCount(), heaps);
}

// ---- running out ----

TEST_F(Memory, FailedAllocationShowsTheBoxOnceAndUnwinds) {
    FaultScope fault(FaultPoint::kAllocation, {.first = 1});
    const auto owner = reinterpret_cast<WindowHandle>(uintptr_t{0x1234});
    SetMemoryBoxOwner(owner);
    bool reached = false;
    EXPECT_FALSE(Guarded([&] {
        MemAlloc(nullptr, 10);
        reached = true;
    }));
    SetMemoryBoxOwner(nullptr);
    EXPECT_FALSE(reached);
    EXPECT_EQ(HostShellLog().memoryBoxes, 1u);
    EXPECT_EQ(HostShellLog().lastBoxOwner, owner);
}

TEST_F(Memory, FailedResizeLeavesTheBlock) {
    auto* block = static_cast<char*>(MemAlloc(nullptr, 10));
    block[9] = 'x';
    {
        FaultScope fault(FaultPoint::kAllocation, {.first = 1});
        EXPECT_FALSE(Guarded([&] { MemReAlloc(nullptr, block, 1000); }));
    }
    EXPECT_EQ(block[9], 'x');
    EXPECT_EQ(MemSize(nullptr, block), 10u);
    MemFree(nullptr, block);
}

TEST_F(Memory, FailedHeapUnwinds) {
    FaultScope fault(FaultPoint::kAllocation, {.first = 1});
    EXPECT_FALSE(Guarded([] { MemHeapCreate(100); }));
    EXPECT_EQ(HostShellLog().memoryBoxes, 1u);
}

TEST_F(Memory, PassesAFailureOnWithoutASecondBox) {
    EXPECT_FALSE(Guarded([] {
        if (!Guarded([] { OutOfMemory(true); })) OutOfMemory(false);
    }));
    EXPECT_EQ(HostShellLog().memoryBoxes, 1u);
}

TEST_F(Memory, TheNearestGuardCatches) {
    bool went = false;
    EXPECT_TRUE(Guarded([&] {
        EXPECT_FALSE(Guarded([] { OutOfMemory(false); }));
        went = true;
    }));
    EXPECT_TRUE(went);
}

TEST_F(Memory, GuardsLetOtherExceptionsPass) {
    EXPECT_THROW(Guarded([] { throw 7; }), int);
    EXPECT_THROW(Guarded([] { throw std::bad_alloc(); }), std::bad_alloc);
}

// Before this test nothing in the program has installed the policy, and taking it back leaves it so.
TEST_F(Memory, ContainersFollowTheSamePolicy) {
    InstallOutOfMemoryPolicy();
    bool caught = false;
    {
        std::new_handler installed = std::get_new_handler();
        ASSERT_NE(installed, nullptr);
        caught = !Guarded([&] { installed(); });
    }
    std::set_new_handler(nullptr);
    EXPECT_TRUE(caught);
    EXPECT_EQ(HostShellLog().memoryBoxes, 1u);
}

// ---- texts ----

TEST_F(Memory, DuplicatesTexts) {
    EXPECT_EQ(MemStrDup(nullptr, nullptr), nullptr);
    char16_t* copy = MemStrDup(nullptr, u"abc");
    EXPECT_EQ(std::u16string(copy), u"abc");
    EXPECT_EQ(MemSize(nullptr, copy), 8u);
    MemFree(nullptr, copy);
    copy = MemStrDup(nullptr, u"");
    EXPECT_EQ(MemSize(nullptr, copy), 2u);
    MemFree(nullptr, copy);
}

TEST_F(Memory, DuplicatesIntoAPrivateHeap) {
    HeapHandle heap = MemHeapCreate(10);
    EXPECT_EQ(std::u16string(MemStrDup(heap, u"abc")), u"abc");
    EXPECT_EQ(HostHeapLiveBlocks(heap), 1u);
    MemHeapDestroy(heap);
}

TEST_F(Memory, JoinsTexts) {
    char16_t* text = MemStrDup(nullptr, u"abc");
    EXPECT_EQ(MemStrCat(text, nullptr), text);
    text = MemStrCat(text, u"de");
    EXPECT_EQ(std::u16string(text), u"abcde");
    EXPECT_EQ(MemSize(nullptr, text), 12u);
    MemFree(nullptr, text);
    text = MemStrCat(nullptr, u"x");
    EXPECT_EQ(std::u16string(text), u"x");
    MemFree(nullptr, text);
}

}  // namespace
}  // namespace nira
