// Memory, files, registry, texts and code page on the real API.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <string>

#include "platform/code_page.h"
#include "platform/files.h"
#include "platform/heap.h"
#include "platform/messages.h"
#include "platform/registry.h"
#include "platform/shell_requests.h"
#include "platform/strings.h"
#include "platform/win32/casts.h"
#include "platform/win32/system_path.h"
#include "shell/low_memory.h"

namespace nira {
namespace {

bool IsZero(const void* block, size_t from, size_t to) {
    const auto* bytes = static_cast<const uint8_t*>(block);
    while (from < to && bytes[from] == 0) ++from;
    return from == to;
}

// ---- Memory ----

class SystemHeap : public ::testing::TestWithParam<bool> {
  protected:
    void SetUp() override {
        if (GetParam()) {
            heap_ = PlatformHeapCreate(4096);
            ASSERT_NE(heap_, nullptr);
        }
    }
    void TearDown() override { PlatformHeapDestroy(heap_); }
    HeapHandle heap_ = nullptr;
};

INSTANTIATE_TEST_SUITE_P(Kinds, SystemHeap, ::testing::Bool());

TEST_P(SystemHeap, ZeroesBlocksAndTheirGrowth) {
    const size_t sizes[] = {24, 20, 30, 5000, 100, 110, 900000, 2000000, 16, 700};
    size_t size = 8;
    void* block = PlatformHeapAlloc(heap_, size);
    ASSERT_TRUE(IsZero(block, 0, size));
    std::memset(block, 0xAB, size);
    for (const size_t next : sizes) {
        block = PlatformHeapReAlloc(heap_, block, next);
        ASSERT_NE(block, nullptr);
        EXPECT_EQ(PlatformHeapSize(heap_, block), next);
        EXPECT_EQ(static_cast<uint8_t*>(block)[(size < next ? size : next) - 1], 0xAB);
        EXPECT_TRUE(next <= size || IsZero(block, size, next)) << size << " to " << next;
        std::memset(block, 0xAB, next);
        size = next;
    }
    PlatformHeapFree(heap_, block);
}

TEST_P(SystemHeap, RefusesImpossibleSizesAndLeavesTheBlock) {
    void* block = PlatformHeapAlloc(heap_, 16);
    std::memset(block, 1, 16);
    EXPECT_EQ(PlatformHeapAlloc(heap_, SIZE_MAX / 2), nullptr);
    EXPECT_EQ(PlatformHeapReAlloc(heap_, block, SIZE_MAX / 2), nullptr);
    EXPECT_EQ(PlatformHeapSize(heap_, block), 16u);
    EXPECT_EQ(static_cast<uint8_t*>(block)[15], 1);
    PlatformHeapFree(heap_, block);
    PlatformHeapFree(heap_, nullptr);
    EXPECT_EQ(PlatformHeapSize(heap_, nullptr), 0u);
}

// ---- Files ----

class SystemFiles : public ::testing::Test {
  protected:
    void SetUp() override {
        wchar_t temporary[MAX_PATH];
        ASSERT_NE(GetTempPathW(MAX_PATH, temporary), 0u);
        folder_ = FromWide(temporary);
        folder_ += u"nira_files_test";
        CreateDirectoryW(ToWide(folder_.c_str()), nullptr);
        Empty();
    }
    void TearDown() override {
        Empty();
        EXPECT_TRUE(RemoveDirectoryW(ToWide(folder_.c_str())));
    }
    void Empty() {
        for (const char16_t* name : kNames) {
            SetFileAttributesW(ToWide(Path(name).c_str()), FILE_ATTRIBUTE_NORMAL);
            DeleteFileW(ToWide(Path(name).c_str()));
        }
    }
    std::u16string Path(const char16_t* name) { return folder_ + u"\\" + name; }
    static bool Make(const std::u16string& path, const char* content) {
        FileHandle file = FileCreateForWriting(path.c_str());
        uint32_t written = 0;
        const auto size = static_cast<uint32_t>(std::strlen(content));
        const bool done = file != nullptr && FileWrite(file, content, size, &written) && FileFlush(file);
        return FileClose(file) && done && written == size;
    }
    static std::string Content(const std::u16string& path) {
        FileHandle file = FileOpenForReading(path.c_str());
        if (file == nullptr) return "(not opened)";
        char content[64];
        uint32_t read = 0;
        EXPECT_TRUE(FileRead(file, content, sizeof(content), &read));
        uint32_t atEnd = 9;
        EXPECT_TRUE(FileRead(file, content + read, 1, &atEnd));
        EXPECT_EQ(atEnd, 0u);
        FileClose(file);
        return std::string(content, read);
    }
    static constexpr const char16_t* kNames[] = {u"a.txt", u"b.txt", u"\u00E4 \u65E5\u672C.txt"};
    std::u16string folder_;
};

TEST_F(SystemFiles, WriteAndReadBack) {
    for (const char16_t* name : kNames) {
        EXPECT_TRUE(Make(Path(name), "content"));
        EXPECT_EQ(Content(Path(name)), "content");
        EXPECT_TRUE(FileExists(Path(name).c_str()));
    }
    EXPECT_TRUE(Make(Path(u"a.txt"), "x"));
    EXPECT_EQ(Content(Path(u"a.txt")), "x");
}

TEST_F(SystemFiles, SayWhyTheyCannotBeOpened) {
    EXPECT_EQ(FileOpenForReading(Path(u"none").c_str()), nullptr);
    EXPECT_EQ(LastSystemError(), DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(FileOpenForReading(Path(u"none\\none").c_str()), nullptr);
    EXPECT_EQ(LastSystemError(), DWORD{ERROR_PATH_NOT_FOUND});
    EXPECT_EQ(FileOpenForReading(folder_.c_str()), nullptr);
    EXPECT_EQ(LastSystemError(), DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(FileOpenForReading(u""), nullptr);
    EXPECT_EQ(FileOpenForReading(nullptr), nullptr);
    EXPECT_EQ(LastSystemError(), DWORD{ERROR_PATH_NOT_FOUND});
    EXPECT_FALSE(FileExists(Path(u"none").c_str()));
    EXPECT_TRUE(FileExists(folder_.c_str()));
    EXPECT_TRUE(FileClose(nullptr));
}

TEST_F(SystemFiles, RespectReadOnlyAndSharing) {
    ASSERT_TRUE(Make(Path(u"a.txt"), "kept"));
    SetFileAttributesW(ToWide(Path(u"a.txt").c_str()), FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(FileCreateForWriting(Path(u"a.txt").c_str()), nullptr);
    EXPECT_EQ(LastSystemError(), DWORD{ERROR_ACCESS_DENIED});
    EXPECT_FALSE(FileDelete(Path(u"a.txt").c_str()));
    SetFileAttributesW(ToWide(Path(u"a.txt").c_str()), FILE_ATTRIBUTE_NORMAL);

    FileHandle reader = FileOpenForReading(Path(u"a.txt").c_str());
    FileHandle second = FileOpenForReading(Path(u"a.txt").c_str());
    EXPECT_NE(second, nullptr);
    EXPECT_EQ(FileCreateForWriting(Path(u"a.txt").c_str()), nullptr);
    EXPECT_EQ(LastSystemError(), DWORD{ERROR_SHARING_VIOLATION});
    FileClose(second);
    FileClose(reader);
    EXPECT_EQ(Content(Path(u"a.txt")), "kept");
}

TEST_F(SystemFiles, MoveNeverOverwrites) {
    ASSERT_TRUE(Make(Path(u"a.txt"), "old"));
    ASSERT_TRUE(Make(Path(u"b.txt"), "other"));
    EXPECT_FALSE(FileMove(Path(u"a.txt").c_str(), Path(u"b.txt").c_str()));
    EXPECT_EQ(LastSystemError(), DWORD{ERROR_ALREADY_EXISTS});
    EXPECT_TRUE(FileDelete(Path(u"b.txt").c_str()));
    EXPECT_TRUE(FileMove(Path(u"a.txt").c_str(), Path(u"b.txt").c_str()));
    EXPECT_EQ(Content(Path(u"b.txt")), "old");
    EXPECT_FALSE(FileDelete(Path(u"a.txt").c_str()));
}

TEST_F(SystemFiles, MayLieDeeperThanThePlainLimit) {
    std::u16string deep = u"\\\\?\\" + folder_;
    std::u16string plain = folder_;
    const std::u16string level = u"\\" + std::u16string(100, u'd');
    for (int depth = 0; depth < 3; ++depth) {
        deep += level;
        plain += level;
        ASSERT_TRUE(CreateDirectoryW(ToWide(deep.c_str()), nullptr));
    }
    ASSERT_GT(plain.size(), 259u);

    // The form that the prefix alone would not allow, too.
    EXPECT_TRUE(Make(plain + u"/.\\a.txt", "deep"));
    EXPECT_EQ(Content(plain + u"\\a.txt"), "deep");
    EXPECT_TRUE(FileMove((plain + u"\\a.txt").c_str(), (plain + u"\\b.txt").c_str()));
    EXPECT_TRUE(FileExists((plain + u"\\b.txt").c_str()));
    EXPECT_TRUE(FileDelete((plain + u"\\b.txt").c_str()));

    for (int depth = 0; depth < 3; ++depth) {
        EXPECT_TRUE(RemoveDirectoryW(ToWide(deep.c_str())));
        deep.resize(deep.size() - level.size());
    }
}

// Wine opens long paths in either form; Windows needs the prefix.
TEST(SystemPaths, AreLiftedOnlyWhenTheyAreLongAndAbsolute) {
    const std::u16string tail = std::u16string(260, u'x') + u".txt";
    const auto lifted = [](const std::u16string& path) {
        return std::u16string(FromWide(SystemPath(path.c_str()).Get()));
    };
    EXPECT_EQ(lifted(u"C:\\a\\" + tail), u"\\\\?\\C:\\a\\" + tail);
    EXPECT_EQ(lifted(u"C:/a/../b/" + tail), u"\\\\?\\C:\\b\\" + tail);
    EXPECT_EQ(lifted(u"\\\\host\\share\\" + tail), u"\\\\?\\UNC\\host\\share\\" + tail);
    EXPECT_EQ(lifted(u"\\\\?\\C:\\" + tail), u"\\\\?\\C:\\" + tail);
    EXPECT_EQ(lifted(tail), tail);
    EXPECT_EQ(lifted(u"C:\\a\\" + std::u16string(242, u'x')), u"C:\\a\\" + std::u16string(242, u'x'));
    EXPECT_EQ(lifted(u"C:\\a\\" + std::u16string(243, u'x')), u"\\\\?\\C:\\a\\" + std::u16string(243, u'x'));
}

TEST(SystemPaths, OfDevicesAreRefusedHoweverTheyAreWritten) {
    for (const char16_t* path : {u"NUL", u"C:\\a\\nul", u"\\\\.\\NUL", u"//./nul", u"\\\\.\\C:", u"COM1"}) {
        EXPECT_EQ(SystemPath(path).Get(), nullptr) << ToWide(path);
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_NAME));
    }
    EXPECT_NE(SystemPath(u"\\\\server\\share\\a.txt").Get(), nullptr);
}

TEST_F(SystemFiles, TakeADriveBelowTheRootForTheDrive) {
    ASSERT_TRUE(Make(Path(u"a.txt"), "there"));
    EXPECT_EQ(Content(u"\\" + Path(u"a.txt")), "there");
}

TEST_F(SystemFiles, TakeTheRootForTheHomeFolder) {
    // The folder is the person's own, whatever else runs.
    const std::wstring name = L"\\nira test " + std::to_wstring(GetCurrentProcessId()) + L" " +
                              std::to_wstring(GetTickCount64()) + L".txt";
    const char16_t* path = FromWide(name.c_str());
    ASSERT_TRUE(Make(path, "home"));
    EXPECT_EQ(Content(path), "home");
    EXPECT_EQ(GetFileAttributesW(name.c_str()), INVALID_FILE_ATTRIBUTES);
    EXPECT_TRUE(FileDelete(path));
}

// ---- Registry ----

class SystemRegistry : public ::testing::Test {
  protected:
    void SetUp() override { Forget(); }
    void TearDown() override { Forget(); }
    static void Forget() { RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\NIRA test"); }
    static constexpr const char16_t* kPath = u"Software\\NIRA test\\Inner";
};

TEST_F(SystemRegistry, KeepsTypedValues) {
    EXPECT_EQ(RegistryOpen(RegistryRoot::kCurrentUser, kPath), nullptr);
    EXPECT_EQ(LastSystemError(), DWORD{ERROR_FILE_NOT_FOUND});
    RegistryHandle key = RegistryCreate(RegistryRoot::kCurrentUser, kPath);
    ASSERT_NE(key, nullptr);
    const uint32_t number = 0x12345678;
    EXPECT_TRUE(RegistrySet(key, u"Number", RegistryType::kDword, &number, 4));
    EXPECT_TRUE(RegistrySet(key, u"Text", RegistryType::kString, u"abc", 8));
    RegistryClose(key);

    key = RegistryOpen(RegistryRoot::kCurrentUser, kPath);
    uint32_t size = 0;
    uint32_t read = 0;
    EXPECT_TRUE(RegistryQuery(key, u"NUMBER", nullptr, &size));
    EXPECT_EQ(size, 4u);
    EXPECT_TRUE(RegistryQuery(key, u"number", &read, &size));
    EXPECT_EQ(read, number);
    char16_t text[4];
    size = 6;
    EXPECT_FALSE(RegistryQuery(key, u"Text", text, &size));
    size = 8;
    EXPECT_TRUE(RegistryQuery(key, u"Text", text, &size));
    EXPECT_EQ(std::u16string(text), u"abc");
    EXPECT_FALSE(RegistryQuery(key, u"None", nullptr, &size));
    EXPECT_FALSE(RegistrySet(key, u"Number", RegistryType::kDword, &number, 4));
    RegistryClose(key);
    RegistryClose(nullptr);
}

TEST_F(SystemRegistry, EnumeratesAndDeletes) {
    RegistryHandle key = RegistryCreate(RegistryRoot::kCurrentUser, kPath);
    const uint32_t number = 1;
    RegistrySet(key, u"first", RegistryType::kDword, &number, 4);
    RegistrySet(key, u"2", RegistryType::kDword, &number, 4);
    uint32_t count = 0;
    uint32_t longest = 0;
    EXPECT_TRUE(RegistryQueryInfo(key, &count, &longest));
    EXPECT_EQ(count, 2u);
    EXPECT_EQ(longest, 5u);
    size_t letters = 0;
    for (uint32_t index = 0; index < 2; ++index) {
        char16_t name[6];
        uint32_t length = 6;
        EXPECT_TRUE(RegistryEnumValue(key, index, name, &length));
        EXPECT_EQ(std::u16string(name).size(), length);
        letters += length;
    }
    EXPECT_EQ(letters, 6u);
    char16_t name[6];
    uint32_t length = 6;
    EXPECT_FALSE(RegistryEnumValue(key, 2, name, &length));
    EXPECT_TRUE(RegistryDeleteValue(key, u"FIRST"));
    EXPECT_FALSE(RegistryDeleteValue(key, u"first"));
    RegistryClose(key);
}

// ---- Texts, messages, code page ----

TEST(SystemStrings, AreTheResourcesOwn) {
    EXPECT_EQ(std::u16string(PlatformString(4014)), u"Error");
    EXPECT_EQ(PlatformString(4014), PlatformString(4014));
    EXPECT_EQ(std::u16string(PlatformString(4044)), u"");
    // Missing alone between two others.
    EXPECT_EQ(std::u16string(PlatformString(4056)), u"");
    EXPECT_EQ(std::u16string(PlatformString(1)), u"");
}

TEST(SystemMessages, AreCutToTheRoom) {
    char16_t whole[200];
    const size_t length = SystemErrorText(ERROR_FILE_NOT_FOUND, whole, 200);
    ASSERT_GT(length, 10u);
    EXPECT_EQ(std::u16string(whole).size(), length);
    char16_t part[6];
    EXPECT_EQ(SystemErrorText(ERROR_FILE_NOT_FOUND, part, 6), 5u);
    EXPECT_EQ(std::u16string(part), std::u16string(whole).substr(0, 5));
    EXPECT_EQ(SystemErrorText(0x2FFFFFFF, whole, 200), 0u);
    EXPECT_EQ(whole[0], 0);
}

// Presses Esc or the given button as soon as a box with the caption has come up.
struct BoxAnswer {
    const wchar_t* caption;
    WPARAM button;
    std::wstring text;
    std::wstring buttons;  // the letters O, C, Y, N of those it has
};

DWORD WINAPI AnswerBox(void* parameter) {
    auto* answer = static_cast<BoxAnswer*>(parameter);
    for (int round = 0; round < 500; ++round) {
        const HWND box = FindWindowW(L"#32770", answer->caption);
        if (box != nullptr && IsWindowVisible(box)) {
            wchar_t text[100] = {};
            GetDlgItemTextW(box, 0xFFFF, text, 100);
            answer->text = text;
            if (GetDlgItem(box, IDOK) != nullptr) answer->buttons += L'O';
            if (GetDlgItem(box, IDYES) != nullptr) answer->buttons += L'Y';
            if (GetDlgItem(box, IDNO) != nullptr) answer->buttons += L'N';
            if (GetDlgItem(box, IDCANCEL) != nullptr) answer->buttons += L'C';
            PostMessageW(box, WM_COMMAND, answer->button, 0);
            return 0;
        }
        Sleep(10);
    }
    return 1;
}

// Shows a box and presses `button`; returns the answer and what the box looked like.
int AnswerTo(MessageKind kind, WPARAM button, BoxAnswer* seen) {
    *seen = {L"NIRA box test", button, {}, {}};
    const HANDLE thread = CreateThread(nullptr, 0, AnswerBox, seen, 0, nullptr);
    const int given = ShowMessage(nullptr, u"Are you there?", u"NIRA box test", kind);
    WaitForSingleObject(thread, INFINITE);
    CloseHandle(thread);
    return given;
}

TEST(SystemMessages, ReturnTheButtonPressed) {
    BoxAnswer seen;
    EXPECT_EQ(AnswerTo(MessageKind::kQuestionYesNoCancel, IDNO, &seen), kAnswerNo);
    EXPECT_EQ(seen.text, L"Are you there?");
    EXPECT_EQ(seen.buttons, L"YNC");
    EXPECT_EQ(AnswerTo(MessageKind::kQuestionYesNoCancel, IDCANCEL, &seen), kAnswerCancel);
    EXPECT_EQ(AnswerTo(MessageKind::kQuestionYesNo, IDYES, &seen), kAnswerYes);
    EXPECT_EQ(seen.buttons, L"YN");
    EXPECT_EQ(AnswerTo(MessageKind::kError, IDOK, &seen), kAnswerOk);
    EXPECT_EQ(seen.buttons, L"O");
}

TEST(SystemCodePage, ConvertsBothWaysAndRefusesTooLittleRoom) {
    const uint8_t bytes[] = {'a', 'b', 'c'};
    char16_t units[3];
    uint8_t back[3];
    EXPECT_EQ(AnsiToUtf16(bytes, 3, nullptr, 0), 3u);
    EXPECT_EQ(AnsiToUtf16(bytes, 3, units, 2), 0u);
    EXPECT_EQ(AnsiToUtf16(bytes, 3, units, 0), 0u);
    EXPECT_EQ(AnsiToUtf16(bytes, 0, units, 3), 0u);
    EXPECT_EQ(AnsiToUtf16(bytes, 3, units, 3), 3u);
    EXPECT_EQ(AnsiFromUtf16(units, 3, nullptr, 0), 3u);
    EXPECT_EQ(AnsiFromUtf16(units, 3, back, 2), 0u);
    EXPECT_EQ(AnsiFromUtf16(units, 3, back, 3), 3u);
    EXPECT_EQ(std::memcmp(bytes, back, 3), 0);
    for (unsigned byte = 0; byte < 256; ++byte) {
        EXPECT_EQ(AnsiIsLeadByte(static_cast<uint8_t>(byte)), IsDBCSLeadByte(static_cast<BYTE>(byte)) != 0);
    }
}

// ---- Shell ----

int boxesShown = 0;
HWND boxOwner = nullptr;
int CountBox(HWND owner, UINT) {
    ++boxesShown;
    boxOwner = owner;
    return IDOK;
}

TEST(SystemShellRequests, GoToTheStandIn) {
    RequestFreeMemory(4711);
    EXPECT_EQ(LastMemoryRequest(), 4711u);
    EXPECT_EQ(shell::LastCloseAppsRequest(), 4711u);
    const shell::OutOfMemoryBox before = shell::SetOutOfMemoryBox(CountBox);
    ShowOutOfMemoryBox(FromHwnd(GetDesktopWindow()));
    shell::SetOutOfMemoryBox(before);
    EXPECT_EQ(boxesShown, 1);
    EXPECT_EQ(boxOwner, GetDesktopWindow());
}

}  // namespace
}  // namespace nira
