#include "settings/options_pages.h"

#include <iterator>
#include <vector>

#include "base/utf16.h"
#include "engine/undo_journal.h"
#include "host/files_support.h"
#include "resources/resource.h"
#include "settings/options_store.h"
#include "view/fonts.h"

namespace nira {
namespace {

using Text = std::u16string;

Text FontTextOf(const Text& description, size_t room = 200) {
    std::vector<char16_t> target(room, u'#');
    const size_t units = FontText(target.data(), room, description.c_str());
    EXPECT_LT(units, room);
    EXPECT_EQ(target[units], 0);
    return Text(target.data());
}

TEST(ReadNumber, ReadsDigits) {
    EXPECT_EQ(ReadNumber(u"7"), 7);
    EXPECT_EQ(ReadNumber(u"0064"), 64);
    EXPECT_EQ(ReadNumber(u"2147483647"), INT32_MAX);
}

TEST(ReadNumber, NothingAndLettersAreZero) {
    for (const char16_t* text : {u"", u"  ", u"abc", u"x5", u"+", u"-", u"--5", u"+-5", u"- 5", u"\u0665"}) {
        EXPECT_EQ(ReadNumber(text), 0) << Utf16Length(text);
    }
}

TEST(ReadNumber, SkipsWhiteSpaceInFrontAndTakesOneSign) {
    EXPECT_EQ(ReadNumber(u"  12"), 12);
    EXPECT_EQ(ReadNumber(u"\t\r\n\v\f 12"), 12);
    EXPECT_EQ(ReadNumber(u"+12"), 12);
    EXPECT_EQ(ReadNumber(u"-12"), -12);
    EXPECT_EQ(ReadNumber(u" -12"), -12);
    EXPECT_EQ(ReadNumber(u"\u00A012"), 0) << "no other blank counts";
}

TEST(ReadNumber, StopsAtTheFirstThingThatIsNoDigit) {
    EXPECT_EQ(ReadNumber(u"12abc"), 12);
    EXPECT_EQ(ReadNumber(u"1 2"), 1);
    EXPECT_EQ(ReadNumber(u"3.9"), 3);
}

TEST(ReadNumber, NumbersTooLargeStopAtTheLastThereIs) {
    EXPECT_EQ(ReadNumber(u"2147483648"), INT32_MAX);
    EXPECT_EQ(ReadNumber(u"4294967297"), INT32_MAX) << "1 beyond 32 bits is not 1";
    EXPECT_EQ(ReadNumber(u"-2147483648"), INT32_MIN);
    EXPECT_EQ(ReadNumber(u"-99999999999"), INT32_MIN);
    EXPECT_EQ(ReadNumber(Text(5000, u'9').c_str()), INT32_MAX);
    EXPECT_EQ(ReadNumber((u"-" + Text(5000, u'9')).c_str()), INT32_MIN);
}

TEST(FontText, IsTheFaceAndTheSize) {
    EXPECT_EQ(FontTextOf(u"Courier New\u100E"), u"Courier New, 14 pt");
    EXPECT_EQ(FontTextOf(u"Arial\u1FFF"), u"Arial, 255 pt");
    EXPECT_EQ(FontTextOf(u"A & B\x01"), u"A & B, 1 pt");
}

TEST(FontText, CopesWithOddDescriptions) {
    EXPECT_EQ(FontTextOf(u""), u", 0 pt");
    EXPECT_EQ(FontTextOf(u"\x0A"), u", 10 pt");
    EXPECT_EQ(FontTextOf(u"Face\u0100"), u"Face, 0 pt") << "styles without a size";
    EXPECT_EQ(FontTextOf(Text(150, u'x') + u"\x0A"), Text(150, u'x') + u", 10 pt");
}

TEST(FontText, FitsTheRoomItAsksFor) {
    for (const Text& description : {Text(), Text(u"\x0A"), Text(u"A\u10FF"), Text(200, u'x') + u"\u10FF"}) {
        const Text whole = FontTextOf(description, 1000);
        EXPECT_EQ(FontTextOf(description, FontTextRoom(description.c_str())), whole);
    }
}

TEST(FontText, ALongFaceLosesItsEndAndKeepsTheSize) {
    EXPECT_EQ(FontTextOf(Text(300, u'x') + u"\x0A", 20), Text(12, u'x') + u", 10 pt");
    EXPECT_EQ(FontTextOf(u"Courier New\u100E", 8), u", 14 pt");
    EXPECT_EQ(FontTextOf(u"Courier New\u100E", 4), u", 1");
}

class OptionsPages : public ServicesTest {
  protected:
    OptionsPages() {
        InitFonts(nullptr);
        LoadOptions();
        MakeSheetCopy();
    }
    ~OptionsPages() override {
        FaultResetAll();
        FreeSheetCopy();
        FreeOptions();
        ShutdownFonts();
    }

    static SheetCopy& Copy() { return *TheOptions().sheetCopy; }
    static const NumberField& UndoSize() { return EditorPageNumbers().fields[0]; }
    static const NumberField& HistoryLength() { return EditorPageNumbers().fields[1]; }
    static const NumberField& TabSize() { return IndentPageNumbers().fields[0]; }
    static void Choose(const char16_t* font) { TakeFont(MemStrDup(nullptr, font)); }
    static FontCacheEntry* Cached(const char16_t* font) { return FindFontEntry(font); }
};

// ---- the copy ----

TEST_F(OptionsPages, TheCopyBeginsAsTheOptions) {
    FreeSheetCopy();
    TheOptions().text.fore = 1;
    TheOptions().text.back = 2;
    TheOptions().selection.fore = 3;
    TheOptions().selection.back = 4;
    TheOptions().tabSize = 0;
    TheOptions().undoSize = 4000000000;
    TheOptions().histLen = 500;

    ASSERT_TRUE(MakeSheetCopy());

    EXPECT_EQ(Text(Copy().font), u"Courier New\u100E");
    EXPECT_NE(Copy().font, TheOptions().font);
    EXPECT_EQ(Copy().colors[0].fore, 1u);
    EXPECT_EQ(Copy().colors[0].back, 2u);
    EXPECT_EQ(Copy().colors[1].fore, 3u);
    EXPECT_EQ(Copy().colors[1].back, 4u);
    EXPECT_EQ(Copy().tabSize, 0u);
    EXPECT_EQ(Copy().undoSize, 4000000000u);
    EXPECT_EQ(Copy().histLen, 500u);
    EXPECT_EQ(Copy().colorSet, kColorsOfText);
    EXPECT_EQ(Copy().sheetWindow, nullptr);
}

TEST_F(OptionsPages, ThereIsOneCopyAtATime) {
    const SheetCopy* first = TheOptions().sheetCopy;
    EXPECT_FALSE(MakeSheetCopy());
    EXPECT_EQ(TheOptions().sheetCopy, first);
    FreeSheetCopy();
    EXPECT_EQ(TheOptions().sheetCopy, nullptr);
    FreeSheetCopy();
    EXPECT_TRUE(MakeSheetCopy());
}

TEST_F(OptionsPages, WithoutMemoryThereIsNoCopyAndNothingLeft) {
    FreeSheetCopy();
    const size_t blocks = HostHeapLiveBlocks(nullptr);
    for (uint32_t call = 1;; ++call) {
        FaultScope fault(FaultPoint::kAllocation, {.first = call});
        const bool made = MakeSheetCopy();
        if (fault.Hits() == 0) {
            EXPECT_TRUE(made);
            EXPECT_GT(call, 2u);
            break;
        }
        EXPECT_FALSE(made);
        EXPECT_EQ(TheOptions().sheetCopy, nullptr);
        EXPECT_EQ(HostHeapLiveBlocks(nullptr), blocks);
    }
}

TEST_F(OptionsPages, ChangesOfTheCopyThatIsThrownAwayChangeNothing) {
    const Options before = TheOptions();
    Choose(u"Arial\x0C");
    *ShownColor(true) = 77;
    TakeNumber(nullptr, UndoSize(), u"5");
    TakeNumber(nullptr, HistoryLength(), u"5");
    TakeNumber(nullptr, TabSize(), u"5");
    FreeSheetCopy();
    EXPECT_EQ(Text(TheOptions().font), u"Courier New\u100E");
    EXPECT_EQ(TheOptions().text.font, before.text.font);
    EXPECT_EQ(TheOptions().text.fore, before.text.fore);
    EXPECT_EQ(TheOptions().undoSize, 100u);
    EXPECT_EQ(TheOptions().histLen, 10u);
    EXPECT_EQ(TheOptions().tabSize, 3u);
    EXPECT_EQ(Cached(u"Arial\x0C"), nullptr);
}

// ---- numbers ----

struct Range {
    const NumberField* field;
    const char16_t* most;
    const char16_t* above;
    const char16_t* message;
    uint32_t largest;
};

TEST_F(OptionsPages, NumbersFromOneToTheirBoundAreTaken) {
    const Range ranges[] = {
        {&UndoSize(), u"256", u"257", u"Undo history size must be in range 1-256", 256},
        {&HistoryLength(), u"100", u"101", u"Find history size must be in range 1-100", 100},
        {&TabSize(), u"64", u"65", u"Tab size must be in range 1-64", 64}};
    for (const Range& range : ranges) {
        MessageLogReset();
        EXPECT_TRUE(TakeNumber(nullptr, *range.field, u"1"));
        EXPECT_EQ(Copy().*range.field->field, 1u);
        EXPECT_TRUE(TakeNumber(nullptr, *range.field, range.most));
        EXPECT_EQ(Copy().*range.field->field, range.largest);
        EXPECT_TRUE(MessageLog().empty());
        for (const char16_t* text :
             {range.above, u"0", u"", u"-1", u"four", u"4294967297", u"99999999999999"}) {
            EXPECT_FALSE(TakeNumber(nullptr, *range.field, text));
            EXPECT_EQ(MessageLog().back().text, range.message);
            EXPECT_EQ(MessageLog().back().caption, u"Error");
            EXPECT_EQ(MessageLog().back().kind, MessageKind::kError);
        }
        EXPECT_EQ(MessageLog().size(), 7u);
        EXPECT_EQ(Copy().*range.field->field, range.largest) << "a refused number changes nothing";
    }
}

TEST_F(OptionsPages, TheMessageBelongsToThePage) {
    auto* page = reinterpret_cast<WindowHandle>(&Copy());
    EXPECT_FALSE(TakeNumber(page, TabSize(), u"65"));
    EXPECT_EQ(MessageLog().back().owner, page);
}

TEST_F(OptionsPages, BlanksSignAndLettersBehindAreAllowed) {
    EXPECT_TRUE(TakeNumber(nullptr, TabSize(), u"  +8 columns"));
    EXPECT_EQ(Copy().tabSize, 8u);
}

TEST_F(OptionsPages, PagesLookAtTheirFieldsInOrder) {
    ASSERT_EQ(EditorPageNumbers().count, 2u);
    EXPECT_EQ(UndoSize().control, IDC_EDITOR_UNDO_SIZE);
    EXPECT_EQ(HistoryLength().control, IDC_EDITOR_HISTORY_SIZE);
    ASSERT_EQ(IndentPageNumbers().count, 1u);
    EXPECT_EQ(TabSize().control, IDC_INDENT_TAB_SIZE);
}

// ---- Format ----

TEST_F(OptionsPages, TheColorsOfBothSetsAreKept) {
    *ShownColor(true) = 1;
    EXPECT_TRUE(ShowColorSet(kColorsOfSelection));
    *ShownColor(false) = 2;
    EXPECT_TRUE(ShowColorSet(kColorsOfText));
    EXPECT_EQ(*ShownColor(true), 1u);
    *ShownColor(false) = 3;
    ShowColorSet(kColorsOfSelection);
    EXPECT_EQ(*ShownColor(false), 2u);
    *ShownColor(true) = 4;

    ApplyFormatPage();

    EXPECT_EQ(TheOptions().text.fore, 1u);
    EXPECT_EQ(TheOptions().text.back, 3u);
    EXPECT_EQ(TheOptions().selection.fore, 4u);
    EXPECT_EQ(TheOptions().selection.back, 2u);
}

TEST_F(OptionsPages, ASetThatIsShownAlreadyNeedsNoRedrawing) {
    EXPECT_FALSE(ShowColorSet(kColorsOfText));
    EXPECT_FALSE(ShowColorSet(2));
    EXPECT_EQ(Copy().colorSet, kColorsOfText);
}

TEST_F(OptionsPages, ANewFontReplacesTheOldOne) {
    Choose(u"Arial\u010C");

    ApplyFormatPage();

    EXPECT_EQ(Text(TheOptions().font), u"Arial\u010C");
    ASSERT_NE(Cached(u"Arial\u010C"), nullptr);
    EXPECT_EQ(Cached(u"Arial\u010C")->references, 1u);
    EXPECT_EQ(TheOptions().text.font, Cached(u"Arial\u010C")->font);
    EXPECT_EQ(TheOptions().selection.font, TheOptions().text.font);
    EXPECT_EQ(Cached(u"Courier New\u100E"), nullptr) << "nobody has the old font any more";
    EXPECT_EQ(Text(Copy().font), u"Arial\u010C");
    EXPECT_NE(Copy().font, TheOptions().font);
}

TEST_F(OptionsPages, TheSameFontIsNotMadeAnew) {
    const FontHandle font = TheOptions().text.font;
    ApplyFormatPage();
    EXPECT_EQ(TheOptions().text.font, font);
    EXPECT_EQ(Cached(u"Courier New\u100E")->references, 1u);
}

TEST_F(OptionsPages, NoFontChosenKeepsTheCopys) {
    TakeFont(nullptr);
    EXPECT_EQ(Text(Copy().font), u"Courier New\u100E");
}

TEST_F(OptionsPages, OddFontsAreApplied) {
    const Text longName = Text(200, u'f') + u"\u10FF";
    for (const Text& font : {Text(), Text(u"Gone Font\u0100"), Text(u"\u00FF"), longName}) {
        Choose(font.c_str());
        ApplyFormatPage();
        EXPECT_EQ(Text(TheOptions().font), font);
        EXPECT_EQ(TheFontCache()->count, 1u);
    }
}

TEST_F(OptionsPages, WithoutMemoryFontAndDescriptionStayTogether) {
    for (uint32_t call = 1;; ++call) {
        Choose(u"Arial\u010C");
        FaultScope fault(FaultPoint::kAllocation, {.first = call});
        ApplyFormatPage();
        const FontCacheEntry* entry = Cached(TheOptions().font);
        ASSERT_NE(entry, nullptr);
        EXPECT_EQ(entry->references, 1u);
        EXPECT_EQ(TheOptions().text.font, entry->font);
        EXPECT_EQ(TheOptions().selection.font, entry->font);
        EXPECT_EQ(TheFontCache()->count, 1u);
        if (fault.Hits() == 0) {
            EXPECT_EQ(Text(TheOptions().font), u"Arial\u010C");
            EXPECT_GT(call, 3u);
            break;
        }
        EXPECT_EQ(Text(TheOptions().font), u"Courier New\u100E");
    }
}

// ---- Editor ----

TEST_F(OptionsPages, TheEditorPageAppliesItsFields) {
    TakeNumber(nullptr, UndoSize(), u"256");
    TakeNumber(nullptr, HistoryLength(), u"99");
    ApplyEditorPage({u"UTF-8", true, false, true});
    EXPECT_EQ(Text(TheOptions().defaultEncoding), u"UTF-8");
    EXPECT_EQ(TheOptions().undoSize, 256u);
    EXPECT_EQ(OptionsUndoLimit(), 256 * 1024);
    EXPECT_EQ(TheOptions().histLen, 99u);
    EXPECT_EQ(TheOptions().safeSave, 1u);
    EXPECT_EQ(TheOptions().bomSave, 0u);
    EXPECT_EQ(TheOptions().wordWrapDefault, 1u);
    ApplyEditorPage({u"ANSI", false, true, false});
    EXPECT_EQ(TheOptions().safeSave, 0u);
    EXPECT_EQ(TheOptions().bomSave, 1u);
    EXPECT_EQ(TheOptions().wordWrapDefault, 0u);
}

TEST_F(OptionsPages, AFailedNumberLeavesTheOptionsAloneThoughTheCopyHasTheFirst) {
    EXPECT_TRUE(TakeNumber(nullptr, UndoSize(), u"50"));
    EXPECT_FALSE(TakeNumber(nullptr, HistoryLength(), u"101"));
    EXPECT_EQ(TheOptions().undoSize, 100u);
    EXPECT_EQ(TheOptions().histLen, 10u);
}

TEST_F(OptionsPages, WithoutMemoryATextKeepsItsOldValueAndTheRestIsApplied) {
    {
        FaultScope fault(FaultPoint::kAllocation, {.first = 1});
        ApplyEditorPage({u"UTF-8", true, false, true});
    }
    EXPECT_EQ(Text(TheOptions().defaultEncoding), u"ANSI");
    EXPECT_EQ(TheOptions().safeSave, 1u);
    {
        FaultScope fault(FaultPoint::kAllocation, {.first = 1});
        ApplyWordsPage(u"+-", true);
    }
    EXPECT_EQ(Text(TheOptions().wordSeparators), u",.;");
    EXPECT_EQ(TheOptions().stopWordEnd, 1u);
}

// ---- Words and Indent ----

TEST_F(OptionsPages, TheWordsPageAppliesItsFields) {
    ApplyWordsPage(u"", true);
    EXPECT_EQ(Text(TheOptions().wordSeparators), u"");
    EXPECT_EQ(TheOptions().stopWordEnd, 1u);
    ApplyWordsPage(u"()[]", false);
    EXPECT_EQ(Text(OptionsWordSeparators()), u"()[]");
    EXPECT_EQ(TheOptions().stopWordEnd, 0u);
}

TEST_F(OptionsPages, TheIndentPageAppliesItsFields) {
    TakeNumber(nullptr, TabSize(), u"64");
    ApplyIndentPage(true, true, true);
    EXPECT_EQ(TheOptions().tabSize, 64u);
    EXPECT_EQ(TheOptions().keepIndent, 1u);
    EXPECT_EQ(TheOptions().pasteMode, 1u);
    EXPECT_EQ(TheOptions().smartBase, 1u);
    ApplyIndentPage(false, false, false);
    EXPECT_EQ(TheOptions().keepIndent, 0u);
    EXPECT_EQ(TheOptions().pasteMode, 0u);
    EXPECT_EQ(TheOptions().smartBase, 0u);
}

TEST_F(OptionsPages, WhatIsAppliedIsStoredAndFoundAgain) {
    Choose(u"Arial\u0714");
    *ShownColor(true) = 0x00123456;
    TakeNumber(nullptr, TabSize(), u"7");
    ApplyFormatPage();
    ApplyEditorPage({u"Unicode", true, false, true});
    ApplyWordsPage(u"<>", true);
    ApplyIndentPage(true, true, true);
    SaveOptions();
    ReleaseFont(TheOptions().text.font);
    FreeSheetCopy();
    FreeOptions();
    ASSERT_EQ(LoadOptions(), 1);
    EXPECT_EQ(Text(TheOptions().font), u"Arial\u0714");
    EXPECT_EQ(TheOptions().text.fore, 0x00123456u);
    EXPECT_EQ(TheOptions().tabSize, 7u);
    EXPECT_EQ(Text(TheOptions().defaultEncoding), u"Unicode");
    EXPECT_EQ(Text(TheOptions().wordSeparators), u"<>");
    EXPECT_EQ(TheOptions().stopWordEnd, 1u);
    EXPECT_EQ(TheOptions().smartBase, 1u);
}

}  // namespace
}  // namespace nira
