#include "shell/touch_controls.h"

#include <commctrl.h>

namespace shell {

namespace {

// Leaves the field in sight on a small screen; the rest of a longer list scrolls.
constexpr WPARAM kShownRows = 8;

}  // namespace

void EnlargeComboBox(HWND combo, int height) {
    RECT place = {};
    GetWindowRect(combo, &place);
    const auto text = static_cast<int>(SendMessageW(combo, CB_GETITEMHEIGHT, static_cast<WPARAM>(-1), 0));
    const int frame = static_cast<int>(place.bottom - place.top) - text;
    const int field = height - frame > text ? height - frame : text;
    SendMessageW(combo, CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), field);
    SendMessageW(combo, CB_SETITEMHEIGHT, 0, height);
    SendMessageW(combo, CB_SETMINVISIBLE, kShownRows, 0);
    // Wine hears of a height for the rows only when the list itself is told.
    COMBOBOXINFO parts = {};
    parts.cbSize = sizeof(parts);
    if (GetComboBoxInfo(combo, &parts)) SendMessageW(parts.hwndList, LB_SETITEMHEIGHT, 0, height);
}

}  // namespace shell
