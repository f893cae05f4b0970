#include "shell/density.h"

#include <windows.h>

namespace shell {

int ScreenDensity() {
    const HDC screen = GetDC(nullptr);
    const int density = screen ? GetDeviceCaps(screen, LOGPIXELSX) : kPlainDensity;
    if (screen) {
        ReleaseDC(nullptr, screen);
    }
    return density > 0 ? density : kPlainDensity;
}

int ScaledToScreen(int length) { return MulDiv(length, ScreenDensity(), kPlainDensity); }

}  // namespace shell
