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

bool MenuAppendItem(MenuHandle menu, uint32_t id, const char16_t* text) {
    return menu == nullptr || AppendMenuW(ToHmenu(menu), MF_STRING, id, ToWide(text)) != 0;
}

void MenuAppendGrayed(MenuHandle menu, const char16_t* text) {
    if (menu != nullptr) AppendMenuW(ToHmenu(menu), MF_STRING | MF_GRAYED, 0, ToWide(text));
}

uint32_t MenuItemCount(MenuHandle menu) {
    const int count = menu != nullptr ? GetMenuItemCount(ToHmenu(menu)) : 0;
    return count > 0 ? static_cast<uint32_t>(count) : 0;
}

bool MenuDeletePosition(MenuHandle menu, uint32_t position) {
    return menu != nullptr && DeleteMenu(ToHmenu(menu), position, MF_BYPOSITION) != 0;
}

// ModifyMenu would drop the item's marks.
void MenuSetTextAt(MenuHandle menu, uint32_t position, const char16_t* text) {
    if (menu == nullptr) return;
    MENUITEMINFOW info = {};
    info.cbSize = sizeof(info);
    info.fMask = MIIM_STRING;
    info.dwTypeData = const_cast<wchar_t*>(ToWide(text));
    SetMenuItemInfoW(ToHmenu(menu), position, TRUE, &info);
}

void MenuSetIdAt(MenuHandle menu, uint32_t position, uint32_t id) {
    if (menu == nullptr) return;
    MENUITEMINFOW info = {};
    info.cbSize = sizeof(info);
    info.fMask = MIIM_ID;
    info.wID = id;
    SetMenuItemInfoW(ToHmenu(menu), position, TRUE, &info);
}

void MenuCheckRadioAt(MenuHandle menu, uint32_t first, uint32_t last, uint32_t checked) {
    if (menu != nullptr) CheckMenuRadioItem(ToHmenu(menu), first, last, checked, MF_BYPOSITION);
}

}  // namespace nira
