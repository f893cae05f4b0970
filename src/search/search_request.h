// What a person asks for in the Find and Replace dialogs, and how the program takes it.
#pragma once

#include "platform/handles.h"

namespace nira {

struct SearchRequest {
    const char16_t* pattern;
    const char16_t* replacement;  // null: the last one stays
    bool matchCase;
    bool wholeWord;
    bool up;
};

// Makes it the program's search. False, with nothing changed, for an empty pattern. Unwinds when memory runs
// out.
bool AcceptSearch(const SearchRequest& request);

// Replaces every match in the shown document, and says in a box over `owner` how many there were; without a
// document there are none.
void ReplaceAllAndTell(WindowHandle owner);

}  // namespace nira
