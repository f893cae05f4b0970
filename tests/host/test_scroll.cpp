#include "view/scroll.h"

#include "host/view_fixture.h"

namespace nira {
namespace {

using Scroll = ViewTest;

int32_t ScrolledTo(Editor* editor, int32_t start, int32_t code) {
    editor->scrollY = start * kRow;
    ClampVertical(editor);
    ScrollVertical(editor, code);
    return editor->top.row;
}

// ---- the codes of the bars ----

TEST_F(Scroll, VerticalCodesMoveByRowsAndWindows) {
    FillLines(50);
    EXPECT_EQ(ScrolledTo(editor_, 10, kScrollLineBack), 9);
    EXPECT_EQ(ScrolledTo(editor_, 10, kScrollLineForward), 11);
    EXPECT_EQ(ScrolledTo(editor_, 10, kScrollPageBack), 5);
    EXPECT_EQ(ScrolledTo(editor_, 10, kScrollPageForward), 15);
    EXPECT_EQ(ScrolledTo(editor_, 10, kScrollToStart), 0);
    EXPECT_EQ(ScrolledTo(editor_, 10, kScrollToEnd), 45);
    EXPECT_EQ(ScrolledTo(editor_, 10, kScrollAutoBack), 8);
    EXPECT_EQ(ScrolledTo(editor_, 10, kScrollAutoForward), 12);
    window_.vertical.track = 33;
    EXPECT_EQ(ScrolledTo(editor_, 10, kScrollThumbTrack), 33);
    EXPECT_EQ(window_.vertical.position, 33);
    EXPECT_EQ(TheNews().repaints, 9);
}

TEST_F(Scroll, HorizontalCodesMoveByPixelsAndWindows) {
    Fill(std::u16string(200, u'x'));
    window_.horizontal.track = 777;
    const std::pair<int32_t, int32_t> codes[] = {
        {kScrollLineBack, 490},    {kScrollLineForward, 510}, {kScrollPageBack, 300},
        {kScrollPageForward, 700}, {kScrollThumbTrack, 777},  {kScrollToStart, 0},
        {kScrollToEnd, 1402},      {kScrollAutoBack, 480},    {kScrollAutoForward, 520}};
    for (const auto& entry : codes) {
        const int32_t code = entry.first;
        editor_->scrollX = 500;
        Do([&] { ScrollHorizontal(editor_, code); });
        EXPECT_EQ(editor_->scrollX, entry.second) << code;
        EXPECT_EQ(window_.horizontal.position, entry.second);
    }
    EXPECT_EQ(TheNews().repaints, 9);
}

TEST_F(Scroll, OtherCodesDoNothing) {
    FillLines(50);
    editor_->scrollY = 10 * kRow;
    ClampVertical(editor_);
    for (const int32_t code : {4, 8, 9, -1, 99, 101, 201, 65535}) {
        Do([&] { ScrollVertical(editor_, code); });
        Do([&] { ScrollHorizontal(editor_, code); });
    }
    EXPECT_EQ(editor_->top.row, 10);
    EXPECT_EQ(TheNews().repaints, 0);
}

TEST_F(Scroll, StopsAtTheFirstRowAndWithTheLastRowInTheWindow) {
    FillLines(50);
    EXPECT_EQ(ScrolledTo(editor_, 0, kScrollLineBack), 0);
    EXPECT_EQ(ScrolledTo(editor_, 3, kScrollPageBack), 0);
    EXPECT_EQ(ScrolledTo(editor_, 44, kScrollAutoForward), 45);
    EXPECT_EQ(ScrolledTo(editor_, 45, kScrollLineForward), 45);
    EXPECT_EQ(editor_->bottomRow, 49);
    window_.vertical.track = -4;
    EXPECT_EQ(ScrolledTo(editor_, 10, kScrollThumbTrack), 0);
    window_.vertical.track = INT32_MAX;
    EXPECT_EQ(ScrolledTo(editor_, 10, kScrollThumbTrack), 45);
}

TEST_F(Scroll, ToTheEndOfAShortTextStaysAtItsStart) {
    FillLines(3);
    Do([&] { ScrollVertical(editor_, kScrollToEnd); });
    Do([&] { ScrollHorizontal(editor_, kScrollToEnd); });
    EXPECT_EQ(editor_->scrollY, 0);
    EXPECT_EQ(editor_->scrollX, 0);
    EXPECT_EQ(editor_->bottomRow, 2);
}

TEST_F(Scroll, ToTheEndShowsTheWholeLastRowInAWindowOfHalfRows) {
    FillLines(50);
    Resize(200, 87);
    Do([&] { ScrollVertical(editor_, kScrollToEnd); });
    EXPECT_EQ(editor_->scrollY, 45 * kRow) << "800 - 87 rounded up to a row";
    EXPECT_EQ(editor_->bottomRow, 49);
}

// ---- clamping ----

TEST_F(Scroll, ClampRoundsUpToARow) {
    FillLines(50);
    editor_->scrollY = kRow + kRow / 2;
    Do([&] { EXPECT_TRUE(ClampVertical(editor_)); });
    EXPECT_EQ(editor_->scrollY, 2 * kRow);
    EXPECT_EQ(editor_->top.row, 2);
    EXPECT_EQ(editor_->bottomRow, 7);
    Do([&] { EXPECT_FALSE(ClampVertical(editor_)); });
    editor_->scrollY = -1;
    Do([&] { EXPECT_TRUE(ClampVertical(editor_)); });
    EXPECT_EQ(editor_->scrollY, 0);
}

TEST_F(Scroll, ClampFindsTheRowWithinAWrappedLine) {
    Wrap(true);
    Fill(u"a\n" + std::u16string(200, u'x'));
    editor_->scrollY = 4 * kRow;
    Do([&] { EXPECT_FALSE(ClampVertical(editor_)); });
    EXPECT_EQ(editor_->top.line, 1);
    EXPECT_EQ(editor_->top.subRow, 3);
    EXPECT_EQ(editor_->bottomRow, 9);
}

TEST_F(Scroll, ClampKeepsTwoPixelsBehindTheWidestLine) {
    Fill(std::u16string(100, u'x'));
    editor_->scrollX = 603;
    Do([&] { EXPECT_TRUE(ClampHorizontal(editor_)); });
    EXPECT_EQ(editor_->scrollX, 602);
    Do([&] { EXPECT_FALSE(ClampHorizontal(editor_)); });
    editor_->scrollX = -7;
    Do([&] { EXPECT_TRUE(ClampHorizontal(editor_)); });
    EXPECT_EQ(editor_->scrollX, 0);
}

TEST_F(Scroll, NotesWhetherTheSystemCaretIsStillInItsPlace) {
    FillLines(50);
    SurfaceMoveCaret(0, 0);
    ClampVertical(editor_);
    EXPECT_EQ(editor_->flags & kFlagCaretElsewhere, 0u);
    ScrollVertical(editor_, kScrollLineForward);
    EXPECT_NE(editor_->flags & kFlagCaretElsewhere, 0u);
    SurfaceMoveCaret(0, -kRow);
    ClampHorizontal(editor_);
    EXPECT_EQ(editor_->flags & kFlagCaretElsewhere, 0u);
    At(0, 1);
    EXPECT_NE(editor_->flags & kFlagCaretElsewhere, 0u);
}

// ---- following the caret ----

TEST_F(Scroll, FollowsTheCaretSidewaysWithAMargin) {
    Fill(std::u16string(100, u'x'));
    At(0, 24);
    EXPECT_EQ(editor_->scrollX, 0) << "192 and the caret's two pixels fit into 200";
    At(0, 30);
    EXPECT_EQ(editor_->scrollX, 240 - 200 + 30 + 2);
    At(0, 100);
    EXPECT_EQ(editor_->scrollX, 802 - 200) << "no further than behind the longest line";
    At(0, 70);
    EXPECT_EQ(editor_->scrollX, 560 - 30);
    At(0, 3);
    EXPECT_EQ(editor_->scrollX, 0);
}

TEST_F(Scroll, FollowsTheCaretSidewaysWithoutAMargin) {
    Fill(std::u16string(100, u'x'));
    At(0, 100);
    editor_->caretX = 560;
    EnsureCaretVisible(editor_, 0);
    EXPECT_EQ(editor_->scrollX, 560);
    editor_->caretX = 768;
    EnsureCaretVisible(editor_, 0);
    EXPECT_EQ(editor_->scrollX, 768 - 200 + 2);
    At(0, 0);
}

TEST_F(Scroll, FollowsTheCaretNoFurtherThanARowIsWide) {
    Fill(std::u16string(625, u'x'));
    ASSERT_EQ(EditorRows(editor_), 2);
    At(0, 374);
    EXPECT_EQ(editor_->scrollX, 3002 - 200);
}

TEST_F(Scroll, FollowsTheCaretUpExactlyAndDownByWholeRows) {
    FillLines(50);
    Resize(200, 87);
    At(4, 0);
    EXPECT_EQ(editor_->top.row, 0);
    At(5, 0);
    EXPECT_EQ(editor_->top.row, 1);
    At(20, 0);
    EXPECT_EQ(editor_->top.row, 16);
    EXPECT_EQ(editor_->bottomRow, 21);
    At(17, 0);
    EXPECT_EQ(editor_->top.row, 16);
    At(9, 0);
    EXPECT_EQ(editor_->top.row, 9);
    EXPECT_EQ(window_.vertical.position, 9);
}

TEST_F(Scroll, ShowsTheCaretRowInAWindowLowerThanARow) {
    FillLines(50);
    Resize(200, 7);
    Do([&] { MoveCaretTo(editor_, 20, 0); });
    EXPECT_EQ(editor_->top.row, 20);
    Resize(0, 0);
    Do([&] { MoveCaretTo(editor_, 49, 1); });
    EXPECT_EQ(editor_->top.row, 49);
    Do([&] { ScrollVertical(editor_, kScrollToEnd); });
    Do([&] { ScrollHorizontal(editor_, kScrollToEnd); });
}

TEST_F(Scroll, CaretPixelsCountTabsAsColumns) {
    Fill(u"a\tb");
    At(0, 2);
    EXPECT_EQ(editor_->caretX, 5 * kUnit);
    EXPECT_EQ(editor_->caretY, 0);
    At(0, 3);
    EXPECT_EQ(editor_->caretX, 6 * kUnit);
}

TEST_F(Scroll, CaretPixelsCountFromTheRowsStart) {
    Wrap(true);
    Fill(std::u16string(60, u'x'));
    At(0, 24);
    EXPECT_EQ(editor_->caretX, 0);
    EXPECT_EQ(editor_->caretY, kRow);
    At(0, 60);
    EXPECT_EQ(editor_->caretX, 12 * kUnit);
    EXPECT_EQ(editor_->caretY, 2 * kRow);
}

// ---- resizing ----

TEST_F(Scroll, AResizeSetsThePagesAndDoesNotWrapAgain) {
    Wrap(true);
    Fill(std::u16string(60, u'x'));
    Resize(100, 50);
    Do([&] { ViewResized(editor_); });
    EXPECT_EQ(window_.vertical.page, 3);
    EXPECT_EQ(window_.horizontal.page, 100);
    EXPECT_EQ(EditorRows(editor_), 3);
    EXPECT_EQ(editor_->bottomRow, 2);
    EXPECT_EQ(TheNews().repaints, 1);
    At(0, 60);
    Do([&] { TypeChar(editor_, u'y'); });
    EXPECT_EQ(EditorRows(editor_), 6) << "what is edited is broken for the new width";
}

TEST_F(Scroll, AResizeKeepsTheViewInsideTheText) {
    FillLines(50);
    Do([&] { ScrollVertical(editor_, kScrollToEnd); });
    Resize(200, 400);
    Do([&] { ViewResized(editor_); });
    EXPECT_EQ(editor_->top.row, 25);
    EXPECT_EQ(editor_->bottomRow, 49);
}

TEST_F(Scroll, AWindowOfOnePixelStillHoldsEveryUnit) {
    Wrap(true);
    Fill(u"abc\n\n\tx");
    Resize(1, 1);
    Do([&] { ViewResized(editor_); });
    Do([&] { ReapplyOptions(editor_); });
    EXPECT_EQ(EditorRows(editor_), 6) << "one unit a row";
    for (int i = 0; i < 7; ++i) Do([&] { MoveRight(editor_, false); });
    EXPECT_EQ(Caret(), Place(2, 2));
    Do([&] { TypeChar(editor_, u'y'); });
    Do([&] { MovePageUp(editor_, false); });
    Do([&] { DeleteBackward(editor_); });
}

// ---- wrapping ----

TEST_F(Scroll, ToggleWrapLaysEveryLineOutAgainAndBack) {
    Fill(std::u16string(60, u'x') + u"\nab\n" + std::u16string(25, u'y'));
    Do([&] { ToggleWrap(editor_); });
    EXPECT_EQ(editor_->wordWrap, 1);
    EXPECT_EQ(EditorRows(editor_), 6);
    EXPECT_EQ(TheNews().repaints, 1);
    Do([&] { ToggleWrap(editor_); });
    EXPECT_EQ(editor_->wordWrap, 0);
    EXPECT_EQ(EditorRows(editor_), 3);
}

TEST_F(Scroll, ToggleWrapKeepsTheCaretsPlaceOnTheScreen) {
    std::u16string text;
    for (int i = 0; i < 40; ++i) text += std::u16string(60, u'x') + u"\n";
    Fill(text);
    At(20, 50);
    Do([&] { ScrollVertical(editor_, kScrollLineForward); });
    const int32_t below = editor_->caret.row - editor_->top.row;
    ASSERT_EQ(below, 3);
    Do([&] { ToggleWrap(editor_); });
    EXPECT_EQ(Caret(), Place(20, 50));
    EXPECT_EQ(editor_->caret.row, 62);
    EXPECT_EQ(editor_->top.row, 62 - below);
    EXPECT_EQ(editor_->scrollX, 0);
    Do([&] { ToggleWrap(editor_); });
    EXPECT_EQ(editor_->top.row, 20 - below);
}

TEST_F(Scroll, ToggleWrapFindsTheAnchorAnew) {
    Fill(std::u16string(60, u'x') + u"\n" + std::u16string(60, u'y'));
    Select(1, 40, 0, 0);
    Do([&] { ToggleWrap(editor_); });
    EXPECT_EQ(Anchor(), Place(1, 40));
    EXPECT_EQ(editor_->anchor.row, 4);
    EXPECT_EQ(editor_->anchor.subRow, 1);
}

TEST_F(Scroll, ToggleWrapSurvivesMemoryRunningOut) {
    std::u16string text;
    for (int i = 0; i < 10; ++i) text += std::u16string(60, u'x') + u"\n";
    Fill(text);
    FaultArm(FaultPoint::kAllocation, {.first = 4, .howMany = kFaultForever});
    ToggleWrap(editor_);
    FaultDisarm(FaultPoint::kAllocation);
    Check();
    EXPECT_GT(EditorRows(editor_), 11);
    EXPECT_LT(EditorRows(editor_), 31);
}

// ---- options and other documents ----

TEST_F(Scroll, OptionsAreTakenAnewWithFontAndTabSize) {
    Fill(u"\tx");
    At(0, 2);
    editor_->layoutStale = 1;
    TheOptions().tabSize = 8;
    ReleaseFont(TheOptions().text.font);
    TheOptions().text.font = AcquireFont(u"Fixed\x001C");
    Do([&] { ReapplyOptions(editor_); });
    EXPECT_EQ(editor_->layoutStale, 0);
    EXPECT_EQ(editor_->lineHeight, 33 + 1);
    EXPECT_EQ(editor_->caretX, 9 * 17);
    EXPECT_EQ(window_.vertical.page, 80 / 34);
}

TEST_F(Scroll, TheCaretTakesTheNewFontAndTabSizeAtOnce) {
    Fill(u"a\n\tx");
    At(1, 2);
    SurfaceShowCaret(&window_);
    TheOptions().tabSize = 8;
    ReleaseFont(TheOptions().text.font);
    TheOptions().text.font = AcquireFont(u"Fixed\x001C");
    Do([&] { ReapplyOptions(editor_); });
    EXPECT_EQ(HostCaret().width, 2);
    EXPECT_EQ(HostCaret().height, 34);
    EXPECT_EQ(HostCaret().x, 9 * 17);
    EXPECT_EQ(HostCaret().y, 34);
    EXPECT_TRUE(HostCaretVisible());
}

TEST_F(Scroll, WithoutTheFocusThereIsNoCaretToChange) {
    Fill(u"ab");
    SurfaceDestroyCaret();
    const uint32_t created = HostCaret().created;
    Do([&] { ReapplyOptions(editor_); });
    EXPECT_EQ(HostCaret().created, created);
    EXPECT_FALSE(SurfaceHasCaret(&window_));
}

TEST_F(Scroll, AStaleDocumentIsLaidOutWhenItIsShown) {
    Fill(u"\tx");
    TheOptions().tabSize = 8;
    editor_->layoutStale = 1;
    Do([&] { RestoreView(editor_); });
    EXPECT_EQ(editor_->widestLine, 9 * kUnit);
    EXPECT_EQ(editor_->layoutStale, 0);
}

TEST_F(Scroll, EachDocumentKeepsItsOwnView) {
    FillLines(50);
    At(0, 1);
    Do([&] { ScrollVertical(editor_, kScrollPageForward); });
    Editor* other = EditorCreate();
    SetCurrentEditor(other);
    EXPECT_EQ(TheWindowState().currentEditor, other);
    EXPECT_EQ(window_.vertical.maximum, 4);
    EXPECT_EQ(window_.vertical.position, 0);
    EXPECT_FALSE(HostPointer().waiting);
    EXPECT_EQ(HostPointer().waits, 1u);
    Forget();
    SetCurrentEditor(editor_);
    Check();
    EXPECT_EQ(window_.vertical.maximum, 49);
    EXPECT_EQ(window_.vertical.position, 5);
    EXPECT_EQ(window_.vertical.page, 5);
    EXPECT_EQ(window_.horizontal.page, 200);
    EXPECT_EQ(TheNews().undoStates, 1);
    EXPECT_EQ(TheNews().selections, 1);
    EXPECT_EQ(TheNews().titles, 1);
    EditorDestroy(other);
}

TEST_F(Scroll, NoDocumentCanBeShown) {
    SetCurrentEditor(nullptr);
    EXPECT_EQ(TheWindowState().currentEditor, nullptr);
    EXPECT_FALSE(HostPointer().waiting);
    SetCurrentEditor(editor_);
}

}  // namespace
}  // namespace nira
