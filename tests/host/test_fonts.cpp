#include "view/fonts.h"

#include "host/editor_fixture.h"

namespace nira {
namespace {

// A cache of its own, empty at first.
class Fonts : public EditorTest {
  protected:
    Fonts() {
        ShutdownFonts();
        TheOptions().text.font = TheOptions().selection.font = nullptr;
        InitFonts(&window_);
        live_ = HostTextDeviceCounts().fontsLive;
    }

    size_t Live() const { return HostTextDeviceCounts().fontsLive - live_; }
    static FontDescription Acquired(const char16_t* description) {
        return HostFontDescription(AcquireFont(description));
    }
    static int32_t HeightAt(int32_t dotsPerInch, const char16_t* description) {
        HostSetDotsPerInch(dotsPerInch);
        InitFonts(nullptr);
        return DescribeFont(description).height;
    }

  private:
    size_t live_;
};

TEST_F(Fonts, CacheBeginsEmpty) {
    EXPECT_EQ(TheFontCache()->count, 0u);
    EXPECT_EQ(TheFontCache()->capacity, 0u);
    EXPECT_EQ(TheFontCache()->entries, nullptr);
}

TEST_F(Fonts, InitKeepsACacheThatIsThere) {
    const FontCache* cache = TheFontCache();
    AcquireFont(kFixed14);
    EXPECT_EQ(InitFonts(&window_), 1);
    EXPECT_EQ(TheFontCache(), cache);
    EXPECT_EQ(TheFontCache()->count, 1u);
}

TEST_F(Fonts, HeightIsTheSizeTimesTheWholePixelsOfAPoint) {
    EXPECT_EQ(HeightAt(96, u"Face\x0A"), -10);
    EXPECT_EQ(FontScale(), 1);
    EXPECT_EQ(HeightAt(120, u"Face\x0A"), -10);
    EXPECT_EQ(HeightAt(131, u"Face\x0A"), -10);
    EXPECT_EQ(HeightAt(144, u"Face\x0A"), -20);
    EXPECT_EQ(HeightAt(192, u"Face\x0A"), -20);
    EXPECT_EQ(FontScale(), 2);
    EXPECT_EQ(HeightAt(216, u"Face\x0A"), -30);
    EXPECT_EQ(HeightAt(96, u"Face\u00FF"), -255);
}

TEST_F(Fonts, AttributeBitsAreTheStyles) {
    const FontDescription plain = DescribeFont(u"Face\x0A");
    EXPECT_EQ(std::u16string(plain.face), u"Face");
    EXPECT_EQ(plain.weight, 400);
    EXPECT_FALSE(plain.italic || plain.underline || plain.strikeOut || plain.clearType);
    const FontDescription bold = DescribeFont(u"Face\u010A");
    EXPECT_EQ(bold.weight, 700);
    EXPECT_EQ(bold.height, -10);
    EXPECT_FALSE(bold.italic || bold.underline || bold.strikeOut || bold.clearType);
    const FontDescription italic = DescribeFont(u"Face\u020A");
    EXPECT_TRUE(italic.italic && !italic.underline && !italic.strikeOut && !italic.clearType);
    const FontDescription underline = DescribeFont(u"Face\u040A");
    EXPECT_TRUE(!underline.italic && underline.underline && !underline.strikeOut && !underline.clearType);
    const FontDescription struck = DescribeFont(u"Face\u080A");
    EXPECT_TRUE(!struck.italic && !struck.underline && struck.strikeOut && !struck.clearType);
    const FontDescription clear = DescribeFont(u"Face\u100A");
    EXPECT_TRUE(!clear.italic && !clear.underline && !clear.strikeOut && clear.clearType);
}

TEST_F(Fonts, AnEmptyDescriptionHasNoNameAndSizeZero) {
    const FontDescription font = DescribeFont(u"");
    EXPECT_EQ(font.face[0], 0);
    EXPECT_EQ(font.height, 0);
    EXPECT_EQ(font.weight, 400);
    const FontHandle handle = AcquireFont(u"");
    EXPECT_NE(handle, nullptr);
    EXPECT_EQ(AcquireFont(u""), handle);
}

TEST_F(Fonts, LongFaceNamesAreCut) {
    const FontDescription font = DescribeFont(u"0123456789012345678901234567890123456789\x0A");
    EXPECT_EQ(std::u16string(font.face), u"0123456789012345678901234567890");
    EXPECT_EQ(font.height, -10);
}

TEST_F(Fonts, TheSameDescriptionIsTheSameFont) {
    const FontHandle font = AcquireFont(kFixed14);
    EXPECT_EQ(AcquireFont(kFixed14), font);
    EXPECT_EQ(Live(), 1u);
    EXPECT_EQ(FindFontEntry(kFixed14)->references, 2u);
    ReleaseFont(font);
    EXPECT_EQ(Live(), 1u);
    EXPECT_EQ(FindFontEntry(kFixed14)->references, 1u);
    ReleaseFont(font);
    EXPECT_EQ(Live(), 0u);
    EXPECT_EQ(FindFontEntry(kFixed14), nullptr);
    EXPECT_EQ(TheFontCache()->count, 0u);
}

TEST_F(Fonts, AnotherAttributeIsAnotherFont) {
    EXPECT_NE(AcquireFont(u"Face\x0A"), AcquireFont(u"Face\x0B"));
    EXPECT_EQ(Acquired(u"Face\u010B").weight, 700);
    EXPECT_EQ(Live(), 3u);
}

TEST_F(Fonts, KeysAreOrderedByUnsignedUnitWithoutFolding) {
    for (const auto* key :
         {u"b\x0A", u"\uFFFD\x0A", u"B\x0A", u"a\x0A", u"\u8000\x0A", u"a\u100A", u"", u"ab\x0A"}) {
        AcquireFont(key);
    }
    const std::u16string expected[] = {u"",        u"B\x0A", u"a\x0A",      u"ab\x0A",
                                       u"a\u100A", u"b\x0A", u"\u8000\x0A", u"\uFFFD\x0A"};
    ASSERT_EQ(TheFontCache()->count, 8u);
    for (int32_t i = 0; i < 8; ++i) {
        EXPECT_EQ(std::u16string(TheFontCache()->entries[i].key), expected[i]);
        EXPECT_EQ(FindFontIndex(expected[i].c_str()), i);
        EXPECT_EQ(FindFontEntry(expected[i].c_str()), &TheFontCache()->entries[i]);
    }
    EXPECT_EQ(FindFontIndex(u"A\x0A"), -1);
    EXPECT_EQ(FindFontIndex(u"zz\x0A"), -1);
    EXPECT_EQ(FindFontEntry(u"A\x0A"), nullptr);
}

TEST_F(Fonts, CacheGrowsAndShrinksInStepsOfTen) {
    char16_t key[] = u"Face\x01";
    FontHandle fonts[21];
    for (char16_t i = 0; i < 21; ++i) {
        key[4] = static_cast<char16_t>(i + 1);
        fonts[i] = AcquireFont(key);
        EXPECT_EQ(TheFontCache()->capacity, i / 10 * 10 + 10u);
    }
    const struct {
        uint32_t count;
        uint32_t capacity;
    } steps[] = {{20, 30}, {19, 20}, {18, 20}};
    uint32_t released = 0;
    for (const auto& step : steps) {
        ReleaseFont(fonts[released++]);
        EXPECT_EQ(TheFontCache()->count, step.count);
        EXPECT_EQ(TheFontCache()->capacity, step.capacity);
    }
    key[4] = 12;
    EXPECT_EQ(FindFontEntry(key)->font, fonts[11]) << "the others are still found";
}

TEST_F(Fonts, UnknownHandlesAreIgnored) {
    const FontHandle known = AcquireFont(kFixed14);
    const FontHandle gone = AcquireFont(kSerif14);
    ReleaseFont(gone);
    ReleaseFont(gone);
    EXPECT_EQ(TheFontCache()->count, 1u);
    EXPECT_EQ(FindFontEntryByHandle(known), FindFontEntry(kFixed14));
    EXPECT_EQ(FindFontEntryByHandle(gone), nullptr);
}

TEST_F(Fonts, AFontThatCannotBeMadeIsKeptWithoutAMessage) {
    {
        FaultScope fault(FaultPoint::kFontCreate, {.first = 1});
        EXPECT_EQ(AcquireFont(kFixed14), nullptr);
    }
    EXPECT_TRUE(MessageLog().empty());
    EXPECT_EQ(HostShellLog().memoryBoxes, 0u);
    ASSERT_NE(FindFontEntry(kFixed14), nullptr);
    EXPECT_EQ(AcquireFont(kFixed14), nullptr);
    EXPECT_EQ(FindFontEntry(kFixed14)->references, 2u);
}

TEST_F(Fonts, ShutdownDeletesEverything) {
    AcquireFont(kFixed14);
    AcquireFont(kFixed14);
    AcquireFont(kSerif14);
    ShutdownFonts();
    EXPECT_EQ(Live(), 0u);
    EXPECT_EQ(TheFontCache(), nullptr);
    EXPECT_EQ(FindFontIndex(kFixed14), -1);
    EXPECT_EQ(AcquireFont(kFixed14), nullptr);
    ReleaseFont(nullptr);
    ShutdownFonts();
}

}  // namespace
}  // namespace nira
