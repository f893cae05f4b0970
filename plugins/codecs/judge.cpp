#include "codecs/judge.h"

#include <algorithm>
#include <cstring>

#include "codecs/exact_utf8.h"
#include "codecs/system.h"
#include "codecs/units.h"

namespace codecs {

namespace {

// The longest marks first: that of UTF-32 LE begins with that of UTF-16 LE.
constexpr Form kMarked[] = {Form::kUtf32Le, Form::kUtf32Be, Form::kUtf8, Form::kUtf16Le, Form::kUtf16Be};

const Entry* JudgeMark(const uint8_t* bytes, uint32_t size) {
    for (const Form form : kMarked) {
        const Mark& mark = MarkOfForm(form);
        if (size >= mark.size && std::memcmp(bytes, mark.bytes, mark.size) == 0) {
            return EntryOfForm(form, true);
        }
    }
    return nullptr;
}

// UTF-16 that is well-formed UTF-8 as well is alphabetic text, where nearly every unit tells; in other text
// only blanks, line ends and punctuation do.
constexpr uint32_t kShareOfAlphabetic = 2;
constexpr uint32_t kShareOfOthers = 100;

constexpr bool IsTextControl(uint32_t value) {
    return value == '\t' || value == '\n' || value == '\r' || value == '\f';
}

// Bytes that no text has in any encoding but UTF-16 and UTF-32.
bool HasControls(const uint8_t* bytes, uint32_t size) {
    return std::any_of(bytes, bytes + size, [](uint8_t byte) { return byte < 0x20 && !IsTextControl(byte); });
}

bool IsTextUnit(char16_t unit) {
    if (unit < 0x20) return IsTextControl(unit);
    return unit != 0x7F && unit < 0xFFFE;
}

// Units that have a control byte: those of alphabets, but where the byte is one that text has as well, and
// the punctuation of Chinese, Japanese and Korean.
bool IsTelling(char16_t unit) {
    return (unit < 0x2000 && !IsTextControl(unit >> 8)) || (unit >= 0x3000 && unit <= 0x3002);
}

// How many units tell of this byte order; 0 when some unit cannot be text in it.
uint32_t CountTelling(const uint8_t* bytes, uint32_t size, bool bigEndian, bool last) {
    uint32_t telling = 0;
    bool afterHigh = false;
    for (uint32_t i = 0; i < size; i += 2) {
        const auto unit = static_cast<char16_t>(bytes[i] << (bigEndian ? 8 : 0) |  //
                                                bytes[i + 1] << (bigEndian ? 0 : 8));
        if (!IsTextUnit(unit) || IsLow(unit) != afterHigh) return 0;
        afterHigh = IsHigh(unit);
        if (IsTelling(unit)) ++telling;
    }
    return afterHigh && last ? 0 : telling;
}

// `share`: at least one unit in so many must tell.
const Entry* JudgeUtf16(const uint8_t* bytes, uint32_t size, bool last, uint32_t share) {
    if (size % 2 != 0) return nullptr;
    const uint32_t little = CountTelling(bytes, size, false, last);
    const uint32_t big = CountTelling(bytes, size, true, last);
    const uint32_t most = std::max(little, big);
    if (most == 0 || uint64_t{most} * share < size / 2) return nullptr;
    return EntryOfForm(little >= big ? Form::kUtf16Le : Form::kUtf16Be, false);
}

}  // namespace

const Entry* JudgeFile(const uint8_t* bytes, uint32_t size, bool last) {
    if (const Entry* marked = JudgeMark(bytes, size); marked != nullptr) return marked;
    const bool utf8 = IsUtf8(bytes, size, last);
    if (!utf8 || HasControls(bytes, size)) {
        const uint32_t share = utf8 ? kShareOfAlphabetic : kShareOfOthers;
        if (const Entry* utf16 = JudgeUtf16(bytes, size, last, share); utf16 != nullptr) return utf16;
    }
    const Entry* page = utf8 ? nullptr : EntryOfPage(AnsiPage());
    return page != nullptr ? page : EntryOfForm(Form::kUtf8, false);
}

}  // namespace codecs
