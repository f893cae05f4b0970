#include "app/start_steps.h"

#include "app/services/memory.h"
#include "app/services/notices.h"
#include "platform/messages.h"

namespace nira {

namespace {

constexpr StartStep kGivingBack[] = {
    StartStep::kEditorWindow, StartStep::kFonts,      StartStep::kOptions,   StartStep::kEditorClass,
    StartStep::kCodecs,       StartStep::kMainWindow, StartStep::kMainClass, StartStep::kResources,
};
static_assert(sizeof(kGivingBack) / sizeof(kGivingBack[0]) == kStartSteps);

// Null where only the system knows the reason. The texts are fixed: the string table may be what failed.
const char16_t* FailureText(StartStep step) {
    switch (step) {
        case StartStep::kResources:
            return u"Resource init failed";
        case StartStep::kCodecs:
            return u"Codecs init failed";
        case StartStep::kFonts:
            return u"font initialization failed";
        case StartStep::kOptions:
            return u"options init failed";
        default:
            return nullptr;
    }
}

void Explain(StartStep step) {
    const char16_t* text = FailureText(step);
    if (text == nullptr) {
        ReportLastError();
    } else {
        ShowMessage(nullptr, text, u"Error", MessageKind::kPlain);
    }
}

}  // namespace

bool RunStartSteps(const StartActions& actions, int* begun) {
    for (*begun = 0; *begun < kStartSteps;) {
        const StartAction& action = actions[*begun];
        const auto step = static_cast<StartStep>(*begun);
        ++*begun;
        bool succeeded = false;
        Guarded([&] { succeeded = action.begin(); });
        if (succeeded) continue;
        if (!action.reportsItself) Explain(step);
        return false;
    }
    return true;
}

void GiveBackStartSteps(const StartActions& actions, int begun) {
    for (const StartStep step : kGivingBack) {
        const int index = static_cast<int>(step);
        if (index < begun && actions[index].giveBack != nullptr) actions[index].giveBack();
    }
}

}  // namespace nira
