#include "search/search_pattern.h"

#include <algorithm>

#include "app/services/memory.h"
#include "engine/text_copy.h"
#include "search/search_state.h"
#include "view/words.h"

namespace nira {

namespace {

char16_t* WordAtCaret(const Editor* editor) {
    const LineRecord& line = editor->lines[editor->caret.line];
    const auto caret = static_cast<uint32_t>(editor->caretColumn);
    uint32_t first = caret;
    while (first > 0 && !IsSeparator(line.text[first - 1])) --first;
    uint32_t end = caret;
    while (end < line.length && !IsSeparator(line.text[end])) ++end;
    if (first == end) return nullptr;
    const size_t units = std::min<size_t>(end - first, kLongestPattern);
    char16_t* word = MemAllocArray<char16_t>(nullptr, units + 1);
    std::copy_n(line.text + first, units, word);
    return word;
}

// As many lines as fill the pattern: the rest of a large selection is not copied to be thrown away.
char16_t* SelectedText(const Editor* editor) {
    SelectionRange range = SelectionRangeOf(editor);
    size_t most = 0;
    for (uint32_t line = range.line1; line < range.line2 && most <= kLongestPattern; ++line) {
        const uint32_t from = line == range.line1 ? range.column1 : 0;
        most += editor->lines[line].length - from + 1;
        if (most > kLongestPattern) {
            range.line2 = line;
            range.column2 = editor->lines[line].length;
        }
    }
    const uint32_t from = range.line1 == range.line2 ? range.column1 : 0;
    range.column2 = std::min(range.column2, from + uint32_t{kLongestPattern});
    uint32_t units = 0;
    char16_t* text = TextCopyRange(editor, nullptr, editor->lineEnd, range.line1, range.column1, range.line2,
                                   range.column2, &units);
    if (units > kLongestPattern) text[kLongestPattern] = 0;
    return text;
}

}  // namespace

char16_t* ProposedPattern(const Editor* editor) {
    char16_t* text = nullptr;
    if (editor != nullptr) text = HasSelection(editor) ? SelectedText(editor) : WordAtCaret(editor);
    return text != nullptr ? text : MemStrDup(nullptr, TheSearchState().pattern);
}

}  // namespace nira
