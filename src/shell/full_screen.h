#pragma once

#include <windows.h>

// Dialogs that fill the screen. On a desktop "the screen" is the main window that owns the dialog.
namespace shell {

constexpr UINT kDoneButton = 1;
constexpr UINT kSizeFullScreen = 4;
constexpr UINT kInputPanelDown = 8;

// Called in WM_INITDIALOG. kSizeFullScreen: the dialog covers its owner (the work area when it has none), now
// and when the owner moves or takes another size; the dialog hears of that by WM_SIZE.
// kDoneButton: the dialog can be confirmed by a button that sends IDOK; when neither its controls nor its
// menu bars bring one, it gets a bar with "OK" as soon as WM_INITDIALOG is over. kInputPanelDown: nothing to
// do on a desktop. FALSE with the last error set on failure.
BOOL SHInitDialog(HWND dialog, UINT flags);

}  // namespace shell
