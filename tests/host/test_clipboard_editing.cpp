#include "view/clipboard_editing.h"

#include "host/view_fixture.h"
#include "platform/host/clipboard_state.h"
#include "view/undo_apply.h"

namespace nira {
namespace {

class ClipboardEditing : public ViewTest {
  protected:
    ClipboardEditing() { HostClipboard() = {}; }
    ~ClipboardEditing() override {
        EXPECT_FALSE(HostClipboard().open) << "the clipboard was left open";
        HostClipboard() = {};
    }

    void Start(const std::u16string& text) {
        EditorReset(editor_);
        Fill(text);
    }
    static void PutText(const std::u16string& text) { HostClipboard().text = text; }
    void PasteNormal(const std::u16string& text) {
        PutText(text);
        Do([&] { Paste(editor_, false); });
    }
    void PasteSmart(const std::u16string& text) {
        PutText(text);
        Do([&] { Paste(editor_, true); });
    }
    void Undo() const {
        Do([&] { UndoApply(editor_, true, false); });
    }
    void Redo() const {
        Do([&] { UndoApply(editor_, false, false); });
    }
    void UndoAll() const {
        while (CanUndo(editor_->undo)) Undo();
    }
    void RedoAll() const {
        while (CanRedo(editor_->undo)) Redo();
    }
    // The text as it is, after undoing and redoing all of it twice; each must give what it gave before.
    std::u16string TextThroughUndo() const {
        std::u16string after = Text();
        UndoAll();
        const std::u16string before = Text();
        RedoAll();
        EXPECT_EQ(Text(), after);
        UndoAll();
        EXPECT_EQ(Text(), before);
        RedoAll();
        EXPECT_EQ(Text(), after);
        return after;
    }
    static std::u16string OnClipboard() { return HostClipboard().text.value_or(u"(nothing)"); }
};

// ---- copy and cut ----

TEST_F(ClipboardEditing, CopyPutsTheSelectionThereAndLeavesTheTextAlone) {
    Start(u"one\ntwo");
    Select(0, 1, 1, 2);
    Do([&] { EXPECT_TRUE(CopySelection(editor_)); });
    EXPECT_EQ(OnClipboard(), u"ne\r\ntw");
    EXPECT_EQ(Text(), u"one\ntwo");
    EXPECT_EQ(Anchor(), Place(0, 1));
    EXPECT_EQ(editor_->modified, 0);
    EXPECT_EQ(TheNews().repaints, 0);
}

TEST_F(ClipboardEditing, CopyTakesABackwardSelectionInReadingOrder) {
    Start(u"one\ntwo");
    Select(1, 2, 0, 1);
    Do([&] { EXPECT_TRUE(CopySelection(editor_)); });
    EXPECT_EQ(OnClipboard(), u"ne\r\ntw");
}

TEST_F(ClipboardEditing, CopyUsesTheDocumentsLineEnds) {
    Start(u"a\nb");
    Select(0, 0, 1, 1);
    const std::pair<uint32_t, std::u16string> ends[] = {
        {kLineEndLf, u"a\nb"}, {kLineEndCr, u"a\rb"}, {kLineEndCrLf, u"a\r\nb"}};
    for (const auto& [end, text] : ends) {
        editor_->lineEnd = end;
        CopySelection(editor_);
        EXPECT_EQ(OnClipboard(), text);
    }
}

TEST_F(ClipboardEditing, WithoutASelectionTheClipboardStaysAsItIs) {
    Start(u"abc");
    PutText(u"precious");
    Do([&] { EXPECT_FALSE(CopySelection(editor_)); });
    Do([&] { CutSelection(editor_); });
    Select(0, 1, 0, 1);
    Do([&] { EXPECT_FALSE(CopySelection(editor_)); });
    Do([&] { CutSelection(editor_); });
    EXPECT_EQ(OnClipboard(), u"precious");
    EXPECT_EQ(Text(), u"abc");
    EXPECT_FALSE(CanUndo(editor_->undo));
    EXPECT_EQ(TheNews().repaints, 0);
}

TEST_F(ClipboardEditing, CutCopiesAndDeletes) {
    Start(u"one\ntwo");
    Select(0, 1, 1, 2);
    Do([&] { CutSelection(editor_); });
    EXPECT_EQ(OnClipboard(), u"ne\r\ntw");
    EXPECT_EQ(Text(), u"oo");
    EXPECT_EQ(Caret(), Place(0, 1));
    EXPECT_EQ(Anchor(), kNoAnchor);
    EXPECT_EQ(TheNews().repaints, 1);
    EXPECT_EQ(TheNews().selections, 1);
    EXPECT_EQ(editor_->undo->count, 1);
    Undo();
    EXPECT_EQ(Text(), u"one\ntwo");
    EXPECT_EQ(Caret(), Place(1, 2)) << "behind what came back";
}

TEST_F(ClipboardEditing, CutDeletesNothingThatWasNotCopied) {
    Start(u"abc");
    Select(0, 0, 0, 2);
    PutText(u"precious");
    for (bool ClipboardState::*trouble : {&ClipboardState::busy, &ClipboardState::refusesText}) {
        HostClipboard().*trouble = true;
        Do([&] { EXPECT_FALSE(CopySelection(editor_)); });
        Do([&] { CutSelection(editor_); });
        HostClipboard().*trouble = false;
    }
    EXPECT_EQ(Text(), u"abc");
    EXPECT_EQ(OnClipboard(), u"precious");
    EXPECT_EQ(Anchor(), Place(0, 0));
    EXPECT_EQ(MessageLog().size(), 0u) << "the clipboard's failures are silent";
}

TEST_F(ClipboardEditing, CutOfEverythingLeavesOneEmptyLine) {
    Start(u"one\n\ntwo\n");
    Do([&] { SelectAll(editor_); });
    Do([&] { CutSelection(editor_); });
    EXPECT_EQ(OnClipboard(), u"one\r\n\r\ntwo\r\n");
    EXPECT_EQ(Text(), u"");
    EXPECT_EQ(editor_->lineCount, 1u);
    Undo();
    EXPECT_EQ(Text(), u"one\n\ntwo\n");
    PasteNormal(OnClipboard());
    EXPECT_EQ(Text(), u"one\n\ntwo\none\n\ntwo\n");
}

TEST_F(ClipboardEditing, CopyKeepsUnitsThatAreNoCharacters) {
    Start(std::u16string(u"a\0\xD800z\xDC00", 5));
    Do([&] { SelectAll(editor_); });
    Do([&] { EXPECT_TRUE(CopySelection(editor_)); });
    EXPECT_EQ(OnClipboard(), std::u16string(u"a\0\xD800z\xDC00", 5));
}

TEST_F(ClipboardEditing, CopyInMarkModeKeepsMarking) {
    Start(u"abc");
    Do([&] { MarkStart(editor_); });
    Do([&] { MoveRight(editor_, false); });
    Do([&] { EXPECT_TRUE(CopySelection(editor_)); });
    EXPECT_EQ(editor_->markMode, 1);
    Do([&] { CutSelection(editor_); });
    EXPECT_EQ(Anchor(), kNoAnchor);
    EXPECT_EQ(editor_->markMode, 1);
    Do([&] { MoveRight(editor_, false); });
    EXPECT_EQ(Anchor(), Place(0, 0));
}

// ---- normal paste ----

TEST_F(ClipboardEditing, PasteInsertsAtTheCaretAndMovesBehindIt) {
    Start(u"ad");
    At(0, 1);
    PasteNormal(u"bc");
    EXPECT_EQ(Text(), u"abcd");
    EXPECT_EQ(Caret(), Place(0, 3));
    EXPECT_EQ(TheNews().repaints, 1);
    EXPECT_EQ(editor_->modified, 1);
}

TEST_F(ClipboardEditing, PasteReplacesTheSelection) {
    Start(u"one\ntwo\nthree");
    Select(2, 2, 0, 1);
    PasteNormal(u"X\r\nY");
    EXPECT_EQ(Text(), u"oX\nYree");
    EXPECT_EQ(Caret(), Place(1, 1));
    EXPECT_EQ(Anchor(), kNoAnchor);
    EXPECT_EQ(TheNews().selections, 1);
    UndoAll();
    EXPECT_EQ(Text(), u"one\ntwo\nthree");
}

TEST_F(ClipboardEditing, PasteTakesEveryFormOfLineBreak) {
    const std::pair<std::u16string, std::u16string> texts[] = {{u"a\nb", u"a\nb"},
                                                               {u"a\rb", u"a\nb"},
                                                               {u"a\r\nb", u"a\nb"},
                                                               {u"a\n\nb", u"a\n\nb"},
                                                               {u"a\r\rb", u"a\n\nb"},
                                                               {u"a\r\r\nb", u"a\n\nb"},
                                                               {u"a\n\r\nb", u"a\n\nb"},
                                                               {u"a\n\rb", u"a\n\nb"},
                                                               {u"\n\na", u"\n\na"},
                                                               {u"\r\n", u"\n"},
                                                               {u"\n", u"\n"},
                                                               {u"\r", u"\n"},
                                                               {u"\n\n\n", u"\n\n\n"},
                                                               {u"\r\r\r", u"\n\n\n"},
                                                               {u"\r\n\r\n", u"\n\n"},
                                                               {u"a\r", u"a\n"},
                                                               {u"\n\n\n\nb\n\n", u"\n\n\n\nb\n\n"}};
    for (const auto& [pasted, lines] : texts) {
        Start(u"<>");
        At(0, 1);
        PasteNormal(pasted);
        EXPECT_EQ(TextThroughUndo(), u"<" + lines + u">");
    }
}

TEST_F(ClipboardEditing, PasteOfBreaksAlonePutsTheCaretBehindTheLast) {
    Start(u"<>");
    At(0, 1);
    PasteNormal(u"\n\n\r\n\r");
    EXPECT_EQ(Text(), u"<\n\n\n\n>");
    EXPECT_EQ(Caret(), Place(4, 0));
}

TEST_F(ClipboardEditing, PasteOfAnEmptyTextDeletesTheSelection) {
    for (const bool smart : {false, true}) {
        Start(u"abcd");
        Select(0, 1, 0, 3);
        smart ? PasteSmart(u"") : PasteNormal(u"");
        EXPECT_EQ(Text(), u"ad");
        EXPECT_EQ(Caret(), Place(0, 1));
    }
}

TEST_F(ClipboardEditing, WithoutTextOnTheClipboardNothingHappens) {
    for (const bool smart : {false, true}) {
        Start(u"abcd");
        Select(0, 1, 0, 3);
        Do([&] { Paste(editor_, smart); });
        EXPECT_EQ(Text(), u"abcd");
        EXPECT_EQ(Anchor(), Place(0, 1));
        EXPECT_FALSE(CanUndo(editor_->undo));
    }
}

TEST_F(ClipboardEditing, WhileAnotherProgramHoldsTheClipboardNothingHappens) {
    Start(u"abcd");
    Select(0, 1, 0, 3);
    PutText(u"x");
    HostClipboard().busy = true;
    Do([&] { Paste(editor_, false); });
    EXPECT_EQ(Text(), u"abcd");
    EXPECT_EQ(Anchor(), Place(0, 1));
    EXPECT_EQ(MessageLog().size(), 0u);
}

TEST_F(ClipboardEditing, PasteEndsAtAZero) {
    Start(u"");
    PasteNormal(std::u16string(u"ab\0cd", 5));
    EXPECT_EQ(Text(), u"ab");
}

TEST_F(ClipboardEditing, AGivenTextMayHoldZerosAndUnpairedSurrogates) {
    const std::u16string text(u"\xDC00\0a\xD800", 4);
    for (const bool smart : {false, true}) {
        Start(u"<>");
        At(0, 1);
        Do([&] { PasteText(editor_, text.data(), 4, smart); });
        EXPECT_EQ(TextThroughUndo(), u"<" + text + u">");
    }
}

TEST_F(ClipboardEditing, PasteIntoAnEmptyDocumentAndAtEitherEnd) {
    Start(u"");
    PasteNormal(u"m\nn");
    At(0, 0);
    PasteNormal(u"a\n");
    Do([&] { MoveToEnd(editor_, false); });
    PasteNormal(u"\nz");
    EXPECT_EQ(TextThroughUndo(), u"a\nm\nn\nz");
}

TEST_F(ClipboardEditing, PasteInMarkModeReplacesNothingThatWasPasted) {
    Start(u"");
    Do([&] { MarkStart(editor_); });
    PasteNormal(u"a\nb");
    PasteNormal(u"c");
    EXPECT_EQ(Text(), u"a\nbc");
    EXPECT_EQ(editor_->markMode, 1);
}

TEST_F(ClipboardEditing, NormalPasteChangesNoIndentation) {
    Start(u"\tx");
    At(0, 1);
    PasteNormal(u"  a\n    b\n");
    EXPECT_EQ(Text(), u"\t  a\n    b\nx");
}

// ---- smart paste ----

TEST_F(ClipboardEditing, SmartPasteMovesTheBlockToTheCaretsIndentation) {
    Start(u"\t");
    At(0, 1);
    PasteSmart(u"  a\n    b");
    EXPECT_EQ(TextThroughUndo(), u"\ta\n\t  b");
    EXPECT_EQ(editor_->flags & kFlagSmartPaste, 0u);
}

TEST_F(ClipboardEditing, SmartPasteOfOneLineOnlyLosesItsIndentation) {
    Start(u"\tab");
    At(0, 2);
    PasteSmart(u" \t x\t y ");
    EXPECT_EQ(Text(), u"\tax\t y b");
    EXPECT_EQ(Caret(), Place(0, 7));
    EXPECT_EQ(editor_->undo->count, 1);
}

TEST_F(ClipboardEditing, SmartPasteOfBlanksAloneInsertsNothing) {
    Start(u"ab");
    Select(0, 0, 0, 1);
    PasteSmart(u" \t ");
    EXPECT_EQ(Text(), u"b");
}

TEST_F(ClipboardEditing, SmartPasteMovesABlockOutToo) {
    Start(u"");
    PasteSmart(u"\t\ta\n\t\t\tb\n\tc\n\t\td");
    EXPECT_EQ(TextThroughUndo(), u"a\n\tb\nc\nd") << "a line left of the base stops at the edge";
}

TEST_F(ClipboardEditing, SmartPasteCountsOnlyTheBlanksBeforeTheCaret) {
    Start(u"\t\tx");
    At(0, 1);
    PasteSmart(u"a\n  b\n");
    EXPECT_EQ(Text(), u"\ta\n\t  b\n\t\tx") << "the rest of the line goes along";
}

TEST_F(ClipboardEditing, SmartPasteBehindTextUsesTheLinesIndentation) {
    Start(u"  if x\nend");
    At(0, 6);
    PasteSmart(u"\tthen\n\t  go\n");
    EXPECT_EQ(TextThroughUndo(), u"  if xthen\n\tgo\n\nend");
}

TEST_F(ClipboardEditing, WithTheFirstLineAsBaseTheFirstLineStays) {
    TheOptions().smartBase = 0;
    Start(u"\t");
    At(0, 1);
    PasteSmart(u"    a\nb\n  c");
    EXPECT_EQ(TextThroughUndo(), u"\ta\nb\n  c") << "4 + 0 - 4 and 4 + 2 - 4";
}

TEST_F(ClipboardEditing, WithTheSmallestAsBaseTheFirstLineMovesToo) {
    TheOptions().smartBase = 1;
    Start(u"\t");
    At(0, 1);
    PasteSmart(u"    a\nb\n  c");
    EXPECT_EQ(TextThroughUndo(), u"\t\ta\n\tb\n\t  c");
    EXPECT_EQ(editor_->undo->count, 3) << "the text and two indentations";
}

TEST_F(ClipboardEditing, TheFirstLineMovesAtTheEndOfTheIndentationButNotBehindIt) {
    TheOptions().smartBase = 1;
    Start(u"\tx");
    At(0, 1);
    PasteSmart(u"  a\nb\n");
    EXPECT_EQ(Text(), u"\t  a\n\tb\n\tx");
    Start(u"\tx");
    At(0, 2);
    PasteSmart(u"  a\nb\n");
    EXPECT_EQ(Text(), u"\txa\n\tb\n\t");
}

TEST_F(ClipboardEditing, LinesOfBlanksAloneDoNotCountForTheSmallest) {
    TheOptions().smartBase = 1;
    Start(u"");
    PasteSmart(u"    a\n \n\n  b");
    EXPECT_EQ(Text(), u"  a\n\n\nb") << "the base is 2";
}

TEST_F(ClipboardEditing, TheLastLineDoesNotCountWhenItsIndentationReachesPastTheCaret) {
    TheOptions().smartBase = 1;
    Start(u"    x");
    At(0, 0);
    PasteSmart(u"  a\n  b\n");
    EXPECT_EQ(Text(), u"a\nb\n  x") << "x was not pasted: the base is 2, not 4 nor 0";
    Start(u"   x");
    At(0, 1);
    PasteSmart(u"      a\n     b\n ");
    EXPECT_EQ(Text(), u"  a\n b\nx") << "only the blanks before the caret were pasted";
}

TEST_F(ClipboardEditing, TheLastLineCountsWhenItsIndentationEndsBeforeTheCaret) {
    TheOptions().smartBase = 1;
    Start(u"");
    PasteSmart(u"    a\n  b");
    EXPECT_EQ(Text(), u"  a\nb");
    Start(u"x");
    PasteSmart(u"    a\n  ");
    EXPECT_EQ(Text(), u"  a\nx") << "the two pasted blanks count: caret and indentation end together";
}

TEST_F(ClipboardEditing, SmartPasteSeesLinesOfEveryForm) {
    for (const std::u16string end : {u"\n", u"\r", u"\r\n"}) {
        Start(u"\t");
        At(0, 1);
        PasteSmart((u"a" + end).append(end).append(u"  b"));
        EXPECT_EQ(Text(), u"\ta\n\t\n\t  b");
    }
}

TEST_F(ClipboardEditing, SmartPasteReplacesTheSelectionBeforeItLooksAtTheIndentation) {
    Start(u"\t\tone\n\ttwo");
    Select(0, 1, 1, 4);
    PasteSmart(u"a\nb");
    EXPECT_EQ(TextThroughUndo(), u"\ta\n\tb");
}

TEST_F(ClipboardEditing, SmartPasteKeepsTheCaretBehindTheBlock) {
    Start(u"\t<>");
    At(0, 2);
    PasteSmart(u"a\nb");
    EXPECT_EQ(Text(), u"\t<a\n\tb>");
    EXPECT_EQ(Caret(), Place(1, 2));
    EXPECT_EQ(Anchor(), kNoAnchor);
}

TEST_F(ClipboardEditing, SmartPasteWithOddTabSizes) {
    TheOptions().tabSize = 0;
    Start(u"  ");
    At(0, 2);
    PasteSmart(u"\ta\n b\n\tc");
    EXPECT_EQ(TextThroughUndo(), u"  a\n   b\n  c");
    TheOptions().tabSize = 1;
    Start(u" ");
    At(0, 1);
    PasteSmart(u"a\n  b");
    EXPECT_EQ(TextThroughUndo(), u" a\n\t\t\tb");
    TheOptions().tabSize = INT32_MAX;
    Start(u"\t");
    At(0, 1);
    PasteSmart(u"\ta\n\t b");
    EXPECT_EQ(TextThroughUndo(), u"\ta\n\t b");
}

// ---- sizes and failures ----

#ifdef NDEBUG  // a minute under the sanitizers
TEST_F(ClipboardEditing, FiftyMegabytesArePasted) {
    TheOptions().undoSize = 1U << 20;
    std::u16string text;
    while (text.size() < 25U << 20) text += u"a line of the usual length, more or less\r\n";
    PasteNormal(text);
    const size_t lines = text.size() / 42;
    EXPECT_EQ(editor_->lineCount, lines + 1);
    EXPECT_EQ(Caret(), Place(static_cast<int32_t>(lines), 0));
    Undo();
    EXPECT_EQ(Text(), u"");
    Redo();
    EXPECT_EQ(editor_->lineCount, lines + 1);
    Do([&] { SelectAll(editor_); });
    Do([&] { CutSelection(editor_); });
    EXPECT_EQ(HostClipboard().text == text, true);
}
#endif

TEST_F(ClipboardEditing, ACutWithoutMemoryDeletesNothing) {
    // First there is none for the clipboard, then none to delete what was copied.
    const std::u16string clipboards[] = {u"precious", u"ne\r\nt"};
    for (uint32_t call = 1; call <= 2; ++call) {
        Start(u"one\ntwo");
        PutText(u"precious");
        Select(0, 1, 1, 1);
        HostShellLogReset();
        FaultArm(FaultPoint::kAllocation, {.first = call});
        CutSelection(editor_);
        FaultDisarm(FaultPoint::kAllocation);
        Check();
        EXPECT_EQ(HostShellLog().memoryBoxes, 1u);
        EXPECT_EQ(Text(), u"one\ntwo");
        EXPECT_EQ(OnClipboard(), clipboards[call - 1]);
        EXPECT_EQ(Anchor(), Place(0, 1));
    }
}

class PasteFaults : public ClipboardEditing, public testing::WithParamInterface<bool> {
  protected:
    void Prepare() {
        Start(u"\tone\n\ttwo\nthree");
        Wrap(true);
        EditorBreakAll(editor_);
        Select(0, 2, 1, 3);
        HostShellLogReset();
    }
};

TEST_P(PasteFaults, EveryAllocationMayFailAndUndoStillRestores) {
    const bool smart = GetParam();
    TheOptions().smartBase = 1;
    PutText(u"    A\n  B\n\n\n      C which is longer than a row of the window");
    uint32_t hits = 1;
    for (uint32_t call = 1; hits > 0; ++call) {
        SCOPED_TRACE(call);
        ASSERT_LT(call, 200u);
        Prepare();
        FaultArm(FaultPoint::kAllocation, {.first = call});
        Paste(editor_, smart);
        hits = FaultHits(FaultPoint::kAllocation);
        FaultDisarm(FaultPoint::kAllocation);
        Check();
        EXPECT_LE(HostShellLog().memoryBoxes, hits);
        EXPECT_EQ(editor_->flags & (kFlagSmartPaste | kFlagNoUndo), 0u);
        std::u16string after = Text();
        UndoAll();
        EXPECT_EQ(Text(), u"\tone\n\ttwo\nthree");
        RedoAll();
        EXPECT_EQ(Text(), after);
    }
    const std::u16string row = u"C which is longer than a row of the windowo\nthree";
    EXPECT_EQ(Text(), smart ? u"\toA\n\tB\n  \n  \n\t\t" + row : u"\to    A\n  B\n\n\n      " + row);
}

TEST_P(PasteFaults, UndoAndRedoOfItMayFailToo) {
    PutText(u"    A\n  B\n\n\n      C which is longer than a row of the window");
    uint32_t hits = 1;
    for (uint32_t call = 1; hits > 0; ++call) {
        SCOPED_TRACE(call);
        ASSERT_LT(call, 400u);
        Prepare();
        Paste(editor_, GetParam());
        std::u16string after = Text();
        HostShellLogReset();
        FaultArm(FaultPoint::kAllocation, {.first = call});
        for (int i = 0; i < 6; ++i) UndoApply(editor_, true, false);
        for (int i = 0; i < 6; ++i) UndoApply(editor_, false, false);
        hits = FaultHits(FaultPoint::kAllocation);
        FaultDisarm(FaultPoint::kAllocation);
        Check();
        EXPECT_LE(HostShellLog().memoryBoxes, hits);
        RedoAll();
        EXPECT_EQ(Text(), after);
        UndoAll();
        EXPECT_EQ(Text(), u"\tone\n\ttwo\nthree");
    }
}

TEST_P(PasteFaults, WithNoMemoryAtAllTheBoxIsShownOnce) {
    PutText(u"  A\n  B");
    Prepare();
    At(0, 0);
    editor_->anchorColumn = kNoSelection;
    FaultArm(FaultPoint::kAllocation, {.first = 1, .howMany = kFaultForever});
    Paste(editor_, GetParam());
    FaultDisarm(FaultPoint::kAllocation);
    Check();
    EXPECT_EQ(HostShellLog().memoryBoxes, 1u);
    EXPECT_EQ(Text(), u"\tone\n\ttwo\nthree");
}

INSTANTIATE_TEST_SUITE_P(BothModes, PasteFaults, testing::Bool(), [](const auto& instance) {
    return std::string(instance.param ? "Smart" : "Normal");
});

}  // namespace
}  // namespace nira
