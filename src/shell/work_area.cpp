#include "shell/work_area.h"

namespace shell {

RECT WorkAreaOf(HWND window) {
    MONITORINFO screen = {};
    screen.cbSize = sizeof(screen);
    const HMONITOR monitor =
        MonitorFromWindow(window, window ? MONITOR_DEFAULTTONEAREST : MONITOR_DEFAULTTOPRIMARY);
    if (!GetMonitorInfoW(monitor, &screen)) {
        SystemParametersInfoW(SPI_GETWORKAREA, 0, &screen.rcWork, 0);
    }
    return screen.rcWork;
}

}  // namespace shell
