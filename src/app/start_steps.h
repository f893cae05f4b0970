// The order in which the program comes up and goes down, and what the person reads when a step fails.
//
// The steps run one after the other; the first that fails says why and none after it runs. Going down gives
// back what was begun, in an order of its own: what uses a thing goes before the thing. A step that failed
// counts as begun, for it may have got half-way; whatever gives it back skips what is not there.
#pragma once

namespace nira {

// In the order of coming up.
enum class StartStep {
    kResources,
    kCodecs,
    kMainClass,
    kMainWindow,
    kEditorClass,
    kFonts,
    kOptions,
    kEditorWindow,
    kCount,
};

constexpr int kStartSteps = static_cast<int>(StartStep::kCount);

struct StartAction {
    bool (*begin)();             // false: it failed, with the reason in the last error
    void (*giveBack)();          // null: nothing to do
    bool reportsItself = false;  // the person knows already when `begin` returns false
};

// One for each step, at the step's place.
using StartActions = StartAction[kStartSteps];

// Runs the steps; true when all succeeded. A step where memory runs out has failed. Sets `begun` to the
// number of steps that were tried.
bool RunStartSteps(const StartActions& actions, int* begun);

// Gives back the first `begun` steps.
void GiveBackStartSteps(const StartActions& actions, int begun);

}  // namespace nira
