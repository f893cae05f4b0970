#include "app/buffer_list.h"
#include "app/hand_over.h"
#include "app/main_window.h"
#include "app/menu_state.h"
#include "app/pending_paths.h"
#include "app/services/memory.h"
#include "app/services/notices.h"
#include "app/start_steps.h"
#include "app/start_up.h"
#include "app/window_actions.h"
#include "engine/editor_window.h"
#include "engine/render.h"
#include "engine/window_state.h"
#include "files/codecs.h"
#include "files/recent_files.h"
#include "platform/menus.h"
#include "platform/messages.h"
#include "platform/win32/casts.h"
#include "resources/resource.h"
#include "search/search_state.h"
#include "settings/options_store.h"
#include "shell/input_panel.h"
#include "shell/menu_bar.h"
#include "shell/start_again.h"
#include "shell/start_turn.h"
#include "view/fonts.h"

namespace nira {

namespace {

void ConnectEvents() {
    EditorEvents& events = TheEditorEvents();
    events.titleChanged = UpdateMainTitle;
    events.undoStateChanged = UpdateUndoButtons;
    events.selectionChanged = [](Editor*) { UpdateClipboardButtons(); };
    events.repaint = [](Editor* editor) { PaintEditor(editor, 0); };
    SetRecentFileOpener([](char16_t* path, uint32_t codecIndex) { OpenFileInBuffer(path, codecIndex); });
}

// The person ended the program while files from other instances waited for the end of a question: a new
// instance opens them, so that none is lost.
void HandPendingPathsOn() {
    while (char16_t* path = TakePendingPath()) {
        if (!shell::StartAgain(ToWide(path))) ReportLastError();
        MemFree(nullptr, path);
    }
}

// A program file that was cut or changed may have lost what every message and every bar is made of.
bool FindResources() { return LoadResString(IDS_ERROR)[0] != 0; }

bool MakeMainWindow() {
    if (CreateMainWindow()) return true;
    // The quit message that the end of the window left would close the box that explains it.
    MSG quit = {};
    const DWORD reason = GetLastError();
    PeekMessageW(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
    SetLastError(reason);
    return false;
}

bool MakeEditorWindow() {
    const WindowHandle window = TheAppState().mainWindow;
    if (CreateEditorWindow(window) == 0) {
        DestroyMainWindow();
        return false;
    }
    const RECT content = shell::ContentRect(ToHwnd(window));
    ResizeEditorWindow(content.right - content.left, content.bottom - content.top);
    return true;
}

constexpr StartActions kActions = {
    {FindResources, nullptr},
    {[] { return InitCodecs() != 0; }, FreeCodecs},
    {RegisterMainWindowClass, nullptr},
    {MakeMainWindow, DestroyMainWindow},
    {RegisterEditorClass, nullptr},
    {[] { return InitFonts(TheAppState().mainWindow) != 0; }, ShutdownFonts},
    {[] { return LoadOptions() != 0; }, FreeOptions},
    {MakeEditorWindow, nullptr, true},
};

int stepsBegun = 0;

constexpr const wchar_t* kTurnName = L"NIRA.start";

// The windows that another instance looks for are there when this one has begun.
StartResult HandOverOrBegin(const char16_t* path) {
    if (HandOver(path)) return StartResult::kHandedOver;
    return RunStartSteps(kActions, &stepsBegun) ? StartResult::kStarted : StartResult::kFailed;
}

void OpenFirstDocuments(const char16_t* path) {
    if (!shell::SHInitExtraControls()) ReportLastError();
    const HMENU file = ToHmenu(BarPopup(TheAppState().menuBar, BARPOPUP_FILE));
    InitRecentFiles(FromHmenu(GetSubMenu(file, POPUP_FILE_RECENT)));
    NewBuffer();
    RefocusEditor();
    if (path[0] == 0) return;
    SendMessageW(ToHwnd(TheAppState().mainWindow), kMessageOpenFile, 0, reinterpret_cast<LPARAM>(path));
}

}  // namespace

StartResult StartUp(InstanceHandle instance, const char16_t* path, int showCommand) {
    TheAppState() = {};
    TheAppState().instance = instance;
    ConnectEvents();
    const HANDLE turn = shell::WaitForStartTurn(kTurnName, kHandOverPatience);
    const StartResult result = HandOverOrBegin(path);
    shell::EndStartTurn(turn);
    if (result != StartResult::kStarted) return result;
    OpenFirstDocuments(path);
    const HWND window = ToHwnd(TheAppState().mainWindow);
    ShowWindow(window, showCommand);
    UpdateWindow(window);
    return StartResult::kStarted;
}

void ShutDown() {
    GiveBackStartSteps(kActions, stepsBegun);
    FreeSearchState();
    HandPendingPathsOn();
}

}  // namespace nira
