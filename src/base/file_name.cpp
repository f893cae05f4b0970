#include "base/file_name.h"

#include "base/utf16.h"

namespace nira {

bool HasForbiddenCharacter(const char16_t* path) {
    const char16_t* mark = Utf16FindLast(path, u'\\');
    for (const char16_t* at = mark != nullptr ? mark + 1 : path; *at != 0; ++at) {
        if (*at < 0x20 || Utf16Find(u"\"*/:<>?|", *at) != nullptr) return true;
    }
    return false;
}

}  // namespace nira
