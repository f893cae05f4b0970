#include "shell/scrolling_page.h"

#include <windowsx.h>

#include "shell/subclass.h"

namespace shell {

namespace {

constexpr const wchar_t* kPageRecord = L"shell.page";
constexpr const wchar_t* kControlRecord = L"shell.page control";
constexpr int kLine = 16;  // pixels that an arrow of the scroll bar moves by
constexpr int kLinesPerNotch = 3;

struct Page {
    HWND window;
    ArrangePage arrange;
    int margin;
    int contentHeight;
    int offset;
    int arrangedWidth;  // -1 before the first
    bool placing;       // showing or hiding the scroll bar changes the size of the client area again
    bool dragging;
    int dragFrom;  // where on the page's content the finger holds it
};

Page* FindPage(HWND window) { return static_cast<Page*>(FindRecord(window, kPageRecord)); }

SIZE ClientSize(HWND window) {
    RECT client = {};
    GetClientRect(window, &client);
    return {client.right, client.bottom};
}

RECT PlaceInParent(HWND control) {
    RECT place = {};
    GetWindowRect(control, &place);
    MapWindowPoints(nullptr, GetParent(control), reinterpret_cast<POINT*>(&place), 2);
    return place;
}

int MostOffset(const Page* page) {
    const int most = page->contentHeight - static_cast<int>(ClientSize(page->window).cy);
    return most > 0 ? most : 0;
}

void ScrollTo(Page* page, int offset) {
    const int most = MostOffset(page);
    const int wanted = offset < 0 ? 0 : offset > most ? most : offset;
    const int before = page->offset;
    page->offset = wanted;
    SetScrollPos(page->window, SB_VERT, wanted, TRUE);
    if (wanted == before) {
        return;
    }
    ScrollWindowEx(page->window, 0, before - wanted, nullptr, nullptr, nullptr, nullptr,
                   SW_SCROLLCHILDREN | SW_INVALIDATE | SW_ERASE);
    UpdateWindow(page->window);
}

// ---- Layout ----

int LowestControl(HWND page) {
    int lowest = 0;
    for (HWND child = GetWindow(page, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        const int bottom = static_cast<int>(PlaceInParent(child).bottom);
        lowest = bottom > lowest ? bottom : lowest;
    }
    return lowest;
}

void Arrange(Page* page, int width) {
    if (width == page->arrangedWidth) {
        return;
    }
    page->arrangedWidth = width;
    ScrollTo(page, 0);
    if (page->arrange) {
        page->arrange(page->window, width);
    }
    page->contentHeight = LowestControl(page->window) + page->margin;
}

void ShowBar(Page* page) {
    const int height = static_cast<int>(ClientSize(page->window).cy);
    ShowScrollBar(page->window, SB_VERT, page->contentHeight > height);
    SCROLLINFO info = {};
    info.cbSize = sizeof(info);
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    info.nMax = page->contentHeight - 1;
    info.nPage = static_cast<UINT>(height);
    info.nPos = page->offset;
    if (page->contentHeight > height) {
        SetScrollInfo(page->window, SB_VERT, &info, TRUE);
    }
}

// The bar takes width from the controls, so they are laid out again once it is known whether it shows.
void OnSize(Page* page) {
    if (page->placing) {
        return;
    }
    page->placing = true;
    Arrange(page, static_cast<int>(ClientSize(page->window).cx));
    ShowBar(page);
    Arrange(page, static_cast<int>(ClientSize(page->window).cx));
    ShowBar(page);
    ScrollTo(page, page->offset);
    page->placing = false;
}

// ---- Moving ----

void OnScroll(Page* page, WPARAM wParam) {
    const int height = static_cast<int>(ClientSize(page->window).cy);
    SCROLLINFO info = {};
    info.cbSize = sizeof(info);
    info.fMask = SIF_TRACKPOS;
    switch (LOWORD(wParam)) {
        case SB_LINEUP:
            return ScrollTo(page, page->offset - kLine);
        case SB_LINEDOWN:
            return ScrollTo(page, page->offset + kLine);
        case SB_PAGEUP:
            return ScrollTo(page, page->offset - height);
        case SB_PAGEDOWN:
            return ScrollTo(page, page->offset + height);
        case SB_THUMBTRACK:
        case SB_THUMBPOSITION:
            GetScrollInfo(page->window, SB_VERT, &info);
            return ScrollTo(page, info.nTrackPos);
        case SB_TOP:
            return ScrollTo(page, 0);
        case SB_BOTTOM:
            return ScrollTo(page, page->contentHeight);
        default:
            return;
    }
}

void OnWheel(Page* page, WPARAM wParam) {
    const int delta = GET_WHEEL_DELTA_WPARAM(wParam);
    ScrollTo(page, page->offset - MulDiv(delta, kLinesPerNotch * kLine, WHEEL_DELTA));
}

void BeginDrag(Page* page, LPARAM point) {
    page->dragging = true;
    page->dragFrom = GET_Y_LPARAM(point) + page->offset;
    SetCapture(page->window);
}

void BringIntoView(HWND control) {
    Page* page = FindPage(GetParent(control));
    if (!page) {
        return;
    }
    const RECT place = PlaceInParent(control);
    const int height = static_cast<int>(ClientSize(page->window).cy);
    if (place.top < 0) {
        ScrollTo(page, page->offset + static_cast<int>(place.top) - page->margin);
    } else if (place.bottom > height) {
        ScrollTo(page, page->offset + static_cast<int>(place.bottom) - height + page->margin);
    }
}

LRESULT CALLBACK ControlProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR) {
    if (message == WM_NCDESTROY) {
        DetachRecord(window, ControlProc, kControlRecord);
    }
    const LRESULT result = DefSubclassProc(window, message, wParam, lParam);
    if (message == WM_SETFOCUS) {
        BringIntoView(window);
    }
    return result;
}

LRESULT CALLBACK PageProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR data) {
    Page* page = reinterpret_cast<Page*>(data);
    switch (message) {
        case WM_SIZE:
            OnSize(page);
            break;
        case WM_VSCROLL:
            OnScroll(page, wParam);
            return 0;
        case WM_MOUSEWHEEL:
            OnWheel(page, wParam);
            return 0;
        case WM_LBUTTONDOWN:
            BeginDrag(page, lParam);
            break;
        case WM_MOUSEMOVE:
            if (page->dragging) {
                ScrollTo(page, page->dragFrom - GET_Y_LPARAM(lParam));
            }
            break;
        case WM_LBUTTONUP:
            if (page->dragging) {
                ReleaseCapture();
            }
            break;
        case WM_CAPTURECHANGED:
            page->dragging = false;
            break;
        case WM_NCDESTROY:
            FreeRecord(DetachRecord(window, PageProc, kPageRecord));
            break;
        default:
            break;
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

}  // namespace

bool AttachScrollingPage(HWND window, ArrangePage arrange, int margin) {
    Page* page = static_cast<Page*>(AllocRecord(sizeof(Page)));
    if (!page) {
        return false;
    }
    page->window = window;
    page->arrange = arrange;
    page->margin = margin;
    page->arrangedWidth = -1;
    if (!AttachRecord(window, PageProc, kPageRecord, page)) {
        FreeRecord(page);
        return false;
    }
    // A control that cannot be watched only has to be scrolled to by hand.
    for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        AttachRecord(child, ControlProc, kControlRecord, page);
    }
    OnSize(page);
    return true;
}

RECT ControlPlace(HWND control) {
    RECT place = PlaceInParent(control);
    const Page* page = FindPage(GetParent(control));
    OffsetRect(&place, 0, page ? page->offset : 0);
    return place;
}

}  // namespace shell
