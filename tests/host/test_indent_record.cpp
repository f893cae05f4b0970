#include "view/indent_record.h"

#include <cstring>
#include <string>
#include <vector>

#include "host/files_support.h"

namespace nira {
namespace {

class IndentRecord : public ServicesTest {
  protected:
    ~IndentRecord() override { MemFree(nullptr, writer_.data); }

    void Begin(uint32_t lines, int32_t delta) { BeginIndentRecord(&writer_, nullptr, lines, delta); }
    void Write(const std::u16string& blanks) {
        WriteIndent(&writer_, blanks.data(), static_cast<uint32_t>(blanks.size()));
    }
    // The bytes behind the header.
    std::vector<uint8_t> Body() const {
        return {writer_.data + kIndentHeaderBytes, writer_.data + writer_.size};
    }
    // What the first `count` bytes of a line of `length` spaces are.
    std::vector<uint8_t> LengthBytes(uint32_t length, size_t count) {
        MemFree(nullptr, writer_.data);
        Begin(1, 0);
        Write(std::u16string(length, u' '));
        const std::vector<uint8_t> body = Body();
        return {body.begin(), body.begin() + static_cast<std::ptrdiff_t>(count)};
    }
    std::u16string Read(IndentReader* reader) {
        std::u16string blanks(ReadIndentLength(reader), u'?');
        ReadIndentUnits(reader, blanks.data(), static_cast<uint32_t>(blanks.size()));
        return blanks;
    }

    IndentWriter writer_ = {};
};

using Bytes = std::vector<uint8_t>;

TEST_F(IndentRecord, BeginsWithTheLinesAndTheSignedChange) {
    Begin(0x01020304, -4);
    const Bytes header(writer_.data, writer_.data + writer_.size);
    EXPECT_EQ(header, (Bytes{4, 3, 2, 1, 0xFC, 0xFF}));
    EXPECT_EQ(IndentRecordLines(writer_.data), 0x01020304u);
    EXPECT_EQ(IndentRecordDelta(writer_.data), -4);
}

TEST_F(IndentRecord, HoldsTheLargestChanges) {
    for (const int32_t delta : {INT16_MIN + 0, INT16_MAX + 0}) {
        MemFree(nullptr, writer_.data);
        Begin(1, delta);
        EXPECT_EQ(IndentRecordDelta(writer_.data), delta);
    }
}

TEST_F(IndentRecord, ALineWithoutIndentationIsOneZeroByte) {
    Begin(2, 4);
    Write(u"");
    Write(u"");
    EXPECT_EQ(Body(), (Bytes{0, 0}));
}

TEST_F(IndentRecord, TabsAreSetBitsFromTheLowestOn) {
    Begin(1, 4);
    Write(u"\t  \t");
    EXPECT_EQ(Body(), (Bytes{4, 0x09}));
}

TEST_F(IndentRecord, EightUnitsFillAByteAndTheNinthBeginsAnother) {
    Begin(2, 4);
    Write(u"\t\t\t\t\t\t\t\t");
    Write(u"        \t");
    EXPECT_EQ(Body(), (Bytes{8, 0xFF, 9, 0x00, 0x01}));
}

TEST_F(IndentRecord, LengthsAbove254ContinueByBytesOf255) {
    EXPECT_EQ(LengthBytes(253, 1), (Bytes{253}));
    EXPECT_EQ(LengthBytes(254, 1), (Bytes{254}));
    EXPECT_EQ(LengthBytes(255, 2), (Bytes{0xFF, 1}));
    EXPECT_EQ(LengthBytes(508, 2), (Bytes{0xFF, 0xFE}));
    EXPECT_EQ(LengthBytes(509, 3), (Bytes{0xFF, 0xFF, 1}));
    EXPECT_EQ(LengthBytes(762, 3), (Bytes{0xFF, 0xFF, 0xFE}));
    EXPECT_EQ(LengthBytes(763, 4), (Bytes{0xFF, 0xFF, 0xFF, 1}));
}

TEST_F(IndentRecord, IsReadAsItWasWritten) {
    std::vector<std::u16string> lines = {u"", u"\t", u" ", u"\t \t \t \t ", u""};
    for (const uint32_t length : {7u, 8u, 9u, 253u, 254u, 255u, 256u, 507u, 508u, 509u, 510u, 5000u}) {
        std::u16string blanks(length, u' ');
        for (uint32_t i = 0; i < length; i += 1 + i % 3) blanks[i] = u'\t';
        lines.push_back(blanks);
    }
    Begin(static_cast<uint32_t>(lines.size()), 1);
    for (const std::u16string& line : lines) Write(line);
    IndentReader reader = ReadIndentRecord(writer_.data, writer_.size);
    for (const std::u16string& line : lines) EXPECT_EQ(Read(&reader), line);
    EXPECT_EQ(reader.place, writer_.size);
}

TEST_F(IndentRecord, ReportsFourBytesALineAndGrowsByTen) {
    Begin(3, 4);
    EXPECT_EQ(writer_.capacity, 18u);
    for (int i = 0; i < 12; ++i) Write(u"");
    EXPECT_EQ(writer_.capacity, 18u);
    EXPECT_EQ(writer_.size, 18u);
    Write(u"");
    EXPECT_EQ(writer_.capacity, 28u);
}

TEST_F(IndentRecord, OfOneLineStartsWithTenBytes) {
    Begin(1, 4);
    EXPECT_EQ(writer_.capacity, 10u);
    EXPECT_GE(MemSize(nullptr, writer_.data), 10u);
}

TEST_F(IndentRecord, AsksForMemorySeldomHoweverLongItGets) {
    Begin(1, 4);
    FaultArm(FaultPoint::kAllocation, {.first = 100});
    for (int i = 0; i < 100000; ++i) Write(u"\t");
    EXPECT_EQ(FaultHits(FaultPoint::kAllocation), 0u);
    EXPECT_EQ(writer_.size, 200006u);
}

TEST_F(IndentRecord, ThatEndsTooEarlyReadsAsLinesWithoutIndentation) {
    Begin(1, 4);
    Write(u"\t\t");
    IndentReader reader = ReadIndentRecord(writer_.data, writer_.size);
    EXPECT_EQ(Read(&reader), u"\t\t");
    EXPECT_EQ(Read(&reader), u"");
}

}  // namespace
}  // namespace nira
