#include "base/utf16.h"

namespace nira {

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
