#include "view/font_choice.h"

#include <algorithm>

#include "app/services/memory.h"
#include "base/utf16.h"
#include "view/fonts.h"

namespace nira {

namespace {

constexpr uint32_t kStandardSizes[] = {8, 9, 10, 11, 12, 14, 16, 18, 20, 22, 24, 26, 28, 36, 48, 72};
constexpr char16_t kStyles = kFontBold | kFontItalic | kFontUnderline | kFontStrikeOut | kFontClearType;

uint32_t SizeInRange(uint32_t size) {
    return std::clamp<uint32_t>(size & kFontSizeMask, 1, kLargestFontSize);
}

void AddSize(FontSizes* sizes, uint32_t size) {
    const uint32_t* begin = sizes->sizes;
    const uint32_t* end = begin + sizes->count;
    if (sizes->count == kMostFontSizes || std::find(begin, end, size) != end) return;
    if (sizes->carried >= 0 && static_cast<uint32_t>(sizes->carried) == size) {
        sizes->selected = static_cast<int32_t>(sizes->count);
        sizes->carried = -1;
    }
    sizes->sizes[sizes->count++] = size;
}

}  // namespace

FontChoice ReadFontChoice(const char16_t* description) {
    FontChoice choice = {};
    const size_t length = Utf16Length(description);
    const char16_t attributes = length > 0 ? description[length - 1] : char16_t{0};
    const size_t faceUnits = length > 0 ? std::min<size_t>(length - 1, kFaceUnits) : 0;
    Utf16Copy(choice.face, faceUnits + 1, description);
    choice.size = std::min<uint32_t>(attributes & kFontSizeMask, kLargestFontSize);
    choice.styles = attributes & kStyles;
    return choice;
}

char16_t* WriteFontChoice(const FontChoice& choice) {
    const size_t faceUnits = Utf16Length(choice.face);
    char16_t* description = MemAllocArray<char16_t>(nullptr, faceUnits + 2);
    Utf16Copy(description, faceUnits + 1, choice.face);
    description[faceUnits] = static_cast<char16_t>(SizeInRange(choice.size) | (choice.styles & kStyles));
    description[faceUnits + 1] = 0;
    return description;
}

uint32_t ReadFontSize(const char16_t* text) {
    while (*text == kSpace || *text == kTab) ++text;
    uint32_t size = 0;
    for (; *text >= u'0' && *text <= u'9'; ++text) size = size * 10 + static_cast<uint32_t>(*text - u'0');
    return size;
}

void StartFontSizes(FontSizes* sizes, int32_t carried) {
    *sizes = {};
    sizes->carried = carried;
    sizes->selected = -1;
}

bool AddFontSizes(FontSizes* sizes, bool outline, int32_t characterHeight, int32_t scale) {
    if (outline) {
        for (const uint32_t size : kStandardSizes) AddSize(sizes, size);
        return false;
    }
    AddSize(sizes, static_cast<uint32_t>(std::max(characterHeight, 0) / std::max(scale, 1)));
    return true;
}

}  // namespace nira
