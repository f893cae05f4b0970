#include "codecs/code_pages.h"

#include <random>

#include "host/files_support.h"
#include "host/library_codec.h"

namespace nira {
namespace {

class CodePages : public ServicesTest {
  protected:
    ~CodePages() override { codecs::SetHostAnsiPage(1252); }

    // Strict, as "Auto" reads: the name of the page's own entry decides how it is written.
    static std::u16string StrictlyRead(uint32_t page, const std::string& bytes) {
        codecs::PageReader* reader = codecs::CreatePageReader(page, true, GrowForLibrary);
        std::vector<char16_t> room(bytes.size() + 1);
        char16_t* out = room.data();
        codecs::DecodePage(reader, reinterpret_cast<const uint8_t*>(bytes.data()),
                           static_cast<uint32_t>(bytes.size()), true, &out, GrowForLibrary);
        codecs::DestroyPageReader(reader, GrowForLibrary);
        return {room.data(), out};
    }
    static std::string Written(uint32_t page, const std::u16string& text) {
        std::vector<uint8_t> room(text.size() * 4 + 1);
        uint8_t* out = room.data();
        codecs::EncodePage(page, text.data(), static_cast<uint32_t>(text.size()), true, &out);
        return {room.data(), out};
    }
};

TEST_F(CodePages, CharactersAreThoseOfThePage) {
    EXPECT_EQ(ReadAs(u"Windows-1251", "\xCF\xF0").text, u"\u041F\u0440");
    EXPECT_EQ(ReadAs(u"KOI8-R", "\xF0\xD2").text, u"\u041F\u0440");
    EXPECT_EQ(ReadAs(u"CP437", "\x81").text, u"\u00FC");
    EXPECT_EQ(ReadAs(u"Shift_JIS", "a\x93\xFA\xB1").text, u"a\u65E5\uFF71");
    EXPECT_EQ(ReadAs(u"EUC-JP", "\xC6\xFC\x8F\xB0\xA1").text, u"\u65E5\u4E02");
    EXPECT_EQ(ReadAs(u"GB18030", "\xD6\xD0\x94\x39\xFC\x36").text, u"\u4E2D\xD83D\xDE00");
    EXPECT_EQ(ReadAs(u"Big5", "\xA4\xA4").text, u"\u4E2D");
    EXPECT_EQ(WrittenAs(u"Windows-1251", u"\u041F\u0440"), "\xCF\xF0");
    EXPECT_EQ(WrittenAs(u"GB18030", u"\u4E2D\xD83D\xDE00"), "\xD6\xD0\x94\x39\xFC\x36");
    EXPECT_EQ(WrittenAs(u"Windows-1252", u"a\u4E2D\xD83D\xDE00\xD800z"), "a???z") << "what the page has not";
}

TEST_F(CodePages, EverySingleByteComesBack) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
    for (const std::u16string name :
         {u"Windows-1251", u"Windows-1252", u"Windows-1253", u"CP437", u"CP850", u"ISO-8859-1", u"KOI8-R"}) {
        const Read read = ReadAs(name, all);
        EXPECT_EQ(read.text.size(), 256u);
        EXPECT_EQ(WrittenAs(name, read.text), all);
    }
}

TEST_F(CodePages, BytesThatAreNoCharactersAreKept) {
    EXPECT_EQ(ReadAs(u"Windows-1252", "a\x81").text, u"a\xDC81");
    EXPECT_EQ(ReadAs(u"Shift_JIS", "\x93\xFA\x81\n\x93\xFA").text, u"\u65E5\xDC81\n\u65E5")
        << "a line end is never half of a character";
    EXPECT_EQ(ReadAs(u"Shift_JIS", "\x93").text, u"\xDC93");
    EXPECT_EQ(WrittenAs(u"Shift_JIS", u"\u65E5\xDC81\n\u65E5\xDC93"), "\x93\xFA\x81\n\x93\xFA\x93");
}

// The mathematical sign has two codes in this page, and the system writes the other one.
TEST_F(CodePages, OnlyAStrictReaderEscapesASecondCodeOfACharacter) {
    const std::string bytes = "a\x87\x90z";
    EXPECT_EQ(ReadAs(u"Shift_JIS", bytes).text, u"a\u2252z");
    EXPECT_EQ(WrittenAs(u"Shift_JIS", u"a\u2252z"), "a\x81\xE0z");
    EXPECT_EQ(StrictlyRead(932, bytes), u"a\xDC87\xDC90z");
    EXPECT_EQ(Written(932, u"a\xDC87\xDC90z"), bytes);
}

TEST_F(CodePages, AStrictReaderLosesNothing) {
    std::mt19937 random(23);
    for (const uint32_t page : {437u, 932u, 936u, 949u, 950u, 1252u, 1253u, 51932u, 54936u}) {
        for (int round = 0; round < 300; ++round) {
            std::string bytes(random() % 40, ' ');
            for (char& byte : bytes) {
                byte = static_cast<char>(random());
                if (random() % 2 == 0) byte = "\x81\x8F\xA4\xFE\x30\x5C\n"[random() % 7];
            }
            ASSERT_EQ(Written(page, StrictlyRead(page, bytes)), bytes)
                << page << " " << testing::PrintToString(bytes);
        }
    }
}

TEST_F(CodePages, ACharacterMayBeCutAnywhere) {
    for (const std::u16string name : {u"Shift_JIS", u"EUC-JP", u"GB18030", u"Windows-949"}) {
        const std::u16string text =
            name == u"GB18030" ? u"\u65E5a\xD83D\xDE00\u65E5\r\n\u65E5" : u"\u65E5a\u65E5\r\n\u65E5";
        const std::string bytes = WrittenAs(name, text);
        for (size_t place = 0; place <= bytes.size(); ++place) {
            const Read read = ReadAs(name, bytes, {place});
            EXPECT_EQ(read.text, text) << place;
            EXPECT_TRUE(read.allTaken);
        }
        for (size_t place = 0; place <= text.size(); ++place) {
            EXPECT_EQ(WrittenAs(name, text, {place}), bytes) << place;
        }
    }
}

TEST_F(CodePages, AutoReadsTheSystemsPageStrictly) {
    ListEncodings(LibraryNames());
    codecs::SetHostAnsiPage(932);
    const Read read = ReadAs(u"Auto", "a\x87\x90z\xFF");
    EXPECT_EQ(LibraryNameAt(read.index), u"Shift_JIS");
    EXPECT_EQ(read.text, u"a\xDC87\xDC90z\xDCFF");
}

}  // namespace
}  // namespace nira
