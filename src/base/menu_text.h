// Names as texts of menu items.
//
// A menu reads two kinds of units as instructions: "&" underlines what follows and a tab begins the column of
// keys (other control characters move text about as well). A file may be called any of that, so a name is
// rewritten before it becomes an item: "&" doubled, control characters as blanks.
#pragma once

#include <cstddef>

namespace nira {

// Room, in units with the terminator, for the rewritten form of any name of `length` units.
constexpr size_t MenuTextUnits(size_t length) { return 2 * length + 1; }

// Writes the rewritten form of the counted text `name` and a terminator into `target`, which has
// MenuTextUnits(length) units of room.
void CopyToMenuText(char16_t* target, const char16_t* name, size_t length);

}  // namespace nira
