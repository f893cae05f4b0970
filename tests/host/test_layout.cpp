#include "view/layout.h"

#include "host/editor_fixture.h"

namespace nira {
namespace {

using Starts = std::vector<uint32_t>;

class Layout : public EditorTest {
  protected:
    // A document that wraps at `columns` units of the fixed font.
    Editor* Wrapping(int32_t columns, std::u16string_view text) {
        TheOptions().wordWrapDefault = 1;
        UseWidth(columns * 8 + 1);
        return Create(text);
    }
};

TEST_F(Layout, RowsEndOnePixelBeforeTheWindow) {
    Editor* editor = Create();
    EXPECT_EQ(RowWidthLimit(editor), 3000);
    editor->wordWrap = 1;
    EXPECT_EQ(RowWidthLimit(editor), 479);
    UseWidth(1);
    EXPECT_EQ(RowWidthLimit(editor), 1);
    UseWidth(0);
    EXPECT_EQ(RowWidthLimit(editor), 1);
    UseWidth(-5);
    EXPECT_EQ(RowWidthLimit(editor), 1);
}

TEST_F(Layout, BreaksWhereTheNextUnitNoLongerFits) {
    Editor* editor = Wrapping(10, u"a b c d e f g h i j k l m");
    EXPECT_EQ(BreaksOf(editor, 0), (Starts{10, 20}));
    EXPECT_EQ(editor->wrapRows, 2);
    EXPECT_EQ(editor->lines[0].width, 25 * 8);
}

TEST_F(Layout, ALineAsWideAsTheLimitIsOneRow) {
    Editor* editor = Wrapping(10, u"1234567890");
    EXPECT_EQ(editor->lines[0].breaks, nullptr);
    Insert(editor, 0, 10, u"1");
    EXPECT_EQ(BreaksOf(editor, 0), (Starts{10}));
    Delete(editor, 0, 0, 0, 1);
    EXPECT_EQ(editor->lines[0].breaks, nullptr);
    EXPECT_EQ(editor->wrapRows, 0);
}

TEST_F(Layout, CapsRowsAt3000PixelsWithoutWrapping) {
    Editor* editor = Create(std::u16string(375, u'x'));
    EXPECT_EQ(editor->lines[0].breaks, nullptr);
    Insert(editor, 0, 0, u"x");
    EXPECT_EQ(BreaksOf(editor, 0), (Starts{375}));
    EXPECT_EQ(editor->widestLine, 3008);
}

TEST_F(Layout, TakesAtLeastOneUnitARow) {
    Editor* editor = Wrapping(0, u"abc");
    EXPECT_EQ(BreaksOf(editor, 0), (Starts{1, 2}));
    Insert(editor, 0, 3, u"\r\nz");
    EXPECT_EQ(editor->lines[1].breaks, nullptr) << "a single unit is one row, however wide";
    EXPECT_GT(editor->lines[1].width, RowWidthLimit(editor));
}

TEST_F(Layout, ATabCountsItsFullSizeWhereverItFalls) {
    Editor* editor = Wrapping(10, u"abc\td\te");
    EXPECT_EQ(BreaksOf(editor, 0), (Starts{3, 5})) << "8 columns a tab";
    TheOptions().tabSize = 4;
    EditorMeasureAll(editor);
    ExpectSound(editor);
    EXPECT_EQ(BreaksOf(editor, 0), (Starts{5}));
}

TEST_F(Layout, GrowsTheBreaksBeyondTheEstimate) {
    Editor* editor = Wrapping(10, std::u16string(12, u'\t'));
    EXPECT_EQ(BreaksOf(editor, 0).size(), 11u) << "a row has room for one tab and a quarter";
}

TEST_F(Layout, AResizeKeepsLinesUntilTheyAreEdited) {
    const std::u16string line(30, u'x');
    Editor* editor = Wrapping(10, line + u"\r\n" + line);
    UseWidth(20 * 8 + 1);
    Insert(editor, 1, 30, u"x");
    EXPECT_EQ(BreaksOf(editor, 0), (Starts{10, 20}));
    EXPECT_EQ(BreaksOf(editor, 1), (Starts{20})) << "from its start, for the width of now";
    EXPECT_EQ(editor->wrapRows, 3);
    EditorBreakAll(editor);
    ExpectSound(editor);
    EXPECT_EQ(BreaksOf(editor, 0), (Starts{20}));
}

TEST_F(Layout, EditsBreakTheRowsBehindThemAnew) {
    Editor* editor = Wrapping(10, std::u16string(40, u'x'));
    Insert(editor, 0, 25, u"\t");
    EXPECT_EQ(BreaksOf(editor, 0), (Starts{10, 20, 25, 28, 38}));
    Insert(editor, 0, 20, u"yy");
    EXPECT_EQ(BreaksOf(editor, 0), (Starts{10, 20, 27, 30, 40}));
    Delete(editor, 0, 9, 0, 11);
    EXPECT_EQ(BreaksOf(editor, 0), (Starts{10, 20, 25, 28, 38}));
    Delete(editor, 0, 0, 0, 41);
    EXPECT_EQ(editor->wrapRows, 0);
}

TEST_F(Layout, JoiningWithANarrowerRowTakesWhatFits) {
    Editor* editor = Wrapping(10, u"12345678\tx");
    EXPECT_EQ(BreaksOf(editor, 0), (Starts{8}));
    Delete(editor, 0, 8, 0, 9);
    EXPECT_EQ(editor->lines[0].breaks, nullptr) << "what follows moves up into the row before";
}

TEST_F(Layout, ReportsTheChangeOfRows) {
    Editor* editor = Create(std::u16string(30, u'x'));
    editor->wordWrap = 1;
    UseWidth(81);
    EXPECT_EQ(LineComputeBreaks(editor, 0, nullptr), 2);
    EXPECT_EQ(editor->wrapRows, 2);
    ExpectSound(editor);
    editor->wordWrap = 0;
    MeasureContext context;
    OpenMeasureContext(&context, &window_, editor->textStyle->font);
    EXPECT_EQ(LineComputeBreaks(editor, 0, &context), -2);
    CloseMeasureContext(&context);
    EXPECT_EQ(editor->wrapRows, 0);
    EXPECT_EQ(editor->lines[0].breaks, nullptr);
    ExpectSound(editor);
}

TEST_F(Layout, MeasuresOnlyTheLinesAskedFor) {
    Editor* editor = Create(u"aa\r\nbb\r\ncc");
    UseFont(u"Fixed\x1E");
    LinesMeasure(editor, 1, 2);
    EXPECT_EQ(editor->lines[0].width, 16);
    EXPECT_EQ(editor->lines[1].width, 36);
    EXPECT_EQ(editor->lines[2].width, 16);
    EXPECT_EQ(editor->widestLine, 36);
    EditorMeasureAll(editor);
    ExpectSound(editor);
    EXPECT_EQ(editor->lines[2].width, 36);
}

TEST_F(Layout, OpensOneDeviceForManyLines) {
    HostSetTextShaping(true);
    Editor* editor = Create(u"\u0628\u0628\r\n\u0628\r\n\u0628\u0628\u0628");
    HostTextDeviceResetCounts();
    EditorMeasureAll(editor);
    EXPECT_EQ(HostTextDeviceCounts().devicesOpened, 1u);
}

TEST_F(Layout, WidestLineIsZeroForEmptyText) {
    Editor* editor = Create(u"abc");
    EXPECT_EQ(editor->widestLine, 24);
    Delete(editor, 0, 0, 0, 3);
    EXPECT_EQ(editor->widestLine, 0);
}

TEST_F(Layout, AppendingKeepsTheRowsBefore) {
    Editor* editor = Wrapping(10, std::u16string(100000, u'x'));
    HostTextDeviceResetCounts();
    const uint32_t* breaks = editor->lines[0].breaks;
    Insert(editor, 0, 100000, u"y");
    EXPECT_EQ(editor->wrapRows, 10000);
    EXPECT_EQ(editor->lines[0].breaks[0], 10000u);
    EXPECT_NE(breaks, nullptr);
    EXPECT_LE(HostTextDeviceCounts().unitsMeasured, 1u);
}

TEST_F(Layout, NothingMeasuredIsShapedByAccident) {
    HostSetTextShaping(true);
    UseFont(kSerif14);
    Editor* editor = Create(u"e");
    Insert(editor, 0, 1, u"\u0301");
    EXPECT_EQ(editor->lines[0].shaped, 1u);
    Insert(editor, 0, 0, u"\u0628");
    Insert(editor, 0, 1, u"\u0628");
    Delete(editor, 0, 2, 0, 3);
    Delete(editor, 0, 0, 0, 3);
    Insert(editor, 0, 0, u"plain");
    Insert(editor, 0, 5, u"er");
    EXPECT_EQ(editor->lines[0].shaped, 0u);
}

}  // namespace
}  // namespace nira
