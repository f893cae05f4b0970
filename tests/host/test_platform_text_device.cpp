#include <gtest/gtest.h>

#include "base/utf16.h"
#include "platform/host/faults.h"
#include "platform/host/font_table.h"
#include "platform/host/last_error.h"

namespace nira {
namespace {

FontDescription Describe(const char16_t* face, int32_t height) {
    FontDescription description = {};
    description.height = height;
    description.weight = 400;
    Utf16Copy(description.face, 32, face);
    return description;
}

// A device with a font selected; asks for widths of terminated texts.
class Measured {
  public:
    Measured(const char16_t* face, int32_t height) {
        font_ = FontCreate(Describe(face, height));
        device_ = DeviceOpen(nullptr);
        DeviceSelectFont(device_, font_);
    }
    ~Measured() {
        DeviceClose(nullptr, device_);
        FontDelete(font_);
    }
    int32_t Width(const char16_t* text) const {
        int32_t width = -1;
        EXPECT_TRUE(DeviceTextExtent(device_, text, static_cast<uint32_t>(Utf16Length(text)), &width));
        return width;
    }
    uint32_t Fit(const char16_t* text, int32_t maxWidth) const {
        uint32_t count = 99;
        EXPECT_TRUE(DeviceFitText(device_, text, static_cast<uint32_t>(Utf16Length(text)), maxWidth, &count));
        return count;
    }
    DeviceHandle Device() const { return device_; }

  private:
    FontHandle font_;
    DeviceHandle device_;
};

TEST(HostFonts, FixedGivesEveryUnitTheSameWidthButTheTab) {
    const Measured fixed(u"Fixed", -14);
    EXPECT_EQ(fixed.Width(u"iW\u65E5\u0301"), 4 * 8);
    EXPECT_EQ(fixed.Width(u"\t"), 12);
    EXPECT_EQ(Measured(u"Fixed", -10).Width(u"i"), 6);
}

TEST(HostFonts, ProportionalDiffersByLetterAndHeight) {
    const Measured sans(u"Courier New", -14);
    EXPECT_EQ(sans.Width(u"i"), 3);
    EXPECT_EQ(sans.Width(u"W"), 13);
    EXPECT_EQ(sans.Width(u"\u65E5"), 14);
    EXPECT_EQ(sans.Width(u"\u0301"), 0);
    EXPECT_NE(sans.Width(u" "), sans.Width(u"\t"));
    EXPECT_EQ(sans.Width(u"\u00FF"), 7);
    EXPECT_EQ(Measured(u"Courier New", -28).Width(u"W"), 26);
}

TEST(HostFonts, ExtentIsTheSumOfAdvancesForEveryUnit) {
    const Measured sans(u"Sans", -14);
    const FontDescription description = Describe(u"Sans", -14);
    int32_t sum = 0;
    std::u16string text;
    for (unsigned unit = 1; unit < 0x10000; ++unit) {
        sum += HostAdvance(description, static_cast<char16_t>(unit));
        text += static_cast<char16_t>(unit);
    }
    EXPECT_EQ(sans.Width(text.c_str()), sum);
}

TEST(HostFonts, ShapingMakesRunsNarrowerThanTheirUnits) {
    const Measured sans(u"Sans", -14);
    const int32_t apart = sans.Width(u"\u0628\u0628\u0628");
    const int32_t halves = sans.Width(u"\U0001F600");
    HostSetTextShaping(true);
    EXPECT_EQ(sans.Width(u"\u0628\u0628\u0628"), apart - 2);
    EXPECT_EQ(sans.Width(u"e\u0301"), sans.Width(u"e"));
    EXPECT_EQ(sans.Width(u"\u0301"), 7);
    EXPECT_EQ(sans.Width(u"\U0001F600"), 14);
    EXPECT_NE(halves, 14);
    HostSetTextShaping(false);
    EXPECT_EQ(sans.Width(u"\u0301"), 0);
}

TEST(HostFonts, FitTakesTheLongestPrefix) {
    const Measured fixed(u"Fixed", -14);
    EXPECT_EQ(fixed.Fit(u"abcd", 24), 3u);
    EXPECT_EQ(fixed.Fit(u"abcd", 23), 2u);
    EXPECT_EQ(fixed.Fit(u"abcd", 7), 0u);
    EXPECT_EQ(fixed.Fit(u"abcd", -1), 0u);
    EXPECT_EQ(fixed.Fit(u"abcd", 1000), 4u);
    EXPECT_EQ(fixed.Fit(u"", 10), 0u);
}

TEST(HostFonts, HaveMetricsThatGrowWithTheHeight) {
    int32_t height = 0;
    int32_t leading = 0;
    EXPECT_TRUE(DeviceFontMetrics(Measured(u"Sans", -14).Device(), &height, &leading));
    EXPECT_EQ(height, 16);
    EXPECT_EQ(leading, 0);
    EXPECT_TRUE(DeviceFontMetrics(Measured(u"Sans", -28).Device(), &height, &leading));
    EXPECT_EQ(height, 33);
    EXPECT_EQ(leading, 1);
}

TEST(HostFonts, FailOnDemandAndWithoutAFont) {
    const Measured sans(u"Sans", -14);
    int32_t width = 5;
    {
        FaultScope fault(FaultPoint::kDeviceMeasure, {});
        EXPECT_FALSE(DeviceTextExtent(sans.Device(), u"a", 1, &width));
        EXPECT_EQ(HostLastError(), kErrorInvalidHandle);
        EXPECT_EQ(width, 5);
    }
    {
        FaultScope fault(FaultPoint::kFontCreate, {});
        EXPECT_EQ(FontCreate(Describe(u"Sans", -14)), nullptr);
    }
    {
        FaultScope fault(FaultPoint::kDeviceOpen, {});
        EXPECT_EQ(DeviceOpen(nullptr), nullptr);
    }
    EXPECT_FALSE(DeviceTextExtent(nullptr, u"a", 1, &width));
    EXPECT_EQ(DeviceSelectFont(nullptr, nullptr), nullptr);
}

TEST(HostFonts, AreCounted) {
    const size_t fonts = HostTextDeviceCounts().fontsLive;
    const size_t devices = HostTextDeviceCounts().devicesLive;
    HostTextDeviceResetCounts();
    {
        const Measured sans(u"Sans", -14);
        sans.Width(u"abc");
        sans.Fit(u"abcdef", 1);
        EXPECT_EQ(HostTextDeviceCounts().fontsLive, fonts + 1);
        EXPECT_EQ(HostTextDeviceCounts().devicesLive, devices + 1);
        EXPECT_EQ(HostFontDescription(HostSelectedFont(sans.Device())).height, -14);
    }
    const TextDeviceCounts& counts = HostTextDeviceCounts();
    EXPECT_EQ(counts.fontsLive, fonts);
    EXPECT_EQ(counts.devicesLive, devices);
    EXPECT_EQ(counts.fontsCreated, 1u);
    EXPECT_EQ(counts.devicesOpened, 1u);
    EXPECT_EQ(counts.extentCalls, 1u);
    EXPECT_EQ(counts.fitCalls, 1u);
    EXPECT_EQ(counts.unitsMeasured, 4u);
}

TEST(HostFonts, KnowTheScreensDensity) {
    EXPECT_EQ(ScreenDotsPerInch(nullptr), 96);
    HostSetDotsPerInch(144);
    EXPECT_EQ(ScreenDotsPerInch(nullptr), 144);
    HostSetDotsPerInch(96);
}

}  // namespace
}  // namespace nira
