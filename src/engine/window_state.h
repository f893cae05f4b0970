// The state of the one editor window, and the document it shows.
#pragma once

#include <cstdint>

#include "engine/editor.h"
#include "platform/handles.h"

namespace nira {

struct WindowState {
    WindowHandle editorWindow;  // null until it is made
    Editor* currentEditor;      // null while there is none; every handler copes
    int32_t mouseX;             // last mouse position, client pixels
    int32_t mouseY;
    int32_t clientWidth;  // from the last WM_SIZE; lines wrap one pixel before it
    uint16_t mouseDown;   // between press and release of the left button
    uint16_t dragTimerOn;
};

WindowState& TheWindowState();

}  // namespace nira
