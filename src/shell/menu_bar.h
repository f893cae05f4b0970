#pragma once

#include <windows.h>

#include <cstddef>

// Menu bars: the row of drop-downs and buttons at the bottom edge of a window.
//
// A bar is a tool bar of the common controls, a child of its owner, built from a description in RCDATA.
// Several bars of one owner lie at the same place: the newest covers the others, which are hidden and come
// back, newest first, when the bars above them are destroyed. The bar in sight is docked: it keeps to the
// bottom edge whatever size the owner takes, and the owner's own procedure sees WM_SIZE without the bar's
// height. While the owner is minimised its procedure sees no WM_SIZE at all, because the handheld knows no
// such state.
//
// The owner hears of a bar as of any menu or tool bar: WM_COMMAND for buttons and menu items,
// WM_INITMENUPOPUP (low word of lParam: the command of the drop-down that opens; pop-ups inside it keep
// their position), WM_UNINITMENUPOPUP, WM_MENUSELECT, WM_ENTERMENULOOP and WM_EXITMENULOOP.
//
// Items too wide for the screen are shown shortened in their middle while their pop-up is open (menu_fit.h).
//
// The bar answers SHCMBM_GETSUBMENU and SHCMBM_SETSUBMENU beside all native tool bar messages,
// so that TB_ENABLEBUTTON and TB_PRESSBUTTON work by command.
//
// Description, 16-bit signed little-endian numbers: the menu whose pop-ups the drop-downs open (-1: none),
// the number of buttons, then seven numbers per button:
//   image       index among all images added to the bar, -2 for a text button
//   command     identifier sent to the owner
//   state       4: enabled
//   style       16: sized by its content, 24: the same with a drop-down, 1: separator
//   label       string shown on text buttons and drop-downs (0: none; the tooltip's string is taken)
//   tooltip     string shown when the pointer rests on an image button (0: none; the label's string is taken)
//   pop-up      position of the drop-down's pop-up in the menu, -1 for none
namespace shell {

// wParam: command of a drop-down, lParam: its new pop-up, which stays the caller's. Non-zero on success.
constexpr UINT kSetSubMenu = WM_USER + 400;
// lParam: command of a drop-down. Its pop-up, or null. The pop-up stays the bar's.
constexpr UINT kGetSubMenu = WM_USER + 401;

// What a bar is made of. `size` tells the layout the caller was written for and must be kMenuBarInfoSize.
struct MenuBarInfo {
    DWORD size;
    HWND owner;
    DWORD flags;          // 0
    UINT resourceId;      // RCDATA of `instance`
    HINSTANCE instance;   // holds the description, the menu and the strings
    int bitmapId;         // 0, or a bitmap of `instance` added at once
    int bitmapCount;      // images in it
    HWND bar;             // out: the bar's window
    COLORREF background;  // not used
};
constexpr DWORD kMenuBarInfoSize = 36;

// Makes a bar, docks it over the owner's other bars and stores its window in `info->bar`. It lives until
// DestroyWindow(bar) or until the owner dies; it then frees the menu it loaded, but no pop-up given to it.
// FALSE with the last error set, and `info->bar` null, when the description or its menu is missing or broken.
BOOL SHCreateMenuBar(MenuBarInfo* info);

// The same from a description in memory, which is read before the call returns.
// Returns the bar or null with the last error set.
HWND CreateBarFromMemory(HWND owner, HINSTANCE instance, const void* description, size_t byteCount);

// Adds `count` pictures of 16 x 16 pixels to a bar, which shows them larger on a dense screen: a bitmap of
// `instance`, or with HINST_COMMCTRL one of the system's (IDB_STD_SMALL_COLOR has 15). The image numbers of
// the description count through all bitmaps in the order they were added. Returns the number, as the
// description counts, of the first image, or -1 on failure.
int AddBarBitmap(HWND bar, HINSTANCE instance, int bitmapId, int count);

// Height in pixels that a bar takes, also while it is covered. 0 when `bar` is no bar.
int MenuBarHeight(HWND bar);

// The owner's client area without the docked bar, in client coordinates. Never negative in size.
RECT ContentRect(HWND owner);

// The bar in sight of `owner`, or null.
HWND VisibleBar(HWND owner);

// Opens the pop-up of a drop-down above its button, as a tap on it does, and returns when it has closed.
// While it is open, Right and Left go on to the drop-downs beside it, around the ends of the bar; but Right
// on an item with a pop-up of its own opens that, and Left inside such a pop-up closes it. False when there
// is no such drop-down in sight or it has no pop-up.
bool OpenDropDown(HWND bar, UINT command);

// The same from the keyboard: the drop-down whose label begins with `letter` (any case), or the first one for
// 0. Where the bar has none, that of a bar it covers opens above it: a key reaches what a finger would close
// the bar for.
bool OpenDropDownByKey(HWND bar, wchar_t letter);

// Does what a tap on the first enabled button does whose text or tooltip begins with `letter` (any case):
// bars never have the keyboard. False when there is none in sight.
bool PressButtonByKey(HWND bar, wchar_t letter);

}  // namespace shell
