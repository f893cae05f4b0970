#include "codecs/exact_utf32.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "codecs/units.h"

namespace codecs {
namespace {

constexpr bool kBothOrders[] = {false, true};

std::u16string Decoded(bool bigEndian, const std::string& bytes, bool last = true,
                       uint32_t* taken = nullptr) {
    const std::vector<uint8_t> exact(bytes.begin(), bytes.end());
    std::vector<char16_t> room(bytes.size());
    char16_t* out = room.data();
    const uint32_t done =
        DecodeUtf32(bigEndian, exact.data(), static_cast<uint32_t>(exact.size()), last, &out);
    if (taken != nullptr) *taken = done;
    return {room.data(), out};
}

std::string Encoded(bool bigEndian, const std::u16string& text, bool last = true, uint32_t* taken = nullptr) {
    const std::vector<char16_t> exact(text.begin(), text.end());
    std::vector<uint8_t> room(text.size() * 4);
    uint8_t* out = room.data();
    const uint32_t done =
        EncodeUtf32(bigEndian, exact.data(), static_cast<uint32_t>(exact.size()), last, &out);
    if (taken != nullptr) *taken = done;
    return {room.data(), out};
}

std::string BytesOf(bool bigEndian, uint32_t value) {
    std::string bytes = {static_cast<char>(value & 0xFF), static_cast<char>(value >> 8 & 0xFF),
                         static_cast<char>(value >> 16 & 0xFF), static_cast<char>(value >> 24)};
    if (bigEndian) std::reverse(bytes.begin(), bytes.end());
    return bytes;
}

TEST(ExactUtf32, EveryCodePointIsItsUnitsAndItsBytes) {
    for (const bool bigEndian : kBothOrders) {
        for (uint32_t point = 0; point <= 0x10FFFF; point += point < 0x11000 ? 1 : 37) {
            if (point >= 0xD800 && point <= 0xDFFF) continue;
            std::u16string units = {static_cast<char16_t>(point)};
            if (point > 0xFFFF) {
                units = {static_cast<char16_t>(0xD800 + ((point - 0x10000) >> 10)),
                         static_cast<char16_t>(0xDC00 + ((point - 0x10000) & 0x3FF))};
            }
            ASSERT_EQ(Decoded(bigEndian, BytesOf(bigEndian, point)), units) << std::hex << point;
            ASSERT_EQ(Encoded(bigEndian, units), BytesOf(bigEndian, point)) << std::hex << point;
        }
    }
}

TEST(ExactUtf32, ValuesThatAreNoCharactersComeBack) {
    for (const bool bigEndian : kBothOrders) {
        for (const uint32_t value : {0xD800u, 0xDBFFu, 0xDC00u, 0xDC80u, 0xDFFFu, 0x110000u, 0x1D800u << 8,
                                     0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu, 0x0A0D0A0Du, 0xFFFE0000u}) {
            const std::string alone = BytesOf(bigEndian, value);
            const std::u16string text = Decoded(bigEndian, alone);
            ASSERT_EQ(text.size(), 4u);
            EXPECT_TRUE(std::all_of(text.begin(), text.end(), IsEscape)) << std::hex << value;
            EXPECT_EQ(Encoded(bigEndian, text), alone);
            std::string between = BytesOf(bigEndian, 0x1F600);
            between.append(alone).append(alone).append(BytesOf(bigEndian, 'a'));
            EXPECT_EQ(Encoded(bigEndian, Decoded(bigEndian, between)), between);
        }
    }
}

TEST(ExactUtf32, RandomBytesOfEveryLengthComeBack) {
    std::mt19937 random(22);
    constexpr uint8_t kBytes[] = {0x00, 0x00, 0x00, 0x01, 0x0A, 0x10, 0x11, 0x41, 0xD8, 0xDC, 0xDF, 0xFF};
    for (int round = 0; round < 20000; ++round) {
        std::string bytes(random() % 24, ' ');
        for (char& byte : bytes) byte = static_cast<char>(kBytes[random() % std::size(kBytes)]);
        for (const bool bigEndian : kBothOrders) {
            ASSERT_EQ(Encoded(bigEndian, Decoded(bigEndian, bytes)), bytes) << testing::PrintToString(bytes);
        }
    }
}

TEST(ExactUtf32, TheEndsCutOffBytesComeBack) {
    EXPECT_EQ(Decoded(false, std::string("a\0\0\0\x42\0", 6)), std::u16string(u"a\xDC42\xDC00"));
    EXPECT_EQ(Encoded(false, u"a\xDC42\xDC00"), std::string("a\0\0\0\x42\0", 6));
    uint32_t taken = 0;
    EXPECT_EQ(Decoded(true, std::string("\0\0\0a\0\0", 6), false, &taken), u"a");
    EXPECT_EQ(taken, 4u);
}

TEST(ExactUtf32, AnUnfinishedGroupWaitsForTheNextChunk) {
    uint32_t taken = 0;
    EXPECT_EQ(Encoded(false, u"a\xDC01\xDC02", false, &taken).size(), 4u);
    EXPECT_EQ(taken, 1u);
    EXPECT_EQ(Encoded(false, u"\xDC01\xDC02\xDC03\xDC04", false, &taken), "\x01\x02\x03\x04");
    EXPECT_EQ(taken, 4u);
    EXPECT_EQ(Encoded(false, u"\xD83D", false, &taken), "");
    EXPECT_EQ(taken, 0u);
}

TEST(ExactUtf32, APartOfAGroupDoesNotBringTheRestOutOfStep) {
    const std::string bytes = Encoded(false,
                                      u"\xDC01\xDC02"
                                      "b");
    EXPECT_EQ(bytes.size(), 12u);
    EXPECT_EQ(bytes.substr(8), std::string("b\0\0\0", 4));
    EXPECT_EQ(Encoded(false,
                      u"\xDC01\xDC02\xDC03\xDC04\xDC05"
                      "b")
                  .size(),
              12u);
}

TEST(ExactUtf32, HalvesOfPairsThatNoFileHeldAreValues) {
    EXPECT_EQ(Encoded(true, u"\xD800"), std::string("\0\0\xD8\0", 4));
    EXPECT_EQ(Encoded(true,
                      u"\xD800"
                      "a"),
              std::string("\0\0\xD8\0\0\0\0a", 8));
    EXPECT_EQ(Encoded(true, u"\xDD00"), std::string("\0\0\xDD\0", 4));
}

}  // namespace
}  // namespace codecs
