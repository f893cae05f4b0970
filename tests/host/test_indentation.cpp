#include "view/indentation.h"

#include "host/view_fixture.h"
#include "view/indent_record.h"
#include "view/undo_apply.h"

namespace nira {
namespace {

class Indenting : public ViewTest {
  protected:
    void Increase() const {
        Do([&] { IncreaseIndent(editor_); });
    }
    void Decrease() const {
        Do([&] { DecreaseIndent(editor_); });
    }
    void Undo(bool group = false) const {
        Do([&] { UndoApply(editor_, true, group); });
    }
    void Redo(bool group = false) const {
        Do([&] { UndoApply(editor_, false, group); });
    }
    // The document anew with this text and the caret at (0, 0).
    void Start(const std::u16string& text) {
        const bool wrapped = editor_->wordWrap != 0;
        EditorReset(editor_);
        Wrap(wrapped);
        Fill(text);
    }
    std::u16string Increased(const std::u16string& text) {
        Start(text);
        Increase();
        return Text();
    }
    std::u16string Decreased(const std::u16string& text) {
        Start(text);
        Decrease();
        return Text();
    }
    const UndoEntry& Entry() const { return editor_->undo->entries[editor_->undo->count - 1]; }
};

// ---- what becomes of a line ----

TEST_F(Indenting, DecreasingRemovesAnIndentationThatIsShorterThanATab) { EXPECT_EQ(Decreased(u"  a"), u"a"); }

TEST_F(Indenting, IncreasingTwoSpacesGivesATabAndTwoSpaces) { EXPECT_EQ(Increased(u"  a"), u"\t  a"); }

TEST_F(Indenting, IncreasingATabAndFourSpacesGivesThreeTabs) { EXPECT_EQ(Increased(u"\t    a"), u"\t\t\ta"); }

TEST_F(Indenting, AnyMixIsRebuiltAsTabsFollowedBySpaces) {
    EXPECT_EQ(Increased(u" \t \ta"), u"\t\t\t  a");
    EXPECT_EQ(Decreased(u" \t \ta"), u"\t  a");
}

TEST_F(Indenting, DecreasingStopsAtNothing) {
    EXPECT_EQ(Decreased(u"\ta"), u"a");
    EXPECT_EQ(Decreased(u"\t a"), u" a");
    EXPECT_EQ(Decreased(u"   a"), u"a");
}

TEST_F(Indenting, BlanksBehindTheFirstCharacterStay) { EXPECT_EQ(Increased(u"a \t b"), u"\ta \t b"); }

TEST_F(Indenting, ALineOfBlanksAloneIsIndentedToo) {
    EXPECT_EQ(Increased(u"  "), u"\t  ");
    EXPECT_EQ(Decreased(u"\t  "), u"  ");
}

TEST_F(Indenting, AnEmptyLineIsIndentedToo) {
    EXPECT_EQ(Increased(u""), u"\t");
    EXPECT_EQ(editor_->caretColumn, 1);
    EXPECT_EQ(editor_->caretX, 4 * kUnit);
}

TEST_F(Indenting, BlanksOfOtherKindsAreText) { EXPECT_EQ(Increased(u"\u00A0\u3000a"), u"\t\u00A0\u3000a"); }

TEST_F(Indenting, WidthsCountEveryTabInFull) {
    EXPECT_EQ(IndentWidth(u" \t \t", 4), 10);
    EXPECT_EQ(IndentWidth(u" \t \t", 2), 5);
    EXPECT_EQ(IndentWidth(u"", 0), 0);
}

// ---- which lines ----

TEST_F(Indenting, WithoutAnAnchorTheCaretsLineIsIndented) {
    Start(u"a\nb\nc");
    At(1, 0);
    Increase();
    EXPECT_EQ(Text(), u"a\n\tb\nc");
}

TEST_F(Indenting, TheLinesFromAnchorToCaretAreIndentedEitherWayRound) {
    for (const bool backwards : {false, true}) {
        Start(u"a\nb\nc\nd");
        backwards ? Select(2, 1, 1, 1) : Select(1, 1, 2, 1);
        Increase();
        EXPECT_EQ(Text(), u"a\n\tb\n\tc\nd");
        EXPECT_EQ(Anchor(), Place(backwards ? 2 : 1, 2));
        EXPECT_EQ(Caret(), Place(backwards ? 1 : 2, 2));
    }
}

TEST_F(Indenting, ALineOnWhichTheSelectionEndsAtItsStartIsIncluded) {
    Start(u"a\nb\nc");
    Select(0, 0, 1, 0);
    Increase();
    EXPECT_EQ(Text(), u"\ta\n\tb\nc");
}

TEST_F(Indenting, AnAnchorAtTheCaretIndentsOneLine) {
    Start(u"a\nb");
    Select(1, 1, 1, 1);
    Increase();
    EXPECT_EQ(Text(), u"a\n\tb");
    EXPECT_EQ(Anchor(), Place(1, 2));
}

TEST_F(Indenting, EmptyLinesBetweenAreIndented) {
    Start(u"a\n\nb");
    Select(0, 0, 2, 0);
    Increase();
    EXPECT_EQ(Text(), u"\ta\n\t\n\tb");
}

TEST_F(Indenting, LinesThatStayAreLeftAlone) {
    Start(u"a\n \tb\nc");
    Select(0, 0, 2, 0);
    Decrease();
    EXPECT_EQ(Text(), u"a\n b\nc");
}

TEST_F(Indenting, AMixThatIsAlreadyThereIsNotRebuiltWhenItsWidthStays) {
    Start(u" \ta");
    Do([&] { EXPECT_TRUE(IndentLines(editor_, 0, 0, 0)); });
    EXPECT_EQ(Text(), u" \ta");
    EXPECT_FALSE(CanUndo(editor_->undo));
}

TEST_F(Indenting, TheFirstAndTheLastLineOfALongTextAreReached) {
    LineIndexSetChunkLines(3);
    Start(u"");
    FillLines(40);
    Do([&] { SelectAll(editor_); });
    Increase();
    EXPECT_EQ(Text().substr(0, 5), u"\ta\n\ta");
    EXPECT_EQ(Text().substr(Text().size() - 4), u"a\n\ta");
    Undo();
    EXPECT_EQ(Text().find(u'\t'), std::u16string::npos);
    LineIndexSetChunkLines(kLineIndexChunkLines);
}

// ---- caret, selection and rows ----

TEST_F(Indenting, TheSelectionStaysSoThatItCanBeTappedAgain) {
    Start(u"one\ntwo");
    Select(0, 1, 1, 2);
    Increase();
    Increase();
    EXPECT_EQ(Text(), u"\t\tone\n\t\ttwo");
    EXPECT_EQ(Anchor(), Place(0, 3));
    EXPECT_EQ(Caret(), Place(1, 4));
    EXPECT_EQ(TheNews().selections, 0);
    Decrease();
    EXPECT_EQ(Anchor(), Place(0, 2));
    EXPECT_EQ(Caret(), Place(1, 3));
}

TEST_F(Indenting, ColumnsMoveByTheChangeOfLengthNotOfWidth) {
    Start(u"    a");
    At(0, 5);
    Increase();
    EXPECT_EQ(Text(), u"\t\ta");
    EXPECT_EQ(Caret(), Place(0, 3));
    EXPECT_EQ(editor_->caretX, 9 * kUnit);
}

TEST_F(Indenting, ColumnsStopAtTheLinesStart) {
    Start(u"      a");
    Select(0, 2, 0, 1);
    Decrease();
    EXPECT_EQ(Text(), u"  a");
    EXPECT_EQ(Caret(), Place(0, 0));
    EXPECT_EQ(Anchor(), Place(0, 0));
    EXPECT_EQ(TheNews().selections, 1) << "the selection went";
}

TEST_F(Indenting, MarkModeStaysOn) {
    Start(u"a");
    Do([&] { MarkStart(editor_); });
    Increase();
    EXPECT_EQ(editor_->markMode, 1);
    EXPECT_EQ(Anchor(), Place(0, 1));
}

TEST_F(Indenting, RowsOfWrappedLinesFollow) {
    Wrap(true);
    Start(std::u16string(24, u'x') + u"\n" + std::u16string(24, u'y') + u"\nz");
    Select(1, 24, 0, 0);
    ASSERT_EQ(EditorRows(editor_), 3);
    Increase();
    EXPECT_EQ(EditorRows(editor_), 5);
    EXPECT_EQ(editor_->anchor.row, 3);
    EXPECT_EQ(editor_->anchor.subRow, 1);
    Undo();
    EXPECT_EQ(EditorRows(editor_), 3);
}

TEST_F(Indenting, TheAnchorsRowFollowsLinesAboveIt) {
    Wrap(true);
    Start(std::u16string(24, u'x') + u"\nyy");
    Select(1, 1, 0, 0);
    Increase();
    EXPECT_EQ(editor_->anchor.row, 2);
    EXPECT_EQ(Anchor(), Place(1, 2));
}

TEST_F(Indenting, TheWidestLineFollows) {
    Start(u"abc");
    Increase();
    EXPECT_EQ(editor_->widestLine, 7 * kUnit);
    Undo();
    EXPECT_EQ(editor_->widestLine, 3 * kUnit);
}

TEST_F(Indenting, IsRepaintedOnceAndMakesTheTextModified) {
    Start(u"a");
    Increase();
    EXPECT_EQ(TheNews().repaints, 1);
    EXPECT_EQ(TheNews().undoStates, 1);
    EXPECT_EQ(TheNews().titles, 1);
    EXPECT_EQ(editor_->modified, 1);
}

TEST_F(Indenting, WithoutAChangeNothingHappensAtAll) {
    Start(u"a\n\nb");
    Select(0, 0, 2, 1);
    Decrease();
    EXPECT_EQ(editor_->modified, 0);
    EXPECT_FALSE(CanUndo(editor_->undo));
    EXPECT_EQ(TheNews().repaints, 0);
    EXPECT_EQ(TheNews().undoStates, 0);
}

TEST_F(Indenting, WithoutAChangeWhatCanBeRedoneStays) {
    Start(u"a");
    Increase();
    Undo();
    Decrease();
    EXPECT_TRUE(CanRedo(editor_->undo));
}

// ---- undo and redo ----

TEST_F(Indenting, IsOneStepWithItsFirstLine) {
    Start(u"x\n a\n\tb\nc");
    Select(3, 0, 1, 0);
    Increase();
    ASSERT_EQ(editor_->undo->count, 1);
    EXPECT_EQ(KindOf(Entry()), UndoKind::kRestoreIndent);
    EXPECT_EQ(Entry().line, 1u);
    EXPECT_EQ(Entry().column, 0u);
    EXPECT_EQ(Entry().kind & kUndoModifiedBit, 0u);
    const std::vector<uint8_t> record(Entry().indent, Entry().indent + Entry().size);
    EXPECT_EQ(record, (std::vector<uint8_t>{3, 0, 0, 0, 4, 0, 1, 0, 1, 1, 0}));
    EXPECT_EQ(editor_->undo->bytes, 20 + 11);
}

TEST_F(Indenting, TheRecordedChangeOfDecreasingIsNegative) {
    Start(u"  a");
    Decrease();
    EXPECT_EQ(IndentRecordDelta(Entry().indent), -4);
}

TEST_F(Indenting, UndoBringsBackEveryUnitOfAMix) {
    const std::u16string text = u" \t a\n\t\t\n\n  \tb\nc";
    Start(text);
    Do([&] { SelectAll(editor_); });
    Increase();
    const std::u16string indented = Text();
    Undo();
    EXPECT_EQ(Text(), text);
    EXPECT_EQ(Caret(), Place(0, 0));
    EXPECT_EQ(Anchor(), kNoAnchor);
    EXPECT_EQ(editor_->modified, 0);
    Redo();
    EXPECT_EQ(Text(), indented);
    EXPECT_EQ(editor_->modified, 1);
    Undo();
    EXPECT_EQ(Text(), text);
}

TEST_F(Indenting, UndoBringsBackIndentationsOfAnyLength) {
    for (const uint32_t length : {253u, 254u, 255u, 508u, 509u, 1000u}) {
        std::u16string text(length, u' ');
        for (uint32_t i = 0; i < length; i += 3) text[i] = u'\t';
        text += u"x\n\ty";
        Start(text);
        Select(0, 0, 1, 0);
        Decrease();
        EXPECT_NE(Text(), text);
        Undo();
        EXPECT_EQ(Text(), text) << length;
    }
}

TEST_F(Indenting, UndoBringsBackWhatDecreasingCutOff) {
    Start(u"  a\n\tb\n      c");
    Select(0, 0, 2, 0);
    Decrease();
    EXPECT_EQ(Text(), u"a\nb\n  c");
    Undo();
    EXPECT_EQ(Text(), u"  a\n\tb\n      c");
    Redo();
    EXPECT_EQ(Text(), u"a\nb\n  c");
}

TEST_F(Indenting, RedoUsesTheRecordedChangeAndThePresentTabSize) {
    Start(u"  a\nb\nc");
    Select(0, 0, 1, 0);
    Increase();
    Undo();
    TheOptions().tabSize = 3;
    Do([&] { ReapplyOptions(editor_); });
    At(2, 0);
    Redo();
    EXPECT_EQ(Text(), u"\t\ta\n\t b\nc") << "four columns more, tabs of three";
    Undo();
    EXPECT_EQ(Text(), u"  a\nb\nc") << "what was recorded at first";
}

TEST_F(Indenting, UndoAfterAChangeOfTheTabSizeBringsBackTheSameUnits) {
    Start(u" \ta");
    Increase();
    TheOptions().tabSize = 8;
    Do([&] { ReapplyOptions(editor_); });
    Undo();
    EXPECT_EQ(Text(), u" \ta");
    EXPECT_EQ(editor_->widestLine, (1 + 8 + 1) * kUnit);
}

TEST_F(Indenting, StepsBehindARedoThatMadeTheLineShorterStayInsideIt) {
    Start(u"   a");
    Increase();
    At(0, 5);
    for (const char16_t unit : {u'x', u'y'}) Do([&] { TypeChar(editor_, unit); });
    for (int i = 0; i < 3; ++i) Undo();
    TheOptions().tabSize = 7;
    Do([&] { ReapplyOptions(editor_); });
    for (int i = 0; i < 3; ++i) Redo();
    EXPECT_EQ(Text(), u"\taxy");
    EXPECT_EQ(Caret(), Place(0, 4));
    for (int i = 0; i < 3; ++i) Undo();
    EXPECT_EQ(Text(), u"   a") << "all of it is taken back";
}

TEST_F(Indenting, StepsBehindARedoThatCostLinesStayInsideTheText) {
    Start(u"   abcd\nb\nc");
    Increase();
    Select(0, 6, 0, 8);
    Do([&] { DeleteForward(editor_); });
    At(2, 1);
    Do([&] { TypeChar(editor_, u'x'); });
    Increase();
    for (int i = 0; i < 4; ++i) Undo();
    TheOptions().tabSize = 7;
    Do([&] { ReapplyOptions(editor_); });
    for (int i = 0; i < 4; ++i) Redo();
    EXPECT_EQ(Text(), u"\tabcd\n    cx") << "the deletion took two characters from the line's end on";
    for (int i = 0; i < 2; ++i) Undo();
    EXPECT_EQ(Text(), u"\tabcd\nc");
}

TEST_F(Indenting, ARedoThatChangesNothingStillCountsAsDone) {
    Start(u" \ta");
    Decrease();
    Undo();
    TheOptions().tabSize = 0;
    Do([&] { ReapplyOptions(editor_); });
    At(0, 0);
    Redo();
    EXPECT_FALSE(CanRedo(editor_->undo));
    Undo();
    EXPECT_EQ(Text(), u" \ta");
}

TEST_F(Indenting, GroupedUndoTakesARunOfIndentationsBack) {
    Start(u"a\nb");
    At(0, 1);
    Do([&] { TypeChar(editor_, u'x'); });
    Increase();
    At(1, 0);
    Increase();
    Increase();
    Undo(true);
    EXPECT_EQ(Text(), u"ax\nb");
    EXPECT_EQ(TheNews().selections, 1);
    Redo(true);
    EXPECT_EQ(Text(), u"\tax\n\t\tb");
    Undo(true);
    Undo(true);
    EXPECT_EQ(Text(), u"a\nb");
}

TEST_F(Indenting, NothingIsRecordedWhileRecordingIsOff) {
    Start(u"a");
    editor_->flags |= kFlagNoUndo;
    Increase();
    editor_->flags &= ~kFlagNoUndo;
    EXPECT_EQ(Text(), u"\ta");
    EXPECT_FALSE(CanUndo(editor_->undo));
    EXPECT_EQ(editor_->modified, 0);
}

TEST_F(Indenting, ARecordedTailThatIsDroppedLeavesTheJournalSound) {
    Start(u"a");
    Increase();
    Increase();
    Undo();
    Undo();
    const int32_t account = editor_->undo->bytes;
    Do([&] { TypeChar(editor_, u'x'); });
    EXPECT_FALSE(CanRedo(editor_->undo));
    EXPECT_EQ(editor_->undo->count, 1);
    EXPECT_EQ(editor_->undo->bytes, account - 20) << "two entries went, their data stays in the account";
}

TEST_F(Indenting, ARecordBeyondTheWholeLimitIsKept) {
    TheOptions().undoSize = 1;
    std::u16string text;
    for (int i = 0; i < 600; ++i) text += u"\ta\n";
    Start(text);
    Do([&] { TypeChar(editor_, u'x'); });
    Do([&] { SelectAll(editor_); });
    Increase();
    Undo();
    EXPECT_EQ(Text(), u"x" + text);
    Undo();
    EXPECT_EQ(Text(), text);
}

// ---- tab sizes that nobody would choose ----

TEST_F(Indenting, ATabSizeOfZeroChangesNothingByTheCommands) {
    TheOptions().tabSize = 0;
    EXPECT_EQ(Increased(u"\t  a"), u"\t  a");
    EXPECT_EQ(Decreased(u"\t  a"), u"\t  a");
    EXPECT_FALSE(CanUndo(editor_->undo));
}

TEST_F(Indenting, ATabSizeOfZeroWritesSpacesAlone) {
    TheOptions().tabSize = 0;
    Start(u"\t a");
    Do([&] { EXPECT_TRUE(IndentLines(editor_, 0, 0, 3)); });
    EXPECT_EQ(Text(), u"    a");
    Undo();
    EXPECT_EQ(Text(), u"\t a");
}

TEST_F(Indenting, ATabSizeOfOneWritesTabsAlone) {
    TheOptions().tabSize = 1;
    EXPECT_EQ(Increased(u"  a"), u"\t\t\ta");
    EXPECT_EQ(Decreased(u"  a"), u"\ta");
}

TEST_F(Indenting, ATabSizeOf64) {
    TheOptions().tabSize = 64;
    EXPECT_EQ(Increased(u"  a"), u"\t  a");
    EXPECT_EQ(Decreased(u"\t\t a"), u"\t a");
    EXPECT_EQ(Decreased(std::u16string(70, u' ') + u"a"), u"      a");
}

TEST_F(Indenting, TheLargestTabSizes) {
    for (const uint32_t size : {0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFEu}) {
        TheOptions().tabSize = size;
        EXPECT_EQ(Increased(u"  a"), u"\t  a");
        Undo();
        EXPECT_EQ(Text(), u"  a");
        EXPECT_EQ(Decreased(u"\t\t a"), u"\t a");
        Undo();
        EXPECT_EQ(Text(), u"\t\t a");
    }
}

TEST_F(Indenting, TabsDrawnAsGlyphsCountNothing) {
    TheOptions().tabSize = 0xFFFFFFFF;
    EXPECT_EQ(Increased(u"\t a"), u"\t a");
    EXPECT_EQ(Decreased(u"\t a"), u"\t a");
    Do([&] { EXPECT_TRUE(IndentLines(editor_, 0, 0, 2)); });
    EXPECT_EQ(Text(), u"   a");
    Undo();
    EXPECT_EQ(Text(), u"\t a");
}

// ---- memory runs out ----

// Runs an operation with each allocation in turn failing, from what `prepare` makes. Where the operation
// failed the text is as it was and the box was shown once; undoing everything gives the first text.
class IndentingFaults : public Indenting {
  protected:
    template <typename Prepare, typename Operation>
    void Campaign(Prepare prepare, Operation operation, const std::u16string& after) {
        int failures = 0;
        for (uint32_t call = 1;; ++call) {
            SCOPED_TRACE(call);
            ASSERT_LT(call, 200u);
            Start(kText);
            prepare();
            const std::u16string before = Text();
            const int32_t position = editor_->undo->position;
            HostShellLogReset();
            FaultArm(FaultPoint::kAllocation, {.first = call});
            operation();
            const uint32_t hits = FaultHits(FaultPoint::kAllocation);
            FaultDisarm(FaultPoint::kAllocation);
            Check();
            EXPECT_LE(HostShellLog().memoryBoxes, hits) << "giving memory back may fail unnoticed";
            if (editor_->undo->position == position) {
                EXPECT_EQ(HostShellLog().memoryBoxes, 1u);
                EXPECT_EQ(Text(), before);
                ++failures;
            } else {
                EXPECT_EQ(Text(), after);
            }
            while (CanUndo(editor_->undo)) Undo();
            EXPECT_EQ(Text(), kText);
            if (hits == 0) break;
        }
        EXPECT_GT(failures, 1);
    }

    void IndentAll() {
        SelectAll(editor_);
        IncreaseIndent(editor_);
    }

    const std::u16string kText =
        u" a\n\n   \tb\n" + std::u16string(300, u' ') + u"c\n" + std::u16string(90, u'd');
    const std::u16string kIndented =
        u"\t a\n\t\n\t\t   b\n" + std::u16string(76, u'\t') + u"c\n\t" + std::u16string(90, u'd');
};

TEST_F(IndentingFaults, IncreasingIsDoneWholeOrNotAtAll) {
    for (const bool wrapped : {false, true}) {
        Wrap(wrapped);
        Campaign([] {}, [&] { IndentAll(); }, kIndented);
    }
}

TEST_F(IndentingFaults, UndoingIsDoneWholeOrNotAtAll) {
    Wrap(true);
    Campaign([&] { IndentAll(); }, [&] { UndoApply(editor_, true, false); }, kText);
    Campaign([&] { IndentAll(); }, [&] { UndoApply(editor_, true, true); }, kText);
}

TEST_F(IndentingFaults, RedoingIsDoneWholeOrNotAtAll) {
    Wrap(true);
    const auto prepare = [&] {
        IndentAll();
        UndoApply(editor_, true, false);
    };
    Campaign(
        prepare, [&] { UndoApply(editor_, false, false); }, kIndented);
    Campaign(
        prepare, [&] { UndoApply(editor_, false, true); }, kIndented);
}

TEST_F(IndentingFaults, WithNoMemoryAtAllTheBoxIsShownOnce) {
    Start(kText);
    SelectAll(editor_);
    HostShellLogReset();
    FaultArm(FaultPoint::kAllocation, {.first = 1, .howMany = kFaultForever});
    IncreaseIndent(editor_);
    FaultDisarm(FaultPoint::kAllocation);
    Check();
    EXPECT_EQ(HostShellLog().memoryBoxes, 1u);
    EXPECT_EQ(Text(), kText);
    EXPECT_EQ(editor_->modified, 0);
    EXPECT_FALSE(CanUndo(editor_->undo));
}

}  // namespace
}  // namespace nira
