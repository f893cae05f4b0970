// Every operation on a document with its 1st, 2nd, ... allocation failing, once and from then on.
#include <functional>

#include "host/editor_fixture.h"

namespace nira {
namespace {

constexpr char16_t kText[] =
    u"123456789\r\nsecond line, which takes three rows of the window\r\n\r\nfour\r\n5\r\n6\r\n7\r\n8\r\n9\r\n"
    u"the tenth is wide as well";

using Operation = std::function<bool(Editor*)>;

// What an operation leaves when nothing fails.
struct Outcome {
    std::u16string text;
    int32_t rows;
    int32_t entries;
    size_t blocks;
    uint32_t failures;  // allocations that could fail
};

class AllocationFaults : public EditorTest {
  protected:
    AllocationFaults() {
        TheOptions().wordWrapDefault = 1;
        UseWidth(101);
        LineIndexSetChunkLines(1);
    }

    Outcome Clean(const Operation& operation) {
        HostShellLogReset();
        Editor* editor = Create(kText);
        FaultScope watch(FaultPoint::kAllocation, {.first = kFaultForever});
        EXPECT_TRUE(operation(editor));
        ExpectSound(editor);
        EXPECT_EQ(HostShellLog().memoryBoxes, 0u);
        return {TextOf(editor), EditorRows(editor), editor->undo->count, HostHeapLiveBlocks(editor->heap),
                watch.Calls()};
    }

    // One run with failures. What cannot be had is either refused, with the text as it was, or done without
    // the row breaks; then the operation and the layout are brought to their end.
    void RunFailing(const Operation& operation, const Outcome& clean, const FaultPlan& plan) {
        Editor* editor = Create(kText);
        const std::u16string before = TextOf(editor);
        const int32_t entries = editor->undo->count;
        HostShellLogReset();
        FaultArm(FaultPoint::kAllocation, plan);
        const bool done = operation(editor);
        EXPECT_GT(FaultHits(FaultPoint::kAllocation), 0u);
        FaultDisarm(FaultPoint::kAllocation);
        ExpectSound(editor);
        const bool refused = !done && TextOf(editor) == before;
        const bool whole = EditorRows(editor) == clean.rows;
        EXPECT_EQ(HostShellLog().memoryBoxes, done && whole ? 0u : 1u);
        if (refused) {
            EXPECT_EQ(editor->undo->count, entries);
            EXPECT_EQ(editor->modified, 0);
            EXPECT_TRUE(operation(editor)) << "with memory at hand again";
            ExpectSound(editor);
        }
        EXPECT_EQ(editor->undo->count, clean.entries);
        EXPECT_EQ(TextOf(editor), clean.text);
        EditorBreakAll(editor);
        ExpectSound(editor);
        EXPECT_EQ(EditorRows(editor), clean.rows);
        EXPECT_EQ(HostHeapLiveBlocks(editor->heap), clean.blocks) << "blocks leaked";
    }

    // Returns how many allocations were made to fail.
    uint32_t Campaign(const Operation& operation) {
        const Outcome clean = Clean(operation);
        for (uint32_t call = 1; call <= clean.failures; ++call) {
            SCOPED_TRACE("allocation " + std::to_string(call));
            RunFailing(operation, clean, {.first = call});
            RunFailing(operation, clean, {.first = call, .howMany = kFaultForever});
        }
        return clean.failures;
    }
};

Operation Inserting(uint32_t line, uint32_t column, const std::u16string& text, bool recorded) {
    return [=](Editor* editor) {
        editor->flags = recorded ? 0 : kFlagNoUndo;
        const auto units = static_cast<uint32_t>(text.size());
        return TextInsert(editor, line, column, text.data(), units) != kTextFailed;
    };
}

Operation Deleting(uint32_t line1, uint32_t column1, uint32_t line2, uint32_t column2, bool recorded) {
    return [=](Editor* editor) {
        editor->flags = recorded ? 0 : kFlagNoUndo;
        return TextDelete(editor, line1, column1, line2, column2);
    };
}

TEST_F(AllocationFaults, OfInsertingOneCharacter) {
    EXPECT_GE(Campaign(Inserting(0, 9, u"x", false)), 1u);
    EXPECT_GE(Campaign(Inserting(0, 9, u"x", true)), 2u);
    EXPECT_GE(Campaign(Inserting(2, 0, u"x", true)), 1u) << "an empty line";
}

TEST_F(AllocationFaults, OfInsertingWithoutBreaks) {
    const std::u16string wide(60, u'w');
    EXPECT_GE(Campaign(Inserting(0, 3, wide, false)), 2u);
    EXPECT_GE(Campaign(Inserting(0, 3, wide, true)), 4u);
    EXPECT_GE(Campaign(Inserting(1, 20, wide, true)), 3u) << "its rows begin anew behind the second";
    EXPECT_GE(Campaign(Inserting(2, 0, wide, true)), 3u) << "an empty line";
}

TEST_F(AllocationFaults, OfInsertingWithBreaks) {
    const std::u16string text = u"ab\r\nthis line takes two rows\rc\n\r\nthe last line takes more rows still";
    EXPECT_GE(Campaign(Inserting(0, 4, text, false)), 7u);
    EXPECT_GE(Campaign(Inserting(0, 4, text, true)), 9u);
    EXPECT_GE(Campaign(Inserting(1, 30, text, true)), 9u);
    EXPECT_GE(Campaign(Inserting(9, 25, text, true)), 8u) << "behind the last line";
    EXPECT_GE(Campaign(Inserting(5, 1, u"a\n\nb", true)), 5u) << "a swallowed LF";
}

TEST_F(AllocationFaults, OfDeletingInOneLine) {
    EXPECT_GE(Campaign(Deleting(0, 2, 0, 3, true)), 1u);
    EXPECT_GE(Campaign(Deleting(1, 0, 1, 30, false)), 1u) << "the text shrinks";
    EXPECT_GE(Campaign(Deleting(1, 0, 1, 30, true)), 3u);
}

TEST_F(AllocationFaults, OfDeletingAcrossLines) {
    EXPECT_GE(Campaign(Deleting(0, 9, 1, 0, true)), 4u) << "the joined line needs more room";
    EXPECT_GE(Campaign(Deleting(0, 1, 9, 20, true)), 2u);
    EXPECT_GE(Campaign(Deleting(0, 9, 9, 0, false)), 1u);
    EXPECT_GE(Campaign(Deleting(2, 0, 4, 0, true)), 2u);
}

TEST_F(AllocationFaults, OfDeletingByCount) {
    EXPECT_GE(Campaign([](Editor* editor) {
                  editor->flags = 0;
                  return TextDeleteCount(editor, 0, 3, 40) != kTextFailed;
              }),
              3u);
}

TEST_F(AllocationFaults, OfLayingOut) {
    const Operation rewrap = [](Editor* editor) {
        for (uint32_t i = 0; i < editor->lineCount; ++i) {
            MemFree(editor->heap, editor->lines[i].breaks);
            editor->lines[i].breaks = nullptr;
        }
        return Guarded([&] { EditorBreakAll(editor); });
    };
    EXPECT_GE(Campaign(rewrap), 2u);
    const Operation measure = [](Editor* editor) {
        for (uint32_t i = 0; i < editor->lineCount; ++i) {
            MemFree(editor->heap, editor->lines[i].breaks);
            editor->lines[i].breaks = nullptr;
        }
        return Guarded([&] { EditorMeasureAll(editor); });
    };
    EXPECT_GE(Campaign(measure), 2u);
}

TEST_F(AllocationFaults, OfLayingOutLeaveTheOtherLinesInOneRow) {
    Editor* editor = Create(kText);
    ASSERT_GT(ExtraRows(editor->lines[9]), 0u);
    UseWidth(31);
    {
        FaultScope fault(FaultPoint::kAllocation, {.first = 2});
        EXPECT_FALSE(Guarded([&] { EditorBreakAll(editor); }));
    }
    ExpectSound(editor);
    EXPECT_EQ(BreaksOf(editor, 0), (std::vector<uint32_t>{3, 6})) << "came before";
    EXPECT_EQ(editor->wrapRows, 2) << "no rows of the old width are left";
}

TEST_F(AllocationFaults, OfBreakingOneLineAreKeptInside) {
    Editor* editor = Create(kText);
    const int32_t rows = EditorRows(editor);
    const auto extra = static_cast<int32_t>(ExtraRows(editor->lines[1]));
    MemFree(editor->heap, editor->lines[1].breaks);
    editor->lines[1].breaks = nullptr;
    LineIndexTouch(editor->index, 1, 2);
    RecomputeWidest(editor);
    {
        FaultScope fault(FaultPoint::kAllocation, {.howMany = kFaultForever});
        EXPECT_EQ(LineComputeBreaks(editor, 1, nullptr), 0);
    }
    EXPECT_EQ(HostShellLog().memoryBoxes, 1u);
    ExpectSound(editor);
    EXPECT_EQ(LineComputeBreaks(editor, 1, nullptr), extra);
    EXPECT_EQ(EditorRows(editor), rows);
    ExpectSound(editor);
}

TEST_F(AllocationFaults, OfReplacingALine) {
    EXPECT_EQ(Campaign([](Editor* editor) {
                  const bool done = LineSetText(editor, 3, u"another text", 12) == 12;
                  LineMeasure(editor, 3);
                  return done;
              }),
              1u);
}

TEST_F(AllocationFaults, OfInsertingInALine) {
    EXPECT_EQ(Campaign([](Editor* editor) {
                  const bool done = Guarded([&] { LineInsertChars(editor, 3, 2, u"1234567", 7); });
                  LineMeasure(editor, 3);
                  return done;
              }),
              1u);
}

TEST_F(AllocationFaults, OfResettingKeepTheText) {
    EXPECT_GE(Campaign([](Editor* editor) { return Guarded([&] { EditorReset(editor); }); }), 5u);
}

TEST_F(AllocationFaults, OfCreatingLeaveNothing) {
    const size_t heaps = HostHeapCount();
    const size_t blocks = HostHeapLiveBlocks(nullptr);
    uint32_t call = 1;
    for (;; ++call) {
        HostShellLogReset();
        FaultScope fault(FaultPoint::kAllocation, {.first = call, .howMany = kFaultForever});
        Editor* editor = EditorCreate();
        if (fault.Hits() == 0) {
            ASSERT_NE(editor, nullptr);
            EditorDestroy(editor);
            break;
        }
        EXPECT_EQ(editor, nullptr);
        EXPECT_EQ(HostShellLog().memoryBoxes, 1u);
        EXPECT_EQ(HostHeapCount(), heaps);
        EXPECT_EQ(HostHeapLiveBlocks(nullptr), blocks);
    }
    EXPECT_GE(call, 6u);
}

TEST_F(AllocationFaults, OfCopyingOutLeaveNothing) {
    Editor* editor = Create(kText);
    editor->anchor = {0, 0, 0};
    editor->anchorColumn = 3;
    editor->caret = {3, 0, 3};
    editor->caretColumn = 2;
    const size_t blocks = HostHeapLiveBlocks(nullptr);
    const std::function<void()> copies[] = {
        [&] { TextCopyRange(editor, nullptr, kLineEndCr, 0, 1, 5, 1); },
        [&] { TextCopyRange(editor, editor->heap, kLineEndCr, 0, 1, 5, 1); }, [&] { SelectionCopy(editor); }};
    for (const auto& copy : copies) {
        HostShellLogReset();
        FaultScope fault(FaultPoint::kAllocation, {.first = 1});
        EXPECT_FALSE(Guarded(copy));
        EXPECT_EQ(fault.Calls(), 1u);
        EXPECT_EQ(HostShellLog().memoryBoxes, 1u);
        EXPECT_EQ(HostHeapLiveBlocks(nullptr), blocks);
        ExpectSound(editor);
    }
}

TEST_F(AllocationFaults, OfRecordingIndentationLeaveTheDataWithTheCaller) {
    Editor* editor = Create(kText);
    auto* data = static_cast<uint8_t*>(MemAlloc(editor->heap, 5));
    {
        FaultScope fault(FaultPoint::kAllocation, {.first = 1});
        EXPECT_FALSE(Guarded([&] { UndoAddIndent(editor->undo, 0, 1, data, 5); }));
    }
    EXPECT_EQ(HostShellLog().memoryBoxes, 1u);
    EXPECT_EQ(editor->undo->count, 0);
    EXPECT_EQ(editor->undo->bytes, 0);
    UndoAddIndent(editor->undo, 0, 1, data, 5);
    EXPECT_EQ(editor->undo->entries[0].indent, data);
    ExpectSound(editor);
}

TEST_F(AllocationFaults, OfAFullJournalKeepItsOldEntries) {
    TheOptions().undoSize = 1;
    Editor* editor = Create(kText);
    for (int i = 0; i < 51; ++i) Insert(editor, 4, 0, u"x");
    EXPECT_EQ(editor->undo->count, 51);
    const std::u16string text = TextOf(editor);
    for (uint32_t call = 1;; ++call) {
        HostShellLogReset();
        FaultScope fault(FaultPoint::kAllocation, {.first = call});
        const bool done = TextDelete(editor, 4, 0, 4, 51);
        if (done) break;
        EXPECT_EQ(HostShellLog().memoryBoxes, 1u);
        EXPECT_EQ(editor->undo->count, 51);
        EXPECT_EQ(editor->undo->position, 51);
        EXPECT_EQ(editor->undo->bytes, 1020);
        EXPECT_EQ(TextOf(editor), text);
        ExpectSound(editor);
    }
    EXPECT_EQ(editor->undo->bytes, 1024 - 2);
    ExpectSound(editor);
}

TEST_F(AllocationFaults, OfAcquiringAFontLeaveTheCacheAlone) {
    const uint32_t count = TheFontCache()->count;
    const size_t fonts = HostTextDeviceCounts().fontsLive;
    for (uint32_t call = 1;; ++call) {
        const size_t blocks = HostHeapLiveBlocks(nullptr);
        HostShellLogReset();
        FaultScope fault(FaultPoint::kAllocation, {.first = call});
        const bool done = Guarded([] { AcquireFont(u"Another\x0C"); });
        if (fault.Hits() == 0) break;
        EXPECT_FALSE(done);
        EXPECT_EQ(HostShellLog().memoryBoxes, 1u);
        EXPECT_EQ(TheFontCache()->count, count);
        EXPECT_EQ(HostTextDeviceCounts().fontsLive, fonts);
        EXPECT_EQ(HostHeapLiveBlocks(nullptr), blocks);
        EXPECT_NE(FindFontEntry(kFixed14), nullptr);
    }
    EXPECT_EQ(TheFontCache()->count, count + 1);
}

TEST_F(AllocationFaults, OfMakingTheFontCacheAreReported) {
    ShutdownFonts();
    {
        FaultScope fault(FaultPoint::kAllocation, {.first = 1});
        EXPECT_EQ(InitFonts(&window_), 0);
        EXPECT_EQ(TheFontCache(), nullptr);
        EXPECT_EQ(AcquireFont(kFixed14), nullptr);
    }
    EXPECT_EQ(InitFonts(&window_), 1);
}

}  // namespace
}  // namespace nira
