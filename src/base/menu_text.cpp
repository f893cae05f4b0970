#include "base/menu_text.h"

namespace nira {

void CopyToMenuText(char16_t* target, const char16_t* name, size_t length) {
    for (size_t i = 0; i < length; ++i) {
        const char16_t unit = name[i];
        if (unit == u'&') *target++ = u'&';
        *target++ = unit < u' ' || unit == u'\x7F' ? u' ' : unit;
    }
    *target = 0;
}

}  // namespace nira
