#include "shell/subclass.h"

namespace shell {

namespace {

// Procedures differ, so that one identifier does for all of them.
constexpr UINT_PTR kSubclassId = 1;

}  // namespace

// The record is found by a property of the window: asking the common controls for it is something that only
// some toolchains' import libraries can do.
bool AttachRecord(HWND window, SUBCLASSPROC procedure, const wchar_t* name, void* record) {
    if (!SetPropW(window, name, record)) {
        return false;
    }
    if (!SetWindowSubclass(window, procedure, kSubclassId, reinterpret_cast<DWORD_PTR>(record))) {
        RemovePropW(window, name);
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return false;
    }
    return true;
}

void* FindRecord(HWND window, const wchar_t* name) { return window ? GetPropW(window, name) : nullptr; }

void* DetachRecord(HWND window, SUBCLASSPROC procedure, const wchar_t* name) {
    RemoveWindowSubclass(window, procedure, kSubclassId);
    return RemovePropW(window, name);
}

void* AllocRecord(size_t size) {
    void* block = HeapAlloc(GetProcessHeap(), HEAP_ZERO_MEMORY, size);
    if (!block) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    }
    return block;
}

void FreeRecord(void* record) {
    if (record) {
        HeapFree(GetProcessHeap(), 0, record);
    }
}

}  // namespace shell
