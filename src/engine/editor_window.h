// The one window that shows the current document. It routes keys, characters, mouse, scroll bars and focus to
// the operations of view/, and knows nothing of files or menus.
#pragma once

#include <cstdint>

#include "engine/editor.h"
#include "engine/window_state.h"
#include "platform/handles.h"

namespace nira {

// Registers the class "NREDIT"; false on failure with the reason in the last error.
bool RegisterEditorClass();

// Makes the window as a child of `parent` and stores it; 0 on failure after reporting it.
int CreateEditorWindow(WindowHandle parent);

void ResizeEditorWindow(int32_t width, int32_t height);

}  // namespace nira
