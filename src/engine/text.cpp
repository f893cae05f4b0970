#include "engine/text.h"

#include <algorithm>

#include "app/services/memory.h"
#include "base/utf16.h"
#include "engine/line_array.h"
#include "view/layout.h"

namespace nira {

namespace {

constexpr uint32_t kNoBreak = UINT32_MAX;

bool IsPairAt(const char16_t* text, uint32_t count, uint32_t i) {
    return text[i] == kCarriageReturn && i + 1 < count && text[i + 1] == kLineFeed;
}

// What one look over a text to be inserted finds.
struct BreakScan {
    uint32_t breaks = 0;
    uint32_t pairs = 0;         // CR LF
    uint32_t returns = 0;       // CR, with LF behind it or not
    uint32_t first = kNoBreak;  // index of the first break's first unit
};

BreakScan ScanBreaks(const char16_t* text, uint32_t count) {
    BreakScan scan;
    for (size_t place = Utf16FindBreak(text, 0, count); place < count;) {
        const auto i = static_cast<uint32_t>(place);
        if (scan.first == kNoBreak) scan.first = i;
        ++scan.breaks;
        const bool pair = IsPairAt(text, count, i);
        scan.pairs += pair ? 1 : 0;
        scan.returns += text[i] == kCarriageReturn ? 1 : 0;
        place = Utf16FindBreak(text, place + (pair ? 2 : 1), count);
    }
    return scan;
}

uint32_t LineEndAt(const char16_t* text, uint32_t count, uint32_t i) {
    if (text[i] == kLineFeed) return kLineEndLf;
    return IsPairAt(text, count, i) ? kLineEndCrLf : kLineEndCr;
}

// What an LF directly behind a first break that is a lone LF becomes.
enum class SecondLf { kSwallowed, kBreak };

// An insertion whose memory is being gathered. Until it is committed nothing of the document has changed.
struct Insertion {
    uint32_t line;
    uint32_t column;
    const char16_t* text;
    uint32_t count;
    SecondLf secondLf;
    BreakScan scan;
    LineRecord* records;  // one a break, for the lines behind `line`
    char16_t* undoText;
};

// Behind the last line the records are filled where they will stand; elsewhere a block move must make room
// for them first, which cannot be taken back.
bool FillsInPlace(const Editor* editor, const Insertion& insertion) {
    return insertion.line + 1 == editor->lineCount;
}

void FreeInsertion(Editor* editor, Insertion* insertion) {
    for (uint32_t i = 0; insertion->records != nullptr && i < insertion->scan.breaks; ++i) {
        MemFree(editor->heap, insertion->records[i].text);
        insertion->records[i] = {};
    }
    if (!FillsInPlace(editor, *insertion)) MemFree(nullptr, insertion->records);
    MemFree(editor->heap, insertion->undoText);
}

// Fills a record and measures it while its text is at hand: for a large text this saves a trip to memory.
void FillRecord(Editor* editor, MeasureContext* context, LineRecord* record, const char16_t* text,
                uint32_t units) {
    FillLineText(editor->heap, record, text, units, nullptr, 0);
    MeasureRecord(record, context);
}

// Fills the records of the lines behind the first break. The last segment stands in front of the tail of the
// split line; when an LF was swallowed the segments end one record early, and the tail stands alone behind
// them.
void FillRecords(Editor* editor, Insertion* insertion, MeasureContext* context) {
    const LineRecord& split = editor->lines[insertion->line];
    const char16_t* text = insertion->text;
    const uint32_t count = insertion->count;
    const char16_t* tail = split.text + insertion->column;
    const uint32_t tailUnits = split.length - insertion->column;
    const uint32_t first = insertion->scan.first;
    uint32_t start = first + 1;
    const bool secondLf = start < count && text[first] == kLineFeed && text[start] == kLineFeed;
    const bool swallows = secondLf && insertion->secondLf == SecondLf::kSwallowed;
    if (swallows || IsPairAt(text, count, first)) ++start;
    uint32_t filled = 0;
    for (auto i = static_cast<uint32_t>(Utf16FindBreak(text, start, count)); i < count;) {
        FillRecord(editor, context, &insertion->records[filled++], text + start, i - start);
        start = i + (IsPairAt(text, count, i) ? 2 : 1);
        i = static_cast<uint32_t>(Utf16FindBreak(text, start, count));
    }
    LineRecord* last = &insertion->records[filled];
    FillLineText(editor->heap, last, text + start, count - start, tail, swallows ? 0 : tailUnits);
    MeasureRecord(last, context);
    if (swallows) FillRecord(editor, context, last + 1, tail, tailUnits);
}

void PrepareInsertion(Editor* editor, Insertion* insertion, MeasureContext* context) {
    const uint32_t breaks = insertion->scan.breaks;
    if (breaks == 0) {
        LineRecord* line = &editor->lines[insertion->line];
        ReserveLineText(editor, line, line->length + insertion->count);
        return;
    }
    ReserveLines(editor, breaks);
    ReserveLineText(editor, &editor->lines[insertion->line], insertion->column + insertion->scan.first);
    insertion->records = FillsInPlace(editor, *insertion) ? editor->lines + editor->lineCount
                                                          : MemAllocArray<LineRecord>(nullptr, breaks);
    FillRecords(editor, insertion, context);
}

// Appends the undo entry: the last step that can fail.
void RecordInsertion(Editor* editor, Insertion* insertion) {
    const uint32_t line = insertion->line;
    const uint32_t column = insertion->column;
    if (insertion->count == 1 && insertion->scan.breaks == 0) {
        UndoAddChar(editor->undo, true, editor->modified, line, column, insertion->text[0]);
        return;
    }
    const uint32_t units = insertion->count - insertion->scan.pairs;
    insertion->undoText = MemAllocArray<char16_t>(editor->heap, units);
    if (insertion->scan.returns == 0) {
        std::copy_n(insertion->text, units, insertion->undoText);
    } else if (insertion->secondLf == SecondLf::kSwallowed) {
        StripCrBeforeLf(insertion->undoText, insertion->text, insertion->count);
    } else {
        ConvertBreaksToLf(insertion->undoText, insertion->text, insertion->count);
    }
    UndoAddText(editor->undo, true, editor->modified, line, column, insertion->undoText, units);
    insertion->undoText = nullptr;
}

void AfterRecording(Editor* editor) {
    NotifyUndoState(editor);
    SetModified(editor, 1);
}

bool Records(const Editor* editor) { return (editor->flags & kFlagNoUndo) == 0; }

void CommitInsertion(Editor* editor, Insertion* insertion) {
    LineRecord* line = &editor->lines[insertion->line];
    const uint32_t breaks = insertion->scan.breaks;
    if (breaks == 0) {
        SpliceReserved(editor, line, insertion->column, 0, insertion->text, insertion->count);
        return;
    }
    SpliceReserved(editor, line, insertion->column, line->length - insertion->column, insertion->text,
                   insertion->scan.first);
    const bool inPlace = FillsInPlace(editor, *insertion);
    InsertLines(editor, insertion->line + 1, insertion->records, breaks);
    if (!inPlace) MemFree(nullptr, insertion->records);
    for (int32_t& bookmark : editor->bookmarks) {
        if (bookmark > static_cast<int32_t>(insertion->line)) bookmark += static_cast<int32_t>(breaks);
    }
}

void MeasureInsertion(Editor* editor, const Insertion& insertion) {
    if (insertion.scan.breaks == 0) {
        LineMeasureInserted(editor, insertion.line, insertion.column, insertion.count);
    } else {
        LineMeasure(editor, insertion.line);
        LinesBreak(editor, insertion.line + 1, insertion.line + insertion.scan.breaks + 1);
    }
}

// False when memory ran out and nothing was inserted.
bool Insert(Editor* editor, Insertion* insertion) {
    if (insertion->count == 0) return true;
    insertion->scan = ScanBreaks(insertion->text, insertion->count);
    MeasureContext context;
    OpenLineContext(&context, editor);
    const bool ready = Guarded([&] {
        PrepareInsertion(editor, insertion, &context);
        if (Records(editor)) RecordInsertion(editor, insertion);
    });
    CloseMeasureContext(&context);
    if (!ready) {
        FreeInsertion(editor, insertion);
        return false;
    }
    if ((editor->flags & kFlagDetectLineEnd) != 0 && insertion->scan.breaks > 0) {
        editor->lineEnd = LineEndAt(insertion->text, insertion->count, insertion->scan.first);
        editor->flags &= ~kFlagDetectLineEnd;
    }
    if (Records(editor)) AfterRecording(editor);
    CommitInsertion(editor, insertion);
    Guarded([&] { MeasureInsertion(editor, *insertion); });
    return true;
}

// A deletion, likewise.
struct Deletion {
    uint32_t line1;
    uint32_t column1;
    uint32_t line2;
    uint32_t column2;
    char16_t* undoText;
};

void PrepareDeletion(Editor* editor, Deletion* deletion) {
    LineRecord* line = &editor->lines[deletion->line1];
    if (deletion->line1 != deletion->line2) {
        ReserveLineText(editor, line,
                        deletion->column1 + editor->lines[deletion->line2].length - deletion->column2);
    }
    if (!Records(editor)) return;
    if (deletion->line1 == deletion->line2 && deletion->column2 == deletion->column1 + 1) {
        UndoAddChar(editor->undo, false, editor->modified, deletion->line1, deletion->column1,
                    line->text[deletion->column1]);
        return;
    }
    uint32_t units = 0;
    deletion->undoText = TextCopyRange(editor, editor->heap, kLineEndLf, deletion->line1, deletion->column1,
                                       deletion->line2, deletion->column2, &units);
    UndoAddText(editor->undo, false, editor->modified, deletion->line1, deletion->column1, deletion->undoText,
                units);
    deletion->undoText = nullptr;
}

// Bookmarks in the range are cleared, also one on its first line; the one on its last line moves to the
// first.
void MoveBookmarksUp(Editor* editor, int32_t line1, int32_t line2) {
    for (int32_t& bookmark : editor->bookmarks) {
        if (bookmark <= line1) continue;
        bookmark = bookmark > line2 ? bookmark - line2 + line1 : 0;
    }
}

void JoinLines(Editor* editor, const Deletion& deletion) {
    MoveBookmarksUp(editor, static_cast<int32_t>(deletion.line1), static_cast<int32_t>(deletion.line2));
    LineRecord* line = &editor->lines[deletion.line1];
    const LineRecord& last = editor->lines[deletion.line2];
    SpliceReserved(editor, line, deletion.column1, line->length - deletion.column1,
                   last.text + deletion.column2, last.length - deletion.column2);
    for (uint32_t i = deletion.line1 + 1; i <= deletion.line2; ++i) {
        MemFree(editor->heap, editor->lines[i].text);
        MemFree(editor->heap, editor->lines[i].breaks);
    }
    RemoveLines(editor, deletion.line1 + 1, deletion.line2 - deletion.line1);
    LinesMeasure(editor, deletion.line1, std::min(deletion.line1 + 2, editor->lineCount));
}

void DeleteInLine(Editor* editor, const Deletion& deletion) {
    const uint32_t units = deletion.column2 - deletion.column1;
    const int32_t width = RemovedWidth(editor, deletion.line1, deletion.column1, units);
    LineDeleteChars(editor, deletion.line1, deletion.column1, static_cast<int32_t>(units));
    LineMeasureDeleted(editor, deletion.line1, deletion.column1, width);
}

}  // namespace

int32_t TextInsert(Editor* editor, uint32_t line, uint32_t column, const char16_t* text, uint32_t count) {
    Insertion insertion = {line, column, text, count, SecondLf::kSwallowed, {}, nullptr, nullptr};
    return Insert(editor, &insertion) ? static_cast<int32_t>(insertion.scan.pairs) : kTextFailed;
}

int32_t TextInsertLines(Editor* editor, uint32_t line, uint32_t column, const char16_t* text,
                        uint32_t count) {
    Insertion insertion = {line, column, text, count, SecondLf::kBreak, {}, nullptr, nullptr};
    return Insert(editor, &insertion) ? static_cast<int32_t>(count - insertion.scan.pairs) : kTextFailed;
}

bool TextDelete(Editor* editor, uint32_t line1, uint32_t column1, uint32_t line2, uint32_t column2) {
    if (line1 == line2 && column1 == column2) return true;
    Deletion deletion = {line1, column1, line2, column2, nullptr};
    if (!Guarded([&] { PrepareDeletion(editor, &deletion); })) {
        MemFree(editor->heap, deletion.undoText);
        return false;
    }
    if (Records(editor)) AfterRecording(editor);
    Guarded([&] {
        if (line1 == line2) {
            DeleteInLine(editor, deletion);
        } else {
            JoinLines(editor, deletion);
        }
    });
    return true;
}

int32_t TextDeleteCount(Editor* editor, uint32_t line, uint32_t column, uint32_t count) {
    if (count == 0) return 0;
    int64_t rest = int64_t{count} + column - editor->lines[line].length;
    uint32_t last = line;
    while (rest > 0 && last + 1 < editor->lineCount) {
        ++last;
        rest -= int64_t{editor->lines[last].length} + 1;
    }
    const int64_t length = editor->lines[last].length;
    const auto end = static_cast<uint32_t>(rest < 0 ? length + rest : length);
    if (!TextDelete(editor, line, column, last, end)) return kTextFailed;
    return static_cast<int32_t>(last - line);
}

}  // namespace nira
