#include "app/pending_paths.h"

#include <gtest/gtest.h>

#include <string>

#include "app/services/memory.h"
#include "platform/host/faults.h"
#include "platform/host/heap_count.h"

namespace nira {
namespace {

TEST(PendingPaths, AreTakenInTheOrderOfTheirArrival) {
    EXPECT_TRUE(PendPath(u"a"));
    EXPECT_TRUE(PendPath(u"b"));

    for (const char16_t* expected : {u"a", u"b"}) {
        char16_t* path = TakePendingPath();
        EXPECT_EQ(std::u16string(path), expected);
        MemFree(nullptr, path);
    }
    EXPECT_EQ(TakePendingPath(), nullptr);
    EXPECT_FALSE(HasPendingPath());
}

TEST(PendingPaths, AreRefusedAndLeaveNothingBehindWhereverMemoryRunsOut) {
    const size_t before = HostHeapLiveBlocks(nullptr);
    for (uint32_t call = 1; call <= 2; ++call) {
        FaultScope fault(FaultPoint::kAllocation, {.first = call});

        EXPECT_FALSE(PendPath(u"a"));

        EXPECT_EQ(fault.Hits(), 1u);
        EXPECT_FALSE(HasPendingPath());
        EXPECT_EQ(HostHeapLiveBlocks(nullptr), before);
    }
}

TEST(PendingPaths, BusyTimesNest) {
    BeginBusy();
    BeginBusy();
    EndBusy();
    EXPECT_TRUE(IsBusy());
    EndBusy();
    EXPECT_FALSE(IsBusy());
}

}  // namespace
}  // namespace nira
