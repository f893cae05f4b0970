#include "app/start_steps.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

#include "app/services/memory.h"
#include "app_fixture.h"
#include "platform/host/last_error.h"

namespace nira {
namespace {

// What the steps of the tests do: each notes its number, and one of them may fail.
struct Script {
    int failing = -1;
    bool outOfMemory = false;
    std::vector<int> begun;
    std::vector<int> givenBack;
};

Script& TheScript() {
    static Script script;
    return script;
}

template <int Number>
bool Begin() {
    TheScript().begun.push_back(Number);
    if (TheScript().failing != Number) return true;
    if (TheScript().outOfMemory) OutOfMemory(false);
    HostSetLastError(5);
    return false;
}

template <int Number>
void GiveBack() {
    TheScript().givenBack.push_back(Number);
}

template <int... Numbers>
void Fill(StartActions& actions, std::integer_sequence<int, Numbers...>) {
    ((actions[Numbers] = {Begin<Numbers>, GiveBack<Numbers>, false}), ...);
}

std::vector<int> UpTo(int count) {
    std::vector<int> numbers(static_cast<size_t>(count));
    std::iota(numbers.begin(), numbers.end(), 0);
    return numbers;
}

constexpr auto kWindow = static_cast<int>(StartStep::kMainWindow);

class StartSteps : public ::testing::Test {
  protected:
    void SetUp() override {
        FaultResetAll();
        MessageLogReset();
        RegistryMemoryReset();
        TheScript() = {};
        Fill(actions_, std::make_integer_sequence<int, kStartSteps>());
    }

    StartActions actions_ = {};
    int begun_ = -1;
};

TEST_F(StartSteps, RunInTheirOrderAndSayNothing) {
    EXPECT_TRUE(RunStartSteps(actions_, &begun_));

    EXPECT_EQ(TheScript().begun, UpTo(kStartSteps));
    EXPECT_EQ(begun_, kStartSteps);
    EXPECT_TRUE(MessageLog().empty());
}

TEST_F(StartSteps, GoDownUsersFirst) {
    RunStartSteps(actions_, &begun_);

    GiveBackStartSteps(actions_, begun_);

    std::vector<int> order;
    for (const StartStep step :
         {StartStep::kFonts, StartStep::kOptions, StartStep::kCodecs, StartStep::kMainWindow})
        order.push_back(static_cast<int>(step));
    std::vector<int> told = TheScript().givenBack;
    EXPECT_EQ(told.size(), static_cast<size_t>(kStartSteps));
    std::erase_if(told, [&](int step) { return std::find(order.begin(), order.end(), step) == order.end(); });
    EXPECT_EQ(told, order);
}

TEST_F(StartSteps, WithNothingToGiveBackGoDownToo) {
    for (StartAction& action : actions_) action.giveBack = nullptr;
    RunStartSteps(actions_, &begun_);

    GiveBackStartSteps(actions_, begun_);

    EXPECT_TRUE(TheScript().givenBack.empty());
}

TEST_F(StartSteps, OneThatHasToldItselfIsNotExplainedAgain) {
    TheScript().failing = kWindow;
    actions_[kWindow].reportsItself = true;

    EXPECT_FALSE(RunStartSteps(actions_, &begun_));

    EXPECT_TRUE(MessageLog().empty());
}

struct Failure {
    StartStep step;
    std::u16string text;  // empty: the system's
};

class AFailingStartStep : public StartSteps, public ::testing::WithParamInterface<Failure> {};

TEST_P(AFailingStartStep, EndsTheStartAndIsExplained) {
    const int step = static_cast<int>(GetParam().step);
    TheScript().failing = step;

    EXPECT_FALSE(RunStartSteps(actions_, &begun_));

    EXPECT_EQ(TheScript().begun, UpTo(step + 1));
    ASSERT_EQ(MessageLog().size(), 1u);
    const bool systems = GetParam().text.empty();
    const ShownMessage& box = MessageLog()[0];
    EXPECT_EQ(box.text, systems ? HostErrorText(5) : GetParam().text);
    EXPECT_EQ(box.caption, u"Error");
    EXPECT_EQ(box.kind, systems ? MessageKind::kError : MessageKind::kPlain);
    EXPECT_EQ(box.owner, nullptr);
}

TEST_P(AFailingStartStep, GivesBackWhatWasBegunAndNothingElse) {
    TheScript().failing = static_cast<int>(GetParam().step);
    RunStartSteps(actions_, &begun_);

    GiveBackStartSteps(actions_, begun_);

    std::vector<int> given = TheScript().givenBack;
    std::sort(given.begin(), given.end());
    EXPECT_EQ(given, TheScript().begun);
}

TEST_P(AFailingStartStep, FailsAlsoByRunningOutOfMemory) {
    TheScript().failing = static_cast<int>(GetParam().step);
    TheScript().outOfMemory = true;

    EXPECT_FALSE(RunStartSteps(actions_, &begun_));

    EXPECT_EQ(TheScript().begun, UpTo(TheScript().failing + 1));
    EXPECT_EQ(MessageLog().size(), 1u);
}

INSTANTIATE_TEST_SUITE_P(
    Each, AFailingStartStep,
    ::testing::Values(Failure{StartStep::kResources, u"Resource init failed"},
                      Failure{StartStep::kCodecs, u"Codecs init failed"}, Failure{StartStep::kMainClass, u""},
                      Failure{StartStep::kMainWindow, u""}, Failure{StartStep::kEditorClass, u""},
                      Failure{StartStep::kFonts, u"font initialization failed"},
                      Failure{StartStep::kOptions, u"options init failed"},
                      Failure{StartStep::kEditorWindow, u""}),
    [](const auto& info) { return "Step" + std::to_string(static_cast<int>(info.param.step)); });

// ---- the real ones ----

bool Nothing() { return true; }

// Codecs, fonts and options as the program begins them, without windows.
void UseRealServices(StartActions& actions) {
    for (StartAction& action : actions) action = {Nothing, nullptr, false};
    actions[static_cast<int>(StartStep::kCodecs)] = {[] { return InitCodecs() != 0; }, FreeCodecs};
    actions[static_cast<int>(StartStep::kFonts)] = {[] { return InitFonts(nullptr) != 0; }, ShutdownFonts};
    actions[static_cast<int>(StartStep::kOptions)] = {[] { return LoadOptions() != 0; }, FreeOptions};
}

TEST_F(StartSteps, OfRealServicesLeaveNothingBehindWhereverMemoryRunsOut) {
    UseRealServices(actions_);
    std::vector<std::u16string> explained;
    for (uint32_t call = 1; call < 1000; ++call) {
        MessageLogReset();
        const size_t before = HostHeapLiveBlocks(nullptr);
        FaultScope fault(FaultPoint::kAllocation, {.first = call});

        const bool started = RunStartSteps(actions_, &begun_);
        GiveBackStartSteps(actions_, begun_);

        EXPECT_EQ(HostHeapLiveBlocks(nullptr), before) << call;
        if (fault.Hits() == 0) break;
        // An option that cannot be read for lack of memory has its default, and the start goes on.
        if (!started && !MessageLog().empty()) explained.push_back(MessageLog().back().text);
    }
    for (const char16_t* text :
         {u"Codecs init failed", u"font initialization failed", u"options init failed"})
        EXPECT_NE(std::find(explained.begin(), explained.end(), text), explained.end());
}

}  // namespace
}  // namespace nira
