// Plug-in libraries, good and bad, as real libraries of the system.
#include <cstdio>

#include "platform/plug_in.h"
#include "windows/real_files_fixture.h"

namespace nira {
namespace {

// The folder of the test program, where its libraries lie too.
std::wstring ProgramFolder() {
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    const std::wstring program = path;
    return program.substr(0, program.rfind(L'\\'));
}

// The codec at index 5, under the name of its behaviour.
class PlugIns : public RealFiles {
  protected:
    // A library that no other test has spoiled: a copy with a name of its own.
    std::wstring Copy(const wchar_t* library) const {
        static int number = 0;
        const std::wstring copy = Path(L"plug-in " + std::to_wstring(++number) + L".dll");
        EXPECT_TRUE(CopyFileW((ProgramFolder() + L"\\" + library).c_str(), copy.c_str(), TRUE));
        return copy;
    }
    static void Register(const std::wstring& behaviour, const std::wstring& path) {
        HKEY key = nullptr;
        RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"Software\\NIRA");
        RegCreateKeyExW(HKEY_LOCAL_MACHINE, L"Software\\NIRA\\Encodings", 0, nullptr, 0, KEY_ALL_ACCESS,
                        nullptr, &key, nullptr);
        RegSetValueExW(key, behaviour.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(path.c_str()),
                       static_cast<DWORD>((path.size() + 1) * sizeof(wchar_t)));
        RegCloseKey(key);
        ASSERT_EQ(InitCodecs(), 1);
        ASSERT_EQ(TheCodecList().count, 6u);
    }
    void Use(const wchar_t* behaviour, const wchar_t* library = L"test_plug_in.dll") {
        Register(behaviour, Copy(library));
    }

    void Renew() {
        EditorDestroy(editor_);
        editor_ = EditorCreate();
    }
    int LoadIt() {
        Renew();
        return Load(editor_, OwnPath(L"a.txt"), 5);
    }
    void ExpectLoadFails(const std::wstring& message, const std::wstring& what) {
        BoxCloser box;
        EXPECT_EQ(LoadIt(), 0) << what;
        EXPECT_EQ(box.Text(), message) << what;
        EXPECT_EQ(Get(L"a.txt"), "old") << what;
    }
    void ExpectSaveFails(const std::wstring& message, const std::wstring& what) {
        Renew();
        SetEditorPath(editor_, OwnPath(L"a.txt"));
        editor_->codecId = 5;
        TextInsert(editor_, 0, 0, u"new", 3);
        BoxCloser box;
        EXPECT_EQ(Save(editor_), 0) << what;
        EXPECT_EQ(box.Text(), message) << what;
        EXPECT_EQ(Get(L"a.txt"), "old") << what;
        EXPECT_EQ(Get(L"a.txt0"), "(missing)") << what;
        EXPECT_EQ(editor_->saveFailed, 1) << what;
    }
};

volatile uintptr_t nowhere = 0x10;

constexpr const wchar_t* kDecoder = L"Error initializing decoder";
constexpr const wchar_t* kReading = L"Error reading file";
constexpr const wchar_t* kEncoder = L"Error initializing encoder";
constexpr const wchar_t* kWriting = L"Error writing file";

TEST_F(PlugIns, AGoodOneLoadsAndSaves) {
    Use(L"good");
    std::string bytes;
    for (int i = 0; i < 60000; ++i) bytes += static_cast<char>(i % 100 == 99 ? '\n' : 'a' + i % 26);
    Put(L"a.txt", bytes + "\xE9");
    ASSERT_EQ(LoadIt(), 1);
    EXPECT_EQ(editor_->lineCount, 601u);
    EXPECT_EQ(editor_->lines[600].text[0], u'\u00E9');
    EXPECT_EQ(editor_->codecId, 5u);
    for (const uint32_t safeSave : {0u, 1u}) {
        TheOptions().safeSave = safeSave;
        ASSERT_EQ(Save(editor_), 1);
        EXPECT_EQ(Get(L"a.txt"), bytes + "\xE9");
    }
}

TEST_F(PlugIns, ItsLibraryIsUnloadedAfterEachFile) {
    const std::wstring copy = Copy(L"test_plug_in.dll");
    Register(L"good", copy);
    Put(L"a.txt", "old");
    ASSERT_EQ(LoadIt(), 1);
    EXPECT_EQ(GetModuleHandleW(copy.c_str()), nullptr);
}

TEST_F(PlugIns, OnesThatCannotBeMadeAreTold) {
    Put(L"a.txt", "old");
    Put(L"text.dll", "This is no library.");
    const std::pair<const wchar_t*, std::wstring> libraries[] = {
        {L"missing", Path(L"missing.dll")},
        {L"in no folder", Path(L"no folder\\missing.dll")},
        {L"a folder", Path(L"")},
        {L"no path", L""},
        {L"no library", Path(L"text.dll")},
        {L"without GetEncoder", Copy(L"test_plug_in_no_export.dll")},
        {L"faults when it starts", Copy(L"test_plug_in_start_faults.dll")},
        {L"refuses", Copy(L"test_plug_in.dll")},
        {L"leaves decode out", Copy(L"test_plug_in.dll")},
        {L"faults in GetEncoder", Copy(L"test_plug_in.dll")},
        {L"faults in create", Copy(L"test_plug_in.dll")},
    };
    for (const auto& [behaviour, path] : libraries) {
        Register(behaviour, path);
        ExpectLoadFails(kDecoder, behaviour);
        ExpectSaveFails(kEncoder, behaviour);
    }
}

TEST_F(PlugIns, FaultsAndBrokenPromisesAreReadErrors) {
    Put(L"a.txt", "old");
    for (const wchar_t* behaviour :
         {L"faults in decode", L"faults in the second chunk", L"faults in currentIndex", L"faults in destroy",
          L"takes too much", L"takes nothing", L"counts too much", L"gives a foreign buffer",
          L"grows a foreign block"}) {
        Use(behaviour);
        ExpectLoadFails(kReading, behaviour);
    }
}

TEST_F(PlugIns, EveryKindOfFaultIsStopped) {
    Put(L"a.txt", "old");
    for (const wchar_t* behaviour : {L"divides by zero", L"knows no instruction", L"uses up the stack",
                                     L"throws", L"raises what nobody may continue", L"jumps to nowhere"}) {
        Use(behaviour);
        ExpectLoadFails(kReading, behaviour);
    }
}

TEST_F(PlugIns, TheStackCanBeUsedUpAgainAndAgain) {
    Put(L"a.txt", "old");
    for (int i = 0; i < 3; ++i) {
        Use(L"uses up the stack");
        ExpectLoadFails(kReading, std::to_wstring(i));
    }
}

TEST_F(PlugIns, OneThatNeverTakesAnythingEndsOnABigFileToo) {
    const std::string bytes(90000, 'x');
    Put(L"a.txt", bytes);
    Use(L"takes nothing");
    BoxCloser box;
    EXPECT_EQ(LoadIt(), 0);
    EXPECT_EQ(box.Text(), kReading);
    EXPECT_EQ(Get(L"a.txt"), bytes);
}

TEST_F(PlugIns, FaultsOnSavingLeaveTheOldFile) {
    Put(L"a.txt", "old");
    for (const uint32_t safeSave : {0u, 1u}) {
        TheOptions().safeSave = safeSave;
        for (const wchar_t* behaviour :
             {L"faults in encode", L"faults in the last block", L"encodes too much", L"faults in destroy"}) {
            Use(behaviour);
            ExpectSaveFails(kWriting, behaviour);
        }
    }
}

TEST_F(PlugIns, ALibraryThatFaultedIsNeitherCalledNorFreedAgain) {
    Put(L"a.txt", "old");
    const std::wstring copy = Copy(L"test_plug_in.dll");
    Register(L"faults in decode", copy);
    ExpectLoadFails(kReading, L"the first time");
    EXPECT_NE(GetModuleHandleW(copy.c_str()), nullptr);
    ExpectLoadFails(kDecoder, L"the second time");
    EXPECT_NE(GetModuleHandleW(copy.c_str()), nullptr);
}

// The guard must leave the program as it found it, whatever a function did to the processor's state.
TEST_F(PlugIns, TheProgramGoesOnAfterManyFaults) {
    for (int i = 0; i < 200; ++i) {
        volatile double before = i * 0.5;
        const GuardedEnd end = RunBehindGuard(
            [](void* context) {
                asm volatile("pcmpeqd %%xmm6, %%xmm6; pcmpeqd %%xmm7, %%xmm7" ::: "xmm6", "xmm7");
                *static_cast<volatile int*>(context) = 1;
            },
            nullptr);
        ASSERT_EQ(end, GuardedEnd::kFaulted);
        ASSERT_EQ(before, i * 0.5);
    }
    EXPECT_EQ(RunBehindGuard([](void*) {}, nullptr), GuardedEnd::kReturned);
}

TEST_F(PlugIns, AnExceptionThatIsCaughtWithinIsNoFault) {
    const GuardedEnd end = RunBehindGuard(
        [](void*) {
            try {
                throw 1;
            } catch (int) {
            }
        },
        nullptr);
    EXPECT_EQ(end, GuardedEnd::kReturned);
}

// A box that a library's request for memory brings up lets messages in, and these may save another document.
TEST_F(PlugIns, AGuardStandsAgainAfterARunWithinItsRun) {
    GuardedEnd inner = GuardedEnd::kReturned;
    const GuardedEnd outer = RunBehindGuard(
        [](void* context) {
            const auto fault = [](void*) { *reinterpret_cast<volatile int*>(nowhere) = 1; };
            *static_cast<GuardedEnd*>(context) = RunBehindGuard(fault, nullptr);
            fault(nullptr);
        },
        &inner);
    EXPECT_EQ(inner, GuardedEnd::kFaulted);
    EXPECT_EQ(outer, GuardedEnd::kFaulted);
}

TEST_F(PlugIns, AGuardedRunCanBeLeft) {
    int steps = 0;
    const GuardedEnd end = RunBehindGuard(
        [](void* context) {
            auto* count = static_cast<int*>(context);
            ++*count;
            if (*count == 1) LeaveGuard();
            ++*count;
        },
        &steps);
    EXPECT_EQ(end, GuardedEnd::kLeft);
    EXPECT_EQ(steps, 1);
}

}  // namespace
}  // namespace nira
