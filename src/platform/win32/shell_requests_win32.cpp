#include "platform/shell_requests.h"

#include "platform/win32/casts.h"
#include "shell/low_memory.h"

namespace nira {

namespace {

constexpr ULONGLONG kFirstLook = 250;  // milliseconds; what ends sooner leaves keys typed ahead alone
constexpr ULONGLONG kNextLook = 50;
constexpr int kMostPaints = 16;  // a window that never becomes valid must not hold the operation up

ULONGLONG nextLook = 0;

// Takes what is waiting in a range of messages and forgets it. Returns whether Esc was among it.
bool SwallowInput(UINT first, UINT last) {
    bool escape = false;
    MSG message = {};
    while (PeekMessageW(&message, nullptr, first, last, PM_REMOVE)) {
        escape = escape || (message.message == WM_KEYDOWN && message.wParam == VK_ESCAPE);
    }
    return escape;
}

// Looking for messages is also what answers the ones that other programs and the system have sent. Posted
// ones but for these, requests to close among them, stay where they are.
bool LookAtMessages() {
    const bool escape = SwallowInput(WM_KEYFIRST, WM_KEYLAST);
    SwallowInput(WM_MOUSEFIRST, WM_MOUSELAST);
    SwallowInput(WM_NCMOUSEMOVE, WM_NCXBUTTONDBLCLK);
    MSG message = {};
    for (int i = 0; i < kMostPaints && PeekMessageW(&message, nullptr, WM_PAINT, WM_PAINT, PM_REMOVE); ++i) {
        DispatchMessageW(&message);
    }
    SetCursor(LoadCursorW(nullptr, IDC_WAIT));
    return escape;
}

}  // namespace

void RequestFreeMemory(uint32_t bytes) { shell::SHCloseApps(bytes); }

uint32_t LastMemoryRequest() { return shell::LastCloseAppsRequest(); }

void ShowOutOfMemoryBox(WindowHandle owner) { shell::SHShowOutOfMemory(ToHwnd(owner), 0); }

void BeginLongOperation() { nextLook = GetTickCount64() + kFirstLook; }

bool AnsweringDue() { return GetTickCount64() >= nextLook; }

bool KeepAnswering() {
    if (!AnsweringDue()) return true;
    const bool escape = LookAtMessages();
    nextLook = GetTickCount64() + kNextLook;
    return !escape;
}

}  // namespace nira
