#include "codecs/system.h"

#include <windows.h>

#include "codecs/registration.h"

namespace codecs {

namespace {

constexpr uint32_t kGb18030 = 54936;
constexpr uint32_t kEucJp = 51932;
constexpr uint32_t kEucKr = 51949;
constexpr uint32_t kLongestName = 16384;  // units, terminator included: the most that the registry has

// The system knows these pages' lead bytes only from inside their conversion.
bool IsEucLead(uint8_t byte) { return (byte >= 0xA1 && byte != 0xFF) || byte == 0x8E || byte == 0x8F; }

}  // namespace

bool PageIsValid(uint32_t page) { return IsValidCodePage(page) != 0; }

uint32_t AnsiPage() { return GetACP(); }

bool PageIsLead(uint32_t page, uint8_t byte) {
    if (page == kGb18030) return byte >= 0x81 && byte != 0xFF;
    if (page == kEucJp || page == kEucKr) return IsEucLead(byte);
    return IsDBCSLeadByteEx(page, byte) != 0;
}

uint32_t PageToUnits(uint32_t page, const uint8_t* source, uint32_t size, char16_t* target, uint32_t room) {
    const int units = MultiByteToWideChar(page, MB_ERR_INVALID_CHARS, reinterpret_cast<const char*>(source),
                                          static_cast<int>(size), reinterpret_cast<wchar_t*>(target),
                                          static_cast<int>(room));
    return static_cast<uint32_t>(units);
}

uint32_t PageFromUnits(uint32_t page, const char16_t* source, uint32_t units, uint8_t* target,
                       uint32_t room) {
    const int bytes =
        WideCharToMultiByte(page, 0, reinterpret_cast<const wchar_t*>(source), static_cast<int>(units),
                            reinterpret_cast<char*>(target), static_cast<int>(room), nullptr, nullptr);
    return static_cast<uint32_t>(bytes);
}

void ForEachRegisteredName(void (*each)(void* context, const char16_t* name), void* context) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, kEncodingsKey, 0, KEY_QUERY_VALUE, &key) != ERROR_SUCCESS) return;
    auto* name = static_cast<wchar_t*>(HeapAlloc(GetProcessHeap(), 0, kLongestName * sizeof(wchar_t)));
    for (DWORD i = 0; name != nullptr; ++i) {
        DWORD length = kLongestName;
        if (RegEnumValueW(key, i, name, &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) break;
        each(context, reinterpret_cast<const char16_t*>(name));
    }
    HeapFree(GetProcessHeap(), 0, name);
    RegCloseKey(key);
}

}  // namespace codecs
