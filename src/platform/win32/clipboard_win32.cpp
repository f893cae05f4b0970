#include "platform/clipboard.h"

#include <cstring>

#include "platform/win32/casts.h"

namespace nira {

namespace {

HANDLE openText = nullptr;  // locked while the clipboard is open

// The clipboard owns movable memory; null when there is none.
HGLOBAL MakeBlock(const char16_t* text, uint32_t units) {
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, (SIZE_T{units} + 1) * sizeof(char16_t));
    if (block == nullptr) return nullptr;
    void* target = GlobalLock(block);
    if (target == nullptr) {
        GlobalFree(block);
        return nullptr;
    }
    std::memcpy(target, text, SIZE_T{units} * sizeof(char16_t));
    GlobalUnlock(block);
    return block;
}

}  // namespace

bool ClipboardPutText(WindowHandle owner, const char16_t* text, uint32_t units) {
    // Before the clipboard is emptied: what is there must not be lost for a text that does not fit.
    const HGLOBAL block = MakeBlock(text, units);
    if (block == nullptr) return false;
    bool put = false;
    if (OpenClipboard(ToHwnd(owner))) {
        put = EmptyClipboard() && SetClipboardData(CF_UNICODETEXT, block) != nullptr;
        CloseClipboard();
    }
    if (!put) GlobalFree(block);
    return put;
}

bool ClipboardOpen(WindowHandle owner) { return OpenClipboard(ToHwnd(owner)) != FALSE; }

const char16_t* ClipboardText(uint32_t* units) {
    *units = 0;
    openText = GetClipboardData(CF_UNICODETEXT);
    if (openText == nullptr) return nullptr;
    const auto* text = static_cast<const char16_t*>(GlobalLock(openText));
    if (text == nullptr) {
        openText = nullptr;
        return nullptr;
    }
    const SIZE_T room = GlobalSize(openText) / sizeof(char16_t);
    while (*units < room && text[*units] != 0) ++*units;
    return text;
}

void ClipboardClose() {
    if (openText != nullptr) GlobalUnlock(openText);
    openText = nullptr;
    CloseClipboard();
}

}  // namespace nira
