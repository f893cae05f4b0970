// Cut, copy and paste.
//
// The clipboard holds text with the document's line ends; only text is written and read. Failures of the
// clipboard are silent: nothing is inserted, and nothing is cut that was not copied.
#pragma once

#include <cstdint>

#include "engine/editor.h"

namespace nira {

// Puts the selection on the clipboard; false without one (the clipboard stays as it is) and when that failed.
bool CopySelection(Editor* editor);

// Copies, and deletes the selection when that worked.
void CutSelection(Editor* editor);

// Replaces the selection by the clipboard's text, and puts the caret behind it. A smart paste moves the whole
// block so that its base, by the Options the first line's indentation or the smallest, comes to the caret's
// indentation; inside the block lines keep their distances.
void Paste(Editor* editor, bool smart);

// The same with a text given.
void PasteText(Editor* editor, const char16_t* text, uint32_t units, bool smart);

}  // namespace nira
