#include "app/hand_over.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "app/main_window.h"

namespace nira {
namespace {

constexpr uint32_t kPatience = 300;  // milliseconds
constexpr DWORD kLong = 20000;

// How another instance behaves.
struct Behaviour {
    bool hangs = false;
    bool hasEditor = true;
    bool editorHangs = false;
    DWORD startsFor = 0;  // milliseconds until it has its editor window
    LRESULT answer = kPathTaken;
};

// Another instance: windows of the program's class in a thread of their own.
class OtherInstance {
  public:
    explicit OtherInstance(const Behaviour& behaviour) : behaviour_(behaviour) {
        ready_ = CreateEventW(nullptr, TRUE, FALSE, nullptr);
        end_ = CreateEventW(nullptr, TRUE, FALSE, nullptr);
        thread_ = CreateThread(nullptr, 0, Run, this, 0, nullptr);
        WaitForSingleObject(ready_, kLong);
    }
    OtherInstance(const OtherInstance&) = delete;
    OtherInstance& operator=(const OtherInstance&) = delete;
    ~OtherInstance() {
        SetEvent(end_);
        WaitForSingleObject(thread_, kLong);
        for (const HANDLE handle : {thread_, end_, ready_}) CloseHandle(handle);
    }

    const std::vector<std::wstring>& Paths() const { return paths_; }

  private:
    static LRESULT CALLBACK Answer(HWND window, UINT message, WPARAM first, LPARAM second) {
        auto* self = reinterpret_cast<OtherInstance*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        if (self != nullptr && message == kMessageEditorWindow) return self->EditorWindow();
        if (self == nullptr || message != WM_SETTEXT || window != self->editor_)
            return DefWindowProcW(window, message, first, second);
        if (self->behaviour_.editorHangs) WaitForSingleObject(self->end_, kLong);
        self->paths_.emplace_back(reinterpret_cast<const wchar_t*>(second));
        return self->behaviour_.answer;
    }

    LRESULT EditorWindow() const {
        const bool has = behaviour_.hasEditor && GetTickCount64() >= born_ + behaviour_.startsFor;
        return has ? reinterpret_cast<LRESULT>(editor_) : 0;
    }

    HWND MakeWindow(const wchar_t* kind, HWND parent) {
        const HWND window =
            CreateWindowExW(0, kind, L"", parent != nullptr ? WS_CHILD : WS_OVERLAPPEDWINDOW, 0, 0, 100, 100,
                            parent, nullptr, GetModuleHandleW(nullptr), nullptr);
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        return window;
    }

    static DWORD WINAPI Run(void* context) {
        auto* self = static_cast<OtherInstance*>(context);
        self->born_ = GetTickCount64();
        const HWND main = self->MakeWindow(L"NIRA", nullptr);
        self->editor_ = self->MakeWindow(L"NIRA", main);
        SetEvent(self->ready_);
        if (self->behaviour_.hangs) WaitForSingleObject(self->end_, kLong);
        MSG message = {};
        while (MsgWaitForMultipleObjects(1, &self->end_, FALSE, kLong, QS_ALLINPUT) != WAIT_OBJECT_0) {
            while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
        }
        DestroyWindow(main);
        return 0;
    }

    friend class HandOverTest;

    Behaviour behaviour_;
    std::vector<std::wstring> paths_;
    HWND editor_ = nullptr;
    ULONGLONG born_ = 0;
    HANDLE ready_ = nullptr;
    HANDLE end_ = nullptr;
    HANDLE thread_ = nullptr;
};

class HandOverTest : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        WNDCLASSW description = {};
        description.lpfnWndProc = OtherInstance::Answer;
        description.hInstance = GetModuleHandleW(nullptr);
        description.lpszClassName = L"NIRA";
        ASSERT_NE(RegisterClassW(&description), 0);
    }
    static void TearDownTestSuite() { UnregisterClassW(L"NIRA", GetModuleHandleW(nullptr)); }

    using Paths = std::vector<std::wstring>;
};

TEST_F(HandOverTest, WithoutAnotherInstanceThereIsNobodyToTakeAPath) {
    EXPECT_FALSE(HandOver(u"a.txt", kLong));
    EXPECT_FALSE(HandOver(u"", kLong));
}

TEST_F(HandOverTest, AnotherInstanceTakesThePath) {
    const OtherInstance other({});

    EXPECT_TRUE(HandOver(u"a.txt", kLong));

    EXPECT_EQ(other.Paths(), Paths{L"a.txt"});
}

TEST_F(HandOverTest, WithoutAPathAnotherInstanceOnlyComesForward) {
    const OtherInstance other({});

    EXPECT_TRUE(HandOver(u"", kLong));

    EXPECT_TRUE(other.Paths().empty());
}

TEST_F(HandOverTest, OneThatIsStillStartingIsWaitedFor) {
    Behaviour behaviour = {};
    behaviour.startsFor = 400;
    const OtherInstance other(behaviour);

    EXPECT_TRUE(HandOver(u"a.txt", kLong));

    EXPECT_EQ(other.Paths(), Paths{L"a.txt"});
}

// In each of these the path stays with the one who asks, who opens it; and nobody waits for ever.
TEST_F(HandOverTest, OneThatHangsDoesNotCount) {
    Behaviour behaviour = {};
    behaviour.hangs = true;
    const OtherInstance other(behaviour);

    EXPECT_FALSE(HandOver(u"a.txt", kPatience));
    EXPECT_FALSE(HandOver(u"", kPatience));
}

TEST_F(HandOverTest, OneThatHangsOverThePathDoesNotCount) {
    Behaviour behaviour = {};
    behaviour.editorHangs = true;
    const OtherInstance other(behaviour);

    EXPECT_FALSE(HandOver(u"a.txt", kPatience));
}

TEST_F(HandOverTest, OneThatNeverHasAnEditorDoesNotCount) {
    Behaviour behaviour = {};
    behaviour.hasEditor = false;
    const OtherInstance other(behaviour);

    EXPECT_FALSE(HandOver(u"a.txt", kPatience));
}

TEST_F(HandOverTest, OneWithoutMemoryForThePathDoesNotCount) {
    Behaviour behaviour = {};
    behaviour.answer = kNoMemoryForPath;
    const OtherInstance other(behaviour);

    EXPECT_FALSE(HandOver(u"a.txt", kPatience));
}

TEST_F(HandOverTest, TheOneBesideAHangingOneTakesThePath) {
    Behaviour behaviour = {};
    behaviour.hangs = true;
    const OtherInstance well({});
    // Made later it stands in front, and is asked first.
    const OtherInstance hanging(behaviour);

    EXPECT_TRUE(HandOver(u"a.txt", 10 * kPatience));

    EXPECT_EQ(well.Paths(), Paths{L"a.txt"});
}

}  // namespace
}  // namespace nira
