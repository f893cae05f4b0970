// The Find and Replace dialogs.
#pragma once

#include "platform/handles.h"

namespace nira {

// Runs the dialog over `owner`, with the selection, the word at the caret or the last pattern proposed. True
// when a search was confirmed: it is the program's search then and stands in the histories. Cancel changes
// nothing. The Replace dialog's Replace All does its work over the open dialog.
bool AskForFind(WindowHandle owner);
bool AskForReplace(WindowHandle owner);

}  // namespace nira
