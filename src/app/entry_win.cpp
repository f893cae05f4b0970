#include "app/message_loop.h"
#include "app/services/memory.h"
#include "app/services/notices.h"
#include "app/start_up.h"
#include "platform/win32/casts.h"
#include "shell/desktop_command_line.h"
#include "shell/shell_text.h"

namespace {

constexpr int kStartFailed = 100;

int Run(HINSTANCE instance, const wchar_t* path, int showCommand) {
    using nira::StartResult;
    const StartResult result =
        nira::StartUp(reinterpret_cast<nira::InstanceHandle>(instance), nira::FromWide(path), showCommand);
    if (result == StartResult::kHandedOver) return 0;
    const int code = result == StartResult::kStarted ? nira::RunMessageLoop() : kStartFailed;
    nira::ShutDown();
    return code;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, wchar_t* commandLine, int showCommand) {
    nira::InstallOutOfMemoryPolicy();
    wchar_t* path = nullptr;
    if (!shell::CommandLinePath(commandLine, &path)) {
        nira::ReportLastError();
        return kStartFailed;
    }
    int code = kStartFailed;
    nira::Guarded([&] { code = Run(instance, path, showCommand); });
    shell::FreeShellText(path);
    return code;
}
