// What the host's menus are: records of their items, made and read by tests.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/menus.h"

namespace nira {

struct MenuItem {
    uint32_t id;
    std::u16string text;
    bool marked;  // has the radio mark
    bool grayed = false;
};

struct MenuTag {
    std::vector<MenuItem> items;
    // Items looked at or changed so far: what a menu of the system would have had to do.
    uint64_t itemsTouched = 0;
};

// Makes BarPopup(bar, command) find `popup`.
void HostBarSetPopup(WindowHandle bar, uint32_t command, MenuHandle popup);

// Whether the button is enabled; it is until it is disabled.
bool HostBarButtonEnabled(WindowHandle bar, uint32_t command);

// Forgets every bar.
void HostBarsReset();

}  // namespace nira
