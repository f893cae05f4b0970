#include "search/search_history.h"

#include <cstring>

#include "host/files_support.h"
#include "settings/options.h"

namespace nira {
namespace {

constexpr RegistryRoot kUser = RegistryRoot::kCurrentUser;
constexpr const char16_t* kKey = u"Software\\NIRA";

using Texts = std::vector<std::u16string>;

class SearchHistories : public ServicesTest {
  protected:
    SearchHistories() { TheOptions().histLen = 10; }
    ~SearchHistories() override {
        HistoryFree(&history_);
        EXPECT_EQ(RegistryMemoryOpenHandles(), 0u) << "a key was left open";
        TheOptions() = {};
    }

    static void Store(std::u16string_view units, RegistryType type = RegistryType::kTexts) {
        StoreBytes(units.data(), units.size() * sizeof(char16_t), type);
    }
    static void StoreBytes(const void* bytes, size_t count, RegistryType type = RegistryType::kTexts) {
        RegistryMemorySet(kUser, kKey, kPatternHistory, type, bytes, static_cast<uint32_t>(count));
    }

    // The stored units, zeros and all.
    static std::u16string Stored(const char16_t* name = kPatternHistory) {
        const RegistryMemoryValue* value = RegistryMemoryFind(kUser, kKey, name);
        EXPECT_NE(value, nullptr);
        if (value == nullptr) return u"missing";
        EXPECT_EQ(value->type, RegistryType::kTexts);
        EXPECT_EQ(value->bytes.size() % sizeof(char16_t), 0u);
        std::u16string units(value->bytes.size() / sizeof(char16_t), u'\0');
        std::memcpy(units.data(), value->bytes.data(), value->bytes.size());
        return units;
    }

    Texts Loaded() {
        HistoryLoad(&history_, kPatternHistory);
        return Listed();
    }
    Texts Listed() const {
        Texts texts;
        const char16_t* text = nullptr;
        while ((text = NextHistoryText(history_, text)) != nullptr) texts.emplace_back(text);
        EXPECT_EQ(texts.size(), history_.count);
        return texts;
    }
    // Oldest first.
    void Add(const Texts& texts) {
        for (const std::u16string& text : texts) HistoryAdd(&history_, text.c_str());
    }

    SearchHistory history_ = {};
};

std::u16string Units(const char16_t* text, size_t count) { return {text, count}; }

TEST_F(SearchHistories, AreStoredEntryByEntryWithAFinalZero) {
    Add({u"x", u"foo"});

    EXPECT_TRUE(HistorySave(history_, kPatternHistory));

    EXPECT_EQ(Stored(), Units(u"foo\0x\0", 7));
}

TEST_F(SearchHistories, StoreTheReplacementsUnderTheirOwnName) {
    Add({u"new"});

    HistorySave(history_, kReplacementHistory);

    EXPECT_EQ(Stored(u"ReplaceHist"), Units(u"new\0", 5));
    EXPECT_EQ(RegistryMemoryFind(kUser, kKey, u"FindHist"), nullptr);
}

TEST_F(SearchHistories, AreStoredAsOneZeroWhenThereIsNothing) {
    EXPECT_TRUE(HistorySave(history_, kPatternHistory));

    EXPECT_EQ(Stored(), Units(u"", 1));
    EXPECT_EQ(Loaded(), Texts{});
}

TEST_F(SearchHistories, KeepEveryUnitOfAText) {
    const std::u16string odd = u" \xD800\t\xDC00\r\n\xFFFF ";
    Add({odd});
    HistorySave(history_, kPatternHistory);

    EXPECT_EQ(Stored(), odd + Units(u"\0", 2));
    EXPECT_EQ(Loaded(), Texts{odd});
}

TEST_F(SearchHistories, LoadInTheStoredOrder) {
    Store(Units(u"foo\0x\0", 7));

    EXPECT_EQ(Loaded(), (Texts{u"foo", u"x"}));
}

TEST_F(SearchHistories, LoadingReplacesWhatWasThere) {
    Add({u"old"});
    Store(Units(u"new\0", 5));

    EXPECT_EQ(Loaded(), Texts{u"new"});
}

TEST_F(SearchHistories, LoadingMakesTheKeyAndFindsNothingInIt) {
    EXPECT_EQ(Loaded(), Texts{});
    EXPECT_TRUE(RegistryMemoryHasKey(kUser, kKey));
}

TEST_F(SearchHistories, LoadOnlyAsManyEntriesAsTheOptionsKeep) {
    TheOptions().histLen = 2;
    Store(Units(u"a\0b\0c\0", 7));

    EXPECT_EQ(Loaded(), (Texts{u"a", u"b"}));
}

TEST_F(SearchHistories, LoadUpToTheFirstEmptyEntry) {
    Store(Units(u"a\0\0b\0", 6));

    EXPECT_EQ(Loaded(), Texts{u"a"});
}

TEST_F(SearchHistories, LoadAValueWithoutItsFinalZeros) {
    Store(u"ab");
    EXPECT_EQ(Loaded(), Texts{u"ab"});
    Store(Units(u"ab\0cd", 5));
    EXPECT_EQ(Loaded(), (Texts{u"ab", u"cd"}));
    Store(Units(u"ab\0", 3));
    EXPECT_EQ(Loaded(), Texts{u"ab"});

    // What comes out of it is whole again.
    HistorySave(history_, kPatternHistory);
    EXPECT_EQ(Stored(), Units(u"ab\0", 4));
}

TEST_F(SearchHistories, LoadAnOddNumberOfBytesWithoutTheLastOne) {
    StoreBytes("a\0b\0c", 5);
    EXPECT_EQ(Loaded(), Texts{u"ab"});
    StoreBytes("a", 1);
    EXPECT_EQ(Loaded(), Texts{});
}

TEST_F(SearchHistories, LoadNothingFromAnEmptyValue) {
    StoreBytes("", 0);
    EXPECT_EQ(Loaded(), Texts{});
}

TEST_F(SearchHistories, LoadNothingFromAValueOfAnotherType) {
    for (const RegistryType type : {RegistryType::kString, RegistryType::kBinary, RegistryType::kDword}) {
        Store(Units(u"ab\0", 4), type);
        EXPECT_EQ(Loaded(), Texts{}) << static_cast<uint32_t>(type);
    }
}

TEST_F(SearchHistories, AValueOfAnotherTypeIsReplacedBySaving) {
    RegistryMemorySetDword(kUser, kKey, kPatternHistory, 7);
    Loaded();
    Add({u"a"});

    HistorySave(history_, kPatternHistory);

    EXPECT_EQ(Stored(), Units(u"a\0", 3));
}

TEST_F(SearchHistories, PutANewTextInFront) {
    Add({u"a", u"b", u"c"});

    EXPECT_EQ(Listed(), (Texts{u"c", u"b", u"a"}));
}

TEST_F(SearchHistories, DropTheOldestTextWhenFull) {
    TheOptions().histLen = 3;
    Add({u"a", u"b", u"c"});

    EXPECT_TRUE(HistoryAdd(&history_, u"d"));

    EXPECT_EQ(Listed(), (Texts{u"d", u"c", u"b"}));
}

TEST_F(SearchHistories, DropAllBeyondALengthThatHasBecomeShorter) {
    Add({u"a", u"b", u"c", u"d"});
    TheOptions().histLen = 2;

    HistoryAdd(&history_, u"e");

    EXPECT_EQ(Listed(), (Texts{u"e", u"d"}));
}

TEST_F(SearchHistories, ALengthOfOneKeepsTheNewestText) {
    TheOptions().histLen = 1;
    Add({u"a", u"b"});

    EXPECT_EQ(Listed(), Texts{u"b"});
}

TEST_F(SearchHistories, ATextThatIsListedStaysWhereItIsWhateverItsCase) {
    Add({u"a", u"b", u"\x0416uk"});

    EXPECT_FALSE(HistoryAdd(&history_, u"B"));
    EXPECT_FALSE(HistoryAdd(&history_, u"\x0436UK"));
    EXPECT_FALSE(HistoryAdd(&history_, u"a"));

    EXPECT_EQ(Listed(), (Texts{u"\x0416uk", u"b", u"a"}));
}

TEST_F(SearchHistories, ATextThatBeginsLikeAListedOneIsNew) {
    Add({u"abc"});

    EXPECT_TRUE(HistoryAdd(&history_, u"ab"));
    EXPECT_TRUE(HistoryAdd(&history_, u"abcd"));

    EXPECT_EQ(Listed(), (Texts{u"abcd", u"ab", u"abc"}));
}

TEST_F(SearchHistories, AnEmptyTextIsNoEntry) {
    Add({u"a"});

    EXPECT_FALSE(HistoryAdd(&history_, u""));
    HistorySave(history_, kPatternHistory);

    EXPECT_EQ(Stored(), Units(u"a\0", 3)) << "it would end the list for every reader";
}

TEST_F(SearchHistories, ALengthOfZeroKeepsNothing) {
    TheOptions().histLen = 0;
    Store(Units(u"a\0", 3));
    EXPECT_EQ(Loaded(), Texts{});

    EXPECT_TRUE(HistoryAdd(&history_, u"b"));
    EXPECT_TRUE(HistoryAdd(&history_, u"c"));
    EXPECT_EQ(Listed(), (Texts{u"c", u"b"})) << "the open dialog lists it all the same";
    HistorySave(history_, kPatternHistory);

    EXPECT_EQ(Stored(), Units(u"", 1));
}

TEST_F(SearchHistories, AHugeLengthKeepsEverything) {
    TheOptions().histLen = 4000000000;
    Store(Units(u"a\0b\0", 5));
    EXPECT_EQ(Loaded(), (Texts{u"a", u"b"}));

    HistoryAdd(&history_, u"c");
    HistorySave(history_, kPatternHistory);

    EXPECT_EQ(Stored(), Units(u"c\0a\0b\0", 7));
}

// "entry 99999" ... "entry 0"
std::u16string ManyEntries() {
    std::u16string units;
    for (int i = 100000; i-- > 0;) {
        const std::string text = "entry " + std::to_string(i);
        units.append(text.begin(), text.end());
        units += u'\0';
    }
    return units + u'\0';
}

TEST_F(SearchHistories, OfAHundredThousandEntriesLoadAllOrTheFirst) {
    const std::u16string entries = ManyEntries();
    Store(entries);
    EXPECT_EQ(Loaded().size(), 10u);
    TheOptions().histLen = 4000000000;
    EXPECT_EQ(Loaded().size(), 100000u);

    HistoryAdd(&history_, u"new");
    HistorySave(history_, kPatternHistory);

    EXPECT_EQ(Stored(), Units(u"new\0", 4) + entries);
}

TEST_F(SearchHistories, AreNotAddedToWhenMemoryRunsOut) {
    TheOptions().histLen = 2;
    Add({u"a", u"b"});

    FaultScope fault(FaultPoint::kAllocation, {});
    EXPECT_FALSE(Guarded([&] { HistoryAdd(&history_, u"c"); }));

    EXPECT_EQ(Listed(), (Texts{u"b", u"a"}));
}

TEST_F(SearchHistories, SurviveEveryFailureOfLoadingAndSaving) {
    for (const FaultPoint point : {FaultPoint::kAllocation, FaultPoint::kAnyRegistry}) {
        for (uint32_t call = 1;; ++call) {
            Store(Units(u"a\0b\0", 5));
            FaultScope fault(point, {.first = call});
            const bool whole = Guarded([&] { HistoryLoad(&history_, kPatternHistory); });
            const bool saved = HistorySave(history_, kPatternHistory);
            EXPECT_EQ(RegistryMemoryOpenHandles(), 0u);
            EXPECT_TRUE(Listed().size() == 2 || Listed().empty());
            if (fault.Hits() == 0) {
                EXPECT_TRUE(whole && saved);
                break;
            }
            EXPECT_TRUE(!whole || !saved || Listed().empty()) << call;
        }
    }
}

}  // namespace
}  // namespace nira
