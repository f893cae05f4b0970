// nira_watcher: a library that nira_probe puts into nira.exe, because a program's menus cannot be read from
// outside. Asked by a message to the window of an open pop-up, it lists the pop-up's items in a shared block
// of memory.
#include "watcher.h"

#include <cstdio>
#include <cwchar>

namespace {

const wchar_t* Mark(UINT state, UINT flag, const wchar_t* word) { return (state & flag) != 0 ? word : L""; }

// Appends one line: identifier, states, text. Returns the units written.
size_t WriteItem(HMENU menu, UINT position, wchar_t* target, size_t room) {
    wchar_t text[400] = {};
    MENUITEMINFOW item = {};
    item.cbSize = sizeof(item);
    item.fMask = MIIM_ID | MIIM_STATE | MIIM_FTYPE | MIIM_SUBMENU | MIIM_STRING;
    item.dwTypeData = text;
    item.cch = 400;
    if (!GetMenuItemInfoW(menu, position, TRUE, &item)) return 0;
    if ((item.fType & MFT_SEPARATOR) != 0) item.wID = 0;
    for (wchar_t* unit = text; *unit != 0; ++unit) {
        if (*unit == L'\t') *unit = L'|';
    }
    const int written = std::swprintf(
        target, room, L"%u\t%ls%ls%ls%ls\t%ls\n", item.hSubMenu != nullptr ? 0 : item.wID,
        Mark(item.fState, MFS_GRAYED, L"grayed "), Mark(item.fState, MFS_CHECKED, L"checked "),
        Mark(item.fType, MFT_RADIOCHECK, L"radio "), item.hSubMenu != nullptr ? L"pop-up " : L"", text);
    return written > 0 ? static_cast<size_t>(written) : 0;
}

void ListMenu(HMENU menu) {
    const HANDLE block = OpenFileMappingW(FILE_MAP_WRITE, FALSE, kWatcherBlock);
    if (block == nullptr) return;
    auto* text = static_cast<wchar_t*>(MapViewOfFile(block, FILE_MAP_WRITE, 0, 0, 0));
    if (text != nullptr) {
        size_t used = 0;
        const int count = GetMenuItemCount(menu);
        for (int i = 0; i < count; ++i) {
            used += WriteItem(menu, static_cast<UINT>(i), text + used, kWatcherUnits - used);
        }
        text[used] = 0;
        UnmapViewOfFile(text);
    }
    CloseHandle(block);
}

}  // namespace

extern "C" __declspec(dllexport) LRESULT CALLBACK WatchMessages(int code, WPARAM first, LPARAM second) {
    const auto* call = reinterpret_cast<const CWPSTRUCT*>(second);
    if (code == HC_ACTION && call->message == RegisterWindowMessageW(kWatcherQuestion)) {
        ListMenu(reinterpret_cast<HMENU>(SendMessageW(call->hwnd, kMenuOfPopup, 0, 0)));
    }
    return CallNextHookEx(nullptr, code, first, second);
}
