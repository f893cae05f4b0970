#include "shell/text_window.h"

#include "shell/desktop_keys.h"
#include "shell/subclass.h"

namespace shell {

namespace {

constexpr const wchar_t* kRecordName = L"shell.text";

constexpr UINT kMostUnits = 100;  // per notch; more than a page of anything

// One scroll bar's part in panning, in pixels.
struct Pan {
    int rest;  // that the content has still to move forward (negative: back)
    int step;  // that the last line moved it; 0 before the first
};

struct TextWindow {
    int verticalRest;    // of a notch times lines, not yet scrolled
    int horizontalRest;  // the same sideways
    bool holdsMouse;     // between WM_LBUTTONDOWN and its end
    LPARAM lastPoint;    // of the mouse while it is held
    Pan vertical;
    Pan horizontal;
    POINT lastTouch;  // of the gesture under way, on the screen
};

// What the system scrolls for one notch of a wheel.
UINT UnitsPerNotch(UINT setting) {
    UINT units = 3;
    SystemParametersInfoW(setting, 0, &units, 0);
    return units == WHEEL_PAGESCROLL || units < kMostUnits ? units : kMostUnits;
}

// Turns a movement of the wheel into whole steps and keeps the rest. A movement the other way drops a rest.
int WholeSteps(int* rest, int delta, int unitsPerNotch) {
    if ((*rest > 0 && delta < 0) || (*rest < 0 && delta > 0)) {
        *rest = 0;
    }
    const int total = *rest + delta * unitsPerNotch;
    *rest = total % WHEEL_DELTA;
    return total / WHEEL_DELTA;
}

void Scroll(HWND window, UINT message, int steps, WORD back, WORD forward) {
    const WORD code = steps < 0 ? back : forward;
    for (int left = steps < 0 ? -steps : steps; left > 0; --left) {
        SendMessageW(window, message, MAKEWPARAM(code, 0), 0);
    }
}

void OnWheel(HWND window, TextWindow* text, WPARAM wParam) {
    const UINT lines = UnitsPerNotch(SPI_GETWHEELSCROLLLINES);
    const bool pages = lines == WHEEL_PAGESCROLL;
    // Away from the person is up.
    const int delta = -GET_WHEEL_DELTA_WPARAM(wParam);
    const int steps = WholeSteps(&text->verticalRest, delta, pages ? 1 : static_cast<int>(lines));
    Scroll(window, WM_VSCROLL, steps, pages ? SB_PAGEUP : SB_LINEUP, pages ? SB_PAGEDOWN : SB_LINEDOWN);
}

constexpr UINT kWheelScrollChars = 0x006C;  // SPI_GETWHEELSCROLLCHARS

void OnTiltedWheel(HWND window, TextWindow* text, WPARAM wParam) {
    const UINT characters = UnitsPerNotch(kWheelScrollChars);
    const bool pages = characters == WHEEL_PAGESCROLL;
    const int delta = GET_WHEEL_DELTA_WPARAM(wParam);
    const int steps = WholeSteps(&text->horizontalRest, delta, pages ? 1 : static_cast<int>(characters));
    Scroll(window, WM_HSCROLL, steps, pages ? SB_PAGELEFT : SB_LINELEFT, pages ? SB_PAGERIGHT : SB_LINERIGHT);
}

// ---- Touch ----

// What one scroll bar and the messages about it are called.
struct Bar {
    int kind;
    UINT message;
    int clientLength;
};

SCROLLINFO ScrollState(HWND window, int kind) {
    SCROLLINFO info = {};
    info.cbSize = sizeof(info);
    info.fMask = SIF_PAGE | SIF_POS;
    GetScrollInfo(window, kind, &info);
    return info;
}

// One line forward or back; false when the content did not move, being at its end.
bool PanLine(HWND window, const Bar& bar, Pan* pan, int pixelsPerUnit) {
    const int before = ScrollState(window, bar.kind).nPos;
    Scroll(window, bar.message, pan->rest < 0 ? -1 : 1, SB_LINEUP, SB_LINEDOWN);
    const int moved = (ScrollState(window, bar.kind).nPos - before) * pixelsPerUnit;
    pan->rest -= moved;
    if (moved != 0) {
        pan->step = moved < 0 ? -moved : moved;
    }
    return moved != 0;
}

void PanBar(HWND window, const Bar& bar, Pan* pan, int pixels) {
    const int page = static_cast<int>(ScrollState(window, bar.kind).nPage);
    const int pixelsPerUnit = page > 0 && page < bar.clientLength ? bar.clientLength / page : 1;
    pan->rest += pixels;
    // Less than a line either way waits: a resting finger trembles, and must not move the text to and fro.
    for (;;) {
        const int step = pan->step > pixelsPerUnit ? pan->step : pixelsPerUnit;
        if (pan->rest < step && pan->rest > -step) {
            return;
        }
        if (!PanLine(window, bar, pan, pixelsPerUnit)) {
            pan->rest = 0;
            return;
        }
    }
}

void ConfigureGestures(HWND window) {
    // Up and down is how a finger scrolls; sideways it selects, which needs the mouse messages.
    const DWORD wanted = GC_PAN | GC_PAN_WITH_SINGLE_FINGER_VERTICALLY | GC_PAN_WITH_INERTIA;
    GESTURECONFIG pan = {GID_PAN, wanted, GC_PAN_WITH_SINGLE_FINGER_HORIZONTALLY};
    SetGestureConfig(window, 0, 1, &pan, sizeof(pan));
}

// True when the gesture was a pan, which has then been followed.
bool FollowGesture(HWND window, TextWindow* text, LPARAM lParam) {
    GESTUREINFO info = {};
    info.cbSize = sizeof(info);
    const auto handle = reinterpret_cast<HGESTUREINFO>(lParam);
    if (!GetGestureInfo(handle, &info) || info.dwID != GID_PAN) {
        return false;
    }
    const POINT touch = {info.ptsLocation.x, info.ptsLocation.y};
    const POINT last = text->lastTouch;
    text->lastTouch = touch;
    if (info.dwFlags & GF_BEGIN) {
        text->vertical.rest = 0;
        text->horizontal.rest = 0;
    } else {
        PanTextWindow(window, touch.x - last.x, touch.y - last.y);
    }
    CloseGestureInfoHandle(handle);
    return true;
}

LRESULT OnButtonUp(HWND window, TextWindow* text, WPARAM wParam, LPARAM lParam) {
    const bool held = text->holdsMouse;
    text->holdsMouse = false;
    const LRESULT result = DefSubclassProc(window, WM_LBUTTONUP, wParam, lParam);
    if (held && GetCapture() == window) {
        ReleaseCapture();
    }
    return result;
}

// The mouse was taken away in the middle of a drag: its end will be heard nowhere else.
void OnMouseTaken(HWND window, TextWindow* text) {
    if (text->holdsMouse) {
        text->holdsMouse = false;
        DefSubclassProc(window, WM_LBUTTONUP, 0, text->lastPoint);
    }
}

bool ShowTextPointer(LPARAM lParam) {
    if (LOWORD(lParam) != HTCLIENT) {
        return false;
    }
    SetCursor(LoadCursorW(nullptr, MAKEINTRESOURCEW(32513)));  // IDC_IBEAM
    return true;
}

LRESULT CALLBACK TextWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                DWORD_PTR data) {
    TextWindow* text = reinterpret_cast<TextWindow*>(data);
    switch (message) {
        case WM_MOUSEWHEEL:
            OnWheel(window, text, wParam);
            return 0;
        case WM_MOUSEHWHEEL:
            OnTiltedWheel(window, text, wParam);
            return 0;
        case WM_GESTURENOTIFY:
            ConfigureGestures(window);
            break;
        case WM_GESTURE:
            if (FollowGesture(window, text, lParam)) {
                return 0;
            }
            break;
        case WM_LBUTTONDOWN:
            SetCapture(window);
            text->holdsMouse = true;
            text->lastPoint = lParam;
            break;
        case WM_MOUSEMOVE:
            text->lastPoint = lParam;
            break;
        case WM_LBUTTONUP:
            return OnButtonUp(window, text, wParam, lParam);
        case WM_CAPTURECHANGED:
            OnMouseTaken(window, text);
            break;
        case WM_CHAR:
            if (IsStrayCharacter(static_cast<wchar_t>(wParam), KeyState(VK_CONTROL) < 0)) {
                return 0;
            }
            break;
        case WM_SETCURSOR:
            if (ShowTextPointer(lParam)) {
                return TRUE;
            }
            break;
        case WM_SYSCOMMAND:
            // Alt with a letter ends at the window with the keyboard; the menus are the frame's.
            if ((wParam & 0xFFF0) == SC_KEYMENU && GetAncestor(window, GA_ROOT) != window) {
                return SendMessageW(GetAncestor(window, GA_ROOT), message, wParam, lParam);
            }
            break;
        case WM_NCDESTROY:
            FreeRecord(DetachRecord(window, TextWindowProc, kRecordName));
            break;
        default:
            break;
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

}  // namespace

bool AttachTextWindow(HWND window) {
    void* text = AllocRecord(sizeof(TextWindow));
    if (text && AttachRecord(window, TextWindowProc, kRecordName, text)) {
        return true;
    }
    FreeRecord(text);
    return false;
}

void PanTextWindow(HWND window, int right, int down) {
    auto* text = static_cast<TextWindow*>(FindRecord(window, kRecordName));
    if (!text) {
        return;
    }
    RECT client = {};
    GetClientRect(window, &client);
    // The content goes where the finger goes, so the view goes the other way.
    PanBar(window, {SB_VERT, WM_VSCROLL, static_cast<int>(client.bottom)}, &text->vertical, -down);
    PanBar(window, {SB_HORZ, WM_HSCROLL, static_cast<int>(client.right)}, &text->horizontal, -right);
}

}  // namespace shell
