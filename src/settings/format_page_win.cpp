#include <windows.h>

#include <commdlg.h>

#include <algorithm>
#include <initializer_list>

#include "app/services/memory.h"
#include "app/services/notices.h"
#include "platform/win32/casts.h"
#include "resources/resource.h"
#include "settings/format_page.h"
#include "shell/scrolling_page.h"
#include "shell/work_area.h"
#include "view/font_chooser.h"

namespace nira {

namespace {

constexpr int kListRow = 15;            // dialog units; 24 pixels where nothing is enlarged
constexpr int kFullChooserUnits = 310;  // width of the whole colour chooser with its frame, in dialog units
constexpr int kCustomColors = 16;
constexpr UINT kOneLine = DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX;

HWND Control(WindowHandle page, int control) { return GetDlgItem(ToHwnd(page), control); }

void ShowFont(WindowHandle page) {
    const char16_t* description = TheOptions().sheetCopy->font;
    const size_t room = FontTextRoom(description);
    auto* text = MemAllocArray<char16_t>(nullptr, room);
    FontText(text, room, description);
    SetControlText(page, IDC_FORMAT_FONT, text);
    InvalidateRect(Control(page, IDC_FORMAT_FONT), nullptr, TRUE);
    MemFree(nullptr, text);
}

void FillFormatPage(WindowHandle page) {
    const HWND list = Control(page, IDC_FORMAT_COLOR_SET);
    SendMessageW(list, LB_SETITEMHEIGHT, 0, DialogHeight(page, kListRow));
    for (const uint32_t text : {IDS_COLORS_TEXT, IDS_COLORS_SELECTION}) {
        SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(LoadResString(text)));
    }
    SendMessageW(list, LB_SETCURSEL, kColorsOfText, 0);
    ShowFont(page);
}

// ---- Places ----

void MoveTo(HWND window, LONG left, LONG width) {
    const RECT place = shell::ControlPlace(window);
    SetWindowPos(window, nullptr, left, place.top, width, place.bottom - place.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
    InvalidateRect(window, nullptr, TRUE);
}

// The button keeps its size at the right edge, and the description ends before it.
void ArrangeFont(WindowHandle page, int width) {
    RECT margin = {6, 0, 4, 0};
    MapDialogRect(ToHwnd(page), &margin);
    const RECT button = shell::ControlPlace(Control(page, IDC_FORMAT_CHOOSE_FONT));
    const RECT text = shell::ControlPlace(Control(page, IDC_FORMAT_FONT));
    const LONG left = width - margin.left - (button.right - button.left);
    MoveTo(Control(page, IDC_FORMAT_CHOOSE_FONT), left, button.right - button.left);
    MoveTo(Control(page, IDC_FORMAT_FONT), text.left, left - margin.right - text.left);
}

void ArrangeFormat(WindowHandle page, int width) {
    constexpr LONG kGap = 2;
    RECT inner = {12, 0, 0, 0};
    MapDialogRect(ToHwnd(page), &inner);
    const int group = IDC_FORMAT_COLORS;
    ArrangeFont(page, width);
    WidenControls(page, width, &group, 1);
    const LONG left = inner.left;
    const LONG listWidth = width - 2 * left;
    MoveTo(Control(page, IDC_FORMAT_COLOR_SET), left, listWidth);
    const LONG half = listWidth / 2 - kGap;
    const LONG right = left + listWidth / 2 + kGap;
    MoveTo(Control(page, IDC_FORMAT_FORE_LABEL), left, half);
    MoveTo(Control(page, IDC_FORMAT_FORE), left, half);
    MoveTo(Control(page, IDC_FORMAT_BACK_LABEL), right, half);
    MoveTo(Control(page, IDC_FORMAT_BACK), right, half);
}

// ---- Drawing ----

void DrawColorButton(const DRAWITEMSTRUCT& item) {
    const HBRUSH brush = CreateSolidBrush(*ShownColor(item.CtlID == IDC_FORMAT_FORE));
    FillRect(item.hDC, &item.rcItem, brush);
    DeleteObject(brush);
    RECT frame = {};
    GetClientRect(item.hwndItem, &frame);
    DrawFocusRect(item.hDC, &frame);
    // The button with the keyboard shows more of a frame.
    for (int i = 0; i < 2 && (item.itemState & ODS_FOCUS) != 0; ++i) {
        InflateRect(&frame, -1, -1);
        DrawFocusRect(item.hDC, &frame);
    }
}

int WidthOf(HDC device, const wchar_t* text, int length) {
    SIZE size = {};
    GetTextExtentPoint32W(device, text, length, &size);
    return static_cast<int>(size.cx);
}

// Shortens "Face, 14 pt" to a width: it is the name that gives way, not the size. Returns the units left.
int ShortenFontText(HDC device, wchar_t* text, int length, int width) {
    constexpr wchar_t kDots[] = L"...";
    constexpr int kDotUnits = 3;
    constexpr wchar_t kSizeMark[] = L",";
    wchar_t* size = std::find_end(text, text + length, kSizeMark, kSizeMark + 1);
    const auto sizeUnits = static_cast<int>(text + length - size);
    if (WidthOf(device, text, length) <= width || size - text <= kDotUnits) return length;
    const int room = width - WidthOf(device, size, sizeUnits) - WidthOf(device, kDots, kDotUnits);
    int kept = 0;
    SIZE unused = {};
    GetTextExtentExPointW(device, text, static_cast<int>(size - text), std::max(room, 0), &kept, nullptr,
                          &unused);
    kept = std::min(kept, static_cast<int>(size - text) - kDotUnits);
    std::copy_n(kDots, kDotUnits, text + kept);
    std::copy_n(size, sizeUnits, text + kept + kDotUnits);
    return kept + kDotUnits + sizeUnits;
}

void DrawFontText(const DRAWITEMSTRUCT& item) {
    const auto units = static_cast<size_t>(GetWindowTextLengthW(item.hwndItem));
    auto* text = MemAllocArray<wchar_t>(nullptr, units + 1);
    const int length = GetWindowTextW(item.hwndItem, text, static_cast<int>(units) + 1);
    const auto font = reinterpret_cast<HFONT>(SendMessageW(item.hwndItem, WM_GETFONT, 0, 0));
    const HGDIOBJ before = SelectObject(item.hDC, font);
    RECT area = item.rcItem;
    FillRect(item.hDC, &area, GetSysColorBrush(COLOR_BTNFACE));
    SetTextColor(item.hDC, GetSysColor(COLOR_BTNTEXT));
    SetBkMode(item.hDC, TRANSPARENT);
    const int shown = ShortenFontText(item.hDC, text, length, static_cast<int>(area.right - area.left));
    DrawTextW(item.hDC, text, shown, &area, kOneLine);
    SelectObject(item.hDC, before);
    MemFree(nullptr, text);
}

void DrawListRow(const DRAWITEMSTRUCT& item) {
    const bool selected = (item.itemState & ODS_SELECTED) != 0;
    FillRect(item.hDC, &item.rcItem, GetSysColorBrush(selected ? COLOR_HIGHLIGHT : COLOR_WINDOW));
    if (item.itemID == static_cast<UINT>(-1)) return;
    wchar_t text[100] = {};
    if (SendMessageW(item.hwndItem, LB_GETTEXTLEN, item.itemID, 0) < 100) {
        SendMessageW(item.hwndItem, LB_GETTEXT, item.itemID, reinterpret_cast<LPARAM>(text));
    }
    SetTextColor(item.hDC, GetSysColor(selected ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
    SetBkMode(item.hDC, TRANSPARENT);
    RECT area = item.rcItem;
    InflateRect(&area, -4, 0);
    DrawTextW(item.hDC, text, -1, &area, kOneLine | DT_END_ELLIPSIS);
    if ((item.itemState & ODS_FOCUS) != 0) DrawFocusRect(item.hDC, &item.rcItem);
}

// ---- Choosing ----

void RedrawColors(WindowHandle page) {
    InvalidateRect(Control(page, IDC_FORMAT_FORE), nullptr, TRUE);
    InvalidateRect(Control(page, IDC_FORMAT_BACK), nullptr, TRUE);
}

// Opened fully, the chooser would not fit a narrow screen. It has the font, and so the units, of the page.
bool FullChooserFits(WindowHandle page) {
    RECT chooser = {0, 0, kFullChooserUnits, 0};
    MapDialogRect(ToHwnd(page), &chooser);
    const RECT work = shell::WorkAreaOf(ToHwnd(page));
    return chooser.right <= work.right - work.left;
}

// Keeps the chooser on the screen, wherever the sheet that owns it is.
UINT_PTR CALLBACK PlaceChooser(HWND chooser, UINT message, WPARAM, LPARAM) {
    if (message != WM_INITDIALOG) return 0;
    const RECT work = shell::WorkAreaOf(GetWindow(chooser, GW_OWNER));
    RECT place = {};
    GetWindowRect(chooser, &place);
    const LONG left = work.left + (work.right - work.left - (place.right - place.left)) / 2;
    const LONG top = work.top + (work.bottom - work.top - (place.bottom - place.top)) / 2;
    SetWindowPos(chooser, nullptr, left > work.left ? left : work.left, top > work.top ? top : work.top, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER);
    return 1;
}

void PickColor(WindowHandle page, int control) {
    COLORREF custom[kCustomColors] = {};
    ColorRef* color = ShownColor(control == IDC_FORMAT_FORE);
    CHOOSECOLORW choice = {};
    choice.lStructSize = sizeof(choice);
    choice.hwndOwner = ToHwnd(page);
    choice.rgbResult = *color;
    choice.lpCustColors = custom;
    choice.Flags = CC_RGBINIT | CC_ANYCOLOR | CC_ENABLEHOOK;
    choice.Flags |= FullChooserFits(page) ? CC_FULLOPEN : CC_PREVENTFULLOPEN;
    choice.lpfnHook = PlaceChooser;
    if (!ChooseColorW(&choice)) return;
    *color = choice.rgbResult;
    InvalidateRect(Control(page, control), nullptr, TRUE);
}

void PickFont(WindowHandle page) {
    TakeFont(ChooseFontSpec(page, TheOptions().sheetCopy->font));
    ShowFont(page);
}

intptr_t OnPageCommand(WindowHandle page, int control, int notification) {
    if (control == IDC_FORMAT_COLOR_SET && notification == LBN_SELCHANGE) {
        const LRESULT set = SendMessageW(Control(page, control), LB_GETCURSEL, 0, 0);
        if (set >= 0 && ShowColorSet(static_cast<uint32_t>(set))) RedrawColors(page);
        return TRUE;
    }
    if (notification != BN_CLICKED) return FALSE;
    if (control == IDC_FORMAT_CHOOSE_FONT) {
        PickFont(page);
    } else if (control == IDC_FORMAT_FORE || control == IDC_FORMAT_BACK) {
        PickColor(page, control);
    }
    return FALSE;
}

intptr_t HandleFormat(WindowHandle page, uint32_t message, uintptr_t first, intptr_t second) {
    if (message == WM_COMMAND) return OnPageCommand(page, LOWORD(first), HIWORD(first));
    const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(second);
    if (item.CtlID == IDC_FORMAT_COLOR_SET) {
        DrawListRow(item);
    } else if (item.CtlID == IDC_FORMAT_FONT) {
        DrawFontText(item);
    } else {
        DrawColorButton(item);
    }
    return TRUE;
}

void ApplyFormat(WindowHandle) { ApplyFormatPage(); }

}  // namespace

const PropertyPage kFormatPage = {
    IDD_OPTIONS_FORMAT, FillFormatPage, ApplyFormat, ArrangeFormat, nullptr, HandleFormat,
};

}  // namespace nira
