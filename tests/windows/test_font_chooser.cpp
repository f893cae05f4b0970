// The font chooser with its real controls and the fonts of the machine, driven from inside by a timer.
#include <windows.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "app/services/memory.h"
#include "platform/win32/casts.h"
#include "resources/resource.h"
#include "shell/menu_bar.h"
#include "view/font_chooser.h"
#include "view/fonts.h"
#include "windows/dialog_script.h"

namespace nira {
namespace {

constexpr int kTouchTarget = 24;

class FontChooser : public testing::Test {
  protected:
    void SetUp() override {
        InitFonts(nullptr);
        OwnerOf(480, 600);
    }
    void TearDown() override {
        DestroyWindow(owner);
        ShutdownFonts();
    }
    void OwnerOf(int width, int height) {
        if (owner != nullptr) DestroyWindow(owner);
        owner = CreateWindowExW(0, L"STATIC", L"owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, width, height,
                                nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    }
    // The description chosen, empty for none.
    std::u16string Run(const std::u16string& current, std::function<void(HWND)> steps) const {
        PlayWhenShown(IDC_FONT_FACE, std::move(steps));
        char16_t* chosen = ChooseFontSpec(FromHwnd(owner), current.c_str());
        const std::u16string result = chosen != nullptr ? chosen : u"";
        MemFree(nullptr, chosen);
        return result;
    }
    static std::wstring Text(HWND dialog, int id) {
        wchar_t text[300] = {};
        GetDlgItemTextW(dialog, id, text, 300);
        return text;
    }
    static LRESULT Ask(HWND dialog, int id, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        return SendDlgItemMessageW(dialog, id, message, wParam, lParam);
    }
    static std::wstring FaceAt(HWND dialog, LRESULT index) {
        wchar_t text[300] = {};
        Ask(dialog, IDC_FONT_FACE, CB_GETLBTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text));
        return text;
    }
    static std::vector<std::wstring> Faces(HWND dialog) {
        std::vector<std::wstring> faces;
        const LRESULT count = Ask(dialog, IDC_FONT_FACE, CB_GETCOUNT);
        for (LRESULT i = 0; i < count; ++i) faces.push_back(FaceAt(dialog, i));
        return faces;
    }
    // As a person does it: the list tells the dialog of the new choice.
    static void ChooseFace(HWND dialog, LRESULT index) {
        Ask(dialog, IDC_FONT_FACE, CB_SETCURSEL, static_cast<WPARAM>(index));
        SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(IDC_FONT_FACE, CBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(GetDlgItem(dialog, IDC_FONT_FACE)));
    }
    static LRESULT FindFace(HWND dialog, const wchar_t* face) {
        return Ask(dialog, IDC_FONT_FACE, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                   reinterpret_cast<LPARAM>(face));
    }
    static void Confirm(HWND dialog) { SendMessageW(dialog, WM_COMMAND, IDOK, 0); }
    static LOGFONTW PreviewFont(HWND dialog) {
        LOGFONTW font = {};
        const auto handle = reinterpret_cast<HFONT>(Ask(dialog, IDC_FONT_PREVIEW, WM_GETFONT));
        GetObjectW(handle, sizeof(font), &font);
        return font;
    }
    static void LetPostedMessagesArrive() {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    }

    HWND owner = nullptr;
};

TEST_F(FontChooser, ShowsTheDescription) {
    Run(u"Tahoma\x160C", [](HWND dialog) {
        EXPECT_EQ(Text(dialog, IDC_FONT_FACE), L"Tahoma");
        EXPECT_EQ(Text(dialog, IDC_FONT_SIZE), L"12");
        EXPECT_EQ(IsDlgButtonChecked(dialog, IDC_FONT_BOLD), UINT{BST_UNCHECKED});
        EXPECT_EQ(IsDlgButtonChecked(dialog, IDC_FONT_ITALIC), UINT{BST_CHECKED});
        EXPECT_EQ(IsDlgButtonChecked(dialog, IDC_FONT_UNDERLINE), UINT{BST_CHECKED});
        EXPECT_EQ(IsDlgButtonChecked(dialog, IDC_FONT_STRIKETHROUGH), UINT{BST_UNCHECKED});
        EXPECT_EQ(IsDlgButtonChecked(dialog, IDC_FONT_CLEARTYPE), UINT{BST_CHECKED});
    });
}

TEST_F(FontChooser, OkGivesWhatIsShown) {
    const std::u16string chosen = Run(u"Tahoma\x100C", [](HWND dialog) {
        SetDlgItemTextW(dialog, IDC_FONT_SIZE, L"17");
        CheckDlgButton(dialog, IDC_FONT_BOLD, BST_CHECKED);
        CheckDlgButton(dialog, IDC_FONT_STRIKETHROUGH, BST_CHECKED);
        CheckDlgButton(dialog, IDC_FONT_CLEARTYPE, BST_UNCHECKED);
        Confirm(dialog);
    });
    EXPECT_EQ(chosen, u"Tahoma\x0911");
}

TEST_F(FontChooser, CancelGivesNothing) {
    EXPECT_EQ(Run(u"Tahoma\x100C", [](HWND dialog) { SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0); }), u"");
}

TEST_F(FontChooser, EveryFamilyIsListedOnceInOrder) {
    Run(u"Tahoma\x100C", [](HWND dialog) {
        const std::vector<std::wstring> faces = Faces(dialog);
        ASSERT_GE(faces.size(), 2u);
        for (size_t i = 1; i < faces.size(); ++i) {
            EXPECT_LT(CompareStringOrdinal(faces[i - 1].c_str(), -1, faces[i].c_str(), -1, TRUE), CSTR_EQUAL)
                << i;
        }
    });
}

int CALLBACK Collect(const LOGFONTW* font, const TEXTMETRICW*, DWORD, LPARAM names) {
    reinterpret_cast<std::set<std::wstring>*>(names)->insert(font->lfFaceName);
    return TRUE;
}

std::set<std::wstring> FamiliesOfTheScreen() {
    std::set<std::wstring> families;
    const HDC screen = GetDC(nullptr);
    EnumFontFamiliesW(screen, nullptr, Collect, reinterpret_cast<LPARAM>(&families));
    ReleaseDC(nullptr, screen);
    return families;
}

// A copy of Tahoma that says it has Japanese characters: the system offers such a font on its side too, under
// a name that begins with @. Gone again with this object.
class JapaneseTahoma {
  public:
    JapaneseTahoma() {
        wchar_t folder[MAX_PATH] = {};
        GetTempPathW(MAX_PATH, folder);
        path_ = std::wstring(folder) + L"nira-test-font.ttf";
        std::vector<BYTE> font = BytesOfTahoma();
        MarkJapanese(&font);
        FILE* file = _wfopen(path_.c_str(), L"wb");
        fwrite(font.data(), 1, font.size(), file);
        fclose(file);
        EXPECT_GT(AddFontResourceExW(path_.c_str(), FR_PRIVATE, nullptr), 0);
    }
    ~JapaneseTahoma() {
        RemoveFontResourceExW(path_.c_str(), FR_PRIVATE, nullptr);
        DeleteFileW(path_.c_str());
    }
    JapaneseTahoma(const JapaneseTahoma&) = delete;
    JapaneseTahoma& operator=(const JapaneseTahoma&) = delete;

  private:
    static std::vector<BYTE> BytesOfTahoma() {
        const HFONT tahoma = CreateFontW(-16, 0, 0, 0, 400, 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0, L"Tahoma");
        const HDC screen = GetDC(nullptr);
        const HGDIOBJ before = SelectObject(screen, tahoma);
        std::vector<BYTE> bytes(GetFontData(screen, 0, 0, nullptr, 0));
        GetFontData(screen, 0, 0, bytes.data(), static_cast<DWORD>(bytes.size()));
        SelectObject(screen, before);
        ReleaseDC(nullptr, screen);
        DeleteObject(tahoma);
        return bytes;
    }
    static void MarkJapanese(std::vector<BYTE>* font) {
        constexpr size_t kDirectory = 12;
        constexpr size_t kEntry = 16;
        constexpr size_t kCodePages = 78;  // in the table OS/2; big-endian
        BYTE* bytes = font->data();
        for (size_t i = 0; i < bytes[5]; ++i) {
            const BYTE* entry = bytes + kDirectory + i * kEntry;
            if (std::memcmp(entry, "OS/2", 4) != 0) continue;
            const size_t table =
                size_t{entry[8]} << 24 | size_t{entry[9]} << 16 | size_t{entry[10]} << 8 | entry[11];
            bytes[table + kCodePages + 1] |= 0x02;  // bit 17
        }
    }

    std::wstring path_;
};

TEST_F(FontChooser, EveryFamilyOfTheScreenIsListedAlsoOnItsSide) {
    const JapaneseTahoma font;
    const std::set<std::wstring> families = FamiliesOfTheScreen();
    EXPECT_EQ(families.count(L"@Tahoma"), 1u);
    const std::u16string chosen = Run(u"@Tahoma\x100C", [&](HWND dialog) {
        const std::vector<std::wstring> faces = Faces(dialog);
        EXPECT_EQ(std::set<std::wstring>(faces.begin(), faces.end()), families);
        Confirm(dialog);
    });
    EXPECT_EQ(chosen, u"@Tahoma\x100C") << "a description comes out as it went in";
}

TEST_F(FontChooser, AFontThatIsGoneLeavesTheFirstFaceSelected) {
    Run(u"No such face anywhere\x100C", [](HWND dialog) {
        EXPECT_GE(Ask(dialog, IDC_FONT_FACE, CB_GETCURSEL), 0);
        EXPECT_EQ(Text(dialog, IDC_FONT_SIZE), L"12");
    });
}

TEST_F(FontChooser, AnOutlineFaceOffersTheStandardSizes) {
    Run(u"Tahoma\x100C", [](HWND dialog) {
        EXPECT_EQ(Ask(dialog, IDC_FONT_SIZE, CB_GETCOUNT), 16);
        EXPECT_EQ(Ask(dialog, IDC_FONT_SIZE, CB_GETCURSEL), 4);
    });
}

TEST_F(FontChooser, AnotherFaceKeepsAStandardSizeSelectedAndAnotherSizeTyped) {
    Run(u"Tahoma\x1010", [](HWND dialog) {
        const LRESULT other = FindFace(dialog, L"Liberation Mono");
        ASSERT_GE(other, 0);
        ChooseFace(dialog, other);
        EXPECT_EQ(Ask(dialog, IDC_FONT_SIZE, CB_GETCURSEL), 6);
        EXPECT_EQ(Text(dialog, IDC_FONT_SIZE), L"16");

        SetDlgItemTextW(dialog, IDC_FONT_SIZE, L"17");
        ChooseFace(dialog, FindFace(dialog, L"Tahoma"));
        EXPECT_EQ(Ask(dialog, IDC_FONT_SIZE, CB_GETCURSEL), CB_ERR);
        EXPECT_EQ(Text(dialog, IDC_FONT_SIZE), L"17");
    });
}

TEST_F(FontChooser, ASizeAboveTheLargestIsShownAndGivenAsTheLargest) {
    const std::u16string chosen = Run(u"Tahoma\x10FF", [](HWND dialog) {
        EXPECT_EQ(Text(dialog, IDC_FONT_SIZE), L"72");
        SetDlgItemTextW(dialog, IDC_FONT_SIZE, L"99");
        Confirm(dialog);
    });
    EXPECT_EQ(chosen, u"Tahoma\x1048");
}

TEST_F(FontChooser, NoSizeAtAllBecomesOne) {
    const std::u16string chosen = Run(u"Tahoma\x100C", [](HWND dialog) {
        SetDlgItemTextW(dialog, IDC_FONT_SIZE, L"big");
        Confirm(dialog);
    });
    EXPECT_EQ(chosen, u"Tahoma\x1001");
}

TEST_F(FontChooser, OddDescriptionsOpenAndClose) {
    for (const std::u16string& current : {std::u16string(), std::u16string(u"\x1000"),
                                          std::u16string(200, u'x'), std::u16string(u"Tahoma\x0100")}) {
        const std::u16string chosen = Run(current, [](HWND dialog) { Confirm(dialog); });
        EXPECT_GE(chosen.size(), 2u);
        EXPECT_NE(chosen.back() & kFontSizeMask, 0);
    }
}

TEST_F(FontChooser, ThePreviewFollowsTheChoice) {
    Run(u"Tahoma\x100C", [](HWND dialog) {
        EXPECT_STREQ(PreviewFont(dialog).lfFaceName, L"Tahoma");
        EXPECT_EQ(PreviewFont(dialog).lfHeight, -12 * FontScale());

        SendDlgItemMessageW(dialog, IDC_FONT_BOLD, BM_CLICK, 0, 0);
        SetDlgItemTextW(dialog, IDC_FONT_SIZE, L"20");
        ChooseFace(dialog, FindFace(dialog, L"Liberation Mono"));
        LetPostedMessagesArrive();

        EXPECT_STREQ(PreviewFont(dialog).lfFaceName, L"Liberation Mono");
        EXPECT_EQ(PreviewFont(dialog).lfHeight, -20 * FontScale());
        EXPECT_EQ(PreviewFont(dialog).lfWeight, FW_BOLD);
    });
    EXPECT_EQ(TheFontCache()->count, 0u);
}

// Nothing lies over anything else or reaches out of the window, and everything is high enough for a finger.
void ExpectLaidOut(HWND dialog) {
    const RECT content = shell::ContentRect(dialog);
    std::vector<RECT> places;
    for (const int id :
         {IDC_FONT_FACE, IDC_FONT_SIZE, IDC_FONT_BOLD, IDC_FONT_ITALIC, IDC_FONT_UNDERLINE,
          IDC_FONT_STRIKETHROUGH, IDC_FONT_CLEARTYPE, int{IDOK}, int{IDCANCEL}, IDC_FONT_PREVIEW}) {
        RECT place = {};
        GetWindowRect(GetDlgItem(dialog, id), &place);
        MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
        EXPECT_GE(place.bottom - place.top, kTouchTarget) << id;
        EXPECT_GE(place.left, content.left) << id;
        EXPECT_LE(place.right, content.right) << id;
        EXPECT_LE(place.bottom, content.bottom) << id;
        for (const RECT& other : places) {
            RECT common = {};
            EXPECT_FALSE(IntersectRect(&common, &other, &place)) << id;
        }
        places.push_back(place);
    }
}

TEST_F(FontChooser, FillsItsOwner) {
    Run(u"Tahoma\x100C", [this](HWND dialog) {
        RECT own = {};
        RECT around = {};
        GetWindowRect(dialog, &own);
        GetWindowRect(owner, &around);
        EXPECT_TRUE(EqualRect(&own, &around));
        ExpectLaidOut(dialog);
    });
}

TEST_F(FontChooser, FollowsANewSizeOfItsOwner) {
    Run(u"Tahoma\x100C", [this](HWND dialog) {
        SetWindowPos(owner, nullptr, 0, 0, 240, 320, SWP_NOMOVE | SWP_NOZORDER);
        ExpectLaidOut(dialog);
        SetWindowPos(owner, nullptr, 0, 0, 420, 400, SWP_NOMOVE | SWP_NOZORDER);
        ExpectLaidOut(dialog);
        RECT preview = {};
        GetWindowRect(GetDlgItem(dialog, IDC_FONT_PREVIEW), &preview);
        EXPECT_GT(preview.right - preview.left, 380);
    });
}

TEST_F(FontChooser, FitsASmallScreen) {
    OwnerOf(240, 320);
    Run(u"Tahoma\x1048", [](HWND dialog) { ExpectLaidOut(dialog); });
}

}  // namespace
}  // namespace nira
