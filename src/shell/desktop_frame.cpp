#include "shell/desktop_frame.h"

#include <shellapi.h>

#include "shell/activation.h"
#include "shell/bar_dock.h"
#include "shell/density.h"
#include "shell/menu_bar.h"
#include "shell/subclass.h"

namespace shell {

namespace {

constexpr const wchar_t* kRecordName = L"shell.frame";
constexpr int kFirstWidth = 480;
constexpr int kFirstHeight = 640;
constexpr int kLeastWidth = 160;
constexpr int kLeastHeight = 120;

struct Frame {
    FrameEvents events;
    bool shown;          // for the first time; from then on the person sizes the window
    bool asking;         // mayClose has not answered yet
    bool sessionEnding;  // mayClose said yes to the end of the session
};

int Scaled(int length, int dotsPerInch) { return MulDiv(length, dotsPerInch, kPlainDensity); }

RECT WorkArea() {
    RECT work = {0, 0, kFirstWidth, kFirstHeight};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    return work;
}

// An eighth more than the first size is still about that size: a border of a few pixels around it helps
// nobody.
LONG FirstLength(LONG available, int wanted) { return available <= wanted + wanted / 8 ? available : wanted; }

Frame* FindFrame(HWND window) { return static_cast<Frame*>(FindRecord(window, kRecordName)); }

// Asking may end with the window gone, so the record is looked up again before it is touched.
bool MayClose(HWND window, Frame* frame) {
    if (frame->asking) {
        return false;
    }
    if (!frame->events.mayClose) {
        return true;
    }
    frame->asking = true;
    const bool answer = frame->events.mayClose();
    if (Frame* still = FindFrame(window)) {
        still->asking = false;
        return answer;
    }
    return false;
}

LRESULT OnClose(HWND window, Frame* frame) {
    if (MayClose(window, frame)) {
        DefSubclassProc(window, WM_CLOSE, 0, 0);
    }
    return 0;
}

LRESULT OnQueryEndSession(HWND window, Frame* frame) {
    const bool mayEnd = MayClose(window, frame);
    if (Frame* still = FindFrame(window)) {
        still->sessionEnding = mayEnd;
    }
    return mayEnd;
}

// When another program kept the session from ending, ours has already let go of its documents: it ends alone.
void OnEndSession(HWND window, Frame* frame, bool ends) {
    if (!ends && frame->sessionEnding) {
        PostMessageW(window, WM_CLOSE, 0, 0);
    }
    frame->sessionEnding = false;
}

// The record is not touched any more once a file is handed on: opening it may end with the window gone.
void OnDrop(HWND window, const Frame* frame, HDROP drop) {
    const auto take = frame->events.fileDropped;
    const UINT count = DragQueryFileW(drop, 0xFFFFFFFF, nullptr, 0);
    SetForegroundWindow(window);
    for (UINT i = 0; i < count; ++i) {
        const UINT units = DragQueryFileW(drop, i, nullptr, 0) + 1;
        auto* path = static_cast<wchar_t*>(AllocRecord(units * sizeof(wchar_t)));
        if (path && DragQueryFileW(drop, i, path, units)) {
            take(path);
        }
        FreeRecord(path);
    }
    DragFinish(drop);
}

void OnPositionChanging(HWND window, const Frame* frame, WINDOWPOS* position) {
    if (!frame->shown && (position->flags & SWP_NOSIZE) == 0) {
        position->cy += DockHeight(window);
    }
}

void OnMinMaxInfo(MINMAXINFO* info) {
    const int density = ScreenDensity();
    info->ptMinTrackSize.x = Scaled(kLeastWidth, density);
    info->ptMinTrackSize.y = Scaled(kLeastHeight, density);
}

void OnDensityChanged(HWND window, const RECT* suggested) {
    SetWindowPos(window, nullptr, suggested->left, suggested->top, suggested->right - suggested->left,
                 suggested->bottom - suggested->top, SWP_NOZORDER | SWP_NOACTIVATE);
}

// True when the focus went on to the content.
bool PassFocusOn(HWND window) {
    const HWND content = IsIconic(window) ? nullptr : ContentWindow(window);
    if (content) {
        SetFocus(content);
    }
    return content != nullptr;
}

// F10, Alt alone and Alt with a letter, which on a desktop reach the menus, and here the bar's buttons.
// Alt+Space stays the system menu's.
bool OpenMenuByKey(HWND window, WPARAM command, LPARAM key) {
    const HWND bar = VisibleBar(window);
    const auto letter = static_cast<wchar_t>(key);
    return (command & 0xFFF0) == SC_KEYMENU && key != L' ' && bar &&
           (OpenDropDownByKey(bar, letter) || PressButtonByKey(bar, letter));
}

constexpr UINT kDensityChanged = 0x02E0;  // WM_DPICHANGED, which headers for Windows 7 do not name

LRESULT CALLBACK FrameProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                           DWORD_PTR data) {
    Frame* frame = reinterpret_cast<Frame*>(data);
    switch (message) {
        case WM_CLOSE:
            return OnClose(window, frame);
        case WM_QUERYENDSESSION:
            return OnQueryEndSession(window, frame);
        case WM_ENDSESSION:
            OnEndSession(window, frame, wParam != 0);
            return 0;
        case WM_DROPFILES:
            if (frame->events.fileDropped) {
                OnDrop(window, frame, reinterpret_cast<HDROP>(wParam));
                return 0;
            }
            break;
        case WM_SYSCOMMAND:
            if (OpenMenuByKey(window, wParam, lParam)) {
                return 0;
            }
            break;
        case WM_SHOWWINDOW:
            frame->shown = frame->shown || wParam;
            break;
        case WM_WINDOWPOSCHANGING:
            OnPositionChanging(window, frame, reinterpret_cast<WINDOWPOS*>(lParam));
            break;
        case WM_GETMINMAXINFO:
            DefSubclassProc(window, message, wParam, lParam);
            OnMinMaxInfo(reinterpret_cast<MINMAXINFO*>(lParam));
            return 0;
        case kDensityChanged:
            OnDensityChanged(window, reinterpret_cast<const RECT*>(lParam));
            return 0;
        case WM_SETFOCUS:
            if (PassFocusOn(window)) {
                return 0;
            }
            break;
        case WM_NCDESTROY:
            FreeRecord(DetachRecord(window, FrameProc, kRecordName));
            break;
        default:
            break;
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

// The window of this thread whose making is under way. The frame must be in place before WM_CREATE, where the
// application already makes its bar and sizes its window, and a hook is the only thing that sees a window
// before that.
thread_local Frame* pendingFrame = nullptr;

LRESULT CALLBACK CreationHook(int code, WPARAM wParam, LPARAM lParam) {
    if (code == HCBT_CREATEWND && pendingFrame) {
        const HWND window = reinterpret_cast<HWND>(wParam);
        if (AttachRecord(window, FrameProc, kRecordName, pendingFrame)) {
            pendingFrame = nullptr;
        }
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

struct Placement {
    int x;
    int y;
    int width;
    int height;
};

// Default positions and sizes become the first size in the middle of the work area.
Placement FirstPlacement(int x, int y, int width, int height) {
    const RECT work = WorkArea();
    const SIZE first = FirstWindowSize();
    Placement placement = {x, y, width, height};
    if (width == CW_USEDEFAULT) {
        placement.width = first.cx;
        placement.height = first.cy;
    }
    if (x == CW_USEDEFAULT) {
        placement.x = work.left + (work.right - work.left - placement.width) / 2;
        placement.y = work.top + (work.bottom - work.top - placement.height) / 2;
    }
    return placement;
}

HWND CreateWithFrame(Frame* frame, DWORD exStyle, const wchar_t* className, const wchar_t* title, DWORD style,
                     const Placement& at, HINSTANCE instance) {
    const HHOOK hook = SetWindowsHookExW(WH_CBT, CreationHook, nullptr, GetCurrentThreadId());
    if (!hook) {
        return nullptr;
    }
    pendingFrame = frame;
    const DWORD frameStyle = (style & ~DWORD{WS_VISIBLE}) | WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;
    const HWND window = CreateWindowExW(exStyle, className, title, frameStyle, at.x, at.y, at.width,
                                        at.height, nullptr, nullptr, instance, nullptr);
    const DWORD error = GetLastError();
    UnhookWindowsHookEx(hook);
    SetLastError(error);
    return window;
}

}  // namespace

SIZE FirstSizeFor(SIZE workArea, int dotsPerInch) {
    return {FirstLength(workArea.cx, Scaled(kFirstWidth, dotsPerInch)),
            FirstLength(workArea.cy, Scaled(kFirstHeight, dotsPerInch))};
}

SIZE FirstWindowSize() {
    const RECT work = WorkArea();
    return FirstSizeFor({work.right - work.left, work.bottom - work.top}, ScreenDensity());
}

HWND CreateMainFrame(DWORD exStyle, const wchar_t* className, const wchar_t* title, DWORD style, int x, int y,
                     int width, int height, HINSTANCE instance, const FrameEvents& events) {
    Frame* frame = static_cast<Frame*>(AllocRecord(sizeof(Frame)));
    if (!frame) {
        return nullptr;
    }
    frame->events = events;
    const DWORD allExStyle = events.fileDropped ? exStyle | WS_EX_ACCEPTFILES : exStyle;
    const HWND window = CreateWithFrame(frame, allExStyle, className, title, style,
                                        FirstPlacement(x, y, width, height), instance);
    // Still pending: no window ever took the record over.
    if (pendingFrame) {
        pendingFrame = nullptr;
        FreeRecord(frame);
    }
    return IsWindow(window) ? window : nullptr;
}

}  // namespace shell
