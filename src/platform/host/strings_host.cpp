#include "platform/strings.h"
#include "resources/resource.h"

namespace nira {

namespace {

struct Entry {
    uint32_t id;
    const char16_t* text;
};

// The last entry ends the table and stands for every id that is missing.
constexpr Entry kEntries[] = {
#define NIRA_STRING(id, text) {id, u##text},
#include "resources/strings.inc"
#undef NIRA_STRING
    {0, u""},
};

}  // namespace

const char16_t* PlatformString(uint32_t id) {
    const Entry* entry = kEntries;
    while (entry->id != 0 && entry->id != id) ++entry;
    return entry->text;
}

}  // namespace nira
