// What menus and bars show of the current document: which items are enabled, checked, and how they read.
#pragma once

#include <cstdint>

#include "engine/editor.h"
#include "platform/handles.h"

namespace nira {

// The Edit pop-up.
struct EditMenuState {
    uint32_t otherPasteText;  // string of the paste that Paste does not do
    bool canPaste;            // Paste and the other paste
    bool hasSelection;        // Cut, Copy and Clear
    bool canUndo;
    bool canRedo;
};

// `shown` may be null; then nothing is enabled that needs a document.
EditMenuState DecideEditMenu(const Editor* shown, uint32_t pasteMode, bool clipboardHasText);

// Whether bookmark 0..9 is set in the document, which may be null.
bool IsBookmarkSet(const Editor* shown, int number);

// Enables the undo bar's buttons by what `buffer` (may be null) can undo and redo. Without the bar nothing
// happens.
void UpdateUndoButtons(Editor* buffer);

// Enables Cut and Copy on the main menu bar when the shown document has a selection.
void UpdateClipboardButtons();

// Sets up the pop-up `menu` that the drop-down `command` is about to open; other commands change nothing.
void PreparePopup(MenuHandle menu, uint32_t command);

}  // namespace nira
