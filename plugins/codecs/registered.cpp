#include "codecs/registered.h"

#include "codecs/system.h"
#include "codecs/units.h"
#include "nira_codec.h"

namespace codecs {

namespace {

struct Search {
    const char16_t* name;
    uint32_t before;  // names that come before it
    bool listed;
};

void Count(void* context, const char16_t* name) {
    auto* search = static_cast<Search*>(context);
    const int order = CompareNames(name, search->name);
    if (order < 0) ++search->before;
    if (order == 0) search->listed = true;
}

bool FindPosition(const char16_t* name, uint32_t* index) {
    Search search = {name, 0, false};
    ForEachRegisteredName(Count, &search);
    *index = kNiraBuiltInCodecs + search.before;
    return search.listed;
}

}  // namespace

bool FindSister(const Entry& own, uint32_t ownIndex, const Entry& sister, uint32_t* index) {
    uint32_t place = 0;
    if (!FindPosition(own.name, &place) || place != ownIndex) return false;
    if (!FindPosition(sister.name, &place)) return false;
    *index = place;
    return true;
}

}  // namespace codecs
