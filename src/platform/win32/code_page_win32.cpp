#include "platform/code_page.h"

#include <climits>

#include "platform/win32/casts.h"

namespace nira {

bool AnsiIsLeadByte(uint8_t byte) { return IsDBCSLeadByte(byte) != 0; }

// The system takes a room of 0 as the question for the size needed, whatever the target is.
uint32_t AnsiToUtf16(const uint8_t* source, uint32_t size, char16_t* target, uint32_t room) {
    if (size == 0 || size > INT_MAX || room > INT_MAX || (target != nullptr && room == 0)) return 0;
    const int units =
        MultiByteToWideChar(CP_ACP, 0, reinterpret_cast<const char*>(source), static_cast<int>(size),
                            ToWide(target), target != nullptr ? static_cast<int>(room) : 0);
    return static_cast<uint32_t>(units);
}

uint32_t AnsiFromUtf16(const char16_t* source, uint32_t units, uint8_t* target, uint32_t room) {
    if (units == 0 || units > INT_MAX || room > INT_MAX || (target != nullptr && room == 0)) return 0;
    const int size = WideCharToMultiByte(CP_ACP, 0, ToWide(source), static_cast<int>(units),
                                         reinterpret_cast<char*>(target),
                                         target != nullptr ? static_cast<int>(room) : 0, nullptr, nullptr);
    return static_cast<uint32_t>(size);
}

}  // namespace nira
