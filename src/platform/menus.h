// The few menu operations that the lists of open documents and recent files need. A null menu is ignored.
#pragma once

#include <cstdint>

#include "platform/handles.h"

namespace nira {

// The pop-up that the drop-down button `command` of a menu bar opens; null when there is none.
MenuHandle BarPopup(WindowHandle bar, uint32_t command);

// Enables or disables the bar's button `command`.
void BarEnableButton(WindowHandle bar, uint32_t command, bool enabled);

// False when the menu could not take it. True for a null menu, where nothing is missing.
bool MenuAppendItem(MenuHandle menu, uint32_t id, const char16_t* text);
// An item that can be seen and not chosen.
void MenuAppendGrayed(MenuHandle menu, const char16_t* text);

// Items by position, counted from 0. The system looks an identifier up by walking through the whole menu,
// which would make every walk over thousands of documents quadratic. A position without an item is ignored.
uint32_t MenuItemCount(MenuHandle menu);
// False when there is no such item.
bool MenuDeletePosition(MenuHandle menu, uint32_t position);
// Only the text; marks and identifier stay.
void MenuSetTextAt(MenuHandle menu, uint32_t position, const char16_t* text);
void MenuSetIdAt(MenuHandle menu, uint32_t position, uint32_t id);
// Moves the radio mark among the items first..last to `checked`.
void MenuCheckRadioAt(MenuHandle menu, uint32_t first, uint32_t last, uint32_t checked);

}  // namespace nira
