#include "files/folder_paths.h"

#include <string>

#include "host/files_support.h"

namespace nira {
namespace {

class FolderPaths : public ServicesTest {
  protected:
    static std::u16string Take(char16_t* text) {
        std::u16string copy = text;
        MemFree(nullptr, text);
        return copy;
    }
    static std::u16string Join(const char16_t* folder, const char16_t* name) {
        return Take(JoinPath(folder, name));
    }
    static std::u16string Tidied(const std::u16string& path) {
        std::u16string text = path;
        TidyPath(text.data());
        return text.c_str();
    }
    static std::u16string Up(const std::u16string& folder) {
        std::u16string text = folder;
        GoUp(text.data());
        return text.c_str();
    }
};

TEST_F(FolderPaths, JoinByOneBackslash) {
    EXPECT_EQ(Join(u"C:\\a", u"b.txt"), u"C:\\a\\b.txt");
    EXPECT_EQ(Join(u"C:", u"b.txt"), u"C:\\b.txt");
    EXPECT_EQ(Join(u"", u"b.txt"), u"\\b.txt");
}

TEST_F(FolderPaths, JoinInTheRootFolderMakesNoServerOfAPathOfTheRootFolder) {
    EXPECT_EQ(Join(u"", u"\\b.txt"), u"\\b.txt");
    EXPECT_EQ(Join(u"", u"\\\\server\\share"), u"\\\\server\\share");
}

TEST_F(FolderPaths, JoinLeavesAServersPathAlone) {
    EXPECT_EQ(Join(u"C:\\a", u"\\\\server\\share\\b.txt"), u"\\\\server\\share\\b.txt");
    EXPECT_EQ(Join(u"C:\\a", u"\\b.txt"), u"C:\\a\\\\b.txt") << "which tidying takes for one folder below";
}

TEST_F(FolderPaths, TidyingRestartsAtADrive) {
    EXPECT_EQ(Tidied(u"C:\\a\\D:\\x\\y.txt"), u"D:\\x\\y.txt");
    EXPECT_EQ(Tidied(u"\\D:"), u"D:");
    EXPECT_EQ(Tidied(u"C:\\a\\d:\\"), u"d:");
    EXPECT_EQ(Tidied(u"\\\\server\\share\\D:\\x"), u"D:\\x");
    EXPECT_EQ(Tidied(u"C:\\a\\1:\\x"), u"C:\\a\\1:\\x");
    EXPECT_EQ(Tidied(u"C:\\a\\CD:\\x"), u"C:\\a\\CD:\\x");
}

TEST_F(FolderPaths, TidyingFollowsDots) {
    EXPECT_EQ(Tidied(u"C:\\a\\.\\b"), u"C:\\a\\b");
    EXPECT_EQ(Tidied(u"C:\\a\\..\\b"), u"C:\\b");
    EXPECT_EQ(Tidied(u"C:\\a\\.."), u"C:");
    EXPECT_EQ(Tidied(u"C:\\..\\..\\a"), u"C:\\a");
    EXPECT_EQ(Tidied(u"\\.."), u"");
    EXPECT_EQ(Tidied(u"\\a\\..\\b"), u"\\b");
    EXPECT_EQ(Tidied(u"\\a\\...\\b"), u"\\a\\...\\b");
    EXPECT_EQ(Tidied(u"\\\\server\\share\\a\\..\\..\\.."), u"\\\\server\\share");
}

TEST_F(FolderPaths, TidyingLeavesOneBackslashBetweenParts) {
    EXPECT_EQ(Tidied(u"C:\\a\\\\b\\"), u"C:\\a\\b");
    EXPECT_EQ(Tidied(u"C:\\a/b//c"), u"C:\\a\\b\\c");
    EXPECT_EQ(Tidied(u"\\"), u"");
    EXPECT_EQ(Tidied(u"\\\\"), u"");
    EXPECT_EQ(Tidied(u""), u"");
    EXPECT_EQ(Tidied(u"a\\b"), u"a\\b");
}

TEST_F(FolderPaths, TidyingKeepsVerbatimPathsAsTheyAre) {
    EXPECT_EQ(Tidied(u"\\\\?\\C:\\a\\..\\b"), u"\\\\?\\C:\\a\\..\\b");
    EXPECT_EQ(Tidied(u"\\\\.\\pipe\\x"), u"\\\\.\\pipe\\x");
}

TEST_F(FolderPaths, UpCutsTheLastPart) {
    EXPECT_EQ(Up(u"C:\\a\\b"), u"C:\\a");
    EXPECT_EQ(Up(u"C:\\a"), u"C:");
    EXPECT_EQ(Up(u"\\a\\b"), u"\\a");
    EXPECT_EQ(Up(u"\\a"), u"");
}

TEST_F(FolderPaths, UpFromADriveOrAShareIsTheRootFolderWhichStays) {
    EXPECT_EQ(Up(u"C:"), u"");
    EXPECT_EQ(Up(u""), u"");
    EXPECT_EQ(Up(u"\\\\server\\share"), u"");
    EXPECT_EQ(Up(u"\\\\server\\share\\a"), u"\\\\server\\share");
}

TEST_F(FolderPaths, TheLastPartIsTheName) {
    EXPECT_EQ(std::u16string(LastPart(u"C:\\a\\")), u"");
    EXPECT_EQ(std::u16string(LastPart(u"C:\\a\\b.txt")), u"b.txt");
    EXPECT_EQ(std::u16string(LastPart(u"b.txt")), u"b.txt");
}

TEST_F(FolderPaths, ThePersonSeesNoPrefix) {
    EXPECT_EQ(Take(PathForPerson(u"\\\\?\\C:\\a\\nul.txt")), u"C:\\a\\nul.txt");
    EXPECT_EQ(Take(PathForPerson(u"\\\\?\\UNC\\server\\share")), u"\\\\?\\UNC\\server\\share");
    EXPECT_EQ(Take(PathForPerson(u"\\\\?\\")), u"\\\\?\\");
    EXPECT_EQ(Take(PathForPerson(u"C:\\a")), u"C:\\a");
}

TEST_F(FolderPaths, AFilesPathIsItsOwnBlock) {
    EXPECT_EQ(Take(PathForFile(u"\\tmp\\a.txt")), u"\\tmp\\a.txt");
}

}  // namespace
}  // namespace nira
