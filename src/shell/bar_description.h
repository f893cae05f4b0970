#pragma once

#include <windows.h>

#include <cstddef>

// Reading the description of a menu bar (its layout stands in menu_bar.h).
namespace shell {

struct BarButton {
    int image;       // number among the bar's images, negative for none
    UINT command;    // sent to the owner
    bool enabled;    // at first
    bool dropDown;   // opens a pop-up
    bool separator;  // a gap; nothing else counts then
    UINT label;      // string, 0: none
    UINT tooltip;    // string, 0: none
    int popup;       // position of the pop-up in the menu, -1: none
};

// A description checked for completeness. It refers to the caller's bytes.
struct BarDescription {
    int menuId;  // -1: none
    int buttonCount;
    const unsigned char* records;
};

// False with ERROR_INVALID_DATA when the bytes end before the last button they promise.
bool ReadBarDescription(const void* bytes, size_t byteCount, BarDescription* description);

// The button at `index` (0 .. buttonCount - 1).
BarButton DescribedButton(const BarDescription& description, int index);

}  // namespace shell
