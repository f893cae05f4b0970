#include "platform/strings.h"

#include "platform/win32/casts.h"

namespace nira {

const char16_t* PlatformString(uint32_t id) {
    const wchar_t* text = nullptr;
    const int length = LoadStringW(GetModuleHandleW(nullptr), id, reinterpret_cast<wchar_t*>(&text), 0);
    // An entry missing between others is found with length 0, and what is found there is the next entry.
    return length > 0 ? FromWide(text) : u"";
}

}  // namespace nira
