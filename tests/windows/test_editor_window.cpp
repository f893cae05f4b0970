// The editor window by the messages it gets.
#include "editor_window_fixture.h"
#include "engine/drag_timer.h"
#include "view/editing.h"

namespace nira {
namespace {

using EditorWindow = EditorWindowTest;

// ---- class and window ----

TEST_F(EditorWindow, ItsClassHasNothingOfItsOwn) {
    WNDCLASSW made = {};
    ASSERT_TRUE(GetClassInfoW(GetModuleHandleW(nullptr), L"NREDIT", &made));
    EXPECT_EQ(made.style, 0u);
    EXPECT_EQ(made.hbrBackground, nullptr);
    EXPECT_EQ(made.hIcon, nullptr);
    EXPECT_EQ(made.hCursor, nullptr);
    EXPECT_EQ(made.lpszMenuName, nullptr);
    EXPECT_EQ(made.cbClsExtra, 0);
    EXPECT_EQ(made.cbWndExtra, 0);
}

TEST_F(EditorWindow, FillsItsParentWithBothBars) {
    wchar_t name[20] = {};
    GetClassNameW(window_, name, 20);
    EXPECT_STREQ(name, L"NREDIT");
    GetWindowTextW(window_, name, 20);
    EXPECT_STREQ(name, L"Edit");
    EXPECT_EQ(static_cast<DWORD>(GetWindowLongW(window_, GWL_STYLE)), 0x50300000u);
    EXPECT_EQ(GetParent(window_), parent_);
    RECT area;
    GetWindowRect(window_, &area);
    EXPECT_EQ(area.left, 0);
    EXPECT_EQ(area.top, 0);
    EXPECT_EQ(area.right, 320);
    EXPECT_EQ(area.bottom, 240);
    EXPECT_EQ(TheWindowState().clientWidth, Client().right);
}

TEST_F(EditorWindow, IsResizedInItsPlace) {
    ResizeEditorWindow(200, 100);
    RECT area;
    GetWindowRect(window_, &area);
    EXPECT_EQ(area.left, 0);
    EXPECT_EQ(area.right, 200);
    EXPECT_EQ(area.bottom, 100);
    EXPECT_EQ(TheWindowState().clientWidth, Client().right);
    Check();
}

// ---- characters ----

TEST_F(EditorWindow, TypesEveryCharacterButBackspaceAndReturn) {
    for (const char16_t unit : std::u16string(u"aZ \t\u00E4\u4E2D")) EXPECT_EQ(Send(WM_CHAR, unit), 0);
    EXPECT_EQ(Send(WM_CHAR, 8), 0);
    EXPECT_EQ(Send(WM_CHAR, 13), 0);
    EXPECT_EQ(Text(), u"aZ \t\u00E4\u4E2D");
}

TEST_F(EditorWindow, TypesNoCharactersThatOnlyADesktopKeyboardMakes) {
    for (const WPARAM unit : {1, 10, 27, 31, 127}) Send(WM_CHAR, unit);
    SetKeys(false, true);
    Send(WM_CHAR, 9);
    EXPECT_EQ(Text(), u"");
}

// ---- keys ----

TEST_F(EditorWindow, ReturnBreaksTheLineOnce) {
    Fill(u"ab");
    Key(VK_RIGHT);
    Key(VK_RETURN);
    Send(WM_CHAR, 13);
    EXPECT_EQ(Text(), u"a\nb");
    Key(VK_RETURN, false, true);
    EXPECT_EQ(Text(), u"a\n\nb");
}

TEST_F(EditorWindow, BackspaceAndDeleteDeleteOnce) {
    Fill(u"abcdef");
    MoveCaretTo(editor_, 0, 3);
    Key(VK_BACK);
    Send(WM_CHAR, 8);
    EXPECT_EQ(Text(), u"abdef");
    Key(VK_DELETE);
    EXPECT_EQ(Text(), u"abef");
    Key(VK_BACK, false, true);
    Key(VK_DELETE, true, true);
    EXPECT_EQ(Text(), u"af");
}

struct KeyMove {
    WPARAM key;
    std::pair<int32_t, int32_t> plain;
    std::pair<int32_t, int32_t> withCtrl;
};

TEST_F(EditorWindow, KeysMoveTheCaretAndShiftSelects) {
    std::u16string text = u"ab cd ef";
    for (int i = 1; i < 60; ++i) text += u"\r\nab cd ef";
    Fill(text);
    const int32_t page = Client().bottom / row_;
    const KeyMove moves[] = {{VK_LEFT, {30, 3}, {30, 3}},
                             {VK_RIGHT, {30, 5}, {30, 6}},
                             {VK_UP, {29, 4}, {29, 4}},
                             {VK_DOWN, {31, 4}, {31, 4}},
                             {VK_PRIOR, {30 - page, 4}, {30 - page, 4}},
                             {VK_NEXT, {30 + page, 4}, {30 + page, 4}},
                             {VK_HOME, {30, 0}, {0, 0}},
                             {VK_END, {30, 8}, {59, 8}}};
    for (const KeyMove& move : moves) {
        for (const bool shift : {false, true}) {
            for (const bool ctrl : {false, true}) {
                editor_->anchorColumn = kNoSelection;
                MoveCaretTo(editor_, 30, 4);
                Key(move.key, shift, ctrl);
                EXPECT_EQ(Caret(), ctrl ? move.withCtrl : move.plain) << move.key;
                EXPECT_EQ(Anchor(), shift ? Place(30, 4) : Place(-1, -1)) << move.key;
            }
        }
    }
}

TEST_F(EditorWindow, AKeyPressedLongAgoIsNotHeld) {
    Fill(u"ab cd");
    BYTE keys[256] = {};
    keys[VK_CONTROL] = 1;
    keys[VK_SHIFT] = 1;
    SetKeyboardState(keys);
    Send(WM_KEYDOWN, VK_RIGHT);
    EXPECT_EQ(Caret(), Place(0, 1));
    EXPECT_EQ(Anchor(), Place(-1, -1));
}

TEST_F(EditorWindow, OtherKeysChangeNothing) {
    Fill(u"ab cd");
    for (const WPARAM key : {VK_F5, VK_INSERT, VK_TAB, VK_ESCAPE, VK_SPACE}) Key(key);
    Key('A');
    EXPECT_EQ(Text(), u"ab cd");
    EXPECT_EQ(Caret(), Place(0, 0));
}

// ---- mouse ----

TEST_F(EditorWindow, APressPutsTheCaretThereAndADragSelects) {
    Fill(u"abcdef\r\nghijkl");
    EXPECT_EQ(Send(WM_LBUTTONDOWN, MK_LBUTTON, Point(2 * unit_ + 1, 6)), 0);
    EXPECT_EQ(Caret(), Place(0, 2));
    EXPECT_EQ(TheWindowState().mouseDown, 1);
    EXPECT_EQ(Send(WM_MOUSEMOVE, MK_LBUTTON, Point(4 * unit_ + 1, row_ + 2)), 0);
    EXPECT_EQ(Anchor(), Place(0, 2));
    EXPECT_EQ(Caret(), Place(1, 4));
    EXPECT_EQ(editor_->selecting, 1);
    EXPECT_EQ(TheWindowState().mouseX, 4 * unit_ + 1);
    EXPECT_EQ(TheWindowState().mouseY, row_ + 2);
    EXPECT_EQ(Send(WM_LBUTTONUP, 0, Point(4 * unit_ + 1, row_ + 2)), 0);
    EXPECT_EQ(TheWindowState().mouseDown, 0);
    EXPECT_EQ(editor_->selecting, 0);
    EXPECT_TRUE(HasSelection(editor_)) << "the release keeps it";
    Send(WM_MOUSEMOVE, MK_LBUTTON, Point(unit_, 6));
    EXPECT_EQ(Caret(), Place(1, 4));
}

TEST_F(EditorWindow, MovesWithoutAPressHereDoNotSelect) {
    Fill(u"abcdef");
    Send(WM_MOUSEMOVE, MK_LBUTTON, Point(4 * unit_, 6));
    EXPECT_EQ(Caret(), Place(0, 0));
    EXPECT_EQ(Anchor(), Place(-1, -1));
    Send(WM_LBUTTONDOWN, MK_LBUTTON, Point(unit_, 6));
    Send(WM_MOUSEMOVE, 0, Point(4 * unit_, 6));
    EXPECT_EQ(Caret(), Place(0, 1));
    EXPECT_EQ(Anchor(), Place(-1, -1));
}

TEST_F(EditorWindow, APressWithShiftClearsTheSelection) {
    Fill(u"abcdef");
    Select(0, 1, 0, 3);
    SetKeys(true, false);
    Send(WM_LBUTTONDOWN, MK_LBUTTON | MK_SHIFT, Point(5 * unit_ + 1, 6));
    EXPECT_EQ(Anchor(), Place(-1, -1));
    EXPECT_EQ(Caret(), Place(0, 5));
}

TEST_F(EditorWindow, AReleaseWithoutAPressDoesNothing) {
    Fill(u"abcdef");
    EXPECT_EQ(Send(WM_LBUTTONUP, 0, Point(4 * unit_, 6)), 0);
    EXPECT_EQ(Caret(), Place(0, 0));
    EXPECT_EQ(TheWindowState().mouseDown, 0);
}

TEST_F(EditorWindow, ADragOutsideScrollsOnEveryTickUntilTheRelease) {
    std::u16string text;
    for (int i = 0; i < 60; ++i) text += u"abc\r\n";
    Fill(text);
    Send(WM_LBUTTONDOWN, MK_LBUTTON, Point(unit_, 6));
    Send(WM_MOUSEMOVE, MK_LBUTTON, Point(unit_, Client().bottom + 20));
    EXPECT_EQ(TheWindowState().dragTimerOn, 1);
    const int32_t top = editor_->top.row;
    EXPECT_EQ(Send(WM_TIMER, kDragTimer), 0);
    EXPECT_GE(editor_->top.row, top + 2);
    EXPECT_EQ(Anchor(), Place(0, 1));
    const int32_t scrolled = editor_->top.row;
    Send(WM_TIMER, kDragTimer + 1);
    EXPECT_EQ(editor_->top.row, scrolled) << "another timer";
    Send(WM_LBUTTONUP, 0, Point(unit_, Client().bottom + 20));
    EXPECT_EQ(TheWindowState().dragTimerOn, 0);
}

TEST_F(EditorWindow, ADragComesBackFromAboveAndLeft) {
    std::u16string text;
    for (int i = 0; i < 60; ++i) text += std::u16string(100, u'x') + u"\r\n";
    Fill(text);
    MoveCaretTo(editor_, 50, 90);
    ASSERT_GT(editor_->scrollX, 40);
    Send(WM_LBUTTONDOWN, MK_LBUTTON, Point(100, 50));
    const int32_t top = editor_->top.row;
    const int32_t x = editor_->scrollX;
    Send(WM_MOUSEMOVE, MK_LBUTTON, Point(-30, -30));
    EXPECT_EQ(TheWindowState().mouseX, -30);
    EXPECT_EQ(TheWindowState().mouseY, -30);
    Send(WM_TIMER, kDragTimer);
    EXPECT_LT(editor_->top.row, top);
    EXPECT_LT(editor_->scrollX, x);
    Send(WM_MOUSEMOVE, MK_LBUTTON, Point(100, 50));
    Send(WM_TIMER, kDragTimer);
    EXPECT_EQ(TheWindowState().dragTimerOn, 0) << "back inside";
}

TEST_F(EditorWindow, ALostCaptureEndsTheDrag) {
    Fill(u"abcdef");
    Send(WM_LBUTTONDOWN, MK_LBUTTON, Point(unit_, 6));
    EXPECT_EQ(GetCapture(), window_);
    Send(WM_MOUSEMOVE, MK_LBUTTON, Point(unit_, -20));
    ASSERT_EQ(TheWindowState().dragTimerOn, 1);
    ReleaseCapture();
    EXPECT_EQ(TheWindowState().mouseDown, 0);
    EXPECT_EQ(TheWindowState().dragTimerOn, 0);
}

// ---- scroll bars ----

TEST_F(EditorWindow, ScrollMessagesMoveTheViewAndTheBars) {
    std::u16string text;
    for (int i = 0; i < 60; ++i) text += std::u16string(100, u'x') + u"\r\n";
    Fill(text);
    EXPECT_EQ(Bar(SB_VERT).nMax, 60);
    EXPECT_EQ(Bar(SB_HORZ).nMax, 100 * unit_ + 1);
    EXPECT_EQ(static_cast<int>(Bar(SB_VERT).nPage), Client().bottom / row_);
    EXPECT_EQ(static_cast<int>(Bar(SB_HORZ).nPage), Client().right);
    EXPECT_EQ(Send(WM_VSCROLL, SB_LINEDOWN), 0);
    EXPECT_EQ(editor_->top.row, 1);
    EXPECT_EQ(Bar(SB_VERT).nPos, 1);
    EXPECT_EQ(Send(WM_HSCROLL, SB_LINERIGHT), 0);
    EXPECT_EQ(editor_->scrollX, 10);
    EXPECT_EQ(Bar(SB_HORZ).nPos, 10);
    Send(WM_VSCROLL, SB_BOTTOM);
    EXPECT_EQ(editor_->bottomRow, 60);
    Send(WM_VSCROLL, SB_TOP);
    EXPECT_EQ(editor_->top.row, 0);
    SetScrollPos(window_, SB_VERT, 17, FALSE);
    Send(WM_VSCROLL, MAKEWPARAM(SB_THUMBTRACK, 3));
    EXPECT_EQ(editor_->top.row, 17) << "the bar's own 32-bit position counts";
    Send(WM_VSCROLL, SB_ENDSCROLL);
    Send(WM_VSCROLL, MAKEWPARAM(SB_THUMBPOSITION, 3));
    EXPECT_EQ(editor_->top.row, 17);
}

TEST_F(EditorWindow, ItsBarsNeverHide) {
    const RECT before = Client();
    Fill(u"a");
    EXPECT_EQ(Client().right, before.right);
    EXPECT_EQ(Client().bottom, before.bottom);
    EXPECT_NE(GetWindowLongW(window_, GWL_STYLE) & WS_VSCROLL, 0);
    EXPECT_NE(GetWindowLongW(window_, GWL_STYLE) & WS_HSCROLL, 0);
}

// ---- focus and caret ----

RECT SystemCaret() {
    GUITHREADINFO info = {};
    info.cbSize = sizeof(info);
    GetGUIThreadInfo(GetCurrentThreadId(), &info);
    return info.hwndCaret != nullptr ? info.rcCaret : RECT{-1, -1, -1, -1};
}

TEST_F(EditorWindow, HasACaretWhileItHasTheFocus) {
    Fill(u"abcdef\r\nabcdef");
    MoveCaretTo(editor_, 1, 3);
    SetFocus(window_);
    RECT caret = SystemCaret();
    EXPECT_EQ(caret.left, 3 * unit_);
    EXPECT_EQ(caret.top, row_);
    EXPECT_EQ(caret.right - caret.left, 2);
    EXPECT_EQ(caret.bottom - caret.top, row_);
    Key(VK_LEFT);
    EXPECT_EQ(SystemCaret().left, 2 * unit_);
    Send(WM_CHAR, 'x');
    EXPECT_EQ(SystemCaret().left, 3 * unit_);
    SetFocus(parent_);
    EXPECT_EQ(SystemCaret().left, -1);
}

TEST_F(EditorWindow, TheCaretScrollsWithTheText) {
    std::u16string text;
    for (int i = 0; i < 60; ++i) text += std::u16string(100, u'x') + u"\r\n";
    Fill(text);
    SetFocus(window_);
    Send(WM_VSCROLL, SB_LINEDOWN);
    Send(WM_HSCROLL, SB_LINERIGHT);
    EXPECT_EQ(SystemCaret().left, -10);
    EXPECT_EQ(SystemCaret().top, -row_);
    EXPECT_EQ(editor_->flags & kFlagCaretElsewhere, 0u);
    Key(VK_END);
    EXPECT_EQ(SystemCaret().left, 100 * unit_ - editor_->scrollX);
    EXPECT_EQ(SystemCaret().right, Client().right);
}

// ---- texts from other programs ----

TEST_F(EditorWindow, HandsAPathToItsParent) {
    WPARAM first = 1;
    std::wstring path;
    shell_test::onMessage = [&](HWND, const shell_test::Received& one) {
        if (one.message != WM_USER) return;
        first = one.wParam;
        path = reinterpret_cast<const wchar_t*>(one.lParam);
    };
    Send(WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"C:\\a b.txt"));
    EXPECT_EQ(first, 0u);
    EXPECT_EQ(path, L"C:\\a b.txt");
    wchar_t name[20] = {};
    GetWindowTextW(window_, name, 20);
    EXPECT_STREQ(name, L"Edit");
}

// ---- sizes ----

TEST_F(EditorWindow, ASizeIsTakenFromTheMessage) {
    Fill(u"abc");
    EXPECT_EQ(Send(WM_SIZE, 0, MAKELPARAM(123, 45)), 0);
    EXPECT_EQ(TheWindowState().clientWidth, 123);
    SetCurrentEditor(nullptr);
    Send(WM_SIZE, 0, MAKELPARAM(77, 45));
    EXPECT_EQ(TheWindowState().clientWidth, 77);
}

TEST_F(EditorWindow, OnePixelIsWideEnoughForEverything) {
    editor_->wordWrap = 1;
    Fill(u"some text\r\n\twith a tab\r\n\r\n");
    ResizeClient(1, 1);
    ASSERT_EQ(Client().right, 1);
    ReapplyOptions(editor_);
    for (const WPARAM key :
         {VK_DOWN, VK_END, VK_NEXT, VK_BACK, VK_RETURN, VK_UP, VK_PRIOR, VK_DELETE, VK_HOME}) {
        Key(key, false, false);
        Key(key, true, true);
        Send(WM_CHAR, 'x');
    }
    Send(WM_LBUTTONDOWN, MK_LBUTTON, Point(0, 0));
    Send(WM_MOUSEMOVE, MK_LBUTTON, Point(3, 9));
    Send(WM_TIMER, kDragTimer);
    Send(WM_LBUTTONUP, 0, Point(0, 0));
    for (const WPARAM code : {0, 1, 2, 3, 6, 7}) {
        Send(WM_VSCROLL, code);
        Send(WM_HSCROLL, code);
    }
    ResizeEditorWindow(0, 0);
    Send(WM_CHAR, 'x');
    Key(VK_NEXT);
    Send(WM_VSCROLL, SB_BOTTOM);
}

// ---- no document ----

TEST_F(EditorWindow, WithoutADocumentEveryMessageIsAnsweredByNothing) {
    SetCurrentEditor(nullptr);
    for (const UINT message : {WM_CHAR, WM_HSCROLL, WM_VSCROLL, WM_SETFOCUS, WM_KILLFOCUS, WM_SIZE}) {
        EXPECT_EQ(SendMessageW(window_, message, 'a', Point(50, 50)), 0) << message;
    }
    for (const WPARAM key : {VK_BACK, VK_RETURN, VK_PRIOR, VK_NEXT, VK_END, VK_HOME, VK_LEFT, VK_UP, VK_RIGHT,
                             VK_DOWN, VK_DELETE, VK_F5}) {
        EXPECT_EQ(SendMessageW(window_, WM_KEYDOWN, key, 0), 0);
    }
    SendMessageW(window_, WM_TIMER, kDragTimer, 0);
    SendMessageW(window_, WM_LBUTTONDOWN, MK_LBUTTON, Point(3, 4));
    EXPECT_EQ(TheWindowState().mouseDown, 1);
    EXPECT_EQ(TheWindowState().mouseX, 3);
    SendMessageW(window_, WM_MOUSEMOVE, MK_LBUTTON, Point(5, 6));
    EXPECT_EQ(TheWindowState().mouseX, 5);
    SendMessageW(window_, WM_LBUTTONUP, 0, Point(5, 6));
    EXPECT_EQ(TheWindowState().mouseDown, 0);
}

TEST_F(EditorWindow, APaintIsValidatedWithAndWithoutADocument) {
    for (Editor* editor : {editor_, static_cast<Editor*>(nullptr)}) {
        SetCurrentEditor(editor);
        InvalidateRect(window_, nullptr, FALSE);
        ASSERT_TRUE(GetUpdateRect(window_, nullptr, FALSE));
        EXPECT_EQ(SendMessageW(window_, WM_PAINT, 0, 0), 0);
        EXPECT_FALSE(GetUpdateRect(window_, nullptr, FALSE));
    }
}

TEST_F(EditorWindow, AnotherDocumentBringsItsOwnBars) {
    std::u16string text;
    for (int i = 0; i < 60; ++i) text += u"x\r\n";
    Fill(text);
    Editor* other = EditorCreate();
    SetCurrentEditor(other);
    EXPECT_EQ(Bar(SB_VERT).nMax, Client().bottom / row_ - 1);
    SetCurrentEditor(editor_);
    EXPECT_EQ(Bar(SB_VERT).nMax, 60);
    EditorDestroy(other);
}

}  // namespace
}  // namespace nira
