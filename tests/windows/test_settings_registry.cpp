// Options, encodings and recent files in the system's own registry and menus.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "app/services/memory.h"
#include "app/services/registry_key.h"
#include "files/codecs.h"
#include "files/recent_files.h"
#include "platform/win32/casts.h"
#include "resources/resource.h"
#include "settings/options.h"
#include "settings/options_store.h"
#include "view/fonts.h"
#include "windows/registry_sandbox.h"

namespace nira {
namespace {

constexpr const wchar_t* kOptionsKey = L"Software\\NIRA";

class SettingsRegistry : public testing::Test {
  protected:
    SettingsRegistry() { InitFonts(nullptr); }
    ~SettingsRegistry() override {
        FreeOptions();
        FreeCodecs();
        ShutdownFonts();
    }

    // The bytes and the type of a value; type 0 when it is missing.
    static DWORD Type(const wchar_t* key, const wchar_t* name, std::wstring* text = nullptr) {
        wchar_t data[100] = {};
        DWORD size = sizeof(data);
        DWORD type = 0;
        if (RegGetValueW(HKEY_CURRENT_USER, key, name, RRF_RT_ANY, &type, data, &size) != ERROR_SUCCESS) {
            return 0;
        }
        if (text != nullptr) *text = data;
        return type;
    }

    RegistrySandbox registry_;
};

TEST_F(SettingsRegistry, AnEmptyRegistryGivesTheSystemsColours) {
    ASSERT_EQ(LoadOptions(), 1);
    EXPECT_EQ(TheOptions().text.fore, GetSysColor(COLOR_WINDOWTEXT));
    EXPECT_EQ(TheOptions().text.back, GetSysColor(COLOR_WINDOW));
    EXPECT_EQ(TheOptions().selection.fore, GetSysColor(COLOR_HIGHLIGHTTEXT));
    EXPECT_EQ(TheOptions().selection.back, GetSysColor(COLOR_HIGHLIGHT));
    EXPECT_NE(TheOptions().text.font, nullptr);
    EXPECT_EQ(Type(kOptionsKey, L"tabSize"), 0u) << "nothing is written by loading";
}

TEST_F(SettingsRegistry, SavedOptionsAreFoundAgain) {
    ASSERT_EQ(LoadOptions(), 1);
    TheOptions().tabSize = 500;
    TheOptions().text.fore = 0x00123456;
    SaveOptions();
    FreeOptions();
    ASSERT_EQ(LoadOptions(), 1);
    EXPECT_EQ(TheOptions().tabSize, 500u);
    EXPECT_EQ(TheOptions().text.fore, 0x00123456u);
    std::wstring text;
    EXPECT_EQ(Type(kOptionsKey, L"Font", &text), DWORD{REG_SZ});
    EXPECT_EQ(text, L"Courier New\u100E");
    EXPECT_EQ(Type(kOptionsKey, L"tabSize"), DWORD{REG_DWORD});
    EXPECT_EQ(Type(kOptionsKey, L"DefaultEncoding", &text), DWORD{REG_SZ});
    EXPECT_EQ(text, L"ANSI");
}

TEST_F(SettingsRegistry, AnUnterminatedTextIsNotReadOver) {
    HKEY key = nullptr;
    RegCreateKeyExW(HKEY_CURRENT_USER, kOptionsKey, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr);
    RegSetValueExW(key, L"WordSeparator", 0, REG_BINARY, reinterpret_cast<const BYTE*>("+\0-"), 3);
    RegSetValueExW(key, L"tabSize", 0, REG_BINARY, reinterpret_cast<const BYTE*>("\x08"), 1);
    RegCloseKey(key);
    ASSERT_EQ(LoadOptions(), 1);
    EXPECT_EQ(std::u16string(TheOptions().wordSeparators), u"+");
    EXPECT_EQ(TheOptions().tabSize, 3u);
}

TEST_F(SettingsRegistry, EncodingsAreReadFromTheMachinesKey) {
    ASSERT_EQ(InitCodecs(), 1);
    EXPECT_EQ(TheCodecList().count, kBuiltInCodecs);
    HKEY key = nullptr;
    RegCreateKeyExW(HKEY_LOCAL_MACHINE, L"Software\\NIRA\\Encodings", 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                    &key, nullptr);
    for (const wchar_t* name : {L"KOI8-R", L"a rather long name of an encoding", L"Big5"}) {
        RegSetValueExW(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(L"x"), 4);
    }
    RegCloseKey(key);
    ASSERT_EQ(InitCodecs(), 1);
    ASSERT_EQ(TheCodecList().count, kBuiltInCodecs + 3);
    EXPECT_EQ(std::u16string(CodecName(5)), u"Big5");
    EXPECT_EQ(std::u16string(CodecName(6)), u"KOI8-R");
    EXPECT_EQ(std::u16string(CodecName(7)), u"a rather long name of an encoding");
    EXPECT_EQ(CodecIndex(u"KOI8-R"), 6u);
}

class RecentFilesMenu : public SettingsRegistry {
  protected:
    RecentFilesMenu() : menu_(CreatePopupMenu()) {
        InitCodecs();
        InitRecentFiles(FromHmenu(menu_));
    }
    ~RecentFilesMenu() override {
        InitRecentFiles(nullptr);
        DestroyMenu(menu_);
    }
    std::wstring Label(int position) const {
        wchar_t text[300] = {};
        GetMenuStringW(menu_, static_cast<UINT>(position), text, 300, MF_BYPOSITION);
        return text;
    }

    HMENU menu_;
};

TEST_F(RecentFilesMenu, AnEmptyListShowsOneGrayedItem) {
    ASSERT_EQ(GetMenuItemCount(menu_), 1);
    EXPECT_EQ(Label(0), L"(Empty)");
    EXPECT_NE(GetMenuState(menu_, 0, MF_BYPOSITION) & MF_GRAYED, 0u);
}

TEST_F(RecentFilesMenu, ShowsTheListInOrder) {
    AddRecentFile(u"\\a.txt", kCodecAnsi);
    AddRecentFile(u"\\b.txt", kCodecUtf8);
    ASSERT_EQ(GetMenuItemCount(menu_), 2);
    EXPECT_EQ(Label(0), L"&0 \\b.txt");
    EXPECT_EQ(Label(1), L"&1 \\a.txt");
    EXPECT_EQ(GetMenuItemID(menu_, 1), UINT{CMD_RECENT_FIRST} + 1);
    std::wstring text;
    EXPECT_EQ(Type(L"Software\\NIRA\\MRU", L"0", &text), DWORD{REG_SZ});
    EXPECT_EQ(text, L"\\b.txt\\\\UTF-8");
    RemoveRecentFile(u"\\b.txt");
    ASSERT_EQ(GetMenuItemCount(menu_), 1);
    EXPECT_EQ(Label(0), L"&0 \\a.txt");
}

}  // namespace
}  // namespace nira
