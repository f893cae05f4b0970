// Files of extreme shapes on their whole road: loaded, shown, saved, compared byte for byte.
#include "base/utf16.h"
#include "engine/render_rows.h"
#include "engine/window_state.h"
#include "files/load.h"
#include "files/save.h"
#include "host/document_support.h"
#include "platform/host/surface_state.h"
#include "view/navigation.h"
#include "view/scroll.h"

namespace nira {
namespace {

// The sanitizers cost tenfold: they see the same shapes at a tenth of the size.
#if defined(__SANITIZE_ADDRESS__)
constexpr size_t kShare = 10;
#else
constexpr size_t kShare = 1;
#endif

class BigFiles : public DocumentTest {
  protected:
    BigFiles() {
        window.client = {480, 640};
        TheWindowState().editorWindow = &window;
        TheWindowState().clientWidth = window.client.width;
    }
    ~BigFiles() override { TheWindowState() = {}; }

    // Makes the row texts of the whole window, at the start, in the middle and at the end.
    void Show() {
        TheWindowState().currentEditor = editor;
        for (const uint32_t line : {0U, editor->lineCount / 2, editor->lineCount - 1}) {
            GoToLine(editor, line);
            MoveEnd(editor, false);
            ShowRows();
        }
        TheWindowState().currentEditor = nullptr;
    }

    void ShowRows() {
        const SelectionSpan selection = SelectionSpanOf(editor);
        for (int32_t row = editor->top.row; row <= editor->bottomRow; ++row) {
            const RowPos position = EditorRowPosition(editor, row);
            if (editor->lines[position.line].text == nullptr) continue;
            RowText text = MakeRowText(editor, position, selection, OptionsTabSize());
            FreeRowText(&text);
        }
        EXPECT_STREQ(EditorCheckPositions(editor), nullptr);
    }

    void ExpectComesBack(const std::string& bytes, uint32_t codec, uint32_t lines) {
        folder.Put("in.txt", bytes);
        ASSERT_EQ(Load(editor, folder.OwnName("in.txt"), codec), 1);
        EXPECT_EQ(editor->lineCount, lines);
        Show();
        ToggleWrap(editor);
        Show();
        ASSERT_EQ(SaveAs(editor, folder.OwnName("out.txt"), editor->codecId, editor->lineEnd), 1);
        EXPECT_TRUE(folder.Get("out.txt") == bytes) << "the saved file differs";
        EXPECT_TRUE(MessageLog().empty());
    }

    WindowTag window;
};

TEST_F(BigFiles, OneLineOfFiftyMegabytes) {
    std::string bytes(50000000 / kShare, 'x');
    for (size_t i = 0; i < bytes.size(); i += 7) bytes[i] = ' ';
    ExpectComesBack(bytes, kCodecUtf8, 1);
}

TEST_F(BigFiles, FiveMillionEmptyLines) {
    const size_t breaks = 5000000 / kShare - 1;
    ExpectComesBack(std::string(breaks, '\n'), kCodecUtf8, static_cast<uint32_t>(breaks + 1));
    EXPECT_EQ(editor->lineEnd, kLineEndLf);
}

TEST_F(BigFiles, ALineOfTabsAlone) { ExpectComesBack(std::string(1000000 / kShare, '\t'), kCodecAnsi, 1); }

TEST_F(BigFiles, EveryCodeUnitThatIsNoBreak) {
    std::string bytes;
    for (uint32_t unit = 0; unit < 0x10000; ++unit) {
        if (unit == kLineFeed || unit == kCarriageReturn || unit == 0xFEFF) continue;
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    ExpectComesBack(bytes, kCodecUtf16Le, 1);
}

}  // namespace
}  // namespace nira
