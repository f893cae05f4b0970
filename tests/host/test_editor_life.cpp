#include "engine/editor_life.h"

#include "files/codecs.h"
#include "host/editor_fixture.h"

namespace nira {
namespace {

class EditorLife : public EditorTest {};

void ExpectEmpty(Editor* editor) {
    ExpectSound(editor);
    EXPECT_EQ(editor->lineCount, 1u);
    EXPECT_EQ(editor->lineCapacity, 10);
    EXPECT_EQ(editor->lines[0].text, nullptr);
    EXPECT_EQ(editor->lines[0].length, 0u);
    EXPECT_EQ(MemSize(editor->heap, editor->lines), 10 * sizeof(LineRecord));
    EXPECT_EQ(editor->caretColumn, 0);
    EXPECT_EQ(editor->anchorColumn, kNoSelection);
    EXPECT_EQ(editor->modified, 0);
    EXPECT_EQ(editor->scrollX, 0);
    EXPECT_EQ(editor->scrollY, 0);
    EXPECT_EQ(editor->caretX, 0);
    EXPECT_EQ(editor->caretY, 0);
    EXPECT_EQ(editor->widestLine, 0);
    EXPECT_EQ(editor->wrapRows, 0);
    EXPECT_EQ(editor->hiddenRows, 0);
    EXPECT_EQ(editor->bottomRow, 0);
    EXPECT_EQ(EditorRows(editor), 1);
    for (const RowPos& position : {editor->top, editor->caret}) {
        EXPECT_EQ(position.line, 0);
        EXPECT_EQ(position.subRow, 0);
        EXPECT_EQ(position.row, 0);
    }
    EXPECT_EQ(editor->undo->count, 0);
    EXPECT_EQ(editor->undo->position, 0);
    EXPECT_EQ(editor->undo->bytes, 0);
}

TEST_F(EditorLife, BeginsWithOneLineWithoutText) {
    Editor* editor = Create();
    ExpectEmpty(editor);
    EXPECT_EQ(editor->lineEnd, kLineEndCrLf);
    EXPECT_EQ(editor->flags, 0u);
    EXPECT_EQ(editor->path, nullptr);
    EXPECT_EQ(editor->selecting, 0);
    EXPECT_EQ(editor->layoutStale, 0);
    for (const int32_t bookmark : editor->bookmarks) EXPECT_EQ(bookmark, 0);
    EXPECT_NE(editor->heap, nullptr);
}

TEST_F(EditorLife, TakesStylesAndRowHeightFromTheOptions) {
    Editor* editor = Create();
    EXPECT_EQ(editor->textStyle, &TheOptions().text);
    EXPECT_EQ(editor->selStyle, &TheOptions().selection);
    EXPECT_EQ(editor->lineHeight, 16);
    UseFont(u"Fixed\x1E");
    EXPECT_EQ(Create()->lineHeight, 36) << "height 30, 5 of internal leading, 1 between rows";
}

TEST_F(EditorLife, TakesTheDefaultEncoding) {
    InitCodecs();
    const uint32_t last = TheCodecList().count - 1;
    ASSERT_GT(last, 0u);
    TheOptions().defaultEncoding = MemStrDup(nullptr, CodecName(last));
    EXPECT_EQ(Create()->codecId, last);
    MemFree(nullptr, TheOptions().defaultEncoding);
    TheOptions().defaultEncoding = nullptr;
}

TEST_F(EditorLife, TakesTheWrappingOfTheOptions) {
    EXPECT_EQ(Create()->wordWrap, 0);
    TheOptions().wordWrapDefault = 1;
    EXPECT_EQ(Create()->wordWrap, 1);
}

TEST_F(EditorLife, ResetEmptiesEverything) {
    Editor* editor = Create();
    Insert(editor, 0, 0, std::u16string(5000, u'x') + u"\r\nabc");
    Insert(editor, 1, 0, std::u16string(30, u'\r'));
    editor->caret = {1, 0, 4};
    editor->caretColumn = 2;
    editor->anchor = {7, 8, 9};
    editor->anchorColumn = 3;
    editor->top = {1, 0, 4};
    editor->scrollX = editor->scrollY = editor->caretX = editor->caretY = editor->bottomRow = 5;
    editor->lineEnd = kLineEndCr;
    editor->wordWrap = 1;
    const size_t heaps = HostHeapCount();
    EditorReset(editor);
    ExpectEmpty(editor);
    EXPECT_EQ(HostHeapCount(), heaps) << "the old heap is gone";
    EXPECT_EQ(editor->wordWrap, 0);
    EXPECT_EQ(editor->lineEnd, kLineEndCr) << "not the reset's business";
    EXPECT_EQ(editor->anchor.line, 7);
    EXPECT_EQ(editor->anchor.subRow, 8);
    EXPECT_EQ(editor->anchor.row, 9);
    Insert(editor, 0, 0, u"usable");
    EXPECT_EQ(TextOf(editor), u"usable");
}

TEST_F(EditorLife, ResetRebuildsTheTitleOfAModifiedDocument) {
    Editor* editor = Create();
    EditorReset(editor);
    EXPECT_EQ(News().titles, 0);
    Insert(editor, 0, 0, u"x");
    EXPECT_EQ(News().titles, 1);
    EditorReset(editor);
    EXPECT_EQ(News().titles, 2);
}

TEST_F(EditorLife, ResetSetsTheScrollBarsOfTheShownDocument) {
    Editor* editor = Create();
    Insert(editor, 0, 0, std::u16string(200, u'\r'));
    window_.vertical.maximum = 200;
    EditorReset(editor);
    EXPECT_EQ(window_.vertical.maximum, 200) << "another document is shown";
    TheWindowState().currentEditor = editor;
    EditorReset(editor);
    EXPECT_EQ(window_.vertical.maximum, 640 / 16 - 1);
    EXPECT_EQ(window_.vertical.position, 0);
}

TEST_F(EditorLife, DestroyFreesHeapPathAndRecord) {
    const size_t heaps = HostHeapCount();
    const size_t blocks = HostHeapLiveBlocks(nullptr);
    Editor* editor = EditorCreate();
    SetEditorPath(editor, MemStrDup(nullptr, u"\\folder\\file.txt"));
    Insert(editor, 0, 0, u"one\r\ntwo");
    EXPECT_EQ(HostHeapCount(), heaps + 1) << "one heap a document";
    EditorDestroy(editor);
    EXPECT_EQ(HostHeapCount(), heaps);
    EXPECT_EQ(HostHeapLiveBlocks(nullptr), blocks);
    EditorDestroy(nullptr);
}

TEST_F(EditorLife, NeedsNoWindow) {
    TheWindowState() = {};
    Editor* editor = Create();
    Insert(editor, 0, 0, std::u16string(800, u'x'));
    EXPECT_EQ(editor->wrapRows, 2);
}

}  // namespace
}  // namespace nira
