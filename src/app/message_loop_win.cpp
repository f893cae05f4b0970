#include "app/app_state.h"
#include "app/message_loop.h"
#include "app/services/resources.h"
#include "platform/win32/casts.h"
#include "resources/resource.h"
#include "shell/desktop_keys.h"

namespace nira {

int RunMessageLoop() {
    const auto keys = reinterpret_cast<HACCEL>(LoadKeyTable(IDR_ACCELERATORS));
    MSG message = {};
    // -1 is an error of the call itself; leaving is better than spinning.
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (TranslateAcceleratorW(ToHwnd(TheAppState().mainWindow), keys, &message)) continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return static_cast<int>(message.wParam);
}

}  // namespace nira
