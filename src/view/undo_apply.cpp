#include "view/undo_apply.h"

#include "engine/text.h"
#include "engine/window_state.h"
#include "platform/surface.h"
#include "view/indentation.h"
#include "view/navigation.h"

namespace nira {

namespace {

constexpr int32_t kCaretWidth = 2;

// Indentation that was repeated with tabs of another size may have left the text shorter than the entry knows
// it. The entry then applies at the nearest place there is, and keeps that place for its way back.
bool PerformEntry(Editor* editor, UndoEntry& entry) {
    MoveCaretTo(editor, entry.line, entry.column);
    entry.line = static_cast<uint32_t>(editor->caret.line);
    entry.column = static_cast<uint32_t>(editor->caretColumn);
    switch (KindOf(entry)) {
        case UndoKind::kDeleteChar:
            if (TextDeleteCount(editor, entry.line, entry.column, 1) == kTextFailed) return false;
            break;
        case UndoKind::kInsertChar:
            if (TextInsert(editor, entry.line, entry.column, &entry.character, 1) == kTextFailed)
                return false;
            MoveCaretBy(editor, 1);
            return true;
        case UndoKind::kDeleteText:
            if (TextDeleteCount(editor, entry.line, entry.column, entry.size) == kTextFailed) return false;
            break;
        case UndoKind::kInsertText:
            if (TextInsertLines(editor, entry.line, entry.column, entry.text, entry.size) == kTextFailed) {
                return false;
            }
            MoveCaretBy(editor, entry.size);
            return true;
        case UndoKind::kRestoreIndent:
            if (!RestoreIndent(editor, entry)) return false;
            break;
        case UndoKind::kRepeatIndent:
            return RepeatIndent(editor, entry);
        default:
            return false;
    }
    MoveCaretTo(editor, entry.line, entry.column);
    return true;
}

// Applies the next entry and turns it round; false when it could not be.
bool ApplyNext(Editor* editor, bool undo) {
    UndoEntry* entry = UndoPeek(editor->undo, undo);
    if (!PerformEntry(editor, *entry)) return false;
    const bool modifiedNow = editor->modified != 0;
    SetModified(editor, (entry->kind & kUndoModifiedBit) != 0 ? 1 : 0);
    entry->kind = (entry->kind & kUndoKindMask) | (modifiedNow ? kUndoModifiedBit : 0);
    UndoStep(editor->undo, undo, entry);
    return true;
}

void ApplyRun(Editor* editor, bool undo) {
    const UndoEntry* first = UndoPeek(editor->undo, undo);
    const UndoKind kind = first != nullptr ? KindOf(*first) : UndoKind::kDeleteChar;
    for (const UndoEntry* next = first; next != nullptr && KindOf(*next) == kind;
         next = UndoPeek(editor->undo, undo)) {
        if (!ApplyNext(editor, undo)) return;
    }
}

void ApplyGroup(Editor* editor, bool undo) {
    editor->flags |= kFlagPaintDeferred;
    SurfaceDestroyCaret();
    ApplyRun(editor, undo);
    editor->flags &= ~(kFlagPaintDeferred | kFlagRepaintPending);
    const WindowHandle window = TheWindowState().editorWindow;
    SurfaceCreateCaret(window, kCaretWidth, editor->lineHeight);
    SurfaceMoveCaret(editor->caretX - editor->scrollX, editor->caretY - editor->scrollY);
    SurfaceShowCaret(window);
}

}  // namespace

void UndoApply(Editor* editor, bool undo, bool group) {
    editor->anchorColumn = kNoSelection;
    editor->flags = kFlagNoUndo;
    if (group) {
        ApplyGroup(editor, undo);
    } else if (UndoPeek(editor->undo, undo) != nullptr) {
        ApplyNext(editor, undo);
    }
    editor->flags &= ~kFlagNoUndo;
    NotifyUndoState(editor);
    NotifySelection(editor);
    NotifyRepaint(editor);
}

}  // namespace nira
