// The list of open documents and its mirror in the Buffers pop-up.
//
// Document number i of the list has the menu item 7500 + i at the end of the pop-up that the menu bar's
// Buffers button opens; the radio mark stands at the document that the editor window shows. The list owns its
// documents. While the program runs it is never empty and the shown document is always in it; only Exit
// empties it, and running out of memory may. Every operation copes with an empty list.
//
// Whatever changes the shown document shows the new one first and destroys the old one then, so that nothing
// ever points to a destroyed one.
#pragma once

#include <cstdint>

#include "engine/editor.h"

namespace nira {

// Makes an empty untitled document and shows it. When memory runs out the list stays as it was.
void NewBuffer();

// Loads a file and shows it; takes ownership of `path` (local heap). An unmodified untitled document that is
// shown gives its place to the file, so that opening one right after the start leaves no empty document
// behind; otherwise the file comes last in the list. Returns 1; or 0 after the person was told why the file
// cannot be read, with the list as it was.
int OpenFileInBuffer(char16_t* path, uint32_t codecIndex);

// Appends a document, giving it the next untitled number if asked. Does not show it. Returns 1; or 0 when
// memory ran out, with the list as it was and the document still the caller's.
int AddBuffer(Editor* buffer, bool untitled);

// Shows a document of the list: view, bars, title and radio mark follow. Mark mode ends.
void ActivateBuffer(Editor* buffer);

// The document behind a menu item. Identifiers without a document do nothing.
void ActivateBufferById(uint32_t id);

// The document behind the shown one; after the last comes the first.
void NextBuffer();

// The position in the list, or -1.
int BufferIndex(const Editor* buffer);

// The name that title and menu show: the file's name or "Untitled" and a number, with " *" behind it when
// modified. A new text of the local heap, owned by the caller; null when memory ran out.
char16_t* BufferTitle(const Editor* buffer);

// The same without the mark of modification.
char16_t* BufferName(const Editor* buffer);

// Writes a document's title, in the form that a menu shows as it is, into item 7500 + index. Leaves the item
// as it is when memory ran out.
void SetBufferMenuText(int index, const Editor* buffer);

// The same for all documents.
void UpdateBufferMenuTexts();

// Makes the shown document's title the caption of the main window. Without one the caption stays.
void UpdateMainTitle();

// Takes a document out of the list and its item out of the menu; later ones move down by one and keep their
// texts. The document is the caller's now. Neither shows another document nor fails.
void RemoveBuffer(int index);

// The two halves of it. Between them the items from `index` on have the identifiers of other documents, so no
// menu may open; who takes many out renumbers once, instead of walking through the rest for each.
void TakeBufferOut(int index);
void RenumberBufferItems(int index);

}  // namespace nira
