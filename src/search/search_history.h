// What was searched for and put in its place, newest first, kept in the registry between runs.
//
// A history is one block of terminated texts in a row, which is how the registry keeps them too. It is loaded
// when a dialog opens, added to when a search is confirmed, and saved whole. An empty text is no entry: in
// the stored form it would be the end of the list, and what stands behind it would be lost.
//
// The Options' history length is used as it is stored. 0 keeps nothing; a huge one keeps everything.
#pragma once

#include <cstddef>
#include <cstdint>

namespace nira {

// The names of the two histories in the registry.
constexpr const char16_t* kPatternHistory = u"FindHist";
constexpr const char16_t* kReplacementHistory = u"ReplaceHist";

struct SearchHistory {
    char16_t* texts;  // `count` texts, each with its terminator; local heap; null while there is none
    size_t units;     // of all of them, terminators included
    uint32_t count;
};

// The text behind `text` (null: the first one) or null behind the last.
const char16_t* NextHistoryText(const SearchHistory& history, const char16_t* text);

// Whether the text is listed, whatever its case.
bool HistoryHolds(const SearchHistory& history, const char16_t* text);

// Replaces the history by the stored one: at most as many entries as the Options keep, up to the first empty
// one. A value that is missing or no list of texts gives an empty history; the last text need not be
// terminated. Unwinds when memory runs out.
void HistoryLoad(SearchHistory* history, const char16_t* name);

// Puts a text in front and drops the last ones beyond the Options' history length. False, with nothing
// changed, for an empty text and for one that is listed already: that one stays where it is. Unwinds when
// memory runs out, with nothing changed.
bool HistoryAdd(SearchHistory* history, const char16_t* text);

// Stores the entries that the Options keep. False when the registry refuses or memory runs out.
bool HistorySave(const SearchHistory& history, const char16_t* name);

void HistoryFree(SearchHistory* history);

}  // namespace nira
