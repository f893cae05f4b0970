// Bringing the program up in its fixed order, and taking it down.
#pragma once

#include "app/app_state.h"

namespace nira {

enum class StartResult {
    kStarted,
    kHandedOver,  // another instance runs and has been given the path
    kFailed,      // the person has been told why
};

// `path` is one absolute path, or empty for none. `showCommand` is how the system wants the window shown.
StartResult StartUp(InstanceHandle instance, const char16_t* path, int showCommand);

// Gives everything back; skips what was not made.
void ShutDown();

}  // namespace nira
