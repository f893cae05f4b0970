// Find and Replace All on random documents, beside the plainest way of doing it. What Replace All leaves in
// the journal is compared with what one replacement at a time leaves there.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <random>

#include "host/naive_search.h"
#include "host/sanitizers.h"
#include "host/search_fixture.h"

namespace nira {
namespace {

constexpr int kDocuments = kSanitized ? 1500 : 20000;
constexpr int kFinds = 12;    // in each document
constexpr size_t kMost = 60;  // replacements, where they feed on themselves

class RandomSearch : public SearchTest {
  protected:
    size_t Below(size_t limit) { return random_() % limit; }

    std::u16string Units(size_t most) {
        const std::u16string alphabet = u"aAb ,.kK\x212A\xD83D\xDE00";
        const size_t letters = Below(3) == 0 ? 2 : alphabet.size();
        std::u16string text;
        for (size_t length = Below(most + 1); length > 0; --length) text += alphabet[Below(letters)];
        return text;
    }
    std::vector<std::u16string> Document() {
        std::vector<std::u16string> lines(1 + Below(6));
        for (std::u16string& line : lines) line = Units(Below(8) == 0 ? 300 : 30);
        return lines;
    }
    NaiveSearch Search(const std::vector<std::u16string>& lines) {
        NaiveSearch search;
        const std::u16string& line = lines[Below(lines.size())];
        search.pattern =
            line.empty() || Below(3) == 0 ? Units(3) : line.substr(Below(line.size()), 1 + Below(5));
        search.replacement = Units(Below(6) == 0 ? 40 : 4);
        if (Below(5) == 0) search.replacement.insert(Below(search.replacement.size() + 1), 1, u'\n');
        search.matchCase = Below(2) == 0;
        search.wholeWord = Below(3) == 0;
        const std::u16string separators[] = {u"", u",.", u"b", u",.;ab"};
        search.separators = separators[Below(4)];
        return search;
    }
    void Use(const NaiveSearch& search) {
        Pattern(search.pattern.c_str(), search.replacement.c_str());
        TheSearchState().matchCase = search.matchCase ? 1 : 0;
        TheSearchState().wholeWord = search.wholeWord ? 1 : 0;
        Separators(search.separators);
    }
    static std::u16string Joined(const std::vector<std::u16string>& lines) {
        std::u16string text = lines[0];
        for (size_t i = 1; i < lines.size(); ++i) text += u"\n" + lines[i];
        return text;
    }
    NaivePlace RandomPlace(const std::vector<std::u16string>& lines) {
        const size_t line = Below(lines.size());
        return {line, Below(lines[line].size() + 1)};
    }
    void Start(const std::vector<std::u16string>& lines, const NaivePlace& place) {
        Renew();
        Fill(Joined(lines));
        At(static_cast<int64_t>(place.line), static_cast<uint32_t>(place.column));
    }
    static Place PlaceOf(const NaivePlace& place, size_t units = 0) {
        return {static_cast<int32_t>(place.line), static_cast<int32_t>(place.column + units)};
    }

    // Every entry of the journal in words that can be compared.
    std::vector<std::u16string> Journal() const {
        std::vector<std::u16string> entries;
        for (int32_t i = 0; i < editor_->undo->count; ++i) {
            const UndoEntry& entry = editor_->undo->entries[i];
            std::u16string words = {static_cast<char16_t>(entry.kind), static_cast<char16_t>(entry.line),
                                    static_cast<char16_t>(entry.column)};
            const bool unit =
                KindOf(entry) == UndoKind::kDeleteChar || KindOf(entry) == UndoKind::kInsertChar;
            entries.push_back(
                words + (unit ? std::u16string(1, entry.character) : std::u16string(entry.text, entry.size)));
        }
        return entries;
    }
    void ReplaceOneByOne(size_t count) const {
        if (count == 0) return;
        ASSERT_TRUE(FindNext(editor_));
        for (size_t i = 1; i < count; ++i) ASSERT_TRUE(ReplaceAndFind(editor_));
        ReplaceAndFind(editor_);
        MessageLogReset();
    }

    std::mt19937 random_{20240518};
};

TEST_F(RandomSearch, FindsWhatThePlainWayFinds) {
    int found = 0;
    for (int i = 0; i < kDocuments; ++i) {
        const std::vector<std::u16string> lines = Document();
        NaivePlace place = RandomPlace(lines);
        Start(lines, place);
        for (int j = 0; j < kFinds; ++j) {
            const NaiveSearch search = Search(lines);
            Use(search);
            NaivePlace match;
            const bool expected = !search.pattern.empty() && NaiveFindNext(lines, search, place, &match);
            ASSERT_EQ(FindNext(editor_), expected) << "document " << i << ", search " << j;
            if (!expected) continue;
            ++found;
            ASSERT_EQ(Anchor(), PlaceOf(match)) << "document " << i << ", search " << j;
            ASSERT_EQ(Caret(), PlaceOf(match, search.pattern.size()));
            place = {match.line, match.column + search.pattern.size()};
        }
        Check();
    }
    EXPECT_GT(found, kDocuments * kFinds / 4);
}

TEST_F(RandomSearch, ReplaceAllIsAsManySingleReplacements) {
    size_t replaced = 0;
    size_t endless = 0;
    for (int i = 0; i < kDocuments; ++i) {
        const std::vector<std::u16string> lines = Document();
        const NaiveSearch search = Search(lines);
        if (search.pattern.empty()) continue;
        TheOptions().undoSize = Below(4) == 0 ? 1 : 256;
        const NaivePlace start = RandomPlace(lines);
        Use(search);
        std::vector<std::u16string> expected = lines;
        NaivePlace end = start;
        const size_t count = NaiveReplaceAll(&expected, search, &end, kMost);
        // Where it does not end by itself Esc ends it; elsewhere the system asks at every step, or never.
        HostPressEscapeAt(count == kMost ? kMost : Below(2) == 0 ? UINT32_MAX : 0);
        Start(lines, start);
        ASSERT_EQ(ReplaceAll(editor_), count) << "document " << i;
        Check();
        ASSERT_EQ(Text(), Joined(expected)) << "document " << i;
        ASSERT_EQ(Caret(), PlaceOf(end)) << "document " << i;
        const std::vector<std::u16string> journal = Journal();
        if (TheOptions().undoSize > 1) {
            while (CanUndo(editor_->undo)) UndoApply(editor_, true, false);
            ASSERT_EQ(Text(), Joined(lines)) << "document " << i;
            while (CanRedo(editor_->undo)) UndoApply(editor_, false, false);
            ASSERT_EQ(Text(), Joined(expected)) << "document " << i;
            Check();
        }
        Start(lines, start);
        ReplaceOneByOne(count);
        ASSERT_EQ(Journal(), journal) << "document " << i;
        replaced += count;
        endless += count == kMost ? 1 : 0;
    }
    EXPECT_GT(replaced, static_cast<size_t>(kDocuments));
    EXPECT_GT(endless, static_cast<size_t>(kDocuments) / 100);
}

}  // namespace
}  // namespace nira
