#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <iterator>

#include "app/services/notices.h"
#include "base/utf16.h"
#include "files/file_columns.h"
#include "files/file_list_view.h"
#include "platform/win32/casts.h"
#include "resources/resource.h"
#include "shell/density.h"

namespace nira {

namespace {

constexpr int kRowHeight = 24;  // at the plain density: what a finger hits
constexpr int kTextMargins = 16;
constexpr UINT_PTR kHeaderHook = 1;
constexpr const wchar_t* kOwnWidths = L"nira.widths";  // property of a list whose columns the person has set

LRESULT Tell(HWND list, UINT message, WPARAM first, LPARAM second) {
    return SendMessageW(list, message, first, second);
}

// ---- Rows ----

// Icons of 16 x 16 in the middle of images as high as a row, because the list puts an image at the top of its
// row.
void AddIcon(HIMAGELIST images, HDC device, int id, SIZE image) {
    constexpr COLORREF kClear = RGB(255, 0, 255);  // in none of the icons
    const auto icon = static_cast<HICON>(LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(id),
                                                    IMAGE_ICON, image.cx, image.cx, LR_DEFAULTCOLOR));
    const HBITMAP bitmap = CreateCompatibleBitmap(device, image.cx, image.cy);
    const HDC memory = CreateCompatibleDC(device);
    const HBRUSH brush = CreateSolidBrush(kClear);
    const HGDIOBJ before = SelectObject(memory, bitmap);
    const RECT whole = {0, 0, image.cx, image.cy};
    FillRect(memory, &whole, brush);
    DrawIconEx(memory, 0, (image.cy - image.cx) / 2, icon, image.cx, image.cx, 0, nullptr, DI_NORMAL);
    SelectObject(memory, before);
    DeleteObject(brush);
    DeleteDC(memory);
    ImageList_AddMasked(images, bitmap, kClear);
    DeleteObject(bitmap);
    DestroyIcon(icon);
}

void SetImages(HWND list) {
    const SIZE image = {shell::ScaledToScreen(IMG_SIZE), shell::ScaledToScreen(kRowHeight)};
    const HIMAGELIST images = ImageList_Create(image.cx, image.cy, ILC_COLOR24 | ILC_MASK, 2, 0);
    const HDC device = GetDC(list);
    AddIcon(images, device, IDI_FOLDER, image);
    AddIcon(images, device, IDI_FILE, image);
    ReleaseDC(list, device);
    Tell(list, LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(images));
}

// ---- Columns ----

// Of its inside, with the scroll bar's share.
int ListWidth(HWND list) {
    RECT area = {};
    GetClientRect(list, &area);
    const bool scrolls = (GetWindowLongPtrW(list, GWL_STYLE) & WS_VSCROLL) != 0;
    return static_cast<int>(area.right) + (scrolls ? GetSystemMetrics(SM_CXVSCROLL) : 0);
}

void AddColumn(HWND list, int index, uint32_t title, int format) {
    LVCOLUMNW column = {};
    column.mask = LVCF_TEXT | LVCF_FMT | LVCF_WIDTH | LVCF_SUBITEM;
    column.fmt = format;
    column.pszText = const_cast<wchar_t*>(ToWide(LoadResString(title)));
    column.iSubItem = index;
    column.cx = PlainColumns(ListWidth(list)).width[index];
    Tell(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&column));
}

LRESULT CALLBACK HeaderProc(HWND header, UINT message, WPARAM first, LPARAM second, UINT_PTR, DWORD_PTR) {
    if (message == WM_NCDESTROY) RemoveWindowSubclass(header, HeaderProc, kHeaderHook);
    const LRESULT result = DefSubclassProc(header, message, first, second);
    if (message == HDM_LAYOUT && result != 0) {
        const auto* layout = reinterpret_cast<const HDLAYOUT*>(second);
        const int height = std::max(layout->pwpos->cy, shell::ScaledToScreen(kRowHeight));
        layout->prc->top += height - layout->pwpos->cy;
        layout->pwpos->cy = height;
    }
    return result;
}

// Dragging a divider, or tapping it twice, says that the widths are the person's now.
LRESULT CALLBACK ListProc(HWND list, UINT message, WPARAM first, LPARAM second, UINT_PTR, DWORD_PTR) {
    if (message == WM_NOTIFY) {
        const UINT code = reinterpret_cast<const NMHDR*>(second)->code;
        if (code == HDN_BEGINTRACKW || code == HDN_DIVIDERDBLCLICKW)
            SetPropW(list, kOwnWidths, reinterpret_cast<HANDLE>(1));
    }
    if (message == WM_NCDESTROY) {
        RemovePropW(list, kOwnWidths);
        RemoveWindowSubclass(list, ListProc, kHeaderHook);
    }
    return DefSubclassProc(list, message, first, second);
}

int TextWidth(HWND list, const wchar_t* text) {
    return static_cast<int>(Tell(list, LVM_GETSTRINGWIDTHW, 0, reinterpret_cast<LPARAM>(text)));
}

// Only the longest names are measured: in a folder of ten thousand that takes no time, and which of a few
// long ones is the widest nobody can tell by counting letters.
int WidestName(HWND list, const FolderListing& listing) {
    uint32_t longest[32];
    const size_t count = LongestNames(listing, longest, std::size(longest));
    int widest = 0;
    for (size_t i = 0; i < count; ++i)
        widest = std::max(widest, TextWidth(list, ToWide(listing.entries[longest[i]].name)));
    return widest;
}

size_t FormatDate(wchar_t* target, int room, uint64_t time) {
    const FILETIME local = {static_cast<DWORD>(time), static_cast<DWORD>(time >> 32)};
    SYSTEMTIME date = {};
    target[0] = 0;
    if (time == 0 || !FileTimeToSystemTime(&local, &date)) return 0;
    return static_cast<size_t>(
        GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &date, nullptr, target, room));
}

ColumnWidths NeededWidths(HWND list, const FolderListing& listing) {
    constexpr uint64_t kLateDate = 134428896000000000;  // a day and a month of two digits each, in 2026
    wchar_t date[80];
    FormatDate(date, static_cast<int>(std::size(date)), kLateDate);
    const int margins = shell::ScaledToScreen(kTextMargins);
    return {{WidestName(list, listing) + shell::ScaledToScreen(IMG_SIZE) + margins,
             TextWidth(list, L"1023.9M") + margins, TextWidth(list, date) + margins}};
}

// ---- Texts of entries ----

void WriteText(const FolderEntry& entry, LVITEMW* item) {
    if (item->cchTextMax <= 0) return;
    char16_t* target = FromWide(item->pszText);
    const auto room = static_cast<size_t>(item->cchTextMax);
    if (item->iSubItem == kColumnName) {
        Utf16Copy(target, room, entry.name);
    } else if (item->iSubItem == kColumnModified) {
        FormatDate(item->pszText, item->cchTextMax, entry.modified);
    } else if (entry.kind == kEntryFile) {
        FormatSize(target, room, entry.size);
    } else {
        target[0] = 0;
    }
}

void SetState(HWND list, int index, UINT state, UINT mask) {
    LVITEMW item = {};
    item.state = state;
    item.stateMask = mask;
    Tell(list, LVM_SETITEMSTATE, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item));
}

}  // namespace

void SetUpFileList(WindowHandle window) {
    const HWND list = ToHwnd(window);
    Tell(list, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_FULLROWSELECT | LVS_EX_LABELTIP | LVS_EX_DOUBLEBUFFER);
    SetImages(list);
    AddColumn(list, kColumnName, IDS_COLUMN_NAME, LVCFMT_LEFT);
    AddColumn(list, kColumnSize, IDS_COLUMN_SIZE, LVCFMT_RIGHT);
    AddColumn(list, kColumnModified, IDS_COLUMN_MODIFIED, LVCFMT_LEFT);
    const HWND header = reinterpret_cast<HWND>(Tell(list, LVM_GETHEADER, 0, 0));
    if (header != nullptr) SetWindowSubclass(header, HeaderProc, kHeaderHook, 0);
    SetWindowSubclass(list, ListProc, kHeaderHook, 0);
}

void ShowFileList(WindowHandle window, const FolderListing& listing, int marked) {
    const HWND list = ToHwnd(window);
    SetState(list, -1, 0, LVIS_SELECTED | LVIS_FOCUSED);
    Tell(list, LVM_SETITEMCOUNT, listing.count, 0);
    FitFileColumns(window, listing);
    if (marked < 0 && listing.count > 0) Tell(list, LVM_ENSUREVISIBLE, 0, FALSE);
    SelectEntry(window, marked);
    InvalidateRect(list, nullptr, TRUE);
}

void FitFileColumns(WindowHandle window, const FolderListing& listing) {
    const HWND list = ToHwnd(window);
    if (GetPropW(list, kOwnWidths) != nullptr) return;
    const int width = ListWidth(list);
    const bool scrolls = listing.count > static_cast<uint32_t>(Tell(list, LVM_GETCOUNTPERPAGE, 0, 0));
    const int shown = scrolls ? width - GetSystemMetrics(SM_CXVSCROLL) : width;
    const ColumnWidths columns = FittedColumns(width, shown, NeededWidths(list, listing));
    for (int i = 0; i < kColumnCount; ++i)
        Tell(list, LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(i), columns.width[i]);
}

int SelectedEntry(WindowHandle list) {
    return static_cast<int>(Tell(ToHwnd(list), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
}

void SelectEntry(WindowHandle window, int index) {
    const HWND list = ToHwnd(window);
    if (index < 0) {
        SetState(list, -1, 0, LVIS_SELECTED);
        return;
    }
    SetState(list, index, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    Tell(list, LVM_ENSUREVISIBLE, static_cast<WPARAM>(index), FALSE);
}

void AnswerEntryText(const FolderListing& listing, intptr_t notification) {
    LVITEMW& item = reinterpret_cast<NMLVDISPINFOW*>(notification)->item;
    if (item.iItem < 0 || static_cast<uint32_t>(item.iItem) >= listing.count) return;
    const FolderEntry& entry = listing.entries[item.iItem];
    if ((item.mask & LVIF_TEXT) != 0) WriteText(entry, &item);
    if ((item.mask & LVIF_IMAGE) != 0) item.iImage = entry.kind;
}

int AnswerTypedSearch(const FolderListing& listing, intptr_t notification) {
    const auto* search = reinterpret_cast<const NMLVFINDITEMW*>(notification);
    if ((search->lvfi.flags & (LVFI_STRING | LVFI_PARTIAL)) == 0 || search->lvfi.psz == nullptr) return -1;
    return FindEntryByStart(listing, FromWide(search->lvfi.psz), search->iStart,
                            (search->lvfi.flags & LVFI_WRAP) != 0);
}

}  // namespace nira
