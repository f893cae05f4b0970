// The checker itself: each way a document can be wrong is found.
#include "engine/editor_check.h"

#include "host/editor_fixture.h"

namespace nira {
namespace {

class EditorCheckTest : public EditorTest {
  protected:
    EditorCheckTest() : editor_(Create(u"one\r\ntwo\r\nthree")) {
        Insert(editor_, 1, 0, std::u16string(1000, u'x'));
        Insert(editor_, 0, 0, u"a");
        editor_->caret = {0, 0, 0};
    }

    // Expects `fault` while `field` holds `value`, and nothing before and after.
    template <typename Field, typename Value>
    void ExpectFault(Field* field, Value value, const char* fault) {
        const Field before = *field;
        *field = static_cast<Field>(value);
        EXPECT_STREQ(EditorCheck(editor_), fault);
        *field = before;
        ExpectSound(editor_);
    }

    Editor* editor_;
};

TEST_F(EditorCheckTest, FindsFaultsOfALine) {
    LineRecord& line = editor_->lines[1];
    ExpectFault(&line.capacity, 990u, "a line's capacity does not follow its length");
    ExpectFault(&line.text[line.length], u'x', "a text has no terminator");
    ExpectFault(&line.width, line.width + 1, "a line's width is not what it measures");
    ExpectFault(&line.breaks[0], 0u, "a break list is empty");
    ExpectFault(&line.breaks[2], line.breaks[1], "breaks are not ascending");
    ExpectFault(&line.breaks[2], line.length, "a break lies behind the text");
    ExpectFault(&line.text, nullptr, "a line without text has a length or capacity");
    auto* small = static_cast<char16_t*>(MemAlloc(editor_->heap, 10));
    ExpectFault(&editor_->lines[0].text, small, "a text block is smaller than its capacity");
}

TEST_F(EditorCheckTest, FindsFaultsOfTheArray) {
    ExpectFault(&editor_->lineCount, 0u, "there is no line");
    ExpectFault(&editor_->lineCapacity, 2, "more lines than capacity");
    ExpectFault(&editor_->lineCapacity, 20, "fewer records are allocated than reported");
    ExpectFault(&editor_->lines[9].width, 1, "a spare record is not zero");
}

TEST_F(EditorCheckTest, FindsFaultsOfTheSums) {
    ExpectFault(&editor_->wrapRows, 1, "wrapRows is not the sum over the lines");
    ExpectFault(&editor_->widestLine, 1, "widestLine is not the largest width");
    ExpectFault(&editor_->hiddenRows, 1, "hiddenRows is not 0");
    ExpectFault(&editor_->index->chunks[0].extraRows, 1u, "a chunk's sums are wrong");
    ExpectFault(&editor_->index->chunks[0].widest, 1, "a chunk's sums are wrong");
    ExpectFault(&editor_->index->chunks[0].lines, 0u, "a chunk is empty");
    ExpectFault(&editor_->index->lineTotal, 2u, "the chunks do not cover the lines");
    ExpectFault(&editor_->index->widestStale, true, "the line index has not been refreshed");
    ExpectFault(&editor_->index->dirtyEnd, 1u, "the line index has not been refreshed");
}

TEST_F(EditorCheckTest, FindsFaultsOfBookmarksAndJournal) {
    ExpectFault(&editor_->bookmarks[9], 4, "a bookmark is outside");
    ExpectFault(&editor_->bookmarks[0], -1, "a bookmark is outside");
    ExpectFault(&editor_->undo->position, 3, "the undo position is out of range");
    ExpectFault(&editor_->undo->position, -1, "the undo position is out of range");
    ExpectFault(&editor_->undo->bytes, 2039, "the undo account is less than its entries");
}

TEST_F(EditorCheckTest, FindsPositionsOutsideTheText) {
    EXPECT_STREQ(EditorCheckPositions(editor_), nullptr);
    editor_->caretColumn = 5;
    EXPECT_STREQ(EditorCheckPositions(editor_), "the caret is outside the text");
    editor_->caretColumn = 4;
    EXPECT_STREQ(EditorCheckPositions(editor_), nullptr);
    editor_->caret.row = 1;
    EXPECT_STREQ(EditorCheckPositions(editor_), "the caret's row is wrong");
    editor_->caret.row = 0;
    editor_->caretY = 1;
    EXPECT_STREQ(EditorCheckPositions(editor_), "the caret's y is wrong");
    editor_->caretY = 0;
    editor_->scrollY = 1;
    EXPECT_STREQ(EditorCheckPositions(editor_), "the view does not start at its top row");
    editor_->scrollY = 0;
    editor_->anchor = {3, 0, 5};
    EXPECT_STREQ(EditorCheckPositions(editor_), nullptr) << "no selection";
    editor_->anchorColumn = 0;
    EXPECT_STREQ(EditorCheckPositions(editor_), "the anchor is outside the text");
}

}  // namespace
}  // namespace nira
