#include "shell/text_window.h"

#include "shell/desktop_keys.h"
#include "shell/subclass.h"

namespace shell {

namespace {

constexpr const wchar_t* kRecordName = L"shell.text";

constexpr UINT kMostUnits = 100;  // per notch; more than a page of anything

struct TextWindow {
    int verticalRest;    // of a notch times lines, not yet scrolled
    int horizontalRest;  // the same sideways
    bool holdsMouse;     // between WM_LBUTTONDOWN and its end
    LPARAM lastPoint;    // of the mouse while it is held
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

}  // namespace shell
