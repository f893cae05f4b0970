#include "view/navigation.h"

#include "engine/drag_timer.h"
#include "host/view_fixture.h"

namespace nira {
namespace {

using Navigation = ViewTest;

// ---- characters ----

TEST_F(Navigation, LeftAndRightTakeALineEndForOneCharacter) {
    Fill(u"ab\nc");
    const Place places[] = {{0, 1}, {0, 2}, {1, 0}, {1, 1}};
    for (const Place& place : places) {
        Do([&] { MoveRight(editor_, false); });
        EXPECT_EQ(Caret(), place);
    }
    for (const Place& place : {Place(1, 0), Place(0, 2), Place(0, 1), Place(0, 0)}) {
        Do([&] { MoveLeft(editor_, false); });
        EXPECT_EQ(Caret(), place);
    }
    EXPECT_EQ(TheNews().repaints, 8);
}

TEST_F(Navigation, AtTheStartAndEndNothingMovesAndNothingIsRepainted) {
    Fill(u"ab");
    Do([&] { MoveLeft(editor_, false); });
    Do([&] { MoveWordLeft(editor_, false); });
    Do([&] { MoveRowUp(editor_, false); });
    At(0, 2);
    Do([&] { MoveRight(editor_, false); });
    Do([&] { MoveWordRight(editor_, false); });
    Do([&] { MoveRowDown(editor_, false); });
    Do([&] { MoveEnd(editor_, false); });
    EXPECT_EQ(Caret(), Place(0, 2));
    EXPECT_EQ(TheNews().repaints, 0);
}

TEST_F(Navigation, AMoveThatOnlyClearsTheSelectionIsRepainted) {
    Fill(u"ab");
    Select(0, 2, 0, 0);
    Do([&] { MoveLeft(editor_, false); });
    EXPECT_EQ(Anchor(), kNoAnchor);
    EXPECT_EQ(TheNews().repaints, 1);
    EXPECT_EQ(TheNews().selections, 1);
}

// ---- selections ----

TEST_F(Navigation, ExtendingKeepsTheAnchorWhereItBegan) {
    Fill(u"abcd");
    At(0, 1);
    Do([&] { MoveRight(editor_, true); });
    Do([&] { MoveRight(editor_, true); });
    EXPECT_EQ(Anchor(), Place(0, 1));
    EXPECT_EQ(Caret(), Place(0, 3));
    EXPECT_EQ(TheNews().selections, 1);
    Do([&] { MoveRight(editor_, false); });
    EXPECT_EQ(Anchor(), kNoAnchor);
    EXPECT_EQ(TheNews().selections, 2);
}

TEST_F(Navigation, AnAnchorAtTheCaretIsNoSelection) {
    Fill(u"abcd");
    At(0, 1);
    Do([&] { MoveRight(editor_, true); });
    Do([&] { MoveLeft(editor_, true); });
    EXPECT_EQ(Anchor(), Place(0, 1));
    EXPECT_FALSE(HasSelection(editor_));
    EXPECT_EQ(TheNews().selections, 2);
}

TEST_F(Navigation, EveryMoveExtends) {
    const auto moves = {MoveLeft,   MoveRight,    MoveWordLeft, MoveWordRight, MoveRowUp,   MoveRowDown,
                        MovePageUp, MovePageDown, MoveHome,     MoveEnd,       MoveToStart, MoveToEnd};
    Fill(u"ab cd\nef gh\nij kl");
    for (const auto& move : moves) {
        At(1, 3);
        editor_->anchorColumn = kNoSelection;
        Do([&] { move(editor_, true); });
        EXPECT_EQ(Anchor(), Place(1, 3));
        EXPECT_NE(Caret(), Place(1, 3));
        Do([&] { move(editor_, false); });
        EXPECT_EQ(Anchor(), kNoAnchor);
    }
}

// ---- rows and pages ----

TEST_F(Navigation, RowMovesKeepThePixelColumnAsItIsNow) {
    Fill(u"abcdef\nab\nabcdef");
    At(0, 5);
    Do([&] { MoveRowDown(editor_, false); });
    EXPECT_EQ(Caret(), Place(1, 2));
    Do([&] { MoveRowDown(editor_, false); });
    EXPECT_EQ(Caret(), Place(2, 2)) << "no remembered column";
    Do([&] { MoveRowUp(editor_, false); });
    EXPECT_EQ(Caret(), Place(1, 2));
}

TEST_F(Navigation, RowMovesHitTheLongestPrefixThatIsNotWider) {
    Fill(u"abc\n\tx\nabcdefg");
    At(0, 3);
    Do([&] { MoveRowDown(editor_, false); });
    EXPECT_EQ(Caret(), Place(1, 0)) << "three units do not reach behind a tab of four";
    At(2, 5);
    Do([&] { MoveRowUp(editor_, false); });
    EXPECT_EQ(Caret(), Place(1, 2));
}

TEST_F(Navigation, RowMovesGoThroughTheRowsOfAWrappedLine) {
    Wrap(true);
    Fill(std::u16string(60, u'x') + u"\nyy");
    At(0, 3);
    Do([&] { MoveRowDown(editor_, false); });
    EXPECT_EQ(Caret(), Place(0, 27));
    Do([&] { MoveRowDown(editor_, false); });
    EXPECT_EQ(Caret(), Place(0, 51));
    Do([&] { MoveRowDown(editor_, false); });
    EXPECT_EQ(Caret(), Place(1, 2));
    Do([&] { MoveRowUp(editor_, false); });
    EXPECT_EQ(Caret(), Place(0, 50));
}

TEST_F(Navigation, ARowMoveNeverEndsOnAnotherRow) {
    Wrap(true);
    Fill(std::u16string(60, u'x'));
    TheWindowState().clientWidth = 300;
    At(0, 60);
    editor_->caretX = 10000;
    Do([&] { MoveRowUp(editor_, false); });
    EXPECT_EQ(Caret(), Place(0, 47)) << "behind the row's last unit begins the next row";
}

TEST_F(Navigation, PagesMoveCaretAndViewByTheRowsOfTheWindow) {
    FillLines(50);
    At(2, 1);
    Do([&] { MovePageDown(editor_, false); });
    EXPECT_EQ(Caret(), Place(7, 1));
    EXPECT_EQ(editor_->top.row, 5);
    Do([&] { MovePageDown(editor_, false); });
    EXPECT_EQ(Caret(), Place(12, 1));
    EXPECT_EQ(editor_->top.row, 10);
    Do([&] { MovePageUp(editor_, false); });
    EXPECT_EQ(Caret(), Place(7, 1));
    EXPECT_EQ(editor_->top.row, 5);
    EXPECT_EQ(TheNews().repaints, 3);
    EXPECT_EQ(window_.vertical.position, 5);
}

TEST_F(Navigation, PagesRoundTheRowsOfTheWindowDown) {
    FillLines(50);
    Resize(200, 95);
    Do([&] { MovePageDown(editor_, false); });
    EXPECT_EQ(Caret(), Place(5, 0));
    EXPECT_EQ(editor_->top.row, 5);
}

TEST_F(Navigation, PagesStopAtTheEnds) {
    FillLines(12);
    At(8, 0);
    Do([&] { MovePageDown(editor_, false); });
    EXPECT_EQ(Caret(), Place(11, 0));
    EXPECT_EQ(editor_->top.row, 7);
    Do([&] { MovePageDown(editor_, false); });
    EXPECT_EQ(TheNews().repaints, 1);
    At(1, 0);
    Do([&] { MovePageUp(editor_, false); });
    EXPECT_EQ(Caret(), Place(0, 0));
    EXPECT_EQ(editor_->top.row, 0);
}

// ---- lines and documents ----

TEST_F(Navigation, EndGoesToTheEndOfTheLineNotOfTheRow) {
    Wrap(true);
    Fill(std::u16string(60, u'x'));
    Do([&] { MoveEnd(editor_, false); });
    EXPECT_EQ(Caret(), Place(0, 60));
    EXPECT_EQ(editor_->caret.row, 2);
}

TEST_F(Navigation, HomeGoesToTheLineStart) {
    Fill(u"\t\tx");
    At(0, 3);
    Do([&] { MoveHome(editor_, false); });
    EXPECT_EQ(Caret(), Place(0, 0));
    Do([&] { MoveHome(editor_, false); });
    EXPECT_EQ(Caret(), Place(0, 0));
}

TEST_F(Navigation, HomeTogglesBetweenIndentationAndStart) {
    TheOptions().keepIndent = 1;
    Fill(u"\t\tx\nyz");
    At(0, 3);
    for (const int32_t column : {2, 0, 2, 0}) {
        Do([&] { MoveHome(editor_, false); });
        EXPECT_EQ(Caret(), Place(0, column));
    }
    At(0, 1);
    Do([&] { MoveHome(editor_, false); });
    EXPECT_EQ(Caret(), Place(0, 2));
    At(1, 2);
    Do([&] { MoveHome(editor_, false); });
    EXPECT_EQ(Caret(), Place(1, 0));
}

TEST_F(Navigation, TopAndBottomOfTheDocument) {
    FillLines(30);
    Do([&] { MoveToEnd(editor_, false); });
    EXPECT_EQ(Caret(), Place(29, 1));
    EXPECT_EQ(editor_->top.row, 25);
    Do([&] { MoveToStart(editor_, false); });
    EXPECT_EQ(Caret(), Place(0, 0));
    EXPECT_EQ(editor_->top.row, 0);
    Select(1, 0, 2, 0);
    Do([&] { MoveToEnd(editor_, false); });
    EXPECT_EQ(Anchor(), kNoAnchor);
}

TEST_F(Navigation, APositionIsClampedToTheText) {
    Fill(u"ab\ncd");
    Do([&] { MoveCaretTo(editor_, -5, 1); });
    EXPECT_EQ(Caret(), Place(0, 1));
    Do([&] { MoveCaretTo(editor_, 99, 9); });
    EXPECT_EQ(Caret(), Place(1, 2));
    EXPECT_EQ(TheNews().repaints, 0) << "the raw move is not a command";
}

TEST_F(Navigation, MovingByCharactersStopsAtTheEnds) {
    Fill(u"ab\n\ncd");
    Do([&] { EXPECT_TRUE(MoveCaretBy(editor_, 4)); });
    EXPECT_EQ(Caret(), Place(2, 0));
    Do([&] { EXPECT_TRUE(MoveCaretBy(editor_, -2)); });
    EXPECT_EQ(Caret(), Place(0, 2));
    Do([&] { EXPECT_TRUE(MoveCaretBy(editor_, 1000)); });
    EXPECT_EQ(Caret(), Place(2, 2));
    Do([&] { EXPECT_FALSE(MoveCaretBy(editor_, 1)); });
    Do([&] { EXPECT_TRUE(MoveCaretBy(editor_, -1000)); });
    EXPECT_EQ(Caret(), Place(0, 0));
    Do([&] { EXPECT_FALSE(MoveCaretBy(editor_, -1)); });
}

// ---- words ----

TEST_F(Navigation, WordMovesCrossLineEndsAsOneCharacter) {
    Fill(u"foo\nbar");
    At(0, 3);
    Do([&] { MoveWordRight(editor_, false); });
    EXPECT_EQ(Caret(), Place(1, 0));
    Do([&] { MoveWordRight(editor_, false); });
    EXPECT_EQ(Caret(), Place(1, 3));
    Do([&] { MoveWordLeft(editor_, false); });
    EXPECT_EQ(Caret(), Place(1, 0));
    Do([&] { MoveWordLeft(editor_, false); });
    EXPECT_EQ(Caret(), Place(0, 3));
}

// ---- fingers ----

TEST_F(Navigation, ATapPutsTheCaretUnderThePoint) {
    Fill(u"abcdef\nab");
    Do([&] { TapAt(editor_, 3 * kUnit + 7, kRow - 1); });
    EXPECT_EQ(Caret(), Place(0, 3));
    Do([&] { TapAt(editor_, 100, kRow); });
    EXPECT_EQ(Caret(), Place(1, 2));
    Do([&] { TapAt(editor_, -3, -3); });
    EXPECT_EQ(Caret(), Place(0, 0));
    Do([&] { TapAt(editor_, 10, 1000); });
    EXPECT_EQ(Caret(), Place(1, 1));
    EXPECT_EQ(TheNews().repaints, 4);
    EXPECT_EQ(Anchor(), kNoAnchor);
}

TEST_F(Navigation, ATapCountsTheScrollOffsets) {
    Fill(std::u16string(50, u'x') + u"\na\nb\nc\nd\ne\nf\n" + std::u16string(50, u'x'));
    Do([&] { MoveToEnd(editor_, false); });
    const int32_t x = editor_->scrollX;
    ASSERT_EQ(editor_->top.row, 3);
    ASSERT_GT(x, 0);
    Do([&] { TapAt(editor_, 40, 4 * kRow + 3); });
    EXPECT_EQ(Caret(), Place(7, (x + 40) / kUnit));
}

TEST_F(Navigation, ATapOnTheCaretIsRepaintedOnlyWhenASelectionGoes) {
    Fill(u"abcdef");
    Do([&] { TapAt(editor_, 0, 0); });
    EXPECT_EQ(TheNews().repaints, 0);
    Select(0, 3, 0, 0);
    Do([&] { TapAt(editor_, 0, 0); });
    EXPECT_EQ(Anchor(), kNoAnchor);
    EXPECT_EQ(TheNews().repaints, 1);
    EXPECT_EQ(TheNews().selections, 1);
}

TEST_F(Navigation, ATapExtendsInMarkMode) {
    Fill(u"abcdef");
    At(0, 1);
    Do([&] { MarkStart(editor_); });
    Do([&] { TapAt(editor_, 4 * kUnit, 0); });
    EXPECT_EQ(Anchor(), Place(0, 1));
    EXPECT_EQ(Caret(), Place(0, 4));
}

TEST_F(Navigation, ADragSelectsFromTheTap) {
    Fill(u"abcdef\nghijkl");
    Do([&] { TapAt(editor_, 2 * kUnit, 8); });
    Do([&] { DragTo(editor_, 4 * kUnit, kRow + 8); });
    EXPECT_EQ(Anchor(), Place(0, 2));
    EXPECT_EQ(Caret(), Place(1, 4));
    EXPECT_EQ(TheNews().selections, 1);
    Forget();
    Do([&] { DragTo(editor_, 4 * kUnit + 3, kRow + 9); });
    EXPECT_EQ(TheNews().repaints, 0) << "still over the same column";
    Do([&] { DragTo(editor_, 2 * kUnit, 8); });
    EXPECT_FALSE(HasSelection(editor_));
    EXPECT_EQ(TheNews().selections, 1);
}

TEST_F(Navigation, ADragStartsTheTimerWithinFivePixelsOfAnEdgeOrOutside) {
    FillLines(50);
    const Place inside[] = {{5, 40}, {195, 40}, {100, 5}, {100, 75}, {100, 40}};
    for (const Place& point : inside) {
        Do([&] { DragTo(editor_, point.first, point.second); });
        EXPECT_TRUE(window_.timers.empty()) << point.first << ", " << point.second;
    }
    const Place outside[] = {{4, 40},  {196, 40}, {100, 4},  {100, 76},
                             {-1, 40}, {900, 40}, {100, -9}, {100, 99}};
    for (const Place& point : outside) {
        Do([&] { DragTo(editor_, point.first, point.second); });
        EXPECT_EQ(window_.timers, (std::map<uint32_t, uint32_t>{{kDragTimer, 5}}));
        EXPECT_EQ(TheWindowState().dragTimerOn, 1);
        StopDragTimer();
        EXPECT_TRUE(window_.timers.empty());
    }
}

TEST_F(Navigation, ADragStepScrollsTwoRowsAndSelectsToThePoint) {
    FillLines(50);
    At(2, 0);
    Do([&] { DragTo(editor_, 100, 78); });
    ASSERT_EQ(Caret(), Place(4, 1));
    Do([&] { DragStep(editor_, 100, 78); });
    EXPECT_EQ(editor_->top.row, 2);
    EXPECT_EQ(Caret(), Place(6, 1));
    EXPECT_EQ(Anchor(), Place(2, 0));
    Do([&] { DragStep(editor_, 100, 2); });
    EXPECT_EQ(editor_->top.row, 0);
    EXPECT_EQ(Caret(), Place(0, 1));
    EXPECT_EQ(TheWindowState().dragTimerOn, 1);
}

TEST_F(Navigation, ADragStepScrollsTwentyPixelsSideways) {
    Fill(std::u16string(100, u'x'));
    Do([&] { DragTo(editor_, 197, 40); });
    const int32_t before = editor_->scrollX;
    Do([&] { DragStep(editor_, 197, 40); });
    EXPECT_EQ(editor_->scrollX, before + 20);
    EXPECT_EQ(editor_->caretColumn, (before + 20 + 197) / kUnit);
    Do([&] { DragStep(editor_, 2, 40); });
    EXPECT_EQ(editor_->scrollX, before);
}

TEST_F(Navigation, ADragStepIsPaintedOnce) {
    Fill(std::u16string(100, u'x') + std::u16string(50, u'\n'));
    Do([&] { DragTo(editor_, 197, 78); });
    Forget();
    Do([&] { DragStep(editor_, 197, 78); });
    EXPECT_EQ(TheNews().repaints, 1);
    EXPECT_EQ(editor_->flags & (kFlagPaintDeferred | kFlagRepaintPending), 0u);
}

TEST_F(Navigation, ADragStepAwayFromTheEdgesStopsTheTimer) {
    FillLines(50);
    Do([&] { DragTo(editor_, 100, 78); });
    ASSERT_EQ(TheWindowState().dragTimerOn, 1);
    const int32_t row = editor_->top.row;
    Do([&] { DragStep(editor_, 100, 40); });
    EXPECT_EQ(TheWindowState().dragTimerOn, 0);
    EXPECT_TRUE(window_.timers.empty());
    EXPECT_EQ(editor_->top.row, row);
}

TEST_F(Navigation, TheDragTimerIsSetOnceAndStoppedOnce) {
    StopDragTimer();
    EXPECT_EQ(TheWindowState().dragTimerOn, 0);
    StartDragTimer();
    window_.timers.clear();
    StartDragTimer();
    EXPECT_TRUE(window_.timers.empty()) << "it runs already";
    StopDragTimer();
    window_.timers[kDragTimer] = 1;
    StopDragTimer();
    EXPECT_EQ(window_.timers.size(), 1u);
}

// ---- commands ----

TEST_F(Navigation, SelectAllRunsBackwardsFromTheEnd) {
    Wrap(true);
    Fill(u"ab\n" + std::u16string(60, u'x'));
    At(1, 60);
    editor_->markMode = 1;
    Do([&] { SelectAll(editor_); });
    EXPECT_EQ(Anchor(), Place(1, 60));
    EXPECT_EQ(editor_->anchor.row, 3);
    EXPECT_EQ(Caret(), Place(0, 0));
    EXPECT_EQ(editor_->caret.row, 0);
    EXPECT_EQ(editor_->caretX, 0);
    EXPECT_EQ(editor_->markMode, 0);
    EXPECT_EQ(TheNews().repaints, 1);
    EXPECT_EQ(TheNews().selections, 1);
}

TEST_F(Navigation, SelectAllLeavesTheViewAndMovesTheCaretOutOfIt) {
    FillLines(50);
    At(49, 0);
    ASSERT_EQ(editor_->scrollY, 45 * kRow);
    Do([&] { SelectAll(editor_); });
    EXPECT_EQ(editor_->top.row, 45);
    EXPECT_EQ(HostCaret().x, 0);
    EXPECT_EQ(HostCaret().y, -45 * kRow);
}

TEST_F(Navigation, SelectAllOfAnEmptyTextSelectsNothing) {
    Do([&] { SelectAll(editor_); });
    EXPECT_FALSE(HasSelection(editor_));
    EXPECT_EQ(TheNews().selections, 0);
}

TEST_F(Navigation, MarkModeExtendsWithEveryMoveUntilItEnds) {
    Fill(u"abcdef");
    At(0, 2);
    Do([&] { MarkStart(editor_); });
    EXPECT_EQ(Anchor(), Place(0, 2));
    EXPECT_EQ(TheNews().repaints, 0) << "there was no selection to clear";
    Do([&] { MoveRight(editor_, false); });
    Do([&] { MoveRight(editor_, false); });
    EXPECT_EQ(Anchor(), Place(0, 2));
    Do([&] { MarkEnd(editor_); });
    EXPECT_EQ(Anchor(), Place(0, 2)) << "the selection stays";
    EXPECT_TRUE(HasSelection(editor_));
    Do([&] { MoveRight(editor_, false); });
    EXPECT_EQ(Anchor(), kNoAnchor);
}

TEST_F(Navigation, MarkStartDropsAnEarlierSelection) {
    Fill(u"abcdef");
    Select(0, 1, 0, 3);
    Do([&] { MarkStart(editor_); });
    EXPECT_EQ(Anchor(), Place(0, 3));
    EXPECT_EQ(TheNews().repaints, 1);
    EXPECT_EQ(TheNews().selections, 1);
}

TEST_F(Navigation, BookmarksLeadBackToTheirLine) {
    FillLines(30);
    for (uint32_t number = 0; number < kBookmarks; ++number) {
        At(number * 3, 1);
        Do([&] { SetBookmark(editor_, number); });
        EXPECT_EQ(editor_->bookmarks[number], static_cast<int32_t>(number) * 3 + 1);
    }
    Select(1, 0, 2, 0);
    Do([&] { GoToBookmark(editor_, 9); });
    EXPECT_EQ(Caret(), Place(27, 0));
    EXPECT_EQ(Anchor(), kNoAnchor);
    EXPECT_EQ(TheNews().repaints, 1);
    EXPECT_EQ(TheNews().selections, 1);
    EXPECT_GE(editor_->bottomRow, 27);
}

TEST_F(Navigation, ABookmarkThatWasNeverSetIsTheFirstLine) {
    FillLines(30);
    At(20, 1);
    Do([&] { GoToBookmark(editor_, 4); });
    EXPECT_EQ(Caret(), Place(0, 0));
    Do([&] { SetBookmark(editor_, kBookmarks); });
    At(20, 1);
    Do([&] { GoToBookmark(editor_, kBookmarks); });
    EXPECT_EQ(Caret(), Place(20, 1));
}

TEST_F(Navigation, GoToLineClampsAndClearsTheSelection) {
    FillLines(30);
    Select(1, 0, 2, 0);
    Do([&] { GoToLine(editor_, 20); });
    EXPECT_EQ(Caret(), Place(20, 0));
    EXPECT_EQ(Anchor(), kNoAnchor);
    EXPECT_EQ(TheNews().repaints, 1);
    EXPECT_EQ(TheNews().selections, 1);
    Do([&] { GoToLine(editor_, UINT32_MAX); });
    EXPECT_EQ(Caret(), Place(29, 0));
}

}  // namespace
}  // namespace nira
