#include <windows.h>

#include <commctrl.h>

#include <algorithm>

#include "app/services/memory.h"
#include "app/services/resources.h"
#include "base/utf16.h"
#include "engine/window_state.h"
#include "platform/win32/casts.h"
#include "resources/resource.h"
#include "search/search_dialogs.h"
#include "search/search_history.h"
#include "search/search_pattern.h"
#include "search/search_request.h"
#include "search/search_state.h"
#include "shell/full_screen.h"
#include "shell/menu_bar.h"
#include "shell/touch_controls.h"

namespace nira {

namespace {

// The height of a combo box and of the rows in its list, which are higher than their text because we draw
// them.
constexpr int kFieldUnits = 15;

// A combo box, the history in its list, and the text that it held when the search was confirmed.
struct HistoryField {
    int control;
    const char16_t* name;
    SearchHistory history;
    char16_t* text;  // local heap
};

struct SearchDialog {
    bool replacing;
    bool busy;  // Replace All is at work; the dialog's own buttons must wait, and are gray
    HistoryField pattern;
    HistoryField replacement;
};

SearchDialog& DialogOf(HWND dialog) {
    return *reinterpret_cast<SearchDialog*>(GetWindowLongPtrW(dialog, GWLP_USERDATA));
}

int PixelsHigh(HWND dialog, int units) {
    RECT area = {0, 0, 0, units};
    MapDialogRect(dialog, &area);
    return area.bottom;
}

// ---- Layout ----

RECT PlaceOf(HWND dialog, int id) {
    RECT place = {};
    GetWindowRect(GetDlgItem(dialog, id), &place);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
    return place;
}

void MoveAcross(HWND dialog, int id, LONG left, LONG width) {
    const RECT place = PlaceOf(dialog, id);
    SetWindowPos(GetDlgItem(dialog, id), nullptr, left, place.top, width, place.bottom - place.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

// Side by side, each as wide as the others.
void SpreadButtons(HWND dialog, const RECT& area, LONG gap) {
    const int buttons[] = {IDOK, IDCANCEL, CMD_REPLACE_ALL};
    const LONG count = GetDlgItem(dialog, CMD_REPLACE_ALL) != nullptr ? 3 : 2;
    const LONG width = (area.right - area.left - gap * (count - 1)) / count;
    for (LONG i = 0; i < count; ++i) MoveAcross(dialog, buttons[i], area.left + i * (width + gap), width);
}

void SpreadOverWidth(HWND dialog) {
    RECT area = shell::ContentRect(dialog);
    const LONG margin = PlaceOf(dialog, IDC_PATTERN).left;
    InflateRect(&area, -margin, 0);
    const LONG width = area.right - area.left;
    const LONG middle = area.left + width / 2;
    for (const int id : {IDC_PATTERN, IDC_REPLACEMENT, IDC_DIRECTION}) {
        if (GetDlgItem(dialog, id) != nullptr) MoveAcross(dialog, id, area.left, width);
    }
    for (const int id : {IDC_WHOLE_WORD, IDC_DOWN}) {
        MoveAcross(dialog, id, middle, area.right - middle - (id == IDC_DOWN ? margin : 0));
    }
    MoveAcross(dialog, IDC_MATCH_CASE, area.left, middle - area.left);
    SpreadButtons(dialog, area, margin / 2);
}

// ---- Combo boxes ----

void DrawRow(const DRAWITEMSTRUCT& item, const SearchHistory& history) {
    constexpr size_t kMostShown = 512;  // more units than fit any screen
    const bool selected = (item.itemState & ODS_SELECTED) != 0;
    const char16_t* text = NextHistoryText(history, nullptr);
    for (UINT i = 0; i < item.itemID && text != nullptr; ++i) text = NextHistoryText(history, text);
    FillRect(item.hDC, &item.rcItem, GetSysColorBrush(selected ? COLOR_HIGHLIGHT : COLOR_WINDOW));
    if (text == nullptr) return;
    SetTextColor(item.hDC, GetSysColor(selected ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
    SetBkMode(item.hDC, TRANSPARENT);
    RECT area = item.rcItem;
    InflateRect(&area, -3, 0);
    DrawTextW(item.hDC, ToWide(text), static_cast<int>(std::min(Utf16Length(text), kMostShown)), &area,
              DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
}

// Alt+Down and Alt+Up open and close the list. Wine's field keeps these keys from the default procedure,
// which then takes Alt for pressed alone: on its release the dialog's menu would open, and close the list.
LRESULT CALLBACK FieldProc(HWND field, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR) {
    if (message == WM_NCDESTROY) RemoveWindowSubclass(field, FieldProc, 0);
    const LRESULT result = DefSubclassProc(field, message, wParam, lParam);
    if (message == WM_SYSKEYDOWN && (wParam == VK_DOWN || wParam == VK_UP)) {
        DefWindowProcW(field, message, wParam, lParam);
    }
    return result;
}

void KeepListOpen(HWND combo) {
    COMBOBOXINFO parts = {};
    parts.cbSize = sizeof(parts);
    if (GetComboBoxInfo(combo, &parts)) SetWindowSubclass(parts.hwndItem, FieldProc, 0, 0);
}

void FillList(HWND combo, const SearchHistory& history) {
    SendMessageW(combo, WM_SETREDRAW, FALSE, 0);
    SendMessageW(combo, CB_INITSTORAGE, history.count, static_cast<LPARAM>(history.units * sizeof(wchar_t)));
    const char16_t* text = nullptr;
    while ((text = NextHistoryText(history, text)) != nullptr) {
        SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
    }
    SendMessageW(combo, WM_SETREDRAW, TRUE, 0);
}

void PrepareField(HWND dialog, HistoryField* field, const char16_t* text) {
    const HWND combo = GetDlgItem(dialog, field->control);
    SendMessageW(combo, CB_LIMITTEXT, kLongestPattern, 0);
    shell::EnlargeComboBox(combo, PixelsHigh(dialog, kFieldUnits));
    KeepListOpen(combo);
    HistoryLoad(&field->history, field->name);
    FillList(combo, field->history);
    SetWindowTextW(combo, ToWide(text != nullptr ? text : u""));
}

void ReadField(HWND dialog, HistoryField* field) {
    MemFree(nullptr, field->text);
    field->text = nullptr;
    const HWND combo = GetDlgItem(dialog, field->control);
    const int room = GetWindowTextLengthW(combo) + 1;
    field->text = MemAllocArray<char16_t>(nullptr, static_cast<size_t>(room));
    GetWindowTextW(combo, ToWide(field->text), room);
}

// The list shown follows the history: the same text in front, the same number of texts.
void RememberField(HWND dialog, HistoryField* field) {
    const HWND combo = GetDlgItem(dialog, field->control);
    if (HistoryAdd(&field->history, field->text)) {
        SendMessageW(combo, CB_INSERTSTRING, 0, reinterpret_cast<LPARAM>(field->text));
        for (LRESULT last = SendMessageW(combo, CB_GETCOUNT, 0, 0); last-- > field->history.count;) {
            SendMessageW(combo, CB_DELETESTRING, static_cast<WPARAM>(last), 0);
        }
    }
    HistorySave(field->history, field->name);
}

// ---- Opening and confirming ----

void ProposePattern(HWND dialog, HistoryField* field) {
    char16_t* text = ProposedPattern(TheWindowState().currentEditor);
    field->text = text;
    PrepareField(dialog, field, text);
    const HWND combo = GetDlgItem(dialog, field->control);
    SetFocus(combo);
    // Selected to its end, so that typing replaces what is proposed.
    SendMessageW(combo, CB_SETEDITSEL, 0, MAKELPARAM(0, -1));
}

void OpenDialog(HWND dialog) {
    SearchDialog& record = DialogOf(dialog);
    const SearchState& state = TheSearchState();
    shell::SHInitDialog(dialog, shell::kSizeFullScreen);
    CreateMenuBar(FromHwnd(dialog), record.replacing ? IDR_BAR_REPLACE_DIALOG : IDR_BAR_FIND_DIALOG);
    SpreadOverWidth(dialog);
    CheckDlgButton(dialog, IDC_MATCH_CASE, state.matchCase != 0 ? BST_CHECKED : BST_UNCHECKED);
    CheckDlgButton(dialog, IDC_WHOLE_WORD, state.wholeWord != 0 ? BST_CHECKED : BST_UNCHECKED);
    CheckRadioButton(dialog, IDC_UP, IDC_DOWN, state.up == 1 ? IDC_UP : IDC_DOWN);
    if (record.replacing) PrepareField(dialog, &record.replacement, state.replacement);
    ProposePattern(dialog, &record.pattern);
}

bool IsChecked(HWND dialog, int id) { return IsDlgButtonChecked(dialog, id) == BST_CHECKED; }

// Takes over what the dialog says; false while there is no pattern.
bool Accept(HWND dialog) {
    SearchDialog& record = DialogOf(dialog);
    ReadField(dialog, &record.pattern);
    if (record.replacing) ReadField(dialog, &record.replacement);
    return AcceptSearch({record.pattern.text, record.replacing ? record.replacement.text : nullptr,
                         IsChecked(dialog, IDC_MATCH_CASE), IsChecked(dialog, IDC_WHOLE_WORD),
                         IsChecked(dialog, IDC_UP)});
}

// A finger has no pointer that could turn into the one of waiting. Cancel stays: it ends the waiting. The
// control with the keyboard is left alone: once disabled it would lose the keyboard, and Esc would go astray.
void SetBusy(HWND dialog, bool busy) {
    DialogOf(dialog).busy = busy;
    const HWND bar = shell::VisibleBar(dialog);
    for (const int id : {IDOK, CMD_REPLACE_ALL}) {
        const HWND button = GetDlgItem(dialog, id);
        if (!busy || button != GetFocus()) EnableWindow(button, busy ? FALSE : TRUE);
        SendMessageW(bar, TB_ENABLEBUTTON, static_cast<WPARAM>(id), MAKELPARAM(busy ? FALSE : TRUE, 0));
    }
}

void Confirm(HWND dialog, uint32_t command) {
    SearchDialog& record = DialogOf(dialog);
    if (!Accept(dialog)) return;
    if (command == CMD_REPLACE_ALL) {
        SetBusy(dialog, true);
        Guarded([&] { ReplaceAllAndTell(FromHwnd(dialog)); });
        SetBusy(dialog, false);
    } else {
        EndDialog(dialog, 1);
    }
    RememberField(dialog, &record.pattern);
    if (record.replacing) RememberField(dialog, &record.replacement);
}

intptr_t DrawList(HWND dialog, const DRAWITEMSTRUCT& item) {
    const SearchDialog& record = DialogOf(dialog);
    const bool pattern = item.CtlID == static_cast<UINT>(record.pattern.control);
    DrawRow(item, pattern ? record.pattern.history : record.replacement.history);
    return TRUE;
}

intptr_t SearchHandler(WindowHandle window, uint32_t message, uintptr_t first, intptr_t second) {
    const HWND dialog = ToHwnd(window);
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(dialog, GWLP_USERDATA, second);
        OpenDialog(dialog);
        return FALSE;  // the focus stands in the pattern
    }
    if (GetWindowLongPtrW(dialog, GWLP_USERDATA) == 0) return FALSE;  // controls may tell of their making
    if (message == WM_SIZE) SpreadOverWidth(dialog);
    if (message == WM_DRAWITEM) return DrawList(dialog, *reinterpret_cast<const DRAWITEMSTRUCT*>(second));
    if (message != WM_COMMAND || DialogOf(dialog).busy) return FALSE;
    const uint32_t command = LOWORD(first);
    if (command == IDOK || command == CMD_REPLACE_ALL) Confirm(dialog, command);
    if (command == IDCANCEL) EndDialog(dialog, 0);
    return FALSE;
}

void FreeField(HistoryField* field) {
    HistoryFree(&field->history);
    MemFree(nullptr, field->text);
}

bool Ask(WindowHandle owner, bool replacing) {
    SearchDialog record = {};
    record.replacing = replacing;
    record.pattern = {IDC_PATTERN, kPatternHistory, {}, nullptr};
    record.replacement = {IDC_REPLACEMENT, kReplacementHistory, {}, nullptr};
    const intptr_t result = RunDialog(replacing ? IDD_REPLACE : IDD_FIND, owner, SearchHandler,
                                      reinterpret_cast<intptr_t>(&record));
    FreeField(&record.pattern);
    FreeField(&record.replacement);
    return result == 1;
}

}  // namespace

bool AskForFind(WindowHandle owner) { return Ask(owner, false); }

bool AskForReplace(WindowHandle owner) { return Ask(owner, true); }

}  // namespace nira
