#include "view/indentation.h"

#include <algorithm>

#include "app/services/memory.h"
#include "base/utf16.h"
#include "engine/text.h"
#include "view/indent_record.h"
#include "view/layout.h"
#include "view/scroll.h"

namespace nira {

namespace {

// A tab's columns. Tabs drawn as glyphs (-1) have no fixed number of them and are never written by indenting.
int64_t TabColumns() { return std::max<int64_t>(0, OptionsTabSize()); }

uint32_t Indentation(const Editor* editor, uint32_t line) {
    return LineIndent(editor, line, nullptr, nullptr);
}

// The new width of a line; equal to the old one when the line stays as it is.
int64_t NewWidth(const Editor* editor, uint32_t line, int64_t delta) {
    const int64_t width = IndentWidth(editor->lines[line].text, Indentation(editor, line));
    return std::max<int64_t>(0, width + delta);
}

void ShiftColumn(int32_t* column, int64_t change) {
    *column = static_cast<int32_t>(std::max<int64_t>(0, *column + change));
}

// Replaces a line's first `old` units in a text that has been reserved for the result. The width follows from
// the two indentations; a line that the system shapes, or that is too wide to be told, is measured whole.
void SpliceIndent(Editor* editor, MeasureContext* context, LineRecord* line, uint32_t old,
                  const char16_t* indent, uint32_t length) {
    const int32_t tabSize = OptionsTabSize();
    const int64_t width = int64_t{line->width} - ContextTextWidth(context, line->text, old, tabSize) +
                          ContextTextWidth(context, indent, length, tabSize);
    const bool isSum = line->shaped == 0 && line->width < INT32_MAX && width < INT32_MAX;
    SpliceReserved(editor, line, 0, old, indent, length);
    if (isSum) {
        line->width = static_cast<int32_t>(width);
    } else {
        MeasureRecord(line, context);
    }
}

// The same for line `at`; caret and anchor on it move along.
void ReplaceIndent(Editor* editor, MeasureContext* context, uint32_t at, uint32_t old, const char16_t* indent,
                   uint32_t length) {
    SpliceIndent(editor, context, &editor->lines[at], old, indent, length);
    const int64_t change = int64_t{length} - old;
    if (editor->caret.line == static_cast<int32_t>(at)) ShiftColumn(&editor->caretColumn, change);
    if (editor->anchorColumn != kNoSelection && editor->anchor.line == static_cast<int32_t>(at)) {
        ShiftColumn(&editor->anchorColumn, change);
    }
}

// What changing many lines shares: a growing text for their indentations, and how they are measured.
struct Scratch {
    char16_t* text;
    MeasureContext context;

    explicit Scratch(const Editor* editor) : text(nullptr), context{} { OpenLineContext(&context, editor); }
    ~Scratch() {
        MemFree(nullptr, text);
        CloseMeasureContext(&context);
    }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    char16_t* Room(size_t units) {
        if (MemSize(nullptr, text) < units * sizeof(char16_t)) text = MemReAllocArray(nullptr, text, units);
        return text;
    }
};

// Makes room for an indentation of `length` units on a line and in the scratch. Unwinds.
void ReserveIndent(Editor* editor, uint32_t line, uint32_t length, Scratch* scratch) {
    LineRecord* record = &editor->lines[line];
    ReserveLineText(editor, record, record->length - Indentation(editor, line) + length);
    scratch->Room(size_t{length} + 1);
}

// A width as it is written.
struct Blanks {
    uint32_t tabs;
    uint32_t spaces;
};

Blanks BlanksOf(int64_t width) {
    const int64_t columns = TabColumns();
    if (columns == 0) return {0, static_cast<uint32_t>(width)};
    return {static_cast<uint32_t>(width / columns), static_cast<uint32_t>(width % columns)};
}

bool LineChanges(const Editor* editor, uint32_t line, int64_t delta) {
    return NewWidth(editor, line, delta) != IndentWidth(editor->lines[line].text, Indentation(editor, line));
}

void ReserveIndents(Editor* editor, uint32_t first, uint32_t last, int64_t delta, Scratch* scratch) {
    for (uint32_t i = first; i <= last; ++i) {
        if (!LineChanges(editor, i, delta)) continue;
        const Blanks blanks = BlanksOf(NewWidth(editor, i, delta));
        ReserveIndent(editor, i, blanks.tabs + blanks.spaces, scratch);
    }
}

void IndentLine(Editor* editor, uint32_t line, int64_t delta, Scratch* scratch) {
    if (!LineChanges(editor, line, delta)) return;
    const Blanks blanks = BlanksOf(NewWidth(editor, line, delta));
    std::fill_n(scratch->text, blanks.tabs, kTab);
    std::fill_n(scratch->text + blanks.tabs, blanks.spaces, kSpace);
    ReplaceIndent(editor, &scratch->context, line, Indentation(editor, line), scratch->text,
                  blanks.tabs + blanks.spaces);
}

void RecordIndents(Editor* editor, uint32_t first, uint32_t last, int64_t delta) {
    IndentWriter writer = {};
    const bool recorded = Guarded([&] {
        const auto columns = static_cast<int32_t>(std::clamp<int64_t>(delta, INT16_MIN, INT16_MAX));
        BeginIndentRecord(&writer, editor->heap, last - first + 1, columns);
        for (uint32_t i = first; i <= last; ++i) {
            WriteIndent(&writer, editor->lines[i].text, Indentation(editor, i));
        }
        UndoAddIndent(editor->undo, editor->modified, first, writer.data, writer.size);
    });
    if (recorded) return;
    MemFree(editor->heap, writer.data);
    OutOfMemory(false);
}

// After lines first..last may have changed: their layout, the caret, the picture.
void FinishIndent(Editor* editor, uint32_t first, uint32_t last) {
    Guarded([&] { LinesBreak(editor, first, last + 1); });
    UpdateCaretPixels(editor);
    UpdateAnchorRow(editor);
    EnsureCaretVisible(editor, kCaretMargin);
    NotifyRepaint(editor);
}

void IndentSelection(Editor* editor, int64_t delta) {
    int32_t first = editor->caret.line;
    int32_t last = first;
    if (editor->anchorColumn != kNoSelection) {
        first = std::min(first, editor->anchor.line);
        last = std::max(last, editor->anchor.line);
    }
    const bool selected = HasSelection(editor);
    IndentLines(editor, static_cast<uint32_t>(first), static_cast<uint32_t>(last), delta);
    if (selected != HasSelection(editor)) NotifySelection(editor);
}

}  // namespace

int64_t IndentWidth(const char16_t* blanks, uint32_t count) {
    int64_t width = 0;
    for (uint32_t i = 0; i < count; ++i) width += blanks[i] == kTab ? TabColumns() : 1;
    return width;
}

void IncreaseIndent(Editor* editor) { IndentSelection(editor, TabColumns()); }

void DecreaseIndent(Editor* editor) { IndentSelection(editor, -TabColumns()); }

bool IndentLines(Editor* editor, uint32_t first, uint32_t last, int64_t delta) {
    uint32_t changing = first;
    while (changing <= last && !LineChanges(editor, changing, delta)) ++changing;
    if (changing > last) return true;
    Scratch scratch(editor);
    const bool records = (editor->flags & kFlagNoUndo) == 0;
    // The journal's steps fit the text only while each of them is applied whole or not at all.
    const bool reserved = Guarded([&] {
        ReserveIndents(editor, first, last, delta, &scratch);
        if (records) RecordIndents(editor, first, last, delta);
    });
    if (reserved) {
        for (uint32_t i = first; i <= last; ++i) IndentLine(editor, i, delta, &scratch);
        if (records) NotifyUndoState(editor);
        if (records) SetModified(editor, 1);
        FinishIndent(editor, first, last);
    }
    return reserved;
}

bool RestoreIndent(Editor* editor, const UndoEntry& entry) {
    const uint32_t first = entry.line;
    const uint32_t end = std::min(first + IndentRecordLines(entry.indent), editor->lineCount);
    Scratch scratch(editor);
    const bool reserved = Guarded([&] {
        IndentReader reader = ReadIndentRecord(entry.indent, entry.size);
        for (uint32_t i = first; i < end; ++i) {
            const uint32_t length = ReadIndentLength(&reader);
            ReserveIndent(editor, i, length, &scratch);
            ReadIndentUnits(&reader, scratch.text, length);
        }
    });
    IndentReader reader = ReadIndentRecord(entry.indent, entry.size);
    for (uint32_t i = first; reserved && i < end; ++i) {
        const uint32_t length = ReadIndentLength(&reader);
        ReadIndentUnits(&reader, scratch.text, length);
        ReplaceIndent(editor, &scratch.context, i, Indentation(editor, i), scratch.text, length);
    }
    if (reserved) FinishIndent(editor, first, end - 1);
    return reserved;
}

bool RepeatIndent(Editor* editor, const UndoEntry& entry) {
    const auto first = static_cast<uint32_t>(editor->caret.line);
    const uint32_t last = std::min(first + IndentRecordLines(entry.indent), editor->lineCount) - 1;
    return IndentLines(editor, first, last, IndentRecordDelta(entry.indent));
}

}  // namespace nira
