#include "platform/clipboard.h"

#include "platform/win32/casts.h"

namespace nira {

namespace {

HANDLE openText = nullptr;  // locked while the clipboard is open

}  // namespace

char16_t* ClipboardAllocate(size_t units) {
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, (units + 1) * sizeof(char16_t));
    if (block == nullptr) return nullptr;
    void* text = GlobalLock(block);
    if (text == nullptr) GlobalFree(block);
    return static_cast<char16_t*>(text);
}

bool ClipboardPut(WindowHandle owner, char16_t* block, size_t) {
    const HGLOBAL memory = GlobalHandle(block);
    GlobalUnlock(memory);
    bool put = false;
    if (OpenClipboard(ToHwnd(owner))) {
        put = EmptyClipboard() && SetClipboardData(CF_UNICODETEXT, memory) != nullptr;
        CloseClipboard();
    }
    if (!put) GlobalFree(memory);
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
