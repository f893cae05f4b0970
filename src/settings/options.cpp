#include "settings/options.h"

#include <limits>

namespace nira {

Options& TheOptions() {
    static Options options;
    return options;
}

TextStyle* OptionsTextStyle() { return &TheOptions().text; }

TextStyle* OptionsSelectionStyle() { return &TheOptions().selection; }

int32_t OptionsTabSize() {
    constexpr uint32_t kMost = std::numeric_limits<int32_t>::max();
    constexpr uint32_t kGlyphTabs = std::numeric_limits<uint32_t>::max();
    const uint32_t size = TheOptions().tabSize;
    if (size == kGlyphTabs) return -1;
    return static_cast<int32_t>(size > kMost ? kMost : size);
}

int32_t OptionsUndoLimit() {
    constexpr uint32_t kMost = std::numeric_limits<int32_t>::max();
    const uint32_t kilobytes = TheOptions().undoSize;
    return static_cast<int32_t>(kilobytes > kMost / 1024 ? kMost : kilobytes * 1024);
}

const char16_t* OptionsWordSeparators() {
    const char16_t* separators = TheOptions().wordSeparators;
    return separators != nullptr ? separators : u"";
}

}  // namespace nira
