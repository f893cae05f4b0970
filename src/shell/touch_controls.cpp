#include "shell/touch_controls.h"

namespace shell {

void EnlargeComboBox(HWND combo, int height) {
    RECT place = {};
    GetWindowRect(combo, &place);
    const auto text = static_cast<int>(SendMessageW(combo, CB_GETITEMHEIGHT, static_cast<WPARAM>(-1), 0));
    const int frame = static_cast<int>(place.bottom - place.top) - text;
    const int field = height - frame > text ? height - frame : text;
    SendMessageW(combo, CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), field);
    SendMessageW(combo, CB_SETITEMHEIGHT, 0, height);
}

}  // namespace shell
