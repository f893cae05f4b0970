// What the library needs of the system: code pages, and the names in NIRA's list of encodings.
//
// Windows has these in system_win.cpp; the native build that the tests use has them in host/.
#pragma once

#include <cstdint>

namespace codecs {

bool PageIsValid(uint32_t page);

// The page of programs that know no Unicode; 65001 (UTF-8) on some systems.
uint32_t AnsiPage();

// Whether `byte` begins a character of two bytes or more.
bool PageIsLead(uint32_t page, uint8_t byte);

// Converts bytes that are all characters of the page; 0 when one is not, when `size` is 0, or when `room`
// units are not enough. No character makes more units than it has bytes.
uint32_t PageToUnits(uint32_t page, const uint8_t* source, uint32_t size, char16_t* target, uint32_t room);

// Converts units to bytes; what the page has not becomes what the system puts in its place. 0 when `units` is
// 0, or when `room` bytes are not enough. No unit makes more than 4 bytes.
uint32_t PageFromUnits(uint32_t page, const char16_t* source, uint32_t units, uint8_t* target, uint32_t room);

// Calls `each` with every name in NIRA's list of encodings, in any order; with none where there is no list.
void ForEachRegisteredName(void (*each)(void* context, const char16_t* name), void* context);

}  // namespace codecs
