// The file dialog with its real controls, driven from inside by a timer.
#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "app/services/memory.h"
#include "app/services/notices.h"
#include "files/codecs.h"
#include "files/file_dialogs.h"
#include "platform/win32/casts.h"
#include "resources/resource.h"
#include "shell/menu_bar.h"
#include "windows/dialog_script.h"

namespace nira {
namespace {

class FileDialogWindow : public testing::Test {
  protected:
    void SetUp() override {
        wchar_t temp[MAX_PATH];
        GetTempPathW(MAX_PATH, temp);
        folder = std::wstring(temp) + L"nira dialog";
        CreateDirectoryW(folder.c_str(), nullptr);
        CreateDirectoryW((folder + L"\\sub").c_str(), nullptr);
        Put(L"big.txt", 1572864);
        Put(L"small.txt", 1023);
        owner = CreateWindowExW(0, L"STATIC", L"owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 460, 600,
                                nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
        SetNoticeOwner(FromHwnd(owner));
        InitCodecs();
    }
    void TearDown() override {
        FreeCodecs();
        SetNoticeOwner(nullptr);
        DestroyWindow(owner);
        DeleteFileW((folder + L"\\big.txt").c_str());
        DeleteFileW((folder + L"\\small.txt").c_str());
        RemoveDirectoryW((folder + L"\\sub").c_str());
        RemoveDirectoryW(folder.c_str());
    }
    void Put(const wchar_t* name, DWORD size) const {
        const HANDLE file = CreateFileW((folder + L"\\" + name).c_str(), GENERIC_WRITE, 0, nullptr,
                                        CREATE_ALWAYS, 0, nullptr);
        SetFilePointer(file, static_cast<LONG>(size), nullptr, FILE_BEGIN);
        SetEndOfFile(file);
        CloseHandle(file);
    }
    // The path chosen in the end, empty for none.
    std::wstring Run(bool saving, const std::wstring& initial, std::function<void(HWND)> steps) {
        PlayWhenShown(IDC_FILE_LIST, std::move(steps));
        const char16_t* path = FromWide(initial.c_str());
        char16_t* chosen = saving ? SaveDialog(path, &codec, &lineEnd) : OpenDialog(path, &codec);
        const std::wstring result = chosen != nullptr ? ToWide(chosen) : L"";
        MemFree(nullptr, chosen);
        return result;
    }
    static HWND List(HWND dialog) { return GetDlgItem(dialog, IDC_FILE_LIST); }
    static std::wstring ItemText(HWND dialog, int item, int column) {
        wchar_t text[300] = {};
        LVITEMW record = {};
        record.iSubItem = column;
        record.pszText = text;
        record.cchTextMax = 300;
        SendMessageW(List(dialog), LVM_GETITEMTEXTW, static_cast<WPARAM>(item),
                     reinterpret_cast<LPARAM>(&record));
        return text;
    }
    static std::wstring Text(HWND dialog, int id) {
        wchar_t text[300] = {};
        GetDlgItemTextW(dialog, id, text, 300);
        return text;
    }
    static LRESULT Notify(HWND dialog, UINT code, int item, int column = 0) {
        NMITEMACTIVATE record = {};
        record.hdr = {List(dialog), IDC_FILE_LIST, code};
        record.iItem = item;
        record.iSubItem = column;
        return SendMessageW(dialog, WM_NOTIFY, IDC_FILE_LIST, reinterpret_cast<LPARAM>(&record));
    }
    static void Select(HWND dialog, int item) {
        LVITEMW record = {};
        record.state = LVIS_SELECTED;
        record.stateMask = LVIS_SELECTED;
        SendMessageW(List(dialog), LVM_SETITEMSTATE, static_cast<WPARAM>(item),
                     reinterpret_cast<LPARAM>(&record));
    }

    std::wstring folder;
    HWND owner = nullptr;
    uint32_t codec = 1;
    uint32_t lineEnd = 2;
};

TEST_F(FileDialogWindow, ShowsNamesSizesAndImages) {
    Run(false, folder, [&](HWND dialog) {
        EXPECT_EQ(Text(dialog, IDC_FILE_FOLDER), folder);
        ASSERT_EQ(SendMessageW(List(dialog), LVM_GETITEMCOUNT, 0, 0), 3);
        EXPECT_EQ(ItemText(dialog, 0, 0), L"sub");
        EXPECT_EQ(ItemText(dialog, 0, 1), L"");
        EXPECT_EQ(ItemText(dialog, 1, 0), L"big.txt");
        EXPECT_EQ(ItemText(dialog, 1, 1), L"1.5M");
        EXPECT_EQ(ItemText(dialog, 2, 1), L"1023B");
        EXPECT_FALSE(ItemText(dialog, 2, 2).empty());
        const auto images =
            reinterpret_cast<HIMAGELIST>(SendMessageW(List(dialog), LVM_GETIMAGELIST, LVSIL_SMALL, 0));
        EXPECT_EQ(ImageList_GetImageCount(images), 2);
    });
}

TEST_F(FileDialogWindow, FillsItsOwnerAndIsMadeForFingers) {
    Run(true, folder, [&](HWND dialog) {
        RECT own = {};
        RECT around = {};
        GetWindowRect(dialog, &own);
        GetWindowRect(owner, &around);
        EXPECT_TRUE(EqualRect(&own, &around));
        RECT row = {LVIR_BOUNDS, 0, 0, 0};
        SendMessageW(List(dialog), LVM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&row));
        EXPECT_GE(row.bottom - row.top, 24);
        for (const int id : {IDC_FILE_NAME, IDC_FILE_ENCODING}) {
            RECT place = {};
            GetWindowRect(GetDlgItem(dialog, id), &place);
            EXPECT_GE(place.bottom - place.top, 24) << id;
            EXPECT_LE(place.right, own.right) << id;
        }
        RECT list = {};
        GetWindowRect(List(dialog), &list);
        EXPECT_GT(list.right - list.left, 440);
        COMBOBOXINFO parts = {};
        parts.cbSize = sizeof(parts);
        ASSERT_TRUE(GetComboBoxInfo(GetDlgItem(dialog, IDC_FILE_ENCODING), &parts));
        EXPECT_GE(SendMessageW(parts.hwndList, LB_GETITEMHEIGHT, 0, 0), 24);
    });
}

TEST_F(FileDialogWindow, PutsTheNameOfASelectedFileButNotOfAFolderIntoTheBox) {
    Run(false, folder, [&](HWND dialog) {
        Select(dialog, 0);
        EXPECT_EQ(Text(dialog, IDC_FILE_NAME), L"");
        Select(dialog, 2);
        EXPECT_EQ(Text(dialog, IDC_FILE_NAME), L"small.txt");
        Select(dialog, 0);
        EXPECT_EQ(Text(dialog, IDC_FILE_NAME), L"small.txt");
    });
}

TEST_F(FileDialogWindow, SortsBySizeOnBothOtherColumns) {
    Run(false, folder, [&](HWND dialog) {
        for (const int column : {1, 2}) {
            Notify(dialog, static_cast<UINT>(LVN_COLUMNCLICK), -1, column);
            EXPECT_EQ(ItemText(dialog, 1, 0), L"small.txt");
            Notify(dialog, static_cast<UINT>(LVN_COLUMNCLICK), -1, 0);
            EXPECT_EQ(ItemText(dialog, 1, 0), L"big.txt");
        }
    });
}

TEST_F(FileDialogWindow, ActivatingAFileKeepsTheFirstCodec) {
    const std::wstring path = Run(false, folder, [&](HWND dialog) {
        SendDlgItemMessageW(dialog, IDC_FILE_ENCODING, CB_SETCURSEL, 4, 0);
        Notify(dialog, static_cast<UINT>(LVN_ITEMACTIVATE), 2);
    });
    EXPECT_EQ(path, folder + L"\\small.txt");
    EXPECT_EQ(codec, 1u);
}

TEST_F(FileDialogWindow, TheButtonTakesTheChosenCodec) {
    const std::wstring path = Run(false, folder + L"\\small.txt", [&](HWND dialog) {
        EXPECT_EQ(SendDlgItemMessageW(dialog, IDC_FILE_ENCODING, CB_GETCURSEL, 0, 0), 1);
        SendDlgItemMessageW(dialog, IDC_FILE_ENCODING, CB_SETCURSEL, 4, 0);
        SendMessageW(dialog, WM_COMMAND, CMD_DIALOG_ACCEPT, 0);
    });
    EXPECT_EQ(path, folder + L"\\small.txt");
    EXPECT_EQ(codec, 4u);
}

TEST_F(FileDialogWindow, ACancelledDialogChangesNothing) {
    const std::wstring path = Run(true, folder + L"\\new.txt", [&](HWND dialog) {
        SendDlgItemMessageW(dialog, IDC_FILE_ENCODING, CB_SETCURSEL, 4, 0);
        SendMessageW(dialog, WM_COMMAND, CMD_LINE_END_CR, 0);
        SendMessageW(dialog, WM_COMMAND, CMD_DIALOG_CANCEL, 0);
    });
    EXPECT_EQ(path, L"");
    EXPECT_EQ(codec, 1u);
    EXPECT_EQ(lineEnd, 2u);
}

TEST_F(FileDialogWindow, MarksAndReturnsTheLineEnd) {
    const std::wstring path = Run(true, folder + L"\\new.txt", [&](HWND dialog) {
        const HWND bar = shell::VisibleBar(dialog);
        const auto menu =
            reinterpret_cast<HMENU>(SendMessageW(bar, shell::kGetSubMenu, 0, BARPOPUP_LINE_ENDS));
        EXPECT_TRUE(GetMenuState(menu, CMD_LINE_END_CRLF, MF_BYCOMMAND) & MF_CHECKED);
        SendMessageW(dialog, WM_COMMAND, CMD_LINE_END_CR, 0);
        EXPECT_TRUE(GetMenuState(menu, CMD_LINE_END_CR, MF_BYCOMMAND) & MF_CHECKED);
        EXPECT_FALSE(GetMenuState(menu, CMD_LINE_END_CRLF, MF_BYCOMMAND) & MF_CHECKED);
        SendMessageW(dialog, WM_COMMAND, CMD_DIALOG_ACCEPT, 0);
    });
    EXPECT_EQ(path, folder + L"\\new.txt");
    EXPECT_EQ(lineEnd, 1u);
}

TEST_F(FileDialogWindow, GoesUpToTheRootFolderAndIntoADrive) {
    Run(false, L"C:", [&](HWND dialog) {
        EXPECT_EQ(Text(dialog, IDC_FILE_FOLDER), L"C:");
        SendMessageW(dialog, WM_COMMAND, CMD_UP_ONE_LEVEL, 0);
        EXPECT_EQ(Text(dialog, IDC_FILE_FOLDER), L"");
        const int drive = static_cast<int>(
            SendMessageW(List(dialog), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
        EXPECT_EQ(ItemText(dialog, drive, 0), L"C:");
        SendMessageW(dialog, WM_COMMAND, CMD_UP_ONE_LEVEL, 0);
        EXPECT_EQ(Text(dialog, IDC_FILE_FOLDER), L"");
        Notify(dialog, static_cast<UINT>(LVN_ITEMACTIVATE), drive);
        EXPECT_EQ(Text(dialog, IDC_FILE_FOLDER), L"C:");
    });
}

TEST_F(FileDialogWindow, TakesAPastedPathOnAnotherDrive) {
    const std::wstring path = Run(false, L"Z:", [&](HWND dialog) {
        SetDlgItemTextW(dialog, IDC_FILE_NAME, (folder + L"\\small.txt").c_str());
        SendMessageW(dialog, WM_COMMAND, CMD_OK, 0);
    });
    EXPECT_EQ(path, folder + L"\\small.txt");
}

TEST_F(FileDialogWindow, FollowsANewSizeOfItsOwner) {
    Run(false, folder, [&](HWND dialog) {
        SetWindowPos(owner, nullptr, 0, 0, 240, 320, SWP_NOMOVE | SWP_NOZORDER);
        RECT own = {};
        GetWindowRect(dialog, &own);
        EXPECT_EQ(own.right - own.left, 240);
        EXPECT_EQ(own.bottom - own.top, 320);
        RECT client = {};
        GetClientRect(dialog, &client);
        RECT list = {};
        GetWindowRect(List(dialog), &list);
        MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&list), 2);
        EXPECT_EQ(list.right, client.right);
        EXPECT_LE(list.bottom, client.bottom - shell::MenuBarHeight(shell::VisibleBar(dialog)));
        LRESULT together = 0;
        for (WPARAM i = 0; i < 3; ++i) together += SendMessageW(List(dialog), LVM_GETCOLUMNWIDTH, i, 0);
        EXPECT_LE(together, client.right);
    });
}

}  // namespace
}  // namespace nira
