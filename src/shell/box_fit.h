#pragma once

#include <windows.h>

// Message boxes that fit their screen.
//
// The system puts the buttons of a box into one row, and gives a long name one line, however wide the screen
// is: on 240 pixels "Yes", "No" and "Cancel" lose their ends.
namespace shell {

// As MessageBoxW. A box wider than the work area of its screen is made as wide as that: narrower buttons, and
// text that goes on in the next line, also inside a word that fills a line by itself.
int ShowBox(HWND owner, const wchar_t* text, const wchar_t* caption, UINT style);

// Does that to a message box laid out by the system. One that is not wider than `area`, in pixels of the
// screen, stays as it is; another comes to stand in its middle.
void FitBox(HWND box, const RECT& area);

}  // namespace shell
