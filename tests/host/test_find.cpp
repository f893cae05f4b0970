#include "search/find.h"

#include <gtest/gtest.h>

#include "host/search_fixture.h"

namespace nira {
namespace {

class FindTest : public SearchTest {};

TEST_F(FindTest, SelectsEachMatchInTurnAndWraps) {
    Fill(u"aaaa");
    Pattern(u"aa");
    EXPECT_TRUE(Next());
    EXPECT_EQ(Anchor(), Place(0, 0));
    EXPECT_EQ(Caret(), Place(0, 2));
    EXPECT_TRUE(Next());
    EXPECT_EQ(Anchor(), Place(0, 2));
    EXPECT_EQ(Caret(), Place(0, 4));
    EXPECT_TRUE(Next());
    EXPECT_EQ(Anchor(), Place(0, 0));
    EXPECT_EQ(Caret(), Place(0, 2));
}

TEST_F(FindTest, WholeWordStandsBetweenSeparators) {
    TheSearchState().wholeWord = 1;
    Fill(u"concat cat");
    Pattern(u"cat");
    EXPECT_TRUE(Next());
    EXPECT_EQ(Anchor(), Place(0, 7));
}

TEST_F(FindTest, PartOfAWordIsNoWholeWord) {
    TheSearchState().wholeWord = 1;
    Fill(u"cat_x");
    Pattern(u"cat");
    EXPECT_FALSE(Next());
    EXPECT_EQ(Anchor(), kNoAnchor);
    Separators(u"_");
    EXPECT_TRUE(Next());
}

TEST_F(FindTest, WhatOverlapsAPartOfAWordIsNotTried) {
    TheSearchState().wholeWord = 1;
    Fill(u"xa a a");
    Pattern(u"a a");
    EXPECT_FALSE(Next()) << "the second one overlaps the first, which is part of xa";
}

TEST_F(FindTest, CaseCountsOnlyWhenAsked) {
    Fill(u"abc");
    Pattern(u"ABC");
    EXPECT_FALSE(Next());
    TheSearchState().matchCase = 0;
    EXPECT_TRUE(Next());
}

TEST_F(FindTest, TheOnlyMatchIsFoundAgain) {
    Fill(u"first\nmatch\nlast");
    Pattern(u"match");
    At(1, 5);
    EXPECT_TRUE(Next());
    EXPECT_EQ(Anchor(), Place(1, 0));
    EXPECT_TRUE(Next());
    EXPECT_EQ(Anchor(), Place(1, 0));
    EXPECT_EQ(Caret(), Place(1, 5));
}

TEST_F(FindTest, AnEmptyDocumentHoldsNothing) {
    Pattern(u"a");
    EXPECT_FALSE(Next());
    EXPECT_EQ(TheNews().repaints, 0);
    EXPECT_EQ(ReplaceAll(editor_), 0U);
}

TEST_F(FindTest, AnEmptyPatternIsFoundNowhere) {
    Fill(u"abc\n\nd");
    Pattern(u"");
    EXPECT_FALSE(Next());
    EXPECT_EQ(ReplaceAll(editor_), 0U);
    FreeSearchState();
    EXPECT_FALSE(Next()) << "before any pattern was set";
    EXPECT_EQ(ReplaceAll(editor_), 0U);
}

TEST_F(FindTest, WithoutADocumentNothingHappens) {
    Pattern(u"a");
    EXPECT_FALSE(FindNext(nullptr));
    EXPECT_FALSE(FindNextWithMessage(nullptr));
    EXPECT_FALSE(ReplaceAndFind(nullptr));
    EXPECT_EQ(ReplaceAll(nullptr), 0U);
}

TEST_F(FindTest, APatternWithLineEndsIsFoundNowhere) {
    Fill(u"one\ntwo");
    Pattern(u"one\r\ntwo");
    EXPECT_FALSE(Next());
    Pattern(u"\n");
    EXPECT_FALSE(Next());
}

TEST_F(FindTest, SeparatorsAreFoundLikeOtherUnits) {
    Fill(u"a, ,b\n , ,");
    Pattern(u", ,");
    EXPECT_TRUE(Next());
    EXPECT_EQ(Anchor(), Place(0, 1));
    TheSearchState().wholeWord = 1;
    EXPECT_TRUE(Next());
    EXPECT_EQ(Anchor(), Place(1, 1)) << "the first one stands between letters";
}

TEST_F(FindTest, FindsALongPattern) {
    std::u16string pattern(10000, u'p');
    pattern[5000] = u'q';
    Fill(u"ppp\n" + std::u16string(6000, u'p') + pattern + u"r");
    Pattern(pattern.c_str());
    EXPECT_TRUE(Next());
    EXPECT_EQ(Anchor(), Place(1, 6000));
    EXPECT_EQ(Caret(), Place(1, 16000));
    pattern[0] = u'!';
    Pattern(pattern.c_str());
    EXPECT_FALSE(Next());
}

TEST_F(FindTest, FindsHalvesOfPairs) {
    Fill(u"a\xD83D\xDE00\xD83D");
    Pattern(u"\xDE00\xD83D");
    EXPECT_TRUE(Next());
    EXPECT_EQ(Anchor(), Place(0, 2));
}

TEST_F(FindTest, BringsTheMatchIntoViewAndRepaintsOnce) {
    std::u16string text(u"a");
    for (int i = 0; i < 50; ++i) text += u"\na";
    Fill(text + u"\n" + std::u16string(60, u'-') + u"match");
    Pattern(u"match");
    EXPECT_TRUE(Next());
    EXPECT_EQ(TheNews().repaints, 1);
    EXPECT_EQ(TheNews().selections, 1);
    EXPECT_GE(editor_->caretY, editor_->scrollY);
    EXPECT_LE(editor_->caretY + kRow, editor_->scrollY + 80);
    EXPECT_GE(60 * kUnit, editor_->scrollX);
    EXPECT_LE(editor_->caretX, editor_->scrollX + 200);
}

TEST_F(FindTest, EndsMarkMode) {
    Fill(u"one two");
    At(0, 2);
    MarkStart(editor_);
    Pattern(u"two");
    EXPECT_TRUE(Next());
    EXPECT_EQ(editor_->markMode, 0);
    EXPECT_EQ(Selected(), u"two") << "and not from the mark on";
}

TEST_F(FindTest, MarkModeGoesOnWhenNothingIsFound) {
    Fill(u"one two");
    MarkStart(editor_);
    Pattern(u"three");
    EXPECT_FALSE(Next());
    EXPECT_EQ(editor_->markMode, 1);
    EXPECT_EQ(Anchor(), Place(0, 0));
}

TEST_F(FindTest, ABoxSaysThatNothingWasFound) {
    WindowTag owner;
    SetNoticeOwner(&owner);
    Fill(u"abc");
    Pattern(u"x");
    EXPECT_FALSE(FindNextWithMessage(editor_));
    SetNoticeOwner(nullptr);
    ASSERT_EQ(MessageLog().size(), 1U);
    EXPECT_EQ(MessageLog()[0].text, u"Pattern not found");
    EXPECT_EQ(MessageLog()[0].caption, u"Information");
    EXPECT_EQ(MessageLog()[0].kind, MessageKind::kInformation);
    EXPECT_EQ(MessageLog()[0].owner, &owner);
    Pattern(u"b");
    EXPECT_TRUE(FindNextWithMessage(editor_));
    EXPECT_EQ(MessageLog().size(), 1U);
}

TEST_F(FindTest, ReplacesTheMatchAndFindsTheNext) {
    Fill(u"one two one");
    Pattern(u"one", u"three");
    EXPECT_TRUE(Next());
    Forget();
    EXPECT_TRUE(Replace());
    EXPECT_EQ(Text(), u"three two one");
    EXPECT_EQ(Anchor(), Place(0, 10));
    EXPECT_EQ(TheNews().repaints, 1);
    EXPECT_FALSE(Replace());
    EXPECT_EQ(Text(), u"three two three");
    EXPECT_EQ(Caret(), Place(0, 15));
    EXPECT_EQ(MessageLog().size(), 1U);
}

TEST_F(FindTest, ReplacesWhateverIsSelected) {
    Fill(u"one\ntwo\nthree");
    Pattern(u"three", u"x");
    Select(1, 2, 0, 1);
    EXPECT_TRUE(Replace());
    EXPECT_EQ(Text(), u"oxo\nthree");
    EXPECT_EQ(Selected(), u"three");
}

TEST_F(FindTest, ReplacingNothingInserts) {
    Fill(u"abc");
    Pattern(u"c", u"xy");
    At(0, 1);
    EXPECT_TRUE(Replace());
    EXPECT_EQ(Text(), u"axybc");
}

TEST_F(FindTest, AReplacementMayBeEmptyOrHaveLines) {
    Fill(u"a-b-c");
    Pattern(u"-");
    Next();
    EXPECT_TRUE(Replace());
    EXPECT_EQ(Text(), u"ab-c");
    Pattern(u"-", u"1\r\n2\n3");
    EXPECT_FALSE(Replace());
    EXPECT_EQ(Text(), u"ab1\n2\n3c");
    EXPECT_EQ(Caret(), Place(2, 1));
}

TEST_F(FindTest, ReplaceIsTwoStepsOfUndo) {
    Fill(u"one two");
    Pattern(u"one", u"3");
    Next();
    Replace();
    UndoApply(editor_, true, false);
    EXPECT_EQ(Text(), u" two");
    UndoApply(editor_, true, false);
    EXPECT_EQ(Text(), u"one two");
    EXPECT_EQ(editor_->modified, 0);
}

TEST_F(FindTest, ReplaceSurvivesEveryFailure) {
    for (uint32_t call = 1;; ++call) {
        Renew();
        Fill(u"one two one\nmore");
        Pattern(u"one", u"three");
        Next();
        FaultScope fault(FaultPoint::kAllocation, {.first = call});
        const bool found = Replace();
        if (fault.Hits() == 0) {
            EXPECT_TRUE(found);
            EXPECT_GT(call, 2U);
            break;
        }
        FaultDisarm(FaultPoint::kAllocation);
        UndoApply(editor_, true, false);
        UndoApply(editor_, true, false);
        EXPECT_EQ(Text(), u"one two one\nmore") << "allocation " << call;
    }
}

}  // namespace
}  // namespace nira
