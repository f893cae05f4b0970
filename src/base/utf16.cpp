#include "base/utf16.h"

#include <bit>
#include <cstring>

namespace nira {

namespace {

// Eight units that are compared at once; the compiler's own notation for what every processor of the last
// twenty years has.
using EightUnits = char16_t __attribute__((vector_size(16)));

EightUnits EightOf(char16_t unit) { return EightUnits{} + unit; }

// The index of the first CR or LF among eight units; 8 when there is none.
size_t FindBreakInEight(const char16_t* text) {
    EightUnits units;
    std::memcpy(&units, text, sizeof(units));
    const auto breaks = (units == EightOf(kLineFeed)) | (units == EightOf(kCarriageReturn));
    uint64_t halves[2];
    std::memcpy(halves, &breaks, sizeof(halves));
    if ((halves[0] | halves[1]) == 0) return 8;
    // The lowest unit of a word is the first in memory: every system that this editor runs on is
    // little-endian.
    return static_cast<size_t>(halves[0] != 0 ? std::countr_zero(halves[0]) / 16
                                              : 4 + std::countr_zero(halves[1]) / 16);
}

}  // namespace

size_t Utf16Length(const char16_t* text) {
    size_t length = 0;
    if (text != nullptr) {
        while (text[length] != 0) ++length;
    }
    return length;
}

int Utf16Compare(const char16_t* left, const char16_t* right) {
    if (left == nullptr) left = u"";
    if (right == nullptr) right = u"";
    while (*left != 0 && *left == *right) {
        ++left;
        ++right;
    }
    return static_cast<int>(*left) - static_cast<int>(*right);
}

const char16_t* Utf16FindLast(const char16_t* text, char16_t unit) {
    const char16_t* found = nullptr;
    for (; text != nullptr && *text != 0; ++text) {
        if (*text == unit) found = text;
    }
    return found;
}

const char16_t* Utf16Find(const char16_t* text, char16_t unit) {
    for (; text != nullptr && *text != 0; ++text) {
        if (*text == unit) return text;
    }
    return nullptr;
}

size_t Utf16FindBreak(const char16_t* text, size_t from, size_t count) {
    for (; from + 8 <= count; from += 8) {
        const size_t place = FindBreakInEight(text + from);
        if (place < 8) return from + place;
    }
    while (from < count && !IsLineBreak(text[from])) ++from;
    return from;
}

size_t Utf16Copy(char16_t* target, size_t room, const char16_t* text) {
    if (room == 0) return 0;
    size_t length = 0;
    while (length + 1 < room && text != nullptr && text[length] != 0) {
        target[length] = text[length];
        ++length;
    }
    target[length] = 0;
    return length;
}

size_t Utf16FromInt(char16_t* target, size_t room, int value) {
    char16_t reversed[12];
    size_t digits = 0;
    int64_t rest = value < 0 ? -static_cast<int64_t>(value) : value;
    do {
        reversed[digits++] = static_cast<char16_t>(u'0' + rest % 10);
        rest /= 10;
    } while (rest != 0);
    if (value < 0) reversed[digits++] = u'-';
    if (room == 0) return 0;
    size_t written = 0;
    while (digits > 0 && written + 1 < room) target[written++] = reversed[--digits];
    target[written] = 0;
    return written;
}

}  // namespace nira
