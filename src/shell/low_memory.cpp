#include "shell/low_memory.h"

namespace shell {

namespace {

DWORD lastRequest = 0;
OutOfMemoryBox replacement = nullptr;

}  // namespace

BOOL SHCloseApps(DWORD bytes) {
    lastRequest = bytes;
    return TRUE;
}

DWORD LastCloseAppsRequest() { return lastRequest; }

int SHShowOutOfMemory(HWND owner, UINT flags) {
    if (replacement) {
        return replacement(owner, flags);
    }
    // MB_ICONHAND with MB_SYSTEMMODAL is the one box that the system keeps the memory for.
    return MessageBoxW(owner,
                       L"There is not enough memory to go on. Close some documents or other programs, "
                       L"then try again.",
                       L"Out of memory", MB_OK | MB_ICONHAND | MB_SYSTEMMODAL);
}

OutOfMemoryBox SetOutOfMemoryBox(OutOfMemoryBox box) {
    const OutOfMemoryBox previous = replacement;
    replacement = box;
    return previous;
}

}  // namespace shell
