#include "search/find.h"

#include "app/services/memory.h"
#include "app/services/notices.h"
#include "base/utf16.h"
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

bool StandsAlone(const LineRecord& line, uint32_t start, uint32_t end) {
    if (start > 0 && !IsSeparator(line.text[start - 1])) return false;
    return end == line.length || IsSeparator(line.text[end]);
}

// The first match in a line from `column` on. What overlaps a match that is part of a word is not tried.
uint32_t FindInRecord(const LineSearch& search, const LineRecord& line, uint32_t column) {
    while (column < line.length) {
        const uint32_t start = SearchLine(search, line.text, column, line.length);
        if (start == kNoMatch) return kNoMatch;
        column = start + search.length;
        if (TheSearchState().wholeWord == 0 || StandsAlone(line, start, column)) return start;
    }
    return kNoMatch;
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
    const LineSearch search = PreparedSearch();
    Match match = {};
    uint32_t count = 0;
    ShowWaitPointer();
    BeginLongOperation();
    editor->flags |= kFlagPaintDeferred;
    while (FindFromCaret(editor, search, &match)) {
        SelectMatch(editor, match, search.length);
        if (!ReplaceSelection(editor)) break;
        ++count;
        if (!KeepAnswering()) break;
    }
    editor->flags &= ~(kFlagPaintDeferred | kFlagRepaintPending);
    if (count > 0) NotifyRepaint(editor);
    RestorePointer();
    return count;
}

}  // namespace nira
