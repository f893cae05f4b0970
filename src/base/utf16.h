// Small operations on UTF-16 text, counted in code units.
//
// Text comes in two shapes: zero-terminated (as the registry, file paths and the string table keep it)
// and counted (as lines keep it, because a line may hold U+0000). Nothing here allocates.
#pragma once

#include <cstddef>
#include <cstdint>

namespace nira {

constexpr char16_t kTab = u'\t';
constexpr char16_t kLineFeed = u'\n';
constexpr char16_t kCarriageReturn = u'\r';
constexpr char16_t kSpace = u' ';

// Units before the terminator. A null pointer counts as an empty text.
size_t Utf16Length(const char16_t* text);

// Ordinal comparison by unsigned code unit: negative, 0 or positive. Null counts as an empty text.
int Utf16Compare(const char16_t* left, const char16_t* right);

// The last / first unit equal to `unit`, or null when there is none.
const char16_t* Utf16FindLast(const char16_t* text, char16_t unit);
const char16_t* Utf16Find(const char16_t* text, char16_t unit);

constexpr bool IsLineBreak(char16_t unit) { return unit == kCarriageReturn || unit == kLineFeed; }

// The index of the first CR or LF among units from..count-1 of a counted text; `count` when there is none.
// Looks at eight units at once: texts of a hundred megabytes are searched for their breaks several times.
size_t Utf16FindBreak(const char16_t* text, size_t from, size_t count);

// Copies `text` and its terminator into `target` of `room` units, cutting what does not fit; always
// terminates when room > 0. Returns the units copied without the terminator.
size_t Utf16Copy(char16_t* target, size_t room, const char16_t* text);

// Writes `value` in decimal, terminated, cut to `room` units including the terminator. Returns units written
// without the terminator.
size_t Utf16FromInt(char16_t* target, size_t room, int value);

}  // namespace nira
