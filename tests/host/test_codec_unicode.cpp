#include "files/codec_unicode.h"

#include <random>

#include "host/codec_stream.h"

namespace nira {
namespace {

class UnicodeCodec : public ServicesTest {};

// ---- byte-order marks ----

TEST_F(UnicodeCodec, SwitchAtAMarkWhateverWasAskedFor) {
    for (uint32_t asked = kCodecUnicode; asked <= kCodecUtf8; ++asked) {
        Stream be(asked);
        EXPECT_EQ(be.Decode(std::string("\xFE\xFF\0A", 4)), u"A");
        EXPECT_EQ(be.consumed, 4u);
        EXPECT_EQ(be.Index(), kCodecUtf16Be);
        Stream le(asked);
        EXPECT_EQ(le.Decode(std::string("\xFF\xFE"
                                        "A\0",
                                        4)),
                  u"A");
        EXPECT_EQ(le.Index(), kCodecUtf16Le);
        Stream utf8(asked);
        EXPECT_EQ(utf8.Decode("\xEF\xBB\xBF"
                              "A"),
                  u"A");
        EXPECT_EQ(utf8.consumed, 4u);
        EXPECT_EQ(utf8.Index(), kCodecUtf8);
    }
}

TEST_F(UnicodeCodec, LookForAMarkInTheFirstChunkOnly) {
    Stream stream(kCodecUtf8);
    EXPECT_EQ(stream.Decode("a"), u"a");
    EXPECT_EQ(stream.Decode("\xEF\xBB\xBF"
                            "b",
                            kMiddleChunk),
              u"\uFEFFb");
    EXPECT_EQ(stream.Decode("\xEF\xBB\xBF", kLastChunk), u"\uFEFF");
    EXPECT_EQ(stream.Index(), kCodecUtf8);
}

TEST_F(UnicodeCodec, TakeAMarkWithNothingBehindIt) {
    Stream stream(kCodecUtf16Be);
    EXPECT_EQ(stream.Decode("\xEF\xBB\xBF"), u"");
    EXPECT_EQ(stream.consumed, 3u);
    EXPECT_EQ(stream.Index(), kCodecUtf8);
}

TEST_F(UnicodeCodec, TakeHalfAMarkForText) {
    EXPECT_EQ(Stream(kCodecUtf8)
                  .Decode("\xEF\xBB"
                          "abcd"),
              u"\u00EF\u00BB"
              u"abcd");
    Stream utf16(kCodecUtf16Le);
    EXPECT_EQ(utf16.Decode("\xFE"), u"");
    EXPECT_EQ(utf16.Index(), kCodecUtf16Le);
}

TEST_F(UnicodeCodec, UnicodeBecomesTheHostsOrderAtTheFirstChunk) {
    Stream stream(kCodecUnicode);
    EXPECT_EQ(stream.Decode(std::string("A\0", 2)), u"A");
    EXPECT_EQ(stream.Index(), kCodecUtf16Le);
    Stream untouched(kCodecUnicode);
    EXPECT_EQ(untouched.Decode("", kLastChunk), u"");
    EXPECT_EQ(untouched.Index(), kCodecUnicode);
}

// ---- UTF-16 ----

TEST_F(UnicodeCodec, Utf16SwapsForTheOtherOrder) {
    EXPECT_EQ(Stream(kCodecUtf16Be).Decode(std::string("\0A\x20\xAC", 4)), u"A\u20AC");
    EXPECT_EQ(Stream(kCodecUtf16Le).Decode(std::string("A\0\xAC\x20", 4)), u"A\u20AC");
}

TEST_F(UnicodeCodec, Utf16LeavesAnOddByteForTheNextChunk) {
    Stream stream(kCodecUtf16Le);
    EXPECT_EQ(stream.Decode(std::string("A\0B", 3)), u"A");
    EXPECT_EQ(stream.consumed, 2u);
    EXPECT_EQ(stream.Decode("B", kMiddleChunk), u"");
    EXPECT_EQ(stream.consumed, 0u);
}

TEST_F(UnicodeCodec, Utf16CompletesTheLastOddByteFromTheOutputBuffer) {
    Stream le(kCodecUtf16Le);
    le.Decode(std::string("\x34\x12\x78\x56", 4));
    EXPECT_EQ(le.Decode("\x99", kLastChunk), u"\u1299");
    EXPECT_EQ(le.consumed, 1u);
    Stream be(kCodecUtf16Be);
    be.Decode(std::string("\x12\x34\x56\x78", 4));
    EXPECT_EQ(be.Decode("\x99", kLastChunk), u"\u9912");
    Stream fresh(kCodecUtf16Le);
    EXPECT_EQ(fresh.Decode("\x99", kLastChunk), u"\u0099") << "a new buffer is zeroed";
}

TEST_F(UnicodeCodec, Utf16KeepsEveryUnit) {
    std::u16string all;
    for (uint32_t unit = 0; unit < 0x10000; ++unit) all.push_back(static_cast<char16_t>(unit));
    TheOptions().bomSave = 0;
    for (const uint32_t index : {kCodecUtf16Le, kCodecUtf16Be}) {
        Stream stream(index);
        const std::string bytes = stream.Encode(all);
        ASSERT_EQ(bytes.size(), all.size() * 2);
        EXPECT_EQ(stream.Decode(bytes, kMiddleChunk), all);
    }
}

// ---- UTF-8, decoding ----

// A sequence followed by enough bytes for every lead byte.
std::u16string DecodeUtf8(const std::string& bytes) {
    const std::u16string text = Stream(kCodecUtf8).Decode(bytes + "......");
    return text.substr(0, text.size() - 6);
}

TEST_F(UnicodeCodec, Utf8DecodesOneToThreeBytes) {
    EXPECT_EQ(DecodeUtf8("A\x7F"), u"A\u007F");
    EXPECT_EQ(DecodeUtf8("\xC2\x80\xC3\xA9\xDF\xBF"), u"\u0080\u00E9\u07FF");
    EXPECT_EQ(DecodeUtf8("\xE0\xA0\x80\xE2\x82\xAC\xEF\xBF\xBF"), u"\u0800\u20AC\uFFFF");
}

TEST_F(UnicodeCodec, Utf8GivesTheReplacementForWhatAUnitCannotHold) {
    EXPECT_EQ(DecodeUtf8("\xF0\x9F\x98\x80"), u"\uFFFD");
    EXPECT_EQ(DecodeUtf8("\xF0\x90\x80\x80"), u"\uFFFD");
    EXPECT_EQ(DecodeUtf8("\xF4\x8F\xBF\xBF"), u"\uFFFD");
    EXPECT_EQ(DecodeUtf8("\xF4\xBF\xBF\xBF"), u"\uFFFD");
    EXPECT_EQ(DecodeUtf8("\xED\xA0\x80"), u"\uFFFD");
    EXPECT_EQ(DecodeUtf8("\xED\xBF\xBF"), u"\uFFFD");
    EXPECT_EQ(DecodeUtf8("\xED\x9F\xBF\xEE\x80\x80"), u"\uD7FF\uE000");
}

TEST_F(UnicodeCodec, Utf8AcceptsOverlongFormsOfThreeAndFourBytes) {
    EXPECT_EQ(DecodeUtf8("\xE0\x80\x80"), std::u16string(1, u'\0'));
    EXPECT_EQ(DecodeUtf8("\xE0\x81\x81"), u"A");
    EXPECT_EQ(DecodeUtf8("\xF0\x80\x81\x81"), u"A");
    EXPECT_EQ(DecodeUtf8("\xF0\x8D\xA0\x80"), u"\uFFFD");
}

TEST_F(UnicodeCodec, Utf8GivesTheByteItselfForWhatIsInvalid) {
    EXPECT_EQ(DecodeUtf8("\xC0\x80"), u"\u00C0\u0080");
    EXPECT_EQ(DecodeUtf8("\xC1\xBF"), u"\u00C1\u00BF");
    EXPECT_EQ(DecodeUtf8("\x80\xBF"), u"\u0080\u00BF");
    EXPECT_EQ(DecodeUtf8("\xFF"), u"\u00FF");
    EXPECT_EQ(DecodeUtf8("\xF5\x80\x80\x80"), u"\u00F5\u0080\u0080\u0080");
    EXPECT_EQ(DecodeUtf8("\xF8\x88\x80\x80\x80"), u"\u00F8\u0088\u0080\u0080\u0080");
    EXPECT_EQ(DecodeUtf8("\xFC\x84\x80\x80\x80\x80"), u"\u00FC\u0084\u0080\u0080\u0080\u0080");
    EXPECT_EQ(DecodeUtf8("\xC3"
                         "A"),
              u"\u00C3"
              u"A");
    EXPECT_EQ(DecodeUtf8("\xE2\x82"
                         "A"),
              u"\u00E2\u0082"
              u"A");
    EXPECT_EQ(DecodeUtf8("\xE2"
                         "A\xAC"),
              u"\u00E2"
              u"A\u00AC");
    EXPECT_EQ(DecodeUtf8("\xF0\x9F\x98"
                         "A"),
              u"\u00F0\u009F\u0098"
              u"A");
    EXPECT_EQ(DecodeUtf8("\xE2\xE2\x82\xAC"), u"\u00E2\u20AC");
}

TEST_F(UnicodeCodec, Utf8StopsBeforeASequenceThatTheChunkDoesNotHoldWhole) {
    struct Case {
        std::string bytes;
        uint32_t consumed;
    };
    const Case cases[] = {{"ab\xC3", 2},      {"ab\xE2\x82", 2}, {"ab\xF0\x9F\x98", 2}, {"ab\xFF", 2},
                          {"ab\xFF.....", 8}, {"ab\xFF....", 2}, {"ab\xF8...", 2},      {"ab\xC0", 2},
                          {"ab\xC3\xA9", 4},  {"ab\x80", 3}};
    for (const Case& c : cases) {
        for (const int32_t chunk : {kFirstChunk, kMiddleChunk, kLastChunk}) {
            Stream stream(kCodecUtf8);
            stream.Decode(c.bytes, chunk);
            EXPECT_EQ(stream.consumed, c.consumed) << testing::PrintToString(c.bytes) << " chunk " << chunk;
        }
    }
}

// The rules once more, one byte at a time and without any fast way.
std::u16string PlainDecode(const std::string& source, uint32_t* consumed) {
    std::u16string text;
    size_t at = 0;
    const auto byte = [&](size_t i) { return static_cast<uint8_t>(source[i]); };
    while (at < source.size()) {
        const uint32_t lead = byte(at);
        const size_t trail = lead < 0xC0   ? 0
                             : lead < 0xE0 ? 1
                             : lead < 0xF0 ? 2
                             : lead < 0xF8 ? 3
                             : lead < 0xFC ? 4
                                           : 5;
        if (at + trail >= source.size()) break;
        bool valid = trail < 4 && !(lead >= 0x80 && lead <= 0xC1) && lead <= 0xF4;
        const uint32_t leadMask[] = {0x7F, 0x1F, 0x0F, 0x07, 0, 0};
        uint32_t value = lead & leadMask[trail];
        for (size_t i = 1; i <= trail; ++i) {
            valid = valid && byte(at + i) >= 0x80 && byte(at + i) <= 0xBF;
            value = value * 64 + byte(at + i) % 64;
        }
        if (valid && (value > 0xFFFF || (value >= 0xD800 && value < 0xE000))) value = 0xFFFD;
        text.push_back(static_cast<char16_t>(valid ? value : lead));
        at += valid ? trail + 1 : 1;
    }
    *consumed = static_cast<uint32_t>(at);
    return text;
}

TEST_F(UnicodeCodec, Utf8DecodesRandomBytesByItsRules) {
    std::mt19937 random(4711);
    // Chosen so that whole sequences, broken ones and runs of ASCII of every length come about.
    const std::string leads = "\x80\xBF\xC0\xC2\xDF\xE0\xE2\xED\xEF\xF0\xF4\xF5\xF8\xFC\xFF";
    for (int round = 0; round < 20000; ++round) {
        std::string bytes;
        const size_t size = random() % 60;
        while (bytes.size() < size) {
            const auto choice = static_cast<uint32_t>(random() % 8);
            if (choice == 0) {
                bytes.append(random() % 40, static_cast<char>('a' + random() % 26));
            } else if (choice < 4) {
                bytes.push_back(leads[random() % leads.size()]);
            } else {
                bytes.push_back(static_cast<char>(0x80 + random() % 64));
            }
        }
        Stream stream(kCodecUtf8);
        uint32_t consumed = 0;
        const std::u16string expected = PlainDecode(bytes, &consumed);
        ASSERT_EQ(stream.Decode(bytes, kMiddleChunk), expected) << testing::PrintToString(bytes);
        ASSERT_EQ(stream.consumed, consumed) << testing::PrintToString(bytes);
    }
}

// ---- encoding ----

TEST_F(UnicodeCodec, Utf8EncodesEveryUnitByItself) {
    TheOptions().bomSave = 0;
    Stream stream(kCodecUtf8);
    EXPECT_EQ(stream.Encode(u"A\u007F\u0080\u00E9\u07FF\u0800\u20AC\uFFFF"),
              "A\x7F\xC2\x80\xC3\xA9\xDF\xBF\xE0\xA0\x80\xE2\x82\xAC\xEF\xBF\xBF");
    const std::u16string pair = {static_cast<char16_t>(0xD83D), static_cast<char16_t>(0xDE00)};
    EXPECT_EQ(stream.Encode(pair), "\xED\xA0\xBD\xED\xB8\x80");
    EXPECT_EQ(stream.Encode(std::u16string(3, u'\0')), std::string(3, '\0'));
}

TEST_F(UnicodeCodec, Utf8EncodesAForeignUnitAnywhereInALongRun) {
    TheOptions().bomSave = 0;
    for (size_t place = 0; place < 50; ++place) {
        std::u16string text(50, u'a');
        std::string bytes(50, 'a');
        text[place] = u'\u00E9';
        bytes.replace(place, 1, "\xC3\xA9");
        EXPECT_EQ(Stream(kCodecUtf8).Encode(text), bytes);
        EXPECT_EQ(Stream(kCodecUtf8).Decode(bytes), text);
    }
}

TEST_F(UnicodeCodec, Utf8ComesBackAsItWas) {
    TheOptions().bomSave = 0;
    std::mt19937 random(99);
    for (int round = 0; round < 3000; ++round) {
        std::u16string text;
        const size_t size = random() % 80;
        while (text.size() < size) {
            const auto choice = static_cast<uint32_t>(random() % 4);
            auto unit = static_cast<uint32_t>(random() % (choice == 0   ? 0x10000
                                                          : choice == 1 ? 0x900
                                                                        : 0x7F));
            if (unit >= 0xD800 && unit < 0xE000) unit = 0xFFFD;
            text.append(choice == 3 ? random() % 40 : 1, static_cast<char16_t>(unit));
        }
        Stream stream(kCodecUtf8);
        ASSERT_EQ(stream.Decode(stream.Encode(text), kMiddleChunk), text);
    }
}

TEST_F(UnicodeCodec, WriteAMarkAtTheStartWhenTheOptionsAskForIt) {
    TheOptions().bomSave = 1;
    struct Case {
        uint32_t index;
        std::string bytes;
    };
    const Case cases[] = {{kCodecAnsi, "A"},
                          {kCodecUnicode, std::string("\xFF\xFE"
                                                      "A\0",
                                                      4)},
                          {kCodecUtf16Le, std::string("\xFF\xFE"
                                                      "A\0",
                                                      4)},
                          {kCodecUtf16Be, std::string("\xFE\xFF\0A", 4)},
                          {kCodecUtf8,
                           "\xEF\xBB\xBF"
                           "A"}};
    for (const Case& c : cases) {
        const std::string plain =
            c.index == kCodecAnsi ? c.bytes : c.bytes.substr(c.index == kCodecUtf8 ? 3 : 2);
        Stream stream(c.index);
        EXPECT_EQ(stream.Encode(u"A", kFirstChunk), c.bytes);
        EXPECT_EQ(stream.Encode(u"A", kMiddleChunk), plain);
        EXPECT_EQ(stream.Encode(u"A", kLastChunk), plain);
    }
}

TEST_F(UnicodeCodec, WriteTheMarkAloneForAnEmptyFirstChunk) {
    TheOptions().bomSave = 1;
    EXPECT_EQ(Stream(kCodecUtf16Be).Encode(u""), "\xFE\xFF");
    EXPECT_EQ(Stream(kCodecUtf8).Encode(u""), "\xEF\xBB\xBF");
    EXPECT_EQ(Stream(kCodecAnsi).Encode(u""), "");
    TheOptions().bomSave = 0;
    EXPECT_EQ(Stream(kCodecUtf16Be).Encode(u""), "");
    EXPECT_EQ(Stream(kCodecUtf8).Encode(u""), "");
}

TEST_F(UnicodeCodec, WriteNoMarkWhenTheOptionsDoNotAskForIt) {
    TheOptions().bomSave = 0;
    Stream stream(kCodecUnicode);
    EXPECT_EQ(stream.Encode(u"A\u20AC"), std::string("A\0\xAC\x20", 4));
    EXPECT_EQ(stream.Index(), kCodecUtf16Le);
}

}  // namespace
}  // namespace nira
