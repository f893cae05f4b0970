// Text on the real clipboard.
#include <gtest/gtest.h>
#include <windows.h>
// After windows.h.
#include <cstring>
#include <string>

#include "platform/clipboard.h"
#include "platform/win32/casts.h"
#include "shell_test_window.h"

namespace nira {
namespace {

class SystemClipboard : public testing::Test {
  protected:
    SystemClipboard()
        : window_(CreateWindowExW(0, shell_test::RecordingClass(), L"", WS_POPUP, 0, 0, 10, 10, nullptr,
                                  nullptr, GetModuleHandleW(nullptr), nullptr)) {
        Empty();
    }
    ~SystemClipboard() override {
        EXPECT_EQ(GetOpenClipboardWindow(), nullptr) << "the clipboard was left open";
        Empty();
        DestroyWindow(window_);
    }

    WindowHandle Owner() const { return FromHwnd(window_); }

    void Empty() const {
        ASSERT_TRUE(OpenClipboard(window_));
        EmptyClipboard();
        CloseClipboard();
    }
    bool Put(const std::u16string& text) const {
        char16_t* block = ClipboardAllocate(text.size());
        if (block == nullptr) return false;
        std::memcpy(block, text.data(), text.size() * sizeof(char16_t));
        return ClipboardPut(Owner(), block, text.size());
    }
    // What the editor reads; "(none)" when there is no text and "(busy)" when the clipboard will not open.
    std::u16string Get() const {
        if (!ClipboardOpen(Owner())) return u"(busy)";
        uint32_t units = 0;
        const char16_t* text = ClipboardText(&units);
        std::u16string copy = text != nullptr ? std::u16string(text, units) : u"(none)";
        ClipboardClose();
        return copy;
    }
    // A block of this size on the clipboard as another program puts it there.
    void PutRaw(UINT format, const void* bytes, SIZE_T size) const {
        const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, size);
        std::memcpy(GlobalLock(block), bytes, size);
        GlobalUnlock(block);
        ASSERT_TRUE(OpenClipboard(window_));
        EmptyClipboard();
        EXPECT_NE(SetClipboardData(format, block), nullptr);
        CloseClipboard();
    }

    HWND window_;
};

// Holds the clipboard open from another thread, whose window owns it meanwhile.
class OtherOwner {
  public:
    OtherOwner()
        : held_(CreateEventW(nullptr, TRUE, FALSE, nullptr)),
          enough_(CreateEventW(nullptr, TRUE, FALSE, nullptr)),
          thread_(CreateThread(nullptr, 0, Hold, this, 0, nullptr)) {
        EXPECT_EQ(WaitForSingleObject(held_, 10000), WAIT_OBJECT_0);
    }
    ~OtherOwner() {
        SetEvent(enough_);
        WaitForSingleObject(thread_, 10000);
        CloseHandle(thread_);
        CloseHandle(held_);
        CloseHandle(enough_);
    }
    OtherOwner(const OtherOwner&) = delete;
    OtherOwner& operator=(const OtherOwner&) = delete;

  private:
    static DWORD WINAPI Hold(void* context) {
        const auto* self = static_cast<OtherOwner*>(context);
        const HWND window = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr,
                                            GetModuleHandleW(nullptr), nullptr);
        EXPECT_TRUE(OpenClipboard(window));
        SetEvent(self->held_);
        WaitForSingleObject(self->enough_, 10000);
        CloseClipboard();
        DestroyWindow(window);
        return 0;
    }

    HANDLE held_;
    HANDLE enough_;
    HANDLE thread_;
};

TEST_F(SystemClipboard, GivesBackTheTextThatWasPut) {
    EXPECT_TRUE(Put(u"one\r\ntwo \u4E00\U0001F600\t"));
    EXPECT_EQ(Get(), u"one\r\ntwo \u4E00\U0001F600\t");
    EXPECT_EQ(Get(), u"one\r\ntwo \u4E00\U0001F600\t") << "reading takes nothing away";
}

TEST_F(SystemClipboard, HoldsTheLatestText) {
    EXPECT_TRUE(Put(u"a longer text"));
    EXPECT_TRUE(Put(u"b"));
    EXPECT_EQ(Get(), u"b");
}

TEST_F(SystemClipboard, TextIsThereForOtherPrograms) {
    EXPECT_TRUE(Put(u"abc"));
    ASSERT_TRUE(OpenClipboard(window_));
    EXPECT_EQ(GetClipboardOwner(), window_);
    const HANDLE block = GetClipboardData(CF_UNICODETEXT);
    ASSERT_NE(block, nullptr);
    EXPECT_GE(GlobalSize(block), 4 * sizeof(wchar_t));
    EXPECT_STREQ(static_cast<const wchar_t*>(GlobalLock(block)), L"abc");
    GlobalUnlock(block);
    CloseClipboard();
}

TEST_F(SystemClipboard, KeepsUnpairedSurrogatesAndAnEmptyText) {
    EXPECT_TRUE(Put(u"\xDC00x\xD800"));
    EXPECT_EQ(Get(), u"\xDC00x\xD800");
    EXPECT_TRUE(Put(u""));
    EXPECT_EQ(Get(), u"");
}

TEST_F(SystemClipboard, TextIsReadUpToItsZero) {
    EXPECT_TRUE(Put(std::u16string(u"ab\0cd", 5)));
    EXPECT_EQ(Get(), u"ab");
}

TEST_F(SystemClipboard, ATextWithoutAZeroEndsWithItsBlock) {
    const std::u16string text(64, u'x');
    PutRaw(CF_UNICODETEXT, text.data(), text.size() * sizeof(char16_t));
    EXPECT_EQ(Get().substr(0, 63), text.substr(0, 63)) << "the system may put a zero into the last unit";
    EXPECT_LE(Get().size(), 72u) << "the system may round a block up";
}

TEST_F(SystemClipboard, WithoutTextGivesNone) {
    EXPECT_EQ(Get(), u"(none)");
    const UINT format = RegisterClipboardFormatW(L"NIRA test format");
    PutRaw(format, "xyz", 4);
    EXPECT_EQ(Get(), u"(none)");
}

TEST_F(SystemClipboard, WhileAnotherHoldsItNothingIsPutAndNothingRead) {
    ASSERT_TRUE(Put(u"precious"));
    {
        const OtherOwner other;
        EXPECT_FALSE(Put(u"x"));
        EXPECT_EQ(Get(), u"(busy)");
    }
    EXPECT_EQ(Get(), u"precious");
    EXPECT_TRUE(Put(u"y"));
    EXPECT_EQ(Get(), u"y");
}

TEST_F(SystemClipboard, TakesAnotherProgramsPlainText) {
    PutRaw(CF_TEXT, "plain", 6);
    EXPECT_EQ(Get(), u"plain") << "the system converts it";
}

TEST_F(SystemClipboard, TakesFiftyMegabytes) {
    std::u16string text(25U << 20, u'x');
    for (size_t i = 79; i < text.size(); i += 80) text[i] = u'\n';
    EXPECT_TRUE(Put(text));
    EXPECT_TRUE(Get() == text);
}

}  // namespace
}  // namespace nira
