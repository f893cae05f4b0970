#include <gtest/gtest.h>
#include <windows.h>

#include <commctrl.h>
#include <shlobj.h>

#include <cstring>
#include <string>
#include <vector>

#include "app/app_state.h"
#include "app/buffer_list.h"
#include "app/main_window.h"
#include "app/menu_state.h"
#include "app/services/memory.h"
#include "app/services/resources.h"
#include "app/tool_bars.h"
#include "app/window_actions.h"
#include "engine/current_editor.h"
#include "engine/editor_window.h"
#include "engine/text.h"
#include "engine/window_state.h"
#include "files/codecs.h"
#include "platform/menus.h"
#include "platform/win32/casts.h"
#include "resources/resource.h"
#include "settings/options.h"
#include "settings/options_store.h"
#include "shell/menu_bar.h"
#include "view/editing.h"
#include "view/fonts.h"

namespace nira {
namespace {

std::wstring ItemText(HMENU menu, UINT id) {
    wchar_t text[300] = {};
    GetMenuStringW(menu, id, text, 300, MF_BYCOMMAND);
    return text;
}

bool IsGrayed(HMENU menu, UINT id) { return (GetMenuState(menu, id, MF_BYCOMMAND) & MF_GRAYED) != 0; }
bool IsChecked(HMENU menu, UINT id) { return (GetMenuState(menu, id, MF_BYCOMMAND) & MF_CHECKED) != 0; }

// The main window with everything in it, hidden.
class MainWindowTest : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        ASSERT_TRUE(RegisterMainWindowClass());
        ASSERT_TRUE(RegisterEditorClass());
    }
    static void TearDownTestSuite() {
        UnregisterClassW(L"NIRA", GetModuleHandleW(nullptr));
        UnregisterClassW(L"NREDIT", GetModuleHandleW(nullptr));
        UnregisterClassW(L"NREDIT", nullptr);
    }

    void SetUp() override {
        TheAppState() = {};
        TheWindowState() = {};
        TheEditorEvents() = {};
        TheEditorEvents().titleChanged = UpdateMainTitle;
        ASSERT_TRUE(CreateMainWindow());
        ASSERT_EQ(InitCodecs(), 1);
        ASSERT_EQ(InitFonts(TheAppState().mainWindow), 1);
        ASSERT_EQ(LoadOptions(), 1);
        ASSERT_EQ(CreateEditorWindow(TheAppState().mainWindow), 1);
        NewBuffer();
    }

    void TearDown() override {
        while (TheAppState().bufferCount > 0) {
            Editor* buffer = TheAppState().buffers[0];
            RemoveBuffer(0);
            SetCurrentEditor(nullptr);
            EditorDestroy(buffer);
        }
        ShutdownFonts();
        FreeOptions();
        FreeCodecs();
        DestroyMainWindow();
        TheAppState() = {};
        TheWindowState() = {};
        MSG message = {};
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        }
    }

    static HWND Window() { return ToHwnd(TheAppState().mainWindow); }
    static LRESULT Send(UINT message, WPARAM first, LPARAM second) {
        return SendMessageW(Window(), message, first, second);
    }
    static HMENU Popup(UINT command) { return ToHmenu(BarPopup(TheAppState().menuBar, command)); }
    static HMENU Prepared(UINT command) {
        const HMENU menu = Popup(command);
        Send(WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(menu), static_cast<LPARAM>(command));
        return menu;
    }
    static Editor* Shown() { return TheWindowState().currentEditor; }
    static std::wstring Caption() {
        wchar_t text[300] = {};
        GetWindowTextW(Window(), text, 300);
        return text;
    }
};

TEST_F(MainWindowTest, AnswersElevenMessagesInTheirOrder) {
    const std::vector<uint32_t> expected = {1, 0x0F, 0x111, 0x1A, 6, 0x3FF, 2, 5, 0x117, 0x400, 0x401};
    const MessageTable table = MainWindowTable();
    std::vector<uint32_t> identifiers;
    for (size_t i = 0; i < table.count; ++i) identifiers.push_back(table.entries[i].identifier);

    EXPECT_EQ(identifiers, expected);
}

TEST_F(MainWindowTest, CreationMakesTheMenuBarAndStaysHidden) {
    EXPECT_TRUE(IsWindow(ToHwnd(TheAppState().menuBar)));
    EXPECT_FALSE(IsWindowVisible(Window()));
    EXPECT_EQ(TheAppState().activateInfo.size, kActivateRecordSize);
}

TEST_F(MainWindowTest, TheEditorWindowFillsTheAreaAboveTheBar) {
    SetWindowPos(Window(), nullptr, 0, 0, 400, 500, SWP_NOMOVE | SWP_NOZORDER);

    RECT editor = {};
    GetWindowRect(ToHwnd(TheWindowState().editorWindow), &editor);
    const RECT content = shell::ContentRect(Window());
    EXPECT_GT(content.bottom, 0);
    EXPECT_EQ(editor.right - editor.left, content.right - content.left);
    EXPECT_EQ(editor.bottom - editor.top, content.bottom - content.top);
}

TEST_F(MainWindowTest, PaintingEnds) {
    ShowWindow(Window(), SW_SHOWNOACTIVATE);
    InvalidateRect(Window(), nullptr, FALSE);

    Send(WM_PAINT, 0, 0);

    EXPECT_FALSE(GetUpdateRect(Window(), nullptr, FALSE));
}

TEST_F(MainWindowTest, TellsItsEditorWindow) {
    EXPECT_EQ(Send(kMessageEditorWindow, 0, 0), reinterpret_cast<LRESULT>(TheWindowState().editorWindow));
}

TEST_F(MainWindowTest, TheCaptionIsTheShownDocuments) {
    EXPECT_EQ(Caption(), L"Untitled1");

    TypeChar(Shown(), u'x');

    EXPECT_EQ(Caption(), L"Untitled1 *");
}

TEST_F(MainWindowTest, ANullPathOpensNothing) {
    EXPECT_EQ(Send(kMessageOpenFile, 0, 0), 0);
    EXPECT_EQ(SendMessageW(ToHwnd(TheWindowState().editorWindow), WM_SETTEXT, 0, 0), 0);

    EXPECT_EQ(TheAppState().bufferCount, 1);
    EXPECT_EQ(Caption(), L"Untitled1");
}

// The width of the icon that the frame, or the task bar, shows; 0 without one.
int IconWidth(HWND window, WPARAM kind) {
    const auto icon = reinterpret_cast<HICON>(SendMessageW(window, WM_GETICON, kind, 0));
    ICONINFO info = {};
    if (icon == nullptr || !GetIconInfo(icon, &info)) return 0;
    BITMAP bitmap = {};
    GetObjectW(info.hbmColor, sizeof(bitmap), &bitmap);
    DeleteObject(info.hbmColor);
    DeleteObject(info.hbmMask);
    return static_cast<int>(bitmap.bmWidth);
}

TEST_F(MainWindowTest, TheFrameHasItsIconsInTheSizesOfTheSystem) {
    EXPECT_EQ(IconWidth(Window(), ICON_BIG), GetSystemMetrics(SM_CXICON));
    EXPECT_EQ(IconWidth(Window(), ICON_SMALL), GetSystemMetrics(SM_CXSMICON));
}

class OpeningAFile : public MainWindowTest {
  protected:
    void SetUp() override {
        MainWindowTest::SetUp();
        wchar_t folder[MAX_PATH];
        GetTempPathW(MAX_PATH, folder);
        path_ = std::wstring(folder) + L"nira main window.txt";
        const HANDLE file = CreateFileW(path_.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
        DWORD written = 0;
        WriteFile(file, "one", 3, &written, nullptr);
        CloseHandle(file);
    }
    void TearDown() override {
        MainWindowTest::TearDown();
        DeleteFileW(path_.c_str());
    }
    // For five seconds at most.
    static void WaitForAnotherCaption(const wchar_t* now) {
        const ULONGLONG end = GetTickCount64() + 5000;
        MSG message = {};
        while (Caption() == now && GetTickCount64() < end) {
            if (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
        }
    }
    std::wstring path_;
};

TEST_F(OpeningAFile, ByTextOfTheEditorWindow) {
    SendMessageW(ToHwnd(TheWindowState().editorWindow), WM_SETTEXT, 0,
                 reinterpret_cast<LPARAM>(path_.c_str()));

    EXPECT_EQ(Caption(), L"nira main window.txt");
    EXPECT_EQ(TheAppState().bufferCount, 1);
}

TEST_F(OpeningAFile, WaitsUntilABoxHasEnded) {
    EnableWindow(Window(), FALSE);
    Send(kMessageOpenFile, 0, reinterpret_cast<LPARAM>(path_.c_str()));
    EXPECT_EQ(Caption(), L"Untitled1");
    EnableWindow(Window(), TRUE);

    WaitForAnotherCaption(L"Untitled1");

    EXPECT_EQ(Caption(), L"nira main window.txt");
}

// What a file manager gives for a drop of one file.
WPARAM DropOf(const std::wstring& path) {
    const size_t bytes = sizeof(DROPFILES) + (path.size() + 2) * sizeof(wchar_t);
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, bytes);
    auto* files = static_cast<DROPFILES*>(GlobalLock(block));
    files->pFiles = sizeof(DROPFILES);
    files->fWide = TRUE;
    memcpy(files + 1, path.c_str(), path.size() * sizeof(wchar_t));
    GlobalUnlock(block);
    return reinterpret_cast<WPARAM>(block);
}

TEST_F(OpeningAFile, WaitsForTheEndOfABoxInTheOrderOfArrival) {
    const std::wstring other = path_ + L".second.txt";
    ASSERT_TRUE(CopyFileW(path_.c_str(), other.c_str(), FALSE));
    EnableWindow(Window(), FALSE);
    Send(kMessageOpenFile, 0, reinterpret_cast<LPARAM>(path_.c_str()));
    EnableWindow(Window(), TRUE);

    // The one that comes behind takes the one that waits along.
    Send(kMessageOpenFile, 0, reinterpret_cast<LPARAM>(other.c_str()));

    EXPECT_EQ(TheAppState().bufferCount, 2);
    EXPECT_EQ(Caption(), L"nira main window.txt.second.txt");
    DeleteFileW(other.c_str());
}

TEST_F(OpeningAFile, ByADrop) {
    Send(WM_DROPFILES, DropOf(path_), 0);

    EXPECT_EQ(Caption(), L"nira main window.txt");
}

TEST_F(OpeningAFile, ByADropWaitsUntilABoxHasEnded) {
    EnableWindow(Window(), FALSE);
    Send(WM_DROPFILES, DropOf(path_), 0);
    EXPECT_EQ(Caption(), L"Untitled1");
    EnableWindow(Window(), TRUE);

    WaitForAnotherCaption(L"Untitled1");

    EXPECT_EQ(Caption(), L"nira main window.txt");
}

// ---- the pop-ups ----

TEST_F(MainWindowTest, EditIsGrayedWithoutSelectionAndHistory) {
    const HMENU menu = Prepared(BARPOPUP_EDIT);

    for (const UINT id : {CMD_CUT, CMD_COPY, CMD_CLEAR, CMD_UNDO, CMD_REDO})
        EXPECT_TRUE(IsGrayed(menu, id)) << id;
}

TEST_F(MainWindowTest, EditFollowsTheDocument) {
    TypeChar(Shown(), u'a');
    Shown()->anchorColumn = 0;

    const HMENU menu = Prepared(BARPOPUP_EDIT);

    for (const UINT id : {CMD_CUT, CMD_COPY, CMD_CLEAR, CMD_UNDO}) EXPECT_FALSE(IsGrayed(menu, id)) << id;
    EXPECT_TRUE(IsGrayed(menu, CMD_REDO));
}

TEST_F(MainWindowTest, PasteFollowsTheClipboard) {
    ASSERT_TRUE(OpenClipboard(Window()));
    EmptyClipboard();
    CloseClipboard();
    EXPECT_TRUE(IsGrayed(Prepared(BARPOPUP_EDIT), CMD_PASTE));
    EXPECT_TRUE(IsGrayed(Popup(BARPOPUP_EDIT), CMD_PASTE_OTHER));

    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, 4);
    ASSERT_TRUE(OpenClipboard(Window()));
    SetClipboardData(CF_UNICODETEXT, block);
    CloseClipboard();

    EXPECT_FALSE(IsGrayed(Prepared(BARPOPUP_EDIT), CMD_PASTE));
    EXPECT_FALSE(IsGrayed(Popup(BARPOPUP_EDIT), CMD_PASTE_OTHER));
}

TEST_F(MainWindowTest, TheOtherPasteIsNamed) {
    TheOptions().pasteMode = 1;
    EXPECT_EQ(ItemText(Prepared(BARPOPUP_EDIT), CMD_PASTE_OTHER), L"&Normal Paste");

    TheOptions().pasteMode = 0;

    EXPECT_EQ(ItemText(Prepared(BARPOPUP_EDIT), CMD_PASTE_OTHER), L"S&mart Paste");
}

TEST_F(MainWindowTest, BuffersListsTheDocumentsWithTheShownOneMarked) {
    NewBuffer();
    TypeChar(Shown(), u'x');

    const HMENU menu = Prepared(BARPOPUP_WINDOWS);

    EXPECT_EQ(ItemText(menu, CMD_BUFFER_FIRST), L"Untitled1");
    EXPECT_EQ(ItemText(menu, CMD_BUFFER_FIRST + 1), L"Untitled2 *");
    EXPECT_FALSE(IsChecked(menu, CMD_BUFFER_FIRST));
    EXPECT_TRUE(IsChecked(menu, CMD_BUFFER_FIRST + 1));
    EXPECT_EQ(IsChecked(menu, CMD_TOGGLE_WRAP), Shown()->wordWrap != 0);
}

TEST_F(MainWindowTest, NavigateFollowsTheBookmarks) {
    Shown()->bookmarks[3] = 1;

    const HMENU menu = Prepared(BARPOPUP_NAVIGATE);

    EXPECT_FALSE(IsGrayed(menu, CMD_GO_TO_BOOKMARK_FIRST + 3));
    EXPECT_TRUE(IsGrayed(menu, CMD_GO_TO_BOOKMARK_FIRST + 4));
    EXPECT_TRUE(IsChecked(menu, CMD_SET_BOOKMARK_FIRST + 3));
    EXPECT_FALSE(IsChecked(menu, CMD_SET_BOOKMARK_FIRST + 4));
}

// ---- the tool bars ----

TEST_F(MainWindowTest, AToolBarIsMadeOnceAndShowsTheSameDocuments) {
    ShowToolBar(ToolBar::kNavigate);
    const WindowHandle bar = TheAppState().navigateBar;
    ShowToolBar(ToolBar::kNavigate);

    ASSERT_NE(bar, nullptr);
    EXPECT_EQ(TheAppState().navigateBar, bar);
    EXPECT_EQ(BarPopup(bar, BARPOPUP_WINDOWS), BarPopup(TheAppState().menuBar, BARPOPUP_WINDOWS));
}

TEST_F(MainWindowTest, ClosingAToolBarKeepsTheDocumentsPopup) {
    ShowToolBar(ToolBar::kUndo);
    CloseToolBar(ToolBar::kUndo);
    CloseToolBar(ToolBar::kUndo);

    EXPECT_EQ(TheAppState().undoBar, nullptr);
    EXPECT_TRUE(IsMenu(Popup(BARPOPUP_WINDOWS)));
}

TEST_F(MainWindowTest, TheUndoBarShowsGroupUndoAndWhatCanBeUndone) {
    TheAppState().groupUndo = 1;

    ShowToolBar(ToolBar::kUndo);

    const HWND bar = ToHwnd(TheAppState().undoBar);
    EXPECT_TRUE(SendMessageW(bar, TB_ISBUTTONPRESSED, CMD_GROUP_UNDO, 0));
    EXPECT_FALSE(SendMessageW(bar, TB_ISBUTTONENABLED, CMD_UNDO, 0));
}

std::vector<int> CommandsOf(WindowHandle bar) {
    std::vector<int> commands;
    const LRESULT count = SendMessageW(ToHwnd(bar), TB_BUTTONCOUNT, 0, 0);
    for (LRESULT i = 0; i < count; ++i) {
        TBBUTTON button = {};
        SendMessageW(ToHwnd(bar), TB_GETBUTTON, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&button));
        commands.push_back(button.idCommand);
    }
    return commands;
}

TEST_F(MainWindowTest, TheSearchBarIsKeptInTheFormThatIsThere) {
    ShowToolBar(ToolBar::kFind);
    const WindowHandle bar = TheAppState().findBar;
    ShowToolBar(ToolBar::kReplace);

    ASSERT_NE(bar, nullptr);
    EXPECT_EQ(TheAppState().findBar, bar);
    EXPECT_EQ(CommandsOf(bar), (std::vector<int>{BARPOPUP_WINDOWS, CMD_FIND_NEXT, CMD_CLOSE_FIND_BAR}));
    CloseToolBar(ToolBar::kFind);
    ShowToolBar(ToolBar::kReplace);
    EXPECT_EQ(CommandsOf(TheAppState().findBar),
              (std::vector<int>{BARPOPUP_WINDOWS, CMD_FIND_NEXT, CMD_REPLACE_NEXT, CMD_CLOSE_FIND_BAR}));
    ShowToolBar(ToolBar::kFind);
    EXPECT_EQ(CommandsOf(TheAppState().findBar).size(), 4u);
}

TEST_F(MainWindowTest, TheSearchBarHasTheDocumentsAndTheImagesOfTheProgramAndTheSystem) {
    ShowToolBar(ToolBar::kFind);

    const WindowHandle bar = TheAppState().findBar;
    EXPECT_EQ(BarPopup(bar, BARPOPUP_WINDOWS), BarPopup(TheAppState().menuBar, BARPOPUP_WINDOWS));
    const auto images = reinterpret_cast<HIMAGELIST>(SendMessageW(ToHwnd(bar), TB_GETIMAGELIST, 0, 0));
    EXPECT_EQ(ImageList_GetImageCount(images), 13 + 15);
}

TEST_F(MainWindowTest, ASearchBarThatIsGoneAlreadyIsClosedAllTheSame) {
    ShowToolBar(ToolBar::kFind);
    DestroyWindow(ToHwnd(TheAppState().findBar));

    CloseToolBar(ToolBar::kFind);

    EXPECT_EQ(TheAppState().findBar, nullptr);
    ShowToolBar(ToolBar::kFind);
    EXPECT_NE(TheAppState().findBar, nullptr);
}

}  // namespace
}  // namespace nira
