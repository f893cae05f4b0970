// Thousands of random keys, fingers and commands on one document; all invariants are looked at behind each.
#include <random>

#include "engine/drag_timer.h"
#include "host/view_fixture.h"
#include "view/undo_apply.h"

namespace nira {
namespace {

class RandomKeys : public ViewTest {
  protected:
    // A fixed seed, so that a failure comes again.
    uint32_t Pick(uint32_t choices) { return static_cast<uint32_t>(random_() % choices); }

    void Edit() {
        static const std::u16string units = u"ab,;. \t\t\u4E2D\u0301";
        static const std::u16string texts[] = {u"x\r\n\r\n\ty", u"\r\n",
                                               u"long piece of text that wraps twice", u"  two\r\nlines"};
        const std::u16string& text = texts[Pick(4)];
        switch (Pick(8)) {
            case 0:
                return NewLine(editor_);
            case 1:
                return DeleteBackward(editor_);
            case 2:
                return DeleteForward(editor_);
            case 3:
                return InsertAtCaret(editor_, text.data(), static_cast<uint32_t>(text.size()));
            default:
                return TypeChar(editor_, units[Pick(static_cast<uint32_t>(units.size()))]);
        }
    }
    void Move() {
        static constexpr void (*kMoves[])(Editor*, bool) = {
            MoveLeft,   MoveRight,    MoveWordLeft, MoveWordRight, MoveRowUp, MoveRowDown,
            MovePageUp, MovePageDown, MoveHome,     MoveEnd,       MoveLeft,  MoveRowUp};
        const Place before = Caret();
        kMoves[Pick(12)](editor_, Pick(3) == 0);
        if (Caret() != before) ExpectCaretInWindow();
    }
    void Finger() {
        const int32_t x = static_cast<int32_t>(Pick(260)) - 30;
        const int32_t y = static_cast<int32_t>(Pick(140)) - 30;
        if (Pick(2) == 0) return TapAt(editor_, x, y);
        DragTo(editor_, x, y);
        for (uint32_t ticks = Pick(4); ticks > 0; --ticks) DragStep(editor_, x, y);
        StopDragTimer();
    }
    void Command() {
        constexpr int32_t kCodes[] = {0, 1, 2, 3, 6, 7, 100, 200};
        switch (Pick(12)) {
            case 0:
                Resize(static_cast<int32_t>(Pick(300)), static_cast<int32_t>(Pick(120)));
                return ViewResized(editor_);
            case 1:
                return ToggleWrap(editor_);
            case 2:
                return MarkStart(editor_);
            case 3:
                return MarkEnd(editor_);
            case 4:
                return Pick(8) == 0 ? SelectAll(editor_) : MarkEnd(editor_);
            case 5:
                return SetBookmark(editor_, Pick(10));
            case 6:
                return GoToBookmark(editor_, Pick(10));
            case 7:
                return GoToLine(editor_, Pick(40));
            case 8:
                TheOptions().keepIndent ^= 1;
                TheOptions().tabSize = Pick(9);
                return ReapplyOptions(editor_);
            default:
                ScrollHorizontal(editor_, kCodes[Pick(8)]);
                return ScrollVertical(editor_, kCodes[Pick(8)]);
        }
    }
    void Step() {
        const uint32_t kind = Pick(16);
        if (kind < 6) return Edit();
        if (kind < 11) return Move();
        if (kind < 12) return Finger();
        if (kind < 14) return UndoApply(editor_, Pick(3) != 0, Pick(2) == 0);
        Command();
    }

    void ExpectCaretInWindow() const {
        if (window_.client.height < kRow) return;
        EXPECT_GE(editor_->caretY, editor_->scrollY);
        EXPECT_LE(editor_->caretY + kRow, editor_->scrollY + window_.client.height);
    }
    // What painting relies on besides: the rows of the view and of the anchor.
    void ExpectRows() const {
        const RowPos top = EditorRowPosition(editor_, editor_->scrollY / kRow);
        EXPECT_EQ(editor_->top.line, top.line);
        EXPECT_EQ(editor_->top.subRow, top.subRow);
        EXPECT_EQ(editor_->bottomRow,
                  std::min((editor_->scrollY + window_.client.height) / kRow, EditorRows(editor_) - 1));
        EXPECT_GE(editor_->scrollX, 0);
        if (editor_->anchorColumn == kNoSelection) return;
        const RowPos anchor = EditorPositionOf(editor_, static_cast<uint32_t>(editor_->anchor.line),
                                               static_cast<uint32_t>(editor_->anchorColumn));
        EXPECT_EQ(editor_->anchor.row, anchor.row);
    }
    void Run(int steps) {
        for (int i = 0; i < steps && !HasFailure(); ++i) {
            Do([&] { Step(); });
            ExpectRows();
        }
    }

    std::mt19937 random_{7};
};

TEST_F(RandomKeys, KeepEveryInvariant) {
    Fill(u"one\n\ttwo, three\n\nfour");
    Run(40000);
}

TEST_F(RandomKeys, AreTakenBackAndRepeatedWhole) {
    TheOptions().undoSize = 0x7FFFFFFF;
    const std::u16string first = u"one\n\ttwo, three\n\nfour";
    Fill(first);
    Run(4000);
    while (CanRedo(editor_->undo)) UndoApply(editor_, false, true);
    const std::u16string last = Text();
    ASSERT_GT(editor_->undo->count, 100);
    while (CanUndo(editor_->undo)) Do([&] { UndoApply(editor_, true, Pick(4) == 0); });
    EXPECT_EQ(Text(), first);
    EXPECT_EQ(editor_->modified, 0);
    while (CanRedo(editor_->undo)) Do([&] { UndoApply(editor_, false, Pick(4) == 0); });
    EXPECT_EQ(Text(), last);
    EXPECT_EQ(editor_->modified, 1);
}

}  // namespace
}  // namespace nira
