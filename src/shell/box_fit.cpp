#include "shell/box_fit.h"

#include "shell/subclass.h"
#include "shell/work_area.h"

namespace shell {

namespace {

constexpr int kTextId = 0xFFFF;  // of the text in every message box
constexpr int kMostButtons = 4;
constexpr int kGap = 6;

// Of the box under way in this thread.
thread_local HWND boxOwner = nullptr;

struct Buttons {
    HWND windows[kMostButtons];
    int count;
};

bool IsOfClass(HWND window, const wchar_t* name) {
    wchar_t own[16] = {};
    GetClassNameW(window, own, 16);
    return CompareStringOrdinal(own, -1, name, -1, TRUE) == CSTR_EQUAL;
}

Buttons FindButtons(HWND box) {
    Buttons found = {};
    for (HWND child = GetWindow(box, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        const bool shown = (GetWindowLongPtrW(child, GWL_STYLE) & WS_VISIBLE) != 0;
        if (shown && IsOfClass(child, L"Button") && found.count < kMostButtons) {
            found.windows[found.count++] = child;
        }
    }
    return found;
}

RECT PlaceIn(HWND box, HWND child) {
    RECT place = {};
    GetWindowRect(child, &place);
    MapWindowPoints(nullptr, box, reinterpret_cast<POINT*>(&place), 2);
    return place;
}

// ---- Text ----

int WidthOf(HDC device, const wchar_t* text, int length) {
    SIZE size = {};
    GetTextExtentPoint32W(device, text, length, &size);
    return static_cast<int>(size.cx);
}

bool EndsWord(wchar_t unit) { return unit == 0 || unit == L' ' || unit == L'\n' || unit == L'\r'; }

bool IsLowSurrogate(wchar_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

// Copies `text` with a line end wherever a word would be wider than `width`; `target` has room for twice as
// much.
void BreakWords(HDC device, const wchar_t* text, int width, wchar_t* target) {
    const wchar_t* start = text;  // of the word, or of its part in this line
    for (; *text; ++text) {
        if (EndsWord(*text)) {
            start = text + 1;
        } else if (text > start && !IsLowSurrogate(*text) &&
                   WidthOf(device, start, static_cast<int>(text - start) + 1) > width) {
            *target++ = L'\n';
            start = text;
        }
        *target++ = *text;
    }
    *target = 0;
}

void ShowBroken(HWND window, HDC device, int width) {
    const int length = GetWindowTextLengthW(window);
    const auto units = static_cast<size_t>(length) + 1;
    auto* text = static_cast<wchar_t*>(AllocRecord(3 * units * sizeof(wchar_t)));
    if (!text) {
        return;
    }
    GetWindowTextW(window, text, length + 1);
    wchar_t* broken = text + units;
    BreakWords(device, text, width, broken);
    if (wcscmp(text, broken) != 0) {
        SetWindowTextW(window, broken);
    }
    FreeRecord(text);
}

int HeightOf(HWND window, HDC device, int width) {
    const int length = GetWindowTextLengthW(window);
    auto* text = static_cast<wchar_t*>(AllocRecord((static_cast<size_t>(length) + 1) * sizeof(wchar_t)));
    if (!text) {
        return 0;
    }
    GetWindowTextW(window, text, length + 1);
    const bool plain = (GetWindowLongPtrW(window, GWL_STYLE) & SS_NOPREFIX) != 0;
    RECT area = {0, 0, width, 0};
    DrawTextW(device, text, length, &area,
              DT_CALCRECT | DT_WORDBREAK | DT_EXPANDTABS | (plain ? static_cast<UINT>(DT_NOPREFIX) : 0));
    FreeRecord(text);
    return static_cast<int>(area.bottom);
}

// Makes the text end before `right`. Returns how much higher it has become.
int FitText(HWND box, int right) {
    const HWND window = GetDlgItem(box, kTextId);
    if (!window) {
        return 0;
    }
    const RECT place = PlaceIn(box, window);
    const int width = right - static_cast<int>(place.left);
    const int before = static_cast<int>(place.bottom - place.top);
    const HDC device = GetDC(window);
    const auto font = reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0));
    const HGDIOBJ oldFont = font ? SelectObject(device, font) : nullptr;
    ShowBroken(window, device, width);
    const int needed = HeightOf(window, device, width);
    if (oldFont) {
        SelectObject(device, oldFont);
    }
    ReleaseDC(window, device);
    const int height = needed > before ? needed : before;
    SetWindowPos(window, nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    return height - before;
}

// ---- The box ----

// Side by side in the middle, no wider than they were.
void FitButtons(HWND box, int width, int down) {
    const Buttons buttons = FindButtons(box);
    if (buttons.count == 0) {
        return;
    }
    const RECT first = PlaceIn(box, buttons.windows[0]);
    const int before = static_cast<int>(first.right - first.left);
    const int room = (width - kGap * (buttons.count + 1)) / buttons.count;
    const int each = before < room ? before : room;
    int left = (width - buttons.count * each - (buttons.count - 1) * kGap) / 2;
    for (int i = 0; i < buttons.count; ++i) {
        const RECT place = PlaceIn(box, buttons.windows[i]);
        SetWindowPos(buttons.windows[i], nullptr, left, place.top + down, each, place.bottom - place.top,
                     SWP_NOZORDER | SWP_NOACTIVATE);
        left += each + kGap;
    }
}

// A box is laid out when it has handled WM_INITDIALOG, and not yet shown. When it is activated, which is
// where one expects it, Wine has still to place the buttons. Dialogs that the box interrupts have another
// owner.
LRESULT CALLBACK AfterMessage(int code, WPARAM wParam, LPARAM lParam) {
    const auto* done = reinterpret_cast<const CWPRETSTRUCT*>(lParam);
    if (code == HC_ACTION && done->message == WM_INITDIALOG && IsOfClass(done->hwnd, L"#32770") &&
        GetWindow(done->hwnd, GW_OWNER) == boxOwner) {
        FitBox(done->hwnd, WorkAreaOf(boxOwner ? boxOwner : done->hwnd));
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

}  // namespace

void FitBox(HWND box, const RECT& area) {
    RECT place = {};
    RECT client = {};
    GetWindowRect(box, &place);
    GetClientRect(box, &client);
    const LONG excess = (place.right - place.left) - (area.right - area.left);
    if (excess <= 0) {
        return;
    }
    const int width = static_cast<int>(client.right - excess);
    const int taller = FitText(box, width - kGap);
    FitButtons(box, width, taller);
    const LONG height = place.bottom - place.top + taller;
    const LONG middle = (area.top + area.bottom - height) / 2;
    SetWindowPos(box, nullptr, area.left, middle > area.top ? middle : area.top, area.right - area.left,
                 height, SWP_NOZORDER | SWP_NOACTIVATE);
}

int ShowBox(HWND owner, const wchar_t* text, const wchar_t* caption, UINT style) {
    const HWND before = boxOwner;
    boxOwner = owner ? GetAncestor(owner, GA_ROOT) : nullptr;
    const HHOOK hook = SetWindowsHookExW(WH_CALLWNDPROCRET, AfterMessage, nullptr, GetCurrentThreadId());
    const int answer = MessageBoxW(owner, text, caption, style);
    if (hook) {
        UnhookWindowsHookEx(hook);
    }
    boxOwner = before;
    return answer;
}

}  // namespace shell
