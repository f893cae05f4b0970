// What the host's windows are: records of everything that platform/surface.h did to them.
//
// A test makes a window, sets what the system would (client size, track position), runs the code under test
// and reads the rest.
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "platform/surface.h"

namespace nira {

struct ScrollState {
    int32_t minimum = 0;
    int32_t maximum = 0;
    int32_t page = 0;
    int32_t position = 0;
    int32_t track = 0;     // set by the test
    uint32_t changes = 0;  // calls that set any part
};

struct WindowTag {
    SurfaceSize client = {0, 0};  // set by the test
    ScrollState horizontal;
    ScrollState vertical;
    std::map<uint32_t, uint32_t> timers;  // running ones: id, milliseconds
    std::u16string title;
    uint32_t titleChanges = 0;
};

// There is one caret for the whole program, as on the system.
struct CaretState {
    WindowHandle owner = nullptr;  // null when there is no caret
    int32_t width = 0;
    int32_t height = 0;
    int32_t x = 0;
    int32_t y = 0;
    int32_t hidden = 1;    // hide calls not yet met by show calls; visible at 0. A new caret begins at 1
    uint32_t created = 0;  // carets made so far
    uint32_t moves = 0;
};

const CaretState& HostCaret();
bool HostCaretVisible();

// Wait pointers shown, pointers restored, and whether the wait pointer shows now.
struct PointerState {
    uint32_t waits = 0;
    uint32_t restores = 0;
    bool waiting = false;
};

const PointerState& HostPointer();

// Forgets the caret and the pointer.
void HostSurfaceReset();

}  // namespace nira
