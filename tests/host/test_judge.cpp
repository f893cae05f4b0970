#include "codecs/judge.h"

#include <gtest/gtest.h>

#include <string>

#include "codecs/host/system_host.h"

namespace codecs {
namespace {

class Judge : public testing::Test {
  protected:
    ~Judge() override { SetHostAnsiPage(1252); }

    static std::u16string Of(const std::string& bytes, bool last = true) {
        return JudgeFile(reinterpret_cast<const uint8_t*>(bytes.data()), static_cast<uint32_t>(bytes.size()),
                         last)
            ->name;
    }
    static std::string Utf16(const std::u16string& text, bool bigEndian) {
        std::string bytes;
        for (const char16_t unit : text) {
            const char low = static_cast<char>(unit & 0xFF);
            const char high = static_cast<char>(unit >> 8);
            bytes += bigEndian ? std::string({high, low}) : std::string({low, high});
        }
        return bytes;
    }
};

TEST_F(Judge, AMarkDecides) {
    EXPECT_EQ(Of("\xEF\xBB\xBF\xFF"), u"UTF-8 exact with mark");
    EXPECT_EQ(Of("\xFF\xFE"), u"UTF-16 LE exact with mark");
    EXPECT_EQ(Of("\xFE\xFF"
                 "ab"),
              u"UTF-16 BE exact with mark");
    EXPECT_EQ(Of(std::string("\xFF\xFE\0\0a\0\0\0", 8)), u"UTF-32 LE exact with mark");
    EXPECT_EQ(Of(std::string("\0\0\xFE\xFF\0\0\0a", 8)), u"UTF-32 BE exact with mark");
    EXPECT_EQ(Of(std::string("\xFF\xFE\0", 3)), u"UTF-16 LE exact with mark");
}

TEST_F(Judge, WellFormedTextIsUtf8) {
    EXPECT_EQ(Of(""), u"UTF-8 exact");
    EXPECT_EQ(Of("plain"), u"UTF-8 exact");
    EXPECT_EQ(Of("Stra\xC3\x9F"
                 "e \xF0\x9F\x98\x80"),
              u"UTF-8 exact");
    EXPECT_EQ(Of("cut \xF0\x9F", false), u"UTF-8 exact");
    EXPECT_EQ(Of(std::string("record\0record2", 14)), u"UTF-8 exact") << "zero bytes without a pattern";
}

TEST_F(Judge, Utf16IsKnownByItsPattern) {
    for (const bool bigEndian : {false, true}) {
        const std::u16string name = bigEndian ? u"UTF-16 BE exact" : u"UTF-16 LE exact";
        EXPECT_EQ(Of(Utf16(u"plain words\r\n", bigEndian)), name);
        EXPECT_EQ(Of(Utf16(u"Stra\u00DFe\n", bigEndian)), name);
        EXPECT_EQ(Of(Utf16(u"\u4E2D\u6587\u3002\u65E5\u672C\u8A9E\u3001\n", bigEndian)), name);
        EXPECT_EQ(Of(Utf16(u"\u041F\u0440\u0438\u0432\u0435\u0442 \u043C\u0438\u0440", bigEndian)), name);
        EXPECT_EQ(Of(Utf16(u"\xD83D\xDE00 smile", bigEndian)), name);
        EXPECT_EQ(Of(Utf16(u"cut \xD83D", bigEndian), false), name);
    }
}

// Pairs of such bytes are letters of some alphabet or other.
TEST_F(Judge, LineEndsMakeNoUtf16OfOtherText) {
    EXPECT_EQ(Of("caf\xE9\r\n"), u"Windows-1252");
    EXPECT_EQ(Of("\xE9\tcaf\xE9\n"), u"Windows-1252");
    EXPECT_EQ(Of("caf\xC3\xA9\x1B[0m\n"), u"UTF-8 exact") << "colours of a terminal";
}

TEST_F(Judge, WhatCannotBeUtf16IsNot) {
    EXPECT_EQ(Of(Utf16(u"caf\u00E9", false) + "x"), u"Windows-1252") << "an odd number of bytes";
    std::u16string words;
    while (words.size() < 500) words += u"caf\u00E9 ";
    EXPECT_EQ(Of(Utf16(words, false)), u"UTF-16 LE exact");
    EXPECT_EQ(Of(Utf16(words + u"\xDE00", false)), u"Windows-1252") << "half a pair";
    EXPECT_EQ(Of(Utf16(words + u"\x0001", false)), u"Windows-1252") << "a control character";
    EXPECT_EQ(Of(Utf16(words + u"\xD83D", false)), u"Windows-1252") << "half a pair at the end";
}

TEST_F(Judge, AnythingElseIsTheSystemsPage) {
    EXPECT_EQ(Of("caf\xE9"), u"Windows-1252");
    EXPECT_EQ(Of("cut \xC3"), u"Windows-1252") << "cut by the end of the file";
    SetHostAnsiPage(932);
    EXPECT_EQ(Of("caf\xE9"), u"Shift_JIS");
}

TEST_F(Judge, WithoutAPageOfItsOwnUtf8KeepsTheBytes) {
    SetHostAnsiPage(65001);
    EXPECT_EQ(Of("caf\xE9"), u"UTF-8 exact");
    SetHostAnsiPage(12345);
    EXPECT_EQ(Of("caf\xE9"), u"UTF-8 exact");
}

}  // namespace
}  // namespace codecs
