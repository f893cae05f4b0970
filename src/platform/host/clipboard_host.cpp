#include "platform/clipboard.h"

#include <utility>

#include "platform/host/clipboard_state.h"

namespace nira {

ClipboardState& HostClipboard() {
    static ClipboardState state;
    return state;
}

char16_t* ClipboardAllocate(size_t units) {
    if (HostClipboard().noMemory) return nullptr;
    HostClipboard().block.assign(units, u'\0');
    return HostClipboard().block.data();
}

bool ClipboardPut(WindowHandle, char16_t*, size_t) {
    ClipboardState& state = HostClipboard();
    if (state.busy || state.refusesText) return false;
    state.text = std::move(state.block);
    return true;
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
