#include "engine/render_rows.h"

#include "host/view_fixture.h"

namespace nira {
namespace {

class RenderRows : public ViewTest {
  protected:
    // How display row `row` is drawn: its text with the selected part in brackets; a tilde stands where the
    // selection's colours fill the rest of the row.
    std::u16string Drawn(int32_t row) const {
        RowText made =
            MakeRowText(editor_, EditorRowPosition(editor_, row), SelectionSpanOf(editor_), OptionsTabSize());
        std::u16string text(made.text, made.length);
        const bool selected = made.selectionEnd > made.selectionStart || made.selectedToEdge;
        if (selected) {
            text.insert(made.selectionEnd, made.selectedToEdge ? u"~" : u"]");
            text.insert(made.selectionStart, u"[");
        }
        FreeRowText(&made);
        EXPECT_EQ(made.expanded, nullptr);
        return text;
    }
};

TEST_F(RenderRows, ARowWithoutSelectionIsOnePiece) {
    Fill(u"abc");
    EXPECT_EQ(Drawn(0), u"abc");
    EXPECT_FALSE(SelectionSpanOf(editor_).present);
}

TEST_F(RenderRows, ASelectionInsideARowMakesThreePieces) {
    Fill(u"abcdef");
    Select(0, 2, 0, 4);
    EXPECT_EQ(Drawn(0), u"ab[cd]ef");
    Select(0, 4, 0, 2);
    EXPECT_EQ(Drawn(0), u"ab[cd]ef");
    Select(0, 0, 0, 6);
    EXPECT_EQ(Drawn(0), u"[abcdef]");
}

TEST_F(RenderRows, ASelectionOverRowsFillsAllButTheLastToTheEdge) {
    Fill(u"abc\ndef\nghi\njkl");
    Select(2, 1, 0, 2);
    EXPECT_EQ(Drawn(0), u"ab[c~");
    EXPECT_EQ(Drawn(1), u"[def~");
    EXPECT_EQ(Drawn(2), u"[g]hi");
    EXPECT_EQ(Drawn(3), u"jkl");
}

TEST_F(RenderRows, ASelectionOfALineEndAloneShowsBehindTheText) {
    Fill(u"abc\ndef");
    Select(0, 3, 1, 0);
    EXPECT_EQ(Drawn(0), u"abc[~");
    EXPECT_EQ(Drawn(1), u"def");
}

TEST_F(RenderRows, ASelectionRunsThroughTheRowsOfAWrappedLine) {
    Wrap(true);
    Fill(std::u16string(24, u'a') + std::u16string(24, u'b') + u"cccc");
    Select(0, 22, 0, 50);
    EXPECT_EQ(Drawn(0), std::u16string(22, u'a') + u"[aa~");
    EXPECT_EQ(Drawn(1), u"[" + std::u16string(24, u'b') + u"~");
    EXPECT_EQ(Drawn(2), u"[cc]cc");
}

TEST_F(RenderRows, ASelectionThatEndsAtARowBreakDoesNotReachTheNextRow) {
    Wrap(true);
    Fill(std::u16string(24, u'a') + u"bbbb");
    Select(0, 20, 0, 24);
    EXPECT_EQ(Drawn(0), std::u16string(20, u'a') + u"[aaaa~");
    EXPECT_EQ(Drawn(1), u"bbbb");
    Select(0, 24, 0, 28);
    EXPECT_EQ(Drawn(0), std::u16string(24, u'a'));
    EXPECT_EQ(Drawn(1), u"[bbbb]");
}

TEST_F(RenderRows, ATabIsDrawnAsItsColumnsWhereverItStands) {
    Fill(u"a\tb\t");
    EXPECT_EQ(Drawn(0), u"a    b    ");
    TheOptions().tabSize = 0;
    EXPECT_EQ(Drawn(0), u"ab");
    TheOptions().tabSize = UINT32_MAX;
    EXPECT_EQ(Drawn(0), u"a\tb\t");
    TheOptions().tabSize = 4;
}

TEST_F(RenderRows, SelectedColumnsMoveByTheTabsBeforeThem) {
    Fill(u"a\tb\tc");
    Select(0, 1, 0, 2);
    EXPECT_EQ(Drawn(0), u"a[    ]b    c");
    Select(0, 2, 0, 3);
    EXPECT_EQ(Drawn(0), u"a    [b]    c");
    Select(0, 3, 0, 5);
    EXPECT_EQ(Drawn(0), u"a    b[    c]");
    Select(0, 0, 0, 1);
    EXPECT_EQ(Drawn(0), u"[a]    b    c");
}

TEST_F(RenderRows, TabsOfAWrappedLineMoveOnlyTheirOwnRow) {
    Wrap(true);
    Fill(u"\t\t\t\t\t\tx\ty");
    ASSERT_EQ(EditorRows(editor_), 2);
    Select(0, 7, 0, 8);
    EXPECT_EQ(Drawn(0), std::u16string(24, u' '));
    EXPECT_EQ(Drawn(1), u"x[    ]y");
}

TEST_F(RenderRows, HugeTabsAreDrawnNoWiderThanAnyScreen) {
    Fill(u"a\tb");
    TheOptions().tabSize = 0x7FFFFFFF;
    EXPECT_EQ(Drawn(0).size(), size_t{kMostTabColumns} + 2);
    TheOptions().tabSize = 4;
}

TEST_F(RenderRows, ExpansionGivesBackWhatItCosts) {
    uint32_t length = 2;
    uint32_t start = 0;
    uint32_t end = 2;
    EXPECT_EQ(ExpandTabsForRow(u"ab", &length, 4, &start, &end), nullptr);
    char16_t* expanded = ExpandTabsForRow(u"\tb", &length, 3, &start, &end);
    EXPECT_EQ(std::u16string(expanded), u"   b");
    EXPECT_EQ(length, 4u);
    EXPECT_EQ(start, 0u);
    EXPECT_EQ(end, 4u);
    MemFree(nullptr, expanded);
}

TEST_F(RenderRows, WithoutMemoryTabsAreDrawnAsGlyphs) {
    Fill(u"a\tb");
    Select(0, 1, 0, 2);
    FaultScope fault(FaultPoint::kAllocation, {.first = 1, .howMany = kFaultForever});
    EXPECT_EQ(Drawn(0), u"a[\t]b");
}

}  // namespace
}  // namespace nira
