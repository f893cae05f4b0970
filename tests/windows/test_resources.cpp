// The resources linked into the program, read back through the Windows API.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <iterator>
#include <string>
#include <vector>

#include "resources/resource.h"

namespace {

HINSTANCE Module() { return GetModuleHandleW(nullptr); }

struct Block {
    const void* data = nullptr;
    DWORD size = 0;
};

// `type` is one of RT_..., whose C type depends on a macro of the build.
Block FindBlock(int id, const void* type) {
    const HRSRC found = FindResourceW(Module(), MAKEINTRESOURCEW(id), static_cast<LPCWSTR>(type));
    if (found == nullptr) return {};
    return {LockResource(LoadResource(Module(), found)), SizeofResource(Module(), found)};
}

// ---- Texts ----

struct Text {
    int id;
    const wchar_t* text;
};

// Written out a second time, so that a slip in the list of the program is noticed here.
const Text kTexts[] = {
    {4001, L"File exists. Overwrite?"},
    {4002, L"File not found.\r\nChoose another one."},
    {4003, L"Open"},
    {4004, L"Cancel"},
    {4005, L"Save"},
    {4006, L"Up one level"},
    {4007, L"Save file"},
    {4008, L"Open file"},
    {4009, L"Create new folder"},
    {4010, L"Name"},
    {4011, L"Size"},
    {4012, L"Modified"},
    {4013, L"Refresh"},
    {4014, L"Error"},
    {4015, L"Confirmation"},
    {4016, L"File"},
    {4017, L"Edit"},
    {4018, L"Cut"},
    {4019, L"Copy"},
    {4020, L"Paste"},
    {4021, L"Buffers"},
    {4022, L"Untitled"},
    {4023, L"End of line type"},
    {4024, L"Save changes to '%s'?"},
    {4025, L"File modified"},
    {4026, L"Find next"},
    {4027, L"Replace"},
    {4028, L"Pattern not found"},
    {4029, L"Information"},
    {4030, L"%d occurrences replaced"},
    {4031, L"Error reading file"},
    {4032, L"Error initializing decoder"},
    {4033, L"Undo"},
    {4034, L"Redo"},
    {4035, L"Group undo"},
    {4036, L"Options"},
    {4037, L"Text"},
    {4038, L"Text selection"},
    {4039, L"Tab size must be in range 1-64"},
    {4040, L"Error saving options"},
    {4041, L"OK"},
    {4042, L"Find"},
    {4043, L"Replace All"},
    {4050, L"Error writing file"},
    {4051, L"Error initializing encoder"},
    {4052, L"Error renaming original file"},
    {4053, L"Undo history size must be in range 1-256"},
    {4054, L"Navigate"},
    {4055, L"Enter positive number"},
    {4057, L"Page Up"},
    {4058, L"Page Down"},
    {4059, L"File Top"},
    {4060, L"File Bottom"},
    {4061, L"Go to..."},
    {4062, L"(Empty)"},
    {4063, L"Increase Indent"},
    {4064, L"Decrease Indent"},
    {4065, L"&Normal Paste"},
    {4066, L"S&mart Paste"},
    {4067, L"Find history size must be in range 1-100"},
};

// The entry itself, terminator included; empty when the table has none.
std::wstring TableEntry(int id) {
    const wchar_t* entry = nullptr;
    const int length = LoadStringW(Module(), static_cast<UINT>(id), reinterpret_cast<LPWSTR>(&entry), 0);
    return length > 0 && entry != nullptr ? std::wstring(entry, static_cast<size_t>(length)) : std::wstring();
}

TEST(StringTable, EveryTextIsThereWithItsTerminator) {
    for (const Text& expected : kTexts) {
        EXPECT_EQ(TableEntry(expected.id), std::wstring(expected.text) + L'\0') << expected.id;
    }
}

TEST(StringTable, FreeNumbersHaveNoText) {
    size_t next = 0;
    for (int id = 3990; id < 4100; ++id) {
        const bool defined = next < std::size(kTexts) && kTexts[next].id == id;
        if (defined) ++next;
        EXPECT_EQ(TableEntry(id).empty(), !defined) << id;
    }
    EXPECT_EQ(next, std::size(kTexts));
}

TEST(StringTable, ListServesTheNativeBuildToo) {
#define NIRA_STRING(id, text) {id, L##text},
    const Text listed[] = {
#include "resources/strings.inc"
    };
#undef NIRA_STRING
    ASSERT_EQ(std::size(listed), std::size(kTexts));
    for (size_t i = 0; i < std::size(listed); ++i) {
        EXPECT_EQ(listed[i].id, kTexts[i].id);
        EXPECT_STREQ(listed[i].text, kTexts[i].text);
    }
}

// ---- Menus ----

// One line per item, indented by depth: "id text", "- " for a separator, "> text" for a pop-up, "(gray)" at
// the end.
void Describe(HMENU menu, const std::wstring& indent, std::wstring& out) {
    for (int position = 0; position < GetMenuItemCount(menu); ++position) {
        wchar_t text[80] = L"";
        MENUITEMINFOW info = {};
        info.cbSize = sizeof(info);
        info.fMask = MIIM_FTYPE | MIIM_ID | MIIM_SUBMENU | MIIM_STRING | MIIM_STATE;
        info.dwTypeData = text;
        info.cch = static_cast<UINT>(std::size(text));
        ASSERT_TRUE(GetMenuItemInfoW(menu, static_cast<UINT>(position), TRUE, &info));
        out += indent;
        if ((info.fType & MFT_SEPARATOR) != 0) {
            out += L"-\n";
        } else if (info.hSubMenu != nullptr) {
            out += std::wstring(L"> ") + text + L"\n";
            Describe(info.hSubMenu, indent + L"  ", out);
        } else {
            out += std::to_wstring(info.wID) + L" " + text;
            out += (info.fState & MFS_GRAYED) != 0 ? L" (gray)\n" : L"\n";
        }
    }
}

std::wstring MenuText(int id) {
    const HMENU menu = LoadMenuW(Module(), MAKEINTRESOURCEW(id));
    std::wstring text;
    Describe(menu, L"", text);
    DestroyMenu(menu);
    return text;
}

std::wstring BookmarkLines(int first) {
    std::wstring lines;
    for (int i = 9; i >= 0; --i) {
        lines += L"    " + std::to_wstring(first + i) + L" Bookmark &" + std::to_wstring(i) + L"\n";
    }
    return lines;
}

const wchar_t kFileAndEdit[] =
    L"> &File\n"
    L"  7005 E&xit\tCtrl+Q\n"
    L"  -\n"
    L"  7018 &About\n"
    L"  7022 O&ptions\n"
    L"  -\n"
    L"  7034 Save Al&l\n"
    L"  7004 Sa&ve As\n"
    L"  7003 &Save\tCtrl+S\n"
    L"  > Recent &Files\n"
    L"    7420 (Empty) (gray)\n"
    L"  7002 &Open\tCtrl+O\n"
    L"  7001 &New\tCtrl+N\n"
    L"> &Edit\n"
    L"  > &Indentation\n"
    L"    7031 &Increase\tCtrl+Shift+I\n"
    L"    7032 &Decrease\tCtrl+Shift+U\n"
    L"  7017 R&eplace\tCtrl+H\n"
    L"  7016 &Find\tCtrl+F\n"
    L"  -\n"
    L"  7020 &Redo\tCtrl+Y\n"
    L"  7019 &Undo\tCtrl+Z\n"
    L"  > &Selection\n"
    L"    7010 Select &All\tCtrl+A\n"
    L"    7029 Mark &Start\n"
    L"    7030 Mark &End\n"
    L"  -\n"
    L"  7009 C&lear\tDel\n"
    L"  7033 S&mart Paste\n"
    L"  7008 &Paste\tCtrl+V\n"
    L"  7007 &Copy\tCtrl+C\n"
    L"  7006 Cu&t\tCtrl+X\n";

const wchar_t kWindowsAndNavigate[] =
    L"> &Windows\n"
    L"  7021 &Toggle wrap\n"
    L"  -\n"
    L"  7012 Close &All\n"
    L"  7011 &Close\n"
    L"  -\n"
    L"> &Navigate\n"
    L"  7024 &Go to...\n"
    L"  -\n"
    L"  7025 File &Top\n"
    L"  7026 File &Bottom\n"
    L"  -\n"
    L"  7027 Page &Up\n"
    L"  7028 Page &Down\n"
    L"  -\n";

TEST(Menus, MainHasEveryItemInOrder) {
    const std::wstring expected = std::wstring(kFileAndEdit) + kWindowsAndNavigate +
                                  L"  > Go to &Bookmark\n" + BookmarkLines(7410) + L"  > &Set Bookmark\n" +
                                  BookmarkLines(7400);
    EXPECT_EQ(MenuText(3002), expected);
}

TEST(Menus, NestedPopUpsAreWhereTheirPositionsSay) {
    const HMENU menu = LoadMenuW(Module(), MAKEINTRESOURCEW(IDR_MENU_MAIN));
    wchar_t text[40] = L"";
    GetMenuStringW(GetSubMenu(menu, POPUP_FILE), POPUP_FILE_RECENT, text, 40, MF_BYPOSITION);
    EXPECT_STREQ(text, L"Recent &Files");
    GetMenuStringW(GetSubMenu(menu, POPUP_NAVIGATE), POPUP_NAVIGATE_GO_TO_BOOKMARK, text, 40, MF_BYPOSITION);
    EXPECT_STREQ(text, L"Go to &Bookmark");
    GetMenuStringW(GetSubMenu(menu, POPUP_NAVIGATE), POPUP_NAVIGATE_SET_BOOKMARK, text, 40, MF_BYPOSITION);
    EXPECT_STREQ(text, L"&Set Bookmark");
    DestroyMenu(menu);
}

TEST(Menus, LineEnds) { EXPECT_EQ(MenuText(3001), L"> EOL Type\n  7013 LF\n  7014 CR\n  7015 CRLF\n"); }

// ---- Keys ----

TEST(Accelerators, EveryKeyHasItsCommandAndNoneFlashesTheMenu) {
    constexpr int kCtrl = FVIRTKEY | FNOINVERT | FCONTROL;
    const struct {
        int flags, key, command;
    } expected[] = {
        {kCtrl, 'Q', 7005},          {kCtrl, 'S', 7003},
        {kCtrl, 'O', 7002},          {kCtrl, 'N', 7001},
        {kCtrl, 'X', 7006},          {kCtrl, 'C', 7007},
        {kCtrl, 'V', 7008},          {FVIRTKEY | FNOINVERT, VK_DELETE, 7009},
        {kCtrl, 'A', 7010},          {kCtrl, 'Z', 7019},
        {kCtrl, 'Y', 7020},          {kCtrl, 'F', 7016},
        {kCtrl, 'H', 7017},          {kCtrl, VK_TAB, 1068},
        {kCtrl | FSHIFT, 'I', 7031}, {kCtrl | FSHIFT, 'U', 7032},
    };
    const HACCEL table = LoadAcceleratorsW(Module(), MAKEINTRESOURCEW(8000));
    ACCEL entries[40] = {};
    ASSERT_EQ(CopyAcceleratorTableW(table, entries, 40), static_cast<int>(std::size(expected)));
    for (size_t i = 0; i < std::size(expected); ++i) {
        EXPECT_EQ(entries[i].fVirt & 0x7f, expected[i].flags) << i;  // 0x80 marks the last entry
        EXPECT_EQ(entries[i].key, expected[i].key) << i;
        EXPECT_EQ(entries[i].cmd, expected[i].command) << i;
    }
    DestroyAcceleratorTable(table);
}

// ---- Menu bars ----

using Words = std::vector<int>;

Words BarWords(int id) {
    const Block block = FindBlock(id, RT_RCDATA);
    const auto* words = static_cast<const short*>(block.data);
    return words == nullptr ? Words() : Words(words, words + block.size / sizeof(short));
}

Words Bar(int menu, const std::vector<Words>& buttons) {
    Words words = {menu, static_cast<int>(buttons.size())};
    for (const Words& button : buttons) words.insert(words.end(), button.begin(), button.end());
    return words;
}

Words DropDown(int image, int command, int label, int popup) {
    return {image, command, 4, 24, label, 0, popup};
}
Words Image(int image, int command, int tooltip) { return {image, command, 4, 16, 0, tooltip, -1}; }
Words TextButton(int command, int label) { return {-2, command, 4, 16, label, 0, -1}; }
Words Gap() { return {0, 0, 4, 1, 0, 0, -1}; }
Words Buffers() { return DropDown(0, 1022, 4021, 0); }

TEST(MenuBars, Main) {
    EXPECT_EQ(BarWords(3002),
              Bar(3002, {DropDown(3, 1014, 4016, 0), DropDown(4, 1015, 4017, 1), DropDown(5, 1062, 4054, 3),
                         DropDown(0, 1022, 4021, 2), Gap(), Image(20, 7002, 4003), Image(21, 7003, 4005),
                         Gap(), Image(13, 7006, 4018), Image(14, 7007, 4019), Image(15, 7008, 4020)}));
}

TEST(MenuBars, ToolBarsOfTheMainWindow) {
    EXPECT_EQ(BarWords(3003), Bar(-1, {Buffers(), Image(25, 1028, 4026), Image(2, 1031, 4004)}));
    EXPECT_EQ(BarWords(3004),
              Bar(-1, {Buffers(), Image(25, 1028, 4026), Image(26, 1029, 4027), Image(2, 1031, 4004)}));
    EXPECT_EQ(BarWords(3005), Bar(-1, {Buffers(), Image(16, 7019, 4033), Image(17, 7020, 4034),
                                       Image(1, 1033, 4035), Image(2, 1034, 4004)}));
    EXPECT_EQ(BarWords(3011),
              Bar(-1, {Buffers(), Image(7, 7027, 4057), Image(6, 7028, 4058), Image(9, 7025, 4059),
                       Image(8, 7026, 4060), Image(10, 7024, 4061), Image(2, 1066, 4004)}));
    EXPECT_EQ(BarWords(3012),
              Bar(-1, {Buffers(), Image(11, 7031, 4063), Image(12, 7032, 4064), Image(2, 1078, 4004)}));
}

TEST(MenuBars, FileDialog) {
    EXPECT_EQ(BarWords(3000), Bar(-1, {TextButton(1007, 4003), TextButton(1008, 4004), Gap(),
                                       Image(0, 1009, 4006), Gap(), TextButton(1013, 4013)}));
    EXPECT_EQ(BarWords(3001),
              Bar(3001, {TextButton(1007, 4005), TextButton(1008, 4004), Gap(), Image(0, 1009, 4006),
                         Image(1, 1010, 4009), Gap(), TextButton(1013, 4013), DropDown(-2, 1023, 4023, 0)}));
}

TEST(MenuBars, OtherDialogs) {
    EXPECT_EQ(BarWords(3006), Bar(-1, {TextButton(1, 4041), TextButton(2, 4004)}));
    EXPECT_EQ(BarWords(3007), Bar(-1, {TextButton(1, 4042), TextButton(2, 4004)}));
    EXPECT_EQ(BarWords(3008), Bar(-1, {TextButton(1, 4042), TextButton(2, 4004), TextButton(1032, 4043)}));
    EXPECT_EQ(BarWords(3009), Bar(-1, {TextButton(1, 4041)}));
}

TEST(MenuBars, NoneUnderAFreeNumber) {
    EXPECT_TRUE(BarWords(3010).empty());
    EXPECT_TRUE(BarWords(3013).empty());
}

// ---- Pictures ----

TEST(Pictures, BarBitmapsHaveFourBitsAndOneImageOf16PixelsEach) {
    const struct { int id, images; } bitmaps[] = {{6001, 2}, {6002, 13}};
    for (const auto& bitmap : bitmaps) {
        const Block block = FindBlock(bitmap.id, RT_BITMAP);
        ASSERT_NE(block.data, nullptr) << bitmap.id;
        const auto* header = static_cast<const BITMAPINFOHEADER*>(block.data);
        EXPECT_EQ(header->biWidth, 16 * bitmap.images);
        EXPECT_EQ(header->biHeight, 16);
        EXPECT_EQ(header->biBitCount, 4);
    }
}

TEST(Pictures, IconsExistInEverySize) {
    for (const int id : {IDI_NIRA, 5001, 5002}) {
        const Block group = FindBlock(id, RT_GROUP_ICON);
        ASSERT_NE(group.data, nullptr) << id;
        EXPECT_EQ(static_cast<const WORD*>(group.data)[2], 3);
        for (const int side : {16, 32, 48}) {
            const auto icon = static_cast<HICON>(
                LoadImageW(Module(), MAKEINTRESOURCEW(id), IMAGE_ICON, side, side, LR_DEFAULTCOLOR));
            ICONINFO info = {};
            ASSERT_TRUE(GetIconInfo(icon, &info)) << id << " " << side;
            BITMAP shape = {};
            GetObjectW(info.hbmMask, sizeof(shape), &shape);
            EXPECT_EQ(shape.bmWidth, side);
            DeleteObject(info.hbmMask);
            DeleteObject(info.hbmColor);
            DestroyIcon(icon);
        }
    }
}

// ---- About, manifest, version ----

INT_PTR CALLBACK NoAnswer(HWND, UINT, WPARAM, LPARAM) { return FALSE; }

TEST(About, NamesProgramVersionMakerAndManual) {
    const HWND dialog = CreateDialogParamW(Module(), MAKEINTRESOURCEW(103), nullptr, NoAnswer, 0);
    ASSERT_NE(dialog, nullptr);
    std::wstring texts;
    bool icon = false;
    for (HWND child = GetWindow(dialog, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
        wchar_t text[80] = L"";
        GetWindowTextW(child, text, 80);
        const bool isIcon = (GetWindowLongW(child, GWL_STYLE) & SS_TYPEMASK) == SS_ICON;
        icon |= isIcon && SendMessageW(child, STM_GETICON, 0, 0) != 0;
        if (!isIcon) texts += std::wstring(text) + L"|";
    }
    EXPECT_TRUE(icon);
    EXPECT_EQ(texts, L"NIRA|Version 2.0.0|The NIRA developers|README.md tells how to use NIRA.|");
    DestroyWindow(dialog);
}

TEST(About, FitsTheSmallestScreenAndShowsItsLinesWhole) {
    const HWND dialog = CreateDialogParamW(Module(), MAKEINTRESOURCEW(103), nullptr, NoAnswer, 0);
    ASSERT_NE(dialog, nullptr);
    RECT client = {};
    GetClientRect(dialog, &client);
    EXPECT_LE(client.right, 240);
    EXPECT_LE(client.bottom, 290);  // 320 without a bar
    const auto font = reinterpret_cast<HGDIOBJ>(SendMessageW(dialog, WM_GETFONT, 0, 0));
    const HDC dc = GetDC(dialog);
    const HGDIOBJ before = SelectObject(dc, font);
    for (HWND child = GetWindow(dialog, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
        wchar_t text[80] = L"";
        const int length = GetWindowTextW(child, text, 80);
        RECT box = {};
        GetWindowRect(child, &box);
        RECT needed = {0, 0, box.right - box.left, 0};
        if (length > 0) DrawTextW(dc, text, length, &needed, DT_CALCRECT | DT_WORDBREAK);
        EXPECT_LE(needed.right, box.right - box.left);
        EXPECT_LE(needed.bottom, box.bottom - box.top);
        MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&box), 2);
        EXPECT_LE(box.right, client.right);
        EXPECT_LE(box.bottom, client.bottom);
    }
    SelectObject(dc, before);
    ReleaseDC(dialog, dc);
    DestroyWindow(dialog);
}

TEST(Manifest, AsksForNewControlsDensityAndLongPathsButNoCodePage) {
    const Block block = FindBlock(1, RT_MANIFEST);
    ASSERT_NE(block.data, nullptr);
    const std::string text(static_cast<const char*>(block.data), block.size);
    for (const char* part :
         {"Microsoft.Windows.Common-Controls\" version=\"6.0.0.0\"", "<dpiAware ", "<longPathAware ",
          "level=\"asInvoker\"", "{35138b9a-5d96-4fbd-8e2d-a2440225f93a}",
          "{4a2f28e3-53b9-4441-ba9c-d69d4a4a6e38}", "{1f676c76-80e1-4239-95bb-83d0f6d0da78}",
          "{8e0f7a12-bfb3-4fe8-b9a5-48fd50a15a9a}"}) {
        EXPECT_NE(text.find(part), std::string::npos) << part;
    }
    EXPECT_EQ(text.find("activeCodePage"), std::string::npos);
}

TEST(Version, SaysTwo) {
    const Block block = FindBlock(1, RT_VERSION);
    // The fixed part follows three words and the key "VS_VERSION_INFO", at the next multiple of four.
    constexpr size_t kFixedPart = 40;
    ASSERT_GE(block.size, kFixedPart + sizeof(VS_FIXEDFILEINFO));
    VS_FIXEDFILEINFO fixed = {};
    std::memcpy(&fixed, static_cast<const char*>(block.data) + kFixedPart, sizeof(fixed));
    ASSERT_EQ(fixed.dwSignature, 0xFEEF04BDu);
    EXPECT_EQ(fixed.dwFileVersionMS, 2u << 16);
    EXPECT_EQ(fixed.dwProductVersionMS, 2u << 16);
}

}  // namespace
