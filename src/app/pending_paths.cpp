#include "app/pending_paths.h"

#include "app/services/memory.h"

namespace nira {

namespace {

struct PendingPath {
    char16_t* path;
    PendingPath* next;
};

PendingPath* firstPending = nullptr;
int busyDepth = 0;

}  // namespace

bool PendPath(const char16_t* path) {
    PendingPath* added = nullptr;
    if (!Guarded([&] { added = MemAllocArray<PendingPath>(nullptr, 1); })) return false;
    if (!Guarded([&] { added->path = MemStrDup(nullptr, path); })) {
        MemFree(nullptr, added);
        return false;
    }
    PendingPath** end = &firstPending;
    while (*end != nullptr) end = &(*end)->next;
    *end = added;
    return true;
}

char16_t* TakePendingPath() {
    PendingPath* taken = firstPending;
    if (taken == nullptr) return nullptr;
    char16_t* path = taken->path;
    firstPending = taken->next;
    MemFree(nullptr, taken);
    return path;
}

bool HasPendingPath() { return firstPending != nullptr; }

void BeginBusy() { ++busyDepth; }

void EndBusy() { --busyDepth; }

bool IsBusy() { return busyDepth > 0; }

}  // namespace nira
