#include "host/naive_search.h"

namespace nira {

namespace {

constexpr struct {
    char16_t upper;
    char16_t lower;
} kPairs[] = {{u'A', u'a'},           {u'B', u'b'},           {u'C', u'c'},          {u'K', u'k'},
              {u'I', u'i'},           {u'\x212A', u'k'},      {u'\x0130', u'i'},     {u'\x00C4', u'\x00E4'},
              {u'\x03A3', u'\x03C3'}, {u'\x01C4', u'\x01C6'}, {u'\x01C5', u'\x01C6'}};

bool Same(char16_t left, char16_t right, bool matchCase) {
    return matchCase ? left == right : NaiveLower(left) == NaiveLower(right);
}

bool IsNaiveSeparator(const NaiveSearch& search, char16_t unit) {
    return unit == u' ' || unit == u'\t' || search.separators.find(unit) != std::u16string::npos;
}

bool SameRest(const std::u16string& text, size_t place, const std::u16string& pattern, bool matchCase) {
    for (size_t i = 2; i < pattern.size(); ++i) {
        if (!Same(text[place + i], pattern[i], matchCase)) return false;
    }
    return Same(text[place], pattern[0], matchCase);
}

bool IsWord(const std::u16string& line, size_t start, size_t end, const NaiveSearch& search) {
    if (start > 0 && !IsNaiveSeparator(search, line[start - 1])) return false;
    return end == line.size() || IsNaiveSeparator(search, line[end]);
}

}  // namespace

char16_t NaiveLower(char16_t unit) {
    for (const auto& pair : kPairs) {
        if (pair.upper == unit) return pair.lower;
    }
    return unit;
}

int NaiveFindInLine(const std::u16string& text, const std::u16string& pattern, bool matchCase) {
    if (pattern.empty() || pattern.size() > text.size()) return -1;
    if (pattern.size() == 1) {
        for (size_t i = 0; i < text.size(); ++i) {
            if (Same(text[i], pattern[0], matchCase)) return static_cast<int>(i);
        }
        return -1;
    }
    const bool same = Same(pattern[0], pattern[1], matchCase);
    for (size_t place = 0; place <= text.size() - pattern.size();) {
        if (Same(text[place + 1], pattern[1], matchCase)) {
            if (SameRest(text, place, pattern, matchCase)) return static_cast<int>(place);
            place += same ? 1 : 2;
        } else {
            place += same ? 2 : 1;
        }
    }
    return -1;
}

bool NaiveFindNext(const std::vector<std::u16string>& lines, const NaiveSearch& search, NaivePlace from,
                   NaivePlace* match) {
    const size_t size = search.pattern.size();
    bool wrapped = false;
    for (size_t line = from.line, column = from.column;;) {
        while (column < lines[line].size()) {
            const int found = NaiveFindInLine(lines[line].substr(column), search.pattern, search.matchCase);
            if (found < 0) break;
            const size_t start = column + static_cast<size_t>(found);
            column = start + size;
            if (search.wholeWord && !IsWord(lines[line], start, column, search)) continue;
            *match = {line, start};
            return true;
        }
        ++line;
        column = 0;
        if (wrapped && line > from.line) return false;
        if (line == lines.size()) {
            line = 0;
            wrapped = true;
        }
    }
}

size_t NaiveReplaceAll(std::vector<std::u16string>* lines, const NaiveSearch& search, NaivePlace* place,
                       size_t most) {
    size_t count = 0;
    NaivePlace match;
    while (count < most && NaiveFindNext(*lines, search, *place, &match)) {
        std::u16string tail = (*lines)[match.line].substr(match.column + search.pattern.size());
        (*lines)[match.line].erase(match.column);
        *place = {match.line, 0};
        for (const char16_t unit : search.replacement) {
            if (unit == u'\n') {
                ++place->line;
                lines->insert(lines->begin() + static_cast<std::ptrdiff_t>(place->line), std::u16string());
            } else {
                (*lines)[place->line] += unit;
            }
        }
        place->column = (*lines)[place->line].size();
        (*lines)[place->line] += tail;
        ++count;
    }
    return count;
}

}  // namespace nira
