#include "search/line_search.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

#include "host/naive_search.h"
#include "host/sanitizers.h"
#include "search/find.h"
#include "search/steady_search.h"

namespace nira {
namespace {

constexpr int kCases = kSanitized ? 60000 : 300000;

int Find(const std::u16string& text, const std::u16string& pattern, bool matchCase) {
    return FindInLine(text.data(), static_cast<int32_t>(text.size()), pattern.data(),
                      static_cast<int32_t>(pattern.size()), matchCase);
}

int FindSteadily(const std::u16string& text, const std::u16string& pattern, bool matchCase) {
    const uint32_t place = SearchSteadily(pattern.data(), static_cast<uint32_t>(pattern.size()), matchCase,
                                          text.data(), static_cast<uint32_t>(text.size()));
    return place == UINT32_MAX ? -1 : static_cast<int>(place);
}

TEST(FindInLine, GivesTheFirstOccurrence) {
    EXPECT_EQ(Find(u"abcabc", u"bc", true), 1);
    EXPECT_EQ(Find(u"abcabc", u"c", true), 2);
    EXPECT_EQ(Find(u"aaaa", u"aa", true), 0);
    EXPECT_EQ(Find(u"abcabc", u"cb", true), -1);
    EXPECT_EQ(Find(u"aab", u"ab", true), 1) << "the first two units are compared the wrong way round";
}

TEST(FindInLine, FindsAtEveryPlaceOfALine) {
    for (size_t length = 1; length <= 100; ++length) {
        for (size_t size = 1; size <= std::min<size_t>(length, 5); ++size) {
            for (size_t place = 0; place + size <= length; ++place) {
                std::u16string text(length, u'-');
                const std::u16string pattern = std::u16string(u"abcde").substr(0, size);
                text.replace(place, size, pattern);
                ASSERT_EQ(Find(text, pattern, true), static_cast<int>(place)) << length << " " << size;
                ASSERT_EQ(Find(text, std::u16string(u"ABCDE").substr(0, size), false),
                          static_cast<int>(place));
            }
        }
    }
}

TEST(FindInLine, NothingIsFoundInNothing) {
    EXPECT_EQ(Find(u"", u"a", true), -1);
    EXPECT_EQ(Find(u"a", u"", true), -1);
    EXPECT_EQ(Find(u"", u"", false), -1);
    EXPECT_EQ(Find(u"a", u"ab", false), -1);
    EXPECT_EQ(FindInLine(nullptr, 0, u"a", 1, true), -1);
}

TEST(FindInLine, CaseCountsOnlyWhenAsked) {
    EXPECT_EQ(Find(u"xabc", u"ABC", false), 1);
    EXPECT_EQ(Find(u"xabc", u"ABC", true), -1);
    EXPECT_EQ(Find(u"x\x00C4", u"\x00E4", false), 1);
    EXPECT_EQ(Find(u"a\x212A"
                   u"b",
                   u"KB", false),
              1)
        << "the Kelvin sign is a k";
    EXPECT_EQ(Find(u"K", u"\x212A", false), 0);
    EXPECT_EQ(Find(u"\x0130", u"i", false), 0);
    EXPECT_EQ(Find(u"\x0131", u"i", false), -1) << "an i without its dot is a letter of its own";
    EXPECT_EQ(Find(u"\x03C2", u"\x03A3", false), -1) << "simple lower-casing knows no word ends";
}

TEST(FindInLine, HalvesOfPairsAreUnitsLikeOthers) {
    EXPECT_EQ(Find(u"a\xD83D\xDE00", u"\xDE00", true), 2);
    EXPECT_EQ(Find(u"\xD83D\xD83D\xDE00", u"\xD83D\xDE00", false), 1);
    EXPECT_EQ(Find(u"\xDE00\xD83D", u"\xD83D\xDE00", false), -1);
}

// A line in which a pattern nearly occurs at every place is read once all the same. Without the steady search
// this takes hours.
TEST(FindInLine, IsNeverSlow) {
    constexpr size_t kLength = 4000000;
    constexpr size_t kPattern = 10000;
    std::u16string text(kLength, u'a');
    std::u16string pattern(kPattern, u'a');
    pattern[kPattern / 2] = u'b';
    EXPECT_EQ(Find(text, pattern, true), -1);
    EXPECT_EQ(Find(text, pattern, false), -1);
    text.replace(kLength - kPattern, kPattern, pattern);
    EXPECT_EQ(Find(text, pattern, true), static_cast<int>(kLength - kPattern));
    text[kLength - 1] = u'A';
    EXPECT_EQ(Find(text, pattern, false), static_cast<int>(kLength - kPattern));
    EXPECT_EQ(Find(text, pattern, true), -1);
}

// Random lines over few letters, so that most of a pattern is found nearly everywhere; half of the patterns
// are cut out of the line.
class RandomLines : public testing::Test {
  protected:
    std::u16string Text(size_t most) {
        static const std::u16string kAlphabets[] = {u"ab",
                                                    u"aAbB",
                                                    u"aAbBkK\x212AiI\x0130",
                                                    u"ab ,.",
                                                    u"a\xD83D\xDE00\xD83D",
                                                    u"\x01C4\x01C5\x01C6\x00C4\x00E4\x03A3\x03C3\x03C2"};
        const std::u16string& alphabet = kAlphabets[Below(std::size(kAlphabets))];
        std::u16string text;
        const size_t length = Below(most + 1);
        const size_t period = Below(3) == 0 ? 1 + Below(7) : length + 1;
        while (text.size() < length) {
            text += text.size() >= period && Below(40) != 0 ? text[text.size() - period]
                                                            : alphabet[Below(alphabet.size())];
        }
        return text;
    }
    std::u16string PatternFor(const std::u16string& text, size_t most) {
        if (text.empty() || Below(3) == 0) return Text(std::min<size_t>(most, 4));
        const size_t place = Below(text.size());
        std::u16string pattern = text.substr(place, 1 + Below(most));
        if (Below(2) == 0) pattern[Below(pattern.size())] = text[Below(text.size())];
        return pattern;
    }
    size_t Below(size_t limit) { return random_() % limit; }

    std::mt19937 random_{20240517};
};

TEST_F(RandomLines, GiveWhatThePlainSchemeGives) {
    int found = 0;
    for (int i = 0; i < kCases; ++i) {
        const std::u16string text = Text(i % 8 == 0 ? 400 : 90);
        const std::u16string pattern = PatternFor(text, i % 8 == 0 ? 120 : 12);
        const bool matchCase = Below(2) == 0;
        const int expected = NaiveFindInLine(text, pattern, matchCase);
        ASSERT_EQ(Find(text, pattern, matchCase), expected) << "case " << i;
        if (!pattern.empty()) {
            ASSERT_EQ(FindSteadily(text, pattern, matchCase), expected) << "case " << i;
        }
        found += expected >= 0 ? 1 : 0;
    }
    EXPECT_GT(found, kCases / 4);
    EXPECT_LT(found, kCases * 3 / 4);
}

}  // namespace
}  // namespace nira
