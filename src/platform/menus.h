// The few menu operations that the lists of open documents and recent files need. A null menu is ignored.
#pragma once

#include <cstdint>

#include "platform/handles.h"

namespace nira {

// The pop-up that the drop-down button `command` of a menu bar opens; null when there is none.
MenuHandle BarPopup(WindowHandle bar, uint32_t command);

// Enables or disables the bar's button `command`.
void BarEnableButton(WindowHandle bar, uint32_t command, bool enabled);

void MenuAppendItem(MenuHandle menu, uint32_t id, const char16_t* text);
// An item that can be seen and not chosen.
void MenuAppendGrayed(MenuHandle menu, const char16_t* text);
void MenuDeleteItem(MenuHandle menu, uint32_t id);
// False when there is no item at this position (from 0).
bool MenuDeletePosition(MenuHandle menu, uint32_t position);
void MenuSetItemText(MenuHandle menu, uint32_t id, const char16_t* text);

// Gives the item `id` another identifier, keeping its text and marks.
void MenuSetItemId(MenuHandle menu, uint32_t id, uint32_t newId);

// Moves the radio mark among first..last to `checked`.
void MenuCheckRadioItem(MenuHandle menu, uint32_t first, uint32_t last, uint32_t checked);

}  // namespace nira
