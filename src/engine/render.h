// Painting the document into the editor window.
#pragma once

#include "engine/editor.h"

namespace nira {

// Paints every visible row now and puts the caret back. `fromPaintMessage` is 1 only inside WM_PAINT.
void PaintEditor(Editor* editor, int fromPaintMessage);

// Moves the system caret to the document's and shows it.
void PlaceCaret(Editor* editor);

}  // namespace nira
