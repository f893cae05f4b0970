#include "codecs/exact_utf8.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "codecs/units.h"

namespace codecs {
namespace {

std::u16string Decoded(const std::string& bytes, bool last = true, uint32_t* taken = nullptr) {
    const std::vector<uint8_t> exact(bytes.begin(), bytes.end());
    std::vector<char16_t> room(bytes.size() + kUtf8Slack);
    char16_t* out = room.data();
    const uint32_t done = DecodeUtf8(exact.data(), static_cast<uint32_t>(exact.size()), last, &out);
    if (taken != nullptr) *taken = done;
    return {room.data(), out};
}

std::string Encoded(const std::u16string& text, bool last = true, uint32_t* taken = nullptr) {
    const std::vector<char16_t> exact(text.begin(), text.end());
    std::vector<uint8_t> room(text.size() * 3 + kUtf8Slack);
    uint8_t* out = room.data();
    const uint32_t done = EncodeUtf8(exact.data(), static_cast<uint32_t>(exact.size()), last, &out);
    if (taken != nullptr) *taken = done;
    return {room.data(), out};
}

// ---- another way to say what UTF-8 is ----

std::string SequenceOf(uint32_t point) {
    const auto trail = [&](int shift) { return static_cast<char>(0x80 | (point >> shift & 0x3F)); };
    if (point < 0x80) return {static_cast<char>(point)};
    if (point < 0x800) return {static_cast<char>(0xC0 | point >> 6), trail(0)};
    if (point < 0x10000) return {static_cast<char>(0xE0 | point >> 12), trail(6), trail(0)};
    return {static_cast<char>(0xF0 | point >> 18), trail(12), trail(6), trail(0)};
}

std::u16string UnitsOf(uint32_t point) {
    if (point < 0x10000) return {static_cast<char16_t>(point)};
    return {static_cast<char16_t>(0xD800 + ((point - 0x10000) >> 10)),
            static_cast<char16_t>(0xDC00 + ((point - 0x10000) & 0x3FF))};
}

// The character that the first `length` bytes encode, if they are the one way to encode it.
bool IsSequence(const std::string& bytes, size_t at, size_t length, uint32_t* point) {
    if (at + length > bytes.size()) return false;
    *point = static_cast<uint8_t>(bytes[at]);
    if (length > 1) *point &= 0x7Fu >> length;
    for (size_t i = 1; i < length; ++i) *point = *point << 6 | (static_cast<uint8_t>(bytes[at + i]) & 0x3Fu);
    if (*point > 0x10FFFF || (*point >= 0xD800 && *point <= 0xDFFF)) return false;
    return bytes.compare(at, length, SequenceOf(*point)) == 0;
}

std::u16string NaivelyDecoded(const std::string& bytes) {
    std::u16string text;
    for (size_t at = 0; at < bytes.size();) {
        size_t length = 1;
        uint32_t point = 0;
        while (length <= 4 && !IsSequence(bytes, at, length, &point)) ++length;
        if (length <= 4) {
            text += UnitsOf(point);
            at += length;
        } else {
            text += static_cast<char16_t>(0xDC00 + static_cast<uint8_t>(bytes[at++]));
        }
    }
    return text;
}

std::string Hex(const std::string& bytes) {
    std::string text;
    for (const char byte : bytes) {
        char digits[4];
        std::snprintf(digits, sizeof(digits), "%02X ", static_cast<uint8_t>(byte));
        text += digits;
    }
    return text;
}

// Both directions, alone and within a block of ASCII, where other code is at work.
bool IsExact(const std::string& bytes) {
    if (Decoded(bytes) != NaivelyDecoded(bytes) || Encoded(Decoded(bytes)) != bytes) return false;
    const std::string inside = "0123456789" + bytes + "0123456789abcdefghi";
    return Decoded(inside) == u"0123456789" + NaivelyDecoded(bytes) + u"0123456789abcdefghi" &&
           Encoded(Decoded(inside)) == inside;
}

// Every value at which some rule changes.
constexpr uint8_t kEdges[] = {0x00, 0x0A, 0x0D, 0x41, 0x7F, 0x80, 0x8F, 0x90, 0x9F, 0xA0,
                              0xBF, 0xC0, 0xC1, 0xC2, 0xDF, 0xE0, 0xE1, 0xEC, 0xED, 0xEE,
                              0xEF, 0xF0, 0xF1, 0xF3, 0xF4, 0xF5, 0xFE, 0xFF};

TEST(ExactUtf8, EveryCodePointIsItsUnitsAndItsBytes) {
    for (uint32_t point = 0; point <= 0x10FFFF; ++point) {
        if (point >= 0xD800 && point <= 0xDFFF) continue;
        ASSERT_EQ(Decoded(SequenceOf(point)), UnitsOf(point)) << std::hex << point;
        ASSERT_EQ(Encoded(UnitsOf(point)), SequenceOf(point)) << std::hex << point;
    }
}

TEST(ExactUtf8, EveryPairOfBytesComesBack) {
    for (uint32_t pair = 0; pair < 0x10000; ++pair) {
        const std::string bytes = {static_cast<char>(pair >> 8), static_cast<char>(pair & 0xFF)};
        ASSERT_TRUE(IsExact(bytes)) << Hex(bytes);
    }
}

TEST(ExactUtf8, EveryBeginningOfThreeBytesComesBack) {
    for (uint32_t pair = 0x8000; pair < 0x10000; ++pair) {
        for (const char third : {'A', '\x7F', '\x80', '\xBF', '\xC0', '\xE3'}) {
            const std::string bytes = {static_cast<char>(pair >> 8), static_cast<char>(pair & 0xFF), third};
            ASSERT_TRUE(Decoded(bytes) == NaivelyDecoded(bytes)) << Hex(bytes);
            ASSERT_TRUE(Encoded(Decoded(bytes)) == bytes) << Hex(bytes);
        }
    }
}

TEST(ExactUtf8, EverySequenceOfFourEdgesComesBack) {
    std::string bytes(4, ' ');
    for (const uint8_t first : kEdges) {
        for (const uint8_t second : kEdges) {
            for (const uint8_t third : kEdges) {
                for (const uint8_t fourth : kEdges) {
                    bytes = {static_cast<char>(first), static_cast<char>(second), static_cast<char>(third),
                             static_cast<char>(fourth)};
                    ASSERT_TRUE(Decoded(bytes) == NaivelyDecoded(bytes)) << Hex(bytes);
                    ASSERT_TRUE(Encoded(Decoded(bytes)) == bytes) << Hex(bytes);
                }
            }
        }
    }
}

TEST(ExactUtf8, RandomBytesComeBack) {
    std::mt19937 random(20);
    for (int round = 0; round < 2000; ++round) {
        std::string bytes(random() % 200, ' ');
        for (char& byte : bytes) {
            byte = static_cast<char>(random() % 3 == 0 ? random() : kEdges[random() % std::size(kEdges)]);
        }
        ASSERT_TRUE(IsExact(bytes)) << Hex(bytes);
    }
}

TEST(ExactUtf8, BytesThatAreNoUtf8AreEscapes) {
    EXPECT_EQ(Decoded("\xFF"), u"\xDCFF");
    EXPECT_EQ(Decoded("\xC0\x80"), u"\xDCC0\xDC80");
    EXPECT_EQ(Decoded("\xED\xA0\x80"), u"\xDCED\xDCA0\xDC80") << "an encoded surrogate";
    EXPECT_EQ(Decoded("\xF4\x90\x80\x80"), u"\xDCF4\xDC90\xDC80\xDC80") << "beyond U+10FFFF";
    EXPECT_EQ(Decoded("\xE2\x82"), u"\xDCE2\xDC82") << "cut off by the end of the file";
    EXPECT_EQ(Decoded("\xE2\x82"
                      "A"),
              u"\xDCE2\xDC82"
              "A");
}

TEST(ExactUtf8, ACutSequenceWaits) {
    uint32_t taken = 0;
    EXPECT_EQ(Decoded("a\xF0\x9F\x98", false, &taken), u"a");
    EXPECT_EQ(taken, 1u);
    EXPECT_EQ(Decoded("a\xF0\x9F\x41", false, &taken),
              u"a\xDCF0\xDC9F"
              "A");
    EXPECT_EQ(taken, 4u) << "it can no longer become a character";
    EXPECT_EQ(Decoded("a\xF0\x8F", false, &taken), u"a\xDCF0\xDC8F") << "overlong, whatever follows";
    EXPECT_EQ(Encoded(u"a\xD83D", false, &taken), "a");
    EXPECT_EQ(taken, 1u);
}

// Text that came from elsewhere: what is written must at least be kept from then on.
TEST(ExactUtf8, HalvesOfPairsThatNoFileHeldBecomeThreeBytes) {
    EXPECT_EQ(Encoded(u"\xD800"), "\xED\xA0\x80");
    EXPECT_EQ(Encoded(u"\xD83D"
                      "a"),
              "\xED\xA0\xBD"
              "a");
    EXPECT_EQ(Encoded(u"\xDC7F"), "\xED\xB1\xBF") << "no byte below 80 is ever escaped";
    EXPECT_EQ(Encoded(u"\xDD00"), "\xED\xB4\x80");
    EXPECT_EQ(Encoded(u"\xDC80"), "\x80");
    for (const char16_t half : std::u16string(u"\xD800\xDBFF\xDC7F\xDD00\xDFFF")) {
        const std::string written = Encoded({half});
        EXPECT_EQ(Encoded(Decoded(written)), written);
    }
}

TEST(ExactUtf8, KnowsWellFormedText) {
    EXPECT_TRUE(IsUtf8(nullptr, 0, true));
    std::mt19937 random(21);
    for (int round = 0; round < 20000; ++round) {
        std::string bytes = round % 2 == 0 ? "" : "sixteen ordinary characters ";
        for (size_t i = random() % 6; i > 0; --i) {
            bytes += random() % 2 == 0
                         ? SequenceOf(static_cast<uint32_t>(random() % 0xD800))
                         : std::string(1, static_cast<char>(kEdges[random() % std::size(kEdges)]));
        }
        const std::u16string text = NaivelyDecoded(bytes);
        bool clean = true;
        for (size_t i = 0; i < text.size(); ++i) {
            if (IsHigh(text[i])) {
                ++i;
            } else if (IsLow(text[i])) {
                clean = false;
            }
        }
        ASSERT_EQ(
            IsUtf8(reinterpret_cast<const uint8_t*>(bytes.data()), static_cast<uint32_t>(bytes.size()), true),
            clean)
            << Hex(bytes);
    }
    const uint8_t cut[] = {'a', 0xE2, 0x82};
    EXPECT_TRUE(IsUtf8(cut, 3, false));
    EXPECT_FALSE(IsUtf8(cut, 3, true));
}

}  // namespace
}  // namespace codecs
