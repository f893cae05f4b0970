#include "engine/editor.h"

#include "host/editor_fixture.h"

namespace nira {
namespace {

class EditorRecord : public EditorTest {};

TEST_F(EditorRecord, ChangingTheModifiedFlagRebuildsTheTitle) {
    Editor* editor = Create();
    SetModified(editor, 0);
    EXPECT_EQ(News().titles, 0);
    SetModified(editor, 1);
    SetModified(editor, 1);
    EXPECT_EQ(News().titles, 1);
    SetModified(editor, 0);
    EXPECT_EQ(News().titles, 2);
    EXPECT_EQ(editor->modified, 0);
}

TEST_F(EditorRecord, StoresTheFlagBeforeTheTitleIsRebuilt) {
    Editor* editor = Create();
    static Editor* seen;
    static int16_t flag;
    seen = editor;
    TheEditorEvents().titleChanged = [] { flag = seen->modified; };
    SetModified(editor, 1);
    EXPECT_EQ(flag, 1);
}

TEST_F(EditorRecord, EditsWithoutAnyoneListening) {
    TheEditorEvents() = {};
    Editor* editor = Create();
    Insert(editor, 0, 0, u"a\r\nb");
    NotifyRepaint(editor);
    NotifySelection(editor);
    EXPECT_EQ(editor->modified, 1);
}

TEST_F(EditorRecord, DefersRepaints) {
    Editor* editor = Create();
    NotifyRepaint(editor);
    EXPECT_EQ(News().repaints, 1);
    editor->flags = kFlagPaintDeferred;
    NotifyRepaint(editor);
    EXPECT_EQ(News().repaints, 1);
    EXPECT_EQ(editor->flags, kFlagPaintDeferred | kFlagRepaintPending);
}

TEST_F(EditorRecord, CountsRowsLessTheHiddenOnes) {
    Editor* editor = Create(u"a\r\nb");
    Insert(editor, 0, 0, std::u16string(400, u'x'));
    EXPECT_EQ(EditorRows(editor), 3);
    editor->hiddenRows = 1;
    EXPECT_EQ(EditorRows(editor), 2);
}

TEST_F(EditorRecord, FindsRowsAndPositions) {
    Editor* editor = Create(u"a\r\nb\r\nc");
    Insert(editor, 1, 0, std::u16string(1000, u'x'));
    EXPECT_EQ(BreaksOf(editor, 1), (std::vector<uint32_t>{375, 750}));
    EXPECT_EQ(EditorRowOfLine(editor, 0), 0);
    EXPECT_EQ(EditorRowOfLine(editor, 1), 1);
    EXPECT_EQ(EditorRowOfLine(editor, 2), 4);
    const RowPos inside = EditorPositionOf(editor, 1, 375);
    EXPECT_EQ(inside.line, 1);
    EXPECT_EQ(inside.subRow, 1);
    EXPECT_EQ(inside.row, 2);
    EXPECT_EQ(EditorPositionOf(editor, 1, 374).row, 1);
    EXPECT_EQ(EditorPositionOf(editor, 1, 1001).subRow, 2);
    const RowPos third = EditorRowPosition(editor, 3);
    EXPECT_EQ(third.line, 1);
    EXPECT_EQ(third.subRow, 2);
    EXPECT_EQ(third.row, 3);
}

TEST_F(EditorRecord, ClampsRowsToTheDocument) {
    Editor* editor = Create(u"a\r\nb\r\nc");
    EXPECT_EQ(EditorRowPosition(editor, -7).row, 0);
    const RowPos last = EditorRowPosition(editor, 99);
    EXPECT_EQ(last.line, 2);
    EXPECT_EQ(last.row, 2);
}

TEST_F(EditorRecord, ShowsTheNameBehindTheLastBackslash) {
    Editor* editor = Create();
    SetEditorPath(editor, MemStrDup(nullptr, u"\\My Documents\\notes.txt"));
    EXPECT_EQ(std::u16string(editor->displayName), u"notes.txt");
    EXPECT_EQ(std::u16string(editor->path), u"\\My Documents\\notes.txt");
    MemFree(nullptr, editor->path);
    SetEditorPath(editor, MemStrDup(nullptr, u"plain.txt"));
    EXPECT_EQ(editor->displayName, editor->path) << "no backslash: all of it";
    MemFree(nullptr, editor->path);
    SetEditorPath(editor, MemStrDup(nullptr, u"folder\\"));
    EXPECT_EQ(std::u16string(editor->displayName), u"");
}

TEST(LineRecordTest, FindsTheRowOfAColumn) {
    uint32_t breaks[] = {3, 5, 6, 10};
    LineRecord line = {};
    line.length = 12;
    EXPECT_EQ(SubRowOfColumn(line, 12), 0u);
    EXPECT_EQ(RowEnd(line, 0), 12u);
    line.breaks = breaks;
    const uint32_t rows[] = {0, 0, 0, 0, 0, 1, 2, 2, 2, 2, 3, 3, 3};
    for (uint32_t column = 0; column <= 12; ++column) EXPECT_EQ(SubRowOfColumn(line, column), rows[column]);
    EXPECT_EQ(ExtraRows(line), 3u);
    EXPECT_EQ(RowStart(line, 0), 0u);
    EXPECT_EQ(RowEnd(line, 0), 5u);
    EXPECT_EQ(RowStart(line, 2), 6u);
    EXPECT_EQ(RowEnd(line, 2), 10u);
    EXPECT_EQ(RowStart(line, 3), 10u);
    EXPECT_EQ(RowEnd(line, 3), 12u);
}

}  // namespace
}  // namespace nira
