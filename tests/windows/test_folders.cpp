// Folders and names on the system's own calls.
#include "platform/folders.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "platform/win32/casts.h"

namespace nira {
namespace {

class Folders : public testing::Test {
  protected:
    void SetUp() override {
        wchar_t temp[MAX_PATH];
        GetTempPathW(MAX_PATH, temp);
        place = std::wstring(temp) + L"nira folders";
        CreateDirectoryW(place.c_str(), nullptr);
    }
    void TearDown() override { RemoveDirectoryW(place.c_str()); }
    std::wstring Name(const std::wstring& name) const { return place + L"\\" + name; }
    static PathKind Kind(const std::wstring& path) {
        SetLastError(0);
        return KindOfPath(FromWide(path.c_str()));
    }

    std::wstring place;
};

TEST_F(Folders, ANewNameIsMissing) {
    EXPECT_EQ(Kind(place), PathKind::kFolder);
    EXPECT_EQ(Kind(Name(L"new (1) & it's 100%.txt")), PathKind::kMissing);
    EXPECT_EQ(Kind(Name(std::wstring(255, L'n'))), PathKind::kMissing);
    EXPECT_EQ(Kind(Name(L"no folder\\new.txt")), PathKind::kMissing);
}

TEST_F(Folders, ANameThatNoFileMayHaveIsUnusable) {
    for (const wchar_t unit : std::wstring(L"\"*:<>?|\t\x01")) {
        EXPECT_EQ(Kind(Name(std::wstring(L"a") + unit + L"b.txt")), PathKind::kUnusable) << int{unit};
        EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_NAME}) << int{unit};
    }
}

TEST_F(Folders, ADevicesNameIsUnusable) {
    for (const wchar_t* name : {L"NUL", L"con", L"AUX", L"prn", L"COM1", L"lpt9"}) {
        EXPECT_EQ(Kind(Name(name)), PathKind::kUnusable) << testing::PrintToString(name);
        EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_NAME});
        EXPECT_FALSE(FolderCreate(FromWide(Name(name).c_str())));
    }
}

TEST_F(Folders, ALongNameIsUnusable) {
    for (const size_t length : {256u, 260u, 1000u}) {
        EXPECT_EQ(Kind(Name(std::wstring(length, L'n'))), PathKind::kUnusable) << length;
        EXPECT_FALSE(FolderCreate(FromWide(Name(std::wstring(length, L'n')).c_str())));
    }
}

TEST_F(Folders, ADriveThatIsNotThereIsUnusableAndCannotBeListed) {
    const DWORD there = GetLogicalDrives();
    wchar_t drive[] = L"D:";
    while (there >> (drive[0] - L'A') & 1) ++drive[0];
    EXPECT_EQ(Kind(drive), PathKind::kUnusable);
    EXPECT_NE(GetLastError(), 0u);
    EXPECT_NE(GetLastError(), DWORD{ERROR_INVALID_NAME});
    EXPECT_EQ(FolderSearchOpen(FromWide(drive)), nullptr);
    EXPECT_NE(GetLastError(), 0u);
}

// What a folder without rights is on a system whose administrator may do everything.
TEST_F(Folders, AFolderThatMayNotBeReadCannotBeListed) {
    const HANDLE held = CreateFileW(place.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                    FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    EXPECT_EQ(FolderSearchOpen(FromWide(place.c_str())), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_SHARING_VIOLATION});
    CloseHandle(held);
    const FolderSearch search = FolderSearchOpen(FromWide(place.c_str()));
    EXPECT_NE(search, nullptr);
    FolderSearchClose(search);
}

}  // namespace
}  // namespace nira
