// Loading and saving on the system's own file calls.
#include "windows/real_files_fixture.h"

namespace nira {
namespace {

TEST_F(RealFiles, AFileComesBackAsItWas) {
    const std::string bytes = "# Title\n\nText \xC3\xA9 \xE2\x82\xAC\n";
    Put(L"notes \u00E9.txt", bytes);
    ASSERT_EQ(Load(editor_, OwnPath(L"notes \u00E9.txt"), kCodecUtf8), 1);
    EXPECT_EQ(editor_->lineCount, 4u);
    EXPECT_EQ(editor_->lineEnd, kLineEndLf);
    TheOptions().safeSave = 1;
    ASSERT_EQ(Save(editor_), 1);
    EXPECT_EQ(Get(L"notes \u00E9.txt"), bytes);
    EXPECT_EQ(Get(L"notes \u00E9.txt0"), "(missing)");
}

TEST_F(RealFiles, AnsiGoesThroughTheSystemsPage) {
    Put(L"a.txt", "caf\xE9");
    ASSERT_EQ(Load(editor_, OwnPath(L"a.txt"), kCodecAnsi), 1);
    wchar_t expected[5] = {};
    MultiByteToWideChar(CP_ACP, 0, "caf\xE9", 4, expected, 4);
    ASSERT_EQ(editor_->lines[0].length, 4u);
    EXPECT_EQ(std::wstring(ToWide(editor_->lines[0].text), 4), expected);
    ASSERT_EQ(Save(editor_), 1);
    EXPECT_EQ(Get(L"a.txt"), "caf\xE9");
}

TEST_F(RealFiles, AMissingFileIsTold) {
    BoxCloser box;
    EXPECT_EQ(Load(editor_, OwnPath(L"missing.txt"), kCodecUtf8), 0);
    EXPECT_EQ(box.Text(), L"Error reading file");
}

TEST_F(RealFiles, AFolderIsNoFile) {
    BoxCloser box;
    EXPECT_EQ(Load(editor_, OwnPath(L"."), kCodecUtf8), 0);
    EXPECT_EQ(box.Text(), L"Error reading file");
}

TEST_F(RealFiles, AReadOnlyFileIsNeitherWrittenNorReplaced) {
    Put(L"a.txt", "old");
    ASSERT_EQ(Load(editor_, OwnPath(L"a.txt"), kCodecUtf8), 1);
    TextInsert(editor_, 0, 0, u"x", 1);
    SetFileAttributesW(Path(L"a.txt").c_str(), FILE_ATTRIBUTE_READONLY);
    for (const uint32_t safeSave : {0u, 1u}) {
        TheOptions().safeSave = safeSave;
        BoxCloser box;
        EXPECT_EQ(Save(editor_), 0);
        EXPECT_EQ(box.Text(), L"Error writing file");
        EXPECT_EQ(Get(L"a.txt"), "old");
        EXPECT_EQ(Get(L"a.txt0"), "(missing)");
        EXPECT_NE(GetFileAttributesW(Path(L"a.txt").c_str()) & FILE_ATTRIBUTE_READONLY, 0u);
        EXPECT_EQ(editor_->saveFailed, 1);
        EXPECT_EQ(editor_->modified, 1);
    }
}

TEST_F(RealFiles, AFileInUseIsNotReplaced) {
    Put(L"a.txt", "old");
    ASSERT_EQ(Load(editor_, OwnPath(L"a.txt"), kCodecUtf8), 1);
    TextInsert(editor_, 0, 0, u"x", 1);
    TheOptions().safeSave = 1;
    const HANDLE other = CreateFileW(Path(L"a.txt").c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                     OPEN_EXISTING, 0, nullptr);
    {
        BoxCloser box;
        EXPECT_EQ(Save(editor_), 0);
        EXPECT_EQ(box.Text(), L"Error writing file");
    }
    CloseHandle(other);
    EXPECT_EQ(Get(L"a.txt"), "old");
    EXPECT_EQ(Save(editor_), 1);
    EXPECT_EQ(Get(L"a.txt"), "xold");
    EXPECT_EQ(editor_->saveFailed, 0);
}

}  // namespace
}  // namespace nira
