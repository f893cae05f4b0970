#pragma once

#include <windows.h>

// A text window written for stylus and handheld keyboard, put to use with mouse, wheel and desktop keyboard.
namespace shell {

// From now until it dies, `window`
// - gets the wheel as WM_VSCROLL (SB_LINEUP, SB_LINEDOWN; SB_PAGEUP, SB_PAGEDOWN where the person chose
//   pages) and the tilted wheel as WM_HSCROLL, as many lines per notch as the system's setting says; parts of
//   a notch add up;
// - is panned by touch: one finger up or down, two fingers any way (PanTextWindow). One finger sideways, and
//   pen and mouse any way, drag as ever;
// - holds the mouse from WM_LBUTTONDOWN to WM_LBUTTONUP, and gets WM_LBUTTONUP also when the mouse is taken
//   from it;
// - lets Alt with a letter reach the menus of its top-level window;
// - gets no stray characters (IsStrayCharacter);
// - shows the text pointer.
// False with the last error set on failure.
bool AttachTextWindow(HWND window);

// Moves the content with a finger that went `right` and `down` pixels (negative: left, up): as many
// WM_VSCROLL and WM_HSCROLL by lines as bring the content to within a line of the finger. What is left
// of a line adds up from call to call, and is forgotten at an end of the content. How far a line goes is read
// from the scroll bars, whose page is what the window shows. Nothing happens where AttachTextWindow was not
// called.
void PanTextWindow(HWND window, int right, int down);

}  // namespace shell
