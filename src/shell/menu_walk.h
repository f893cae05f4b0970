#pragma once

#include <windows.h>

// Walking from an open drop-down to its neighbours by the arrow keys, as in the menu bar of a desktop window.
// The system does that for its own menu bars; a pop-up that is tracked alone knows no neighbours.
namespace shell {

enum class MenuStep { kNone, kLeft, kRight };

// TrackPopupMenuEx, which also ends when an arrow key leads out of `popup`: Left on one of its own items, and
// Right on any item that does not open a pop-up. Returns the way that key led; kNone when the menu ended
// otherwise. Inside nested pop-ups Left closes them one by one, as always.
MenuStep TrackWalkable(HMENU popup, UINT flags, POINT at, HWND window, TPMPARAMS* avoid);

// To be told of the WM_MENUSELECT, WM_INITMENUPOPUP and WM_UNINITMENUPOPUP that `window` gets meanwhile,
// which tell how deep the person is in nested pop-ups and whether the selected item opens one.
void NoteMenuMessage(UINT message, WPARAM wParam, LPARAM lParam);

}  // namespace shell
