// The Undo and Redo commands.
#pragma once

#include "engine/editor.h"

namespace nira {

// Takes back (or repeats) the latest edit, or with `group` the whole run of edits of the same kind. The
// selection is cleared in any case; the caret goes to where the edit was, behind text that came back. Stops
// where memory runs out.
void UndoApply(Editor* editor, bool undo, bool group);

}  // namespace nira
