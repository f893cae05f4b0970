#include "app/about.h"
#include "app/app_state.h"
#include "app/services/resources.h"
#include "platform/win32/casts.h"
#include "resources/resource.h"
#include "shell/full_screen.h"

namespace nira {

namespace {

intptr_t AboutHandler(WindowHandle dialog, uint32_t message, uintptr_t first, intptr_t) {
    if (message == WM_INITDIALOG) {
        shell::SHInitDialog(ToHwnd(dialog),
                            shell::kDoneButton | shell::kSizeFullScreen | shell::kInputPanelDown);
        CreateMenuBar(dialog, IDR_BAR_OK);
        return TRUE;
    }
    if (message != WM_COMMAND) return FALSE;
    const auto command = LOWORD(first);
    // Cancel is Esc and the frame's close button of a desktop.
    if (command == IDOK || command == IDCANCEL) EndDialog(ToHwnd(dialog), IDOK);
    return FALSE;
}

}  // namespace

void ShowAbout() { RunDialog(IDD_ABOUT, TheAppState().mainWindow, AboutHandler, 0); }

}  // namespace nira
