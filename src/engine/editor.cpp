#include "engine/editor.h"

#include <algorithm>

#include "base/utf16.h"

namespace nira {

EditorEvents& TheEditorEvents() {
    static EditorEvents events;
    return events;
}

void NotifyUndoState(Editor* editor) {
    if (TheEditorEvents().undoStateChanged != nullptr) TheEditorEvents().undoStateChanged(editor);
}

void NotifySelection(Editor* editor) {
    if (TheEditorEvents().selectionChanged != nullptr) TheEditorEvents().selectionChanged(editor);
}

void NotifyRepaint(Editor* editor) {
    if ((editor->flags & kFlagPaintDeferred) != 0) {
        editor->flags |= kFlagRepaintPending;
    } else if (TheEditorEvents().repaint != nullptr) {
        TheEditorEvents().repaint(editor);
    }
}

int32_t EditorRows(const Editor* editor) {
    return static_cast<int32_t>(editor->lineCount) + editor->wrapRows - editor->hiddenRows;
}

int32_t EditorRowOfLine(Editor* editor, uint32_t line) {
    return static_cast<int32_t>(line + LineIndexExtraRowsBefore(editor->index, editor->lines, line));
}

RowPos EditorRowPosition(Editor* editor, int32_t row) {
    row = std::clamp(row, 0, EditorRows(editor) - 1);
    uint32_t subRow = 0;
    const uint32_t line = LineIndexFindRow(editor->index, editor->lines, static_cast<uint32_t>(row), &subRow);
    return {static_cast<int32_t>(line), static_cast<int32_t>(subRow), row};
}

RowPos EditorPositionOf(Editor* editor, uint32_t line, uint32_t column) {
    const auto subRow = static_cast<int32_t>(SubRowOfColumn(editor->lines[line], column));
    return {static_cast<int32_t>(line), subRow, EditorRowOfLine(editor, line) + subRow};
}

void SetModified(Editor* editor, int16_t modified) {
    if (editor->modified == modified) return;
    editor->modified = modified;
    if (TheEditorEvents().titleChanged != nullptr) TheEditorEvents().titleChanged();
}

void SetEditorPath(Editor* editor, char16_t* path) {
    const char16_t* backslash = Utf16FindLast(path, u'\\');
    editor->path = path;
    editor->displayName = backslash != nullptr ? backslash + 1 : path;
}

}  // namespace nira
