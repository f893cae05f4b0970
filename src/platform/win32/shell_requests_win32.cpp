#include "platform/shell_requests.h"

#include <windows.h>

#include <commctrl.h>
#include <windowsx.h>

#include <cwchar>

#include "platform/win32/casts.h"
#include "shell/low_memory.h"

namespace nira {

namespace {

constexpr ULONGLONG kFirstLook = 250;  // milliseconds; what ends sooner leaves keys typed ahead alone
constexpr ULONGLONG kNextLook = 50;
constexpr int kMostPaints = 16;  // a window that never becomes valid must not hold the operation up

ULONGLONG nextLook = 0;

// Touches before the system has made mouse messages of them; headers for Windows 7 do not name them.
constexpr UINT kPointerFirst = 0x0241;
constexpr UINT kPointerDown = 0x0246;
constexpr UINT kPointerLast = 0x0257;

bool IsBar(HWND window) {
    wchar_t name[32] = {};
    GetClassNameW(window, name, 32);
    return wcscmp(name, TOOLBARCLASSNAMEW) == 0;
}

bool IsCancelOfBar(HWND bar, POINT point) {
    const LRESULT index = SendMessageW(bar, TB_HITTEST, 0, reinterpret_cast<LPARAM>(&point));
    TBBUTTON button = {};
    if (index < 0 ||
        !SendMessageW(bar, TB_GETBUTTON, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&button)))
        return false;
    return button.idCommand == IDCANCEL && (button.fsState & TBSTATE_ENABLED) != 0;
}

bool PressesCancel(const MSG& message) {
    if (message.message != WM_LBUTTONDOWN && message.message != kPointerDown) return false;
    POINT point = {GET_X_LPARAM(message.lParam), GET_Y_LPARAM(message.lParam)};
    if (message.message == kPointerDown) ScreenToClient(message.hwnd, &point);
    if (IsBar(message.hwnd)) return IsCancelOfBar(message.hwnd, point);
    return GetDlgCtrlID(message.hwnd) == IDCANCEL && IsWindowEnabled(message.hwnd);
}

// Takes what is waiting in a range of messages and forgets it. Returns whether the person wants to stop.
bool SwallowInput(UINT first, UINT last) {
    bool stops = false;
    MSG message = {};
    while (PeekMessageW(&message, nullptr, first, last, PM_REMOVE)) {
        stops =
            stops || (message.message == WM_KEYDOWN && message.wParam == VK_ESCAPE) || PressesCancel(message);
    }
    return stops;
}

struct MessageRange {
    UINT first;
    UINT last;
};
constexpr MessageRange kInput[] = {{WM_KEYFIRST, WM_KEYLAST},
                                   {WM_MOUSEFIRST, WM_MOUSELAST},
                                   {WM_NCMOUSEMOVE, WM_NCXBUTTONDBLCLK},
                                   {kPointerFirst, kPointerLast}};

// Looking for messages is also what answers the ones that other programs and the system have sent. Posted
// ones but for these, requests to close among them, stay where they are.
bool LookAtMessages() {
    bool stops = false;
    for (const auto& [first, last] : kInput) stops = SwallowInput(first, last) || stops;
    MSG message = {};
    for (int i = 0; i < kMostPaints && PeekMessageW(&message, nullptr, WM_PAINT, WM_PAINT, PM_REMOVE); ++i) {
        DispatchMessageW(&message);
    }
    SetCursor(LoadCursorW(nullptr, IDC_WAIT));
    return stops;
}

}  // namespace

void RequestFreeMemory(uint32_t bytes) { shell::SHCloseApps(bytes); }

uint32_t LastMemoryRequest() { return shell::LastCloseAppsRequest(); }

void ShowOutOfMemoryBox(WindowHandle owner) { shell::SHShowOutOfMemory(ToHwnd(owner), 0); }

void BeginLongOperation() { nextLook = GetTickCount64() + kFirstLook; }

bool AnsweringDue() { return GetTickCount64() >= nextLook; }

bool KeepAnswering() {
    if (!AnsweringDue()) return true;
    const bool stops = LookAtMessages();
    nextLook = GetTickCount64() + kNextLook;
    return !stops;
}

}  // namespace nira
