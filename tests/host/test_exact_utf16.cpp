#include "codecs/exact_utf16.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace codecs {
namespace {

std::u16string Decoded(bool bigEndian, const std::string& bytes, bool last = true,
                       uint32_t* taken = nullptr) {
    const std::vector<uint8_t> exact(bytes.begin(), bytes.end());
    std::vector<char16_t> room(bytes.size() / 2 + 1);
    char16_t* out = room.data();
    const uint32_t done =
        DecodeUtf16(bigEndian, exact.data(), static_cast<uint32_t>(exact.size()), last, &out);
    if (taken != nullptr) *taken = done;
    return {room.data(), out};
}

std::string Encoded(bool bigEndian, const std::u16string& text) {
    std::vector<uint8_t> room(text.size() * 2);
    uint8_t* out = room.data();
    EncodeUtf16(bigEndian, text.data(), static_cast<uint32_t>(text.size()), &out);
    return {room.data(), out};
}

TEST(ExactUtf16, EveryUnitIsItsTwoBytes) {
    std::u16string text;
    std::string little;
    std::string big;
    for (uint32_t unit = 0; unit < 0x10000; ++unit) {
        text += static_cast<char16_t>(unit);
        little += {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)};
        big += {static_cast<char>(unit >> 8), static_cast<char>(unit & 0xFF)};
    }
    EXPECT_EQ(Decoded(false, little), text);
    EXPECT_EQ(Decoded(true, big), text);
    EXPECT_EQ(Encoded(false, text), little);
    EXPECT_EQ(Encoded(true, text), big);
}

// The eight units that are swapped at once, and what is left over, at every place of a buffer.
TEST(ExactUtf16, EveryLengthIsConvertedWhole) {
    std::u16string text;
    for (char16_t unit = 0x4100; text.size() < 40; ++unit) {
        const std::string bytes = Encoded(true, text);
        for (size_t i = 0; i < text.size(); ++i) {
            ASSERT_EQ(bytes[2 * i], 0x41);
            ASSERT_EQ(bytes[2 * i + 1], static_cast<char>(i));
        }
        ASSERT_EQ(Decoded(true, bytes), text);
        ASSERT_EQ(Encoded(true, Decoded(true, " " + bytes, false)).substr(0, bytes.size()),
                  (" " + bytes).substr(0, bytes.size()));
        text += unit;
    }
}

TEST(ExactUtf16, AnOddByteWaitsAndIsCompletedAtTheEnd) {
    uint32_t taken = 0;
    EXPECT_EQ(Decoded(false, std::string("a\0b", 3), false, &taken), u"a");
    EXPECT_EQ(taken, 2u);
    EXPECT_EQ(Decoded(false, std::string("a\0b", 3), true, &taken), u"ab");
    EXPECT_EQ(taken, 3u);
    EXPECT_EQ(Decoded(true, std::string("\0a\x62", 3)), u"a\x6200");
}

}  // namespace
}  // namespace codecs
