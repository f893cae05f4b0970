// Texts and settings that nobody types.
#include "host/editor_fixture.h"
#include "host/naive_text.h"

namespace nira {
namespace {

class Extremes : public EditorTest {};

TEST_F(Extremes, ALineOfTabsAlone) {
    Editor* editor = Create();
    Insert(editor, 0, 0, std::u16string(10000, u'\t'));
    EXPECT_EQ(editor->lines[0].width, 10000 * 64);
    EXPECT_EQ(BreaksOf(editor, 0)[0], 46u) << "3000 / 64";
    EXPECT_EQ(editor->wrapRows, 217);
    Delete(editor, 0, 10, 0, 9990);
    EXPECT_EQ(editor->lines[0].width, 20 * 64);
    uint32_t width = 0;
    EXPECT_EQ(LineIndent(editor, 0, &width, nullptr), 20u);
    EXPECT_EQ(width, 160u);
}

TEST_F(Extremes, AllUnitsInOneText) {
    std::u16string text;
    for (uint32_t unit = 0; unit <= 0xFFFF; ++unit) text += static_cast<char16_t>(unit);
    for (const bool shaping : {false, true}) {
        HostSetTextShaping(shaping);
        UseFont(kSerif14);
        NaiveText model(&window_, TheOptions().text.font);
        Editor* editor = Create();
        EXPECT_EQ(Insert(editor, 0, 0, text), model.Insert(0, 0, text));
        EXPECT_EQ(model.Difference(editor), "");
        EXPECT_EQ(editor->lineCount, 3u) << "broken at LF and CR";
        EXPECT_TRUE(Delete(editor, 1, 1, 2, 100));
        model.Delete(1, 1, 2, 100);
        EXPECT_EQ(model.Difference(editor), "");
    }
}

TEST_F(Extremes, AHundredThousandEmptyLines) {
    Editor* editor = Create();
    EXPECT_EQ(Insert(editor, 0, 0, std::u16string(100000, u'\r')), 0);
    EXPECT_EQ(editor->lineCount, 100001u);
    EXPECT_EQ(editor->lineCapacity, 100010);
    Insert(editor, 50000, 0, u"middle");
    EXPECT_EQ(EditorRowOfLine(editor, 100000), 100000);
    EXPECT_EQ(DeleteCount(editor, 0, 0, 50000), 50000);
    EXPECT_EQ(std::u16string(LineView(editor, 0)), u"middle");
    EXPECT_EQ(DeleteCount(editor, 0, 6, 0xFFFFFFFF), 50000);
    EXPECT_EQ(TextOf(editor), u"middle");
    EXPECT_EQ(editor->lineCapacity, 10);
}

TEST_F(Extremes, EveryTabSize) {
    for (const uint32_t size : {0u, 1u, 64u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFEu, 0xFFFFFFFFu}) {
        SCOPED_TRACE(size);
        TheOptions().tabSize = size;
        TheOptions().wordWrapDefault = 1;
        Editor* editor = Create();
        Insert(editor, 0, 0, u"\ta\t\tb\r\n\t\r\n" + std::u16string(300, u'\t'));
        Insert(editor, 0, 2, u"\t");
        Delete(editor, 0, 1, 0, 3);
        Delete(editor, 0, 3, 1, 1);
        DeleteCount(editor, 0, 0, 2);
        uint32_t width = 0;
        EXPECT_EQ(LineIndent(editor, 1, &width, nullptr), 300u);
        EXPECT_GE(editor->widestLine, 0);
        editor->wordWrap = 0;
        EditorBreakAll(editor);
        ExpectSound(editor);
    }
}

TEST_F(Extremes, TabsOfNoWidthTakeNoRows) {
    TheOptions().tabSize = 0;
    Editor* editor = Create(std::u16string(5000, u'\t'));
    EXPECT_EQ(editor->lines[0].width, 0);
    EXPECT_EQ(editor->wrapRows, 0);
    Insert(editor, 0, 2500, u"x");
    EXPECT_EQ(editor->lines[0].width, 8);
}

TEST_F(Extremes, HugeTabsTakeARowEach) {
    TheOptions().tabSize = 0x7FFFFFFF;
    Editor* editor = Create(u"a\t\tb\t");
    EXPECT_EQ(editor->lines[0].width, 0x7FFFFFFF);
    EXPECT_EQ(BreaksOf(editor, 0), (std::vector<uint32_t>{1, 2, 3, 4}));
    Delete(editor, 0, 1, 0, 3);
    Delete(editor, 0, 2, 0, 3);
    EXPECT_EQ(editor->lines[0].width, 16);
}

TEST_F(Extremes, UnexpandedTabsAreGlyphs) {
    TheOptions().tabSize = 0xFFFFFFFF;
    Editor* editor = Create(u"a\t\tb");
    EXPECT_EQ(editor->lines[0].width, 16 + 24);
}

TEST_F(Extremes, UndoSizesOfNothingAndOfEverything) {
    for (const uint32_t size : {0u, 0xFFFFFFFFu}) {
        TheOptions().undoSize = size;
        Editor* editor = Create();
        for (int i = 0; i < 100; ++i) {
            Insert(editor, 0, 0, u"x");
            Insert(editor, 0, 1, u"text\r\nand more");
            Delete(editor, 0, 0, 0, 1);
            Delete(editor, 0, 0, 1, 2);
        }
        EXPECT_EQ(editor->undo->count, size == 0 ? 1 : 400);
    }
}

}  // namespace
}  // namespace nira
