// A document in a window, for tests of what keys, fingers and scroll bars do to it.
//
// The font gives every unit 8 pixels and every row 16; the window is 200 × 80 pixels: 25 columns (less the
// pixel that wrapping keeps) and 5 rows.
#pragma once

#include "engine/current_editor.h"
#include "engine/editor_check.h"
#include "engine/editor_life.h"
#include "engine/text.h"
#include "engine/window_state.h"
#include "host/files_support.h"
#include "platform/host/surface_state.h"
#include "view/editing.h"
#include "view/fonts.h"
#include "view/layout.h"
#include "view/navigation.h"
#include "view/scroll.h"

namespace nira {

constexpr int32_t kUnit = 8;
constexpr int32_t kRow = 16;

// What the application has been told since the last Forget.
struct News {
    int repaints = 0;
    int selections = 0;
    int undoStates = 0;
    int titles = 0;
};

inline News& TheNews() {
    static News news;
    return news;
}

class ViewTest : public ServicesTest {
  protected:
    ViewTest() {
        HostSurfaceReset();
        TheWindowState() = {};
        TheWindowState().editorWindow = &window_;
        InitFonts(nullptr);
        TheOptions().text.font = AcquireFont(u"Fixed\x000E");
        TheOptions().selection.font = TheOptions().text.font;
        TheOptions().tabSize = 4;
        TheOptions().undoSize = 256;
        Resize(200, 80);
        SurfaceCreateCaret(&window_, 2, kRow);
        TheEditorEvents() = {[] { ++TheNews().titles; }, [](Editor*) { ++TheNews().undoStates; },
                             [](Editor*) { ++TheNews().selections; }, [](Editor*) { ++TheNews().repaints; }};
        editor_ = EditorCreate();
        TheWindowState().currentEditor = editor_;
        Forget();
    }
    ~ViewTest() override {
        Check();
        EditorDestroy(editor_);
        ReleaseFont(TheOptions().text.font);
        ShutdownFonts();
        TheEditorEvents() = {};
        TheWindowState() = {};
        HostSurfaceReset();
    }

    void Resize(int32_t width, int32_t height) {
        window_.client = {width, height};
        TheWindowState().clientWidth = width;
    }
    void Wrap(bool on) const { editor_->wordWrap = on ? 1 : 0; }

    // Every line of a text with LF between them, the caret at its start; nothing of it is recorded.
    void Fill(const std::u16string& text) {
        editor_->flags |= kFlagNoUndo;
        std::u16string pairs;
        for (const char16_t unit : text)
            pairs += unit == u'\n' ? std::u16string(u"\r\n") : std::u16string(1, unit);
        TextInsert(editor_, 0, 0, pairs.data(), static_cast<uint32_t>(pairs.size()));
        editor_->flags &= ~kFlagNoUndo;
        At(0, 0);
        Forget();
    }
    // `count` lines of one letter each.
    void FillLines(int count) {
        std::u16string text = u"a";
        for (int i = 1; i < count; ++i) text += u"\na";
        Fill(text);
    }
    std::u16string Text() const {
        const uint32_t last = editor_->lineCount - 1;
        uint32_t units = 0;
        char16_t* copy =
            TextCopyRange(editor_, nullptr, kLineEndLf, 0, 0, last, editor_->lines[last].length, &units);
        std::u16string text(copy, units);
        MemFree(nullptr, copy);
        return text;
    }

    void At(int64_t line, uint32_t column) const { MoveCaretTo(editor_, line, column); }
    void Select(uint32_t line1, uint32_t column1, uint32_t line2, uint32_t column2) const {
        At(line1, column1);
        editor_->anchor = editor_->caret;
        editor_->anchorColumn = editor_->caretColumn;
        At(line2, column2);
        TheNews() = {};
    }

    // (line, column) of the caret, and of the anchor ({-1, -1}: none).
    using Place = std::pair<int32_t, int32_t>;
    Place Caret() const { return {editor_->caret.line, editor_->caretColumn}; }
    Place Anchor() const {
        if (editor_->anchorColumn == kNoSelection) return {-1, -1};
        return {editor_->anchor.line, editor_->anchorColumn};
    }

    // Runs an operation and looks at all invariants.
    template <typename Operation>
    void Do(Operation operation) const {
        operation();
        Check();
    }
    void Check() const {
        const char* fault = EditorCheck(editor_);
        EXPECT_EQ(fault, nullptr) << fault;
        fault = EditorCheckPositions(editor_);
        EXPECT_EQ(fault, nullptr) << fault;
    }
    static void Forget() { TheNews() = {}; }

    WindowTag window_;
    Editor* editor_;
};

inline constexpr std::pair<int32_t, int32_t> kNoAnchor = {-1, -1};

}  // namespace nira
