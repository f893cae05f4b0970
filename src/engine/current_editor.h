// Which document the editor window shows.
#pragma once

#include "engine/editor.h"

namespace nira {

// Shows a document from now on: under the wait pointer its view is restored (and laid out anew when it is
// stale), and the application hears that title, undo state and selection may have changed. Null shows none.
void SetCurrentEditor(Editor* editor);

}  // namespace nira
