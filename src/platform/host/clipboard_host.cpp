#include "platform/clipboard.h"

#include "platform/heap.h"
#include "platform/host/clipboard_state.h"

namespace nira {

ClipboardState& HostClipboard() {
    static ClipboardState state;
    return state;
}

char16_t* ClipboardAllocate(size_t units) {
    return static_cast<char16_t*>(PlatformHeapAlloc(nullptr, (units + 1) * sizeof(char16_t)));
}

bool ClipboardPut(WindowHandle, char16_t* block, size_t units) {
    ClipboardState& state = HostClipboard();
    const bool put = !state.busy && !state.refusesText;
    if (put) state.text = std::u16string(block, units);
    PlatformHeapFree(nullptr, block);
    return put;
}

bool ClipboardOpen(WindowHandle) {
    if (HostClipboard().busy) return false;
    HostClipboard().open = true;
    return true;
}

const char16_t* ClipboardText(uint32_t* units) {
    *units = 0;
    const ClipboardState& state = HostClipboard();
    if (!state.text.has_value()) return nullptr;
    const size_t end = state.text->find(u'\0');
    *units = static_cast<uint32_t>(end == std::u16string::npos ? state.text->size() : end);
    return state.text->c_str();
}

void ClipboardClose() { HostClipboard().open = false; }

}  // namespace nira
