#include "shell/menu_walk.h"

namespace shell {

namespace {

struct Walk {
    int depth;         // pop-ups open now, the first one included
    bool opensNested;  // the selected item does
    MenuStep step;
};

// The walk of this thread: at most one menu is open at a time.
thread_local Walk* current = nullptr;

MenuStep StepOf(const Walk& walk, WPARAM key) {
    if (key == VK_LEFT && walk.depth <= 1) {
        return MenuStep::kLeft;
    }
    return key == VK_RIGHT && !walk.opensNested ? MenuStep::kRight : MenuStep::kNone;
}

// A menu takes the keys itself; a filter is the only thing that sees them before.
LRESULT CALLBACK KeyFilter(int code, WPARAM wParam, LPARAM lParam) {
    const MSG* message = reinterpret_cast<const MSG*>(lParam);
    if (code == MSGF_MENU && current && message->message == WM_KEYDOWN) {
        const MenuStep step = StepOf(*current, message->wParam);
        if (step != MenuStep::kNone) {
            current->step = step;
            EndMenu();
            return TRUE;
        }
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

}  // namespace

MenuStep TrackWalkable(HMENU popup, UINT flags, POINT at, HWND window, TPMPARAMS* avoid) {
    Walk walk = {};
    Walk* const before = current;
    current = &walk;
    // Without the hook the arrows lead nowhere, and the menu is as good as ever otherwise.
    const HHOOK hook = SetWindowsHookExW(WH_MSGFILTER, KeyFilter, nullptr, GetCurrentThreadId());
    TrackPopupMenuEx(popup, flags, at.x, at.y, window, avoid);
    if (hook) {
        UnhookWindowsHookEx(hook);
    }
    current = before;
    return walk.step;
}

void NoteMenuMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (!current) {
        return;
    }
    if (message == WM_INITMENUPOPUP) {
        ++current->depth;
        current->opensNested = false;
    } else if (message == WM_UNINITMENUPOPUP) {
        --current->depth;
        // The item that opened it is the selected one again, and nothing else tells so.
        current->opensNested = true;
    } else if (message == WM_MENUSELECT && lParam) {
        const UINT flags = HIWORD(wParam);
        current->opensNested = (flags & MF_POPUP) != 0 && (flags & (MF_GRAYED | MF_DISABLED)) == 0;
    }
}

}  // namespace shell
