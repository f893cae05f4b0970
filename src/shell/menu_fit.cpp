#include "shell/menu_fit.h"

#include "shell/subclass.h"

namespace shell {

namespace {

constexpr int kShortLabel = 16;    // units; no screen is too narrow for these
constexpr int kPaddingFactor = 4;  // mark column, arrow column and borders, in widths of a check mark
constexpr wchar_t kEllipsis = 0x2026;

// An item whose text is shortened just now. `shown` and `full` lie behind the record, in its block.
struct Shortened {
    HMENU menu;
    UINT position;
    UINT id;
    wchar_t* shown;
    wchar_t* full;
    Shortened* next;
};

thread_local Shortened* firstShortened = nullptr;

// The text of an item; 0 units for a separator, a picture and whatever does not fit into `room`.
int ReadItem(HMENU menu, UINT position, wchar_t* text, int room, UINT* id) {
    MENUITEMINFOW info = {};
    info.cbSize = sizeof(info);
    info.fMask = MIIM_STRING | MIIM_ID;
    info.dwTypeData = text;
    info.cch = static_cast<UINT>(room);
    text[0] = 0;
    if (!GetMenuItemInfoW(menu, position, TRUE, &info)) {
        return 0;
    }
    *id = info.wID;
    return lstrlenW(text);
}

int ItemLength(HMENU menu, UINT position) {
    return GetMenuStringW(menu, position, nullptr, 0, MF_BYPOSITION);
}

void WriteItem(HMENU menu, UINT position, wchar_t* text) {
    MENUITEMINFOW info = {};
    info.cbSize = sizeof(info);
    info.fMask = MIIM_STRING;
    info.dwTypeData = text;
    SetMenuItemInfoW(menu, position, TRUE, &info);
}

int TextWidth(HDC device, const wchar_t* text) {
    RECT rect = {};
    DrawTextW(device, text, -1, &rect, DT_CALCRECT | DT_SINGLELINE | DT_LEFT);
    return static_cast<int>(rect.right);
}

bool HasTab(const wchar_t* text) {
    while (*text != 0 && *text != L'\t') {
        ++text;
    }
    return *text != 0;
}

// The longest shortened form that is not wider than `width`.
void ShortenTo(HDC device, wchar_t* target, const wchar_t* text, int length, int width) {
    int fits = kShortLabel / 2;
    int tooMany = length;
    while (tooMany - fits > 1) {
        const int middle = fits + (tooMany - fits) / 2;
        ShortenMiddle(target, text, middle);
        if (TextWidth(device, target) <= width) {
            fits = middle;
        } else {
            tooMany = middle;
        }
    }
    ShortenMiddle(target, text, fits);
}

void FitItem(HDC device, HMENU menu, UINT position, int width) {
    const int length = ItemLength(menu, position);
    if (length <= kShortLabel) {
        return;
    }
    const size_t units = static_cast<size_t>(length) + 2;
    void* block = AllocRecord(sizeof(Shortened) + 2 * units * sizeof(wchar_t));
    if (!block) {
        return;
    }
    auto* item = static_cast<Shortened*>(block);
    item->menu = menu;
    item->position = position;
    item->shown = reinterpret_cast<wchar_t*>(item + 1);
    item->full = item->shown + units;
    const int read = ReadItem(menu, position, item->full, length + 1, &item->id);
    if (read != length || HasTab(item->full) || TextWidth(device, item->full) <= width) {
        FreeRecord(block);
        return;
    }
    ShortenTo(device, item->shown, item->full, length, width);
    WriteItem(menu, position, item->shown);
    item->next = firstShortened;
    firstShortened = item;
}

// Unless somebody else has changed the item, or another one stands there now.
void Restore(const Shortened* item) {
    const int length = lstrlenW(item->shown);
    if (ItemLength(item->menu, item->position) != length) {
        return;
    }
    auto* text = static_cast<wchar_t*>(AllocRecord((static_cast<size_t>(length) + 1) * sizeof(wchar_t)));
    UINT id = 0;
    if (text && ReadItem(item->menu, item->position, text, length + 1, &id) == length && id == item->id &&
        wcscmp(text, item->shown) == 0) {
        WriteItem(item->menu, item->position, item->full);
    }
    FreeRecord(text);
}

bool IsLowSurrogate(wchar_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

// True when a cut in front of text[index] would fall into an "&&" or a surrogate pair.
bool SplitsPair(const wchar_t* text, int index) {
    int before = 0;
    while (before < index && text[index - 1 - before] == L'&') {
        ++before;
    }
    return IsLowSurrogate(text[index]) || before % 2 != 0;
}

}  // namespace

void ShortenMiddle(wchar_t* target, const wchar_t* text, int kept) {
    const int length = lstrlenW(text);
    int head = kept / 3;
    int tail = length - (kept - head);
    if (SplitsPair(text, head)) {
        --head;
    }
    if (SplitsPair(text, tail)) {
        ++tail;
    }
    for (int i = 0; i < head; ++i) {
        *target++ = text[i];
    }
    *target++ = kEllipsis;
    lstrcpyW(target, text + tail);
}

void FitMenu(HMENU menu, int screenWidth) {
    NONCLIENTMETRICSW metrics = {};
    metrics.cbSize = sizeof(metrics);
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0);
    const HFONT font = CreateFontIndirectW(&metrics.lfMenuFont);
    const HDC device = CreateCompatibleDC(nullptr);
    if (font && device) {
        const HGDIOBJ before = SelectObject(device, font);
        const int width = screenWidth - kPaddingFactor * GetSystemMetrics(SM_CXMENUCHECK);
        const int count = GetMenuItemCount(menu);
        for (int i = 0; i < count; ++i) {
            FitItem(device, menu, static_cast<UINT>(i), width);
        }
        SelectObject(device, before);
    }
    DeleteDC(device);
    DeleteObject(font);
}

void UnfitMenu(HMENU menu) {
    Shortened** link = &firstShortened;
    while (Shortened* item = *link) {
        if (menu && item->menu != menu) {
            link = &item->next;
            continue;
        }
        *link = item->next;
        Restore(item);
        FreeRecord(item);
    }
}

}  // namespace shell
