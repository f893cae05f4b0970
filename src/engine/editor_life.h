// Making, emptying and destroying documents.
#pragma once

#include "engine/editor.h"

namespace nira {

// A new document with one empty line, from the current Options. Null when memory ran out.
Editor* EditorCreate();

// Discards all text and undo and leaves one empty line. Unwinds when memory runs out, with nothing changed.
void EditorReset(Editor* editor);

// Frees the document, its heap and its path. Null is ignored.
void EditorDestroy(Editor* editor);

}  // namespace nira
