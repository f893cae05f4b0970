// Faults on demand: makes chosen calls of the host platform fail, so that tests can walk through every
// failure.
//
// Every call that can fail passes through one FaultPoint, which counts it. A plan armed on a point makes the
// calls number `first`, `first` + 1, … fail, counted from the arming. Two points are groups: kAnyFile counts
// every file operation and kAnyRegistry every registry operation, besides the operation's own point.
//
// The usual campaign runs an operation with the 1st, 2nd, … call failing until it succeeds untouched:
//
//     for (uint32_t call = 1;; ++call) {
//         FaultScope fault(FaultPoint::kAllocation, {.first = call});
//         Operation();
//         if (fault.Hits() == 0) break;
//     }
#pragma once

#include <cstdint>

namespace nira {

enum class FaultPoint {
    kAllocation,  // private heaps made, blocks allocated, blocks resized
    kFileOpen,
    kFileCreate,
    kFileRead,
    kFileWrite,
    kFileFlush,
    kFileClose,  // reports failure; the file is closed all the same
    kFileMove,
    kFileDelete,
    kFolderOpen,
    kFolderNext,
    kFolderCreate,
    kAnyFile,
    kRegistryCreate,
    kRegistryOpen,
    kRegistryQuery,
    kRegistrySet,
    kRegistryInfo,
    kRegistryEnum,
    kRegistryDelete,
    kAnyRegistry,
    kFontCreate,
    kDeviceOpen,
    kDeviceMeasure,  // extents, fitting and metrics
    kMenuAppend,
    kCount
};

enum class FaultEffect {
    kFail,     // the call fails with the plan's error
    kShort,    // a read or write succeeds with half of the bytes (at least one); any other call fails
    kNothing,  // a write succeeds with 0 bytes written, a read says end of file; any other call fails
};

constexpr uint32_t kFaultForever = 0xFFFFFFFF;

struct FaultPlan {
    uint32_t first = 1;                       // the first failing call, from 1
    uint32_t howMany = 1;                     // failing calls from there on, or kFaultForever
    FaultEffect effect = FaultEffect::kFail;  // what happens to them
    uint32_t error = 0;                       // the last error they leave; 0 takes the point's usual one
};

// Arms `plan` on `point`, replacing an earlier one and setting the point's counts to 0.
void FaultArm(FaultPoint point, const FaultPlan& plan);
void FaultDisarm(FaultPoint point);

// Disarms every point and sets all counts to 0.
void FaultResetAll();

// Calls made through `point`, and how many of them were made to fail, since it was armed or reset.
uint32_t FaultCalls(FaultPoint point);
uint32_t FaultHits(FaultPoint point);

// Faults of the kinds below that struck since the process began, for the summary of a whole test run.
struct FaultTotals {
    uint64_t allocations;
    uint64_t files;
    uint64_t registry;
};
const FaultTotals& FaultTotalsSoFar();

// A plan for as long as this object lives.
class FaultScope {
  public:
    FaultScope(FaultPoint point, const FaultPlan& plan) : point_(point) { FaultArm(point, plan); }
    ~FaultScope() { FaultDisarm(point_); }
    FaultScope(const FaultScope&) = delete;
    FaultScope& operator=(const FaultScope&) = delete;

    uint32_t Calls() const { return FaultCalls(point_); }
    uint32_t Hits() const { return FaultHits(point_); }

  private:
    FaultPoint point_;
};

// --- for the host's own implementation ---

// Counts a call of `point` and of its group. True when it has to fail; *effect then says how, and unless that
// is kShort or kNothing the last error is set.
bool FaultStrikes(FaultPoint point, FaultEffect* effect = nullptr);

}  // namespace nira
