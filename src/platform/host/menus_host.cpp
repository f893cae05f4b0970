#include "platform/menus.h"

#include <algorithm>
#include <map>

#include "platform/host/menu_state.h"

namespace nira {

namespace {

using Button = std::pair<WindowHandle, uint32_t>;

std::map<Button, MenuHandle> popups;
std::map<Button, bool> enabledButtons;

MenuItem* FindItem(MenuHandle menu, uint32_t id) {
    if (menu == nullptr) return nullptr;
    const auto found = std::find_if(menu->items.begin(), menu->items.end(),
                                    [id](const MenuItem& item) { return item.id == id; });
    return found != menu->items.end() ? &*found : nullptr;
}

}  // namespace

MenuHandle BarPopup(WindowHandle bar, uint32_t command) {
    const auto found = popups.find({bar, command});
    return found != popups.end() ? found->second : nullptr;
}

void BarEnableButton(WindowHandle bar, uint32_t command, bool enabled) {
    if (bar != nullptr) enabledButtons[{bar, command}] = enabled;
}

void MenuAppendItem(MenuHandle menu, uint32_t id, const char16_t* text) {
    if (menu != nullptr) menu->items.push_back({id, text != nullptr ? text : u"", false});
}

void MenuAppendGrayed(MenuHandle menu, const char16_t* text) {
    if (menu != nullptr) menu->items.push_back({0, text != nullptr ? text : u"", false, true});
}

void MenuDeleteItem(MenuHandle menu, uint32_t id) {
    const MenuItem* item = FindItem(menu, id);
    if (item != nullptr) menu->items.erase(menu->items.begin() + (item - menu->items.data()));
}

bool MenuDeletePosition(MenuHandle menu, uint32_t position) {
    if (menu == nullptr || position >= menu->items.size()) return false;
    menu->items.erase(menu->items.begin() + position);
    return true;
}

void MenuSetItemText(MenuHandle menu, uint32_t id, const char16_t* text) {
    MenuItem* item = FindItem(menu, id);
    if (item != nullptr) item->text = text != nullptr ? text : u"";
}

void MenuSetItemId(MenuHandle menu, uint32_t id, uint32_t newId) {
    MenuItem* item = FindItem(menu, id);
    if (item != nullptr) item->id = newId;
}

void MenuCheckRadioItem(MenuHandle menu, uint32_t first, uint32_t last, uint32_t checked) {
    if (menu == nullptr) return;
    for (MenuItem& item : menu->items) {
        if (item.id >= first && item.id <= last) item.marked = item.id == checked;
    }
}

void HostBarSetPopup(WindowHandle bar, uint32_t command, MenuHandle popup) { popups[{bar, command}] = popup; }

bool HostBarButtonEnabled(WindowHandle bar, uint32_t command) {
    const auto found = enabledButtons.find({bar, command});
    return found == enabledButtons.end() || found->second;
}

void HostBarsReset() {
    popups.clear();
    enabledButtons.clear();
}

}  // namespace nira
