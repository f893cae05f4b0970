// The stand-in's operations on text: command lines, paths, characters.
#include <gtest/gtest.h>

#include <string>

#include "shell/desktop_command_line.h"
#include "shell/desktop_keys.h"
#include "shell/root_paths.h"
#include "shell/shell_text.h"

namespace {

// Takes a result of the shell's over into a string that frees itself.
std::wstring Taken(wchar_t* text) {
    std::wstring copy = text ? text : L"<null>";
    shell::FreeShellText(text);
    return copy;
}

std::wstring Unquoted(const std::wstring& line) {
    std::wstring path(line.size() + 1, L'#');
    shell::UnquoteCommandLine(line.c_str(), path.data());
    return path.c_str();
}

std::wstring CommandLine(const wchar_t* line) {
    wchar_t* path = nullptr;
    EXPECT_TRUE(shell::CommandLinePath(line, &path));
    return Taken(path);
}

TEST(ShellCommandLine, TakesTheQuotesOffOneArgument) {
    EXPECT_EQ(Unquoted(L"\"C:\\a b\\c.txt\""), L"C:\\a b\\c.txt");
    EXPECT_EQ(Unquoted(L"  \"C:\\a b\\c.txt\"  \"second\""), L"C:\\a b\\c.txt");
    EXPECT_EQ(Unquoted(L"\"C:\\a b\"\\c.txt rest"), L"C:\\a b\\c.txt");
}

TEST(ShellCommandLine, TakesAnUnquotedLineWhole) {
    EXPECT_EQ(Unquoted(L"C:\\a b\\c d.txt"), L"C:\\a b\\c d.txt");
    EXPECT_EQ(Unquoted(L"\t my notes.txt  "), L"my notes.txt");
    EXPECT_EQ(Unquoted(L"C:\\my\" \"notes.txt"), L"C:\\my notes.txt");
}

TEST(ShellCommandLine, LeavesBackslashesThatStandBeforeNoQuote) {
    EXPECT_EQ(Unquoted(L"\\\\server\\share\\x"), L"\\\\server\\share\\x");
    EXPECT_EQ(Unquoted(L"\"\\\\server\\my share\\x\""), L"\\\\server\\my share\\x");
}

TEST(ShellCommandLine, HalvesBackslashesBeforeAQuote) {
    EXPECT_EQ(Unquoted(L"\"a\\\"b\" c"), L"a\"b");
    EXPECT_EQ(Unquoted(L"\"a b\\\\\" c"), L"a b\\");
}

TEST(ShellCommandLine, ClosesAtAQuoteThatEndsTheLineAfterAFolder) {
    EXPECT_EQ(Unquoted(L"\"C:\\my folder\\\""), L"C:\\my folder\\");
}

TEST(ShellCommandLine, AcceptsAQuoteThatIsNeverClosed) { EXPECT_EQ(Unquoted(L"\"C:\\a b"), L"C:\\a b"); }

TEST(ShellCommandLine, GivesAnEmptyPathForAnEmptyLine) {
    EXPECT_EQ(CommandLine(L""), L"");
    EXPECT_EQ(CommandLine(L"   "), L"");
    EXPECT_EQ(CommandLine(L"\"\""), L"");
    EXPECT_EQ(CommandLine(nullptr), L"");
}

TEST(ShellCommandLine, MakesARelativePathAbsolute) {
    wchar_t folder[MAX_PATH];
    GetCurrentDirectoryW(MAX_PATH, folder);
    std::wstring expected = folder;
    if (expected.back() != L'\\') {
        expected += L'\\';
    }

    EXPECT_EQ(CommandLine(L"\"my notes.txt\""), expected + L"my notes.txt");
    EXPECT_EQ(CommandLine(L"sub\\..\\notes.txt"), expected + L"notes.txt");
}

TEST(ShellCommandLine, KeepsAnAbsolutePathAndItsLetters) {
    EXPECT_EQ(CommandLine(L"C:\\\x00FC\x4E2D\\a.txt"), L"C:\\\x00FC\x4E2D\\a.txt");
}

TEST(ShellCommandLine, TakesPathsLongerThanTheOldLimit) {
    const std::wstring path = L"C:\\" + std::wstring(200, L'a') + L"\\" + std::wstring(200, L'b');
    EXPECT_EQ(CommandLine((L"\"" + path + L"\"").c_str()), path);
}

std::wstring FromRoot(const wchar_t* path, const wchar_t* home = L"Z:\\home\\me") {
    return Taken(shell::PathFromRoot(path, home));
}

TEST(ShellRootPath, PutsTheRootFolderIntoTheHomeFolder) {
    EXPECT_EQ(FromRoot(L"\\notes.txt"), L"Z:\\home\\me\\notes.txt");
    EXPECT_EQ(FromRoot(L"\\a\\b\\"), L"Z:\\home\\me\\a\\b\\");
    EXPECT_EQ(FromRoot(L"\\notes.txt", L"Z:\\"), L"Z:\\notes.txt");
}

TEST(ShellRootPath, TakesTheRootFolderAloneForTheHomeFolder) {
    EXPECT_EQ(FromRoot(L"\\"), L"Z:\\home\\me");
    EXPECT_EQ(FromRoot(L"\\", L"Z:\\home\\me\\"), L"Z:\\home\\me");
    EXPECT_EQ(FromRoot(L"\\", L"Z:\\"), L"Z:\\");
}

TEST(ShellRootPath, RestartsAtADrive) {
    EXPECT_EQ(FromRoot(L"\\C:\\a"), L"C:\\a");
    EXPECT_EQ(FromRoot(L"\\C:"), L"C:\\");
    EXPECT_EQ(FromRoot(L"\\C:\\"), L"C:\\");
    EXPECT_EQ(FromRoot(L"\\folder\\d:\\b\\E:\\c"), L"E:\\c");
}

TEST(ShellRootPath, TakesOnlyALetterAndAColonForADrive) {
    EXPECT_EQ(FromRoot(L"\\CD:\\a"), L"Z:\\home\\me\\CD:\\a");
    EXPECT_EQ(FromRoot(L"\\1:\\a"), L"Z:\\home\\me\\1:\\a");
    EXPECT_EQ(FromRoot(L"\\a\\C:x"), L"Z:\\home\\me\\a\\C:x");
}

TEST(ShellRootPath, LeavesOtherPathsAsTheyAre) {
    EXPECT_EQ(FromRoot(L"\\\\server\\share\\C:\\x"), L"\\\\server\\share\\C:\\x");
    EXPECT_EQ(FromRoot(L"\\\\?\\C:\\x"), L"\\\\?\\C:\\x");
    EXPECT_EQ(FromRoot(L"C:\\x"), L"C:\\x");
    EXPECT_EQ(FromRoot(L"x\\y"), L"x\\y");
    EXPECT_EQ(FromRoot(L""), L"");
}

TEST(ShellRootPath, ReadsBothFormsOfWinesHomeFolder) {
    EXPECT_EQ(Taken(shell::DosPathOfWineHome(L"\\??\\Z:\\home\\me")), L"Z:\\home\\me");
    EXPECT_EQ(Taken(shell::DosPathOfWineHome(L"\\??\\unix\\home\\me")), L"Z:\\home\\me");
    EXPECT_EQ(Taken(shell::DosPathOfWineHome(L"\\??\\Z:\\home\\me\\")), L"Z:\\home\\me");
    EXPECT_EQ(Taken(shell::DosPathOfWineHome(L"\\??\\Z:")), L"Z:\\");
    EXPECT_EQ(shell::DosPathOfWineHome(L"C:\\users\\me"), nullptr);
    EXPECT_EQ(shell::DosPathOfWineHome(L""), nullptr);
}

// Sets an environment variable for one test.
struct Environment {
    const wchar_t* name;
    wchar_t before[500] = {};
    bool had;
    Environment(const wchar_t* variable, const wchar_t* value) : name(variable) {
        had = GetEnvironmentVariableW(name, before, 500) > 0;
        SetEnvironmentVariableW(name, value);
    }
    ~Environment() { SetEnvironmentVariableW(name, had ? before : nullptr); }
};

TEST(ShellRootPath, PrefersTheHostsHomeFolder) {
    Environment wine(L"WINEHOMEDIR", L"\\??\\Z:\\home\\me");
    EXPECT_EQ(Taken(shell::HomeFolder()), L"Z:\\home\\me");
    EXPECT_EQ(Taken(shell::DesktopPath(L"\\notes.txt")), L"Z:\\home\\me\\notes.txt");
}

TEST(ShellRootPath, FallsBackToTheProfile) {
    Environment wine(L"WINEHOMEDIR", nullptr);
    Environment profile(L"USERPROFILE", L"C:\\Users\\me\\");
    EXPECT_EQ(Taken(shell::HomeFolder()), L"C:\\Users\\me");
    EXPECT_EQ(Taken(shell::DesktopPath(L"\\")), L"C:\\Users\\me");
}

TEST(ShellRootPath, NeedsNoHomeFolderForADrive) {
    EXPECT_EQ(Taken(shell::DesktopPath(L"C:\\a")), L"C:\\a");
    EXPECT_EQ(Taken(shell::DesktopPath(L"\\\\server\\x")), L"\\\\server\\x");
}

TEST(ShellRootPath, NamesAHomeFolderThatExists) {
    const std::wstring home = Taken(shell::HomeFolder());
    const DWORD attributes = GetFileAttributesW(home.c_str());
    ASSERT_NE(attributes, INVALID_FILE_ATTRIBUTES);
    EXPECT_TRUE(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

TEST(ShellKeys, DropsControlCharactersOfADesktopKeyboard) {
    for (const wchar_t character : {L'\x01', L'\x0A', L'\x1B', L'\x1F', L'\x7F', L'\x00'}) {
        EXPECT_TRUE(shell::IsStrayCharacter(character, false)) << static_cast<int>(character);
        EXPECT_TRUE(shell::IsStrayCharacter(character, true)) << static_cast<int>(character);
    }
}

TEST(ShellKeys, KeepsTextBackspaceAndReturn) {
    for (const wchar_t character : {L' ', L'a', L'~', L'\x80', L'\x00E4', L'\x4E2D', L'\b', L'\r'}) {
        EXPECT_FALSE(shell::IsStrayCharacter(character, false)) << static_cast<int>(character);
        EXPECT_FALSE(shell::IsStrayCharacter(character, true)) << static_cast<int>(character);
    }
}

TEST(ShellKeys, KeepsATabOnlyWithoutCtrl) {
    EXPECT_FALSE(shell::IsStrayCharacter(L'\t', false));
    EXPECT_TRUE(shell::IsStrayCharacter(L'\t', true));
}

TEST(ShellKeys, LooksAtCharacterMessagesAlone) {
    MSG message = {};
    message.wParam = 27;
    message.message = WM_CHAR;
    EXPECT_TRUE(shell::IsStrayCharacterMessage(message));
    message.message = WM_KEYDOWN;
    EXPECT_FALSE(shell::IsStrayCharacterMessage(message));
}

// Sets the state of one key for this thread while it lives.
struct HeldKey {
    BYTE before[256];
    HeldKey(int key, BYTE state) {
        GetKeyboardState(before);
        BYTE changed[256];
        memcpy(changed, before, sizeof(changed));
        changed[key] = state;
        SetKeyboardState(changed);
    }
    ~HeldKey() { SetKeyboardState(before); }
};

TEST(ShellKeys, ShowsNoToggleOfCtrlAndShift) {
    for (const int key : {VK_CONTROL, VK_SHIFT, VK_LCONTROL, VK_RSHIFT}) {
        HeldKey toggled(key, 0x01);
        ASSERT_NE(GetKeyState(key), 0);
        EXPECT_EQ(shell::KeyState(key), 0) << key;
    }
}

TEST(ShellKeys, ShowsThatAKeyIsHeld) {
    for (const int key : {VK_CONTROL, VK_SHIFT}) {
        HeldKey held(key, 0x81);
        EXPECT_LT(shell::KeyState(key), 0) << key;
    }
}

TEST(ShellKeys, KeepsTheToggleOfOtherKeys) {
    HeldKey toggled(VK_CAPITAL, 0x01);
    EXPECT_EQ(shell::KeyState(VK_CAPITAL) & 1, 1);
}

}  // namespace
