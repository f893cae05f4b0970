// The bars that lie over the main menu bar while a family of commands is in use.
//
// A bar is made by the first command of its family and stays, whatever document is shown, until its own
// Cancel button closes it.
#pragma once

#include "platform/handles.h"

namespace nira {

enum class ToolBar { kFind, kReplace, kUndo, kNavigate, kIndent };

// Makes the bar unless it is there; kFind and kReplace are two forms of one bar, and the form that is there
// stays. A bar that cannot be made is reported, and the next command of its family tries again.
void ShowToolBar(ToolBar kind);
void CloseToolBar(ToolBar kind);

// Shows the undo bar's Group undo button pressed or not.
void SetGroupUndoButton(bool on);

// Adds the images that the main bars draw their buttons with: the program's own thirteen, and behind them the
// system's standard ones if asked.
void AddBarImages(WindowHandle bar, bool withStandardImages);

}  // namespace nira
