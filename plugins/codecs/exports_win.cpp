// What nira-codecs.dll exports: GetEncoder for NIRA, and for its set-up
//
//     rundll32 nira-codecs.dll,Register
//     rundll32 nira-codecs.dll,Unregister
//
// which enter the library's encodings in NIRA's list with the full path of the library as it was loaded, and
// take them out again. rundll32 itself finds the forms with W.
#include <windows.h>

#include "codecs/library.h"
#include "codecs/registration.h"

namespace {

constexpr DWORD kLongestPath = 32768;

// The path of the file that this code was loaded from, then `work` with it. Returns its result.
DWORD WithOwnPath(uint32_t (*work)(const wchar_t* library)) {
    HMODULE self = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<const wchar_t*>(WithOwnPath), &self);
    auto* path = static_cast<wchar_t*>(HeapAlloc(GetProcessHeap(), 0, kLongestPath * sizeof(wchar_t)));
    DWORD result = 0;
    if (path != nullptr) {
        const DWORD length = GetModuleFileNameW(self, path, kLongestPath);
        if (length > 0 && length < kLongestPath) result = work(path);
    }
    HeapFree(GetProcessHeap(), 0, path);
    return result;
}

}  // namespace

extern "C" {

__declspec(dllexport) uint32_t GetEncoder(const char16_t* name, NiraCodec* codec) {
    return codecs::FillCodec(name, codec) ? 1 : 0;
}

__declspec(dllexport) void CALLBACK RegisterW(HWND, HINSTANCE, wchar_t*, int) {
    WithOwnPath(codecs::RegisterEncodings);
}

__declspec(dllexport) void CALLBACK UnregisterW(HWND, HINSTANCE, wchar_t*, int) {
    WithOwnPath(codecs::UnregisterEncodings);
}
}
