#include "engine/undo_journal.h"

#include <algorithm>
#include <string_view>

#include "host/editor_fixture.h"

namespace nira {
namespace {

class UndoJournalTest : public EditorTest {
  protected:
    UndoJournalTest() : heap_(MemHeapCreate(1000)), journal_(UndoCreate(heap_)) {}
    ~UndoJournalTest() override { MemHeapDestroy(heap_); }

    void AddText(bool inserted, std::u16string_view text) {
        auto* block = MemAllocArray<char16_t>(heap_, text.size());
        std::copy(text.begin(), text.end(), block);
        UndoAddText(journal_, inserted, 0, 0, 0, block, static_cast<uint32_t>(text.size()));
    }
    void AddChars(int count) {
        for (int i = 0; i < count; ++i) {
            UndoAddChar(journal_, true, 0, 0, static_cast<uint32_t>(i), static_cast<char16_t>(u'a' + i % 26));
        }
    }
    void AddIndent(uint32_t bytes) {
        UndoAddIndent(journal_, 0, 0, static_cast<uint8_t*>(MemAlloc(heap_, bytes)), bytes);
    }
    void Step(bool undo) { UndoStep(journal_, undo, UndoPeek(journal_, undo)); }
    const UndoEntry& Entry(int32_t index) const { return journal_->entries[index]; }
    std::u16string Text(int32_t index) const { return std::u16string(Entry(index).text, Entry(index).size); }

    HeapHandle heap_;
    UndoJournal* journal_;
};

TEST_F(UndoJournalTest, BeginsEmpty) {
    EXPECT_EQ(journal_->count, 0);
    EXPECT_EQ(journal_->position, 0);
    EXPECT_EQ(journal_->bytes, 0);
    EXPECT_EQ(journal_->heap, heap_);
    EXPECT_FALSE(CanUndo(journal_));
    EXPECT_FALSE(CanRedo(journal_));
    EXPECT_EQ(UndoPeek(journal_, true), nullptr);
    EXPECT_EQ(UndoPeek(journal_, false), nullptr);
}

TEST_F(UndoJournalTest, KeepsCharacters) {
    UndoAddChar(journal_, true, 0, 3, 4, u'x');
    UndoAddChar(journal_, false, 1, 5, 6, u'y');
    EXPECT_EQ(journal_->count, 2);
    EXPECT_EQ(journal_->position, 2);
    EXPECT_EQ(journal_->bytes, 40);
    EXPECT_EQ(Entry(0).kind, static_cast<uint32_t>(UndoKind::kDeleteChar));
    EXPECT_EQ(Entry(0).line, 3u);
    EXPECT_EQ(Entry(0).column, 4u);
    EXPECT_EQ(Entry(0).character, u'x');
    EXPECT_EQ(Entry(1).kind, static_cast<uint32_t>(UndoKind::kInsertChar) | kUndoModifiedBit);
    EXPECT_EQ(Entry(1).character, u'y');
}

TEST_F(UndoJournalTest, KeepsTextsAndIndentation) {
    AddText(true, u"hello");
    AddText(false, u"bye");
    AddIndent(7);
    EXPECT_EQ(KindOf(Entry(0)), UndoKind::kDeleteText);
    EXPECT_EQ(KindOf(Entry(1)), UndoKind::kInsertText);
    EXPECT_EQ(KindOf(Entry(2)), UndoKind::kRestoreIndent);
    EXPECT_EQ(Text(0), u"hello");
    EXPECT_EQ(Entry(2).size, 7u);
    EXPECT_EQ(Entry(2).column, 0u);
    EXPECT_EQ(journal_->bytes, 3 * 20 + 2 * 8 + 7);
}

TEST_F(UndoJournalTest, TakesOnlyTheLowestBitOfTheModifiedFlag) {
    UndoAddChar(journal_, true, 2, 0, 0, u'x');
    UndoAddChar(journal_, true, 3, 0, 0, u'x');
    EXPECT_EQ(Entry(0).kind & kUndoModifiedBit, 0u);
    EXPECT_EQ(Entry(1).kind & kUndoModifiedBit, kUndoModifiedBit);
}

TEST_F(UndoJournalTest, StepsMoveThePositionAndFlipTheKind) {
    UndoAddChar(journal_, true, 1, 0, 0, u'x');
    AddText(true, u"text");
    AddIndent(3);
    UndoEntry* last = UndoPeek(journal_, true);
    EXPECT_EQ(last, &Entry(2));
    Step(true);
    EXPECT_EQ(journal_->position, 2);
    EXPECT_EQ(KindOf(Entry(2)), UndoKind::kRepeatIndent);
    Step(true);
    EXPECT_EQ(KindOf(Entry(1)), UndoKind::kInsertText);
    EXPECT_EQ(UndoPeek(journal_, false), &Entry(1));
    Step(true);
    EXPECT_EQ(Entry(0).kind, static_cast<uint32_t>(UndoKind::kInsertChar) | kUndoModifiedBit);
    EXPECT_FALSE(CanUndo(journal_));
    EXPECT_TRUE(CanRedo(journal_));
    EXPECT_EQ(UndoPeek(journal_, true), nullptr);
    Step(false);
    EXPECT_EQ(journal_->position, 1);
    EXPECT_EQ(KindOf(Entry(0)), UndoKind::kDeleteChar);
    EXPECT_TRUE(CanUndo(journal_));
    EXPECT_EQ(journal_->count, 3);
    Step(false);
    Step(false);
    EXPECT_EQ(KindOf(Entry(2)), UndoKind::kRestoreIndent);
    EXPECT_FALSE(CanRedo(journal_));
    EXPECT_EQ(UndoPeek(journal_, false), nullptr);
}

TEST_F(UndoJournalTest, ANewEntryDropsWhatCouldBeRedone) {
    const size_t blocks = HostHeapLiveBlocks(heap_);
    AddChars(1);
    AddText(true, u"one");
    AddText(false, u"three");
    Step(true);
    Step(true);
    UndoAddChar(journal_, false, 0, 9, 9, u'z');
    EXPECT_FALSE(CanRedo(journal_));
    EXPECT_EQ(journal_->count, 2);
    EXPECT_EQ(journal_->position, 2);
    EXPECT_EQ(journal_->bytes, 40);
    EXPECT_EQ(Entry(1).character, u'z');
    EXPECT_EQ(HostHeapLiveBlocks(heap_), blocks + 1) << "the texts are freed; the array is left";
}

TEST_F(UndoJournalTest, DroppedIndentationStaysInTheAccountOnceUndone) {
    AddIndent(30);
    Step(true);
    AddChars(1);
    EXPECT_EQ(journal_->count, 1);
    EXPECT_EQ(journal_->bytes, 20 + 30);
}

TEST_F(UndoJournalTest, DroppedIndentationLeavesTheAccountOtherwise) {
    AddIndent(30);
    Step(true);
    Step(false);
    AddIndent(10);
    Step(true);
    Step(true);
    Step(false);
    AddChars(1);
    EXPECT_EQ(journal_->count, 2);
    EXPECT_EQ(journal_->bytes, 40 + 30 + 10) << "the first is kept, the second was undone";
}

TEST_F(UndoJournalTest, ForgetsTheOldestEntries) {
    TheOptions().undoSize = 1;
    AddChars(51);
    EXPECT_EQ(journal_->count, 51);
    EXPECT_EQ(journal_->bytes, 1020);
    AddChars(1);
    EXPECT_EQ(journal_->count, 51);
    EXPECT_EQ(journal_->position, 51);
    EXPECT_EQ(journal_->bytes, 1020);
    EXPECT_EQ(Entry(0).column, 1u) << "the first is gone";
    EXPECT_EQ(Entry(50).column, 0u);
}

TEST_F(UndoJournalTest, FillsTheLimitExactly) {
    TheOptions().undoSize = 1;
    AddChars(1);
    AddText(true, std::u16string(492, u'x'));
    EXPECT_EQ(journal_->bytes, 1024);
    EXPECT_EQ(journal_->count, 2);
    AddChars(1);
    EXPECT_EQ(journal_->count, 2) << "one old entry makes the room";
    EXPECT_EQ(journal_->bytes, 1024);
    AddChars(1);
    EXPECT_EQ(journal_->count, 2) << "the text goes";
    EXPECT_EQ(journal_->bytes, 40);
}

TEST_F(UndoJournalTest, FreesForgottenTexts) {
    TheOptions().undoSize = 1;
    AddText(true, std::u16string(300, u'x'));
    const size_t blocks = HostHeapLiveBlocks(heap_);
    AddText(true, std::u16string(300, u'y'));
    EXPECT_EQ(journal_->count, 1);
    EXPECT_EQ(journal_->bytes, 620);
    EXPECT_EQ(HostHeapLiveBlocks(heap_), blocks);
    AddIndent(100);
    AddIndent(500);
    AddIndent(1);
    EXPECT_EQ(journal_->bytes, 20 + 100 + 20 + 500 + 20 + 1);
}

TEST_F(UndoJournalTest, ShortensATextBeyondTheLimit) {
    TheOptions().undoSize = 1;
    AddChars(5);
    std::u16string text(600, u'x');
    text[501] = u'L';
    text[502] = u'N';
    AddText(true, text);
    EXPECT_EQ(journal_->count, 1);
    EXPECT_EQ(Entry(0).size, 502u);
    EXPECT_EQ(journal_->bytes, 1024);
    EXPECT_EQ(Text(0), text.substr(0, 502));
    EXPECT_EQ(MemSize(heap_, Entry(0).text), 502 * sizeof(char16_t));
}

TEST_F(UndoJournalTest, ALimitOfZeroKeepsOneEntryWithoutText) {
    TheOptions().undoSize = 0;
    AddText(true, u"text");
    EXPECT_EQ(journal_->count, 1);
    EXPECT_EQ(Entry(0).size, 0u);
    EXPECT_EQ(Entry(0).text, nullptr);
    EXPECT_EQ(journal_->bytes, 20);
    AddChars(3);
    EXPECT_EQ(journal_->count, 1);
    EXPECT_EQ(journal_->bytes, 20);
}

TEST_F(UndoJournalTest, AHugeLimitSaturates) {
    TheOptions().undoSize = 0xFFFFFFFF;
    EXPECT_EQ(OptionsUndoLimit(), 0x7FFFFFFF);
    AddText(true, std::u16string(100000, u'x'));
    AddChars(1000);
    EXPECT_EQ(journal_->count, 1001);
    EXPECT_EQ(Entry(0).size, 100000u);
}

TEST_F(UndoJournalTest, ALongFullJournalKeepsItsOrder) {
    TheOptions().undoSize = 1;
    for (uint32_t i = 0; i < 2000; ++i) {
        UndoAddChar(journal_, true, 0, i, 0, u'x');
        ASSERT_EQ(journal_->count, static_cast<int32_t>(i < 51 ? i + 1 : 51));
        for (int32_t k = 0; k < journal_->count; ++k) {
            ASSERT_EQ(Entry(k).line, i + 1 - static_cast<uint32_t>(journal_->count - k));
        }
    }
    EXPECT_LT(journal_->room, 200) << "the room in front is used again";
}

TEST_F(UndoJournalTest, MarksEveryEntryModified) {
    AddChars(2);
    AddText(false, u"x");
    Step(true);
    UndoMarkAllModified(journal_);
    for (int32_t i = 0; i < 3; ++i) EXPECT_EQ(Entry(i).kind & kUndoModifiedBit, kUndoModifiedBit);
    EXPECT_EQ(KindOf(Entry(2)), UndoKind::kDeleteText);
}

TEST_F(UndoJournalTest, OfADocumentKeepsWhatFitsOfALargeInsertion) {
    TheOptions().undoSize = 1;
    Editor* editor = Create();
    Insert(editor, 0, 0, u"a");
    Insert(editor, 0, 1, std::u16string(600, u'x'));
    EXPECT_EQ(editor->undo->count, 1);
    EXPECT_EQ(20 * editor->undo->count + 2 * static_cast<int32_t>(editor->undo->entries[0].size), 1024);
    Delete(editor, 0, 0, 0, 601);
    EXPECT_EQ(editor->undo->entries[0].size, 502u);
    EXPECT_EQ(editor->undo->entries[0].text[0], u'a');
}

}  // namespace
}  // namespace nira
