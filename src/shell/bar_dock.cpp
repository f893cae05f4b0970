#include "shell/bar_dock.h"

#include "shell/subclass.h"

namespace shell {

namespace {

constexpr const wchar_t* kOwnerRecord = L"shell.dock";
constexpr const wchar_t* kBarRecord = L"shell.docked";

struct DockedBar {
    HWND window;
    DockedBar* below;
};

struct Dock {
    HWND owner;
    DockedBar* top;
    int height;  // of the bar in sight
};

LRESULT CALLBACK OwnerProc(HWND, UINT, WPARAM, LPARAM, UINT_PTR, DWORD_PTR);
LRESULT CALLBACK BarProc(HWND, UINT, WPARAM, LPARAM, UINT_PTR, DWORD_PTR);

Dock* FindDock(HWND owner) { return static_cast<Dock*>(FindRecord(owner, kOwnerRecord)); }

const DockedBar* FindEntry(HWND owner, HWND window) {
    const Dock* dock = FindDock(owner);
    const DockedBar* bar = dock ? dock->top : nullptr;
    while (bar && bar->window != window) {
        bar = bar->below;
    }
    return bar;
}

Dock* FindOrMakeDock(HWND owner) {
    if (Dock* dock = FindDock(owner)) {
        return dock;
    }
    Dock* dock = static_cast<Dock*>(AllocRecord(sizeof(Dock)));
    if (!dock) {
        return nullptr;
    }
    dock->owner = owner;
    if (!AttachRecord(owner, OwnerProc, kOwnerRecord, dock)) {
        FreeRecord(dock);
        return nullptr;
    }
    return dock;
}

int WindowHeight(HWND window) {
    RECT rect = {};
    GetWindowRect(window, &rect);
    return rect.bottom - rect.top;
}

// Puts the bar in sight along the lower edge of a client area of this size.
void PlaceTopBar(Dock* dock, int width, int height) {
    if (!dock->top) {
        dock->height = 0;
        return;
    }
    const HWND bar = dock->top->window;
    int barHeight = static_cast<int>(SendMessageW(bar, kBarHeightForWidth, static_cast<WPARAM>(width), 0));
    if (barHeight <= 0) {
        barHeight = WindowHeight(bar);
    }
    SetWindowPos(bar, HWND_TOP, 0, height - barHeight, width, barHeight, SWP_NOACTIVATE | SWP_SHOWWINDOW);
    dock->height = barHeight;
}

LRESULT OnSize(Dock* dock, WPARAM wParam, LPARAM lParam) {
    // The handheld has no minimised state; a content of no size would lose its layout.
    if (wParam == SIZE_MINIMIZED) {
        return 0;
    }
    const int width = LOWORD(lParam);
    const int height = HIWORD(lParam);
    PlaceTopBar(dock, width, height);
    const int left = height > dock->height ? height - dock->height : 0;
    return DefSubclassProc(dock->owner, WM_SIZE, wParam, MAKELPARAM(width, left));
}

// True when the notification was the bar's own business.
bool ReturnNotification(Dock* dock, WPARAM wParam, LPARAM lParam) {
    const NMHDR* header = reinterpret_cast<const NMHDR*>(lParam);
    return header && IsDocked(dock->owner, header->hwndFrom) &&
           SendMessageW(header->hwndFrom, kBarNotify, wParam, lParam) != 0;
}

bool PostponeCommand(Dock* dock, WPARAM wParam, LPARAM lParam) {
    const HWND sender = reinterpret_cast<HWND>(lParam);
    return sender && IsDocked(dock->owner, sender) && SendMessageW(sender, kBarCommand, wParam, lParam) != 0;
}

LRESULT CALLBACK OwnerProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                           DWORD_PTR data) {
    Dock* dock = reinterpret_cast<Dock*>(data);
    switch (message) {
        case WM_SIZE:
            return OnSize(dock, wParam, lParam);
        case WM_NOTIFY:
            if (ReturnNotification(dock, wParam, lParam)) {
                return 0;
            }
            break;
        case WM_COMMAND:
            if (PostponeCommand(dock, wParam, lParam)) {
                return 0;
            }
            break;
        case WM_NCDESTROY:
            FreeRecord(DetachRecord(window, OwnerProc, kOwnerRecord));
            break;
        default:
            break;
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

// Takes the bar out of the dock's list and frees its entry.
void Unlink(Dock* dock, HWND bar) {
    DockedBar** link = &dock->top;
    while (*link && (*link)->window != bar) {
        link = &(*link)->below;
    }
    if (DockedBar* entry = *link) {
        *link = entry->below;
        FreeRecord(entry);
    }
}

void OnBarDestroyed(HWND bar) {
    const HWND owner = GetParent(bar);
    Dock* dock = FindDock(owner);
    if (!dock) {
        return;
    }
    const bool wasInSight = dock->top && dock->top->window == bar;
    Unlink(dock, bar);
    if (wasInSight) {
        RefreshDock(owner);
    }
}

LRESULT CALLBACK BarProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR) {
    // At WM_DESTROY the bar still knows its owner.
    if (message == WM_DESTROY) {
        OnBarDestroyed(window);
    } else if (message == WM_NCDESTROY) {
        DetachRecord(window, BarProc, kBarRecord);
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

}  // namespace

bool DockBar(HWND owner, HWND bar) {
    Dock* dock = FindOrMakeDock(owner);
    if (!dock) {
        return false;
    }
    DockedBar* entry = static_cast<DockedBar*>(AllocRecord(sizeof(DockedBar)));
    if (!entry || !AttachRecord(bar, BarProc, kBarRecord, entry)) {
        FreeRecord(entry);
        return false;
    }
    if (dock->top) {
        ShowWindow(dock->top->window, SW_HIDE);
    }
    entry->window = bar;
    entry->below = dock->top;
    dock->top = entry;
    RefreshDock(owner);
    return true;
}

void RefreshDock(HWND owner) {
    Dock* dock = FindDock(owner);
    if (!dock || IsIconic(owner)) {
        return;
    }
    RECT client = {};
    GetClientRect(owner, &client);
    const int before = dock->height;
    PlaceTopBar(dock, client.right, client.bottom);
    // A window still being made hears of its size anyway; one being destroyed is hidden first, and must hear
    // of nothing.
    if (dock->height != before && IsWindowVisible(owner)) {
        SendMessageW(owner, WM_SIZE, IsZoomed(owner) ? SIZE_MAXIMIZED : SIZE_RESTORED,
                     MAKELPARAM(client.right, client.bottom));
    }
}

HWND TopBar(HWND owner) {
    const Dock* dock = FindDock(owner);
    return dock && dock->top ? dock->top->window : nullptr;
}

HWND BarBelow(HWND owner, HWND bar) {
    const DockedBar* entry = FindEntry(owner, bar);
    return entry && entry->below ? entry->below->window : nullptr;
}

bool IsDocked(HWND owner, HWND window) { return FindEntry(owner, window) != nullptr; }

int DockHeight(HWND owner) {
    const Dock* dock = FindDock(owner);
    return dock ? dock->height : 0;
}

}  // namespace shell
