#include "files/codec_ansi.h"

#include "host/codec_stream.h"
#include "platform/host/ansi_page.h"

namespace nira {
namespace {

class AnsiCodec : public ServicesTest {
  protected:
    ~AnsiCodec() override { HostSetAnsiPage(AnsiPage::kWestern); }
};

TEST_F(AnsiCodec, GoesThroughTheSystemsPage) {
    Stream stream(kCodecAnsi);
    EXPECT_EQ(stream.Decode("a\xE9\x80"), u"a\u00E9\u20AC");
    EXPECT_EQ(stream.consumed, 3u);
    EXPECT_EQ(stream.Encode(u"a\u00E9\u20AC"), "a\xE9\x80");
    EXPECT_EQ(stream.Encode(u"\u4E00"), "?");
}

TEST_F(AnsiCodec, GivesNothingForNothing) {
    Stream stream(kCodecAnsi);
    EXPECT_EQ(stream.Decode("", kLastChunk), u"");
    EXPECT_EQ(stream.Encode(u""), "");
}

TEST_F(AnsiCodec, HoldsBackALeadByteAtTheEndOfAChunk) {
    HostSetAnsiPage(AnsiPage::kTwoBytes);
    Stream stream(kCodecAnsi);
    EXPECT_EQ(stream.Decode("ab\x81", kFirstChunk), u"ab");
    EXPECT_EQ(stream.consumed, 2u);
    EXPECT_EQ(stream.Decode("\x81\x40", kMiddleChunk), u"\u4E00");
    EXPECT_EQ(stream.Decode("\x81", kLastChunk), u"\u30FB");
    EXPECT_EQ(stream.consumed, 1u);
}

TEST_F(AnsiCodec, JudgesTheLastByteAlone) {
    HostSetAnsiPage(AnsiPage::kTwoBytes);
    Stream stream(kCodecAnsi);
    stream.Decode("\x81\x81", kMiddleChunk);
    EXPECT_EQ(stream.consumed, 1u) << "the second half of a pair looks like a lead byte";
}

TEST_F(AnsiCodec, TakesOneLeadByteAlone) {
    HostSetAnsiPage(AnsiPage::kTwoBytes);
    Stream stream(kCodecAnsi);
    EXPECT_EQ(stream.Decode("\x81", kFirstChunk), u"");
    EXPECT_EQ(stream.consumed, 0u);
}

TEST_F(AnsiCodec, KnowsNoMark) {
    Stream stream(kCodecAnsi);
    EXPECT_EQ(stream.Decode("\xFF\xFE"
                            "A"),
              u"\u00FF\u00FE"
              u"A");
    EXPECT_EQ(stream.Index(), kCodecAnsi);
}

}  // namespace
}  // namespace nira
