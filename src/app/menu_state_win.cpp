#include "app/buffer_list.h"
#include "app/menu_state.h"
#include "app/services/notices.h"
#include "engine/window_state.h"
#include "platform/menus.h"
#include "platform/win32/casts.h"
#include "resources/resource.h"
#include "settings/options.h"

namespace nira {

namespace {

void Enable(HMENU menu, UINT id, bool enabled) {
    EnableMenuItem(menu, id, static_cast<UINT>(MF_BYCOMMAND | (enabled ? MF_ENABLED : MF_GRAYED)));
}

void Check(HMENU menu, UINT id, bool checked) {
    CheckMenuItem(menu, id, static_cast<UINT>(MF_BYCOMMAND | (checked ? MF_CHECKED : MF_UNCHECKED)));
}

void SetText(HMENU menu, UINT id, const char16_t* text) {
    MENUITEMINFOW info = {};
    info.cbSize = sizeof(info);
    info.fMask = MIIM_STRING;
    info.dwTypeData = const_cast<wchar_t*>(ToWide(text));
    SetMenuItemInfoW(menu, id, FALSE, &info);
}

void PrepareEdit(MenuHandle popup) {
    const bool clipboardHasText = IsClipboardFormatAvailable(CF_UNICODETEXT) != FALSE;
    const EditMenuState state =
        DecideEditMenu(TheWindowState().currentEditor, TheOptions().pasteMode, clipboardHasText);
    const HMENU menu = ToHmenu(popup);
    SetText(menu, CMD_PASTE_OTHER, LoadResString(state.otherPasteText));
    Enable(menu, CMD_PASTE, state.canPaste);
    Enable(menu, CMD_PASTE_OTHER, state.canPaste);
    Enable(menu, CMD_CUT, state.hasSelection);
    Enable(menu, CMD_COPY, state.hasSelection);
    Enable(menu, CMD_CLEAR, state.hasSelection);
    Enable(menu, CMD_UNDO, state.canUndo);
    Enable(menu, CMD_REDO, state.canRedo);
}

void PrepareBuffers(MenuHandle popup) {
    const Editor* shown = TheWindowState().currentEditor;
    Check(ToHmenu(popup), CMD_TOGGLE_WRAP, shown != nullptr && shown->wordWrap != 0);
    UpdateBufferMenuTexts();
}

void PrepareNavigate(MenuHandle popup) {
    const Editor* shown = TheWindowState().currentEditor;
    for (UINT i = 0; i < CMD_BOOKMARK_COUNT; ++i) {
        const bool set = IsBookmarkSet(shown, static_cast<int>(i));
        Enable(ToHmenu(popup), CMD_GO_TO_BOOKMARK_FIRST + i, set);
        Check(ToHmenu(popup), CMD_SET_BOOKMARK_FIRST + i, set);
    }
}

}  // namespace

void PreparePopup(MenuHandle menu, uint32_t command) {
    switch (command) {
        case BARPOPUP_EDIT:
            return PrepareEdit(menu);
        case BARPOPUP_WINDOWS:
            return PrepareBuffers(menu);
        case BARPOPUP_NAVIGATE:
            return PrepareNavigate(menu);
        default:
            return;
    }
}

}  // namespace nira
