#include "codecs/stream.h"

#include <random>

#include "host/files_support.h"
#include "host/library_codec.h"

namespace nira {
namespace {

// The forms of Unicode and "Auto"; every byte of a file in one of them comes back.
const std::vector<std::u16string>& ExactNames() {
    static const std::vector<std::u16string> names = [] {
        std::vector<std::u16string> found;
        for (const codecs::Entry& entry : codecs::kEntries) {
            if (entry.form != codecs::Form::kPage) found.emplace_back(entry.name);
        }
        return found;
    }();
    return names;
}

// The one exception: a unit of which the file has only the first byte.
bool EndsInHalfAUnit(const std::u16string& name, const std::string& file) {
    return name.compare(0, 6, u"UTF-16") == 0 && file.size() % 2 != 0;
}

class LibraryStream : public ServicesTest {
  protected:
    LibraryStream() { ListEncodings(LibraryNames()); }

    // Whether the file reads the same however it is cut, and is written as it was in the encoding that was
    // found.
    static void ExpectExact(const std::u16string& name, const std::string& file,
                            const std::vector<std::vector<size_t>>& cuts) {
        const Read whole = ReadAs(name, file);
        const std::u16string found = LibraryNameAt(whole.index);
        EXPECT_TRUE(whole.allTaken);
        const std::string expected = EndsInHalfAUnit(found, file) ? file + '\0' : file;
        ASSERT_EQ(WrittenAs(found, whole.text), expected)
            << testing::PrintToString(name) << " " << testing::PrintToString(file);
        for (const std::vector<size_t>& places : cuts) {
            const Read cut = ReadAs(name, file, places);
            ASSERT_TRUE(cut.allTaken);
            ASSERT_EQ(cut.text, whole.text)
                << testing::PrintToString(name) << " " << testing::PrintToString(file);
            ASSERT_EQ(LibraryNameAt(cut.index), found);
        }
    }
};

std::vector<std::vector<size_t>> EveryCut(size_t size) {
    std::vector<std::vector<size_t>> cuts;
    for (size_t first = 0; first <= size; ++first) {
        for (size_t second = first; second <= size; ++second) cuts.push_back({first, second});
    }
    std::vector<size_t> all;
    for (size_t place = 1; place < size; ++place) all.push_back(place);
    cuts.push_back(all);
    return cuts;
}

TEST_F(LibraryStream, ShortFilesOfEveryKindComeBackHoweverTheyAreCut) {
    const std::string marks[] = {"",
                                 "\xEF\xBB\xBF",
                                 "\xFF\xFE",
                                 "\xFE\xFF",
                                 std::string("\xFF\xFE\0\0", 4),
                                 std::string("\0\0\xFE\xFF", 4)};
    const std::string rests[] = {"",
                                 "a",
                                 "\n",
                                 "\r",
                                 "\r\n",
                                 "\xFF",
                                 std::string("\0", 1),
                                 "\r\r\n\n",
                                 "\xEF\xBB\xBF",
                                 "\xF0\x9F\x98\x80",
                                 std::string("a\0\r\0\n\0", 6),
                                 std::string("\0a\0\r\0\n", 6),
                                 std::string("\0\xD8", 2),
                                 "\xED\xA0\x80",
                                 std::string("\r\0\0\0\n\0\0\0", 8),
                                 std::string("\0\0\0\r\0\0\0\n", 8)};
    for (const std::u16string& name : ExactNames()) {
        for (const std::string& mark : marks) {
            for (const std::string& rest : rests) {
                ExpectExact(name, mark + rest, EveryCut(mark.size() + rest.size()));
                if (HasFatalFailure()) return;
            }
            for (size_t part = 0; part < mark.size(); ++part) {
                ExpectExact(name, mark.substr(0, part), EveryCut(part));
                if (HasFatalFailure()) return;
            }
        }
    }
}

TEST_F(LibraryStream, RandomBytesComeBackHoweverTheyAreCut) {
    std::mt19937 random(24);
    constexpr uint8_t kBytes[] = {0x00, 0x00, 0x0A, 0x0D, 0x41, 0x80, 0xA0, 0xBB, 0xBF, 0xD8, 0xDC,
                                  0xDF, 0xE2, 0xED, 0xEF, 0xF0, 0x9F, 0x98, 0xFE, 0xFF, 0x10, 0x11};
    for (int round = 0; round < 600; ++round) {
        std::string file(random() % 12, ' ');
        for (char& byte : file) byte = static_cast<char>(kBytes[random() % std::size(kBytes)]);
        std::vector<std::vector<size_t>> cuts;
        for (int i = 0; i < 4; ++i) {
            std::vector<size_t> places;
            for (size_t place = 0; place <= file.size(); ++place) {
                if (random() % 3 == 0) places.push_back(place);
            }
            cuts.push_back(places);
        }
        for (const std::u16string& name : ExactNames()) ExpectExact(name, file, cuts);
        if (HasFatalFailure()) return;
    }
}

TEST_F(LibraryStream, LongRandomBytesComeBack) {
    std::mt19937 random(25);
    std::string file(300000, ' ');
    for (char& byte : file) byte = static_cast<char>(random());
    std::vector<size_t> places;
    for (size_t place = 20480; place < file.size(); place += 20480) places.push_back(place);
    for (const std::u16string& name : ExactNames()) ExpectExact(name, file, {places});
}

TEST_F(LibraryStream, TextIsWrittenTheSameHoweverItIsCut) {
    const std::u16string text =
        u"a\r\n\xD83D\xDE00\xDC80\xDCFF\xDC01\xDC02\xDC03\xDC04\xDC05"
        "b\xD800\xFEFF\u4E2D";
    for (const std::u16string& name : LibraryNames()) {
        const std::string whole = WrittenAs(name, text);
        for (size_t first = 0; first <= text.size(); ++first) {
            for (size_t second = first; second <= text.size(); ++second) {
                ASSERT_EQ(WrittenAs(name, text, {first, second}), whole)
                    << testing::PrintToString(name) << " " << first << " " << second;
            }
        }
    }
}

// A chunk of more units than are encoded at a time, with something to wait for at every cut.
TEST_F(LibraryStream, LongTextIsWrittenTheSameHoweverItIsCut) {
    std::u16string text;
    while (text.size() < 300000) text += u"ab\xD83D\xDE00\xDC01\xDC02\xDC03\xDC04\u00E9\u4E2D\n";
    std::vector<size_t> places;
    for (size_t place = 999; place < text.size(); place += 999) places.push_back(place);
    for (const std::u16string name : {u"UTF-8 exact", u"UTF-16 BE exact", u"UTF-32 LE exact", u"GB18030"}) {
        EXPECT_TRUE(WrittenAs(name, text) == WrittenAs(name, text, places)) << testing::PrintToString(name);
    }
}

TEST_F(LibraryStream, ACrWaitsForItsLf) {
    for (const std::u16string name : {u"UTF-8 exact", u"Windows-1252", u"Shift_JIS"}) {
        LibraryCodec codec(name);
        EXPECT_EQ(codec.Decode("abcd\r", kFirstChunk), u"abcd");
        EXPECT_EQ(codec.Decode("\n", kMiddleChunk), u"\r\n");
        EXPECT_EQ(codec.Decode("\r", kMiddleChunk), u"");
        EXPECT_EQ(codec.Decode("\r", kMiddleChunk), u"\r");
        EXPECT_EQ(codec.Decode("", kMiddleChunk), u"");
        EXPECT_EQ(codec.Decode("", kLastChunk), u"\r");
        EXPECT_TRUE(codec.allTaken);
    }
}

TEST_F(LibraryStream, AHighHalfWaitsForItsLowHalf) {
    LibraryCodec codec(u"UTF-16 LE exact");
    EXPECT_EQ(codec.Decode(std::string("a\0\x3D\xD8", 4), kFirstChunk), u"a");
    EXPECT_EQ(codec.Decode(std::string("\0\xDE", 2), kMiddleChunk), u"\xD83D\xDE00");
    EXPECT_EQ(codec.Decode("\x3D\xD8", kMiddleChunk), u"");
    EXPECT_EQ(codec.Decode("", kLastChunk), u"\xD83D");
}

// ---- marks ----

TEST_F(LibraryStream, AMarkIsNoTextAndIsWrittenAgain) {
    const Read read = ReadAs(u"UTF-8 exact with mark",
                             "\xEF\xBB\xBF\xEF\xBB\xBF"
                             "a");
    EXPECT_EQ(read.text,
              u"\xFEFF"
              "a")
        << "one mark only";
    EXPECT_EQ(LibraryNameAt(read.index), u"UTF-8 exact with mark");
    EXPECT_EQ(WrittenAs(u"UTF-16 BE exact with mark", u"a"), std::string("\xFE\xFF\0a", 4));
    EXPECT_EQ(WrittenAs(u"UTF-16 BE exact", u"a"), std::string("\0a", 2));
    EXPECT_EQ(WrittenAs(u"UTF-32 LE exact with mark", u""), std::string("\xFF\xFE\0\0", 4));
    TheOptions().bomSave = 1;
    EXPECT_EQ(WrittenAs(u"UTF-8 exact", u"a"), "a") << "the entry decides, not the options";
    TheOptions().bomSave = 0;
    EXPECT_EQ(WrittenAs(u"UTF-8 exact with mark", u"a"),
              "\xEF\xBB\xBF"
              "a");
}

TEST_F(LibraryStream, AFileGoesToTheEntryThatItsMarkSays) {
    for (const std::u16string form :
         {u"UTF-8 exact", u"UTF-16 LE exact", u"UTF-16 BE exact", u"UTF-32 LE exact", u"UTF-32 BE exact"}) {
        const std::u16string marked = form + u" with mark";
        const Read with = ReadAs(form, WrittenAs(marked, u"text"));
        EXPECT_EQ(with.text, u"text");
        EXPECT_EQ(LibraryNameAt(with.index), marked);
        const Read without = ReadAs(marked, WrittenAs(form, u"text"));
        EXPECT_EQ(without.text, u"text");
        EXPECT_EQ(LibraryNameAt(without.index), form);
        EXPECT_EQ(LibraryNameAt(ReadAs(marked, "").index), form) << "an empty file has no mark";
    }
}

TEST_F(LibraryStream, AMarkStaysInTheTextWhenItsEntryIsNotListed) {
    RegistryMemoryReset();
    ListEncodings({u"UTF-8 exact"});
    LibraryCodec codec(u"UTF-8 exact", 5);
    EXPECT_EQ(codec.Decode("\xEF\xBB\xBF"
                           "ab",
                           kFirstChunk),
              u"\xFEFF"
              "ab");
    EXPECT_EQ(codec.Index(), 5u);
    EXPECT_EQ(WrittenAs(u"UTF-8 exact",
                        u"\xFEFF"
                        "ab"),
              "\xEF\xBB\xBF"
              "ab");
}

// ---- "Auto" ----

TEST_F(LibraryStream, AutoReportsWhatTheFileIs) {
    const auto found = [](const std::string& file) { return LibraryNameAt(ReadAs(u"Auto", file).index); };
    EXPECT_EQ(found(""), u"UTF-8 exact");
    EXPECT_EQ(found("abc"), u"UTF-8 exact");
    EXPECT_EQ(found("\xEF\xBB\xBF"), u"UTF-8 exact with mark");
    EXPECT_EQ(found(std::string("\xFF\xFE"
                                "a\0",
                                4)),
              u"UTF-16 LE exact with mark");
    EXPECT_EQ(found(std::string("a\0b\0", 4)), u"UTF-16 LE exact");
    EXPECT_EQ(found("caf\xE9"), u"Windows-1252");
}

// The end of a file of up to 20,480 bytes is known when it is judged, and makes it another encoding's.
TEST_F(LibraryStream, AutoJudgesAShortFileWithItsEnd) {
    for (const size_t size : {4u, 8192u, 10000u, 20479u, 20480u}) {
        const std::string text(size - 1, 'x');
        for (const size_t cut : {size, size - 1, size / 2}) {
            const Read read = ReadAs(u"Auto", text + "\xC3", {cut});
            EXPECT_EQ(LibraryNameAt(read.index), u"Windows-1252") << size << " " << cut;
            EXPECT_EQ(read.text.back(), u'\u00C3') << size << " " << cut;
        }
    }
}

TEST_F(LibraryStream, AutoJudgesTheFirst20480BytesOfALongFile) {
    const std::string text(20479, 'x');
    for (const std::vector<size_t>& cuts :
         std::vector<std::vector<size_t>>{{}, {20480}, {20479}, {1, 20481}, {20480, 20481}}) {
        EXPECT_EQ(LibraryNameAt(ReadAs(u"Auto", text + "\xFFyy", cuts).index), u"Windows-1252");
        const Read behind = ReadAs(u"Auto", text + "x\xFFy", cuts);
        EXPECT_EQ(LibraryNameAt(behind.index), u"UTF-8 exact");
        EXPECT_EQ(behind.text.substr(20479), (std::u16string{u'x', 0xDCFF, u'y'}));
        const Read across = ReadAs(u"Auto", text + "\xC3\xA9", cuts);
        EXPECT_EQ(LibraryNameAt(across.index), u"UTF-8 exact");
        EXPECT_EQ(across.text.back(), u'\u00E9');
    }
    LibraryCodec atOnce(u"Auto");
    EXPECT_EQ(atOnce.Decode(text + "\xC3\xA9", kLastChunk).back(), u'\u00E9');
}

TEST_F(LibraryStream, AutoSavesANewDocumentAsUtf8WithoutMark) {
    EXPECT_EQ(WrittenAs(u"Auto", u""), "");
    EXPECT_EQ(WrittenAs(u"Auto", u"\u00E9\xD83D\xDE00\n"), "\xC3\xA9\xF0\x9F\x98\x80\n");
    LibraryCodec codec(u"Auto");
    EXPECT_EQ(LibraryNameAt(codec.Index()), u"Auto") << "nothing has been judged";
}

// What is saved under "Auto" is UTF-8: a file read as anything else would be another one after that.
TEST_F(LibraryStream, AutoLosesNothingOfWhatItCannotReport) {
    RegistryMemoryReset();
    ListEncodings({u"Auto"});
    for (const std::string& file :
         {std::string("\xFF\xFE"
                      "a\0",
                      4),
          std::string("\0a\0b", 4), std::string("caf\xE9"), std::string("\xEF\xBB\xBF\xC3\xA9")}) {
        LibraryCodec reader(u"Auto", 5);
        std::u16string text = reader.Decode(file, kFirstChunk);
        text += reader.Decode("", kLastChunk);
        EXPECT_EQ(reader.Index(), 5u);
        LibraryCodec writer(u"Auto", 5);
        EXPECT_EQ(writer.Encode(text, kFirstChunk), file);
        EXPECT_EQ(writer.Encode(u"", kLastChunk), "");
    }
}

// Something was entered in the list while NIRA ran, so that no position is certain.
TEST_F(LibraryStream, AutoLosesNothingWhenTheListHasChanged) {
    const uint32_t index = LibraryIndex(u"Auto");
    ListEncodings({u"A new one"});
    LibraryCodec reader(u"Auto", index);
    std::u16string text = reader.Decode("caf\xE9", kFirstChunk);
    text += reader.Decode("", kLastChunk);
    EXPECT_EQ(reader.Index(), index);
    LibraryCodec writer(u"Auto", index);
    EXPECT_EQ(writer.Encode(text, kFirstChunk), "caf\xE9");
}

// ---- memory ----

TEST_F(LibraryStream, ABufferThatIsLargeEnoughStaysWhereItIs) {
    LibraryCodec codec(u"UTF-8 exact");
    codec.Decode(std::string(20480, 'x'), kFirstChunk);
    const char16_t* text = codec.text;
    codec.Decode(std::string(20480, 'y'), kMiddleChunk);
    EXPECT_EQ(codec.text, text);
    codec.Encode(std::u16string(5000, u'x'), kFirstChunk);
    const uint8_t* bytes = codec.bytes;
    codec.Encode(std::u16string(5000, u'y'), kMiddleChunk);
    EXPECT_EQ(codec.bytes, bytes);
}

// What another buffer holds is not what the one before held.
TEST_F(LibraryStream, AnotherBufferIsGrownAsItNeedsIt) {
    LibraryCodec codec(u"UTF-8 exact");
    codec.Decode(std::string(20480, 'x'), kFirstChunk);
    MemFree(nullptr, codec.text);
    codec.text = static_cast<char16_t*>(MemAlloc(nullptr, 8));
    EXPECT_EQ(codec.Decode(std::string(20480, 'y'), kMiddleChunk), std::u16string(20480, u'y'));
    EXPECT_GE(MemSize(nullptr, codec.text), 40960u);
    codec.Encode(std::u16string(5000, u'x'), kFirstChunk);
    MemFree(nullptr, codec.bytes);
    codec.bytes = static_cast<uint8_t*>(MemAlloc(nullptr, 8));
    EXPECT_EQ(codec.Encode(std::u16string(5000, u'y'), kMiddleChunk), std::string(5000, 'y'));
    EXPECT_GE(MemSize(nullptr, codec.bytes), 5000u);
}

TEST_F(LibraryStream, ALongLineOfAsciiCostsHardlyMoreThanItsBytes) {
    LibraryCodec codec(u"UTF-8 exact");
    EXPECT_EQ(codec.Encode(std::u16string(4000000, u'x'), kFirstChunk).size(), 4000000u);
    EXPECT_LT(MemSize(nullptr, codec.bytes), 4500000u);
}

TEST_F(LibraryStream, RunningOutOfMemoryLeavesNothingBehind) {
    const std::string file = "a\xE9\r" + std::string(21000, 'x');
    const std::u16string text = u"a\xD83D";
    codecs::SetHostAnsiPage(932);
    for (const std::u16string name : {u"Auto", u"UTF-8 exact", u"UTF-32 BE exact"}) {
        bool enough = false;
        for (uint32_t allocation = 1; !enough; ++allocation) {
            FaultScope fault(FaultPoint::kAllocation, {.first = allocation});
            NiraCodec record = {};
            ASSERT_TRUE(codecs::FillCodec(name.c_str(), &record));
            void* state = nullptr;
            char16_t* units = nullptr;
            uint8_t* bytes = nullptr;
            uint32_t count = 0;
            enough = Guarded([&] {
                state = record.create(LibraryIndex(name), GrowForLibrary);
                const auto* source = reinterpret_cast<const uint8_t*>(file.data());
                record.decode(state, source, 3, &units, &count, kFirstChunk, GrowForLibrary);
                record.decode(state, source + 3, 21000, &units, &count, kMiddleChunk, GrowForLibrary);
                record.encode(state, text.data(), 2, &bytes, &count, kFirstChunk, GrowForLibrary);
                record.encode(state, text.data(), 2, &bytes, &count, kLastChunk, GrowForLibrary);
            });
            ASSERT_LT(allocation, 40u);
            EXPECT_TRUE(allocation > 1 || !enough);
            if (state != nullptr) record.destroy(state, GrowForLibrary);
            MemFree(nullptr, units);
            MemFree(nullptr, bytes);
        }
    }
    codecs::SetHostAnsiPage(1252);
}

}  // namespace
}  // namespace nira
