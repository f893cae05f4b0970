#include "search/find.h"

#include "app/services/memory.h"
#include "app/services/notices.h"
#include "base/utf16.h"
#include "engine/line_rewrite.h"
#include "engine/text.h"
#include "platform/messages.h"
#include "platform/shell_requests.h"
#include "platform/surface.h"
#include "resources/resource.h"
#include "search/line_search.h"
#include "search/search_state.h"
#include "view/editing.h"
#include "view/navigation.h"
#include "view/scroll.h"
#include "view/words.h"

namespace nira {

namespace {

struct Match {
    uint32_t line;
    uint32_t column;
};

LineSearch PreparedSearch() {
    const SearchState& state = TheSearchState();
    LineSearch search;
    PrepareLineSearch(&search, state.pattern, static_cast<uint32_t>(Utf16Length(state.pattern)),
                      state.matchCase != 0);
    return search;
}

// The part of a line that is searched: units from..end-1 of a text, and the unit before them, null at the
// line's start.
struct Stretch {
    const char16_t* text;
    uint32_t from;
    uint32_t end;
    const char16_t* before;
};

bool StandsAlone(const Stretch& stretch, uint32_t start, uint32_t end) {
    const char16_t* before = start > stretch.from ? stretch.text + start - 1 : stretch.before;
    if (before != nullptr && !IsSeparator(*before)) return false;
    return end == stretch.end || IsSeparator(stretch.text[end]);
}

// The first match in it. What overlaps a match that is part of a word is not tried.
uint32_t FindInStretch(const LineSearch& search, const Stretch& stretch) {
    uint32_t from = stretch.from;
    while (from < stretch.end) {
        const uint32_t start = SearchLine(search, stretch.text, from, stretch.end);
        if (start == kNoMatch) return kNoMatch;
        from = start + search.length;
        if (TheSearchState().wholeWord == 0 || StandsAlone(stretch, start, from)) return start;
    }
    return kNoMatch;
}

uint32_t FindInRecord(const LineSearch& search, const LineRecord& line, uint32_t column) {
    if (column >= line.length) return kNoMatch;
    return FindInStretch(search,
                         {line.text, column, line.length, column > 0 ? line.text + column - 1 : nullptr});
}

// From (line, column) to the end of the document, then from its top to the end of that line.
bool FindFrom(const Editor* editor, const LineSearch& search, uint32_t line, uint32_t column, Match* match) {
    const uint32_t first = line;
    bool wrapped = false;
    for (;;) {
        const uint32_t start = FindInRecord(search, editor->lines[line], column);
        if (start != kNoMatch) {
            *match = {line, start};
            return true;
        }
        ++line;
        column = 0;
        if (wrapped && line > first) return false;
        if (line == editor->lineCount) {
            line = 0;
            wrapped = true;
        }
    }
}

bool FindFromCaret(const Editor* editor, const LineSearch& search, Match* match) {
    if (search.length == 0) return false;
    return FindFrom(editor, search, static_cast<uint32_t>(editor->caret.line),
                    static_cast<uint32_t>(editor->caretColumn), match);
}

// The caret is brought to both ends, so that as much of the match as fits is in view.
void SelectMatch(Editor* editor, const Match& match, uint32_t units) {
    const bool selected = HasSelection(editor);
    editor->markMode = 0;
    BeginOrClearSelection(editor, false);
    MoveCaretTo(editor, match.line, match.column);
    BeginOrClearSelection(editor, true);
    MoveCaretTo(editor, match.line, match.column + units);
    if (!selected) NotifySelection(editor);
    NotifyRepaint(editor);
}

bool TellWhenMissing(bool found) {
    if (!found) {
        ShowMessage(NoticeOwner(), LoadResString(IDS_PATTERN_NOT_FOUND), LoadResString(IDS_INFORMATION),
                    MessageKind::kInformation);
    }
    return found;
}

bool ReplaceSelection(Editor* editor) {
    const char16_t* replacement = TheSearchState().replacement;
    return DeleteSelection(editor) &&
           InsertBehindCaret(editor, replacement, static_cast<uint32_t>(Utf16Length(replacement)));
}

// ---- Replace All ----

struct Replacing {
    Editor* editor;
    LineSearch search;
    const char16_t* text;  // the replacement
    uint32_t units;
    uint32_t breaks;   // line breaks in it
    uint32_t segment;  // its units behind the last of them
    uint32_t line;     // behind the latest replacement
    uint32_t column;
    uint32_t count;
};

Replacing StartReplacing(Editor* editor) {
    Replacing run = {editor, PreparedSearch(), TheSearchState().replacement, 0, 0, 0, 0, 0, 0};
    run.units = static_cast<uint32_t>(Utf16Length(run.text));
    run.segment = run.units;
    for (size_t i = Utf16FindBreak(run.text, 0, run.units); i < run.units;
         i = Utf16FindBreak(run.text, i + 1, run.units)) {
        const bool pair = i > 0 && run.text[i] == kLineFeed && run.text[i - 1] == kCarriageReturn;
        run.breaks += pair ? 0 : 1;
        run.segment = static_cast<uint32_t>(run.units - i - 1);
    }
    return run;
}

// The system may ask for the window to be painted: the caret stands where the work has come to. False when
// the person wants it to stop.
bool AnswerSystem(const Replacing& run) {
    MoveCaretTo(run.editor, run.line, run.column);
    return KeepAnswering();
}

// A replacement with line breaks moves the lines behind it, one by one.
bool ReplaceByLines(Replacing* run, uint32_t start) {
    Editor* editor = run->editor;
    run->column = start;
    if (!TextDelete(editor, run->line, start, run->line, start + run->search.length)) return false;
    if (TextInsertLines(editor, run->line, start, run->text, run->units) == kTextFailed) return false;
    ++run->count;
    run->line += run->breaks;
    run->column = run->segment;
    return !AnsweringDue() || AnswerSystem(*run);
}

// All matches of a line from one at `start` on, or as many as there are until the system wants an answer.
// False when the work must stop.
bool ReplaceInLine(Replacing* run, uint32_t start) {
    LineRewrite rewrite;
    BeginLineRewrite(&rewrite, run->editor, run->line, start);
    const LineRecord& line = run->editor->lines[run->line];
    bool done = true;
    bool due = false;
    while (start != kNoMatch && done && !due) {
        done = RewriteInLine(&rewrite, start - rewrite.rest, run->search.length, run->text, run->units);
        if (!done) break;
        ++run->count;
        due = AnsweringDue();
        const char16_t* before = rewrite.done > 0 ? line.text + rewrite.done - 1 : nullptr;
        start = FindInStretch(run->search, {line.text, rewrite.rest, rewrite.end, before});
    }
    run->column = rewrite.done;
    done = EndLineRewrite(&rewrite) && done;
    return done && (!due || AnswerSystem(*run));
}

// Every match from the caret on, as long as there is one.
void ReplaceMatches(Replacing* run, Match match) {
    run->editor->markMode = 0;
    run->editor->anchorColumn = kNoSelection;
    bool going = true;
    while (going) {
        run->line = match.line;
        going = run->breaks > 0 ? ReplaceByLines(run, match.column) : ReplaceInLine(run, match.column);
        going = going && FindFrom(run->editor, run->search, run->line, run->column, &match);
    }
    MoveCaretTo(run->editor, run->line, run->column);
}

}  // namespace

int32_t FindInLine(const char16_t* text, int32_t length, const char16_t* pattern, int32_t patternLength,
                   bool matchCase) {
    if (length < 1 || patternLength < 1) return -1;
    LineSearch search;
    PrepareLineSearch(&search, pattern, static_cast<uint32_t>(patternLength), matchCase);
    const uint32_t start = SearchLine(search, text, 0, static_cast<uint32_t>(length));
    return start == kNoMatch ? -1 : static_cast<int32_t>(start);
}

bool FindNext(Editor* editor) {
    if (editor == nullptr) return false;
    const LineSearch search = PreparedSearch();
    Match match = {};
    if (!FindFromCaret(editor, search, &match)) return false;
    SelectMatch(editor, match, search.length);
    return true;
}

bool FindNextWithMessage(Editor* editor) {
    if (editor == nullptr) return false;
    return TellWhenMissing(FindNext(editor));
}

bool ReplaceAndFind(Editor* editor) {
    if (editor == nullptr) return false;
    const bool replaced = ReplaceSelection(editor);
    const bool found = replaced && FindNext(editor);
    if (!found) NotifyRepaint(editor);
    return replaced && TellWhenMissing(found);
}

uint32_t ReplaceAll(Editor* editor) {
    if (editor == nullptr) return 0;
    Replacing run = StartReplacing(editor);
    Match match = {};
    ShowWaitPointer();
    if (FindFromCaret(editor, run.search, &match)) {
        const bool selected = HasSelection(editor);
        BeginLongOperation();
        ReplaceMatches(&run, match);
        NotifyUndoState(editor);
        if (selected) NotifySelection(editor);
        NotifyRepaint(editor);
    }
    RestorePointer();
    return run.count;
}

}  // namespace nira
