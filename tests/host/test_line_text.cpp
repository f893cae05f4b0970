#include "engine/line_text.h"

#include "host/editor_fixture.h"

namespace nira {
namespace {

class LineTextTest : public EditorTest {
  protected:
    LineTextTest() : editor_(Create(u"HELLO\r\nworld")) {}

    std::u16string Text(uint32_t line) const { return std::u16string(LineView(editor_, line)); }

    Editor* editor_;
};

uint32_t Set(Editor* editor, uint32_t line, std::u16string_view text) {
    return LineSetText(editor, line, text.data(), static_cast<uint32_t>(text.size()));
}

TEST_F(LineTextTest, CapacityGoesInStepsOfTen) {
    EXPECT_EQ(LineCapacityFor(0), 10u);
    EXPECT_EQ(LineCapacityFor(9), 10u);
    EXPECT_EQ(LineCapacityFor(10), 20u);
    EXPECT_EQ(LineCapacityFor(19), 20u);
    EXPECT_EQ(LineCapacityFor(20), 30u);
}

TEST_F(LineTextTest, TheTenthUnitDoublesTheCapacity) {
    Insert(editor_, 0, 5, u"6789");
    EXPECT_EQ(editor_->lines[0].capacity, 10u);
    EXPECT_EQ(MemSize(editor_->heap, editor_->lines[0].text), 22u);
    Insert(editor_, 0, 9, u"0");
    EXPECT_EQ(editor_->lines[0].capacity, 20u);
    EXPECT_EQ(MemSize(editor_->heap, editor_->lines[0].text), 42u);
    Delete(editor_, 0, 9, 0, 10);
    EXPECT_EQ(editor_->lines[0].capacity, 10u);
    EXPECT_EQ(MemSize(editor_->heap, editor_->lines[0].text), 22u);
}

TEST_F(LineTextTest, LongLinesGrowAheadAndGiveBackMuchOfIt) {
    Insert(editor_, 0, 0, std::u16string(4000, u'x'));
    const size_t size = MemSize(editor_->heap, editor_->lines[0].text);
    Insert(editor_, 0, 0, std::u16string(10, u'y'));
    EXPECT_GE(MemSize(editor_->heap, editor_->lines[0].text), size + size / 2);
    EXPECT_EQ(editor_->lines[0].capacity, 4020u);
    Delete(editor_, 0, 2500, 0, 4015);
    EXPECT_EQ(editor_->lines[0].capacity, 2510u);
    Delete(editor_, 0, 100, 0, 2500);
    EXPECT_EQ(MemSize(editor_->heap, editor_->lines[0].text), 222u);
}

TEST_F(LineTextTest, SetReplacesTheTextAndKeepsTheBreaks) {
    Insert(editor_, 0, 0, std::u16string(400, u'x'));
    const uint32_t* breaks = editor_->lines[0].breaks;
    ASSERT_NE(breaks, nullptr);
    EXPECT_EQ(Set(editor_, 0, u"short"), 5u);
    EXPECT_EQ(Text(0), u"short");
    EXPECT_EQ(editor_->lines[0].text[5], 0);
    EXPECT_EQ(editor_->lines[0].capacity, 10u);
    EXPECT_EQ(editor_->lines[0].breaks, breaks);
    LineMeasure(editor_, 0);
    ExpectSound(editor_);
}

TEST_F(LineTextTest, SetToNothingKeepsAnEmptyText) {
    EXPECT_EQ(Set(editor_, 1, u""), 0u);
    EXPECT_NE(editor_->lines[1].text, nullptr);
    EXPECT_EQ(editor_->lines[1].capacity, 10u);
    LineMeasure(editor_, 1);
    ExpectSound(editor_);
}

TEST_F(LineTextTest, SetWithoutASourceZeroesTheRecord) {
    Insert(editor_, 0, 0, std::u16string(400, u'x'));
    const size_t blocks = HostHeapLiveBlocks(editor_->heap);
    EXPECT_EQ(LineSetText(editor_, 0, nullptr, 7), 7u);
    EXPECT_EQ(HostHeapLiveBlocks(editor_->heap), blocks - 2) << "text and breaks";
    EXPECT_EQ(editor_->lines[0].text, nullptr);
    EXPECT_EQ(editor_->lines[0].length, 0u);
    EXPECT_EQ(editor_->lines[0].capacity, 0u);
    EXPECT_EQ(editor_->lines[0].width, 0);
    EXPECT_EQ(editor_->lines[0].breaks, nullptr);
    RecomputeWidest(editor_);
    ExpectSound(editor_);
}

TEST_F(LineTextTest, FreeZeroesTheRecordAndLeavesTheSums) {
    Insert(editor_, 0, 0, std::u16string(400, u'x'));
    const int32_t rows = editor_->wrapRows;
    EXPECT_GT(rows, 0);
    LineFree(editor_, 0);
    EXPECT_EQ(editor_->lines[0].text, nullptr);
    EXPECT_EQ(editor_->lines[0].breaks, nullptr);
    EXPECT_EQ(editor_->wrapRows, rows);
    RecomputeWidest(editor_);
    EXPECT_EQ(editor_->wrapRows, 0);
    ExpectSound(editor_);
}

TEST_F(LineTextTest, InsertMovesTheTail) {
    LineInsertChars(editor_, 0, 2, u"xy", 2);
    EXPECT_EQ(Text(0), u"HExyLLO");
    LineInsertChars(editor_, 0, 0, u"<", 1);
    LineInsertChars(editor_, 0, 8, u">", 1);
    EXPECT_EQ(Text(0), u"<HExyLLO>");
    EXPECT_EQ(editor_->lines[0].text[9], 0);
    LineMeasure(editor_, 0);
    ExpectSound(editor_);
}

TEST_F(LineTextTest, InsertClampsTheColumn) {
    LineInsertChars(editor_, 0, 600, u"!", 1);
    EXPECT_EQ(Text(0), u"HELLO!");
}

TEST_F(LineTextTest, InsertOfNothingOrLessDoesNothing) {
    LineInsertChars(editor_, 0, 2, u"xy", 0);
    LineInsertChars(editor_, 0, 2, u"xy", -1);
    EXPECT_EQ(Text(0), u"HELLO");
}

TEST_F(LineTextTest, InsertGivesTextToARecordWithoutAny) {
    LineFree(editor_, 0);
    LineInsertChars(editor_, 0, 5, u"new", 3);
    EXPECT_EQ(Text(0), u"new");
    EXPECT_EQ(editor_->lines[0].capacity, 10u);
    LineMeasure(editor_, 0);
    ExpectSound(editor_);
}

TEST_F(LineTextTest, DeleteMovesTheTail) {
    LineDeleteChars(editor_, 0, 1, 3);
    EXPECT_EQ(Text(0), u"HO");
    EXPECT_EQ(editor_->lines[0].text[2], 0);
    LineMeasure(editor_, 0);
    ExpectSound(editor_);
}

TEST_F(LineTextTest, DeleteClampsTheCount) {
    LineDeleteChars(editor_, 0, 3, 600);
    EXPECT_EQ(Text(0), u"HEL");
    LineDeleteChars(editor_, 0, 3, 1);
    LineDeleteChars(editor_, 0, 600, 1);
    LineDeleteChars(editor_, 0, 0, 0);
    LineDeleteChars(editor_, 0, 0, -5);
    EXPECT_EQ(Text(0), u"HEL");
}

TEST_F(LineTextTest, DeleteInARecordWithoutTextDoesNothing) {
    LineFree(editor_, 0);
    LineDeleteChars(editor_, 0, 0, 5);
    EXPECT_EQ(editor_->lines[0].text, nullptr);
}

TEST_F(LineTextTest, PrimitivesRecordNothing) {
    LineInsertChars(editor_, 0, 2, u"xy", 2);
    LineDeleteChars(editor_, 0, 1, 3);
    Set(editor_, 1, u"text");
    LineFree(editor_, 1);
    EXPECT_EQ(editor_->undo->count, 0);
    EXPECT_EQ(editor_->modified, 0);
}

TEST_F(LineTextTest, IndentCountsTabsAsTheFullTabSize) {
    TheOptions().tabSize = 4;
    Set(editor_, 0, u" \t  \tx \t");
    uint32_t width = 77;
    EXPECT_EQ(LineIndent(editor_, 0, &width, nullptr), 5u);
    EXPECT_EQ(width, 3u + 2 * 4u);
    EXPECT_EQ(LineIndent(editor_, 0, nullptr, nullptr), 5u);
}

TEST_F(LineTextTest, IndentStopsAtTheColumnGiven) {
    TheOptions().tabSize = 4;
    Set(editor_, 0, u" \t  \tx");
    uint32_t width = 77;
    for (uint32_t stop = 0; stop < 8; ++stop) {
        EXPECT_EQ(LineIndent(editor_, 0, &width, &stop), stop < 5 ? stop : 5u);
    }
    const uint32_t two = 2;
    LineIndent(editor_, 0, &width, &two);
    EXPECT_EQ(width, 5u);
}

TEST_F(LineTextTest, IndentOfEmptyAndBlankLines) {
    uint32_t width = 77;
    Set(editor_, 0, u"");
    EXPECT_EQ(LineIndent(editor_, 0, &width, nullptr), 0u);
    EXPECT_EQ(width, 0u);
    Set(editor_, 0, u"   ");
    EXPECT_EQ(LineIndent(editor_, 0, &width, nullptr), 3u);
    LineFree(editor_, 0);
    EXPECT_EQ(LineIndent(editor_, 0, &width, nullptr), 0u);
    EXPECT_EQ(width, 0u);
}

}  // namespace
}  // namespace nira
