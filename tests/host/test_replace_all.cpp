#include <gtest/gtest.h>

#include "host/search_fixture.h"
#include "search/find.h"

namespace nira {
namespace {

class ReplaceAllTest : public SearchTest {
  protected:
    void UndoAll() const {
        while (CanUndo(editor_->undo)) {
            UndoApply(editor_, true, false);
            Check();
        }
    }
    void RedoAll() const {
        while (CanRedo(editor_->undo)) {
            UndoApply(editor_, false, false);
            Check();
        }
    }
};

TEST_F(ReplaceAllTest, ReplacesEveryMatch) {
    Fill(u"x x\nx");
    Pattern(u"x", u"y");
    EXPECT_EQ(All(), 3U);
    EXPECT_EQ(Text(), u"y y\ny");
    EXPECT_EQ(Caret(), Place(1, 1)) << "behind the last of them";
    EXPECT_EQ(Anchor(), kNoAnchor);
}

TEST_F(ReplaceAllTest, BeginsAtTheCaretAndWraps) {
    Fill(u"x x\nx x\nx");
    Pattern(u"x", u"yz");
    At(1, 1);
    EXPECT_EQ(All(), 5U);
    EXPECT_EQ(Text(), u"yz yz\nyz yz\nyz");
    EXPECT_EQ(Caret(), Place(1, 2));
}

TEST_F(ReplaceAllTest, TellsItsNewsOnce) {
    std::u16string text(u"x");
    for (int i = 0; i < 200; ++i) text += u"\nx x";
    Fill(text);
    Pattern(u"x", u"yz");
    EXPECT_EQ(All(), 401U);
    EXPECT_EQ(TheNews().repaints, 1);
    EXPECT_EQ(TheNews().undoStates, 1);
    EXPECT_EQ(TheNews().titles, 1);
    EXPECT_EQ(TheNews().selections, 0);
    EXPECT_EQ(HostPointer().waits, 1U);
    EXPECT_FALSE(HostPointer().waiting);
    EXPECT_EQ(HostShellLog().longOperations, 1U);
}

TEST_F(ReplaceAllTest, TellsThatTheSelectionWent) {
    Fill(u"one two");
    Select(0, 0, 0, 3);
    Pattern(u"two", u"2");
    EXPECT_EQ(All(), 1U);
    EXPECT_EQ(TheNews().selections, 1);
    EXPECT_EQ(Anchor(), kNoAnchor);
}

TEST_F(ReplaceAllTest, ChangesNothingWithoutAMatch) {
    Fill(u"one two");
    Select(0, 0, 0, 3);
    editor_->markMode = 1;
    Pattern(u"three", u"3");
    EXPECT_EQ(All(), 0U);
    EXPECT_EQ(Selected(), u"one");
    EXPECT_EQ(editor_->markMode, 1);
    EXPECT_EQ(editor_->modified, 0);
    EXPECT_EQ(TheNews().repaints, 0);
    EXPECT_FALSE(HostPointer().waiting);
    EXPECT_TRUE(MessageLog().empty()) << "whoever asked says how many there were";
}

TEST_F(ReplaceAllTest, ShortensAndLengthensLinesOfManyMatches) {
    std::u16string text;
    for (int i = 0; i < 3000; ++i) text += u"ab ";
    for (const char16_t* replacement : {u"", u"c", u"cd", u"cdefghijkl"}) {
        Renew();
        Fill(text);
        Pattern(u"ab", replacement);
        EXPECT_EQ(All(), 3000U);
        std::u16string expected;
        for (int i = 0; i < 3000; ++i) expected += std::u16string(replacement) + u" ";
        EXPECT_EQ(Text(), expected);
    }
}

TEST_F(ReplaceAllTest, UndoTakesBackOneReplacementInTwoSteps) {
    Fill(u"one one");
    Pattern(u"one", u"3");
    EXPECT_EQ(All(), 2U);
    ASSERT_EQ(editor_->undo->count, 4);
    EXPECT_EQ(KindOf(editor_->undo->entries[2]), UndoKind::kInsertText);
    EXPECT_EQ(editor_->undo->entries[2].column, 2U)
        << "where the match stood after the one before was replaced";
    EXPECT_EQ(KindOf(editor_->undo->entries[3]), UndoKind::kDeleteChar);
    UndoApply(editor_, true, false);
    UndoApply(editor_, true, false);
    EXPECT_EQ(Text(), u"3 one");
    EXPECT_EQ(editor_->modified, 1);
    UndoAll();
    EXPECT_EQ(Text(), u"one one");
    EXPECT_EQ(editor_->modified, 0);
    RedoAll();
    EXPECT_EQ(Text(), u"3 3");
}

TEST_F(ReplaceAllTest, KeepsTheLatestReplacementsInAFullJournal) {
    TheOptions().undoSize = 1;
    std::u16string text;
    for (int i = 0; i < 1000; ++i) text += u"ab\n";
    Fill(text);
    Pattern(u"ab", u"cd");
    EXPECT_EQ(All(), 1000U);
    EXPECT_EQ(editor_->undo->count, 1024 / 24);
    EXPECT_EQ(editor_->undo->bytes, 1024 / 24 * 24);
    UndoAll();
    EXPECT_EQ(Text(), [] {
        std::u16string expected;
        for (int i = 0; i < 1000; ++i) expected += i < 979 ? u"cd\n" : u"ab\n";
        return expected;
    }());
}

TEST_F(ReplaceAllTest, EscapeEndsAReplacementThatFeedsOnItself) {
    Fill(u"x-x");
    Pattern(u"x", u"xx");
    HostPressEscapeAt(100);
    EXPECT_EQ(All(), 100U);
    EXPECT_EQ(Text().size(), 103U);
    EXPECT_EQ(HostShellLog().answers, 100U);
    EXPECT_EQ(TheNews().repaints, 1);
    UndoAll();
    EXPECT_EQ(Text(), u"x-x");
}

TEST_F(ReplaceAllTest, EscapeAlsoEndsOneThatAddsLines) {
    Fill(u"x");
    Pattern(u"x", u"x\nx");
    HostPressEscapeAt(50);
    EXPECT_EQ(All(), 50U);
    EXPECT_EQ(editor_->lineCount, 51U);
    UndoAll();
    EXPECT_EQ(Text(), u"x");
}

TEST_F(ReplaceAllTest, EscapeStopsBehindTheReplacementOfTheMoment) {
    const std::u16string text = u"x x x\nx";
    for (uint32_t call = 1; call <= 4; ++call) {
        Renew();
        Fill(text);
        Pattern(u"x", u"yyyyyyyyyyyy");
        HostPressEscapeAt(call);
        EXPECT_EQ(All(), call);
        std::u16string expected = text;
        for (uint32_t i = 0; i < call; ++i) expected.replace(expected.find(u'x'), 1, u"yyyyyyyyyyyy");
        EXPECT_EQ(Text(), expected);
        EXPECT_EQ(Caret(), call == 4 ? Place(1, 12) : Place(0, static_cast<int32_t>(call * 13 - 1)));
    }
}

TEST_F(ReplaceAllTest, RunningOutOfMemoryKeepsWhatWasReplaced) {
    const std::u16string text = u"ab ab ab\n" + std::u16string(300, u'-') + u"ab";
    for (uint32_t call = 1;; ++call) {
        Renew();
        Fill(text);
        Pattern(u"ab", u"a longer one");
        HostShellLogReset();
        FaultScope fault(FaultPoint::kAllocation, {.first = call});
        const uint32_t count = ReplaceAll(editor_);
        const bool struck = fault.Hits() != 0;
        FaultDisarm(FaultPoint::kAllocation);
        Check();
        std::u16string expected = text;
        for (uint32_t i = 0; i < count; ++i) expected.replace(expected.find(u"ab"), 2, u"a longer one");
        EXPECT_EQ(Text(), expected) << "allocation " << call;
        if (!struck) {
            EXPECT_EQ(count, 4U);
            EXPECT_GT(call, 10U);
            break;
        }
        EXPECT_EQ(HostShellLog().memoryBoxes, 1U) << "told once";
        EXPECT_FALSE(HostPointer().waiting);
        UndoAll();
        EXPECT_EQ(Text(), text);
    }
}

TEST_F(ReplaceAllTest, RunningOutOfMemoryOverLinesKeepsTheDocumentInOrder) {
    for (uint32_t call = 1;; ++call) {
        Renew();
        Fill(u"ab ab\nab");
        Pattern(u"ab", u"1\n2");
        FaultScope fault(FaultPoint::kAllocation, {.first = call});
        const uint32_t count = ReplaceAll(editor_);
        const bool struck = fault.Hits() != 0;
        FaultDisarm(FaultPoint::kAllocation);
        Check();
        if (!struck) {
            EXPECT_EQ(count, 3U);
            EXPECT_EQ(Text(), u"1\n2 1\n2\n1\n2");
            break;
        }
        UndoAll();
        EXPECT_EQ(Text(), u"ab ab\nab") << "allocation " << call;
    }
}

TEST_F(ReplaceAllTest, BookmarksStayWithTheirLines) {
    Fill(u"x\nx\nx");
    SetBookmark(editor_, 0);
    At(2, 0);
    SetBookmark(editor_, 1);
    At(0, 0);
    Pattern(u"x", u"1\n2");
    EXPECT_EQ(All(), 3U);
    EXPECT_EQ(editor_->bookmarks[1], 6) << "a line that is split takes its mark down";
}

}  // namespace
}  // namespace nira
