#include "engine/text.h"

#include "host/editor_fixture.h"

namespace nira {
namespace {

using Texts = std::vector<std::u16string>;

class TextInsertTest : public EditorTest {};
class TextDeleteTest : public EditorTest {};

UndoEntry& LastEntry(Editor* editor) { return editor->undo->entries[editor->undo->count - 1]; }

std::u16string EntryText(const UndoEntry& entry) { return std::u16string(entry.text, entry.size); }

TEST_F(TextInsertTest, OfNothingChangesNothing) {
    Editor* editor = Create();
    EXPECT_EQ(Insert(editor, 0, 0, u""), 0);
    EXPECT_EQ(editor->lines[0].text, nullptr);
    EXPECT_EQ(editor->undo->count, 0);
    EXPECT_EQ(editor->modified, 0);
    EXPECT_EQ(News().undoStates, 0);
}

TEST_F(TextInsertTest, SplitsAtCrLfAndReturnsThePairs) {
    Editor* editor = Create();
    EXPECT_EQ(Insert(editor, 0, 0, u"ab\r\ncd"), 1);
    EXPECT_EQ(Lines(editor), (Texts{u"ab", u"cd"}));
    ASSERT_EQ(editor->undo->count, 1);
    const UndoEntry& entry = LastEntry(editor);
    EXPECT_EQ(KindOf(entry), UndoKind::kDeleteText);
    EXPECT_EQ(entry.size, 5u);
    EXPECT_EQ(EntryText(entry), u"ab\ncd");
    EXPECT_EQ(entry.line, 0u);
    EXPECT_EQ(entry.column, 0u);
}

TEST_F(TextInsertTest, PutsTheTailBehindTheLastSegment) {
    Editor* editor = Create(u"HELLO");
    EXPECT_EQ(Insert(editor, 0, 2, u"x\r\ny"), 1);
    EXPECT_EQ(Lines(editor), (Texts{u"HEx", u"yLLO"}));
    EXPECT_EQ(LastEntry(editor).column, 2u);
}

TEST_F(TextInsertTest, SplitsAtEveryKindOfBreak) {
    Editor* editor = Create(u"<>");
    EXPECT_EQ(Insert(editor, 0, 1, u"a\rb\nc\r\nd\r\re\n\rf"), 1);
    EXPECT_EQ(Lines(editor), (Texts{u"<a", u"b", u"c", u"d", u"", u"e", u"", u"f>"}));
    EXPECT_EQ(EntryText(LastEntry(editor)), u"a\rb\nc\nd\r\re\n\rf");
}

TEST_F(TextInsertTest, MovesTheLinesBehindTheBreaks) {
    Editor* editor = Create(u"one\r\ntwo\r\nthree");
    Insert(editor, 1, 3, u"\r\nx\r\ny");
    EXPECT_EQ(Lines(editor), (Texts{u"one", u"two", u"x", u"y", u"three"}));
    Insert(editor, 0, 0, u"\r\n");
    EXPECT_EQ(Lines(editor), (Texts{u"", u"one", u"two", u"x", u"y", u"three"}));
    Insert(editor, 5, 5, u"\r");
    EXPECT_EQ(Lines(editor), (Texts{u"", u"one", u"two", u"x", u"y", u"three", u""}));
}

TEST_F(TextInsertTest, SwallowsASecondLfBehindAFirstLoneOne) {
    Editor* editor = Create(u"Q");
    EXPECT_EQ(Insert(editor, 0, 1, u"a\n\nb"), 0);
    EXPECT_EQ(Lines(editor), (Texts{u"Qa", u"b", u""}));
}

TEST_F(TextInsertTest, KeepsTheTailWhenAnLfIsSwallowed) {
    Editor* editor = Create(u"left right\r\nnext");
    Insert(editor, 0, 5, u"a\n\nb\nc");
    EXPECT_EQ(Lines(editor), (Texts{u"left a", u"b", u"c", u"right", u"next"}));
    Insert(editor, 4, 2, u"\n\n");
    EXPECT_EQ(Lines(editor), (Texts{u"left a", u"b", u"c", u"right", u"ne", u"", u"xt"}));
}

TEST_F(TextInsertTest, SwallowsOnlyDirectlyBehindTheFirstBreak) {
    Editor* editor = Create();
    Insert(editor, 0, 0, u"a\nb\n\nc\r\n\nd\r\r\ne");
    EXPECT_EQ(Lines(editor), (Texts{u"a", u"b", u"", u"c", u"", u"d", u"", u"e"}));
    Editor* other = Create();
    Insert(other, 0, 0, u"\r\n\nx");
    EXPECT_EQ(Lines(other), (Texts{u"", u"", u"x"}));
    Editor* third = Create();
    Insert(third, 0, 0, u"\n\n\nx");
    EXPECT_EQ(Lines(third), (Texts{u"", u"", u"x", u""}));
}

TEST_F(TextInsertTest, TakesACrAtTheEndForABreak) {
    Editor* editor = Create(u"\r\nz");
    Insert(editor, 0, 0, u"a\r");
    EXPECT_EQ(Lines(editor), (Texts{u"a", u"", u"z"}));
    Insert(editor, 1, 0, u"\nb");
    EXPECT_EQ(Lines(editor), (Texts{u"a", u"", u"b", u"z"}));
}

TEST_F(TextInsertTest, KeepsNulUnits) {
    Editor* editor = Create();
    Insert(editor, 0, 0, std::u16string_view(u"a\0b\r\n\0", 6));
    EXPECT_EQ(Lines(editor), (Texts{std::u16string(u"a\0b", 3), std::u16string(u"\0", 1)}));
}

TEST_F(TextInsertTest, RecordsOneCharacterAsACharacter) {
    Editor* editor = Create(u"abc");
    Insert(editor, 0, 1, u"X");
    const UndoEntry& entry = LastEntry(editor);
    EXPECT_EQ(KindOf(entry), UndoKind::kDeleteChar);
    EXPECT_EQ(entry.character, u'X');
    EXPECT_EQ(entry.line, 0u);
    EXPECT_EQ(entry.column, 1u);
    EXPECT_EQ(editor->undo->bytes, 20);
}

TEST_F(TextInsertTest, RecordsOneBreakAsAText) {
    for (const auto* text : {u"\n", u"\r", u"\r\n"}) {
        Editor* editor = Create(u"abc");
        Insert(editor, 0, 1, text);
        EXPECT_EQ(KindOf(LastEntry(editor)), UndoKind::kDeleteText);
        EXPECT_EQ(LastEntry(editor).size, 1u);
        EXPECT_EQ(editor->undo->bytes, 22);
    }
}

TEST_F(TextInsertTest, RecordsTheModifiedFlagOfBefore) {
    Editor* editor = Create();
    Insert(editor, 0, 0, u"a");
    EXPECT_EQ(LastEntry(editor).kind & kUndoModifiedBit, 0u);
    EXPECT_EQ(editor->modified, 1);
    Insert(editor, 0, 1, u"bc");
    EXPECT_EQ(LastEntry(editor).kind & kUndoModifiedBit, kUndoModifiedBit);
    EXPECT_EQ(News().undoStates, 2);
    EXPECT_EQ(News().titles, 1) << "the flag has changed once";
}

TEST_F(TextInsertTest, LeavesJournalAndFlagAloneWithoutRecording) {
    Editor* editor = Create();
    editor->flags = kFlagNoUndo;
    Insert(editor, 0, 0, u"ab\r\nc");
    Delete(editor, 0, 1, 1, 0);
    Delete(editor, 0, 0, 0, 1);
    EXPECT_EQ(TextOf(editor), u"c");
    EXPECT_EQ(editor->undo->count, 0);
    EXPECT_EQ(editor->modified, 0);
    EXPECT_EQ(News().undoStates, 0);
    EXPECT_EQ(News().titles, 0);
}

TEST_F(TextInsertTest, LetsTheFirstBreakDecideTheLineEnd) {
    const struct {
        const char16_t* text;
        uint32_t lineEnd;
    } cases[] = {{u"a\rb\n", kLineEndCr},   {u"a\nb\r", kLineEndLf}, {u"a\r\nb\n", kLineEndCrLf},
                 {u"a\r\rb\n", kLineEndCr}, {u"\r", kLineEndCr},     {u"a\n\r\n", kLineEndLf}};
    for (const auto& item : cases) {
        Editor* editor = Create();
        editor->lineEnd = 77;
        editor->flags = kFlagDetectLineEnd | kFlagNoUndo;
        Insert(editor, 0, 0, u"no break");
        EXPECT_EQ(editor->lineEnd, 77u);
        EXPECT_EQ(editor->flags, kFlagDetectLineEnd | kFlagNoUndo);
        Insert(editor, 0, 0, item.text);
        EXPECT_EQ(editor->lineEnd, item.lineEnd);
        EXPECT_EQ(editor->flags, kFlagNoUndo);
        Insert(editor, 0, 0, u"\r\n");
        Insert(editor, 0, 0, u"\n");
        EXPECT_EQ(editor->lineEnd, item.lineEnd) << "decided once";
    }
}

TEST_F(TextInsertTest, LeavesAKnownLineEndAlone) {
    Editor* editor = Create();
    EXPECT_EQ(editor->lineEnd, kLineEndCrLf);
    Insert(editor, 0, 0, u"a\nb\rc");
    EXPECT_EQ(editor->lineEnd, kLineEndCrLf);
}

TEST_F(TextInsertTest, MovesBookmarksOnTheLineAndBelow) {
    Editor* editor = Create(u"a\r\nb\r\nc\r\nd");
    for (int32_t i = 0; i < 4; ++i) editor->bookmarks[i] = i + 1;
    editor->bookmarks[9] = 4;
    Insert(editor, 1, 1, u"x");
    EXPECT_EQ(editor->bookmarks[1], 2);
    Insert(editor, 1, 1, u"x\r\ny\nz");
    EXPECT_EQ(editor->bookmarks[0], 1);
    EXPECT_EQ(editor->bookmarks[1], 4) << "the line's own bookmark moves with its tail";
    EXPECT_EQ(editor->bookmarks[2], 5);
    EXPECT_EQ(editor->bookmarks[3], 6);
    EXPECT_EQ(editor->bookmarks[4], 0) << "not set";
    EXPECT_EQ(editor->bookmarks[9], 6);
}

TEST_F(TextInsertTest, KeepsSumsOfWidthsAndRows) {
    Editor* editor = Create();
    Insert(editor, 0, 0, u"12345\r\n1234567\r\n1");
    EXPECT_EQ(editor->widestLine, 7 * 8);
    Insert(editor, 2, 0, std::u16string(400, u'x'));
    EXPECT_EQ(editor->widestLine, 401 * 8);
    EXPECT_EQ(editor->wrapRows, 1) << "3208 pixels are two rows even without wrapping";
    EXPECT_EQ(EditorRows(editor), 4);
    Insert(editor, 2, 200, u"\n");
    EXPECT_EQ(editor->widestLine, 201 * 8);
    EXPECT_EQ(editor->wrapRows, 0);
}

TEST_F(TextInsertTest, MovesNeitherCaretNorSelection) {
    Editor* editor = Create(u"abc\r\ndef");
    editor->caret = {1, 0, 1};
    editor->caretColumn = 2;
    editor->anchor = {0, 0, 0};
    editor->anchorColumn = 1;
    Insert(editor, 0, 0, u"x\r\ny");
    Delete(editor, 0, 0, 1, 0);
    EXPECT_EQ(editor->caret.line, 1);
    EXPECT_EQ(editor->caretColumn, 2);
    EXPECT_EQ(editor->anchor.line, 0);
    EXPECT_EQ(editor->anchorColumn, 1);
}

TEST_F(TextDeleteTest, OfNothingChangesNothing) {
    Editor* editor = Create(u"abc");
    Insert(editor, 0, 0, u"x");
    editor->undo->position = 0;
    editor->modified = 0;
    News() = {};
    EXPECT_TRUE(Delete(editor, 0, 4, 0, 4));
    EXPECT_EQ(DeleteCount(editor, 0, 4, 1), 0);
    EXPECT_EQ(DeleteCount(editor, 0, 0, 0), 0);
    EXPECT_EQ(editor->undo->count, 1) << "what can be redone stays";
    EXPECT_EQ(editor->modified, 0);
    EXPECT_EQ(News().undoStates, 0);
}

TEST_F(TextDeleteTest, TakesUnitsOutOfALine) {
    Editor* editor = Create(u"abcdef\r\nnext");
    EXPECT_TRUE(Delete(editor, 0, 1, 0, 4));
    EXPECT_EQ(Lines(editor), (Texts{u"aef", u"next"}));
    const UndoEntry& entry = LastEntry(editor);
    EXPECT_EQ(KindOf(entry), UndoKind::kInsertText);
    EXPECT_EQ(EntryText(entry), u"bcd");
    EXPECT_EQ(entry.column, 1u);
    EXPECT_EQ(editor->modified, 1);
    EXPECT_EQ(News().undoStates, 1);
    EXPECT_EQ(News().titles, 1);
}

TEST_F(TextDeleteTest, RecordsOneCharacterAsACharacter) {
    Editor* editor = Create(u"abc");
    Delete(editor, 0, 1, 0, 2);
    EXPECT_EQ(KindOf(LastEntry(editor)), UndoKind::kInsertChar);
    EXPECT_EQ(LastEntry(editor).character, u'b');
    EXPECT_EQ(LastEntry(editor).column, 1u);
    EXPECT_EQ(LastEntry(editor).kind & kUndoModifiedBit, 0u);
    Delete(editor, 0, 0, 0, 1);
    EXPECT_EQ(LastEntry(editor).kind & kUndoModifiedBit, kUndoModifiedBit);
}

TEST_F(TextDeleteTest, RecordsOneBreakAsAText) {
    Editor* editor = Create(u"ab\r\ncd");
    Delete(editor, 0, 2, 1, 0);
    EXPECT_EQ(Lines(editor), (Texts{u"abcd"}));
    EXPECT_EQ(KindOf(LastEntry(editor)), UndoKind::kInsertText);
    EXPECT_EQ(EntryText(LastEntry(editor)), u"\n");
    Editor* other = Create(u"ab\r\ncd");
    Delete(other, 0, 1, 1, 2);
    EXPECT_EQ(EntryText(LastEntry(other)), u"b\ncd") << "column 2 is one more than column 1";
}

TEST_F(TextDeleteTest, JoinsAcrossLines) {
    Editor* editor = Create(u"one\r\ntwo\r\nthree\r\nfour\r\nfive");
    Delete(editor, 1, 2, 3, 1);
    EXPECT_EQ(Lines(editor), (Texts{u"one", u"twour", u"five"}));
    EXPECT_EQ(EntryText(LastEntry(editor)), u"o\nthree\nf");
    EXPECT_EQ(LastEntry(editor).line, 1u);
    EXPECT_EQ(LastEntry(editor).column, 2u);
    Delete(editor, 0, 0, 2, 4);
    EXPECT_EQ(Lines(editor), (Texts{u""}));
}

TEST_F(TextDeleteTest, JoinsLinesWithoutText) {
    Editor* editor = Create();
    Insert(editor, 0, 0, u"\r\n\r\n");
    LineFree(editor, 0);
    LineFree(editor, 1);
    RecomputeWidest(editor);
    Delete(editor, 0, 0, 1, 0);
    EXPECT_EQ(Lines(editor), (Texts{u"", u""}));
    Delete(editor, 0, 0, 1, 0);
    EXPECT_EQ(Lines(editor), (Texts{u""}));
}

TEST_F(TextDeleteTest, MovesOrClearsBookmarks) {
    Editor* editor = Create(u"0\r\n1\r\n2\r\n3\r\n4\r\n5\r\n6");
    for (int32_t i = 0; i < 7; ++i) editor->bookmarks[i] = i + 1;
    Delete(editor, 2, 0, 4, 0);
    const int32_t expected[kBookmarks] = {1, 2, 0, 0, 3, 4, 5, 0, 0, 0};
    for (int i = 0; i < kBookmarks; ++i) EXPECT_EQ(editor->bookmarks[i], expected[i]) << i;
    Delete(editor, 1, 0, 1, 1);
    EXPECT_EQ(editor->bookmarks[1], 2) << "within a line nothing moves";
}

TEST_F(TextDeleteTest, ClearsTheFirstLinesBookmarkWhenTheNextOneJoins) {
    Editor* editor = Create(u"0\r\n1\r\n2\r\n3\r\n4");
    editor->bookmarks[3] = 4;
    editor->bookmarks[4] = 5;
    Delete(editor, 3, 1, 4, 0);
    EXPECT_EQ(editor->bookmarks[3], 0);
    EXPECT_EQ(editor->bookmarks[4], 4);
}

TEST_F(TextDeleteTest, TakesTheRowsOfFreedLinesOutOfTheSum) {
    Editor* editor = Create();
    const std::u16string wide(800, u'w');
    Insert(editor, 0, 0, wide + u"\r\n" + wide + u"\r\nx\r\n" + wide);
    EXPECT_EQ(editor->wrapRows, 6);
    Delete(editor, 1, 0, 2, 1);
    EXPECT_EQ(editor->wrapRows, 4);
    Delete(editor, 0, 0, 2, 800);
    EXPECT_EQ(editor->wrapRows, 0);
    EXPECT_EQ(editor->widestLine, 0);
}

TEST_F(TextDeleteTest, CountsEachLineEndAsOne) {
    Editor* editor = Create(u"abc\r\nde\r\n\r\nfgh");
    EXPECT_EQ(DeleteCount(editor, 0, 1, 2), 0);
    EXPECT_EQ(TextOf(editor), u"a\nde\n\nfgh");
    EXPECT_EQ(DeleteCount(editor, 0, 1, 1), 1);
    EXPECT_EQ(TextOf(editor), u"ade\n\nfgh");
    EXPECT_EQ(DeleteCount(editor, 0, 1, 4), 2);
    EXPECT_EQ(TextOf(editor), u"afgh");
}

TEST_F(TextDeleteTest, CountStopsAtTheEndOfTheDocument) {
    Editor* editor = Create(u"abc\r\nde\r\nf");
    EXPECT_EQ(DeleteCount(editor, 0, 2, 0xFFFFFFFF), 2);
    EXPECT_EQ(TextOf(editor), u"ab");
    EXPECT_EQ(DeleteCount(editor, 0, 2, 5), 0);
    EXPECT_EQ(DeleteCount(editor, 0, 0, 2), 0);
    EXPECT_EQ(TextOf(editor), u"");
}

TEST_F(TextDeleteTest, CountEndingAtALineEndKeepsTheBreak) {
    Editor* editor = Create(u"abc\r\nde\r\nf");
    EXPECT_EQ(DeleteCount(editor, 0, 0, 6), 1);
    EXPECT_EQ(TextOf(editor), u"\nf");
}

TEST_F(TextDeleteTest, CountReachingALineStartTakesTheBreak) {
    Editor* editor = Create(u"abc\r\nde\r\nf");
    EXPECT_EQ(DeleteCount(editor, 0, 3, 4), 2);
    EXPECT_EQ(TextOf(editor), u"abcf");
}

}  // namespace
}  // namespace nira
