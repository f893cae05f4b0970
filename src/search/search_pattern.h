// What the Find and Replace dialogs propose to search for.
#pragma once

#include <cstddef>

#include "engine/editor.h"

namespace nira {

// The longest pattern, in units. What is typed or proposed beyond is cut: an edit field measures all of its
// text for every key, and a whole document may be selected.
constexpr size_t kLongestPattern = 65535;

// The document's selected text, line ends included; without a selection the word that the caret stands in or
// at; without that the last pattern. Null when there is none of them. A block of the local heap, owned by the
// caller; unwinds when memory runs out. The document may be null.
char16_t* ProposedPattern(const Editor* editor);

}  // namespace nira
