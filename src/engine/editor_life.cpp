#include "engine/editor_life.h"

#include "app/services/memory.h"
#include "engine/scroll_bars.h"
#include "engine/window_state.h"
#include "files/codecs.h"
#include "view/measure.h"

namespace nira {

namespace {

constexpr size_t kFirstHeapBytes = 0x10000;
constexpr int32_t kFirstLines = 10;

// What a document's heap holds from the start.
struct EmptyText {
    HeapHandle heap;
    LineRecord* lines;
    LineIndex* index;
    UndoJournal* undo;
};

EmptyText MakeEmptyText() {
    EmptyText empty = {};
    empty.heap = MemHeapCreate(kFirstHeapBytes);
    const bool made = Guarded([&] {
        empty.lines = MemAllocArray<LineRecord>(empty.heap, kFirstLines);
        empty.index = LineIndexCreate(empty.heap);
        empty.undo = UndoCreate(empty.heap);
    });
    if (!made) {
        MemHeapDestroy(empty.heap);
        OutOfMemory(false);
    }
    return empty;
}

}  // namespace

Editor* EditorCreate() {
    Editor* editor = nullptr;
    const bool made = Guarded([&] {
        editor = MemAllocArray<Editor>(nullptr, 1);
        editor->textStyle = OptionsTextStyle();
        editor->selStyle = OptionsSelectionStyle();
        editor->lineEnd = kLineEndCrLf;
        editor->codecId = DefaultCodec();
        const int32_t height = LineHeight(TheWindowState().editorWindow, editor->textStyle->font);
        editor->lineHeight = static_cast<int16_t>(height);
        EditorReset(editor);
    });
    if (made) return editor;
    EditorDestroy(editor);
    return nullptr;
}

void EditorReset(Editor* editor) {
    const EmptyText empty = MakeEmptyText();
    MemHeapDestroy(editor->heap);
    editor->heap = empty.heap;
    editor->lines = empty.lines;
    editor->index = empty.index;
    editor->undo = empty.undo;
    editor->lineCount = 1;
    editor->lineCapacity = kFirstLines;
    editor->caretColumn = 0;
    editor->anchorColumn = kNoSelection;
    editor->scrollX = editor->scrollY = 0;
    editor->caretX = editor->caretY = 0;
    editor->widestLine = 0;
    editor->top = editor->caret = {0, 0, 0};
    editor->wrapRows = 0;
    editor->hiddenRows = 0;
    editor->bottomRow = 0;
    editor->layoutLimit = 0;
    editor->layoutMixed = 0;
    editor->wordWrap = static_cast<int16_t>(TheOptions().wordWrapDefault != 0 ? 1 : 0);
    SetModified(editor, 0);
    UpdateScrollBars(editor);
}

void EditorDestroy(Editor* editor) {
    if (editor == nullptr) return;
    MemHeapDestroy(editor->heap);
    MemFree(nullptr, editor->path);
    MemFree(nullptr, editor);
}

}  // namespace nira
