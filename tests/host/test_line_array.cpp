#include "engine/line_array.h"

#include "host/editor_fixture.h"

namespace nira {
namespace {

class LineArrayTest : public EditorTest {};

TEST_F(LineArrayTest, GrowsToTwentyWithTheEleventhLine) {
    Editor* editor = Create();
    EXPECT_EQ(editor->lineCapacity, 10);
    for (int i = 0; i < 9; ++i) Insert(editor, 0, 0, u"\r\n");
    EXPECT_EQ(editor->lineCount, 10u);
    EXPECT_EQ(editor->lineCapacity, 10);
    Insert(editor, 0, 0, u"\r\n");
    EXPECT_EQ(editor->lineCapacity, 20);
    Delete(editor, 0, 0, 1, 0);
    EXPECT_EQ(editor->lineCapacity, 20) << "ten lines and ten to spare";
    Delete(editor, 0, 0, 1, 0);
    EXPECT_EQ(editor->lineCount, 9u);
    EXPECT_EQ(editor->lineCapacity, 10);
}

TEST_F(LineArrayTest, GrowsInOneStepByManyLines) {
    Editor* editor = Create();
    Insert(editor, 0, 0, std::u16string(1000, u'\r'));
    EXPECT_EQ(editor->lineCount, 1001u);
    EXPECT_EQ(editor->lineCapacity, 1010);
    Delete(editor, 1, 0, 1000, 0);
    EXPECT_EQ(editor->lineCount, 2u);
    EXPECT_EQ(editor->lineCapacity, 10);
    EXPECT_EQ(MemSize(editor->heap, editor->lines), 10 * sizeof(LineRecord));
}

TEST_F(LineArrayTest, NeverKeepsMoreThanTenSpareRecords) {
    Editor* editor = Create();
    Insert(editor, 0, 0, std::u16string(300, u'\r'));
    while (editor->lineCount > 1) {
        const uint32_t lines = std::min(editor->lineCount - 1, 7u);
        Delete(editor, 0, 0, lines, 0);
        EXPECT_LE(static_cast<uint32_t>(editor->lineCapacity), editor->lineCount + 10);
    }
}

TEST_F(LineArrayTest, AllocatesWhatItReports) {
    Editor* editor = Create();
    for (int i = 0; i < 200; ++i) {
        Insert(editor, 0, 0, u"\r\n");
        EXPECT_GE(MemSize(editor->heap, editor->lines),
                  static_cast<size_t>(editor->lineCapacity) * sizeof(LineRecord));
    }
}

TEST_F(LineArrayTest, GrowsSeldomLineByLine) {
    Editor* editor = Create();
    editor->flags = kFlagNoUndo;
    int moves = 0;
    size_t size = MemSize(editor->heap, editor->lines);
    for (int i = 0; i < 5000; ++i) {
        TextInsert(editor, 0, 0, u"\n", 1);
        moves += MemSize(editor->heap, editor->lines) != size ? 1 : 0;
        size = MemSize(editor->heap, editor->lines);
    }
    EXPECT_LT(moves, 30);
}

TEST_F(LineArrayTest, ReservingChangesNothingThatShows) {
    Editor* editor = Create(u"a\r\nb");
    ReserveLines(editor, 1000);
    EXPECT_EQ(editor->lineCapacity, 10);
    EXPECT_EQ(editor->lineCount, 2u);
    ExpectSound(editor);
}

}  // namespace
}  // namespace nira
