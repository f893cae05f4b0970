#include "app/pending_paths.h"

#include <gtest/gtest.h>

#include <string>

#include "app/services/memory.h"
#include "platform/host/faults.h"
#include "platform/host/heap_count.h"

namespace nira {
namespace {

TEST(PendingPaths, AreTakenInTheOrderOfTheirArrival) {
    PendPath(MemStrDup(nullptr, u"a"));
    PendPath(MemStrDup(nullptr, u"b"));

    for (const char16_t* expected : {u"a", u"b"}) {
        char16_t* path = TakePendingPath();
        EXPECT_EQ(std::u16string(path), expected);
        MemFree(nullptr, path);
    }
    EXPECT_EQ(TakePendingPath(), nullptr);
    EXPECT_FALSE(HasPendingPath());
}

TEST(PendingPaths, AreForgottenWhenMemoryRunsOut) {
    const size_t before = HostHeapLiveBlocks(nullptr);
    char16_t* path = MemStrDup(nullptr, u"a");
    FaultScope fault(FaultPoint::kAllocation, {.howMany = kFaultForever});

    PendPath(path);

    EXPECT_FALSE(HasPendingPath());
    EXPECT_EQ(HostHeapLiveBlocks(nullptr), before);
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
