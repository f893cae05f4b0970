// The Options sheet on the screen: each test runs it over a window of its own and acts from inside its
// message loop.
#include <gtest/gtest.h>
#include <windows.h>

#include <commctrl.h>

#include <string>
#include <utility>

#include "options_sheet_fixture.h"

namespace nira {
namespace {

using namespace options_sheet_test;

// ---- the window ----

TEST_F(OptionsSheet, CoversItsOwnerWithTabsBelowAndABar) {
    Run([&] {
        const RECT sheet = PlaceOf(sheet_);
        const RECT owner = PlaceOf(owner_);
        EXPECT_TRUE(EqualRect(&sheet, &owner));
        EXPECT_EQ(TextOf(sheet_), L"Options");
        EXPECT_NE(GetWindowLongPtrW(Tabs(), GWL_STYLE) & TCS_BOTTOM, 0);
        for (const int button : {IDOK, IDCANCEL}) EXPECT_FALSE(IsWindowVisible(GetDlgItem(sheet_, button)));
        const HWND bar = shell::VisibleBar(sheet_);
        ASSERT_NE(bar, nullptr);
        EXPECT_EQ(SendMessageW(bar, TB_COMMANDTOINDEX, IDOK, 0), 0);
        EXPECT_EQ(SendMessageW(bar, TB_COMMANDTOINDEX, IDCANCEL, 0), 1);
        EXPECT_LE(PlaceOf(Tabs()).bottom, PlaceOf(bar).top);
        EXPECT_LT(PlaceOf(Page()).bottom, PlaceOf(Tabs()).bottom) << "the tabs are below the page";
    });
}

TEST_F(OptionsSheet, HasFourPagesInOrder) {
    const wchar_t* const names[] = {L"Format", L"Editor", L"Words", L"Indent"};
    Run([&] {
        ASSERT_EQ(SendMessageW(Tabs(), TCM_GETITEMCOUNT, 0, 0), 4);
        EXPECT_EQ(ShownPage(), kFormat);
        for (int i = 0; i < 4; ++i) {
            Show(i);
            wchar_t text[50] = {};
            TCITEMW item = {};
            item.mask = TCIF_TEXT;
            item.pszText = text;
            item.cchTextMax = 50;
            SendMessageW(Tabs(), TCM_GETITEMW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
            EXPECT_STREQ(text, names[i]);
            EXPECT_EQ(TextOf(Page()), names[i]);
            RECT tab = {};
            SendMessageW(Tabs(), TCM_GETITEMRECT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&tab));
            EXPECT_GE(tab.bottom - tab.top, kTouchTarget) << i;
            EXPECT_LE(tab.right, PlaceOf(Tabs()).right - PlaceOf(Tabs()).left) << "no tab is hidden";
        }
    });
}

bool CarriesText(HWND control) {
    const std::wstring kind = ClassOf(control);
    return kind == L"Button" || kind == L"Static";
}

// The room that the text of a control needs, with its box or circle.
SIZE RoomFor(HWND control) {
    const std::wstring text = TextOf(control);
    const HDC device = GetDC(control);
    const HGDIOBJ old =
        SelectObject(device, reinterpret_cast<HGDIOBJ>(SendMessageW(control, WM_GETFONT, 0, 0)));
    SIZE size = {};
    GetTextExtentPoint32W(device, text.c_str(), static_cast<int>(text.size()), &size);
    SelectObject(device, old);
    ReleaseDC(control, device);
    const auto style = GetWindowLongPtrW(control, GWL_STYLE) & BS_TYPEMASK;
    if (ClassOf(control) == L"Button" && (style == BS_AUTOCHECKBOX || style == BS_AUTORADIOBUTTON))
        size.cx += 18;
    return size;
}

bool Encloses(const RECT& outer, const RECT& inner) {
    return outer.left <= inner.left && outer.top <= inner.top && outer.right >= inner.right &&
           outer.bottom >= inner.bottom;
}

void ExpectWellPlaced(HWND page, const std::wstring& where) {
    const RECT area = PlaceOf(page);
    for (HWND child = GetWindow(page, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
        if (!IsWindowVisible(child)) continue;
        const RECT place = PlaceOf(child);
        const std::wstring name = where + L": " + ClassOf(child) + L" " + TextOf(child);
        EXPECT_GE(place.left, area.left) << name.c_str();
        EXPECT_LE(place.right, area.right) << name.c_str();
        if (CarriesText(child)) {
            EXPECT_LE(RoomFor(child).cx, place.right - place.left) << name.c_str();
            EXPECT_LE(RoomFor(child).cy, place.bottom - place.top) << name.c_str();
        }
        if (ClassOf(child) != L"Static") {
            EXPECT_GE(place.bottom - place.top, kTouchTarget) << name.c_str();
        }
        for (HWND next = GetWindow(child, GW_HWNDNEXT); next != nullptr;
             next = GetWindow(next, GW_HWNDNEXT)) {
            RECT shared = {};
            const RECT other = PlaceOf(next);
            if (!IsWindowVisible(next) || !IntersectRect(&shared, &place, &other)) continue;
            EXPECT_TRUE(Encloses(place, other)) << name.c_str() << L" overlaps " << TextOf(next).c_str();
        }
    }
}

TEST_F(OptionsSheet, NothingIsCutOffOrOverlapsOnAnyScreenAlsoWhenItTurns) {
    OwnerOf(480, 640);
    for (const SIZE size : {SIZE{640, 480}, SIZE{240, 320}, SIZE{320, 240}, SIZE{232, 200}}) {
        Run([&] {
            SetWindowPos(owner_, nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER);
            // First the page in sight, which nothing shows again.
            for (int i = 0; i < 4; ++i) {
                ExpectWellPlaced(Page(), std::to_wstring(size.cx) + L" page " + std::to_wstring(i));
                EXPECT_NEAR(PlaceOf(Page()).right, PlaceOf(owner_).right, 16);
                EXPECT_LT(PlaceOf(Page()).bottom, PlaceOf(shell::VisibleBar(sheet_)).top);
                Show((i + 1) % 4);
            }
        });
    }
}

TEST_F(OptionsSheet, APageThatDoesNotFitScrollsToTheControlWithTheKeyboard) {
    OwnerOf(240, 220);
    Run([&] {
        Show(kIndent);
        SCROLLINFO info = {};
        info.cbSize = sizeof(info);
        info.fMask = SIF_ALL;
        ASSERT_TRUE(GetScrollInfo(Page(), SB_VERT, &info));
        EXPECT_GT(info.nMax, static_cast<int>(info.nPage));
        EXPECT_GT(PlaceOf(Control(IDC_INDENT_BASE_MINIMUM)).bottom, PlaceOf(Page()).bottom);
        SetFocus(Control(IDC_INDENT_BASE_MINIMUM));
        EXPECT_LE(PlaceOf(Control(IDC_INDENT_BASE_MINIMUM)).bottom, PlaceOf(Page()).bottom);
        EXPECT_LT(PlaceOf(Control(IDC_INDENT_TAB_SIZE)).top, PlaceOf(Page()).top);
        SetFocus(Control(IDC_INDENT_TAB_SIZE));
        EXPECT_GE(PlaceOf(Control(IDC_INDENT_TAB_SIZE)).top, PlaceOf(Page()).top);
        ExpectWellPlaced(Page(), L"scrolled");
    });
}

TEST_F(OptionsSheet, APageThatDoesNotFitScrollsByWheelDragAndBar) {
    OwnerOf(240, 220);
    Run([&] {
        Show(kIndent);
        const HWND page = Page();
        const HWND field = Control(IDC_INDENT_TAB_SIZE);
        const LONG start = PlaceOf(field).top;
        const LONG most = PlaceOf(Control(IDC_INDENT_BASE_GROUP)).bottom - PlaceOf(page).bottom;
        SendMessageW(page, WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-WHEEL_DELTA)), 0);
        EXPECT_LT(PlaceOf(field).top, start);
        SendMessageW(page, WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA), 0);
        EXPECT_EQ(PlaceOf(field).top, start);
        SendMessageW(page, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(100, 60));
        SendMessageW(page, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(100, 40));
        EXPECT_EQ(PlaceOf(field).top, start - 20);
        SendMessageW(page, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(100, 90));
        EXPECT_EQ(PlaceOf(field).top, start) << "not beyond the start";
        SendMessageW(page, WM_LBUTTONUP, 0, MAKELPARAM(100, 90));
        SendMessageW(page, WM_MOUSEMOVE, 0, MAKELPARAM(100, 40));
        EXPECT_EQ(PlaceOf(field).top, start) << "nothing holds it any more";
        SendMessageW(page, WM_VSCROLL, SB_BOTTOM, 0);
        EXPECT_LE(PlaceOf(field).top, start - most);
        EXPECT_LE(PlaceOf(Control(IDC_INDENT_BASE_GROUP)).bottom, PlaceOf(page).bottom);
        const RECT place = PlaceOf(page);
        SetWindowPos(page, nullptr, 0, 0, place.right - place.left, place.bottom - place.top - 5,
                     SWP_NOMOVE | SWP_NOZORDER);
        EXPECT_LE(PlaceOf(field).top, start - most) << "a lower page stays where it was scrolled to";
        SendMessageW(page, WM_VSCROLL, SB_PAGEUP, 0);
        EXPECT_EQ(PlaceOf(field).top, start);
    });
}

TEST_F(OptionsSheet, CtrlTabChangesPagesInACircle) {
    const auto press = [&](bool shift) {
        BYTE keys[256] = {};
        keys[VK_CONTROL] = 0x80;
        keys[VK_SHIFT] = shift ? 0x80 : 0;
        SetKeyboardState(keys);
        // Through the sheet's own loop, as a key comes.
        MSG key = {Control(shift ? IDC_FORMAT_CHOOSE_FONT : 0), WM_KEYDOWN, VK_TAB, 0, 0, {}};
        if (key.hwnd == nullptr) key.hwnd = GetWindow(Page(), GW_CHILD);
        if (!CallMsgFilterW(&key, MSGF_DIALOGBOX)) ADD_FAILURE() << "nobody took the key";
        const BYTE none[256] = {};
        SetKeyboardState(const_cast<BYTE*>(none));
    };
    Run([&] {
        for (const int page : {kEditor, kWords, kIndent, kFormat}) {
            press(false);
            EXPECT_EQ(ShownPage(), page);
        }
        for (const int page : {kIndent, kWords}) {
            press(true);
            EXPECT_EQ(ShownPage(), page);
        }
    });
}

TEST_F(OptionsSheet, AskedForTwiceItIsShownOnce) {
    Run([&] {
        const HWND first = sheet_;
        EXPECT_EQ(RunOptionsSheet(), 0);
        ASSERT_NE(TheOptions().sheetCopy, nullptr);
        EXPECT_EQ(ToHwnd(TheOptions().sheetCopy->sheetWindow), first);
        EXPECT_TRUE(IsWindow(first));
    });
}

// ---- confirming and cancelling ----

TEST_F(OptionsSheet, CancelChangesAndStoresNothing) {
    const int result = Run([&] {
        *ShownColor(true) = RGB(1, 2, 3);
        Show(kEditor);
        Type(IDC_EDITOR_UNDO_SIZE, L"7");
        Press(IDC_EDITOR_SAFE_SAVE);
        Show(kWords);
        Type(IDC_WORDS_SEPARATORS, L"x");
        Show(kIndent);
        Type(IDC_INDENT_TAB_SIZE, L"9");
        Show(kFormat);
    });
    EXPECT_EQ(result, 0);
    EXPECT_FALSE(IsStored(L"Font"));
    EXPECT_FALSE(IsStored(L"tabSize"));
    EXPECT_EQ(TheOptions().text.fore, GetSysColor(COLOR_WINDOWTEXT));
    EXPECT_EQ(TheOptions().undoSize, 100u);
    EXPECT_EQ(TheOptions().safeSave, 0u);
    EXPECT_EQ(std::u16string(TheOptions().wordSeparators), u",.;");
    EXPECT_EQ(TheOptions().tabSize, 3u);
}

TEST_F(OptionsSheet, ConfirmingStoresEverySetting) {
    const int result = Run([&] {
        *ShownColor(true) = RGB(1, 2, 3);
        *ShownColor(false) = RGB(4, 5, 6);
        SendMessageW(Control(IDC_FORMAT_COLOR_SET), LB_SETCURSEL, 1, 0);
        SendMessageW(Page(), WM_COMMAND, MAKEWPARAM(IDC_FORMAT_COLOR_SET, LBN_SELCHANGE), 0);
        *ShownColor(true) = RGB(7, 8, 9);
        *ShownColor(false) = RGB(10, 11, 12);
        Show(kEditor);
        EXPECT_EQ(TextOf(Control(IDC_EDITOR_UNDO_SIZE)), L"100");
        EXPECT_EQ(TextOf(Control(IDC_EDITOR_HISTORY_SIZE)), L"10");
        Type(IDC_EDITOR_UNDO_SIZE, L"256");
        Type(IDC_EDITOR_HISTORY_SIZE, L"100");
        Press(IDC_EDITOR_SAFE_SAVE);
        Press(IDC_EDITOR_BOM_SAVE);
        Press(IDC_EDITOR_WRAP);
        SendMessageW(Control(IDC_EDITOR_ENCODING), CB_SETCURSEL, kCodecUtf8, 0);
        Show(kWords);
        EXPECT_EQ(TextOf(Control(IDC_WORDS_SEPARATORS)), L",.;");
        Type(IDC_WORDS_SEPARATORS, L"+-\u20AC");
        Press(IDC_WORDS_STOP_AT_END);
        Show(kIndent);
        EXPECT_EQ(TextOf(Control(IDC_INDENT_TAB_SIZE)), L"3");
        Type(IDC_INDENT_TAB_SIZE, L"64");
        Press(IDC_INDENT_KEEP);
        Press(IDC_INDENT_PASTE_SMART);
        Press(IDC_INDENT_BASE_MINIMUM);
        Confirm();
    });
    EXPECT_GT(result, 0);
    EXPECT_EQ(Stored(L"Font"), L"Courier New\u100E");
    EXPECT_EQ(Stored(L"WordSeparator"), L"+-\u20AC");
    EXPECT_EQ(Stored(L"DefaultEncoding"), L"UTF-8");
    const std::pair<const wchar_t*, DWORD> numbers[] = {
        {L"textFore", RGB(1, 2, 3)},
        {L"textBack", RGB(4, 5, 6)},
        {L"selFore", RGB(7, 8, 9)},
        {L"selBack", RGB(10, 11, 12)},
        {L"safeSave", 1},
        {L"undoSize", 256},
        {L"bomSave", 0},
        {L"stopWordEnd", 1},
        {L"tabSize", 64},
        {L"keepIndent", 1},
        {L"PasteMode", 1},
        {L"SmartBase", 1},
        {L"HistLen", 100},
        {L"WordWrapDefault", 1},
    };
    for (const auto& [name, value] : numbers)
        EXPECT_EQ(StoredNumber(name), value) << std::wstring(name).c_str();
}

TEST_F(OptionsSheet, ControlsShowWhatIsSet) {
    Options& options = TheOptions();
    options.safeSave = options.wordWrapDefault = options.stopWordEnd = options.keepIndent = 1;
    options.bomSave = 0;
    options.pasteMode = options.smartBase = 1;
    options.tabSize = 4000000000;
    options.undoSize = 0;
    Run([&] {
        EXPECT_EQ(TextOf(Control(IDC_FORMAT_FONT)), L"Courier New, 14 pt");
        Show(kEditor);
        EXPECT_EQ(TextOf(Control(IDC_EDITOR_UNDO_SIZE)), L"0");
        EXPECT_TRUE(IsDlgButtonChecked(Page(), IDC_EDITOR_SAFE_SAVE));
        EXPECT_FALSE(IsDlgButtonChecked(Page(), IDC_EDITOR_BOM_SAVE));
        EXPECT_TRUE(IsDlgButtonChecked(Page(), IDC_EDITOR_WRAP));
        EXPECT_EQ(TextOf(Control(IDC_EDITOR_ENCODING)), L"ANSI");
        EXPECT_EQ(SendMessageW(Control(IDC_EDITOR_ENCODING), CB_GETCOUNT, 0, 0),
                  static_cast<LRESULT>(TheCodecList().count));
        Type(IDC_EDITOR_UNDO_SIZE, L"1");
        Show(kWords);
        EXPECT_TRUE(IsDlgButtonChecked(Page(), IDC_WORDS_STOP_AT_END));
        Show(kIndent);
        EXPECT_EQ(TextOf(Control(IDC_INDENT_TAB_SIZE)), L"4000000000");
        EXPECT_TRUE(IsDlgButtonChecked(Page(), IDC_INDENT_KEEP));
        EXPECT_TRUE(IsDlgButtonChecked(Page(), IDC_INDENT_PASTE_SMART));
        EXPECT_FALSE(IsDlgButtonChecked(Page(), IDC_INDENT_PASTE_NORMAL));
        EXPECT_TRUE(IsDlgButtonChecked(Page(), IDC_INDENT_BASE_MINIMUM));
        EXPECT_FALSE(IsDlgButtonChecked(Page(), IDC_INDENT_BASE_FIRST));
    });
}

TEST_F(OptionsSheet, PagesNeverShownKeepTheirSettings) {
    TheOptions().tabSize = 500;
    TheOptions().undoSize = 0;
    EXPECT_GT(Run([&] { Confirm(); }), 0);
    EXPECT_EQ(StoredNumber(L"tabSize"), 500u);
    EXPECT_EQ(StoredNumber(L"undoSize"), 0u);
    EXPECT_EQ(Stored(L"Font"), L"Courier New\u100E");
}

TEST_F(OptionsSheet, AnEncodingThatIsGoneBecomesTheFirstOnceThePageIsConfirmed) {
    MemFree(nullptr, TheOptions().defaultEncoding);
    TheOptions().defaultEncoding = MemStrDup(nullptr, u"KOI8-R");
    Run([&] { Confirm(); });
    EXPECT_EQ(Stored(L"DefaultEncoding"), L"KOI8-R");
    Run([&] {
        Show(kEditor);
        EXPECT_EQ(TextOf(Control(IDC_EDITOR_ENCODING)), L"ANSI");
        Confirm();
    });
    EXPECT_EQ(Stored(L"DefaultEncoding"), L"ANSI");
}

TEST_F(OptionsSheet, EncodingsOfLibrariesAreOfferedBehindTheBuiltInOnesAndStoredByName) {
    for (const wchar_t* name : {L"KOI8-R", L"Big5"}) {
        RegSetKeyValueW(HKEY_LOCAL_MACHINE, L"Software\\NIRA\\Encodings", name, REG_SZ, L"x", 4);
    }
    InitCodecs();
    const uint32_t last = TheCodecList().count - 1;
    Run([&] {
        Show(kEditor);
        const HWND list = Control(IDC_EDITOR_ENCODING);
        ASSERT_EQ(SendMessageW(list, CB_GETCOUNT, 0, 0), static_cast<LRESULT>(kBuiltInCodecs + 2));
        for (uint32_t i = 0; i <= last; ++i) {
            wchar_t text[100] = {};
            SendMessageW(list, CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(text));
            EXPECT_STREQ(text, ToWide(CodecName(i)));
        }
        SendMessageW(list, CB_SETCURSEL, last, 0);
        Confirm();
    });
    EXPECT_EQ(Stored(L"DefaultEncoding"), L"KOI8-R");
    EXPECT_EQ(DefaultCodec(), last);
    Run([&] {
        Show(kEditor);
        EXPECT_EQ(TextOf(Control(IDC_EDITOR_ENCODING)), L"KOI8-R");
    });
}

// ---- numbers out of range ----

TEST_F(OptionsSheet, AWrongNumberKeepsThePageAndIsSelected) {
    Run([&] {
        Show(kIndent);
        Type(IDC_INDENT_TAB_SIZE, L"65");
        ExpectBox();
        Show(kWords);
        EXPECT_EQ(ShownPage(), kIndent);
        ASSERT_EQ(boxes.size(), 1u);
        EXPECT_EQ(boxes[0], L"Tab size must be in range 1-64");
        SetFocus(Control(IDC_INDENT_KEEP));
        shell_test::RunPosted();
        EXPECT_EQ(GetFocus(), Control(IDC_INDENT_TAB_SIZE));
        EXPECT_EQ(SendMessageW(Control(IDC_INDENT_TAB_SIZE), EM_GETSEL, 0, 0), MAKELRESULT(0, 2));
        Type(IDC_INDENT_TAB_SIZE, L"0");
        ExpectBox();
        Confirm();
        EXPECT_TRUE(IsWindow(sheet_));
        EXPECT_EQ(boxes.size(), 2u);
        EXPECT_FALSE(IsStored(L"tabSize"));
        Type(IDC_INDENT_TAB_SIZE, L" 8 columns");
        Confirm();
    });
    EXPECT_EQ(StoredNumber(L"tabSize"), 8u);
    EXPECT_EQ(TheOptions().tabSize, 8u);
}

TEST_F(OptionsSheet, TheSecondFieldIsLookedAtWhenTheFirstIsRight) {
    Run([&] {
        Show(kEditor);
        Type(IDC_EDITOR_UNDO_SIZE, L"257");
        Type(IDC_EDITOR_HISTORY_SIZE, L"101");
        ExpectBox();
        Show(kWords);
        ASSERT_EQ(boxes.size(), 1u);
        EXPECT_EQ(boxes[0], L"Undo history size must be in range 1-256");
        Type(IDC_EDITOR_UNDO_SIZE, L"256");
        ExpectBox();
        Show(kWords);
        ASSERT_EQ(boxes.size(), 2u);
        EXPECT_EQ(boxes[1], L"Find history size must be in range 1-100");
        shell_test::RunPosted();
        EXPECT_EQ(GetFocus(), Control(IDC_EDITOR_HISTORY_SIZE));
    });
    EXPECT_EQ(TheOptions().undoSize, 100u);
}

struct TypedField {
    int page;
    int control;
    const wchar_t* value;
    const wchar_t* message;
};

constexpr TypedField kTypedFields[] = {
    {kEditor, IDC_EDITOR_UNDO_SIZE, L"undoSize", L"Undo history size must be in range 1-256"},
    {kEditor, IDC_EDITOR_HISTORY_SIZE, L"HistLen", L"Find history size must be in range 1-100"},
    {kIndent, IDC_INDENT_TAB_SIZE, L"tabSize", L"Tab size must be in range 1-64"},
};

TEST_F(OptionsSheet, EveryNumberIsRefusedUnlessItIsInRange) {
    const wchar_t* const wrong[] = {
        L"",    L"   ", L"many", L"x7",  L"0",   L"-7",         L"--7",
        L"+-7", L"- 7", L"+",    L"257", L"0x7", L"4294967303", L"99999999999999999999999999999999"};
    for (const TypedField& field : kTypedFields) {
        Run([&] {
            Show(field.page);
            for (const wchar_t* text : wrong) {
                boxes.clear();
                Type(field.control, text);
                ExpectBox();
                Show(kWords);
                EXPECT_EQ(ShownPage(), field.page) << text;
                ASSERT_EQ(boxes.size(), 1u) << text;
                EXPECT_EQ(boxes[0], field.message);
            }
            Type(field.control, L"1");
        });
        EXPECT_FALSE(IsStored(field.value));
    }
}

TEST_F(OptionsSheet, EveryNumberMayHaveBlanksASignAndLettersAroundIt) {
    for (const TypedField& field : kTypedFields) {
        for (const wchar_t* text :
             {L"7", L"  7", L"\t7", L"+7", L" +7", L"0000000007", L"7 KB", L"7x9", L"7.9", L"7-1"}) {
            Run([&] {
                Show(field.page);
                Type(field.control, L"5");
                Type(field.control, text);
                Confirm();
            });
            EXPECT_EQ(StoredNumber(field.value), 7u) << text;
            RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\NIRA");
        }
    }
}

TEST_F(OptionsSheet, SettingsThatCannotBeStoredStayInEffect) {
    // Below a key that lives in memory alone no lasting key can be made.
    HKEY gone = nullptr;
    RegCreateKeyExW(HKEY_CURRENT_USER, L"volatile", 0, nullptr, REG_OPTION_VOLATILE, KEY_ALL_ACCESS, nullptr,
                    &gone, nullptr);
    RegOverridePredefKey(HKEY_CURRENT_USER, gone);
    RegCloseKey(gone);
    int result = 0;
    result = Run([&] {
        Show(kIndent);
        Type(IDC_INDENT_TAB_SIZE, L"9");
        ExpectBox();
        Confirm();
    });
    EXPECT_GT(result, 0);
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0], L"Error saving options");
    EXPECT_EQ(TheOptions().tabSize, 9u);
}

}  // namespace
}  // namespace nira
