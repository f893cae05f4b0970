#include "files/load.h"

#include <random>

#include "host/document_support.h"
#include "platform/host/font_table.h"

namespace nira {
namespace {

using LineList = std::vector<std::u16string>;

class LoadFile : public DocumentTest {
  protected:
    // Loads these bytes into a new document.
    int LoadBytes(const std::string& bytes, uint32_t codec = kCodecUtf8) {
        Renew();
        folder.Put("f.txt", bytes);
        return Load(editor, folder.OwnName("f.txt"), codec);
    }
    void ExpectLoads(const std::string& bytes, const LineList& lines, uint32_t lineEnd) {
        ASSERT_EQ(LoadBytes(bytes), 1);
        EXPECT_EQ(Lines(editor), lines) << testing::PrintToString(bytes);
        EXPECT_EQ(editor->lineEnd, lineEnd) << testing::PrintToString(bytes);
    }
};

const std::string kBeforeEnd(kReadBlock - 1, 'x');
const std::u16string kBeforeEndText(kReadBlock - 1, u'x');

// ---- the document's fields ----

TEST_F(LoadFile, GivesTheDocumentItsFile) {
    folder.Put("My File.txt", "abc");
    char16_t* path = folder.OwnName("My File.txt");
    ASSERT_EQ(Load(editor, path, kCodecUtf8), 1);
    EXPECT_EQ(editor->path, path);
    EXPECT_EQ(std::u16string(editor->displayName), u"My File.txt");
    EXPECT_EQ(editor->codecId, kCodecUtf8);
    EXPECT_EQ(editor->flags, 0u);
    EXPECT_EQ(editor->modified, 0);
    EXPECT_EQ(editor->undo->count, 0) << "loading is not undone";
    EXPECT_TRUE(MessageLog().empty());
}

TEST_F(LoadFile, ClearsTheModifiedFlag) {
    folder.Put("f", "abc");
    editor->modified = 1;
    ASSERT_EQ(Load(editor, folder.OwnName("f"), kCodecUtf8), 1);
    EXPECT_EQ(editor->modified, 0);
}

TEST_F(LoadFile, AnEmptyFileIsOneEmptyLine) {
    for (uint32_t codec = 0; codec < kBuiltInCodecs; ++codec) {
        ASSERT_EQ(LoadBytes("", codec), 1);
        EXPECT_EQ(Lines(editor), LineList{u""});
        EXPECT_EQ(editor->lineEnd, kLineEndCrLf);
        EXPECT_EQ(editor->codecId, codec) << "Unicode stays Unicode: no first chunk reaches the decoder";
    }
}

// ---- line ends ----

TEST_F(LoadFile, TheFirstBreakDecidesTheLineEnd) {
    ExpectLoads("a\nb", {u"a", u"b"}, kLineEndLf);
    ExpectLoads("a\rb", {u"a", u"b"}, kLineEndCr);
    ExpectLoads("a\r\nb", {u"a", u"b"}, kLineEndCrLf);
    ExpectLoads("a\nb\r\nc", {u"a", u"b", u"c"}, kLineEndLf);
    ExpectLoads("a\rb\nc\r\nd", {u"a", u"b", u"c", u"d"}, kLineEndCr);
    ExpectLoads("a\r\nb\nc\rd", {u"a", u"b", u"c", u"d"}, kLineEndCrLf);
    ExpectLoads("a\n", {u"a", u""}, kLineEndLf);
}

TEST_F(LoadFile, AFileWithoutBreaksKeepsTheLineEnd) { ExpectLoads("abc", {u"abc"}, kLineEndCrLf); }

TEST_F(LoadFile, NoEmptyLineIsLost) {
    ExpectLoads("# Title\n\nText", {u"# Title", u"", u"Text"}, kLineEndLf);
    ExpectLoads("\n\n", {u"", u"", u""}, kLineEndLf);
    ExpectLoads("\n\n\n\n", {u"", u"", u"", u"", u""}, kLineEndLf);
    ExpectLoads("a\n\r\nb", {u"a", u"", u"b"}, kLineEndLf);
    ExpectLoads("a\n\rb", {u"a", u"", u"b"}, kLineEndLf);
    ExpectLoads("a\n\n\r\n\n\rb", {u"a", u"", u"", u"", u"", u"b"}, kLineEndLf);
    ExpectLoads("a\r\rb", {u"a", u"", u"b"}, kLineEndCr);
    ExpectLoads("a\r\n\nb", {u"a", u"", u"b"}, kLineEndCrLf);
    ExpectLoads("a\r\n\r\nb", {u"a", u"", u"b"}, kLineEndCrLf);
    ExpectLoads("a\nb\n\nc", {u"a", u"b", u"", u"c"}, kLineEndLf);
}

TEST_F(LoadFile, NoEmptyLineIsLostInALaterBlock) {
    ExpectLoads(kBeforeEnd + "\n\n\nb", {kBeforeEndText, u"", u"", u"b"}, kLineEndLf);
    ExpectLoads(kBeforeEnd + "x\n\n\nb", {kBeforeEndText + u"x", u"", u"", u"b"}, kLineEndLf);
}

TEST_F(LoadFile, ABreakSplitByTheBlocksEndIsOneBreakOfTypeCr) {
    ExpectLoads(kBeforeEnd + "\r\ny", {kBeforeEndText, u"y"}, kLineEndCr);
    ExpectLoads(kBeforeEnd + "\r\n", {kBeforeEndText, u""}, kLineEndCr);
    ExpectLoads(kBeforeEnd + "\r\n\ny", {kBeforeEndText, u"", u"y"}, kLineEndCr);
    ExpectLoads(kBeforeEnd + "\r\n\n\ny", {kBeforeEndText, u"", u"", u"y"}, kLineEndCr);
    ExpectLoads(kBeforeEnd + "\r\r\ny", {kBeforeEndText, u"", u"y"}, kLineEndCr);
    ExpectLoads(kBeforeEnd + "\r", {kBeforeEndText, u""}, kLineEndCr);
}

TEST_F(LoadFile, AnLfAloneAfterABlocksLastCrEndsThatBreak) {
    // The second block is the LF alone; what follows in the third is a break of its own.
    FaultScope fault(FaultPoint::kFileRead,
                     {.first = 1, .howMany = kFaultForever, .effect = FaultEffect::kShort});
    const std::string half(kReadBlock / 2 - 1, 'x');
    ASSERT_EQ(LoadBytes(half + "\r\n"), 1);
    EXPECT_EQ(editor->lineCount, 2u);
}

// ---- codecs ----

TEST_F(LoadFile, TheMarkDecidesTheCodec) {
    ASSERT_EQ(LoadBytes("\xEF\xBB\xBF"
                        "a",
                        kCodecUtf16Be),
              1);
    EXPECT_EQ(Text(editor), u"a");
    EXPECT_EQ(editor->codecId, kCodecUtf8);
    ASSERT_EQ(LoadBytes(std::string("\xFE\xFF\0a", 4), kCodecUnicode), 1);
    EXPECT_EQ(Text(editor), u"a");
    EXPECT_EQ(editor->codecId, kCodecUtf16Be);
    ASSERT_EQ(LoadBytes(std::string("\xFF\xFE"
                                    "a\0",
                                    4),
                        kCodecUtf8),
              1);
    EXPECT_EQ(editor->codecId, kCodecUtf16Le);
    ASSERT_EQ(LoadBytes("\xEF\xBB\xBF", kCodecUnicode), 1);
    EXPECT_EQ(Lines(editor), LineList{u""});
    EXPECT_EQ(editor->codecId, kCodecUtf8);
}

TEST_F(LoadFile, AMarkAtALaterBlocksStartIsText) {
    ASSERT_EQ(LoadBytes(std::string(kReadBlock, 'x') + "\xEF\xBB\xBF"
                                                       "end"),
              1);
    EXPECT_EQ(Text(editor), std::u16string(kReadBlock, u'x') + u"\uFEFFend");
}

TEST_F(LoadFile, AnsiLooksForNoMark) {
    ASSERT_EQ(LoadBytes("\xFF\xFE"
                        "a",
                        kCodecAnsi),
              1);
    EXPECT_EQ(Text(editor),
              u"\u00FF\u00FE"
              u"a");
    EXPECT_EQ(editor->codecId, kCodecAnsi);
}

TEST_F(LoadFile, ASequenceCutByTheFilesEndIsLost) {
    ASSERT_EQ(LoadBytes("ab\xE2\x82"), 1);
    EXPECT_EQ(Text(editor), u"ab");
    ASSERT_EQ(LoadBytes("ab\xFF"), 1);
    EXPECT_EQ(Text(editor), u"ab");
    ASSERT_EQ(LoadBytes("ab\xFF"
                        "cdefg\xC3"),
              1);
    EXPECT_EQ(Text(editor),
              u"ab\u00FF"
              u"cdefg");
}

TEST_F(LoadFile, AnOddLastByteIsCompletedFromTheTextBefore) {
    ASSERT_EQ(LoadBytes("\x34\x12\x99", kCodecUtf16Le), 1);
    EXPECT_EQ(Text(editor), u"\u1234\u1299");
    ASSERT_EQ(LoadBytes("\x99", kCodecUtf16Le), 1);
    EXPECT_EQ(Text(editor), u"\u0099");
    // Two breaks in a row must not leave anything of their own in the codec's buffer.
    ASSERT_EQ(LoadBytes(std::string("\n\0\n\0\x99", 5), kCodecUtf16Le), 1);
    EXPECT_EQ(Text(editor), u"\n\n\u0099");
}

TEST_F(LoadFile, ASequenceMayLieAnywhereAcrossTheBlocksEnd) {
    for (uint32_t start = kReadBlock - 8; start <= kReadBlock + 2; ++start) {
        ASSERT_EQ(LoadBytes(std::string(start, 'x') + "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80\n\nend"), 1);
        EXPECT_EQ(Text(editor), std::u16string(start, u'x') + u"\u00E9\u20AC\uFFFD\n\nend") << start;
    }
    ASSERT_EQ(LoadBytes("y" + std::string(kReadBlock - 2, 'x') + "\xE2\x82\xAC", kCodecAnsi), 1);
    EXPECT_EQ(editor->lines[0].length, kReadBlock + 2);
}

TEST_F(LoadFile, AUnitMayBeCutByTheBlocksEnd) {
    std::string bytes("\xFE\xFF", 2);
    for (int i = 0; i < 30000; ++i) bytes += std::string("\x12\x34", 2);
    ASSERT_EQ(LoadBytes(bytes, kCodecAnsi), 1);
    ASSERT_EQ(LoadBytes(bytes, kCodecUtf8), 1);
    EXPECT_EQ(Text(editor), std::u16string(30000, u'\u1234'));
}

// Two blocks in a row that end within a sequence: the rest of the second is taken from as many bytes earlier
// as the first left over. Every version of the editor reads such a file so.
TEST_F(LoadFile, ARestBehindARestIsReckonedFromTheReadAlone) {
    std::string bytes;
    for (int i = 0; i < 20000; ++i) bytes += "\xE2\x82\xAC";
    ASSERT_EQ(LoadBytes(bytes), 1);
    const std::u16string expected =
        std::u16string(2 * 6826, u'\u20AC') + u"\u0082\u00AC\u00AC" + std::u16string(6347, u'\u20AC');
    EXPECT_EQ(Text(editor), expected);
}

TEST_F(LoadFile, ARestLongerThanTheReadBringsZeroBytes) {
    ASSERT_EQ(LoadBytes(std::string(kReadBlock - 4, 'x') + "\xFC\x80\x80\x80\x80"), 1);
    EXPECT_EQ(Text(editor), std::u16string(kReadBlock - 4, u'x') + std::u16string(4, u'\0'));
}

TEST_F(LoadFile, ReadsBytesOfEveryKindWithEveryCodec) {
    std::mt19937 random(815);
    for (int round = 0; round < 40; ++round) {
        std::string bytes(random() % 50000, '\0');
        for (char& byte : bytes) byte = static_cast<char>(random() % 256);
        for (uint32_t codec = 0; codec < kBuiltInCodecs; ++codec) ASSERT_EQ(LoadBytes(bytes, codec), 1);
    }
}

TEST_F(LoadFile, ReadsNulBytes) {
    ASSERT_EQ(LoadBytes(std::string(30000, '\0')), 1);
    EXPECT_EQ(Text(editor), std::u16string(30000, u'\0'));
}

TEST_F(LoadFile, ReadsManyLines) {
    std::string bytes;
    std::u16string text;
    for (int i = 0; i < 20000; ++i) {
        bytes += std::to_string(i) + (i % 3 == 0 ? "\n\n" : "\n");
        text += Wide(std::to_string(i)) + (i % 3 == 0 ? u"\n\n" : u"\n");
    }
    ASSERT_EQ(LoadBytes(bytes), 1);
    EXPECT_EQ(Text(editor), text);
    EXPECT_EQ(editor->undo->count, 0);
}

TEST_F(LoadFile, ShortReadsChangeNothing) {
    std::string bytes;
    for (int i = 0; i < 20000; ++i) bytes += std::to_string(i) + "\n";
    FaultScope fault(FaultPoint::kFileRead,
                     {.first = 1, .howMany = kFaultForever, .effect = FaultEffect::kShort});
    ASSERT_EQ(LoadBytes(bytes), 1);
    EXPECT_EQ(Text(editor), Wide(bytes));
}

// Every unit of such a line depends on its neighbours, so that each insertion measures the whole line.
TEST_F(LoadFile, ALongLineOfShapedScriptIsNotMeasuredBlockByBlock) {
    constexpr size_t kUnits = 1'000'000;
    std::string bytes = "a\n";
    for (size_t i = 0; i < kUnits; ++i) bytes += "\xD8\xA8";
    HostTextDeviceResetCounts();
    ASSERT_EQ(LoadBytes(bytes), 1);
    EXPECT_EQ(Text(editor), u"a\n" + std::u16string(kUnits, u'\u0628'));
    EXPECT_LE(HostTextDeviceCounts().unitsMeasured, 10 * kUnits);
}

TEST_F(LoadFile, ShapedLinesOfEveryLengthComeWhole) {
    std::string bytes;
    std::u16string text;
    for (const size_t units : std::initializer_list<size_t>{9000, 40000, 3, 20480, 100000, 1, 30720}) {
        for (size_t i = 0; i < units; ++i) bytes += i % 5 == 0 ? "x" : "\xD8\xA8";
        for (size_t i = 0; i < units; ++i) text += i % 5 == 0 ? u'x' : u'\u0628';
        bytes += "\n\n";
        text += u"\n\n";
    }
    ASSERT_EQ(LoadBytes(bytes), 1);
    EXPECT_EQ(Text(editor), text);
}

// ---- names ----

TEST_F(LoadFile, TakesNamesOfEveryKind) {
    for (const char* name : {"with space", "it's", "semi;colon&", ".hidden", "100%"}) {
        folder.Put(name, "abc");
        Renew();
        EXPECT_EQ(Load(editor, folder.OwnName(name), kCodecUtf8), 1) << name;
        EXPECT_EQ(Text(editor), u"abc");
    }
    folder.Put("\xC3\xA9\xE2\x82\xAC", "abc");
    std::u16string path = folder.Name("");
    path += u"\u00E9\u20AC";
    Renew();
    EXPECT_EQ(Load(editor, MemStrDup(nullptr, path.c_str()), kCodecUtf8), 1);
    EXPECT_EQ(std::u16string(editor->displayName), u"\u00E9\u20AC");
}

// ---- failures ----

TEST_F(LoadFile, TellsThatAFileCannotBeOpened) {
    folder.Put("file", "");
    for (const char* name : {"missing", "no/such/folder", ".", "file/inside"}) {
        Renew();
        char16_t* path = folder.OwnName(name);
        EXPECT_EQ(Load(editor, path, kCodecUtf8), 0) << name;
        ExpectMessage(u"Error reading file");
        EXPECT_EQ(editor->path, path);
        EXPECT_EQ(Lines(editor), LineList{u""});
    }
    Renew();
    EXPECT_EQ(Load(editor, MemStrDup(nullptr, u""), kCodecUtf8), 0);
    ExpectMessage(u"Error reading file");
    FaultScope fault(FaultPoint::kFileOpen, {.first = 1});
    EXPECT_EQ(LoadBytes("abc"), 0);
    ExpectMessage(u"Error reading file");
}

TEST_F(LoadFile, TellsThatACodecCannotBeMade) {
    folder.Put("f", "abc");
    char16_t* path = folder.OwnName("f");
    EXPECT_EQ(Load(editor, path, 99), 0);
    ExpectMessage(u"Error initializing decoder");
    EXPECT_EQ(editor->path, path);
    EXPECT_EQ(FaultCalls(FaultPoint::kAnyFile), 0u);
}

TEST_F(LoadFile, KeepsWhatWasReadBeforeAReadError) {
    FaultScope fault(FaultPoint::kFileRead, {.first = 2});
    EXPECT_EQ(LoadBytes("\xEF\xBB\xBF" + kBeforeEnd + "\nrest", kCodecUtf16Le), 0);
    ExpectMessage(u"Error reading file");
    EXPECT_EQ(Text(editor), std::u16string(kReadBlock - 3, u'x'));
    EXPECT_EQ(editor->codecId, kCodecUtf8);
    EXPECT_EQ(editor->flags, 0u);
    EXPECT_EQ(editor->modified, 0);
}

TEST_F(LoadFile, EveryFailingFileCallIsTold) {
    bool untouched = false;
    for (uint32_t call = 1; !untouched; ++call) {
        FaultScope fault(FaultPoint::kAnyFile, {.first = call});
        const int loaded = LoadBytes(kBeforeEnd + kBeforeEnd + "end");
        untouched = fault.Hits() == 0;
        const bool closing = fault.Calls() == call && loaded == 1;
        EXPECT_EQ(loaded, untouched || closing ? 1 : 0) << call;
        if (loaded == 0) ExpectMessage(u"Error reading file");
        EXPECT_EQ(HostOpenFileCount(), 0u);
    }
    EXPECT_TRUE(MessageLog().empty());
}

// One failing allocation is told once. When all fail from then on, there may be a second box: lines that
// could not be measured are no reason to stop, the piece behind them is.
TEST_F(LoadFile, EveryFailingAllocationLeavesWhatWasRead) {
    const std::string bytes = kBeforeEnd + "\n\n" + kBeforeEnd + "\r\rend\nmore\n";
    const std::u16string whole = kBeforeEndText + u"\n\n" + kBeforeEndText + u"\n\nend\nmore\n";
    folder.Put("f", bytes);
    for (const uint32_t howMany : {1u, kFaultForever}) {
        bool untouched = false;
        uint32_t failures = 0;
        for (uint32_t call = 1; !untouched; ++call) {
            Renew();
            char16_t* path = folder.OwnName("f");
            HostShellLogReset();
            int loaded = 0;
            {
                FaultScope fault(FaultPoint::kAllocation, {.first = call, .howMany = howMany});
                loaded = Load(editor, path, kCodecUtf8);
                untouched = fault.Hits() == 0;
            }
            EXPECT_EQ(HostOpenFileCount(), 0u);
            EXPECT_TRUE(MessageLog().empty()) << "the box about memory is all that is shown";
            EXPECT_EQ(editor->flags, 0u);
            EXPECT_EQ(editor->modified, 0);
            const std::u16string text = Text(editor);
            EXPECT_EQ(text, loaded == 1 ? whole : whole.substr(0, text.size())) << call;
            const uint32_t boxes = HostShellLog().memoryBoxes;
            EXPECT_GE(boxes, untouched ? 0u : 1u) << call;
            EXPECT_LE(boxes, untouched ? 0u : howMany == 1 ? 1u : 2u) << call;
            failures += loaded == 0 ? 1 : 0;
        }
        EXPECT_GE(failures, 5u);
    }
}

}  // namespace
}  // namespace nira
