#include "platform/surface.h"

#include "platform/win32/casts.h"

namespace nira {

namespace {

// True when the bar has these parts already.
bool ShowsAlready(HWND window, int bar, const SCROLLINFO& wanted) {
    SCROLLINFO now = {};
    now.cbSize = sizeof(now);
    now.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    if (!GetScrollInfo(window, bar, &now)) return false;
    return ((wanted.fMask & SIF_RANGE) == 0 || (now.nMin == wanted.nMin && now.nMax == wanted.nMax)) &&
           ((wanted.fMask & SIF_PAGE) == 0 || now.nPage == wanted.nPage) &&
           ((wanted.fMask & SIF_POS) == 0 || now.nPos == wanted.nPos);
}

// A bar is drawn with every call, put together from the pictures of a theme, which takes longer than painting
// all of the text. Most calls change nothing.
void SetScroll(WindowHandle window, SurfaceBar bar, UINT parts, int32_t maximum, int32_t page,
               int32_t position) {
    if (window == nullptr) return;
    SCROLLINFO info = {};
    info.cbSize = sizeof(info);
    info.fMask = parts | SIF_DISABLENOSCROLL;
    info.nMax = maximum;
    info.nPage = static_cast<UINT>(page > 0 ? page : 0);
    info.nPos = position;
    const int which = bar == SurfaceBar::kHorizontal ? SB_HORZ : SB_VERT;
    if (!ShowsAlready(ToHwnd(window), which, info)) SetScrollInfo(ToHwnd(window), which, &info, TRUE);
}

// Asks the window under the pointer for its shape, as the system does when the pointer moves.
bool AskForPointer() {
    POINT point = {};
    if (!GetCursorPos(&point)) return false;
    const HWND window = WindowFromPoint(point);
    if (window == nullptr || GetWindowThreadProcessId(window, nullptr) != GetCurrentThreadId()) return false;
    const LRESULT place = SendMessageW(window, WM_NCHITTEST, 0, MAKELPARAM(point.x, point.y));
    SendMessageW(window, WM_SETCURSOR, reinterpret_cast<WPARAM>(window), MAKELPARAM(place, WM_MOUSEMOVE));
    return true;
}

}  // namespace

SurfaceSize SurfaceClientSize(WindowHandle window) {
    RECT client = {};
    if (window == nullptr || !GetClientRect(ToHwnd(window), &client)) return {0, 0};
    return {static_cast<int32_t>(client.right), static_cast<int32_t>(client.bottom)};
}

void SurfaceSetScrollPosition(WindowHandle window, SurfaceBar bar, int32_t position) {
    SetScroll(window, bar, SIF_POS, 0, 0, position);
}

void SurfaceSetScrollRange(WindowHandle window, SurfaceBar bar, int32_t maximum, int32_t position) {
    SetScroll(window, bar, SIF_RANGE | SIF_POS, maximum, 0, position);
}

void SurfaceSetScrollPage(WindowHandle window, SurfaceBar bar, int32_t page) {
    SetScroll(window, bar, SIF_PAGE, 0, page, 0);
}

int32_t SurfaceTrackPosition(WindowHandle window, SurfaceBar bar) {
    SCROLLINFO info = {};
    info.cbSize = sizeof(info);
    info.fMask = SIF_ALL;
    if (window == nullptr) return 0;
    GetScrollInfo(ToHwnd(window), bar == SurfaceBar::kHorizontal ? SB_HORZ : SB_VERT, &info);
    return info.nTrackPos;
}

void SurfaceCreateCaret(WindowHandle window, int32_t width, int32_t height) {
    if (window != nullptr) CreateCaret(ToHwnd(window), nullptr, width, height);
}

bool SurfaceHasCaret(WindowHandle window) {
    GUITHREADINFO info = {};
    info.cbSize = sizeof(info);
    return window != nullptr && GetGUIThreadInfo(GetCurrentThreadId(), &info) &&
           info.hwndCaret == ToHwnd(window);
}

void SurfaceDestroyCaret() { DestroyCaret(); }

void SurfaceMoveCaret(int32_t x, int32_t y) { SetCaretPos(x, y); }

void SurfaceCaretPosition(int32_t* x, int32_t* y) {
    POINT point = {};
    GetCaretPos(&point);
    *x = point.x;
    *y = point.y;
}

// The system takes a null window for whatever window has the caret.
void SurfaceShowCaret(WindowHandle window) {
    if (window != nullptr) ShowCaret(ToHwnd(window));
}

void SurfaceHideCaret(WindowHandle window) {
    if (window != nullptr) HideCaret(ToHwnd(window));
}

void SurfaceStartTimer(WindowHandle window, uint32_t id, uint32_t milliseconds) {
    if (window != nullptr) SetTimer(ToHwnd(window), id, milliseconds, nullptr);
}

void SurfaceStopTimer(WindowHandle window, uint32_t id) {
    if (window != nullptr) KillTimer(ToHwnd(window), id);
}

void SurfaceSetTitle(WindowHandle window, const char16_t* title) {
    if (window != nullptr) SetWindowTextW(ToHwnd(window), ToWide(title));
}

void ShowWaitPointer() { SetCursor(LoadCursorW(nullptr, IDC_WAIT)); }

void RestorePointer() {
    if (!AskForPointer()) SetCursor(LoadCursorW(nullptr, IDC_ARROW));
}

}  // namespace nira
