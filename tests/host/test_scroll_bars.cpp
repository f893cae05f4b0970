#include "engine/scroll_bars.h"

#include "host/view_fixture.h"

namespace nira {
namespace {

using ScrollBars = ViewTest;

TEST_F(ScrollBars, CountPixelsSidewaysUpToTheWidestLineAndTheCaret) {
    Fill(std::u16string(100, u'x'));
    Do([&] { UpdateScrollBars(editor_); });
    EXPECT_EQ(window_.horizontal.minimum, 0);
    EXPECT_EQ(window_.horizontal.maximum, 801);
}

TEST_F(ScrollBars, CountTheWindowWhenTheTextIsNarrower) {
    Fill(u"x");
    Do([&] { UpdateScrollBars(editor_); });
    EXPECT_EQ(window_.horizontal.maximum, 199);
}

TEST_F(ScrollBars, EndWhereRowsEnd) {
    Fill(std::u16string(625, u'x'));
    Do([&] { UpdateScrollBars(editor_); });
    EXPECT_EQ(window_.horizontal.maximum, 2999) << "a row of an unwrapped document is 3000 pixels at most";
    Do([&] { ToggleWrap(editor_); });
    EXPECT_EQ(window_.horizontal.maximum, 198) << "a wrapped one is a pixel less than the window";
}

TEST_F(ScrollBars, CountDisplayRows) {
    Wrap(true);
    Fill(std::u16string(60, u'x') + u"\na\nb\nc\nd");
    Do([&] { UpdateScrollBars(editor_); });
    EXPECT_EQ(window_.vertical.minimum, 0);
    EXPECT_EQ(window_.vertical.maximum, 6);
}

TEST_F(ScrollBars, CountAtLeastTheRowsOfTheWindow) {
    Fill(u"a\nb");
    Do([&] { UpdateScrollBars(editor_); });
    EXPECT_EQ(window_.vertical.maximum, 4);
    Resize(200, 95);
    Do([&] { UpdateScrollBars(editor_); });
    EXPECT_EQ(window_.vertical.maximum, 4) << "a row that is cut off does not count";
}

TEST_F(ScrollBars, ShowWhereTheViewIs) {
    Fill(std::u16string(100, u'x') + std::u16string(40, u'\n'));
    editor_->scrollX = 123;
    editor_->scrollY = 7 * kRow;
    ClampVertical(editor_);
    Do([&] { UpdateScrollBars(editor_); });
    EXPECT_EQ(window_.horizontal.position, 123);
    EXPECT_EQ(window_.vertical.position, 7);
}

TEST_F(ScrollBars, ScrollATextThatFitsBackToItsStart) {
    Fill(std::u16string(24, u'x'));
    editor_->scrollX = 1;
    Do([&] { UpdateScrollBars(editor_); });
    EXPECT_EQ(editor_->scrollX, 0) << "192 and the caret's two pixels are less than 200";
    Fill(u"x");
    ASSERT_EQ(editor_->widestLine, 200);
    editor_->scrollX = 1;
    Do([&] { UpdateScrollBars(editor_); });
    EXPECT_EQ(editor_->scrollX, 1);
    Resize(202, 80);
    Do([&] { UpdateScrollBars(editor_); });
    EXPECT_EQ(editor_->scrollX, 1) << "exactly as wide";
    Resize(203, 80);
    Do([&] { UpdateScrollBars(editor_); });
    EXPECT_EQ(editor_->scrollX, 0);
}

TEST_F(ScrollBars, BelongToTheDocumentThatIsShown) {
    Editor* other = EditorCreate();
    const uint32_t changes = window_.vertical.changes;
    UpdateScrollBars(other);
    EXPECT_EQ(window_.vertical.changes, changes);
    EditorDestroy(other);
}

TEST_F(ScrollBars, TakePositionsAndPagesByThemselves) {
    SetScrollRanges(1, 2, 30, 40);
    EXPECT_EQ(window_.horizontal.position, 1);
    EXPECT_EQ(window_.vertical.position, 2);
    EXPECT_EQ(window_.horizontal.maximum, 30);
    EXPECT_EQ(window_.vertical.maximum, 40);
    SetScrollPositions(5, 6);
    EXPECT_EQ(window_.horizontal.position, 5);
    EXPECT_EQ(window_.vertical.position, 6);
    EXPECT_EQ(window_.horizontal.maximum, 30);
    SetVerticalPage(7);
    SetHorizontalPage(8);
    EXPECT_EQ(window_.vertical.page, 7);
    EXPECT_EQ(window_.horizontal.page, 8);
}

}  // namespace
}  // namespace nira
