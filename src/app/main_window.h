// The main window: the frame around the editor window and the menu bar, and where every command arrives.
#pragma once

#include <cstdint>

#include "app/app_state.h"
#include "app/services/message_table.h"
#include "platform/handles.h"

namespace nira {

// Messages of the main window's own: they cross process boundaries, so that a second instance can talk to it.
constexpr uint32_t kMessageOpenFile = 0x0400;      // `second` is a path, which is taken and opened
constexpr uint32_t kMessageEditorWindow = 0x0401;  // the result is the editor window

// Results of kMessageOpenFile. A path that was taken is opened, at once or when the person has answered what
// they are being asked. One that was not is still the sender's to care for.
constexpr intptr_t kPathTaken = 0;
constexpr intptr_t kNoMemoryForPath = 1;

// Its eleven messages, in the order they are looked up.
MessageTable MainWindowTable();

// Registers the class "NIRA"; false with the reason in the last error.
bool RegisterMainWindowClass();

// Makes the window, hidden, with its menu bar, and stores both in the application's state; false with the
// reason in the last error.
bool CreateMainWindow();

// Destroys menu bar and window if they are still there.
void DestroyMainWindow();

}  // namespace nira
