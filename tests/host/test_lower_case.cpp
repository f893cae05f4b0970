#include "base/lower_case.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace nira {
namespace {

TEST(LowerUnit, LowersLettersOfEveryScript) {
    EXPECT_EQ(LowerUnit(u'A'), u'a');
    EXPECT_EQ(LowerUnit(u'z'), u'z');
    EXPECT_EQ(LowerUnit(u'\x00D6'), u'\x00F6');
    EXPECT_EQ(LowerUnit(u'\x0178'), u'\x00FF') << "to a lower page";
    EXPECT_EQ(LowerUnit(u'\x0416'), u'\x0436');
    EXPECT_EQ(LowerUnit(u'\x1E9E'), u'\x00DF');
    EXPECT_EQ(LowerUnit(u'\x0130'), u'i') << "the one letter whose full mapping has two units";
    EXPECT_EQ(LowerUnit(u'\xFF21'), u'\xFF41');
}

TEST(LowerUnit, LeavesTheRestAlone) {
    EXPECT_EQ(LowerUnit(u'\x0131'), u'\x0131');
    EXPECT_EQ(LowerUnit(u'\x00D7'), u'\x00D7') << "a multiplication sign among letters";
    EXPECT_EQ(LowerUnit(u'\x03C2'), u'\x03C2');
    for (uint32_t unit = 0xD800; unit <= 0xDFFF; ++unit) {
        ASSERT_EQ(LowerUnit(static_cast<char16_t>(unit)), unit) << "a half of a pair";
    }
    EXPECT_EQ(LowerUnit(u'\xFFFF'), u'\xFFFF');
}

TEST(LowerUnit, TwiceIsOnce) {
    for (uint32_t unit = 0; unit <= 0xFFFF; ++unit) {
        const char16_t lower = LowerUnit(static_cast<char16_t>(unit));
        ASSERT_EQ(LowerUnit(lower), lower) << unit;
    }
}

TEST(LowerVariants, AreAllUnitsOfOneLowerCase) {
    for (const char16_t unit : {u'k', u'K', u'\x212A', u'7', u'\x01C6', u'\x00E4', u'\xD800'}) {
        char16_t variants[kLowerVariants] = {};
        const uint32_t count = LowerVariants(unit, variants);
        uint32_t expected = 0;
        for (uint32_t other = 0; other <= 0xFFFF; ++other) {
            if (LowerUnit(static_cast<char16_t>(other)) != LowerUnit(unit)) continue;
            ++expected;
            EXPECT_NE(std::find(variants, variants + count, static_cast<char16_t>(other)), variants + count)
                << other;
        }
        EXPECT_EQ(count, expected) << static_cast<uint32_t>(unit);
    }
}

}  // namespace
}  // namespace nira
