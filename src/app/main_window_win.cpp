#include "app/buffer_list.h"
#include "app/buffer_saving.h"
#include "app/commands.h"
#include "app/main_window.h"
#include "app/menu_state.h"
#include "app/pending_paths.h"
#include "app/services/memory.h"
#include "app/services/notices.h"
#include "app/services/resources.h"
#include "app/tool_bars.h"
#include "engine/editor_window.h"
#include "engine/window_state.h"
#include "files/codecs.h"
#include "platform/win32/casts.h"
#include "resources/resource.h"
#include "shell/activation.h"
#include "shell/desktop_frame.h"
#include "shell/input_panel.h"
#include "shell/menu_bar.h"

namespace nira {

namespace {

constexpr wchar_t kMainClass[] = L"NIRA";
constexpr UINT kShellInternal = 0x03FF;  // swallowed: the default procedure must not see it
constexpr UINT kPendingPathsTimer = 1;
constexpr UINT kPendingPathsMilliseconds = 50;

static_assert(sizeof(ActivateRecord) == sizeof(shell::ActivateInfo));
static_assert(offsetof(ActivateRecord, lastFocus) == offsetof(shell::ActivateInfo, lastFocus));
static_assert(offsetof(ActivateRecord, flags) == offsetof(shell::ActivateInfo, flags));

shell::ActivateInfo* ActivateInfo() {
    return reinterpret_cast<shell::ActivateInfo*>(&TheAppState().activateInfo);
}

// ---- WM_CREATE ----

// Why the window destroyed itself while it was made; 0 when it did not. Destroying overwrites the last error.
DWORD creationError = 0;

// The area for text on the first screen, from the shell's visible desktop.
SIZE FirstContentSize() {
    shell::SipInfo info = {};
    info.size = shell::kSipInfoSize;
    if (!shell::SHSipInfo(shell::kSpiGetSipInfo, 0, &info, 0)) ReportLastError();
    SIZE size = {info.visibleDesktop.right - info.visibleDesktop.left,
                 info.visibleDesktop.bottom - info.visibleDesktop.top};
    const DWORD docked = shell::kSipOn | shell::kSipDocked;
    if ((info.flags & docked) != docked) size.cy -= shell::MenuBarHeight(ToHwnd(TheAppState().menuBar));
    return size;
}

intptr_t OnCreate(WindowHandle window, uint32_t, uintptr_t, intptr_t) {
    AppState& app = TheAppState();
    app.activateInfo = {kActivateRecordSize, nullptr, 0};
    app.mainWindow = window;
    app.menuBar = CreateMenuBar(window, IDR_BAR_MAIN);
    if (app.menuBar == nullptr) {
        creationError = GetLastError();
        DestroyWindow(ToHwnd(window));
        return 0;
    }
    AddBarImages(app.menuBar, true);
    const SIZE size = FirstContentSize();
    SetWindowPos(ToHwnd(window), nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER);
    ResizeEditorWindow(size.cx, size.cy);
    return 0;
}

// ---- the other messages ----

intptr_t OnPaint(WindowHandle window, uint32_t, uintptr_t, intptr_t) {
    // The editor window covers everything. Unless the area is validated the message comes for ever.
    ValidateRect(ToHwnd(window), nullptr);
    return 0;
}

intptr_t OnSettingChange(WindowHandle window, uint32_t, uintptr_t first, intptr_t second) {
    if (!shell::SHHandleWMSettingChange(ToHwnd(window), first, second, ActivateInfo())) ReportLastError();
    return 0;
}

intptr_t OnActivate(WindowHandle window, uint32_t, uintptr_t first, intptr_t second) {
    if (!shell::SHHandleWMActivate(ToHwnd(window), first, second, ActivateInfo(), 0)) ReportLastError();
    return 0;
}

intptr_t OnShellInternal(WindowHandle, uint32_t, uintptr_t, intptr_t) { return 0; }

intptr_t OnDestroy(WindowHandle, uint32_t, uintptr_t, intptr_t) {
    PostQuitMessage(0);
    return 0;
}

intptr_t OnSize(WindowHandle, uint32_t, uintptr_t, intptr_t second) {
    const auto size = static_cast<DWORD_PTR>(second);
    ResizeEditorWindow(LOWORD(size), HIWORD(size));
    return 0;
}

intptr_t OnInitMenuPopup(WindowHandle, uint32_t, uintptr_t first, intptr_t second) {
    const auto command = LOWORD(static_cast<DWORD_PTR>(second));
    PreparePopup(FromHmenu(reinterpret_cast<HMENU>(first)), command);
    return 0;
}

// A path must wait while the person is asked something: boxes and dialogs disable the main window, and those
// without an owner run inside a command or another opening.
bool MustWait() { return IsBusy() || !IsWindowEnabled(ToHwnd(TheAppState().mainWindow)); }

void OpenPath(char16_t* path) {
    BeginBusy();
    Guarded([&] { OpenFileInBuffer(path, DefaultCodec()); });
    EndBusy();
}

void OpenPendingPaths() {
    while (HasPendingPath() && !MustWait()) OpenPath(TakePendingPath());
}

void CALLBACK OnPendingPathsTimer(HWND window, UINT, UINT_PTR, DWORD) {
    OpenPendingPaths();
    if (!HasPendingPath()) KillTimer(window, kPendingPathsTimer);
}

intptr_t OnOpenFile(WindowHandle window, uint32_t, uintptr_t, intptr_t second) {
    const auto* path = reinterpret_cast<const char16_t*>(second);
    if (path == nullptr) return kPathTaken;
    if (!PendPath(path)) return kNoMemoryForPath;
    // The other instance may end now. Waiting, it could not tell one that opens a large file, or that shows
    // the person an error, from one that hangs.
    ReplyMessage(kPathTaken);
    OpenPendingPaths();
    // A timer comes through whatever message loop runs when the box has ended.
    if (HasPendingPath()) {
        SetTimer(ToHwnd(window), kPendingPathsTimer, kPendingPathsMilliseconds, OnPendingPathsTimer);
    }
    return kPathTaken;
}

intptr_t OnEditorWindow(WindowHandle, uint32_t, uintptr_t, intptr_t) {
    return reinterpret_cast<intptr_t>(TheWindowState().editorWindow);
}

constexpr MessageEntry kMessages[] = {
    {WM_CREATE, OnCreate},
    {WM_PAINT, OnPaint},
    {WM_COMMAND, OnCommand},
    {WM_SETTINGCHANGE, OnSettingChange},
    {WM_ACTIVATE, OnActivate},
    {kShellInternal, OnShellInternal},
    {WM_DESTROY, OnDestroy},
    {WM_SIZE, OnSize},
    {WM_INITMENUPOPUP, OnInitMenuPopup},
    {kMessageOpenFile, OnOpenFile},
    {kMessageEditorWindow, OnEditorWindow},
};

LRESULT CALLBACK MainWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const MessageEntry* entry = FindMessage(MainWindowTable(), message);
    if (entry == nullptr) return DefWindowProcW(window, message, wParam, lParam);
    LRESULT result = 0;
    Guarded([&] { result = entry->handler(FromHwnd(window), message, wParam, lParam); });
    return result;
}

// The frame asks this before it closes: the same questions as Exit. The end of the session may ask while the
// person still answers another question: a second round would destroy the document that the first one holds.
// With no document left it is Exit itself that closes.
bool MayClose() {
    if (TheAppState().bufferCount > 0 && MustWait()) return false;
    bool closed = false;
    BeginBusy();
    Guarded([&] { closed = CloseAllBuffers(true) != 0; });
    EndBusy();
    return closed;
}

// The same road as a path from another instance, so that a drop waits like one.
void OpenDropped(const wchar_t* path) {
    SendMessageW(ToHwnd(TheAppState().mainWindow), kMessageOpenFile, 0, reinterpret_cast<LPARAM>(path));
}

// The class has no icon, as it needs none on a handheld; a desktop shows one in the frame and on its task
// bar.
void GiveFrameIcon(HWND window) {
    const auto icon = [](int width, int height) {
        return reinterpret_cast<LPARAM>(LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDI_NIRA),
                                                   IMAGE_ICON, GetSystemMetrics(width),
                                                   GetSystemMetrics(height), LR_DEFAULTCOLOR));
    };
    SendMessageW(window, WM_SETICON, ICON_BIG, icon(SM_CXICON, SM_CYICON));
    SendMessageW(window, WM_SETICON, ICON_SMALL, icon(SM_CXSMICON, SM_CYSMICON));
}

}  // namespace

MessageTable MainWindowTable() { return {kMessages, sizeof(kMessages) / sizeof(kMessages[0])}; }

bool RegisterMainWindowClass() {
    WNDCLASSW description = {};
    description.style = CS_HREDRAW | CS_VREDRAW;
    description.lpfnWndProc = MainWndProc;
    description.hInstance = GetModuleHandleW(nullptr);
    description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    description.hbrBackground = GetSysColorBrush(COLOR_3DFACE);
    description.lpszClassName = kMainClass;
    return RegisterClassW(&description) != 0;
}

bool CreateMainWindow() {
    shell::FrameEvents events = {};
    events.mayClose = MayClose;
    events.fileDropped = OpenDropped;
    creationError = 0;
    const HWND window =
        shell::CreateMainFrame(0, kMainClass, L"NIRA", WS_VISIBLE, CW_USEDEFAULT, CW_USEDEFAULT,
                               CW_USEDEFAULT, CW_USEDEFAULT, GetModuleHandleW(nullptr), events);
    TheAppState().mainWindow = FromHwnd(window);
    SetMemoryBoxOwner(FromHwnd(window));
    SetNoticeOwner(FromHwnd(window));
    if (window != nullptr) GiveFrameIcon(window);
    if (creationError != 0) SetLastError(creationError);
    return window != nullptr;
}

void DestroyMainWindow() {
    AppState& app = TheAppState();
    if (app.menuBar != nullptr && IsWindow(ToHwnd(app.menuBar))) DestroyWindow(ToHwnd(app.menuBar));
    if (app.mainWindow != nullptr && IsWindow(ToHwnd(app.mainWindow))) DestroyWindow(ToHwnd(app.mainWindow));
    app.menuBar = nullptr;
    app.mainWindow = nullptr;
}

}  // namespace nira
