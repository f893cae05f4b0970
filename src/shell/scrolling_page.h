#pragma once

#include <windows.h>

// Dialog pages that are higher than the window they get.
namespace shell {

// Lays a page's controls out for a client area `width` pixels wide. The page is at its start while this runs,
// so that the controls' places are those in the page.
using ArrangePage = void (*)(HWND page, int width);

// From now until it dies, `page` (a dialog whose controls have all been made) keeps its controls in reach:
// - whenever its width changes, `arrange` (or nothing, when null) lays the controls out;
// - where they do not fit its height it has a scroll bar, and scrolls by that, by the wheel, by a drag of its
//   background, and when a control outside the visible part gets the focus.
// The part scrolled over ends `margin` pixels below the lowest control. False with the last error set on
// failure.
bool AttachScrollingPage(HWND page, ArrangePage arrange, int margin);

// A control's place in a page that is at its start.
RECT ControlPlace(HWND control);

}  // namespace shell
