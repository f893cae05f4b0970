#include "platform/plug_in.h"

#include <csetjmp>
#include <cstdlib>
#include <map>
#include <string>

#include "platform/host/libraries.h"

struct nira::LibraryTag {
    std::map<std::string, LibraryFunction> functions;
};

namespace nira {

namespace {

struct Guard {
    std::jmp_buf entry;
    Guard* outer;
    bool armed;
    volatile GuardedEnd end;
};

Guard* innermost = nullptr;
std::map<std::u16string, LibraryTag> libraries;
int loaded = 0;
int runs = 0;
int unguardedCallbacks = 0;

[[noreturn]] void End(GuardedEnd end) {
    if (innermost == nullptr) std::abort();
    innermost->end = end;
    std::longjmp(innermost->entry, 1);
}

}  // namespace

LibraryHandle LibraryLoad(const char16_t* path) {
    const auto found = libraries.find(path != nullptr ? path : u"");
    if (found == libraries.end()) return nullptr;
    ++loaded;
    return &found->second;
}

void LibraryFree(LibraryHandle library) {
    if (library != nullptr) --loaded;
}

LibraryFunction LibraryFind(LibraryHandle library, const char* name) {
    const auto found = library->functions.find(name);
    return found != library->functions.end() ? found->second : nullptr;
}

GuardedEnd RunBehindGuard(void (*operation)(void* context), void* context) {
    ++runs;
    Guard guard;
    guard.outer = innermost;
    guard.armed = true;
    guard.end = GuardedEnd::kReturned;
    innermost = &guard;
    if (setjmp(guard.entry) == 0) operation(context);
    innermost = innermost->outer;
    return guard.end;
}

void SuspendGuard() {
    if (innermost != nullptr) innermost->armed = false;
}

void ResumeGuard() {
    if (innermost == nullptr) return;
    if (!innermost->armed) ++unguardedCallbacks;
    innermost->armed = true;
}

void LeaveGuard() { End(GuardedEnd::kLeft); }

void HostLibraryExport(const char16_t* path, const char* name, LibraryFunction function) {
    libraries[path].functions[name] = function;
}

void HostLibrariesReset() {
    libraries.clear();
    loaded = 0;
    runs = 0;
}

int HostLibrariesLoaded() { return loaded; }

int HostGuardedRuns() { return runs; }

int HostUnguardedCallbacks() { return unguardedCallbacks; }

void HostFaultInPlugIn() {
    if (innermost == nullptr || !innermost->armed) std::abort();
    End(GuardedEnd::kFaulted);
}

}  // namespace nira
