#include "engine/current_editor.h"

#include "engine/window_state.h"
#include "platform/surface.h"
#include "view/scroll.h"

namespace nira {

void SetCurrentEditor(Editor* editor) {
    TheWindowState().currentEditor = editor;
    if (editor == nullptr) return;
    ShowWaitPointer();
    editor->markMode = 0;
    RestoreView(editor);
    NotifyUndoState(editor);
    NotifySelection(editor);
    if (TheEditorEvents().titleChanged != nullptr) TheEditorEvents().titleChanged();
    RestorePointer();
}

}  // namespace nira
