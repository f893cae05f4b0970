#pragma once

#include <windows.h>

// The dock: keeps child windows at the bottom edge of their owner, one over the other, the newest in sight.
//
// It stands between the system and the owner's procedure: WM_SIZE reaches that without the bar in sight, and
// notifications of docked bars go back to the bar first.
namespace shell {

// Sent to a docked bar with the owner's client width in wParam. Its answer is the height it needs at that
// width; 0 keeps the height it has.
constexpr UINT kBarHeightForWidth = WM_USER + 0x1C01;

// Sent to a docked bar with the WM_NOTIFY it caused (wParam, lParam). Non-zero: dealt with, the owner does
// not see it.
constexpr UINT kBarNotify = WM_USER + 0x1C02;

// Sent to a docked bar with the WM_COMMAND it sent (wParam, lParam). Non-zero: the bar posts it to the owner
// when its own work is done, because the command may destroy the bar.
constexpr UINT kBarCommand = WM_USER + 0x1C03;

// Docks `bar`, a child of `owner`, over the bars already there. It leaves the dock when it is destroyed.
// False with the last error set on failure; nothing has changed then.
bool DockBar(HWND owner, HWND bar);

// Places the bar in sight again and, when the area left to a visible owner's content has changed, tells the
// owner by WM_SIZE. To be called when a bar needs another height.
void RefreshDock(HWND owner);

// The bar in sight, or null.
HWND TopBar(HWND owner);

// The bar that `bar` covers, or null.
HWND BarBelow(HWND owner, HWND bar);

// True when `window` is one of the owner's bars, in sight or covered.
bool IsDocked(HWND owner, HWND window);

// Height in pixels that the dock takes from the owner's client area.
int DockHeight(HWND owner);

}  // namespace shell
