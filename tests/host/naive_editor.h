// What a person does to a document, on the plainest text: a list of strings, a caret, an anchor, and the
// whole text before and after each edit for undo.
//
// Nothing of the product is used. Rows are the one thing taken from outside, as the columns where each line
// is broken: layout has tests of its own.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace nira {

using NaiveLines = std::vector<std::u16string>;

struct NaivePlace {
    int64_t line = 0;
    int64_t column = 0;

    bool operator==(const NaivePlace&) const = default;
    bool operator<(const NaivePlace& other) const {
        return line != other.line ? line < other.line : column < other.column;
    }
};

enum class NaiveEdit { kTypeUnit, kDeleteUnit, kInsertText, kDeleteText, kIndent };

struct NaiveStep {
    NaiveEdit edit;
    NaiveLines before;
    NaiveLines after;
    NaivePlace start;
    NaivePlace undone;  // where the caret is after undo ...
    NaivePlace redone;  // ... and after redo
    bool modified;      // the flag that applying the step brings back
};

class NaiveEditor {
  public:
    void Start(const NaiveLines& text);

    void Type(char16_t unit) { Replace(std::u16string(1, unit)); }
    void NewLine();
    void Backspace();
    void Delete();
    void Paste(const std::u16string& text, bool smart);
    std::optional<std::u16string> Selection(std::u16string_view lineEnd) const;
    bool Cut() { return HasSelection() && DeleteSelection(); }
    void Indent(int64_t delta);

    void Left(bool extend);
    void Right(bool extend);
    void WordLeft(bool extend);
    void WordRight(bool extend);
    void Rows(int64_t rows, bool extend);
    void Home(bool extend);
    void End(bool extend);
    void Top(bool extend);
    void Bottom(bool extend);
    void Point(int64_t x, int64_t y, bool extend);
    void GoToLine(int64_t line);
    void SelectAll();
    void MarkStart();
    void MarkEnd() { marking = false; }

    void Undo(bool group);
    void Redo(bool group);
    void Saved();

    bool HasSelection() const { return anchor.has_value() && *anchor != caret; }

    NaiveLines lines = NaiveLines(1);
    NaivePlace caret;
    std::optional<NaivePlace> anchor;
    bool marking = false;
    bool modified = false;
    std::vector<NaiveStep> steps;
    size_t done = 0;  // of the steps

    // Where a line's rows begin behind its first.
    std::function<std::vector<uint32_t>(int64_t line)> breaks;
    int64_t unitWidth = 8;
    int64_t rowHeight = 16;
    int64_t tabSize = 4;
    bool keepIndent = false;
    bool stopWordEnd = false;
    bool smallestBase = false;
    std::u16string separators;

  private:
    struct Row {
        int64_t line;
        int64_t start;
        int64_t end;
        bool continues;
    };

    const std::u16string& Line() const { return lines[static_cast<size_t>(caret.line)]; }
    int64_t Length(int64_t line) const {
        return static_cast<int64_t>(lines[static_cast<size_t>(line)].size());
    }
    void Record(NaiveEdit edit, NaiveLines before, NaivePlace start, NaivePlace undone, NaivePlace redone);
    void Begin(bool extend);
    bool DeleteSelection();
    void Erase(NaivePlace from, NaivePlace to);
    void InsertAtCaret(const std::u16string& text);
    void Replace(const std::u16string& text);
    void PasteSmart(const std::u16string& text);
    void IndentLines(int64_t first, int64_t last, int64_t delta);

    bool Separates(char16_t unit) const;
    int64_t Scan(int64_t column, int direction) const;
    int64_t Width(std::u16string_view text) const;
    std::vector<Row> AllRows() const;
    int64_t ColumnAt(const Row& row, int64_t x) const;
};

}  // namespace nira
