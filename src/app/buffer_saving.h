// Saving and closing documents, with the questions that keep text from being lost.
//
// A document whose last save failed counts as modified here, although its flag says otherwise: its text is in
// no file. A document is never destroyed when the save that was just asked for has failed.
#pragma once

#include "engine/editor.h"

namespace nira {

// Asks whether to save the document. Returns kAnswerYes, kAnswerNo or kAnswerCancel; Cancel also when memory
// ran out before the question could be asked, so that nothing is lost by it.
int PromptSaveChanges(const Editor* buffer);

// Saves the shown document; an untitled one through Save As. Returns 0 when Save As did not save; 1
// otherwise, also when writing a document that has a path failed (the person was told).
int SaveActiveBuffer();

// Asks for a path, codec and line-end type and saves the document there. Returns 1; or 0 when the person
// cancelled or the file could not be written: the document then keeps the path, codec and line-end type that
// it had.
int SaveBufferAs(Editor* buffer);

// Saves every document that has a path, modified or not, and asks for a path for each modified untitled one.
// Goes on after a file that cannot be written, stops when Save As did not save.
void SaveAll();

// Closes document number `index`, after asking about unsaved text. The first document of the list is shown
// then; after the last one was closed a new untitled one, unless the program is `exiting`. Returns 1; or 0
// when the person cancelled or the save failed: the document then stays.
int CloseBuffer(int index, bool exiting);

// Closes every document, beginning with the shown one, until one refuses. Returns the result of the last
// close; 1 when there was nothing to close.
int CloseAllBuffers(bool exiting);

}  // namespace nira
