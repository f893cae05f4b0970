#include "platform/menus.h"

#include "platform/win32/casts.h"
// After casts.h, which brings windows.h.
#include <commctrl.h>

#include "shell/menu_bar.h"

namespace nira {

MenuHandle BarPopup(WindowHandle bar, uint32_t command) {
    if (bar == nullptr) return nullptr;
    const LRESULT popup = SendMessageW(ToHwnd(bar), shell::kGetSubMenu, 0, static_cast<LPARAM>(command));
    return FromHmenu(reinterpret_cast<HMENU>(popup));
}

void BarEnableButton(WindowHandle bar, uint32_t command, bool enabled) {
    if (bar != nullptr) SendMessageW(ToHwnd(bar), TB_ENABLEBUTTON, command, MAKELPARAM(enabled, 0));
}

void MenuAppendItem(MenuHandle menu, uint32_t id, const char16_t* text) {
    if (menu != nullptr) AppendMenuW(ToHmenu(menu), MF_STRING, id, ToWide(text));
}

void MenuAppendGrayed(MenuHandle menu, const char16_t* text) {
    if (menu != nullptr) AppendMenuW(ToHmenu(menu), MF_STRING | MF_GRAYED, 0, ToWide(text));
}

void MenuDeleteItem(MenuHandle menu, uint32_t id) {
    if (menu != nullptr) DeleteMenu(ToHmenu(menu), id, MF_BYCOMMAND);
}

bool MenuDeletePosition(MenuHandle menu, uint32_t position) {
    return menu != nullptr && DeleteMenu(ToHmenu(menu), position, MF_BYPOSITION) != 0;
}

// Only the text: ModifyMenu would drop the item's marks.
void MenuSetItemText(MenuHandle menu, uint32_t id, const char16_t* text) {
    if (menu == nullptr) return;
    MENUITEMINFOW info = {};
    info.cbSize = sizeof(info);
    info.fMask = MIIM_STRING;
    info.dwTypeData = const_cast<wchar_t*>(ToWide(text));
    SetMenuItemInfoW(ToHmenu(menu), id, FALSE, &info);
}

void MenuSetItemId(MenuHandle menu, uint32_t id, uint32_t newId) {
    if (menu == nullptr) return;
    MENUITEMINFOW info = {};
    info.cbSize = sizeof(info);
    info.fMask = MIIM_ID;
    info.wID = newId;
    SetMenuItemInfoW(ToHmenu(menu), id, FALSE, &info);
}

void MenuCheckRadioItem(MenuHandle menu, uint32_t first, uint32_t last, uint32_t checked) {
    if (menu != nullptr) CheckMenuRadioItem(ToHmenu(menu), first, last, checked, MF_BYCOMMAND);
}

}  // namespace nira
