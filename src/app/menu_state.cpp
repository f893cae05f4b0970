#include "app/menu_state.h"

#include "app/app_state.h"
#include "engine/text.h"
#include "engine/undo_journal.h"
#include "engine/window_state.h"
#include "platform/menus.h"
#include "resources/resource.h"

namespace nira {

EditMenuState DecideEditMenu(const Editor* shown, uint32_t pasteMode, bool clipboardHasText) {
    EditMenuState state = {};
    state.otherPasteText = pasteMode != 0 ? IDS_PASTE_NORMAL : IDS_PASTE_SMART;
    state.canPaste = clipboardHasText;
    if (shown == nullptr) return state;
    state.hasSelection = HasSelection(shown);
    state.canUndo = CanUndo(shown->undo);
    state.canRedo = CanRedo(shown->undo);
    return state;
}

bool IsBookmarkSet(const Editor* shown, int number) {
    return shown != nullptr && number >= 0 && number < kBookmarks && shown->bookmarks[number] != 0;
}

void UpdateUndoButtons(Editor* buffer) {
    const WindowHandle bar = TheAppState().undoBar;
    if (bar == nullptr) return;
    BarEnableButton(bar, CMD_UNDO, buffer != nullptr && CanUndo(buffer->undo));
    BarEnableButton(bar, CMD_REDO, buffer != nullptr && CanRedo(buffer->undo));
}

void UpdateClipboardButtons() {
    const WindowHandle bar = TheAppState().menuBar;
    if (bar == nullptr) return;
    const Editor* shown = TheWindowState().currentEditor;
    const bool selected = shown != nullptr && HasSelection(shown);
    BarEnableButton(bar, CMD_CUT, selected);
    BarEnableButton(bar, CMD_COPY, selected);
}

}  // namespace nira
