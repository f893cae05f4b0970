#include "view/editing.h"

#include <algorithm>
#include <cstring>

#include "app/services/memory.h"
#include "base/utf16.h"
#include "engine/text.h"
#include "view/navigation.h"
#include "view/scroll.h"

namespace nira {

namespace {

uint32_t CaretLineNumber(const Editor* editor) { return static_cast<uint32_t>(editor->caret.line); }

uint32_t CaretColumn(const Editor* editor) { return static_cast<uint32_t>(editor->caretColumn); }

bool DeleteOneCharacter(Editor* editor) {
    const uint32_t line = CaretLineNumber(editor);
    const bool atEnd = line + 1 == editor->lineCount && CaretColumn(editor) == editor->lines[line].length;
    if (atEnd || TextDeleteCount(editor, line, CaretColumn(editor), 1) == kTextFailed) return false;
    MoveCaretTo(editor, line, CaretColumn(editor));
    return true;
}

}  // namespace

bool InsertBehindCaret(Editor* editor, const char16_t* text, uint32_t units) {
    const int32_t characters =
        TextInsertLines(editor, CaretLineNumber(editor), CaretColumn(editor), text, units);
    if (characters == kTextFailed) return false;
    MoveCaretBy(editor, characters);
    return true;
}

bool DeleteSelection(Editor* editor) {
    if (!HasSelection(editor)) {
        editor->anchorColumn = kNoSelection;
        return true;
    }
    const SelectionRange range = SelectionRangeOf(editor);
    if (!TextDelete(editor, range.line1, range.column1, range.line2, range.column2)) return false;
    editor->anchorColumn = kNoSelection;
    MoveCaretTo(editor, range.line1, range.column1);
    NotifySelection(editor);
    return true;
}

void InsertAtCaret(Editor* editor, const char16_t* text, uint32_t units) {
    if (DeleteSelection(editor)) InsertBehindCaret(editor, text, units);
    NotifyRepaint(editor);
}

void TypeChar(Editor* editor, char16_t unit) { InsertAtCaret(editor, &unit, 1); }

void NewLine(Editor* editor) {
    if (!DeleteSelection(editor)) return;
    const uint32_t line = CaretLineNumber(editor);
    const uint32_t indent = TheOptions().keepIndent != 0 ? LineIndent(editor, line, nullptr, nullptr) : 0;
    char16_t* text = nullptr;
    const bool made = Guarded([&] { text = MemAllocArray<char16_t>(nullptr, size_t{indent} + 1); });
    if (made) {
        text[0] = kLineFeed;
        if (indent > 0) std::memcpy(text + 1, editor->lines[line].text, indent * sizeof(char16_t));
        InsertBehindCaret(editor, text, indent + 1);
        MemFree(nullptr, text);
    }
    NotifyRepaint(editor);
}

void DeleteBackward(Editor* editor) {
    if (HasSelection(editor)) {
        DeleteSelection(editor);
        NotifyRepaint(editor);
        return;
    }
    editor->anchorColumn = kNoSelection;
    if (!MoveCaretBy(editor, -1)) return;
    DeleteOneCharacter(editor);
    NotifyRepaint(editor);
}

void DeleteForward(Editor* editor) {
    if (HasSelection(editor)) {
        DeleteSelection(editor);
        NotifyRepaint(editor);
        return;
    }
    editor->anchorColumn = kNoSelection;
    if (DeleteOneCharacter(editor)) NotifyRepaint(editor);
}

}  // namespace nira
