#include "settings/go_to_dialog.h"

#include <algorithm>

#include "base/utf16.h"

namespace nira {

uint32_t ReadLineNumber(const char16_t* text) {
    while (*text == kSpace || *text == kTab) ++text;
    uint64_t number = 0;
    for (; *text >= u'0' && *text <= u'9'; ++text) {
        number = std::min<uint64_t>(number * 10 + static_cast<uint64_t>(*text - u'0'), INT32_MAX);
    }
    return static_cast<uint32_t>(number);
}

void LineRangeText(char16_t* target, size_t room, int32_t lineCount) {
    char16_t count[12];
    Utf16FromInt(count, sizeof(count) / sizeof(count[0]), lineCount);
    size_t length = 0;
    for (const char16_t* piece : {u"(1-", static_cast<const char16_t*>(count), u")"}) {
        length += Utf16Copy(target + length, room - length, piece);
    }
}

}  // namespace nira
