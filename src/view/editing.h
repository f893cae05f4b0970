// What the keys that change text do. Each replaces the selection where there is one, brings the caret into
// view, repaints and can be undone.
#pragma once

#include <cstdint>

#include "engine/editor.h"

namespace nira {

void TypeChar(Editor* editor, char16_t unit);

// A line break; with the Options' "Keep indent" the indentation of the line follows it.
void NewLine(Editor* editor);

// The selection, or one character before or behind the caret (a line end joins two lines). At the start or
// end of the text nothing happens.
void DeleteBackward(Editor* editor);
void DeleteForward(Editor* editor);

// Deletes the selection, where there is one, and puts the caret where it began. False when memory ran out and
// it still stands.
bool DeleteSelection(Editor* editor);

// Inserts a text at the caret, every break of it one, and puts the caret behind it; no repaint. False when
// memory ran out and nothing was inserted.
bool InsertBehindCaret(Editor* editor, const char16_t* text, uint32_t units);

// Replaces the selection by a text, and puts the caret behind it.
void InsertAtCaret(Editor* editor, const char16_t* text, uint32_t units);

}  // namespace nira
