// Says at the end of a run how many failures its tests have put the code through: ./test prints the line.
#include <gtest/gtest.h>

#include <cinttypes>
#include <cstdio>

#include "platform/host/faults.h"

namespace nira {
namespace {

class FaultSummary : public testing::Environment {
  public:
    void TearDown() override {
        const FaultTotals& totals = FaultTotalsSoFar();
        std::printf("count: made to fail: %" PRIu64 " allocations, %" PRIu64 " file calls, %" PRIu64
                    " registry calls\n",
                    totals.allocations, totals.files, totals.registry);
    }
};

const testing::Environment* const kSummary = testing::AddGlobalTestEnvironment(new FaultSummary);

}  // namespace
}  // namespace nira
