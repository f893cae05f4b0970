// Random keys, taps, commands and changed settings, on a document and on the plainest text, which must stay
// alike; and after each thousand of them everything undone and redone.
//
// NIRA_RANDOM_STEPS sets how many for a longer run, NIRA_RANDOM_SEED where to begin.
#include <cstdio>
#include <cstdlib>
#include <random>

#include "host/naive_editor.h"
#include "host/sanitizers.h"
#include "host/view_fixture.h"
#include "platform/host/clipboard_state.h"
#include "view/clipboard_editing.h"
#include "view/indentation.h"
#include "view/undo_apply.h"

namespace nira {
namespace {

constexpr uint32_t kSteps = kSanitized ? 20000 : 300000;

constexpr uint32_t kRound = 1000;
constexpr size_t kMostUnits = 1500;
constexpr char16_t kAlphabet[] = u"abcdeABC .,;\t\t  \u4E00\u00C4";
constexpr const char16_t* kBreakForms[] = {u"\r\n", u"\n", u"\r", u"\n\n", u"\r\r\n"};
constexpr const char16_t* kLineEndForms[] = {u"\n", u"\r", u"\r\n"};

uint32_t FromEnvironment(const char* name, uint32_t usual) {
    const char* value = std::getenv(name);
    return value != nullptr ? static_cast<uint32_t>(std::strtoul(value, nullptr, 10)) : usual;
}

std::u16string Joined(const NaiveLines& lines) {
    std::u16string text;
    for (const std::u16string& line : lines) text += line + u"\n";
    text.pop_back();
    return text;
}

class RandomEditing : public ViewTest {
  protected:
    RandomEditing() {
        HostClipboard() = {};
        TheOptions().wordSeparators = separators_;
        TheOptions().undoSize = 1U << 20;
        model_.separators = separators_;
        model_.breaks = [this](int64_t at) {
            const LineRecord& line = editor_->lines[at];
            const uint32_t* first = line.breaks + 1;
            return ExtraRows(line) > 0 ? std::vector<uint32_t>(first, first + ExtraRows(line))
                                       : std::vector<uint32_t>();
        };
    }
    ~RandomEditing() override {
        HostClipboard() = {};
        LineIndexSetChunkLines(kLineIndexChunkLines);
    }

    void Run(const char* name) {
        const uint32_t steps = FromEnvironment("NIRA_RANDOM_STEPS", kSteps);
        const uint32_t seed = FromEnvironment("NIRA_RANDOM_SEED", std::random_device()());
        std::printf("count: %s: %u steps, seed %u\n", name, steps, seed);
        random_.seed(seed);
        for (uint32_t i = 0; i < steps; ++i) {
            if (i % kRound == 0) StartRound();
            const char* operation = Step();
            ASSERT_EQ(Difference(), "") << operation << ", step " << i << ", seed " << seed;
            if (i % kRound == kRound - 1) {
                ASSERT_NO_FATAL_FAILURE(GoThroughJournal()) << "seed " << seed;
            }
        }
    }

  private:
    uint32_t Below(uint32_t end) { return static_cast<uint32_t>(random_() % end); }
    bool Rarely(uint32_t times) { return Below(times) == 0; }

    std::u16string AnyText() {
        const uint32_t length = Rarely(3) ? 1 : Below(Rarely(8) ? 80 : 12);
        std::u16string text = Rarely(3) ? std::u16string(Below(6), Rarely(2) ? u'\t' : u' ') : u"";
        while (text.size() < length) {
            if (Rarely(6)) {
                text += kBreakForms[Below(5)];
                text += std::u16string(Below(7), Rarely(3) ? u'\t' : u' ');
            } else {
                text += Rarely(40) ? static_cast<char16_t>(0xD800 + Below(0x800))
                                   : kAlphabet[Below(std::size(kAlphabet) - 1)];
            }
        }
        return text;
    }

    // A new document; mark mode and the settings go on as they are.
    void StartRound() {
        EditorReset(editor_);
        NaiveLines lines(1 + Below(40));
        undoShare_ = Rarely(3) ? 18 : 1 + Below(4);
        for (std::u16string& line : lines) {
            while (!Rarely(10)) line += kAlphabet[Below(std::size(kAlphabet) - 1)];
        }
        Wrap(wrapped_);
        Fill(Joined(lines));
        model_.Start(lines);
        original_ = Text();
    }

    // What of the document differs from the model, in plain words.
    std::string Difference() const {
        if (const char* fault = EditorCheck(editor_)) return fault;
        if (const char* fault = EditorCheckPositions(editor_)) return fault;
        if (Text() != Joined(model_.lines)) return "the text";
        const NaivePlace caret = {editor_->caret.line, editor_->caretColumn};
        if (caret != model_.caret) return "the caret";
        std::optional<NaivePlace> anchor;
        if (editor_->anchorColumn != kNoSelection) anchor = {editor_->anchor.line, editor_->anchorColumn};
        if (anchor != model_.anchor) return "the anchor";
        if ((editor_->markMode != 0) != model_.marking) return "mark mode";
        if ((editor_->modified != 0) != model_.modified) return "the modified flag";
        if (editor_->undo->count != static_cast<int32_t>(model_.steps.size())) return "the number of steps";
        if (editor_->undo->position != static_cast<int32_t>(model_.done)) return "the steps done";
        return {};
    }

    void GoThroughJournal() {
        while (CanRedo(editor_->undo)) UndoBoth(false, Rarely(3));
        const std::u16string last = Text();
        ASSERT_EQ(Difference(), "");
        while (CanUndo(editor_->undo)) UndoBoth(true, Rarely(3));
        ASSERT_EQ(Difference(), "") << "everything undone";
        ASSERT_EQ(Text(), original_);
        while (CanRedo(editor_->undo)) UndoBoth(false, Rarely(3));
        ASSERT_EQ(Difference(), "") << "everything redone";
        ASSERT_EQ(Text(), last);
    }

    void UndoBoth(bool undo, bool group) {
        UndoApply(editor_, undo, group);
        undo ? model_.Undo(group) : model_.Redo(group);
    }

    const char* Edit() {
        switch (Below(6)) {
            case 0:
                return NewLine(editor_), model_.NewLine(), "new line";
            case 1:
                return DeleteBackward(editor_), model_.Backspace(), "backspace";
            case 2:
                return DeleteForward(editor_), model_.Delete(), "delete";
            default: {
                const char16_t unit = Rarely(20) ? u'\0' : kAlphabet[Below(std::size(kAlphabet) - 1)];
                return TypeChar(editor_, unit), model_.Type(unit), "type";
            }
        }
    }

    const char* Block() {
        switch (Below(4)) {
            case 0:
                return IncreaseIndent(editor_), model_.Indent(4), "increase indent";
            case 1:
                return DecreaseIndent(editor_), model_.Indent(-4), "decrease indent";
            default:
                return PasteSome();
        }
    }

    const char* PasteSome() {
        if (!Rarely(3)) HostClipboard().text = AnyText();
        if (Rarely(30)) HostClipboard().text.reset();
        const bool smart = (TheOptions().pasteMode != 0) != Rarely(4);
        nira::Paste(editor_, smart);
        const std::optional<std::u16string>& text = HostClipboard().text;
        if (text) model_.Paste(text->substr(0, text->find(u'\0')), smart);
        return smart ? "smart paste" : "paste";
    }

    const char* CopyOrCut() {
        editor_->lineEnd = Below(3);
        const std::optional<std::u16string> selection = model_.Selection(kLineEndForms[editor_->lineEnd]);
        const bool cut = Rarely(3);
        if (cut) {
            CutSelection(editor_);
            model_.Cut();
        } else {
            EXPECT_EQ(CopySelection(editor_), selection.has_value());
        }
        if (selection) {
            EXPECT_TRUE(HostClipboard().text == selection) << "what was copied";
        }
        return cut ? "cut" : "copy";
    }

    const char* MarkEndAndMove() {
        nira::MarkEnd(editor_);
        model_.MarkEnd();
        return MoveByUnits(false);
    }

    const char* MoveByUnits(bool extend) {
        switch (Below(8)) {
            case 0:
                return MoveWordLeft(editor_, extend), model_.WordLeft(extend), "word left";
            case 1:
                return MoveWordRight(editor_, extend), model_.WordRight(extend), "word right";
            case 2:
                return MoveHome(editor_, extend), model_.Home(extend), "home";
            case 3:
                return MoveEnd(editor_, extend), model_.End(extend), "end";
            case 4:
            case 5:
                return MoveLeft(editor_, extend), model_.Left(extend), "left";
            default:
                return MoveRight(editor_, extend), model_.Right(extend), "right";
        }
    }

    const char* MoveByRows(bool extend) {
        const int64_t page = std::max(1, window_.client.height / kRow);
        switch (Below(8)) {
            case 0:
                return MovePageUp(editor_, extend), model_.Rows(-page, extend), "page up";
            case 1:
                return MovePageDown(editor_, extend), model_.Rows(page, extend), "page down";
            case 2:
                return MoveToStart(editor_, extend), model_.Top(extend), "start";
            case 3:
                return MoveToEnd(editor_, extend), model_.Bottom(extend), "end of the text";
            case 4:
            case 5:
                return MoveRowUp(editor_, extend), model_.Rows(-1, extend), "up";
            default:
                return MoveRowDown(editor_, extend), model_.Rows(1, extend), "down";
        }
    }

    const char* Touch() {
        const auto x = static_cast<int32_t>(Below(240)) - 20;
        const auto y = static_cast<int32_t>(Below(140)) - 30;
        const bool drag = Rarely(2);
        const int32_t scrollX = editor_->scrollX;
        const int32_t scrollY = editor_->scrollY;
        drag ? DragTo(editor_, x, y) : TapAt(editor_, x, y);
        model_.Point(x + scrollX, y + scrollY, drag);
        return drag ? "drag" : "tap";
    }

    const char* Select() {
        switch (Below(6)) {
            case 0:
                return nira::SelectAll(editor_), model_.SelectAll(), "select all";
            case 1:
                return nira::MarkStart(editor_), model_.MarkStart(), "mark start";
            case 2:
                return nira::MarkEnd(editor_), model_.MarkEnd(), "mark end";
            case 3: {
                const uint32_t line = Below(30);
                return nira::GoToLine(editor_, line), model_.GoToLine(line), "go to line";
            }
            default:
                return Touch();
        }
    }

    const char* Arrange() {
        switch (Below(5)) {
            case 0:
                wrapped_ = !wrapped_;
                return ToggleWrap(editor_), "toggle wrap";
            case 1: {
                constexpr int32_t kWidths[] = {1, 9, 33, 100, 200, 400};
                constexpr int32_t kHeights[] = {1, 16, 40, 80, 300};
                ViewTest::Resize(kWidths[Below(6)], kHeights[Below(5)]);
                return ViewResized(editor_), "resize";
            }
            case 2:
                ScrollVertical(editor_, static_cast<int32_t>(Below(8)));
                return ScrollHorizontal(editor_, static_cast<int32_t>(Below(8))), "scroll";
            case 3:
                UndoMarkAllModified(editor_->undo);
                SetModified(editor_, 0);
                return model_.Saved(), "save";
            default:
                TheOptions().keepIndent = Below(2);
                TheOptions().stopWordEnd = Below(2);
                TheOptions().pasteMode = Below(2);
                TheOptions().smartBase = Below(2);
                model_.keepIndent = TheOptions().keepIndent != 0;
                model_.stopWordEnd = TheOptions().stopWordEnd != 0;
                model_.smallestBase = TheOptions().smartBase != 0;
                return "options";
        }
    }

    const char* Step() {
        if (Joined(model_.lines).size() > kMostUnits) {
            nira::SelectAll(editor_);
            model_.SelectAll();
            return DeleteForward(editor_), model_.Delete(), "delete everything";
        }
        // Most large selections are let go, or the text would never grow.
        if (model_.anchor && std::abs(model_.anchor->line - model_.caret.line) > 3 && !Rarely(4)) {
            return MarkEndAndMove();
        }
        const uint32_t choice = Below(82 + undoShare_);
        if (choice < 30) return Edit();
        if (choice < 42) return Block();
        if (choice < 47) return CopyOrCut();
        if (choice < 60) return MoveByUnits(Rarely(3));
        if (choice < 72) return MoveByRows(Rarely(3));
        if (choice < 78) return Select();
        if (choice < 82) return Arrange();
        const bool undo = !Rarely(3);
        const bool group = Rarely(4);
        return UndoBoth(undo, group), undo ? "undo" : "redo";
    }

    std::mt19937 random_;
    NaiveEditor model_;
    std::u16string original_;
    uint32_t undoShare_ = 0;  // of a hundred steps
    bool wrapped_ = false;
    char16_t separators_[4] = u",.;";
};

TEST_F(RandomEditing, MatchesAPlainText) { Run("editing"); }

TEST_F(RandomEditing, MatchesWithSmallChunksOfLines) {
    LineIndexSetChunkLines(3);
    Run("editing, chunks of three lines");
}

}  // namespace
}  // namespace nira
