// Random edits of a document and of the plainest text, which must stay alike.
#include <algorithm>
#include <cstdio>
#include <iterator>
#include <random>
#include <string>
#include <utility>

#include "base/utf16.h"
#include "host/editor_fixture.h"
#include "host/naive_text.h"
#include "host/sanitizers.h"

namespace nira {
namespace {

constexpr int kOperations = kSanitized ? 12000 : 100000;

constexpr uint32_t kMostUnits = 4000;
constexpr uint32_t kMostLines = 120;

constexpr char16_t kPlain[] = u"abcdefghiMW .,\t\t  \u4E00\u00C4";
constexpr char16_t kShaped[] = u"ab Wi\t\u0301\u0628\u0645\u0644\u0628\U0001F600\u0E01\u200D";
constexpr const char16_t* kBreakForms[] = {u"\r\n", u"\n", u"\r", u"\r\n", u"\n\n", u"\r\r"};
constexpr const char16_t* kLineEndForms[] = {u"\n", u"\r", u"\r\n"};

struct Place {
    uint32_t line;
    uint32_t column;
};

class RandomEdits : public EditorTest {
  protected:
    void Run(const char* name, const char16_t* alphabet) {
        const uint32_t seed = std::random_device()();
        std::printf("count: %s: %d operations, seed %u\n", name, kOperations, seed);
        random_.seed(seed);
        alphabet_ = alphabet;
        TheOptions().undoSize = 1;
        NaiveText model(&window_, TheOptions().text.font);
        model_ = &model;
        editor_ = Create();
        model.limit = RowLimit();
        for (int i = 0; i < kOperations; ++i) {
            const char* operation = Step();
            const char* fault = EditorCheck(editor_);
            ASSERT_STREQ(fault, nullptr) << operation << ", operation " << i << ", seed " << seed;
            ASSERT_EQ(model.Difference(editor_), "") << operation << ", operation " << i << ", seed " << seed;
        }
    }

  private:
    uint32_t Below(uint32_t end) { return static_cast<uint32_t>(random_() % end); }
    bool Rarely(uint32_t times) { return Below(times) == 0; }

    Place AnyPlace() {
        const uint32_t line = Below(editor_->lineCount);
        const uint32_t length = editor_->lines[line].length;
        if (Rarely(4)) return {line, length};
        return {line, Below(length + 1)};
    }

    std::u16string AnyText() {
        uint32_t length = 1 + Below(8);
        if (Rarely(3)) length = 1;
        if (Rarely(12)) length = 1 + Below(150);
        if (Rarely(200)) length = 1 + Below(1500);
        const uint32_t breaksIn = Rarely(3) ? 4 : 40;
        std::u16string text;
        while (text.size() < length) {
            if (Rarely(breaksIn)) {
                text += kBreakForms[Below(6)];
            } else if (Rarely(60)) {
                text += char16_t{0};
            } else {
                text += alphabet_[Below(static_cast<uint32_t>(Utf16Length(alphabet_)))];
            }
        }
        return text;
    }

    void InsertSome() {
        const Place at = AnyPlace();
        const std::u16string text = AnyText();
        const int32_t pairs =
            TextInsert(editor_, at.line, at.column, text.data(), static_cast<uint32_t>(text.size()));
        EXPECT_EQ(pairs, model_->Insert(at.line, at.column, text));
    }

    void DeleteSome() {
        Place from = AnyPlace();
        Place to = from;
        if (Rarely(2)) {
            to.column = std::min(editor_->lines[from.line].length, from.column + Below(20));
        } else {
            to.line = std::min(editor_->lineCount - 1, from.line + Below(4));
            to.column = Below(editor_->lines[to.line].length + 1);
        }
        if (to.line == from.line && to.column < from.column) std::swap(to, from);
        EXPECT_TRUE(TextDelete(editor_, from.line, from.column, to.line, to.column));
        model_->Delete(from.line, from.column, to.line, to.column);
    }

    void DeleteCounted(uint32_t most) {
        const Place at = AnyPlace();
        const uint32_t count = Rarely(500) ? 0xFFFFFFFF : Below(most);
        const int32_t lines = TextDeleteCount(editor_, at.line, at.column, count);
        EXPECT_EQ(lines, model_->DeleteCount(at.line, at.column, count));
    }

    void CopySome() {
        const Place from = AnyPlace();
        const Place to = AnyPlace();
        const uint32_t style = Below(3);
        EXPECT_EQ(CopyRange(editor_, style, from.line, from.column, to.line, to.column),
                  model_->Copy(kLineEndForms[style], from.line, from.column, to.line, to.column));
    }

    void LookUpRows() {
        const Place at = AnyPlace();
        const uint32_t row = model_->RowOfLine(at.line);
        EXPECT_EQ(EditorRowOfLine(editor_, at.line), static_cast<int32_t>(row));
        uint32_t subRow = 0;
        for (const uint32_t start : model_->lines[at.line].breaks) subRow += start <= at.column ? 1 : 0;
        const RowPos position = EditorPositionOf(editor_, at.line, at.column);
        EXPECT_EQ(position.subRow, static_cast<int32_t>(subRow));
        EXPECT_EQ(position.row, static_cast<int32_t>(row + subRow));
        const RowPos found = EditorRowPosition(editor_, position.row);
        EXPECT_EQ(found.line, static_cast<int32_t>(at.line));
        EXPECT_EQ(found.subRow, position.subRow);
    }

    void CountIndent() {
        const Place at = AnyPlace();
        const std::u16string& text = model_->lines[at.line].text;
        uint32_t count = 0;
        uint32_t width = 0;
        for (; count < at.column && (text[count] == u' ' || text[count] == u'\t'); ++count) {
            width += text[count] == u' ' ? 1 : TheOptions().tabSize;
        }
        uint32_t measured = 0;
        EXPECT_EQ(LineIndent(editor_, at.line, &measured, &at.column), count);
        EXPECT_EQ(measured, width);
    }

    void SetBookmark() {
        const uint32_t slot = Below(kBookmarks);
        const int32_t value = Rarely(5) ? 0 : static_cast<int32_t>(1 + Below(editor_->lineCount));
        editor_->bookmarks[slot] = value;
        model_->bookmarks[slot] = value;
    }

    void Reset() {
        EditorReset(editor_);
        std::fill(std::begin(editor_->bookmarks), std::end(editor_->bookmarks), 0);
        model_->Reset();
        model_->limit = RowLimit();
    }

    int32_t RowLimit() const {
        const int32_t width = TheWindowState().clientWidth - 1;
        if (editor_->wordWrap == 0) return 3000;
        return width < 1 ? 1 : width;
    }

    void ToggleWrapping() {
        editor_->wordWrap = static_cast<int16_t>(editor_->wordWrap == 0);
        model_->limit = RowLimit();
        EditorBreakAll(editor_);
        model_->LayOutAll();
    }

    void Resize() {
        constexpr int32_t kWidths[] = {0, 2, 30, 120, 121, 240, 480, 800};
        UseWidth(kWidths[Below(8)]);
        model_->limit = RowLimit();
    }

    void ChangeTabs() {
        constexpr uint32_t kSizes[] = {0, 1, 3, 4, 8, 64, 0xFFFFFFFF};
        TheOptions().tabSize = kSizes[Below(7)];
        model_->tabSize = static_cast<int32_t>(TheOptions().tabSize);
        EditorMeasureAll(editor_);
        model_->LayOutAll();
    }

    const char* Step() {
        if (editor_->lineCount > kMostLines || model_->Units() > kMostUnits) {
            DeleteCounted(kMostUnits);
            return "delete much";
        }
        if (Rarely(2500)) return Reset(), "reset";
        if (Rarely(150)) return ToggleWrapping(), "toggle wrapping";
        if (Rarely(150)) return Resize(), "resize";
        if (Rarely(300)) return ChangeTabs(), "tab size";
        editor_->flags = Rarely(3) ? kFlagNoUndo : 0;
        switch (Below(12)) {
            case 0:
                return CopySome(), "copy";
            case 1:
                return CountIndent(), "indent";
            case 2:
                return SetBookmark(), "bookmark";
            case 3:
                return LookUpRows(), "rows";
            case 4:
                return DeleteSome(), "delete";
            case 5:
                return DeleteCounted(20), "delete by count";
            default:
                return InsertSome(), "insert";
        }
    }

    std::mt19937 random_;
    const char16_t* alphabet_ = nullptr;
    NaiveText* model_ = nullptr;
    Editor* editor_ = nullptr;
};

TEST_F(RandomEdits, MatchAPlainText) { Run("plain text, fixed font", kPlain); }

TEST_F(RandomEdits, MatchWithSmallChunksOfLines) {
    LineIndexSetChunkLines(3);
    UseFont(kSerif14);
    Run("chunks of three lines, proportional font", kPlain);
}

TEST_F(RandomEdits, MatchWhenScriptsAreShaped) {
    HostSetTextShaping(true);
    UseFont(kSerif14);
    Run("shaped scripts, proportional font", kShaped);
}

TEST_F(RandomEdits, MatchInNarrowWindowsFromTheStart) {
    TheOptions().wordWrapDefault = 1;
    UseWidth(60);
    LineIndexSetChunkLines(1);
    Run("wrapped at 59 pixels, chunks of one line", kPlain);
}

}  // namespace
}  // namespace nira
