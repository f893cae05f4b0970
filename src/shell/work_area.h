#pragma once

#include <windows.h>

namespace shell {

// The part of a window's screen that no task bar takes, in pixels of the desktop. Of the main screen for
// null.
RECT WorkAreaOf(HWND window);

}  // namespace shell
