#include "view/editing.h"

#include "host/view_fixture.h"

namespace nira {
namespace {

using Editing = ViewTest;

// ---- typing ----

TEST_F(Editing, TypingInsertsAtTheCaretAndMovesBehindTheUnit) {
    Fill(u"ab");
    At(0, 1);
    Do([&] { TypeChar(editor_, u'x'); });
    EXPECT_EQ(Text(), u"axb");
    EXPECT_EQ(Caret(), Place(0, 2));
    EXPECT_EQ(editor_->caretX, 2 * kUnit);
    EXPECT_EQ(editor_->modified, 1);
    EXPECT_EQ(TheNews().repaints, 1);
    EXPECT_EQ(TheNews().titles, 1);
    EXPECT_EQ(TheNews().undoStates, 1);
}

TEST_F(Editing, TypingIntoAnEmptyDocumentFillsItsFirstLine) {
    Do([&] { TypeChar(editor_, u'x'); });
    EXPECT_EQ(Text(), u"x");
    EXPECT_EQ(Caret(), Place(0, 1));
}

TEST_F(Editing, TypingReplacesTheSelectionEitherWayRound) {
    for (const bool backwards : {false, true}) {
        At(0, 0);
        Fill(u"one\ntwo\nthree");
        backwards ? Select(2, 3, 0, 1) : Select(0, 1, 2, 3);
        Do([&] { TypeChar(editor_, u'X'); });
        EXPECT_EQ(Text().substr(0, 4), u"oXee");
        EXPECT_EQ(Caret(), Place(0, 2));
        EXPECT_EQ(Anchor(), kNoAnchor);
        EXPECT_EQ(TheNews().selections, 1);
        EXPECT_EQ(TheNews().repaints, 1);
        EditorReset(editor_);
    }
}

TEST_F(Editing, TypingATabInsertsIt) {
    Do([&] { TypeChar(editor_, u'\t'); });
    EXPECT_EQ(Text(), u"\t");
    EXPECT_EQ(editor_->caretX, 4 * kUnit);
}

TEST_F(Editing, TypingTakesAnyUnit) {
    for (const char16_t unit : {u'\0', char16_t{0xD800}, char16_t{0xDC00}, char16_t{0x1B}, u'\u0301'}) {
        Do([&] { TypeChar(editor_, unit); });
        EXPECT_EQ(Text().back(), unit);
    }
    EXPECT_EQ(Caret(), Place(0, 5));
}

TEST_F(Editing, TypingFollowsTheRowsOfAWrappedLine) {
    Wrap(true);
    for (int i = 0; i < 60; ++i) Do([&] { TypeChar(editor_, u'x'); });
    EXPECT_EQ(EditorRows(editor_), 3);
    EXPECT_EQ(editor_->caret.subRow, 2);
    EXPECT_EQ(editor_->caretX, (60 - 48) * kUnit);
}

TEST_F(Editing, TypingClearsAnAnchorThatSelectsNothing) {
    Fill(u"ab");
    Select(0, 1, 0, 1);
    Do([&] { TypeChar(editor_, u'x'); });
    EXPECT_EQ(Anchor(), kNoAnchor);
    EXPECT_EQ(Text(), u"axb");
}

TEST_F(Editing, TypingInMarkModeNeverReplacesWhatWasTyped) {
    Do([&] { MarkStart(editor_); });
    for (const char16_t unit : std::u16string(u"abc")) Do([&] { TypeChar(editor_, unit); });
    EXPECT_EQ(Text(), u"abc");
    EXPECT_EQ(editor_->markMode, 1);
    Do([&] { MoveLeft(editor_, false); });
    EXPECT_EQ(Anchor(), Place(0, 3));
    EXPECT_EQ(Caret(), Place(0, 2));
    Do([&] { TypeChar(editor_, u'X'); });
    EXPECT_EQ(Text(), u"abX");
    Do([&] { TypeChar(editor_, u'Y'); });
    EXPECT_EQ(Text(), u"abXY");
}

TEST_F(Editing, TypingBringsTheCaretIntoView) {
    FillLines(50);
    Do([&] { ScrollVertical(editor_, kScrollToEnd); });
    EXPECT_EQ(editor_->top.row, 45);
    Do([&] { TypeChar(editor_, u'x'); });
    EXPECT_EQ(editor_->top.row, 0);
}

// ---- new lines ----

TEST_F(Editing, NewLineSplitsTheLine) {
    Fill(u"abcd");
    At(0, 2);
    Do([&] { NewLine(editor_); });
    EXPECT_EQ(Text(), u"ab\ncd");
    EXPECT_EQ(Caret(), Place(1, 0));
    EXPECT_EQ(TheNews().repaints, 1);
}

TEST_F(Editing, NewLineTwiceLeavesAnEmptyLine) {
    Fill(u"abcd");
    At(0, 2);
    Do([&] { NewLine(editor_); });
    Do([&] { NewLine(editor_); });
    EXPECT_EQ(Text(), u"ab\n\ncd");
    EXPECT_EQ(Caret(), Place(2, 0));
}

TEST_F(Editing, NewLineReplacesTheSelection) {
    Fill(u"one\ntwo");
    Select(0, 1, 1, 1);
    Do([&] { NewLine(editor_); });
    EXPECT_EQ(Text(), u"o\nwo");
    EXPECT_EQ(Caret(), Place(1, 0));
    EXPECT_EQ(TheNews().selections, 1);
}

TEST_F(Editing, NewLineIgnoresTheIndentationUnlessToldToKeepIt) {
    Fill(u"\t ab");
    At(0, 4);
    Do([&] { NewLine(editor_); });
    EXPECT_EQ(Text(), u"\t ab\n");
    EXPECT_EQ(Caret(), Place(1, 0));
}

TEST_F(Editing, NewLineKeepsTabsAsTabsAndSpacesAsSpaces) {
    TheOptions().keepIndent = 1;
    Fill(u"\t  \tab");
    At(0, 5);
    Do([&] { NewLine(editor_); });
    EXPECT_EQ(Text(), u"\t  \ta\n\t  \tb");
    EXPECT_EQ(Caret(), Place(1, 4));
}

TEST_F(Editing, NewLineCopiesTheWholeIndentationWhereverTheCaretIs) {
    TheOptions().keepIndent = 1;
    Fill(u"\ta");
    Do([&] { NewLine(editor_); });
    EXPECT_EQ(Text(), u"\n\t\ta");
    EXPECT_EQ(Caret(), Place(1, 1));
}

TEST_F(Editing, NewLineCopiesTheIndentationOfTheLineThatDeletingTheSelectionLeaves) {
    TheOptions().keepIndent = 1;
    Fill(u"  ab\n\tcd");
    Select(0, 0, 1, 1);
    Do([&] { NewLine(editor_); });
    EXPECT_EQ(Text(), u"\ncd");
}

TEST_F(Editing, NewLineOnALineOfBlanksCopiesAllOfThem) {
    TheOptions().keepIndent = 1;
    Fill(u"   ");
    At(0, 1);
    Do([&] { NewLine(editor_); });
    EXPECT_EQ(Text(), u" \n     ");
    EXPECT_EQ(Caret(), Place(1, 3));
}

TEST_F(Editing, NewLineIsOneStepOfUndo) {
    TheOptions().keepIndent = 1;
    Fill(u"\tab");
    At(0, 3);
    Do([&] { NewLine(editor_); });
    EXPECT_EQ(editor_->undo->count, 1);
    EXPECT_EQ(editor_->undo->entries[0].size, 2u);
}

// ---- deleting ----

TEST_F(Editing, BackspaceDeletesTheUnitBeforeTheCaret) {
    Fill(u"abc");
    At(0, 2);
    Do([&] { DeleteBackward(editor_); });
    EXPECT_EQ(Text(), u"ac");
    EXPECT_EQ(Caret(), Place(0, 1));
    EXPECT_EQ(TheNews().repaints, 1);
}

TEST_F(Editing, BackspaceAtColumnZeroJoinsTheLines) {
    Fill(u"ab\ncd");
    At(1, 0);
    Do([&] { DeleteBackward(editor_); });
    EXPECT_EQ(Text(), u"abcd");
    EXPECT_EQ(Caret(), Place(0, 2));
}

TEST_F(Editing, BackspaceAtTheStartDoesNothingAtAll) {
    Fill(u"ab");
    Do([&] { DeleteBackward(editor_); });
    EXPECT_EQ(Text(), u"ab");
    EXPECT_EQ(TheNews().repaints, 0);
    EXPECT_EQ(editor_->modified, 0);
    EXPECT_FALSE(CanUndo(editor_->undo));
}

TEST_F(Editing, DeleteTakesTheUnitBehindTheCaret) {
    Fill(u"abc");
    At(0, 1);
    Do([&] { DeleteForward(editor_); });
    EXPECT_EQ(Text(), u"ac");
    EXPECT_EQ(Caret(), Place(0, 1));
    EXPECT_EQ(TheNews().repaints, 1);
}

TEST_F(Editing, DeleteAtALineEndJoinsTheNextLine) {
    Fill(u"ab\ncd");
    At(0, 2);
    Do([&] { DeleteForward(editor_); });
    EXPECT_EQ(Text(), u"abcd");
    EXPECT_EQ(Caret(), Place(0, 2));
}

TEST_F(Editing, DeleteAtTheEndDoesNothingAndKeepsWhatCanBeRedone) {
    Fill(u"ab");
    At(0, 2);
    Do([&] { TypeChar(editor_, u'c'); });
    UndoStep(editor_->undo, true, UndoPeek(editor_->undo, true));
    editor_->modified = 0;
    Forget();
    Do([&] { DeleteForward(editor_); });
    EXPECT_EQ(Text(), u"abc");
    EXPECT_EQ(TheNews().repaints, 0);
    EXPECT_EQ(editor_->modified, 0);
    EXPECT_TRUE(CanRedo(editor_->undo));
}

TEST_F(Editing, DeletingKeysDeleteNothingButTheSelection) {
    for (const auto key : {DeleteBackward, DeleteForward}) {
        Fill(u"one\ntwo");
        Select(1, 1, 0, 2);
        Do([&] { key(editor_); });
        EXPECT_EQ(Text(), u"onwo");
        EXPECT_EQ(Caret(), Place(0, 2));
        EXPECT_EQ(Anchor(), kNoAnchor);
        EXPECT_EQ(TheNews().repaints, 1);
        EXPECT_EQ(TheNews().selections, 1);
        EditorReset(editor_);
    }
}

TEST_F(Editing, DeletingKeysTakeAnEmptySelectionForNone) {
    Fill(u"abc");
    Select(0, 1, 0, 1);
    Do([&] { DeleteForward(editor_); });
    EXPECT_EQ(Text(), u"ac");
    EXPECT_EQ(Anchor(), kNoAnchor);
    Select(0, 1, 0, 1);
    Do([&] { DeleteBackward(editor_); });
    EXPECT_EQ(Text(), u"c");
    EXPECT_EQ(Anchor(), kNoAnchor);
}

TEST_F(Editing, DeletingEverythingScrollsBackToWhatIsLeft) {
    FillLines(50);
    Do([&] { MoveToEnd(editor_, false); });
    Select(0, 0, 49, 1);
    Do([&] { DeleteForward(editor_); });
    EXPECT_EQ(Text(), u"");
    EXPECT_EQ(editor_->scrollY, 0);
    EXPECT_EQ(editor_->bottomRow, 0);
    EXPECT_EQ(window_.vertical.maximum, 4);
}

TEST_F(Editing, InsertingATextReplacesTheSelectionAndMovesBehindIt) {
    Fill(u"abcd");
    Select(0, 1, 0, 3);
    Do([&] { InsertAtCaret(editor_, u"x\r\n\r\ny", 6); });
    EXPECT_EQ(Text(), u"ax\n\nyd");
    EXPECT_EQ(Caret(), Place(2, 1));
    EXPECT_EQ(TheNews().repaints, 1);
}

TEST_F(Editing, InsertingNothingDeletesTheSelectionAlone) {
    Fill(u"abcd");
    Select(0, 1, 0, 3);
    Do([&] { InsertAtCaret(editor_, u"", 0); });
    EXPECT_EQ(Text(), u"ad");
    EXPECT_EQ(Caret(), Place(0, 1));
}

// ---- memory runs out ----

TEST_F(Editing, EachKeyLeavesTheDocumentWholeWhereverMemoryRunsOut) {
    TheOptions().keepIndent = 1;
    const auto type = [](Editor* editor) { TypeChar(editor, u'x'); };
    const std::u16string before = u"\tone\n\ttwo\nthree";
    const std::u16string deleted = u"\too\nthree";
    const std::pair<void (*)(Editor*), std::u16string> keys[] = {{type, u"\toxo\nthree"},
                                                                 {NewLine, u"\to\n\to\nthree"},
                                                                 {DeleteBackward, deleted},
                                                                 {DeleteForward, deleted}};
    for (const auto& [key, after] : keys) {
        uint32_t hits = 1;
        for (uint32_t call = 1; hits > 0; ++call) {
            EditorReset(editor_);
            Fill(before);
            Select(0, 2, 1, 3);
            FaultArm(FaultPoint::kAllocation, {.first = call});
            key(editor_);
            hits = FaultHits(FaultPoint::kAllocation);
            FaultDisarm(FaultPoint::kAllocation);
            Check();
            const std::u16string text = Text();
            EXPECT_TRUE(text == after || (hits > 0 && (text == before || text == deleted)))
                << "call " << call;
            ASSERT_LT(call, 100u);
        }
    }
}

}  // namespace
}  // namespace nira
