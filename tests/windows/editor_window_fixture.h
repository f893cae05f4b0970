// The editor window on the screen, in a parent that records what reaches it, with a document of a fixed font.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "app/services/memory.h"
#include "engine/current_editor.h"
#include "engine/editor_check.h"
#include "engine/editor_life.h"
#include "engine/editor_window.h"
#include "engine/render.h"
#include "engine/text.h"
#include "platform/win32/casts.h"
#include "settings/options.h"
#include "shell_test_window.h"
#include "view/fonts.h"
#include "view/layout.h"
#include "view/measure.h"
#include "view/navigation.h"
#include "view/scroll.h"

namespace nira {

constexpr COLORREF kFore = RGB(10, 20, 30);
constexpr COLORREF kBack = RGB(200, 210, 220);
constexpr COLORREF kSelFore = RGB(255, 255, 0);
constexpr COLORREF kSelBack = RGB(0, 0, 128);

class EditorWindowTest : public ::testing::Test {
  protected:
    static void SetUpTestSuite() { ASSERT_TRUE(RegisterEditorClass()); }
    static void TearDownTestSuite() { UnregisterClassW(L"NREDIT", GetModuleHandleW(nullptr)); }

    void SetUp() override {
        shell_test::Forget();
        parent_ = CreateWindowExW(0, shell_test::RecordingClass(), L"parent", WS_POPUP | WS_VISIBLE, 0, 0,
                                  320, 240, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
        ASSERT_NE(parent_, nullptr);
        TheWindowState() = {};
        TheOptions() = {};
        TheOptions().tabSize = 4;
        TheOptions().undoSize = 64;
        TheOptions().wordSeparators = separators_;
        ASSERT_EQ(InitFonts(FromHwnd(parent_)), 1);
        const FontHandle font = AcquireFont(u"Courier New\x000C");
        TheOptions().text = {kFore, kBack, font};
        TheOptions().selection = {kSelFore, kSelBack, font};
        TheEditorEvents() = {};
        TheEditorEvents().repaint = [](Editor* editor) { PaintEditor(editor, 0); };
        ASSERT_EQ(CreateEditorWindow(FromHwnd(parent_)), 1);
        window_ = ToHwnd(TheWindowState().editorWindow);
        unit_ = TextWidth(FromHwnd(window_), font, u"x", 1, 4);
        editor_ = EditorCreate();
        row_ = editor_->lineHeight;
        SetCurrentEditor(editor_);
        shell_test::RunPosted();
    }
    void TearDown() override {
        SetKeys(false, false);
        Check();
        SetCurrentEditor(nullptr);
        EditorDestroy(editor_);
        DestroyWindow(parent_);
        ReleaseFont(TheOptions().text.font);
        ShutdownFonts();
        TheOptions() = {};
        TheEditorEvents() = {};
        TheWindowState() = {};
        shell_test::Forget();
    }

    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        const LRESULT result = SendMessageW(window_, message, wParam, lParam);
        Check();
        return result;
    }
    void Check() const {
        EXPECT_STREQ(EditorCheck(editor_), nullptr);
        EXPECT_STREQ(EditorCheckPositions(editor_), nullptr);
    }
    // What the keyboard holds down from now on.
    static void SetKeys(bool shift, bool ctrl) {
        BYTE keys[256] = {};
        keys[VK_SHIFT] = shift ? 0x80 : 0;
        keys[VK_CONTROL] = ctrl ? 0x80 : 0;
        SetKeyboardState(keys);
    }
    void Key(WPARAM key, bool shift = false, bool ctrl = false) const {
        SetKeys(shift, ctrl);
        EXPECT_EQ(Send(WM_KEYDOWN, key), 0);
        SetKeys(false, false);
    }
    static LPARAM Point(int x, int y) { return MAKELPARAM(x, y); }

    void Fill(const std::u16string& text) {
        editor_->flags |= kFlagNoUndo;
        TextInsert(editor_, 0, 0, text.data(), static_cast<uint32_t>(text.size()));
        editor_->flags &= ~kFlagNoUndo;
        MoveCaretTo(editor_, 0, 0);
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
    using Place = std::pair<int32_t, int32_t>;
    Place Caret() const { return {editor_->caret.line, editor_->caretColumn}; }
    Place Anchor() const {
        if (editor_->anchorColumn == kNoSelection) return {-1, -1};
        return {editor_->anchor.line, editor_->anchorColumn};
    }
    void Select(uint32_t line1, uint32_t column1, uint32_t line2, uint32_t column2) const {
        editor_->anchorColumn = kNoSelection;
        MoveCaretTo(editor_, line1, column1);
        BeginOrClearSelection(editor_, true);
        MoveCaretTo(editor_, line2, column2);
    }
    // Makes the client area this large.
    void ResizeClient(int width, int height) const {
        RECT whole;
        RECT client;
        GetWindowRect(window_, &whole);
        GetClientRect(window_, &client);
        ResizeEditorWindow(width + (whole.right - whole.left) - client.right,
                           height + (whole.bottom - whole.top) - client.bottom);
    }
    RECT Client() const {
        RECT client;
        GetClientRect(window_, &client);
        return client;
    }
    SCROLLINFO Bar(int bar) const {
        SCROLLINFO info = {};
        info.cbSize = sizeof(info);
        info.fMask = SIF_ALL;
        GetScrollInfo(window_, bar, &info);
        return info;
    }

    char16_t separators_[4] = u",.;";
    HWND parent_ = nullptr;
    HWND window_ = nullptr;
    Editor* editor_ = nullptr;
    int unit_ = 0;  // pixels of a unit of the font
    int row_ = 0;   // pixels of a row
};

}  // namespace nira
