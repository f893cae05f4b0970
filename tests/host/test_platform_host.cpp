#include <gtest/gtest.h>

#include "platform/code_page.h"
#include "platform/host/ansi_page.h"
#include "platform/host/faults.h"
#include "platform/host/last_error.h"
#include "platform/host/menu_state.h"
#include "platform/host/message_log.h"
#include "platform/host/shell_log.h"
#include "platform/host/surface_state.h"
#include "platform/shell_requests.h"
#include "platform/strings.h"

namespace nira {
namespace {

TEST(Faults, StrikeTheChosenCallsAndCountAll) {
    FaultScope fault(FaultPoint::kFileDelete, {.first = 2, .howMany = 2});

    EXPECT_FALSE(FaultStrikes(FaultPoint::kFileDelete));
    EXPECT_TRUE(FaultStrikes(FaultPoint::kFileDelete));
    EXPECT_FALSE(FaultStrikes(FaultPoint::kFileMove));
    EXPECT_TRUE(FaultStrikes(FaultPoint::kFileDelete));
    EXPECT_FALSE(FaultStrikes(FaultPoint::kFileDelete));

    EXPECT_EQ(fault.Calls(), 4u);
    EXPECT_EQ(fault.Hits(), 2u);
}

TEST(Faults, StrikeForeverAndStopWithTheirScope) {
    {
        FaultScope fault(FaultPoint::kRegistrySet, {.first = 1, .howMany = kFaultForever});
        for (int call = 0; call < 100; ++call) EXPECT_TRUE(FaultStrikes(FaultPoint::kRegistrySet));
    }
    EXPECT_FALSE(FaultStrikes(FaultPoint::kRegistrySet));
}

TEST(Faults, OfAGroupStrikeEveryOperationInIt) {
    FaultScope fault(FaultPoint::kAnyFile, {.first = 2, .howMany = kFaultForever, .error = 1234});

    EXPECT_FALSE(FaultStrikes(FaultPoint::kFileOpen));
    EXPECT_TRUE(FaultStrikes(FaultPoint::kFileRead));
    EXPECT_EQ(HostLastError(), 1234u);
    EXPECT_TRUE(FaultStrikes(FaultPoint::kFileDelete));
    EXPECT_FALSE(FaultStrikes(FaultPoint::kRegistryOpen));
    EXPECT_FALSE(FaultStrikes(FaultPoint::kAllocation));
    EXPECT_EQ(fault.Calls(), 3u);
}

TEST(Faults, LeaveTheUsualErrorOfThePoint) {
    FaultScope write(FaultPoint::kFileWrite, {});
    FaultScope open(FaultPoint::kFileOpen, {});
    EXPECT_TRUE(FaultStrikes(FaultPoint::kFileWrite));
    EXPECT_EQ(HostLastError(), kErrorDiskFull);
    EXPECT_TRUE(FaultStrikes(FaultPoint::kFileOpen));
    EXPECT_EQ(HostLastError(), kErrorAccessDenied);
}

TEST(MessagesOnTheHost, AreLoggedAndAnsweredFromTheScript) {
    MessageLogReset();
    MessageScript({kAnswerYes});

    EXPECT_EQ(ShowMessage(nullptr, u"Save?", u"File modified", MessageKind::kQuestionYesNoCancel),
              kAnswerYes);
    EXPECT_EQ(ShowMessage(nullptr, u"Save?", u"File modified", MessageKind::kQuestionYesNoCancel),
              kAnswerCancel);
    EXPECT_EQ(ShowMessage(nullptr, u"Sure?", u"C", MessageKind::kQuestionYesNo), kAnswerNo);
    EXPECT_EQ(ShowMessage(nullptr, u"Gone", u"Error", MessageKind::kError), kAnswerOk);

    ASSERT_EQ(MessageLog().size(), 4u);
    EXPECT_EQ(MessageLog()[3].text, u"Gone");
    EXPECT_EQ(MessageLog()[3].caption, u"Error");
    EXPECT_EQ(MessageLog()[3].kind, MessageKind::kError);
    EXPECT_EQ(MessageScriptLeft(), 0u);
    MessageLogReset();
    EXPECT_TRUE(MessageLog().empty());
}

TEST(MessagesOnTheHost, SayTheErrorCutToTheRoom) {
    char16_t text[40];
    EXPECT_EQ(SystemErrorText(112, text, 40), 17u);
    EXPECT_EQ(std::u16string(text), u"System error 112.");
    EXPECT_EQ(SystemErrorText(112, text, 7), 6u);
    EXPECT_EQ(std::u16string(text), u"System");
}

TEST(StringsOnTheHost, AreTheProgramsOwn) {
    EXPECT_EQ(std::u16string(PlatformString(4014)), u"Error");
    EXPECT_EQ(std::u16string(PlatformString(4044)), u"");
    EXPECT_EQ(std::u16string(PlatformString(1)), u"");
}

TEST(CodePage, WesternRoundTripsEveryByte) {
    for (unsigned byte = 0; byte < 256; ++byte) {
        const auto source = static_cast<uint8_t>(byte);
        char16_t unit = 0;
        uint8_t back = 0;
        EXPECT_FALSE(AnsiIsLeadByte(source));
        ASSERT_EQ(AnsiToUtf16(&source, 1, &unit, 1), 1u);
        ASSERT_EQ(AnsiFromUtf16(&unit, 1, &back, 1), 1u);
        EXPECT_EQ(back, source);
    }
    const uint8_t euroAndUmlaut[] = {0x80, 0xFC};
    char16_t units[2];
    EXPECT_EQ(AnsiToUtf16(euroAndUmlaut, 2, units, 2), 2u);
    EXPECT_EQ(units[0], 0x20AC);
    EXPECT_EQ(units[1], 0x00FC);
}

TEST(CodePage, TellsTheSizeAndRefusesTooLittleRoom) {
    const char16_t text[] = u"a\u4E00b";
    uint8_t bytes[3];
    EXPECT_EQ(AnsiFromUtf16(text, 3, nullptr, 0), 3u);
    EXPECT_EQ(AnsiFromUtf16(text, 3, bytes, 2), 0u);
    EXPECT_EQ(AnsiFromUtf16(text, 3, bytes, 3), 3u);
    EXPECT_EQ(bytes[1], '?');
    EXPECT_EQ(AnsiFromUtf16(text, 0, bytes, 3), 0u);
    char16_t units[2];
    EXPECT_EQ(AnsiToUtf16(bytes, 3, nullptr, 0), 3u);
    EXPECT_EQ(AnsiToUtf16(bytes, 3, units, 2), 0u);
}

TEST(CodePage, FallsBackToTheNearestLetter) {
    const char16_t text[] = u"\u0100\uFF21\u03B1\u2212";
    uint8_t bytes[4];
    ASSERT_EQ(AnsiFromUtf16(text, 4, bytes, 4), 4u);
    EXPECT_EQ(bytes[0], 'A');
    EXPECT_EQ(bytes[1], 'A');
    EXPECT_EQ(bytes[2], 'a');
    EXPECT_EQ(bytes[3], '-');
}

TEST(CodePage, TwoByteStandInRoundTripsEveryPair) {
    HostSetAnsiPage(AnsiPage::kTwoBytes);
    int leads = 0;
    for (unsigned lead = 0x80; lead < 256; ++lead) {
        if (!AnsiIsLeadByte(static_cast<uint8_t>(lead))) continue;
        ++leads;
        for (unsigned trail = 0x40; trail < 256; ++trail) {
            const uint8_t pair[2] = {static_cast<uint8_t>(lead), static_cast<uint8_t>(trail)};
            char16_t unit = 0;
            uint8_t back[2] = {};
            ASSERT_EQ(AnsiToUtf16(pair, 2, &unit, 1), 1u);
            ASSERT_EQ(AnsiFromUtf16(&unit, 1, back, 2), 2u);
            ASSERT_EQ(back[0], pair[0]);
            ASSERT_EQ(back[1], pair[1]);
        }
    }
    EXPECT_EQ(leads, 60);
    HostSetAnsiPage(AnsiPage::kWestern);
    EXPECT_FALSE(AnsiIsLeadByte(0x81));
}

TEST(SurfaceOnTheHost, RecordsScrollBarsTimersAndTitle) {
    WindowTag window;
    window.client = {300, 200};
    window.vertical.track = 17;

    SurfaceSetScrollRange(&window, SurfaceBar::kVertical, 99, 5);
    SurfaceSetScrollPage(&window, SurfaceBar::kVertical, 10);
    SurfaceSetScrollPosition(&window, SurfaceBar::kHorizontal, 7);
    SurfaceStartTimer(&window, 3, 50);
    SurfaceStartTimer(&window, 4, 60);
    SurfaceStopTimer(&window, 4);
    SurfaceSetTitle(&window, u"a.txt");

    EXPECT_EQ(SurfaceClientSize(&window).width, 300);
    EXPECT_EQ(SurfaceClientSize(nullptr).height, 0);
    EXPECT_EQ(SurfaceTrackPosition(&window, SurfaceBar::kVertical), 17);
    EXPECT_EQ(window.vertical.maximum, 99);
    EXPECT_EQ(window.vertical.position, 5);
    EXPECT_EQ(window.vertical.page, 10);
    EXPECT_EQ(window.horizontal.position, 7);
    EXPECT_EQ(window.timers, (std::map<uint32_t, uint32_t>{{3, 50}}));
    EXPECT_EQ(window.title, u"a.txt");
}

TEST(SurfaceOnTheHost, CountsHiddenCarets) {
    HostSurfaceReset();
    WindowTag window;
    SurfaceCreateCaret(&window, 2, 16);
    EXPECT_FALSE(HostCaretVisible());
    SurfaceShowCaret(&window);
    SurfaceMoveCaret(10, 20);
    EXPECT_TRUE(HostCaretVisible());
    SurfaceHideCaret(&window);
    SurfaceHideCaret(&window);
    SurfaceShowCaret(&window);
    EXPECT_FALSE(HostCaretVisible());
    int32_t x = 0;
    int32_t y = 0;
    SurfaceCaretPosition(&x, &y);
    EXPECT_EQ(x, 10);
    EXPECT_EQ(y, 20);
    SurfaceDestroyCaret();
    EXPECT_EQ(HostCaret().owner, nullptr);
    ShowWaitPointer();
    EXPECT_TRUE(HostPointer().waiting);
    RestorePointer();
    EXPECT_FALSE(HostPointer().waiting);
}

TEST(MenusOnTheHost, RecordTheirItems) {
    MenuTag menu;
    WindowTag bar;
    HostBarSetPopup(&bar, 5, &menu);
    const MenuHandle found = BarPopup(&bar, 5);
    MenuAppendItem(found, 1, u"one");
    MenuAppendItem(found, 2, u"two");
    MenuAppendItem(found, 3, u"three");
    MenuAppendGrayed(found, u"none");
    MenuCheckRadioAt(found, 0, 2, 1);
    MenuSetTextAt(found, 1, u"TWO");
    MenuSetIdAt(found, 2, 9);
    MenuSetTextAt(found, 4, u"nothing there");
    EXPECT_EQ(MenuItemCount(found), 4u);
    MenuDeletePosition(found, 0);
    BarEnableButton(&bar, 5, false);

    ASSERT_EQ(menu.items.size(), 3u);
    EXPECT_EQ(menu.items[0].text, u"TWO");
    EXPECT_TRUE(menu.items[0].marked);
    EXPECT_EQ(menu.items[1].id, 9u);
    EXPECT_TRUE(menu.items[2].grayed);
    EXPECT_TRUE(MenuDeletePosition(found, 2));
    EXPECT_FALSE(MenuDeletePosition(found, 2));
    EXPECT_EQ(BarPopup(&bar, 6), nullptr);
    EXPECT_FALSE(HostBarButtonEnabled(&bar, 5));
    EXPECT_TRUE(HostBarButtonEnabled(&bar, 6));
    HostBarsReset();
}

TEST(ShellRequestsOnTheHost, AreCounted) {
    HostShellLogReset();
    EXPECT_EQ(LastMemoryRequest(), 0u);
    RequestFreeMemory(100);
    RequestFreeMemory(50);
    ShowOutOfMemoryBox(nullptr);
    EXPECT_EQ(HostShellLog().requests, 2u);
    EXPECT_EQ(LastMemoryRequest(), 50u);
    EXPECT_EQ(HostShellLog().memoryBoxes, 1u);
    HostShellLogReset();
}

}  // namespace
}  // namespace nira
