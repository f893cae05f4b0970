#include "host/naive_editor.h"

#include <algorithm>
#include <utility>

namespace nira {

namespace {

bool IsBlank(char16_t unit) { return unit == u'\t' || unit == u' '; }

std::u16string BlanksOf(std::u16string_view text) {
    std::u16string blanks;
    for (const char16_t unit : text) {
        if (!IsBlank(unit)) break;
        blanks += unit;
    }
    return blanks;
}

int64_t Columns(std::u16string_view blanks, int64_t tabSize) {
    int64_t columns = 0;
    for (const char16_t unit : blanks) columns += unit == u'\t' ? tabSize : 1;
    return columns;
}

// A text whose breaks are CR LF, CR or LF as lines.
NaiveLines Split(const std::u16string& text) {
    NaiveLines pieces(1);
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == u'\n' && i > 0 && text[i - 1] == u'\r') continue;
        if (text[i] == u'\r' || text[i] == u'\n') {
            pieces.emplace_back();
        } else {
            pieces.back() += text[i];
        }
    }
    return pieces;
}

}  // namespace

void NaiveEditor::Start(const NaiveLines& text) {
    lines = text;
    caret = {};
    anchor.reset();
    modified = false;
    steps.clear();
    done = 0;
}

// ---- editing ----

void NaiveEditor::Record(NaiveEdit edit, NaiveLines before, NaivePlace start, NaivePlace undone,
                         NaivePlace redone) {
    steps.resize(done);
    steps.push_back({edit, std::move(before), lines, start, undone, redone, modified});
    ++done;
    modified = true;
}

void NaiveEditor::Erase(NaivePlace from, NaivePlace to) {
    if (from == to) return;
    NaiveLines before = lines;
    const auto first = static_cast<size_t>(from.line);
    const auto last = static_cast<size_t>(to.line);
    const std::u16string tail = lines[last].substr(static_cast<size_t>(to.column));
    lines[first] = lines[first].substr(0, static_cast<size_t>(from.column)) + tail;
    for (size_t i = first; i < last; ++i) lines.erase(lines.begin() + from.line + 1);
    const bool unit = from.line == to.line && to.column == from.column + 1;
    Record(unit ? NaiveEdit::kDeleteUnit : NaiveEdit::kDeleteText, std::move(before), from, to, from);
    caret = from;
}

bool NaiveEditor::DeleteSelection() {
    if (HasSelection()) Erase(std::min(*anchor, caret), std::max(*anchor, caret));
    anchor.reset();
    return true;
}

void NaiveEditor::InsertAtCaret(const std::u16string& text) {
    if (text.empty()) return;
    NaiveLines before = lines;
    const NaivePlace start = caret;
    NaiveLines pieces = Split(text);
    const auto at = static_cast<size_t>(caret.line);
    const std::u16string tail = lines[at].substr(static_cast<size_t>(caret.column));
    lines[at].resize(static_cast<size_t>(caret.column));
    pieces.front() = lines[at] + pieces.front();
    caret = {caret.line + static_cast<int64_t>(pieces.size()) - 1,
             static_cast<int64_t>(pieces.back().size())};
    pieces.back() += tail;
    lines[at] = pieces[0];
    lines.insert(lines.begin() + start.line + 1, pieces.begin() + 1, pieces.end());
    const bool unit = text.size() == 1 && pieces.size() == 1;
    Record(unit ? NaiveEdit::kTypeUnit : NaiveEdit::kInsertText, std::move(before), start, start, caret);
}

void NaiveEditor::Replace(const std::u16string& text) {
    DeleteSelection();
    InsertAtCaret(text);
}

void NaiveEditor::NewLine() {
    DeleteSelection();
    InsertAtCaret(u"\n" + (keepIndent ? BlanksOf(Line()) : std::u16string()));
}

void NaiveEditor::Delete() {
    if (HasSelection()) {
        DeleteSelection();
        return;
    }
    anchor.reset();
    NaivePlace to = {caret.line, caret.column + 1};
    if (to.column > Length(caret.line)) to = {caret.line + 1, 0};
    if (to.line < static_cast<int64_t>(lines.size())) Erase(caret, to);
}

void NaiveEditor::Backspace() {
    if (HasSelection()) {
        DeleteSelection();
        return;
    }
    anchor.reset();
    if (caret == NaivePlace{}) return;
    caret = caret.column > 0 ? NaivePlace{caret.line, caret.column - 1}
                             : NaivePlace{caret.line - 1, Length(caret.line - 1)};
    Delete();
}

std::optional<std::u16string> NaiveEditor::Selection(std::u16string_view lineEnd) const {
    if (!HasSelection()) return {};
    const NaivePlace from = std::min(*anchor, caret);
    const NaivePlace to = std::max(*anchor, caret);
    std::u16string text;
    for (int64_t i = from.line; i <= to.line; ++i) {
        const std::u16string& line = lines[static_cast<size_t>(i)];
        const auto first = static_cast<size_t>(i == from.line ? from.column : 0);
        const auto end = static_cast<size_t>(i == to.line ? to.column : Length(i));
        text += line.substr(first, end - first);
        if (i < to.line) text += lineEnd;
    }
    return text;
}

void NaiveEditor::Paste(const std::u16string& text, bool smart) {
    DeleteSelection();
    smart ? PasteSmart(text) : InsertAtCaret(text);
}

void NaiveEditor::PasteSmart(const std::u16string& text) {
    const NaivePlace origin = caret;
    const std::u16string blanks = BlanksOf(Line());
    const int64_t target = Columns(blanks.substr(0, static_cast<size_t>(origin.column)), tabSize);
    const std::u16string stripped = BlanksOf(text);
    const int64_t source = Columns(stripped, tabSize);
    InsertAtCaret(text.substr(stripped.size()));
    if (caret.line == origin.line) return;
    int64_t base = source;
    for (int64_t i = origin.line + 1; i <= caret.line && smallestBase; ++i) {
        const std::u16string& line = lines[static_cast<size_t>(i)];
        const std::u16string indent = BlanksOf(line);
        const bool notPasted = i == caret.line && static_cast<int64_t>(indent.size()) > caret.column;
        if (!notPasted && indent != line) base = std::min(base, Columns(indent, tabSize));
    }
    const bool inIndentation = origin.column <= static_cast<int64_t>(blanks.size());
    if (inIndentation) IndentLines(origin.line, origin.line, source - base);
    IndentLines(origin.line + 1, caret.line, target - base);
}

void NaiveEditor::IndentLines(int64_t first, int64_t last, int64_t delta) {
    NaiveLines before = lines;
    NaivePlace redone = {first, 0};
    for (int64_t i = first; i <= last; ++i) {
        std::u16string& line = lines[static_cast<size_t>(i)];
        const std::u16string old = BlanksOf(line);
        const int64_t width = std::max<int64_t>(0, Columns(old, tabSize) + delta);
        if (width == Columns(old, tabSize)) continue;
        const std::u16string indent = std::u16string(static_cast<size_t>(width / tabSize), u'\t') +
                                      std::u16string(static_cast<size_t>(width % tabSize), u' ');
        line.replace(0, old.size(), indent);
        const int64_t change = static_cast<int64_t>(indent.size()) - static_cast<int64_t>(old.size());
        if (caret.line == i) caret.column = std::max<int64_t>(0, caret.column + change);
        if (anchor && anchor->line == i) anchor->column = std::max<int64_t>(0, anchor->column + change);
        if (i == first) redone.column = std::max<int64_t>(0, change);
    }
    if (lines != before) Record(NaiveEdit::kIndent, std::move(before), {first, 0}, {first, 0}, redone);
}

void NaiveEditor::Indent(int64_t delta) {
    const int64_t other = anchor ? anchor->line : caret.line;
    IndentLines(std::min(other, caret.line), std::max(other, caret.line), delta);
}

// ---- undo ----

void NaiveEditor::Undo(bool group) {
    anchor.reset();
    const size_t from = done;
    while (done > 0 && (done == from || (group && steps[done - 1].edit == steps[from - 1].edit))) {
        NaiveStep& step = steps[--done];
        lines = step.before;
        caret = step.undone;
        std::swap(modified, step.modified);
    }
}

void NaiveEditor::Redo(bool group) {
    anchor.reset();
    const size_t from = done;
    while (done < steps.size() && (done == from || (group && steps[done].edit == steps[from].edit))) {
        NaiveStep& step = steps[done++];
        lines = step.after;
        caret = step.redone;
        std::swap(modified, step.modified);
    }
}

void NaiveEditor::Saved() {
    for (NaiveStep& step : steps) step.modified = true;
    modified = false;
}

// ---- moving ----

void NaiveEditor::Begin(bool extend) {
    if (!extend && !marking) {
        anchor.reset();
    } else if (!anchor) {
        anchor = caret;
    }
}

void NaiveEditor::Left(bool extend) {
    Begin(extend);
    if (caret.column > 0) {
        --caret.column;
    } else if (caret.line > 0) {
        caret = {caret.line - 1, Length(caret.line - 1)};
    }
}

void NaiveEditor::Right(bool extend) {
    Begin(extend);
    if (caret.column < Length(caret.line)) {
        ++caret.column;
    } else if (caret.line + 1 < static_cast<int64_t>(lines.size())) {
        caret = {caret.line + 1, 0};
    }
}

bool NaiveEditor::Separates(char16_t unit) const {
    return IsBlank(unit) || separators.find(unit) != std::u16string::npos;
}

int64_t NaiveEditor::Scan(int64_t column, int direction) const {
    const std::u16string& line = Line();
    const auto length = static_cast<int64_t>(line.size());
    const auto separates = [&](int64_t at) {
        if (length == 0) return true;
        return Separates(line[static_cast<size_t>(std::min(at, length - 1))]);
    };
    const bool followed = separates(column);
    const int64_t limit = direction > 0 ? length : 0;
    for (int64_t at = column; at != limit; at += direction) {
        if (separates(at) != followed) return direction > 0 ? at : at + 1;
    }
    return direction < 0 && length > 0 && separates(0) != followed ? 1 : limit;
}

void NaiveEditor::WordRight(bool extend) {
    Begin(extend);
    const int64_t column = caret.column;
    int64_t to = Scan(column, 1);
    const bool onWord = column < Length(caret.line) && !Separates(Line()[static_cast<size_t>(column)]);
    if (to != column && !stopWordEnd && onWord) to = Scan(to, 1);
    if (to == column) {
        if (column == Length(caret.line)) Right(extend);
    } else {
        caret.column = to;
    }
}

void NaiveEditor::WordLeft(bool extend) {
    Begin(extend);
    const int64_t column = caret.column;
    int64_t to = column == 0 ? 0 : Scan(column - 1, -1);
    if (to != 0 && to != column && !stopWordEnd && Separates(Line()[static_cast<size_t>(column - 1)])) {
        to = Scan(to - 1, -1);
    }
    if (to == column) {
        if (column == 0) Left(extend);
    } else {
        caret.column = to;
    }
}

int64_t NaiveEditor::Width(std::u16string_view text) const { return Columns(text, tabSize) * unitWidth; }

std::vector<NaiveEditor::Row> NaiveEditor::AllRows() const {
    std::vector<Row> rows;
    for (int64_t i = 0; i < static_cast<int64_t>(lines.size()); ++i) {
        int64_t start = 0;
        for (const uint32_t next : breaks(i)) {
            rows.push_back({i, start, next, true});
            start = next;
        }
        rows.push_back({i, start, Length(i), false});
    }
    return rows;
}

int64_t NaiveEditor::ColumnAt(const Row& row, int64_t x) const {
    const std::u16string& line = lines[static_cast<size_t>(row.line)];
    const int64_t last = row.continues ? row.end - 1 : row.end;
    int64_t column = row.start;
    while (column < last && Width(line.substr(static_cast<size_t>(row.start),
                                              static_cast<size_t>(column + 1 - row.start))) <= x)
        ++column;
    return column;
}

void NaiveEditor::Rows(int64_t count, bool extend) {
    Begin(extend);
    const std::vector<Row> rows = AllRows();
    int64_t now = 0;
    for (size_t i = 0; i < rows.size(); ++i) {
        if (rows[i].line == caret.line && rows[i].start <= caret.column) now = static_cast<int64_t>(i);
    }
    const Row& from = rows[static_cast<size_t>(now)];
    const int64_t x =
        Width(Line().substr(static_cast<size_t>(from.start), static_cast<size_t>(caret.column - from.start)));
    const int64_t to = std::clamp<int64_t>(now + count, 0, static_cast<int64_t>(rows.size()) - 1);
    if (to == now) return;
    const Row& target = rows[static_cast<size_t>(to)];
    caret = {target.line, ColumnAt(target, x)};
}

void NaiveEditor::Point(int64_t x, int64_t y, bool extend) {
    Begin(extend);
    const std::vector<Row> rows = AllRows();
    const int64_t row =
        std::clamp<int64_t>(y < 0 ? 0 : y / rowHeight, 0, static_cast<int64_t>(rows.size()) - 1);
    const Row& target = rows[static_cast<size_t>(row)];
    caret = {target.line, ColumnAt(target, x)};
}

void NaiveEditor::Home(bool extend) {
    Begin(extend);
    const auto indent = static_cast<int64_t>(BlanksOf(Line()).size());
    caret.column = keepIndent && caret.column != indent ? indent : 0;
}

void NaiveEditor::End(bool extend) {
    Begin(extend);
    caret.column = Length(caret.line);
}

void NaiveEditor::Top(bool extend) {
    Begin(extend);
    caret = {};
}

void NaiveEditor::Bottom(bool extend) {
    Begin(extend);
    caret.line = static_cast<int64_t>(lines.size()) - 1;
    caret.column = Length(caret.line);
}

void NaiveEditor::GoToLine(int64_t line) {
    anchor.reset();
    caret = {std::clamp<int64_t>(line, 0, static_cast<int64_t>(lines.size()) - 1), 0};
}

void NaiveEditor::SelectAll() {
    marking = false;
    const auto last = static_cast<int64_t>(lines.size()) - 1;
    anchor = NaivePlace{last, Length(last)};
    caret = {};
}

void NaiveEditor::MarkStart() {
    marking = true;
    anchor = caret;
}

}  // namespace nira
