#include "shell/menu_bar.h"

#include "shell/bar_description.h"
#include "shell/bar_dock.h"
#include "shell/bar_images.h"
#include "shell/density.h"
#include "shell/menu_fit.h"
#include "shell/menu_walk.h"
#include "shell/subclass.h"
#include "shell/work_area.h"

namespace shell {

namespace {

constexpr const wchar_t* kRecordName = L"shell.bar";
constexpr int kMaxLabel = 128;
constexpr int kMargin = 4;        // above and below the rows of buttons together
constexpr int kTouchHeight = 24;  // of a button without an image, at the plain density

struct Slot {
    UINT command;
    int image;  // as the description counts, negative for none
    bool dropDown;
    bool pressed;  // shows as pressed until told otherwise
    HMENU popup;   // of a drop-down; may have died with the bar it belongs to
};

struct Bar {
    HWND window;
    HINSTANCE instance;
    HMENU menu;  // loaded for this bar, or null
    Slot* slots;
    int slotCount;
    BarImageFormat format;
    HIMAGELIST images;  // null until some are added
    HMENU openPopup;    // being shown now
    UINT openCommand;
    bool inClick;  // the tool bar is working on a click and would not survive being destroyed
};

Bar* FindBar(HWND window) { return static_cast<Bar*>(FindRecord(window, kRecordName)); }

LRESULT Tell(const Bar* bar, UINT message, WPARAM wParam, LPARAM lParam) {
    return SendMessageW(bar->window, message, wParam, lParam);
}

void FreeBar(Bar* bar) {
    if (bar->images) {
        ImageList_Destroy(bar->images);
    }
    if (bar->menu) {
        DestroyMenu(bar->menu);
    }
    FreeRecord(bar->slots);
    FreeRecord(bar);
}

Slot* FindDropDown(const Bar* bar, UINT command) {
    for (int i = 0; i < bar->slotCount; ++i) {
        if (bar->slots[i].dropDown && bar->slots[i].command == command) {
            return &bar->slots[i];
        }
    }
    return nullptr;
}

// ---- Size ----

void SetWrap(const Bar* bar, int index, bool wrap) {
    TBBUTTON button = {};
    Tell(bar, TB_GETBUTTON, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&button));
    const BYTE state =
        static_cast<BYTE>(wrap ? button.fsState | TBSTATE_WRAP : button.fsState & ~TBSTATE_WRAP);
    TBBUTTONINFOW info = {};
    info.cbSize = sizeof(info);
    info.dwMask = TBIF_BYINDEX | TBIF_STATE;
    info.fsState = state;
    if (state != button.fsState) {
        Tell(bar, TB_SETBUTTONINFOW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&info));
    }
}

RECT ButtonRect(const Bar* bar, int index) {
    RECT rect = {};
    Tell(bar, TB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&rect));
    return rect;
}

// Breaks the buttons into rows that fit `width`, so that a narrow window loses none.
void BreakIntoRows(const Bar* bar, int width) {
    int used = 0;
    for (int i = 0; i < bar->slotCount; ++i) {
        const RECT button = ButtonRect(bar, i);
        const int buttonWidth = button.right - button.left;
        const bool breakBefore = used > 0 && used + buttonWidth > width;
        if (i > 0) {
            SetWrap(bar, i - 1, breakBefore);
        }
        used = breakBefore ? buttonWidth : used + buttonWidth;
    }
    Tell(bar, TB_AUTOSIZE, 0, 0);
}

int HeightForWidth(const Bar* bar, int width) {
    // A window that has no size yet is not the place to break anything.
    if (width > 0) {
        BreakIntoRows(bar, width);
    }
    int height = HIWORD(Tell(bar, TB_GETBUTTONSIZE, 0, 0));
    for (int i = 0; i < bar->slotCount; ++i) {
        const int bottom = static_cast<int>(ButtonRect(bar, i).bottom);
        height = bottom > height ? bottom : height;
    }
    return height + kMargin;
}

// ---- Drop-downs ----

bool CanOpen(const Bar* bar, const Slot& slot) {
    return slot.dropDown && IsMenu(slot.popup) && Tell(bar, TB_ISBUTTONENABLED, slot.command, 0) &&
           !Tell(bar, TB_ISBUTTONHIDDEN, slot.command, 0);
}

// The drop-down that `way` leads to, around the end of the bar; `from` when it is alone.
const Slot* NeighbourOf(const Bar* bar, const Slot* from, MenuStep way) {
    const int count = bar->slotCount;
    const int step = way == MenuStep::kRight ? 1 : -1;
    int index = static_cast<int>(from - bar->slots);
    do {
        index = (index + step + count) % count;
    } while (&bar->slots[index] != from && !CanOpen(bar, bar->slots[index]));
    return &bar->slots[index];
}

// A covered bar's pop-up stands on the bar that covers it.
void StandOn(HWND covering, RECT* place) {
    RECT sight = {};
    GetWindowRect(covering, &sight);
    place->top = sight.top;
    place->bottom = sight.bottom;
}

// Shows one pop-up until it closes. Returns where the person went on to.
MenuStep TrackAbove(Bar* bar, const Slot& slot) {
    const HWND window = bar->window;
    const UINT command = slot.command;
    TPMPARAMS avoid = {};
    avoid.cbSize = sizeof(avoid);
    Tell(bar, TB_GETRECT, command, reinterpret_cast<LPARAM>(&avoid.rcExclude));
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&avoid.rcExclude), 2);
    if (!IsWindowVisible(window)) {
        StandOn(TopBar(GetParent(window)), &avoid.rcExclude);
    }
    bar->openPopup = slot.popup;
    bar->openCommand = command;
    Tell(bar, TB_PRESSBUTTON, command, TRUE);
    const MenuStep step =
        TrackWalkable(slot.popup, TPM_LEFTALIGN | TPM_BOTTOMALIGN | TPM_VERTICAL | TPM_LEFTBUTTON,
                      {avoid.rcExclude.left, avoid.rcExclude.top}, window, &avoid);
    UnfitMenu(nullptr);
    // The menu's own loop may have destroyed the bar.
    if (Bar* still = FindBar(window)) {
        still->openPopup = nullptr;
        Tell(still, TB_PRESSBUTTON, command, FALSE);
    }
    return step;
}

void TrackFrom(HWND window, UINT command) {
    Bar* bar = FindBar(window);
    const Slot* slot = bar ? FindDropDown(bar, command) : nullptr;
    while (slot) {
        const UINT shown = slot->command;
        const MenuStep step = TrackAbove(bar, *slot);
        bar = step != MenuStep::kNone ? FindBar(window) : nullptr;
        slot = bar && IsWindowVisible(GetParent(window)) ? FindDropDown(bar, shown) : nullptr;
        if (slot) {
            slot = NeighbourOf(bar, slot, step);
        }
        // The one pop-up of a bar may itself have gone.
        if (slot && !CanOpen(bar, *slot)) {
            slot = nullptr;
        }
    }
}

LRESULT TellOwner(const Bar* bar, UINT message, WPARAM wParam, LPARAM lParam) {
    return SendMessageW(GetParent(bar->window), message, wParam, lParam);
}

// Names the drop-down instead of the position 0 that the system gives to every tracked pop-up.
LRESULT OnInitMenuPopup(const Bar* bar, WPARAM wParam, LPARAM lParam) {
    const HMENU popup = reinterpret_cast<HMENU>(wParam);
    // Before the owner hears of it: it may destroy the bar.
    const RECT work = WorkAreaOf(bar->window);
    const bool isDropDown = bar->openPopup && popup == bar->openPopup;
    NoteMenuMessage(WM_INITMENUPOPUP, wParam, lParam);
    const LRESULT result = TellOwner(bar, WM_INITMENUPOPUP, wParam,
                                     isDropDown ? MAKELPARAM(bar->openCommand, HIWORD(lParam)) : lParam);
    FitMenu(popup, work.right - work.left);
    return result;
}

LRESULT OnSetSubMenu(Bar* bar, UINT command, HMENU popup) {
    Slot* slot = FindDropDown(bar, command);
    if (!slot) {
        return FALSE;
    }
    slot->popup = popup;
    return TRUE;
}

LRESULT OnGetSubMenu(const Bar* bar, UINT command) {
    const Slot* slot = FindDropDown(bar, command);
    return reinterpret_cast<LRESULT>(slot ? slot->popup : nullptr);
}

bool LabelBeginsWith(const Bar* bar, UINT command, wchar_t letter) {
    wchar_t label[kMaxLabel] = {};
    TBBUTTONINFOW info = {};
    info.cbSize = sizeof(info);
    info.dwMask = TBIF_TEXT;
    info.pszText = label;
    info.cchText = kMaxLabel;
    Tell(bar, TB_GETBUTTONINFOW, command, reinterpret_cast<LPARAM>(&info));
    return label[0] != 0 &&
           CompareStringW(LOCALE_USER_DEFAULT, NORM_IGNORECASE, label, 1, &letter, 1) == CSTR_EQUAL;
}

const Slot* DropDownForKey(const Bar* bar, wchar_t letter) {
    for (int i = 0; i < bar->slotCount; ++i) {
        const Slot& slot = bar->slots[i];
        if (CanOpen(bar, slot) && (letter == 0 || LabelBeginsWith(bar, slot.command, letter))) {
            return &slot;
        }
    }
    return nullptr;
}

// ---- Messages ----

bool OnNotify(Bar* bar, LPARAM lParam) {
    const NMHDR* header = reinterpret_cast<const NMHDR*>(lParam);
    if (header->code != static_cast<UINT>(TBN_DROPDOWN)) {
        return false;
    }
    OpenDropDown(bar->window, static_cast<UINT>(reinterpret_cast<const NMTOOLBARW*>(lParam)->iItem));
    return true;
}

bool OnBarCommand(const Bar* bar, WPARAM wParam, LPARAM lParam) {
    return bar->inClick && PostMessageW(GetParent(bar->window), WM_COMMAND, wParam, lParam);
}

void NotePressed(Bar* bar, UINT command, bool pressed) {
    for (int i = 0; i < bar->slotCount; ++i) {
        if (bar->slots[i].command == command) {
            bar->slots[i].pressed = pressed;
        }
    }
}

// A tool bar raises the button under the pointer when the mouse button is released, wherever that is.
void PressAgain(const Bar* bar) {
    for (int i = 0; i < bar->slotCount; ++i) {
        if (bar->slots[i].pressed) {
            Tell(bar, TB_PRESSBUTTON, bar->slots[i].command, TRUE);
        }
    }
}

LRESULT OnClick(HWND window, UINT message, WPARAM wParam, LPARAM lParam, Bar* bar) {
    bar->inClick = true;
    const LRESULT result = DefSubclassProc(window, message, wParam, lParam);
    if (Bar* still = FindBar(window)) {
        still->inClick = false;
        PressAgain(still);
    }
    return result;
}

LRESULT CALLBACK MenuBarProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                             DWORD_PTR data) {
    Bar* bar = reinterpret_cast<Bar*>(data);
    switch (message) {
        case kSetSubMenu:
            return OnSetSubMenu(bar, static_cast<UINT>(wParam), reinterpret_cast<HMENU>(lParam));
        case kGetSubMenu:
            return OnGetSubMenu(bar, static_cast<UINT>(lParam));
        case kBarHeightForWidth:
            return HeightForWidth(bar, static_cast<int>(wParam));
        case kBarNotify:
            return OnNotify(bar, lParam);
        case kBarCommand:
            return OnBarCommand(bar, wParam, lParam);
        case TB_PRESSBUTTON:
            NotePressed(bar, static_cast<UINT>(wParam), LOWORD(lParam) != 0);
            break;
        case WM_LBUTTONUP:
            return OnClick(window, message, wParam, lParam, bar);
        case WM_CAPTURECHANGED:
            DefSubclassProc(window, message, wParam, lParam);
            PressAgain(bar);
            return 0;
        case WM_INITMENUPOPUP:
            return OnInitMenuPopup(bar, wParam, lParam);
        case WM_UNINITMENUPOPUP:
            UnfitMenu(reinterpret_cast<HMENU>(wParam));
            NoteMenuMessage(message, wParam, lParam);
            return TellOwner(bar, message, wParam, lParam);
        case WM_MENUSELECT:
            NoteMenuMessage(message, wParam, lParam);
            return TellOwner(bar, message, wParam, lParam);
        case WM_COMMAND:
        case WM_ENTERMENULOOP:
        case WM_EXITMENULOOP:
            return TellOwner(bar, message, wParam, lParam);
        case WM_NCDESTROY:
            DetachRecord(window, MenuBarProc, kRecordName);
            FreeBar(bar);
            break;
        default:
            break;
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

// ---- Making ----

// Label of text buttons and drop-downs, tooltip of image buttons: the tool bar shows the one string of a
// button as whichever of the two its style allows.
void LoadButtonText(const Bar* bar, const BarButton& button, wchar_t (&text)[kMaxLabel]) {
    const bool isImage = button.image >= 0;
    const UINT wanted = isImage ? button.tooltip : button.label;
    const UINT other = isImage ? button.label : button.tooltip;
    text[0] = 0;
    const UINT id = wanted ? wanted : other;
    if (id) {
        LoadStringW(bar->instance, id, text, kMaxLabel);
    }
}

BYTE ButtonStyle(const BarButton& button) {
    if (button.separator) {
        return BTNS_SEP;
    }
    const int kind = button.dropDown ? BTNS_WHOLEDROPDOWN : BTNS_BUTTON;
    return static_cast<BYTE>(kind | BTNS_AUTOSIZE | (button.image >= 0 ? 0 : BTNS_SHOWTEXT));
}

bool AddButton(Bar* bar, const BarButton& button) {
    wchar_t text[kMaxLabel];
    LoadButtonText(bar, button, text);
    TBBUTTON record = {};
    record.iBitmap = button.separator ? 0 : I_IMAGENONE;
    record.idCommand = static_cast<int>(button.command);
    record.fsState = button.enabled || button.separator ? TBSTATE_ENABLED : 0;
    record.fsStyle = ButtonStyle(button);
    record.iString = text[0] ? reinterpret_cast<INT_PTR>(text) : -1;
    if (!Tell(bar, TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&record))) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return false;
    }
    Slot& slot = bar->slots[bar->slotCount++];
    slot.command = button.command;
    slot.image = button.image;
    slot.dropDown = button.dropDown;
    slot.popup =
        button.dropDown && bar->menu && button.popup >= 0 ? GetSubMenu(bar->menu, button.popup) : nullptr;
    return true;
}

bool FillBar(Bar* bar, const BarDescription& description) {
    Tell(bar, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    Tell(bar, TB_SETEXTENDEDSTYLE, 0, TBSTYLE_EX_DRAWDDARROWS | TBSTYLE_EX_MIXEDBUTTONS);
    Tell(bar, TB_SETBITMAPSIZE, 0, MAKELPARAM(bar->format.width, bar->format.height));
    const int height = ScaledToScreen(kTouchHeight);
    Tell(bar, TB_SETBUTTONSIZE, 0, MAKELPARAM(height, height));
    if (description.menuId >= 0) {
        bar->menu = LoadMenuW(bar->instance, MAKEINTRESOURCEW(description.menuId));
        if (!bar->menu) {
            return false;
        }
    }
    bar->slots =
        static_cast<Slot*>(AllocRecord(sizeof(Slot) * (static_cast<size_t>(description.buttonCount) + 1)));
    if (!bar->slots) {
        return false;
    }
    for (int i = 0; i < description.buttonCount; ++i) {
        if (!AddButton(bar, DescribedButton(description, i))) {
            return false;
        }
    }
    return true;
}

HWND CreateToolBarWindow(HWND owner) {
    INITCOMMONCONTROLSEX classes = {sizeof(classes), ICC_BAR_CLASSES};
    InitCommonControlsEx(&classes);
    return CreateWindowExW(0, TOOLBARCLASSNAMEW, L"",
                           WS_CHILD | WS_CLIPSIBLINGS | TBSTYLE_FLAT | TBSTYLE_LIST | TBSTYLE_TOOLTIPS |
                               CCS_NORESIZE | CCS_NOPARENTALIGN | CCS_NODIVIDER,
                           0, 0, 0, 0, owner, nullptr, GetModuleHandleW(nullptr), nullptr);
}

// The bar's record, tied to its window and freed with it.
Bar* AttachBar(HWND window, HINSTANCE instance) {
    Bar* bar = static_cast<Bar*>(AllocRecord(sizeof(Bar)));
    if (!bar) {
        return nullptr;
    }
    bar->window = window;
    bar->instance = instance;
    bar->format = BarImagesFor(ScreenDensity());
    if (!AttachRecord(window, MenuBarProc, kRecordName, bar)) {
        FreeBar(bar);
        return nullptr;
    }
    return bar;
}

bool HasImageList(Bar* bar) {
    if (!bar->images) {
        bar->images = CreateBarImages(bar->format);
        Tell(bar, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(bar->images));
    }
    return bar->images != nullptr;
}

void DestroyKeepingError(HWND window) {
    const DWORD error = GetLastError();
    DestroyWindow(window);
    SetLastError(error);
}

}  // namespace

HWND CreateBarFromMemory(HWND owner, HINSTANCE instance, const void* bytes, size_t byteCount) {
    BarDescription description = {};
    if (!ReadBarDescription(bytes, byteCount, &description)) {
        return nullptr;
    }
    const HWND window = CreateToolBarWindow(owner);
    if (!window) {
        return nullptr;
    }
    Bar* bar = AttachBar(window, instance);
    if (!bar || !FillBar(bar, description) || !DockBar(owner, window)) {
        DestroyKeepingError(window);
        return nullptr;
    }
    return window;
}

BOOL SHCreateMenuBar(MenuBarInfo* info) {
    if (!info || info->size != kMenuBarInfoSize) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    info->bar = nullptr;
    const HRSRC found =
        FindResourceW(info->instance, MAKEINTRESOURCEW(info->resourceId), MAKEINTRESOURCEW(10));
    const HGLOBAL loaded = found ? LoadResource(info->instance, found) : nullptr;
    if (!loaded) {
        return FALSE;
    }
    info->bar = CreateBarFromMemory(info->owner, info->instance, LockResource(loaded),
                                    SizeofResource(info->instance, found));
    if (info->bar && info->bitmapId) {
        AddBarBitmap(info->bar, info->instance, info->bitmapId, info->bitmapCount);
    }
    return info->bar != nullptr;
}

int AddBarBitmap(HWND window, HINSTANCE instance, int bitmapId, int count) {
    Bar* bar = FindBar(window);
    if (!bar || count <= 0) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return -1;
    }
    const int first =
        HasImageList(bar) ? AddBarImages(bar->images, bar->format, instance, bitmapId, count) : -1;
    if (first < 0) {
        return -1;
    }
    for (int i = 0; i < bar->slotCount; ++i) {
        const Slot& slot = bar->slots[i];
        if (slot.image >= first && slot.image < first + count) {
            Tell(bar, TB_CHANGEBITMAP, slot.command, slot.image);
        }
    }
    RefreshDock(GetParent(window));
    return first;
}

int MenuBarHeight(HWND window) {
    if (!FindBar(window)) {
        return 0;
    }
    RECT client = {};
    GetClientRect(GetParent(window), &client);
    return static_cast<int>(SendMessageW(window, kBarHeightForWidth, static_cast<WPARAM>(client.right), 0));
}

RECT ContentRect(HWND owner) {
    RECT rect = {};
    GetClientRect(owner, &rect);
    rect.bottom -= DockHeight(owner);
    if (rect.bottom < 0) {
        rect.bottom = 0;
    }
    return rect;
}

HWND VisibleBar(HWND owner) { return TopBar(owner); }

bool OpenDropDown(HWND window, UINT command) {
    Bar* bar = FindBar(window);
    const Slot* slot = bar ? FindDropDown(bar, command) : nullptr;
    if (!slot || !IsMenu(slot->popup) || !IsWindowVisible(window)) {
        return false;
    }
    TrackFrom(window, command);
    return true;
}

bool OpenDropDownByKey(HWND window, wchar_t letter) {
    if (!IsWindowVisible(window)) {
        return false;
    }
    const HWND owner = GetParent(window);
    for (HWND from = window; from; from = BarBelow(owner, from)) {
        const Bar* bar = FindBar(from);
        const Slot* slot = bar ? DropDownForKey(bar, letter) : nullptr;
        if (slot) {
            TrackFrom(from, slot->command);
            return true;
        }
    }
    return false;
}

bool PressButtonByKey(HWND window, wchar_t letter) {
    const Bar* bar = IsWindowVisible(window) ? FindBar(window) : nullptr;
    for (int i = 0; bar && letter != 0 && i < bar->slotCount; ++i) {
        const UINT command = bar->slots[i].command;
        if (!bar->slots[i].dropDown && Tell(bar, TB_ISBUTTONENABLED, command, 0) &&
            LabelBeginsWith(bar, command, letter)) {
            return PostMessageW(GetParent(window), WM_COMMAND, command, reinterpret_cast<LPARAM>(window)) !=
                   FALSE;
        }
    }
    return false;
}

}  // namespace shell
