// The two things that commands do to the main window itself.
#pragma once

namespace nira {

// Gives the keyboard to the editor window when the application is in front and another window has it.
void RefocusEditor();

// Closes the main window, which ends the program. Asks nothing when no document is open any more.
void CloseMainWindow();

}  // namespace nira
