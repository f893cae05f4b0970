#include "app/services/memory.h"
#include "app/services/notices.h"
#include "app/services/resources.h"
#include "platform/win32/casts.h"
#include "shell/menu_bar.h"

namespace nira {

namespace {

struct DialogCall {
    DialogHandler handler;
    intptr_t parameter;
};

HINSTANCE Instance() { return GetModuleHandleW(nullptr); }

INT_PTR CALLBACK DialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) SetWindowLongPtrW(dialog, DWLP_USER, lParam);
    const auto* call = reinterpret_cast<const DialogCall*>(GetWindowLongPtrW(dialog, DWLP_USER));
    if (call == nullptr) return FALSE;  // a few messages arrive before the initialising one
    const LPARAM second = message == WM_INITDIALOG ? call->parameter : lParam;
    INT_PTR result = FALSE;
    Guarded([&] { result = call->handler(FromHwnd(dialog), message, wParam, second); });
    return result;
}

INT_PTR ShowDialog(uint32_t id, HWND owner, const DialogCall& call) {
    const HRSRC resource = FindResourceW(Instance(), MAKEINTRESOURCEW(id), RT_DIALOG);
    if (resource == nullptr) return -1;
    const HGLOBAL block = LoadResource(Instance(), resource);
    if (block == nullptr) return -1;
    const auto* dialog = static_cast<const DLGTEMPLATE*>(LockResource(block));
    return DialogBoxIndirectParamW(Instance(), dialog, owner, DialogProc, reinterpret_cast<LPARAM>(&call));
}

}  // namespace

intptr_t RunDialog(uint32_t id, WindowHandle owner, DialogHandler handler, intptr_t parameter) {
    const DialogCall call = {handler, parameter};
    const intptr_t result = ShowDialog(id, ToHwnd(owner), call);
    if (result == -1) ReportLastError();
    return result;
}

WindowHandle CreateMenuBar(WindowHandle owner, uint32_t id) {
    shell::MenuBarInfo info = {};
    info.size = shell::kMenuBarInfoSize;
    info.owner = ToHwnd(owner);
    info.resourceId = id;
    info.instance = Instance();
    if (!shell::SHCreateMenuBar(&info)) {
        const DWORD reason = GetLastError();
        ReportLastError();
        SetLastError(reason);
        return nullptr;
    }
    return FromHwnd(info.bar);
}

AcceleratorHandle LoadKeyTable(uint32_t id) {
    return reinterpret_cast<AcceleratorHandle>(LoadAcceleratorsW(Instance(), MAKEINTRESOURCEW(id)));
}

}  // namespace nira
