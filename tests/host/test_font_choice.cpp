#include "view/font_choice.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "app/services/memory.h"
#include "view/fonts.h"

namespace nira {
namespace {

class FontChoiceTest : public testing::Test {
  protected:
    static std::u16string Written(const FontChoice& choice) {
        char16_t* description = WriteFontChoice(choice);
        std::u16string text = description;
        MemFree(nullptr, description);
        return text;
    }

    static FontChoice Choice(const char16_t* face, uint32_t size, char16_t styles) {
        FontChoice choice = {};
        std::u16string(face).copy(choice.face, kFaceUnits);
        choice.size = size;
        choice.styles = styles;
        return choice;
    }
};

std::vector<uint32_t> Listed(const FontSizes& sizes) { return {sizes.sizes, sizes.sizes + sizes.count}; }

const std::vector<uint32_t> kStandard = {8, 9, 10, 11, 12, 14, 16, 18, 20, 22, 24, 26, 28, 36, 48, 72};

TEST_F(FontChoiceTest, ADescriptionIsTakenApart) {
    const FontChoice choice = ReadFontChoice(u"Courier New\x130E");

    EXPECT_EQ(std::u16string(choice.face), u"Courier New");
    EXPECT_EQ(choice.size, 14u);
    EXPECT_EQ(choice.styles, kFontClearType | kFontBold | kFontItalic);
}

TEST_F(FontChoiceTest, WhatIsPutTogetherIsWhatWasTakenApart) {
    for (const char16_t* description : {u"Courier New\x100E", u"A\x1F48", u"\x0101"}) {
        EXPECT_EQ(Written(ReadFontChoice(description)), description);
    }
}

TEST_F(FontChoiceTest, ASizeAboveTheLargestIsShownAndStoredAsTheLargest) {
    EXPECT_EQ(ReadFontChoice(u"A\x01FF").size, 72u);
    EXPECT_EQ(ReadFontChoice(u"A\x0149").size, 72u);
    EXPECT_EQ(Written(Choice(u"A", 73, 0)), u"A\x48");
    EXPECT_EQ(Written(Choice(u"A", 255, 0)), u"A\x48");
}

TEST_F(FontChoiceTest, OnlyTheLowBitsOfASizeCount) {
    EXPECT_EQ(Written(Choice(u"A", 256 + 12, 0)), u"A\x0C");
    EXPECT_EQ(Written(Choice(u"A", 0xFFFFFF00 + 9, 0)), u"A\x09");
}

TEST_F(FontChoiceTest, ASizeOfZeroBecomesOne) {
    EXPECT_EQ(ReadFontChoice(u"A\x0100").size, 0u);
    EXPECT_EQ(Written(Choice(u"A", 0, 0)), u"A\x01");
    EXPECT_EQ(Written(Choice(u"A", 256, kFontBold)), u"A\x0101");
}

TEST_F(FontChoiceTest, AFaceIsCutToThirtyTwoUnits) {
    const std::u16string face(200, u'x');

    const FontChoice choice = ReadFontChoice((face + u"\x010C").c_str());

    EXPECT_EQ(std::u16string(choice.face), face.substr(0, 32));
    EXPECT_EQ(Written(choice), face.substr(0, 32) + u"\x010C");
}

TEST_F(FontChoiceTest, AnEmptyDescriptionHasNoFace) {
    const FontChoice choice = ReadFontChoice(u"");

    EXPECT_EQ(std::u16string(choice.face), u"");
    EXPECT_EQ(choice.size, 0u);
    EXPECT_EQ(Written(choice), u"\x01");
}

TEST(ReadFontSize, TakesTheNumberThatTheTextBeginsWith) {
    EXPECT_EQ(ReadFontSize(u"12"), 12u);
    EXPECT_EQ(ReadFontSize(u" 12 pt"), 12u);
    EXPECT_EQ(ReadFontSize(u""), 0u);
    EXPECT_EQ(ReadFontSize(u"-4"), 0u);
    EXPECT_EQ(ReadFontSize(u"large"), 0u);
    EXPECT_EQ(ReadFontSize(u"4294967306"), 10u);
}

TEST(FontSizes, AnOutlineFaceHasEveryStandardSizeAndEndsTheSearch) {
    FontSizes sizes;
    StartFontSizes(&sizes, 14);

    EXPECT_FALSE(AddFontSizes(&sizes, true, 40, 1));

    EXPECT_EQ(Listed(sizes), kStandard);
    EXPECT_EQ(sizes.selected, 5);
    EXPECT_LT(sizes.carried, 0);
}

TEST(FontSizes, ACarriedSizeThatTheFaceHasNotIsKept) {
    FontSizes sizes;
    StartFontSizes(&sizes, 13);

    AddFontSizes(&sizes, true, 40, 1);

    EXPECT_EQ(sizes.selected, -1);
    EXPECT_EQ(sizes.carried, 13);
}

TEST(FontSizes, AFixedFaceHasTheSizesOfItsFonts) {
    FontSizes sizes;
    StartFontSizes(&sizes, 10);

    EXPECT_TRUE(AddFontSizes(&sizes, false, 13, 1));
    EXPECT_TRUE(AddFontSizes(&sizes, false, 10, 1));
    EXPECT_TRUE(AddFontSizes(&sizes, false, 13, 1));

    EXPECT_EQ(Listed(sizes), (std::vector<uint32_t>{13, 10}));
    EXPECT_EQ(sizes.selected, 1);
}

TEST(FontSizes, TheSizeOfAFixedFontIsItsHeightInPoints) {
    FontSizes sizes;
    StartFontSizes(&sizes, 0);

    AddFontSizes(&sizes, false, 25, 2);
    AddFontSizes(&sizes, false, 16, 0);

    EXPECT_EQ(Listed(sizes), (std::vector<uint32_t>{12, 16}));
}

TEST(FontSizes, MoreSizesThanThereIsRoomForAreLeftOut) {
    FontSizes sizes;
    StartFontSizes(&sizes, 500);
    for (int32_t height = 1; height <= 500; ++height) AddFontSizes(&sizes, false, height, 1);

    EXPECT_EQ(sizes.count, kMostFontSizes);
    EXPECT_EQ(sizes.selected, -1);
}

}  // namespace
}  // namespace nira
