#include <windows.h>

#include <commctrl.h>

#include <iterator>

#include "app/services/memory.h"
#include "app/services/message_table.h"
#include "app/services/notices.h"
#include "app/services/resources.h"
#include "base/utf16.h"
#include "files/codecs.h"
#include "files/file_chooser.h"
#include "files/file_dialogs.h"
#include "files/file_list_view.h"
#include "files/folder_paths.h"
#include "files/new_folder.h"
#include "platform/win32/casts.h"
#include "resources/resource.h"
#include "shell/density.h"
#include "shell/full_screen.h"
#include "shell/menu_bar.h"
#include "shell/touch_controls.h"

namespace nira {

namespace {

constexpr int kShownEncodings = 8;
constexpr int kTouchHeight = 24;  // at the plain density
constexpr int kViewImages = 12;   // in the system's bitmap of view images
constexpr UINT_PTR kKeysHook = 1;

// A name that is kept while the listing that it comes from is replaced.
struct KeptName {
    char16_t text[kLongestFileName + 1];
};

struct FileDialog {
    FileChooser chooser;
    HWND window;
    HWND bar;
    WindowHandle list;
    const char16_t* initialPath;
    bool marking;  // the program selects an entry; its name is not the person's choice
};

FileDialog* DialogOf(WindowHandle window) {
    return reinterpret_cast<FileDialog*>(GetWindowLongPtrW(ToHwnd(window), GWLP_USERDATA));
}

HWND Control(const FileDialog* dialog, int id) { return GetDlgItem(dialog->window, id); }

// ---- The listing on the screen ----

void ShowListing(FileDialog* dialog, int marked) {
    SetWindowTextW(Control(dialog, IDC_FILE_FOLDER), ToWide(dialog->chooser.folder));
    dialog->marking = true;
    ShowFileList(dialog->list, dialog->chooser.listing, marked);
    dialog->marking = false;
}

// In a folder just entered, the first folder is ready for the next step; a file is left for the person to
// choose, for it may be about to be overwritten.
void ShowEnteredFolder(FileDialog* dialog) {
    const FolderListing& listing = dialog->chooser.listing;
    ShowListing(dialog, listing.count > 0 && listing.entries[0].kind == kEntryFolder ? 0 : -1);
}

KeptName SelectedName(const FileDialog* dialog) {
    KeptName name = {};
    const int index = SelectedEntry(dialog->list);
    if (index >= 0) Utf16Copy(name.text, kLongestFileName + 1, dialog->chooser.listing.entries[index].name);
    return name;
}

void ShowListingAt(FileDialog* dialog, const char16_t* name) {
    ShowListing(dialog, *name != 0 ? FindEntry(dialog->chooser.listing, name) : -1);
}

// ---- Accepting ----

void ProposeName(FileDialog* dialog, const char16_t* name) {
    const HWND edit = Control(dialog, IDC_FILE_NAME);
    SetWindowTextW(edit, ToWide(name));
    SendMessageW(edit, EM_SETSEL, 0, -1);
}

void Finish(FileDialog* dialog, Acceptance acceptance) {
    if (acceptance == Acceptance::kChosen) EndDialog(dialog->window, IDOK);
    if (acceptance == Acceptance::kEntered) ShowEnteredFolder(dialog);
    // What was typed has done its work, or is to be typed anew.
    SendMessageW(Control(dialog, IDC_FILE_NAME), EM_SETSEL, 0, -1);
}

intptr_t OnAccept(WindowHandle window, uint32_t, uintptr_t, intptr_t) {
    FileDialog* dialog = DialogOf(window);
    const LRESULT selected = SendMessageW(Control(dialog, IDC_FILE_ENCODING), CB_GETCURSEL, 0, 0);
    dialog->chooser.codecIndex = selected != CB_ERR ? static_cast<uint32_t>(selected) : 0;
    KeptName name = {};
    GetWindowTextW(Control(dialog, IDC_FILE_NAME), ToWide(name.text), kLongestFileName + 1);
    Finish(dialog, AcceptName(&dialog->chooser, name.text));
    return TRUE;
}

void EnterFolder(FileDialog* dialog, int index) {
    if (EnterEntry(&dialog->chooser, static_cast<uint32_t>(index))) ShowEnteredFolder(dialog);
}

bool IsFolder(const FileDialog* dialog, int index) {
    return dialog->chooser.listing.entries[index].kind == kEntryFolder;
}

// The Enter key. In the list it means the entry under the mark, whatever the box above says.
intptr_t OnEnterKey(WindowHandle window, uint32_t id, uintptr_t first, intptr_t second) {
    FileDialog* dialog = DialogOf(window);
    const int index = GetFocus() == ToHwnd(dialog->list) ? SelectedEntry(dialog->list) : -1;
    if (index >= 0 && IsFolder(dialog, index)) {
        EnterFolder(dialog, index);
        return TRUE;
    }
    if (index >= 0) ProposeName(dialog, dialog->chooser.listing.entries[index].name);
    return OnAccept(window, id, first, second);
}

intptr_t OnCancel(WindowHandle window, uint32_t, uintptr_t, intptr_t) {
    EndDialog(ToHwnd(window), IDCANCEL);
    return TRUE;
}

// ---- Commands ----

intptr_t OnUpOneLevel(WindowHandle window, uint32_t, uintptr_t, intptr_t) {
    FileDialog* dialog = DialogOf(window);
    KeptName left = {};
    Utf16Copy(left.text, kLongestFileName + 1, LastPart(dialog->chooser.folder));
    if (GoUpOneLevel(&dialog->chooser)) ShowListingAt(dialog, left.text);
    return TRUE;
}

intptr_t OnRefresh(WindowHandle window, uint32_t, uintptr_t, intptr_t) {
    FileDialog* dialog = DialogOf(window);
    const KeptName selected = SelectedName(dialog);
    if (RefreshListing(&dialog->chooser)) ShowListingAt(dialog, selected.text);
    return TRUE;
}

intptr_t OnNewFolder(WindowHandle window, uint32_t, uintptr_t, intptr_t) {
    FileDialog* dialog = DialogOf(window);
    if (!dialog->chooser.saving) return TRUE;
    KeptName name = {};
    if (AskForFolderName(window, name.text, kLongestFileName + 1) && MakeFolder(&dialog->chooser, name.text))
        ShowListingAt(dialog, name.text);
    return TRUE;
}

void MarkLineEnd(const FileDialog* dialog) {
    const auto menu =
        reinterpret_cast<HMENU>(SendMessageW(dialog->bar, shell::kGetSubMenu, 0, BARPOPUP_LINE_ENDS));
    if (menu == nullptr) return;
    CheckMenuRadioItem(menu, CMD_LINE_END_LF, CMD_LINE_END_CRLF, CMD_LINE_END_LF + dialog->chooser.lineEnd,
                       MF_BYCOMMAND);
}

intptr_t OnLineEnd(WindowHandle window, uint32_t id, uintptr_t, intptr_t) {
    FileDialog* dialog = DialogOf(window);
    dialog->chooser.lineEnd = id - CMD_LINE_END_LF;
    MarkLineEnd(dialog);
    return TRUE;
}

constexpr MessageEntry kCommands[] = {
    {CMD_DIALOG_ACCEPT, OnAccept},    {CMD_OK, OnEnterKey},
    {CMD_DIALOG_CANCEL, OnCancel},    {CMD_CANCEL, OnCancel},
    {CMD_UP_ONE_LEVEL, OnUpOneLevel}, {CMD_REFRESH, OnRefresh},
    {CMD_NEW_FOLDER, OnNewFolder},    {CMD_LINE_END_LF, OnLineEnd},
    {CMD_LINE_END_CR, OnLineEnd},     {CMD_LINE_END_CRLF, OnLineEnd},
};

// ---- Keys ----

// What Alt with a letter presses on the bar. The system knows the letters of menus and of labels only.
uint32_t CommandOfLetter(wchar_t letter) {
    switch (letter | 0x20) {
        case L'o':
        case L's':
            return CMD_DIALOG_ACCEPT;
        case L'c':
            return CMD_DIALOG_CANCEL;
        case L'u':
            return CMD_UP_ONE_LEVEL;
        case L'n':
            return CMD_NEW_FOLDER;
        case L'r':
            return CMD_REFRESH;
        default:
            return 0;
    }
}

// F10, Alt alone, and Alt with a letter.
intptr_t OnMenuKey(const FileDialog* dialog, wchar_t letter) {
    if (letter == L' ' || letter == L'-') return FALSE;  // the system menu's
    const uint32_t command = letter != 0 ? CommandOfLetter(letter) : 0;
    if (command != 0) {
        PostMessageW(dialog->window, WM_COMMAND, command, 0);
    } else {
        shell::OpenDropDownByKey(dialog->bar, letter);
    }
    return TRUE;
}

// Keys that mean the same in all controls: the dialog itself sees none of them.
LRESULT CALLBACK KeysProc(HWND control, UINT message, WPARAM first, LPARAM second, UINT_PTR, DWORD_PTR) {
    if (message == WM_SYSCHAR && first != L' ')
        return SendMessageW(GetParent(control), WM_SYSCOMMAND, SC_KEYMENU, static_cast<LPARAM>(first));
    // Not every control lets F10 through to the window that has the menus.
    if (message == WM_SYSKEYUP && first == VK_F10)
        return SendMessageW(GetParent(control), WM_SYSCOMMAND, SC_KEYMENU, 0);
    if (message == WM_KEYDOWN && first == VK_F5)
        return SendMessageW(GetParent(control), WM_COMMAND, CMD_REFRESH, 0);
    if (message == WM_NCDESTROY) RemoveWindowSubclass(control, KeysProc, kKeysHook);
    return DefSubclassProc(control, message, first, second);
}

// ---- Notifications of the list ----

void OnActivate(FileDialog* dialog, int index) {
    // Activated by the keyboard, an entry may come without its index.
    if (index < 0) index = SelectedEntry(dialog->list);
    if (index < 0) return;
    if (IsFolder(dialog, index)) {
        EnterFolder(dialog, index);
        return;
    }
    ProposeName(dialog, dialog->chooser.listing.entries[index].name);
    Finish(dialog, AcceptEntry(&dialog->chooser, static_cast<uint32_t>(index)));
}

void OnSelect(FileDialog* dialog, const NMLISTVIEW& change) {
    const bool selected = (change.uNewState & ~change.uOldState & LVIS_SELECTED) != 0;
    if (dialog->marking || !selected || change.iItem < 0) return;
    if (!IsFolder(dialog, change.iItem))
        ProposeName(dialog, dialog->chooser.listing.entries[change.iItem].name);
}

void OnColumn(FileDialog* dialog, int column) {
    const KeptName selected = SelectedName(dialog);
    if (column == 0) {
        SortByName(&dialog->chooser.listing);
    } else {
        SortBySize(&dialog->chooser.listing);
    }
    ShowListingAt(dialog, selected.text);
}

void OnListKey(const FileDialog* dialog, WORD key) {
    if (key == VK_BACK) SendMessageW(dialog->window, WM_COMMAND, CMD_UP_ONE_LEVEL, 0);
}

intptr_t OnNotify(FileDialog* dialog, intptr_t record) {
    const auto* header = reinterpret_cast<const NMHDR*>(record);
    if (header->idFrom != IDC_FILE_LIST) return FALSE;
    switch (header->code) {
        case LVN_GETDISPINFOW:
            AnswerEntryText(dialog->chooser.listing, record);
            return TRUE;
        case LVN_ODFINDITEMW:
            SetWindowLongPtrW(dialog->window, DWLP_MSGRESULT,
                              AnswerTypedSearch(dialog->chooser.listing, record));
            return TRUE;
        case LVN_ITEMCHANGED:
            OnSelect(dialog, *reinterpret_cast<const NMLISTVIEW*>(record));
            return TRUE;
        case LVN_ITEMACTIVATE:
            OnActivate(dialog, reinterpret_cast<const NMITEMACTIVATE*>(record)->iItem);
            return TRUE;
        case LVN_COLUMNCLICK:
            OnColumn(dialog, reinterpret_cast<const NMLISTVIEW*>(record)->iSubItem);
            return TRUE;
        case LVN_KEYDOWN:
            OnListKey(dialog, reinterpret_cast<const NMLVKEYDOWN*>(record)->wVKey);
            return TRUE;
        default:
            return FALSE;
    }
}

// ---- Layout ----

RECT PlaceOf(const FileDialog* dialog, int id) {
    RECT place = {};
    GetWindowRect(Control(dialog, id), &place);
    MapWindowPoints(nullptr, dialog->window, reinterpret_cast<POINT*>(&place), 2);
    return place;
}

void Resize(const FileDialog* dialog, int id, int width, int height) {
    SetWindowPos(Control(dialog, id), nullptr, 0, 0, width > 0 ? width : 0, height > 0 ? height : 0,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

// The area above the bar has a new size.
void StretchControls(const FileDialog* dialog, int width, int height) {
    const int margin = static_cast<int>(PlaceOf(dialog, IDC_FILE_RULE).left);
    for (const int id : {IDC_FILE_NAME, IDC_FILE_RULE, IDC_FILE_FOLDER}) {
        const RECT place = PlaceOf(dialog, id);
        Resize(dialog, id, width - margin - static_cast<int>(place.left),
               static_cast<int>(place.bottom - place.top));
    }
    // The height of a drop-down list is that of its open state.
    const RECT encoding = PlaceOf(dialog, IDC_FILE_ENCODING);
    Resize(dialog, IDC_FILE_ENCODING, width - margin - static_cast<int>(encoding.left),
           (kShownEncodings + 1) * shell::ScaledToScreen(kTouchHeight));
    const RECT list = PlaceOf(dialog, IDC_FILE_LIST);
    Resize(dialog, IDC_FILE_LIST, width - static_cast<int>(list.left), height - static_cast<int>(list.top));
    FitFileColumns(dialog->list, dialog->chooser.listing);
    InvalidateRect(dialog->window, nullptr, TRUE);
}

// ---- Opening ----

void MakeBar(FileDialog* dialog) {
    const bool saving = dialog->chooser.saving;
    dialog->bar =
        ToHwnd(CreateMenuBar(FromHwnd(dialog->window), saving ? IDR_BAR_SAVE_FILE : IDR_BAR_OPEN_FILE));
    shell::AddBarBitmap(dialog->bar, GetModuleHandleW(nullptr), IDB_FILE_DIALOG, IMG_FILE_DIALOG_COUNT);
    shell::AddBarBitmap(dialog->bar, HINST_COMMCTRL, IDB_VIEW_SMALL_COLOR, kViewImages);
    if (saving) MarkLineEnd(dialog);
}

void FillEncodings(const FileDialog* dialog) {
    const HWND box = Control(dialog, IDC_FILE_ENCODING);
    for (uint32_t i = 0; i < TheCodecList().count; ++i)
        SendMessageW(box, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(CodecName(i)));
    SendMessageW(box, CB_SETCURSEL, dialog->chooser.codecIndex, 0);
    shell::EnlargeComboBox(box, shell::ScaledToScreen(kTouchHeight));
}

bool ShowFirstFolder(FileDialog* dialog) {
    char16_t* name = nullptr;
    bool listed = false;
    Guarded([&] { listed = BeginChoosing(&dialog->chooser, dialog->initialPath, &name); });
    if (listed) {
        ShowListing(dialog, -1);
        ProposeName(dialog, name);
    }
    MemFree(nullptr, name);
    return listed;
}

intptr_t OnInit(HWND window, intptr_t parameter) {
    auto* dialog = reinterpret_cast<FileDialog*>(parameter);
    dialog->window = window;
    dialog->list = FromHwnd(GetDlgItem(window, IDC_FILE_LIST));
    dialog->chooser.window = FromHwnd(window);
    SetWindowLongPtrW(window, GWLP_USERDATA, parameter);
    SetWindowTextW(window,
                   ToWide(LoadResString(dialog->chooser.saving ? IDS_SAVE_FILE_TITLE : IDS_OPEN_FILE_TITLE)));
    SendDlgItemMessageW(window, IDC_FILE_NAME, EM_LIMITTEXT, kLongestFileName, 0);
    for (const int id : {IDC_FILE_NAME, IDC_FILE_ENCODING, IDC_FILE_LIST})
        SetWindowSubclass(GetDlgItem(window, id), KeysProc, kKeysHook, 0);
    FillEncodings(dialog);
    MakeBar(dialog);
    shell::SHInitDialog(window, shell::kSizeFullScreen | shell::kInputPanelDown);
    SetUpFileList(dialog->list);
    if (!ShowFirstFolder(dialog)) EndDialog(window, IDCANCEL);
    SetFocus(Control(dialog, IDC_FILE_NAME));
    return FALSE;
}

intptr_t FileDialogHandler(WindowHandle window, uint32_t message, uintptr_t first, intptr_t second) {
    if (message == WM_INITDIALOG) return OnInit(ToHwnd(window), second);
    FileDialog* dialog = DialogOf(window);
    if (dialog == nullptr) return FALSE;
    if (message == WM_COMMAND) {
        const MessageEntry* entry = FindMessage({kCommands, std::size(kCommands)}, LOWORD(first));
        return entry != nullptr ? entry->handler(window, LOWORD(first), first, second) : FALSE;
    }
    if (message == WM_NOTIFY) return OnNotify(dialog, second);
    if (message == WM_SIZE) StretchControls(dialog, LOWORD(second), HIWORD(second));
    if (message == WM_SYSCOMMAND && (first & 0xFFF0) == SC_KEYMENU)
        return OnMenuKey(dialog, static_cast<wchar_t>(second));
    return FALSE;
}

char16_t* RunFileDialog(FileDialog* dialog, uint32_t* codecIndex) {
    dialog->chooser.firstCodec = *codecIndex;
    dialog->chooser.codecIndex = *codecIndex;
    RunDialog(IDD_FILE, NoticeOwner(), FileDialogHandler, reinterpret_cast<intptr_t>(dialog));
    EndChoosing(&dialog->chooser);
    if (dialog->chooser.path != nullptr) *codecIndex = dialog->chooser.codecIndex;
    return dialog->chooser.path;
}

}  // namespace

char16_t* OpenDialog(const char16_t* initialPath, uint32_t* codecIndex) {
    FileDialog dialog = {};
    dialog.initialPath = initialPath;
    return RunFileDialog(&dialog, codecIndex);
}

char16_t* SaveDialog(const char16_t* initialPath, uint32_t* codecIndex, uint32_t* lineEnd) {
    FileDialog dialog = {};
    dialog.initialPath = initialPath;
    dialog.chooser.saving = true;
    dialog.chooser.lineEnd = *lineEnd;
    char16_t* path = RunFileDialog(&dialog, codecIndex);
    if (path != nullptr) *lineEnd = dialog.chooser.lineEnd;
    return path;
}

}  // namespace nira
