#include "platform/host/faults.h"

#include <array>
#include <cstddef>

#include "platform/host/last_error.h"

namespace nira {

namespace {

struct Armed {
    bool active = false;
    FaultPlan plan;
    uint32_t calls = 0;
    uint32_t hits = 0;
};

std::array<Armed, static_cast<size_t>(FaultPoint::kCount)> points;

FaultTotals totals;

Armed& At(FaultPoint point) { return points[static_cast<size_t>(point)]; }

FaultPoint GroupOf(FaultPoint point) {
    if (point >= FaultPoint::kFileOpen && point < FaultPoint::kAnyFile) return FaultPoint::kAnyFile;
    if (point >= FaultPoint::kRegistryCreate && point < FaultPoint::kAnyRegistry)
        return FaultPoint::kAnyRegistry;
    return FaultPoint::kCount;
}

uint32_t UsualError(FaultPoint point) {
    switch (point) {
        case FaultPoint::kAllocation:
            return kErrorNotEnoughMemory;
        case FaultPoint::kFileRead:
            return kErrorBadChecksum;
        case FaultPoint::kFileWrite:
            return kErrorDiskFull;
        case FaultPoint::kFileFlush:
        case FaultPoint::kFileClose:
            return kErrorIoDevice;
        case FaultPoint::kFontCreate:
        case FaultPoint::kDeviceOpen:
        case FaultPoint::kDeviceMeasure:
            return kErrorInvalidHandle;
        default:
            return kErrorAccessDenied;
    }
}

void CountTotal(FaultPoint point) {
    if (point == FaultPoint::kAllocation) ++totals.allocations;
    if (GroupOf(point) == FaultPoint::kAnyFile) ++totals.files;
    if (GroupOf(point) == FaultPoint::kAnyRegistry) ++totals.registry;
}

bool CountAndTest(Armed* armed) {
    ++armed->calls;
    if (!armed->active || armed->calls < armed->plan.first) return false;
    if (armed->calls - armed->plan.first >= armed->plan.howMany) return false;
    ++armed->hits;
    return true;
}

}  // namespace

void FaultArm(FaultPoint point, const FaultPlan& plan) { At(point) = Armed{true, plan, 0, 0}; }

void FaultDisarm(FaultPoint point) { At(point).active = false; }

void FaultResetAll() { points.fill(Armed{}); }

uint32_t FaultCalls(FaultPoint point) { return At(point).calls; }

uint32_t FaultHits(FaultPoint point) { return At(point).hits; }

const FaultTotals& FaultTotalsSoFar() { return totals; }

bool FaultStrikes(FaultPoint point, FaultEffect* effect) {
    const FaultPoint group = GroupOf(point);
    const bool ownStrikes = CountAndTest(&At(point));
    const bool groupStrikes = group != FaultPoint::kCount && CountAndTest(&At(group));
    if (!ownStrikes && !groupStrikes) return false;
    CountTotal(point);
    const FaultPlan& plan = ownStrikes ? At(point).plan : At(group).plan;
    const bool transfers = point == FaultPoint::kFileRead || point == FaultPoint::kFileWrite;
    const FaultEffect felt = transfers ? plan.effect : FaultEffect::kFail;
    if (effect != nullptr) *effect = felt;
    if (felt == FaultEffect::kFail) HostSetLastError(plan.error != 0 ? plan.error : UsualError(point));
    return true;
}

}  // namespace nira
