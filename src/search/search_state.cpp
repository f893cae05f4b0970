#include "search/search_state.h"

#include "app/services/memory.h"

namespace nira {

namespace {

// The copy is made first: the text may be the very one that is replaced.
void Assign(char16_t** target, const char16_t* text) {
    char16_t* copy = MemStrDup(nullptr, text != nullptr ? text : u"");
    MemFree(nullptr, *target);
    *target = copy;
}

}  // namespace

SearchState& TheSearchState() {
    static SearchState state;
    return state;
}

void SetSearchPattern(const char16_t* text) { Assign(&TheSearchState().pattern, text); }

void SetSearchReplacement(const char16_t* text) { Assign(&TheSearchState().replacement, text); }

void FreeSearchState() {
    MemFree(nullptr, TheSearchState().pattern);
    MemFree(nullptr, TheSearchState().replacement);
    TheSearchState() = {};
}

}  // namespace nira
