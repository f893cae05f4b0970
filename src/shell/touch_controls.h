#pragma once

#include <windows.h>

// Controls that a finger hits: the system's own sizes are for the pointer of a mouse.
namespace shell {

// Makes the field of a combo box and the rows of its list `height` pixels high, border included; the list
// shows eight of them. A field whose text would not fit keeps its height. Once for each box: a second call
// may take the field for its text.
void EnlargeComboBox(HWND combo, int height);

}  // namespace shell
