#include "view/measure.h"

#include <string_view>

#include "host/editor_fixture.h"
#include "view/shaped_scripts.h"

namespace nira {
namespace {

constexpr int32_t kUnit = 8;       // pixels of a unit of the fixed font
constexpr int32_t kTabGlyph = 12;  // and of its tab glyph

class Measure : public EditorTest {
  protected:
    Measure() : fixed_(TheOptions().text.font), serif_(AcquireFont(kSerif14)) {}

    int32_t Width(std::u16string_view text, int32_t tabSize, FontHandle font = nullptr) {
        return TextWidth(&window_, font != nullptr ? font : fixed_, text.data(),
                         static_cast<uint32_t>(text.size()), tabSize);
    }
    FitResult Fit(std::u16string_view text, int32_t tabSize, int32_t limit, FontHandle font = nullptr) {
        return FitText(&window_, font != nullptr ? font : fixed_, text.data(),
                       static_cast<uint32_t>(text.size()), tabSize, limit);
    }

    FontHandle fixed_;
    FontHandle serif_;
};

void ExpectFit(const FitResult& fit, uint32_t count, int32_t width) {
    EXPECT_EQ(fit.count, count);
    EXPECT_EQ(fit.width, width);
}

TEST_F(Measure, NothingIsNothingWide) {
    EXPECT_EQ(Width(u"", 8), 0);
    EXPECT_EQ(Width(u"", -1), 0);
    EXPECT_EQ(Width(u"", 8, serif_), 0);
}

TEST_F(Measure, RunsAreTheirUnits) {
    EXPECT_EQ(Width(u"abc", 8), 3 * kUnit);
    const FontDescription& font = HostFontDescription(serif_);
    EXPECT_EQ(Width(u"iW", 8, serif_), HostAdvance(font, u'i') + HostAdvance(font, u'W'));
    EXPECT_EQ(Width(std::u16string_view(u"\0a", 2), 8), 2 * kUnit);
}

TEST_F(Measure, TabsAdvanceByTheirSizeWhereverTheyStand) {
    EXPECT_EQ(Width(u"\tab", 4), 2 * kUnit + 4 * kUnit);
    EXPECT_EQ(Width(u"a\tb", 4), 2 * kUnit + 4 * kUnit);
    EXPECT_EQ(Width(u"ab\t", 4), 2 * kUnit + 4 * kUnit);
    EXPECT_EQ(Width(u"a\t\tb", 1), 4 * kUnit);
    EXPECT_EQ(Width(u"a\tb", 0), 2 * kUnit);
    EXPECT_EQ(Width(u"\t\t\t", 8), 24 * kUnit);
    EXPECT_EQ(Width(u"\t\t\t", 0), 0);
}

TEST_F(Measure, UnexpandedTabsAreTheirGlyph) {
    EXPECT_EQ(Width(u"\t", -1), kTabGlyph);
    EXPECT_EQ(Width(u"a\t\t", -1), kUnit + 2 * kTabGlyph);
}

TEST_F(Measure, WidthsStopAtTheLargestNumber) {
    EXPECT_EQ(Width(u"\t", 0x7FFFFFFF), 0x7FFFFFFF);
    EXPECT_EQ(Width(u"a\t", 0x7FFFFFFF), 0x7FFFFFFF);
    EXPECT_EQ(Width(std::u16string(100000, u'\t'), 0x7FFFFFFF), 0x7FFFFFFF);
    ExpectFit(Fit(u"a\tb", 0x7FFFFFFF, 3000), 1, kUnit);
    ExpectFit(Fit(u"a\tb", 0x7FFFFFFF, 0x7FFFFFFF), 1, kUnit);
}

TEST_F(Measure, TabsAloneNeedNoMeasuring) {
    MeasureContext context;
    OpenMeasureContext(&context, &window_, fixed_);
    HostTextDeviceResetCounts();
    EXPECT_EQ(ContextTextWidth(&context, u"\t\t\t", 3, 8), 24 * kUnit);
    EXPECT_EQ(HostTextDeviceCounts().extentCalls, 0u);
    EXPECT_EQ(HostTextDeviceCounts().fitCalls, 0u);
    CloseMeasureContext(&context);
}

TEST_F(Measure, KnownUnitsAreNotMeasuredAgain) {
    Width(u"hello world", 8);
    HostTextDeviceResetCounts();
    EXPECT_EQ(Width(u"world hello", 8), 11 * kUnit);
    Fit(u"hello world", 8, 50);
    EXPECT_EQ(HostTextDeviceCounts().extentCalls + HostTextDeviceCounts().fitCalls, 0u);
    EXPECT_EQ(HostTextDeviceCounts().devicesOpened, 0u);
}

TEST_F(Measure, FitsTheLongestPrefix) {
    ExpectFit(Fit(u"abcdef", 8, 3 * kUnit), 3, 3 * kUnit);
    ExpectFit(Fit(u"abcdef", 8, 4 * kUnit - 1), 3, 3 * kUnit);
    ExpectFit(Fit(u"abcdef", 8, 1000), 6, 6 * kUnit);
}

TEST_F(Measure, FitsNothingWhenTheFirstUnitIsTooWide) {
    ExpectFit(Fit(u"abc", 8, kUnit - 1), 0, 0);
    ExpectFit(Fit(u"\tabc", 8, 8 * kUnit - 1), 0, 0);
    ExpectFit(Fit(u"abc", 8, 0), 0, 0);
    ExpectFit(Fit(u"", 8, 100), 0, 0);
    ExpectFit(FitText(&window_, fixed_, nullptr, 5, 8, 100), 0, 0);
}

TEST_F(Measure, FitsWithTabsExpanded) {
    ExpectFit(Fit(u"a\tb", 4, 6 * kUnit), 3, 6 * kUnit);
    ExpectFit(Fit(u"a\tb", 4, 6 * kUnit - 1), 2, 5 * kUnit);
    ExpectFit(Fit(u"a\tb", 4, 5 * kUnit - 1), 1, kUnit);
    ExpectFit(Fit(u"\t\t\t", 4, 9 * kUnit), 2, 8 * kUnit);
    ExpectFit(Fit(u"\t\t\t", -1, 2 * kTabGlyph), 2, 2 * kTabGlyph);
}

TEST_F(Measure, FitsNoMoreThanTheGlyphsAllow) {
    ExpectFit(Fit(u"\t\tab", 0, 2 * kTabGlyph), 2, 0);
    ExpectFit(Fit(u"\t\tab", 1, 2 * kTabGlyph + kUnit), 3, 3 * kUnit);
    ExpectFit(Fit(u"\t\t\t\t", 0, kTabGlyph), 1, 0);
}

TEST_F(Measure, AsksTheSystemForShapedScripts) {
    HostSetTextShaping(true);
    const FontDescription& font = HostFontDescription(serif_);
    const int32_t joined = 2 * HostAdvance(font, u'\u0628') - 1;
    EXPECT_EQ(Width(u"\u0628\u0628", 8, serif_), joined);
    EXPECT_EQ(Width(u"a\u0628\u0628", 8, serif_), joined + HostAdvance(font, u'a'));
    EXPECT_EQ(Width(u"\U0001F600", 8, serif_), 14);
    EXPECT_EQ(Width(u"\u0301", 8, serif_), 7);
    EXPECT_EQ(Width(u"e\u0301", 8, serif_), HostAdvance(font, u'e'));
    ExpectFit(Fit(u"\u0628\u0628\u0628", 8, joined, serif_), 2, joined);
}

TEST_F(Measure, ShapedRunsHaveExpandedTabs) {
    HostSetTextShaping(true);
    const FontDescription& font = HostFontDescription(serif_);
    const int32_t space = HostAdvance(font, u' ');
    const int32_t letter = HostAdvance(font, u'\u0628');
    EXPECT_EQ(Width(u"\u0628\t", 8, serif_), letter + 8 * space);
    EXPECT_EQ(Width(u"\u0628\t", -1, serif_), letter + HostAdvance(font, u'\t'));
    ExpectFit(Fit(u"\u0628\tx", 8, letter + 8 * space, serif_), 2, letter + 8 * space);
    ExpectFit(Fit(u"\u0628\tx", 8, letter + 8 * space - 1, serif_), 1, letter);
    EXPECT_EQ(Fit(u"\tx\u0301\u0301\u0301", 8, 8 * space - 1, serif_).count, 3u)
        << "a mark that is dropped takes away what it measures alone";
}

TEST_F(Measure, SaysWhetherAWidthIsASum) {
    MeasureContext context;
    OpenMeasureContext(&context, &window_, serif_);
    bool summed = false;
    ContextTextWidth(&context, u"abc\t", 4, 8, &summed);
    EXPECT_TRUE(summed);
    ContextTextWidth(&context, u"ab\u0628", 3, 8, &summed);
    EXPECT_FALSE(summed);
    CloseMeasureContext(&context);
}

TEST_F(Measure, ContextsUseADeviceThatIsGiven) {
    const DeviceHandle device = DeviceOpen(&window_);
    DeviceSelectFont(device, serif_);
    MeasureContext context;
    OpenMeasureContextOnDevice(&context, device, fixed_);
    EXPECT_EQ(HostSelectedFont(device), fixed_);
    EXPECT_EQ(context.spaceWidth, kUnit);
    EXPECT_EQ(context.tabGlyphWidth, kTabGlyph);
    EXPECT_EQ(ContextTextWidth(&context, u"a\u0628", 2, 8), 2 * kUnit);
    ExpectFit(ContextFitText(&context, u"a\u0628b", 3, 8, 2 * kUnit), 2, 2 * kUnit);
    CloseMeasureContextOnDevice(&context);
    EXPECT_EQ(HostSelectedFont(device), serif_) << "the font before is back";
    DeviceClose(&window_, device);
}

TEST_F(Measure, ReportsAFailingCallAndGoesOn) {
    HostSetTextShaping(true);
    Width(u"a", 8);
    {
        FaultScope fault(FaultPoint::kDeviceMeasure, {.first = 1, .error = 5});
        EXPECT_EQ(Width(u"\u0628\u0628", 8), 0);
    }
    ASSERT_EQ(MessageLog().size(), 1u);
    EXPECT_EQ(MessageLog()[0].text, HostErrorText(5));
    EXPECT_EQ(MessageLog()[0].caption, u"Error");
    EXPECT_EQ(MessageLog()[0].kind, MessageKind::kError);
    EXPECT_EQ(MessageLog()[0].owner, nullptr);
    EXPECT_EQ(Width(u"\u0628\u0628", 8), 2 * kUnit - 1) << "asked again";
}

TEST_F(Measure, DoesNotRememberAFailure) {
    {
        FaultScope fault(FaultPoint::kDeviceMeasure, {.howMany = kFaultForever});
        EXPECT_EQ(Width(u"abc", 8), 0);
        EXPECT_GE(MessageLog().size(), 1u);
    }
    EXPECT_EQ(Width(u"abc", 8), 3 * kUnit);
    EXPECT_EQ(Width(u"a\tc", 8), 10 * kUnit);
    EXPECT_EQ(Width(u"\t", -1), kTabGlyph);
    {
        FaultScope fault(FaultPoint::kDeviceMeasure, {.first = 1});
        EXPECT_EQ(Width(u"abz", 8), 2 * kUnit);
    }
    EXPECT_EQ(Width(u"abz", 8), 3 * kUnit);
}

TEST_F(Measure, ReportsADeviceThatCannotBeHad) {
    FaultScope fault(FaultPoint::kDeviceOpen, {.howMany = kFaultForever});
    LineHeight(&window_, fixed_);
    EXPECT_EQ(MessageLog().size(), 1u);
}

TEST_F(Measure, RowsAreTheFontsHeightAndLeading) {
    EXPECT_EQ(LineHeight(&window_, fixed_), 16);
    EXPECT_EQ(LineHeight(&window_, AcquireFont(u"Fixed\x1E")), 36);
}

TEST_F(Measure, RowsAreAtLeastOnePixelHigh) {
    FaultScope fault(FaultPoint::kDeviceMeasure, {.first = 1});
    EXPECT_EQ(LineHeight(&window_, fixed_), 1);
    EXPECT_EQ(MessageLog().size(), 1u);
}

TEST(ShapedScripts, AreThoseThatTheSystemJoins) {
    for (const char16_t unit :
         {u'\u0300', u'\u036F', u'\u05B0', u'\u0628', u'\u0915', u'\u0E01', u'\u1100', u'\u1780', u'\u200D',
          u'\u202A', u'\u20D0', u'\u3099', u'\uFB1D', u'\uFE0F', u'\uFEFF', u'\uFFFB'}) {
        EXPECT_TRUE(IsShapedUnit(unit)) << std::hex << static_cast<uint32_t>(unit);
    }
    for (uint32_t unit = 0xD800; unit <= 0xDFFF; ++unit) {
        EXPECT_TRUE(IsShapedUnit(static_cast<char16_t>(unit)));
    }
}

TEST(ShapedScripts, AreNotLettersThatStandAlone) {
    for (uint32_t unit = 0; unit < 0x300; ++unit) EXPECT_FALSE(IsShapedUnit(static_cast<char16_t>(unit)));
    for (const char16_t unit : {u'\u0370', u'\u0416', u'\u058F', u'\u10A0', u'\u1200', u'\u1E00', u'\u200A',
                                u'\u2010', u'\u20AC', u'\u3042', u'\u4E00', u'\uAC00', u'\uD7A3', u'\uE000',
                                u'\uFB00', u'\uFF01', u'\uFFFD', u'\uFFFF'}) {
        EXPECT_FALSE(IsShapedUnit(unit)) << std::hex << static_cast<uint32_t>(unit);
    }
}

}  // namespace
}  // namespace nira
