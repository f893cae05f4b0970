#include "platform/menus.h"

#include <map>

#include "platform/host/faults.h"
#include "platform/host/menu_state.h"

namespace nira {

namespace {

using Button = std::pair<WindowHandle, uint32_t>;

std::map<Button, MenuHandle> popups;
std::map<Button, bool> enabledButtons;

MenuItem* ItemAt(MenuHandle menu, uint32_t position) {
    if (menu == nullptr || position >= menu->items.size()) return nullptr;
    ++menu->itemsTouched;
    return &menu->items[position];
}

}  // namespace

MenuHandle BarPopup(WindowHandle bar, uint32_t command) {
    const auto found = popups.find({bar, command});
    return found != popups.end() ? found->second : nullptr;
}

void BarEnableButton(WindowHandle bar, uint32_t command, bool enabled) {
    if (bar != nullptr) enabledButtons[{bar, command}] = enabled;
}

bool MenuAppendItem(MenuHandle menu, uint32_t id, const char16_t* text) {
    if (menu == nullptr) return true;
    if (FaultStrikes(FaultPoint::kMenuAppend)) return false;
    menu->items.push_back({id, text != nullptr ? text : u"", false});
    ++menu->itemsTouched;
    return true;
}

void MenuAppendGrayed(MenuHandle menu, const char16_t* text) {
    if (menu != nullptr) menu->items.push_back({0, text != nullptr ? text : u"", false, true});
}

uint32_t MenuItemCount(MenuHandle menu) {
    return menu != nullptr ? static_cast<uint32_t>(menu->items.size()) : 0;
}

bool MenuDeletePosition(MenuHandle menu, uint32_t position) {
    if (ItemAt(menu, position) == nullptr) return false;
    menu->items.erase(menu->items.begin() + position);
    return true;
}

void MenuSetTextAt(MenuHandle menu, uint32_t position, const char16_t* text) {
    MenuItem* item = ItemAt(menu, position);
    if (item != nullptr) item->text = text != nullptr ? text : u"";
}

void MenuSetIdAt(MenuHandle menu, uint32_t position, uint32_t id) {
    MenuItem* item = ItemAt(menu, position);
    if (item != nullptr) item->id = id;
}

void MenuCheckRadioAt(MenuHandle menu, uint32_t first, uint32_t last, uint32_t checked) {
    for (uint32_t i = first; i <= last; ++i) {
        MenuItem* item = ItemAt(menu, i);
        if (item == nullptr) return;
        item->marked = i == checked;
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
