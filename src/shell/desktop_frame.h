#pragma once

#include <windows.h>

// The desktop frame of an application written for a screen without window frames.
//
// The frame adds what a desktop expects: caption, close, minimise, maximise, sizing border, a first size and
// place, a smallest size, and the question before anything is lost. The application's own window procedure
// goes on as if it were alone on a handheld: the sizes it asks for and hears of are those of the area above
// its menu bar.
namespace shell {

// What the frame asks the application.
struct FrameEvents {
    // The window is about to close: by its frame, by Alt+F4, by WM_CLOSE from anywhere, or because the
    // Windows session ends. True when it may. Asks the person about unsaved text exactly as the application's
    // Exit does, and answers true without asking when nothing is left to ask about, as after Exit itself.
    // Never called while an earlier call is still waiting for its answer: until then closing is refused.
    bool (*mayClose)();
    // A file was dropped on the window; called for each of several, in their order. `path` is absolute and
    // valid during the call. Null: the window takes no files. It may arrive while the application asks the
    // person something.
    void (*fileDropped)(const wchar_t* path) = nullptr;
};

// Makes the application's main window: CreateWindowExW with a desktop frame around it. `style` is what the
// application asks for; WS_VISIBLE is left out of it, so that the window stays hidden until the application
// shows it. With CW_USEDEFAULT the window gets the first size and stands in the middle of the work area.
// While the window is hidden, a size it is given is that of its area above the menu bar.
// The keyboard focus the frame receives goes on to its content (ContentWindow).
// A drop of files also brings the window to the front, since the person goes on there.
// F10 or Alt opens the first drop-down of the bar in sight, Alt with a letter the one whose label begins with
// it. Null with the last error set on failure, or when the application's WM_CREATE destroyed the window.
HWND CreateMainFrame(DWORD exStyle, const wchar_t* className, const wchar_t* title, DWORD style, int x, int y,
                     int width, int height, HINSTANCE instance, const FrameEvents& events);

// First size of the window in pixels: 480 x 640 scaled by the screen's density. Where the work area is
// smaller or hardly larger, in either direction, the whole of it.
SIZE FirstWindowSize();

// The same for a given work area and density (96: unscaled).
SIZE FirstSizeFor(SIZE workArea, int dotsPerInch);

}  // namespace shell
