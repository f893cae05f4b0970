#pragma once

#include <windows.h>

// The input panel (the on-screen keyboard) and the screen it leaves free. A desktop has no docked panel, so
// it is always off.
namespace shell {

constexpr UINT kSpiGetSipInfo = 225;
constexpr DWORD kSipInfoSize = 48;
constexpr DWORD kSipOn = 1;
constexpr DWORD kSipDocked = 2;

struct SipInfo {
    DWORD size;  // kSipInfoSize, set by the caller
    DWORD flags;
    RECT visibleDesktop;
    RECT panel;
    DWORD dataSize;
    void* data;
};

// Fills `*info` for action kSpiGetSipInfo: panel off, and as visible desktop the area of the first window
// (FirstWindowSize) at the corner of the work area. FALSE with ERROR_INVALID_PARAMETER for any other action
// or size.
BOOL SHSipInfo(UINT action, UINT parameter, SipInfo* info, UINT flags);

// The helper of small dialogs with a field to type into, which hand it every message (with its two
// parameters) first. At WM_INITDIALOG it puts the dialog over the upper half of its owner, inside the work
// area, where a keyboard that comes up at the bottom of a touch screen does not cover it. It deals with
// nothing else, and the dialog goes on with the message as if the helper were not there.
void SHInputDialog(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);

// Registers the control "SIPPREF" that dialogs carry to raise the input panel. Here it is a window that shows
// nothing. May be called again. FALSE with the last error set on failure.
BOOL SHInitExtraControls();

}  // namespace shell
