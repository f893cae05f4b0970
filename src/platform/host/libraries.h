// The host's libraries: functions of a test under a path, as if a library there exported them.
#pragma once

#include "platform/plug_in.h"

namespace nira {

// Makes the library at `path` export `function` under `name`.
void HostLibraryExport(const char16_t* path, const char* name, LibraryFunction function);

// Forgets all libraries and counts.
void HostLibrariesReset();

// LibraryLoads of any library that were not taken back.
int HostLibrariesLoaded();

// Guarded runs since the reset.
int HostGuardedRuns();

// Calls back during which a guard was off, since the start of the program.
int HostUnguardedCallbacks();

// What stands for a crash: ends the innermost guarded run. Ends the process when no guard is on.
[[noreturn]] void HostFaultInPlugIn();

}  // namespace nira
