#include "view/clipboard_editing.h"

#include <algorithm>

#include "app/services/memory.h"
#include "base/utf16.h"
#include "engine/text.h"
#include "engine/window_state.h"
#include "platform/clipboard.h"
#include "view/editing.h"
#include "view/indentation.h"

namespace nira {

namespace {

WindowHandle EditorWindow() { return TheWindowState().editorWindow; }

uint32_t CaretLine(const Editor* editor) { return static_cast<uint32_t>(editor->caret.line); }

// Where a smart paste begins, before anything is inserted.
struct PasteOrigin {
    uint32_t line;
    uint32_t column;
    uint32_t indent;      // length of that line's indentation
    int64_t targetWidth;  // width of its blanks before the column
};

PasteOrigin OriginAtCaret(const Editor* editor) {
    PasteOrigin origin = {CaretLine(editor), static_cast<uint32_t>(editor->caretColumn), 0, 0};
    origin.indent = LineIndent(editor, origin.line, nullptr, nullptr);
    const uint32_t before = std::min(origin.indent, origin.column);
    origin.targetWidth = IndentWidth(editor->lines[origin.line].text, before);
    return origin;
}

// The smallest indentation of the pasted lines behind the first, not above `base`. Lines of blanks alone do
// not count, nor does the last line when its indentation reaches past the caret: that part was there before.
int64_t SmallestIndent(const Editor* editor, uint32_t first, int64_t base) {
    for (uint32_t i = first; i <= CaretLine(editor); ++i) {
        const uint32_t indent = LineIndent(editor, i, nullptr, nullptr);
        if (i == CaretLine(editor) && indent > static_cast<uint32_t>(editor->caretColumn)) break;
        if (indent < editor->lines[i].length)
            base = std::min(base, IndentWidth(editor->lines[i].text, indent));
    }
    return base;
}

void PasteSmart(Editor* editor, const char16_t* text, uint32_t count) {
    const PasteOrigin origin = OriginAtCaret(editor);
    uint32_t blanks = 0;
    while (blanks < count && (text[blanks] == kTab || text[blanks] == kSpace)) ++blanks;
    const int64_t sourceWidth = IndentWidth(text, blanks);
    if (!InsertBehindCaret(editor, text + blanks, count - blanks)) return;
    if (CaretLine(editor) == origin.line) return;
    int64_t base = sourceWidth;
    if (TheOptions().smartBase != 0) base = SmallestIndent(editor, origin.line + 1, base);
    if (origin.column <= origin.indent && sourceWidth != base &&
        !IndentLines(editor, origin.line, origin.line, sourceWidth - base)) {
        return;
    }
    IndentLines(editor, origin.line + 1, CaretLine(editor), origin.targetWidth - base);
}

// Running out of memory for the clipboard's own block is told like any other.
char16_t* AllocateForClipboard(size_t units) {
    char16_t* block = ClipboardAllocate(units);
    if (block == nullptr) OutOfMemory(true);
    return block;
}

}  // namespace

bool CopySelection(Editor* editor) {
    if (!HasSelection(editor)) return false;
    const SelectionRange range = SelectionRangeOf(editor);
    const size_t units =
        TextRangeUnits(editor, editor->lineEnd, range.line1, range.column1, range.line2, range.column2);
    char16_t* block = nullptr;
    if (!Guarded([&] { block = AllocateForClipboard(units); })) return false;
    TextWriteRange(editor, block, editor->lineEnd, range.line1, range.column1, range.line2, range.column2);
    return ClipboardPut(EditorWindow(), block, units);
}

void CutSelection(Editor* editor) {
    if (CopySelection(editor)) DeleteForward(editor);
}

void Paste(Editor* editor, bool smart) {
    if (!ClipboardOpen(EditorWindow())) return;
    uint32_t units = 0;
    const char16_t* text = ClipboardText(&units);
    if (text != nullptr) PasteText(editor, text, units, smart);
    ClipboardClose();
}

void PasteText(Editor* editor, const char16_t* text, uint32_t units, bool smart) {
    if (DeleteSelection(editor)) {
        if (smart) {
            editor->flags |= kFlagSmartPaste;
            PasteSmart(editor, text, units);
            editor->flags &= ~kFlagSmartPaste;
        } else {
            InsertBehindCaret(editor, text, units);
        }
    }
    NotifyRepaint(editor);
}

}  // namespace nira
