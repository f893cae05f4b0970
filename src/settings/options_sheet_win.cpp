#include <windows.h>

#include <commctrl.h>
#include <prsht.h>
#include <uxtheme.h>

#include <iterator>

#include "app/services/memory.h"
#include "app/services/notices.h"
#include "app/services/resources.h"
#include "platform/win32/casts.h"
#include "resources/resource.h"
#include "settings/format_page.h"
#include "settings/options_pages.h"
#include "settings/options_sheet.h"
#include "settings/options_store.h"
#include "settings/plain_pages.h"
#include "shell/full_screen.h"
#include "shell/menu_bar.h"
#include "shell/scrolling_page.h"

namespace nira {

namespace {

constexpr int kTabControl = 12320;         // of every property sheet
constexpr UINT kSelectField = WM_APP + 1;  // to a page, wParam: the control
constexpr int kPageMargin = 4;             // dialog units below the lowest control
constexpr int kTabHeight = 16;             // dialog units; 26 pixels where nothing is enlarged
constexpr int kSheetButtons[] = {IDOK, IDCANCEL, 0x3021 /* Apply now */, 9 /* Help */};

const PropertyPage* const kPages[] = {&kFormatPage, &kEditorPage, &kWordsPage, &kIndentPage};

const PropertyPage* PageOf(HWND page) {
    return reinterpret_cast<const PropertyPage*>(GetWindowLongPtrW(page, DWLP_USER));
}

HWND TabsOf(HWND sheet) { return GetDlgItem(sheet, kTabControl); }

// ---- Pages ----

void ArrangePage(HWND page, int width) { PageOf(page)->arrange(FromHwnd(page), width); }

// The sheet was made for the size of its templates; its pages fill what the tabs leave.
void FillSheet(HWND page) {
    const HWND sheet = GetParent(page);
    RECT area = {};
    GetClientRect(TabsOf(sheet), &area);
    SendMessageW(TabsOf(sheet), TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&area));
    MapWindowPoints(TabsOf(sheet), sheet, reinterpret_cast<POINT*>(&area), 2);
    SetWindowPos(page, nullptr, area.left, area.top, area.right - area.left, area.bottom - area.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

void InitPage(HWND page, LPARAM description) {
    const auto* kind =
        reinterpret_cast<const PropertyPage*>(reinterpret_cast<const PROPSHEETPAGEW*>(description)->lParam);
    SetWindowLongPtrW(page, DWLP_USER, reinterpret_cast<LONG_PTR>(kind));
    kind->fill(FromHwnd(page));
    shell::AttachScrollingPage(page, ArrangePage, DialogHeight(FromHwnd(page), kPageMargin));
    FillSheet(page);
}

bool MayLeave(HWND page, const PropertyPage& kind) {
    if (kind.numbers == nullptr) return true;
    // Without the memory to read a field it cannot be known to be in range.
    int refused = kind.numbers().fields[0].control;
    Guarded([&] { refused = TakeNumbers(FromHwnd(page), kind.numbers()); });
    // Later, for whoever asked to leave the page moves the focus when it gets its answer.
    if (refused != 0) PostMessageW(page, kSelectField, static_cast<WPARAM>(refused), 0);
    return refused == 0;
}

INT_PTR OnNotify(HWND page, const PropertyPage& kind, const NMHDR& notification) {
    LONG_PTR result = 0;
    switch (notification.code) {
        case PSN_SETACTIVE:
            FillSheet(page);
            // The sheet has given the page the theme's texture, which is another colour than these tabs have.
            EnableThemeDialogTexture(page, ETDT_DISABLE);
            break;
        case PSN_KILLACTIVE:
            result = MayLeave(page, kind) ? FALSE : TRUE;
            break;
        case PSN_APPLY:
            kind.apply(FromHwnd(page));
            result = PSNRET_NOERROR;
            break;
        default:
            return FALSE;
    }
    SetWindowLongPtrW(page, DWLP_MSGRESULT, result);
    return TRUE;
}

void SelectField(HWND page, int control) {
    SetFocus(GetDlgItem(page, control));
    SendDlgItemMessageW(page, control, EM_SETSEL, 0, -1);
}

INT_PTR HandlePage(HWND page, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        InitPage(page, lParam);
        return TRUE;
    }
    const PropertyPage* kind = PageOf(page);
    if (kind == nullptr) return FALSE;  // a few messages arrive before the initialising one
    if (message == WM_NOTIFY) return OnNotify(page, *kind, *reinterpret_cast<const NMHDR*>(lParam));
    if (message == kSelectField) SelectField(page, static_cast<int>(wParam));
    const bool forPage = message == WM_COMMAND || message == WM_DRAWITEM;
    if (forPage && kind->handle != nullptr) return kind->handle(FromHwnd(page), message, wParam, lParam);
    return FALSE;
}

INT_PTR CALLBACK PageProc(HWND page, UINT message, WPARAM wParam, LPARAM lParam) {
    INT_PTR result = FALSE;
    Guarded([&] { result = HandlePage(page, message, wParam, lParam); });
    return result;
}

// ---- The sheet ----

void StretchTabs(HWND sheet) {
    const RECT area = shell::ContentRect(sheet);
    SetWindowPos(TabsOf(sheet), nullptr, area.left, area.top, area.right - area.left, area.bottom - area.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

// A theme draws tabs for the upper edge only.
void PutTabsBelow(HWND sheet) {
    const HWND tabs = TabsOf(sheet);
    SetWindowTheme(tabs, L"", L"");
    SetWindowLongPtrW(tabs, GWL_STYLE, GetWindowLongPtrW(tabs, GWL_STYLE) | TCS_BOTTOM);
    SendMessageW(tabs, TCM_SETITEMSIZE, 0, MAKELPARAM(0, DialogHeight(FromHwnd(sheet), kTabHeight)));
    StretchTabs(sheet);
}

// Another page is stretched when it is shown.
LRESULT CALLBACK SheetProc(HWND sheet, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR) {
    if (message == WM_NCDESTROY) RemoveWindowSubclass(sheet, SheetProc, 0);
    const LRESULT result = DefSubclassProc(sheet, message, wParam, lParam);
    if (message == WM_SIZE && wParam != SIZE_MINIMIZED) {
        StretchTabs(sheet);
        if (const HWND page = PropSheet_GetCurrentPageHwnd(sheet)) FillSheet(page);
    }
    return result;
}

// Without a bar the sheet stays as the system has laid it out, with its own buttons.
void PrepareSheet(HWND sheet) {
    TheOptions().sheetCopy->sheetWindow = FromHwnd(sheet);
    if (CreateMenuBar(FromHwnd(sheet), IDR_BAR_OK_CANCEL) == nullptr) return;
    shell::SHInitDialog(sheet, shell::kSizeFullScreen);
    for (const int button : kSheetButtons) ShowWindow(GetDlgItem(sheet, button), SW_HIDE);
    PutTabsBelow(sheet);
    SetWindowSubclass(sheet, SheetProc, 0, 0);
}

int CALLBACK OnSheet(HWND sheet, UINT message, LPARAM) {
    if (message == PSCB_INITIALIZED) Guarded([&] { PrepareSheet(sheet); });
    return 0;
}

void ShowPage(HWND sheet, int step) {
    constexpr auto kCount = static_cast<int>(std::size(kPages));
    const auto shown = static_cast<int>(SendMessageW(TabsOf(sheet), TCM_GETCURSEL, 0, 0));
    PropSheet_SetCurSel(sheet, nullptr, static_cast<WPARAM>((shown + step + kCount) % kCount));
}

// The keys that change pages, on systems whose sheets take them for a plain Tab.
LRESULT CALLBACK OnSheetKey(int code, WPARAM wParam, LPARAM lParam) {
    const auto& message = *reinterpret_cast<const MSG*>(lParam);
    const SheetCopy* copy = TheOptions().sheetCopy;
    const HWND sheet = copy != nullptr ? ToHwnd(copy->sheetWindow) : nullptr;
    const bool forSheet = code == MSGF_DIALOGBOX && message.message == WM_KEYDOWN && sheet != nullptr &&
                          message.wParam == VK_TAB && IsChild(sheet, message.hwnd);
    if (!forSheet || GetKeyState(VK_CONTROL) >= 0) return CallNextHookEx(nullptr, code, wParam, lParam);
    ShowPage(sheet, GetKeyState(VK_SHIFT) < 0 ? -1 : 1);
    return TRUE;
}

intptr_t ShowSheet() {
    PROPSHEETPAGEW pages[std::size(kPages)] = {};
    for (size_t i = 0; i < std::size(kPages); ++i) {
        pages[i].dwSize = sizeof(pages[i]);
        pages[i].hInstance = GetModuleHandleW(nullptr);
        pages[i].pszTemplate = MAKEINTRESOURCEW(kPages[i]->dialog);
        pages[i].pfnDlgProc = PageProc;
        pages[i].lParam = reinterpret_cast<LPARAM>(kPages[i]);
    }
    PROPSHEETHEADERW sheet = {};
    sheet.dwSize = sizeof(sheet);
    sheet.dwFlags = PSH_PROPSHEETPAGE | PSH_USECALLBACK | PSH_NOAPPLYNOW | PSH_NOCONTEXTHELP;
    sheet.hwndParent = ToHwnd(NoticeOwner());
    sheet.hInstance = GetModuleHandleW(nullptr);
    sheet.pszCaption = ToWide(LoadResString(IDS_OPTIONS_TITLE));
    sheet.nPages = static_cast<UINT>(std::size(pages));
    sheet.ppsp = pages;
    sheet.pfnCallback = OnSheet;
    const HHOOK keys = SetWindowsHookExW(WH_MSGFILTER, OnSheetKey, nullptr, GetCurrentThreadId());
    const intptr_t result = PropertySheetW(&sheet);
    if (keys != nullptr) UnhookWindowsHookEx(keys);
    return result;
}

}  // namespace

int RunOptionsSheet() {
    if (!MakeSheetCopy()) return 0;
    const intptr_t result = ShowSheet();
    FreeSheetCopy();
    if (result < 0) ReportLastError();
    if (result <= 0) return 0;
    SaveOptions();
    return 1;
}

}  // namespace nira
