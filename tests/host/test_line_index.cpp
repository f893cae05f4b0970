#include "engine/line_index.h"

#include <algorithm>
#include <random>
#include <vector>

#include "host/editor_fixture.h"

namespace nira {
namespace {

constexpr uint32_t kManyRows = 6;

// Records without text, whose rows and widths are made up.
class LineIndexTest : public EditorTest {
  protected:
    LineIndexTest() : heap_(MemHeapCreate(1000)) {
        LineIndexSetChunkLines(4);
        index_ = LineIndexCreate(heap_);
        lines_.push_back({});
    }
    ~LineIndexTest() override { MemHeapDestroy(heap_); }

    LineRecord Record(uint32_t rows, int32_t width) {
        static uint32_t breaks[kManyRows][1] = {{0}, {1}, {2}, {3}, {4}, {5}};
        LineRecord record = {};
        record.breaks = rows == 0 ? nullptr : breaks[rows];
        record.width = width;
        return record;
    }
    void Add(uint32_t line, uint32_t count, uint32_t rows, int32_t width) {
        LineIndexReserve(index_, count);
        lines_.insert(lines_.begin() + line, count, Record(rows, width));
        LineIndexInsert(index_, line, count);
    }
    void Remove(uint32_t first, uint32_t count) {
        lines_.erase(lines_.begin() + first, lines_.begin() + first + count);
        LineIndexErase(index_, first, count);
    }
    void Set(uint32_t line, uint32_t rows, int32_t width) {
        lines_[line] = Record(rows, width);
        LineIndexTouch(index_, line, line + 1);
    }
    void Refresh() { LineIndexRefresh(index_, lines_.data()); }

    void ExpectSums() {
        Refresh();
        uint32_t rows = 0;
        int32_t widest = 0;
        for (const LineRecord& line : lines_) {
            rows += ExtraRows(line);
            widest = std::max(widest, line.width);
        }
        EXPECT_EQ(index_->lineTotal, lines_.size());
        EXPECT_EQ(index_->extraRows, rows);
        EXPECT_EQ(index_->widest, widest);
        uint32_t total = 0;
        for (uint32_t i = 0; i < index_->chunkCount; ++i) {
            EXPECT_GE(index_->chunks[i].lines, 1u);
            EXPECT_LE(index_->chunks[i].lines, 8u);
            total += index_->chunks[i].lines;
        }
        EXPECT_EQ(total, lines_.size());
    }
    void ExpectLookUp(uint32_t line) {
        uint32_t before = 0;
        for (uint32_t i = 0; i < line; ++i) before += ExtraRows(lines_[i]);
        EXPECT_EQ(LineIndexExtraRowsBefore(index_, lines_.data(), line), before);
        if (line == lines_.size()) return;
        for (uint32_t subRow = 0; subRow <= ExtraRows(lines_[line]); ++subRow) {
            uint32_t found = 99;
            EXPECT_EQ(LineIndexFindRow(index_, lines_.data(), line + before + subRow, &found), line);
            EXPECT_EQ(found, subRow);
        }
    }

    HeapHandle heap_;
    LineIndex* index_;
    std::vector<LineRecord> lines_;
};

TEST_F(LineIndexTest, BeginsWithOneLine) {
    ExpectSums();
    ExpectLookUp(0);
    ExpectLookUp(1);
}

TEST_F(LineIndexTest, FindsEveryRowInEitherDirection) {
    for (uint32_t i = 0; i < 40; ++i) Add(i, 1, i % kManyRows, static_cast<int32_t>(i));
    ExpectSums();
    for (uint32_t i = 0; i <= 41; ++i) ExpectLookUp(i);
    for (uint32_t i = 42; i-- > 0;) ExpectLookUp(i);
}

TEST_F(LineIndexTest, ARowPastTheEndIsTheLastRow) {
    Add(1, 9, 2, 1);
    Refresh();
    uint32_t subRow = 0;
    EXPECT_EQ(LineIndexFindRow(index_, lines_.data(), 1000000, &subRow), 9u);
    EXPECT_EQ(subRow, 2u);
}

TEST_F(LineIndexTest, SplitsChunksThatGrowAndJoinsThoseThatShrink) {
    Add(0, 1000, 1, 5);
    ExpectSums();
    EXPECT_GE(index_->chunkCount, 125u);
    Remove(0, 999);
    ExpectSums();
    EXPECT_EQ(index_->chunkCount, 1u);
}

TEST_F(LineIndexTest, TheWidestLineGivesWayToTheNextOne) {
    Add(0, 30, 0, 10);
    Set(3, 0, 500);
    Set(20, 0, 400);
    ExpectSums();
    Set(3, 0, 1);
    ExpectSums();
    Remove(20, 1);
    ExpectSums();
    Remove(0, 29);
    ExpectSums();
}

TEST_F(LineIndexTest, TouchesReachAcrossChunks) {
    Add(0, 30, 0, 10);
    Refresh();
    for (LineRecord& line : lines_) line = Record(2, 33);
    LineIndexTouch(index_, 0, static_cast<uint32_t>(lines_.size()));
    LineIndexTouch(index_, 5, 5);
    ExpectSums();
}

TEST_F(LineIndexTest, KeepsUpWithRandomChanges) {
    const uint32_t seed = std::random_device()();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const auto below = [&](size_t end) { return static_cast<uint32_t>(random() % end); };
    for (int i = 0; i < 3000 && !HasFailure(); ++i) {
        const uint32_t line = below(lines_.size());
        const int32_t width = static_cast<int32_t>(below(50));
        switch (below(4)) {
            case 0:
                Set(line, below(kManyRows), width);
                break;
            case 1:
            case 2:
                Add(line + below(2), below(3) == 0 ? below(30) + 1 : 1, below(kManyRows), width);
                break;
            default:
                if (lines_.size() > 1) {
                    const auto most = static_cast<uint32_t>(lines_.size()) - 1;
                    const uint32_t first = below(lines_.size());
                    const uint32_t behind = static_cast<uint32_t>(lines_.size()) - first;
                    Remove(first, std::min({most, behind, below(60) + 1}));
                }
        }
        if (below(2) == 0) continue;  // several changes before the sums are brought up to date
        ExpectSums();
        ExpectLookUp(below(lines_.size() + 1));
    }
}

TEST_F(LineIndexTest, AllocatesOnlyWhenRoomIsReserved) {
    Add(0, 10, 0, 1);
    LineIndexReserve(index_, 500);
    FaultScope fault(FaultPoint::kAllocation, {.howMany = kFaultForever});
    lines_.insert(lines_.begin() + 5, 500, Record(1, 2));
    LineIndexInsert(index_, 5, 500);
    ExpectSums();
    EXPECT_EQ(fault.Calls(), 0u);
}

}  // namespace
}  // namespace nira
