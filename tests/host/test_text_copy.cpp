#include "engine/text_copy.h"

#include "host/editor_fixture.h"

namespace nira {
namespace {

class TextCopyTest : public EditorTest {
  protected:
    static void Select(Editor* editor, int32_t line1, int32_t column1, int32_t line2, int32_t column2) {
        editor->anchor.line = line1;
        editor->anchorColumn = column1;
        editor->caret.line = line2;
        editor->caretColumn = column2;
    }
};

std::u16string Converted(std::u16string_view text) {
    std::u16string target(text.size() + 1, u'~');
    const uint32_t units = ConvertBreaksToLf(target.data(), text.data(), static_cast<uint32_t>(text.size()));
    EXPECT_EQ(target[units], u'~') << "nothing is written behind the end";
    return target.substr(0, units);
}

std::u16string Stripped(std::u16string_view text) {
    std::u16string target(text.size() + 1, u'~');
    const auto units = static_cast<uint32_t>(text.size());
    EXPECT_EQ(StripCrBeforeLf(target.data(), text.data(), units), target.data());
    return target.substr(0, target.find(u'~'));
}

TEST_F(TextCopyTest, OfAFreshDocumentIsEmpty) {
    Editor* editor = Create();
    EXPECT_EQ(CopyRange(editor, kLineEndCrLf, 0, 0, 0, 0), u"");
}

TEST_F(TextCopyTest, WithinALine) {
    Editor* editor = Create(u"HELLO\r\nx");
    EXPECT_EQ(CopyRange(editor, kLineEndCrLf, 0, 1, 0, 4), u"ELL");
    EXPECT_EQ(CopyRange(editor, kLineEndCrLf, 0, 0, 0, 5), u"HELLO");
    EXPECT_EQ(CopyRange(editor, kLineEndCrLf, 0, 5, 0, 5), u"");
}

TEST_F(TextCopyTest, AcrossLinesInEachStyle) {
    Editor* editor = Create(u"one\r\n\r\nthree\r\nfour");
    EXPECT_EQ(CopyRange(editor, kLineEndLf, 0, 2, 3, 1), u"e\n\nthree\nf");
    EXPECT_EQ(CopyRange(editor, kLineEndCr, 0, 2, 3, 1), u"e\r\rthree\rf");
    EXPECT_EQ(CopyRange(editor, kLineEndCrLf, 0, 2, 3, 1), u"e\r\n\r\nthree\r\nf");
    EXPECT_EQ(CopyRange(editor, kLineEndCrLf, 0, 3, 1, 0), u"\r\n");
}

TEST_F(TextCopyTest, TakesTheEndsInEitherOrder) {
    Editor* editor = Create(u"one\r\ntwo");
    EXPECT_EQ(CopyRange(editor, kLineEndLf, 1, 1, 0, 1), u"ne\nt");
    EXPECT_EQ(CopyRange(editor, kLineEndLf, 0, 3, 0, 1), u"ne");
}

TEST_F(TextCopyTest, CountsNulUnits) {
    Editor* editor = Create();
    Insert(editor, 0, 0, std::u16string_view(u"a\0b", 3));
    EXPECT_EQ(CopyRange(editor, kLineEndLf, 0, 0, 0, 3), std::u16string(u"a\0b", 3));
}

TEST_F(TextCopyTest, GoesToTheHeapAskedFor) {
    Editor* editor = Create(u"text");
    const size_t blocks = HostHeapLiveBlocks(editor->heap);
    char16_t* text = TextCopyRange(editor, editor->heap, kLineEndLf, 0, 0, 0, 4);
    EXPECT_EQ(HostHeapLiveBlocks(editor->heap), blocks + 1);
    EXPECT_EQ(MemSize(editor->heap, text), 10u);
    EXPECT_EQ(std::u16string(text), u"text");
    MemFree(editor->heap, text);
}

TEST_F(TextCopyTest, OfNoSelectionIsNull) {
    Editor* editor = Create(u"one\r\ntwo");
    EXPECT_FALSE(HasSelection(editor));
    EXPECT_EQ(SelectionCopy(editor), nullptr);
    Select(editor, 1, 2, 1, 2);
    EXPECT_FALSE(HasSelection(editor));
    EXPECT_EQ(SelectionCopy(editor), nullptr);
}

TEST_F(TextCopyTest, OfTheSelectionHasTheDocumentsLineEnds) {
    Editor* editor = Create(u"one\r\ntwo");
    Select(editor, 1, 1, 0, 1);
    EXPECT_TRUE(HasSelection(editor));
    const std::u16string expected[] = {u"ne\nt", u"ne\rt", u"ne\r\nt"};
    for (uint32_t lineEnd = 0; lineEnd < 3; ++lineEnd) {
        editor->lineEnd = lineEnd;
        uint32_t units = 0;
        char16_t* text = SelectionCopy(editor, &units);
        EXPECT_EQ(Taken(text, units), expected[lineEnd]);
    }
    Select(editor, 0, 1, 1, 1);
    EXPECT_TRUE(HasSelection(editor)) << "the same column of another line";
    Select(editor, 0, 1, 0, 0);
    EXPECT_TRUE(HasSelection(editor));
}

TEST_F(TextCopyTest, StripsACrDirectlyBeforeAnLf) {
    EXPECT_EQ(Stripped(u"a\r\nb"), u"a\nb");
    EXPECT_EQ(Stripped(u"\r\r\n\r"), u"\r\n\r");
    EXPECT_EQ(Stripped(u"\n\r"), u"\n\r");
    EXPECT_EQ(Stripped(u""), u"");
    char16_t target[2] = {u'~', u'~'};
    StripCrBeforeLf(target, u"\r\n", 1);
    EXPECT_EQ(target[0], u'\r') << "the LF lies behind the count";
}

TEST_F(TextCopyTest, ConvertsEveryBreakToLf) {
    EXPECT_EQ(Converted(u"a\nb\rc\r\nd"), u"a\nb\nc\nd");
    EXPECT_EQ(Converted(u"\n\n\r\r\n\r"), u"\n\n\n\n\n");
    EXPECT_EQ(Converted(u"\n\r"), u"\n\n");
    EXPECT_EQ(Converted(u"none"), u"none");
    EXPECT_EQ(Converted(u""), u"");
    EXPECT_EQ(Converted(std::u16string_view(u"\0\r\n", 3)), std::u16string(u"\0\n", 2));
}

TEST_F(TextCopyTest, InsertedLinesKeepEveryLine) {
    for (const std::u16string_view text : {u"# Title\n\nText", u"# Title\r\rText", u"# Title\r\n\r\nText"}) {
        Editor* editor = Create();
        EXPECT_EQ(TextInsertLines(editor, 0, 0, text.data(), static_cast<uint32_t>(text.size())), 13);
        ExpectSound(editor);
        EXPECT_EQ(TextOf(editor), u"# Title\n\nText");
        ASSERT_EQ(editor->undo->entries[0].size, 13u);
        EXPECT_EQ(std::u16string_view(editor->undo->entries[0].text, 13), u"# Title\n\nText");
    }
}

}  // namespace
}  // namespace nira
