#include "shell/shell_text.h"

#include <windows.h>

namespace shell {

wchar_t* AllocShellText(size_t length) {
    void* block = HeapAlloc(GetProcessHeap(), HEAP_ZERO_MEMORY, (length + 1) * sizeof(wchar_t));
    if (!block) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    }
    return static_cast<wchar_t*>(block);
}

void FreeShellText(wchar_t* text) {
    if (text) {
        HeapFree(GetProcessHeap(), 0, text);
    }
}

}  // namespace shell
