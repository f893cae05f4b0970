// The invariants of a document, for tests.
#pragma once

#include "engine/editor.h"

namespace nira {

// Walks the whole record: counts and capacities, terminators, zeroed spare records, breaks in order, widths
// as measured now, sums over the lines, bookmarks, the journal's account. Null when all of it holds,
// otherwise the first thing that does not, in plain words; never freed.
const char* EditorCheck(Editor* editor);

// The positions too: caret, anchor and view, which are the callers' to move after a change of text. For tests
// of the view's operations.
const char* EditorCheckPositions(Editor* editor);

}  // namespace nira
