#include "view/undo_apply.h"

#include "host/view_fixture.h"

namespace nira {
namespace {

class UndoCommands : public ViewTest {
  protected:
    void Type(const std::u16string& units) {
        for (const char16_t unit : units) Do([&] { TypeChar(editor_, unit); });
    }
    void Insert(const std::u16string& text) {
        Do([&] { InsertAtCaret(editor_, text.data(), static_cast<uint32_t>(text.size())); });
    }
    void Undo(bool group = false) {
        Forget();
        Do([&] { UndoApply(editor_, true, group); });
    }
    void Redo(bool group = false) {
        Forget();
        Do([&] { UndoApply(editor_, false, group); });
    }
};

TEST_F(UndoCommands, OneStepTakesBackOneUnit) {
    Type(u"abc");
    Undo();
    EXPECT_EQ(Text(), u"ab");
    EXPECT_EQ(Caret(), Place(0, 2));
    EXPECT_EQ(TheNews().repaints, 1);
    EXPECT_EQ(TheNews().undoStates, 1);
    Redo();
    EXPECT_EQ(Text(), u"abc");
    EXPECT_EQ(Caret(), Place(0, 3)) << "behind what came back";
}

TEST_F(UndoCommands, AGroupIsARunOfOneKind) {
    Type(u"abc");
    Undo(true);
    EXPECT_EQ(Text(), u"");
    EXPECT_EQ(editor_->undo->position, 0);
    Redo(true);
    EXPECT_EQ(Text(), u"abc");
    EXPECT_EQ(Caret(), Place(0, 3));
    EXPECT_FALSE(CanRedo(editor_->undo));
}

TEST_F(UndoCommands, AGroupEndsWhereTheKindChanges) {
    Type(u"a");
    Do([&] { MoveHome(editor_, false); });
    Do([&] { DeleteForward(editor_); });
    Undo(true);
    EXPECT_EQ(Text(), u"a");
    EXPECT_TRUE(CanUndo(editor_->undo));
    Undo(true);
    EXPECT_EQ(Text(), u"");
    EXPECT_FALSE(CanUndo(editor_->undo));
    Redo(true);
    EXPECT_EQ(Text(), u"a");
    Redo(true);
    EXPECT_EQ(Text(), u"");
}

TEST_F(UndoCommands, AGroupPaintsOnceAndMakesTheCaretAnew) {
    Type(u"abcdef");
    const uint32_t carets = HostCaret().created;
    Undo(true);
    EXPECT_EQ(TheNews().repaints, 1);
    EXPECT_EQ(TheNews().undoStates, 1);
    EXPECT_EQ(HostCaret().created, carets + 1);
    EXPECT_EQ(HostCaret().width, 2);
    EXPECT_EQ(HostCaret().height, kRow);
    EXPECT_EQ(HostCaret().x, 0);
    EXPECT_TRUE(HostCaretVisible());
    EXPECT_EQ(editor_->flags & (kFlagNoUndo | kFlagPaintDeferred | kFlagRepaintPending), 0u);
}

TEST_F(UndoCommands, RepaintsAskedForWithinAGroupWaitForItsEnd) {
    Type(u"abc");
    TheEditorEvents().titleChanged = [] {
        ++TheNews().titles;
        NotifyRepaint(TheWindowState().currentEditor);
    };
    Undo(true);
    EXPECT_EQ(TheNews().titles, 1);
    EXPECT_EQ(TheNews().repaints, 1);
}

TEST_F(UndoCommands, ATextThatWasInsertedGoesAndComesWhole) {
    Fill(u"head tail");
    At(0, 5);
    Insert(u"one\r\n\r\ntwo\r\n");
    ASSERT_EQ(Text(), u"head one\n\ntwo\ntail");
    for (int i = 0; i < 3; ++i) {
        Undo();
        EXPECT_EQ(Text(), u"head tail");
        EXPECT_EQ(Caret(), Place(0, 5));
        Redo();
        EXPECT_EQ(Text(), u"head one\n\ntwo\ntail");
        EXPECT_EQ(Caret(), Place(3, 0));
    }
}

TEST_F(UndoCommands, ATextThatWasDeletedComesBackWithEveryLine) {
    Fill(u"one\n\n\ntwo\nthree");
    Select(0, 2, 4, 1);
    Do([&] { DeleteForward(editor_); });
    ASSERT_EQ(Text(), u"onhree");
    for (int i = 0; i < 3; ++i) {
        Undo();
        EXPECT_EQ(Text(), u"one\n\n\ntwo\nthree");
        EXPECT_EQ(Caret(), Place(4, 1)) << "behind the text that came back";
        Redo();
        EXPECT_EQ(Text(), u"onhree");
        EXPECT_EQ(Caret(), Place(0, 2));
    }
}

TEST_F(UndoCommands, AJoinedLineIsSplitAgain) {
    Fill(u"ab\ncd");
    At(1, 0);
    Do([&] { DeleteBackward(editor_); });
    Undo();
    EXPECT_EQ(Text(), u"ab\ncd");
    EXPECT_EQ(Caret(), Place(1, 0));
    Redo();
    EXPECT_EQ(Text(), u"abcd");
}

TEST_F(UndoCommands, ABackspacedUnitComesBackBeforeTheCaret) {
    Type(u"ab");
    Do([&] { DeleteBackward(editor_); });
    Undo();
    EXPECT_EQ(Text(), u"ab");
    EXPECT_EQ(Caret(), Place(0, 2));
}

TEST_F(UndoCommands, ANewLineKeepsItsIndentation) {
    TheOptions().keepIndent = 1;
    Fill(u"\t x");
    At(0, 3);
    Do([&] { NewLine(editor_); });
    Undo();
    EXPECT_EQ(Text(), u"\t x");
    Redo();
    EXPECT_EQ(Text(), u"\t x\n\t ");
    EXPECT_EQ(Caret(), Place(1, 2));
}

TEST_F(UndoCommands, NothingToUndoClearsTheSelectionAndRepaints) {
    Fill(u"abc");
    for (const bool undo : {true, false}) {
        for (const bool group : {true, false}) {
            Select(0, 0, 0, 2);
            Do([&] { UndoApply(editor_, undo, group); });
            EXPECT_EQ(Anchor(), kNoAnchor);
            EXPECT_EQ(Text(), u"abc");
            EXPECT_EQ(Caret(), Place(0, 2));
            EXPECT_EQ(TheNews().selections, 1);
            EXPECT_EQ(TheNews().repaints, 1);
        }
    }
}

TEST_F(UndoCommands, NothingIsRecordedMeanwhileAndItIsAfterwards) {
    Type(u"ab");
    Undo();
    EXPECT_EQ(editor_->undo->count, 2);
    EXPECT_EQ(editor_->undo->position, 1);
    Type(u"x");
    EXPECT_EQ(editor_->undo->count, 2);
    EXPECT_FALSE(CanRedo(editor_->undo));
    EXPECT_EQ(Text(), u"ax");
}

TEST_F(UndoCommands, TheModifiedFlagFollowsTheSavedState) {
    Type(u"ab");
    UndoMarkAllModified(editor_->undo);
    SetModified(editor_, 0);
    Type(u"x");
    EXPECT_EQ(editor_->modified, 1);
    Undo();
    EXPECT_EQ(editor_->modified, 0);
    EXPECT_EQ(TheNews().titles, 1);
    Redo();
    EXPECT_EQ(editor_->modified, 1);
    Undo();
    Undo();
    EXPECT_EQ(editor_->modified, 1) << "before what was saved";
    Redo();
    EXPECT_EQ(editor_->modified, 0);
}

TEST_F(UndoCommands, AnUntouchedDocumentIsCleanAgainAfterUndoingAll) {
    Type(u"abc");
    Undo(true);
    EXPECT_EQ(editor_->modified, 0);
    Redo(true);
    EXPECT_EQ(editor_->modified, 1);
}

TEST_F(UndoCommands, ATextLongerThanTheJournalIsTakenBackAsFarAsItWasKept) {
    TheOptions().undoSize = 1;
    Insert(std::u16string(600, u'x'));
    ASSERT_EQ(editor_->undo->entries[0].size, 502u);
    Undo();
    EXPECT_EQ(Text(), std::u16string(98, u'x'));
    Redo();
    EXPECT_EQ(Text(), std::u16string(600, u'x'));
}

TEST_F(UndoCommands, ATextOfBreaksAloneSurvivesEveryRound) {
    Insert(u"\r\n\r\n\r\n");
    ASSERT_EQ(editor_->lineCount, 4u);
    for (int i = 0; i < 3; ++i) {
        Undo();
        EXPECT_EQ(Text(), u"");
        Redo();
        EXPECT_EQ(Text(), u"\n\n\n");
    }
}

TEST_F(UndoCommands, GroupsOfTextsComeAndGoTogether) {
    Insert(u"one\r\n");
    Insert(u"two\r\n");
    Type(u"x");
    Undo(true);
    EXPECT_EQ(Text(), u"one\ntwo\n");
    Undo(true);
    EXPECT_EQ(Text(), u"");
    Redo(true);
    EXPECT_EQ(Text(), u"one\ntwo\n");
    Redo(true);
    EXPECT_EQ(Text(), u"one\ntwo\nx");
}

TEST_F(UndoCommands, UndoScrollsToWhereTheEditWas) {
    FillLines(50);
    Type(u"x");
    Do([&] { MoveToEnd(editor_, false); });
    Undo();
    EXPECT_EQ(editor_->top.row, 0);
    EXPECT_EQ(Caret(), Place(0, 0));
}

TEST_F(UndoCommands, MemoryRunningOutLeavesTheStepToBeTriedAgain) {
    Fill(u"one\ntwo\nthree");
    Select(0, 1, 2, 2);
    Do([&] { DeleteForward(editor_); });
    uint32_t hits = 1;
    for (uint32_t call = 1; hits > 0; ++call) {
        FaultArm(FaultPoint::kAllocation, {.first = call});
        UndoApply(editor_, true, false);
        hits = FaultHits(FaultPoint::kAllocation);
        FaultDisarm(FaultPoint::kAllocation);
        Check();
        const bool applied = Text() == u"one\ntwo\nthree";
        EXPECT_TRUE(applied || Text() == u"oree");
        EXPECT_EQ(CanUndo(editor_->undo), !applied);
        EXPECT_EQ(editor_->flags & kFlagNoUndo, 0u);
        if (applied) Redo();
        ASSERT_LT(call, 100u);
    }
}

}  // namespace
}  // namespace nira
