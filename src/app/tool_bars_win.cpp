#include <windows.h>

#include <commctrl.h>

#include "app/app_state.h"
#include "app/menu_state.h"
#include "app/services/resources.h"
#include "app/tool_bars.h"
#include "engine/window_state.h"
#include "platform/menus.h"
#include "platform/win32/casts.h"
#include "resources/resource.h"
#include "shell/menu_bar.h"

namespace nira {

namespace {

constexpr int kStandardImages = 15;

WindowHandle& BarHandle(ToolBar kind) {
    AppState& app = TheAppState();
    switch (kind) {
        case ToolBar::kUndo:
            return app.undoBar;
        case ToolBar::kNavigate:
            return app.navigateBar;
        case ToolBar::kIndent:
            return app.indentBar;
        default:
            return app.findBar;
    }
}

uint32_t BarResource(ToolBar kind) {
    switch (kind) {
        case ToolBar::kFind:
            return IDR_BAR_FIND_NEXT;
        case ToolBar::kReplace:
            return IDR_BAR_REPLACE_NEXT;
        case ToolBar::kUndo:
            return IDR_BAR_UNDO;
        case ToolBar::kNavigate:
            return IDR_BAR_NAVIGATE;
        default:
            return IDR_BAR_INDENT;
    }
}

// The one pop-up with the list of documents serves every bar.
void LendBuffersPopup(WindowHandle bar) {
    const HMENU popup = ToHmenu(BarPopup(TheAppState().menuBar, BARPOPUP_WINDOWS));
    SendMessageW(ToHwnd(bar), shell::kSetSubMenu, BARPOPUP_WINDOWS, reinterpret_cast<LPARAM>(popup));
}

}  // namespace

void ShowToolBar(ToolBar kind) {
    WindowHandle& bar = BarHandle(kind);
    if (bar != nullptr) return;
    bar = CreateMenuBar(TheAppState().mainWindow, BarResource(kind));
    if (bar == nullptr) return;
    LendBuffersPopup(bar);
    AddBarImages(bar, kind != ToolBar::kNavigate && kind != ToolBar::kIndent);
    if (kind != ToolBar::kUndo) return;
    SetGroupUndoButton(TheAppState().groupUndo != 0);
    UpdateUndoButtons(TheWindowState().currentEditor);
}

void CloseToolBar(ToolBar kind) {
    WindowHandle& bar = BarHandle(kind);
    if (bar != nullptr && IsWindow(ToHwnd(bar))) DestroyWindow(ToHwnd(bar));
    bar = nullptr;
}

void SetGroupUndoButton(bool on) {
    const WindowHandle bar = TheAppState().undoBar;
    if (bar != nullptr) SendMessageW(ToHwnd(bar), TB_PRESSBUTTON, CMD_GROUP_UNDO, MAKELPARAM(on, 0));
}

void AddBarImages(WindowHandle bar, bool withStandardImages) {
    shell::AddBarBitmap(ToHwnd(bar), GetModuleHandleW(nullptr), IDB_BAR, IMG_BAR_COUNT);
    if (withStandardImages) {
        shell::AddBarBitmap(ToHwnd(bar), HINST_COMMCTRL, IDB_STD_SMALL_COLOR, kStandardImages);
    }
}

}  // namespace nira
