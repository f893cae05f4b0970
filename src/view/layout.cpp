#include "view/layout.h"

#include <algorithm>
#include <limits>

#include "app/services/memory.h"
#include "engine/window_state.h"

namespace nira {

namespace {

constexpr int32_t kWidthUnknown = -1;

void FreeBreaks(Editor* editor, LineRecord* line) {
    MemFree(editor->heap, line->breaks);
    line->breaks = nullptr;
}

// Notes the limit that rows are broken for now; once it has changed, lines may be broken for several.
int32_t NoteLimit(Editor* editor) {
    const int32_t limit = RowWidthLimit(editor);
    if (editor->layoutLimit != 0 && editor->layoutLimit != limit) editor->layoutMixed = 1;
    editor->layoutLimit = limit;
    return limit;
}

// Stores `column` as row start number `count`; the block grows geometrically.
void StoreBreak(Editor* editor, LineRecord* line, uint32_t count, uint32_t column) {
    const size_t needed = (size_t{count} + 1) * sizeof(uint32_t);
    const size_t size = MemSize(editor->heap, line->breaks);
    if (size < needed) {
        line->breaks =
            static_cast<uint32_t*>(MemReAlloc(editor->heap, line->breaks, std::max(needed, size + size / 2)));
    }
    line->breaks[count] = column;
}

// Breaks a line that is wider than the limit, keeping its first `keptRows` continuation rows. The count word
// is written last: until then the block holds no valid list.
void BreakRows(Editor* editor, LineRecord* line, MeasureContext* context, int32_t limit, uint32_t keptRows) {
    const int32_t tabSize = OptionsTabSize();
    if (line->breaks == nullptr) {
        const size_t estimate = static_cast<size_t>(line->width / limit) + 1;
        line->breaks = MemAllocArray<uint32_t>(editor->heap, std::min<size_t>(estimate, line->length));
    }
    uint32_t count = keptRows;
    uint32_t column = keptRows > 0 ? line->breaks[keptRows] : 0;
    for (;;) {
        const FitResult fit =
            ContextFitText(context, line->text + column, line->length - column, tabSize, limit);
        column += std::max<uint32_t>(1, fit.count);
        if (column >= line->length) break;
        StoreBreak(editor, line, ++count, column);
    }
    if (count == 0) {
        FreeBreaks(editor, line);
    } else {
        line->breaks[0] = count;
    }
}

// Breaks one line; out of memory leaves it in one row and is passed on. The sums are the caller's.
void ComputeRows(Editor* editor, LineRecord* line, MeasureContext* context, int32_t limit,
                 uint32_t keptRows) {
    if (line->width <= limit || line->length == 0) {
        FreeBreaks(editor, line);
        return;
    }
    if (!Guarded([&] { BreakRows(editor, line, context, limit, keptRows); })) {
        FreeBreaks(editor, line);
        OutOfMemory(false);
    }
}

// Breaks lines first..end-1. When memory runs out the others get one row each, so that the sums are those of
// the text, and it is passed on.
void BreakLines(Editor* editor, uint32_t first, uint32_t end, MeasureContext* context) {
    const int32_t limit = NoteLimit(editor);
    uint32_t line = first;
    const bool done = Guarded([&] {
        for (; line < end; ++line) ComputeRows(editor, &editor->lines[line], context, limit, 0);
    });
    LineIndexTouch(editor->index, first, end);
    if (done) return;
    for (; line < end; ++line) FreeBreaks(editor, &editor->lines[line]);
    OutOfMemory(false);
}

void ForgetLimits(Editor* editor) {
    editor->layoutMixed = 0;
    editor->layoutLimit = 0;
}

// A line whose width can be kept up by adding and subtracting.
bool WidthIsSum(const LineRecord& line) {
    return line.shaped == 0 && line.width < std::numeric_limits<int32_t>::max();
}

// The rows before a changed column that stay as they are. The row that ends at the column does not: it may
// have room for what comes behind now.
uint32_t RowsBefore(const Editor* editor, const LineRecord& line, uint32_t column) {
    if (editor->layoutMixed != 0 || line.breaks == nullptr || column == 0) return 0;
    return SubRowOfColumn(line, column - 1);
}

void MeasureFrom(Editor* editor, uint32_t at, MeasureContext* context, uint32_t column, int64_t width) {
    LineRecord* line = &editor->lines[at];
    const int32_t limit = NoteLimit(editor);
    uint32_t kept = 0;
    if (width >= 0 && width < std::numeric_limits<int32_t>::max()) {
        line->width = static_cast<int32_t>(width);
        kept = RowsBefore(editor, *line, column);
    } else {
        MeasureRecord(line, context);
    }
    LineIndexTouch(editor->index, at, at + 1);
    ComputeRows(editor, line, context, limit, kept);
}

// Runs a measuring operation with a context of the document's font and brings the sums up to date whatever
// happens.
template <typename Operation>
void WithContext(Editor* editor, Operation operation) {
    MeasureContext context;
    OpenLineContext(&context, editor);
    const bool done = Guarded([&] { operation(&context); });
    CloseMeasureContext(&context);
    RecomputeWidest(editor);
    if (!done) OutOfMemory(false);
}

}  // namespace

int32_t RowWidthLimit(const Editor* editor) {
    if (editor->wordWrap == 0) return kUnwrappedRowWidth;
    return std::max(1, TheWindowState().clientWidth - 1);
}

void OpenLineContext(MeasureContext* context, const Editor* editor) {
    OpenMeasureContext(context, TheWindowState().editorWindow, editor->textStyle->font);
}

void MeasureRecord(LineRecord* line, MeasureContext* context) {
    bool summed = false;
    line->width = ContextTextWidth(context, line->text, line->length, OptionsTabSize(), &summed);
    line->shaped = summed ? 0 : 1;
}

void LineMeasure(Editor* editor, uint32_t line) { LinesMeasure(editor, line, line + 1); }

void LinesMeasure(Editor* editor, uint32_t first, uint32_t end) {
    WithContext(editor, [&](MeasureContext* context) {
        for (uint32_t i = first; i < end; ++i) MeasureRecord(&editor->lines[i], context);
        BreakLines(editor, first, end, context);
    });
}

void EditorMeasureAll(Editor* editor) {
    ForgetLimits(editor);
    LinesMeasure(editor, 0, editor->lineCount);
}

void LinesBreak(Editor* editor, uint32_t first, uint32_t end) {
    WithContext(editor, [&](MeasureContext* context) { BreakLines(editor, first, end, context); });
}

void EditorBreakAll(Editor* editor) {
    ForgetLimits(editor);
    LinesBreak(editor, 0, editor->lineCount);
}

void LineMeasureInserted(Editor* editor, uint32_t line, uint32_t column, uint32_t count) {
    WithContext(editor, [&](MeasureContext* context) {
        const LineRecord& record = editor->lines[line];
        const char16_t* piece = record.text + column;
        int64_t width = kWidthUnknown;
        if (WidthIsSum(record)) {
            bool summed = false;
            const int32_t added = ContextTextWidth(context, piece, count, OptionsTabSize(), &summed);
            if (summed) width = int64_t{record.width} + added;
        }
        MeasureFrom(editor, line, context, column, width);
    });
}

void LineMeasureDeleted(Editor* editor, uint32_t line, uint32_t column, int32_t removedWidth) {
    WithContext(editor, [&](MeasureContext* context) {
        const LineRecord& record = editor->lines[line];
        int64_t width = kWidthUnknown;
        if (removedWidth >= 0 && WidthIsSum(record)) width = int64_t{record.width} - removedWidth;
        MeasureFrom(editor, line, context, column, width);
    });
}

int32_t RemovedWidth(Editor* editor, uint32_t line, uint32_t column, uint32_t count) {
    const LineRecord& record = editor->lines[line];
    if (!WidthIsSum(record)) return kWidthUnknown;
    MeasureContext context;
    OpenLineContext(&context, editor);
    const int32_t width = ContextTextWidth(&context, record.text + column, count, OptionsTabSize());
    CloseMeasureContext(&context);
    return width;
}

int32_t LineComputeBreaks(Editor* editor, uint32_t line, MeasureContext* context) {
    const auto oldRows = static_cast<int32_t>(ExtraRows(editor->lines[line]));
    const auto operation = [&](MeasureContext* used) { BreakLines(editor, line, line + 1, used); };
    Guarded([&] {
        if (context != nullptr) {
            operation(context);
        } else {
            WithContext(editor, operation);
        }
    });
    RecomputeWidest(editor);
    return static_cast<int32_t>(ExtraRows(editor->lines[line])) - oldRows;
}

void RecomputeWidest(Editor* editor) {
    LineIndexRefresh(editor->index, editor->lines);
    editor->widestLine = editor->index->widest;
    editor->wrapRows = static_cast<int32_t>(editor->index->extraRows);
}

}  // namespace nira
