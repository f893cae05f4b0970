// The system's ANSI code page.
#pragma once

#include <cstdint>

namespace nira {

// Whether this byte alone begins a two-byte character of the ANSI code page.
bool AnsiIsLeadByte(uint8_t byte);

// Converts `size` bytes. With null `target` the result is the number of units needed; otherwise the units
// written into `target` of `room` units. 0 when `size` is 0 or the conversion fails.
uint32_t AnsiToUtf16(const uint8_t* source, uint32_t size, char16_t* target, uint32_t room);

// The way back: units to bytes, with the system's own default for what the page has not. Same conventions.
uint32_t AnsiFromUtf16(const char16_t* source, uint32_t units, uint8_t* target, uint32_t room);

}  // namespace nira
