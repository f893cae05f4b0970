#pragma once

#include <windows.h>

// Keeps pop-up menus on the screen: an item wider than the screen loses units from its middle while its menu
// is open, so that its end (of a path: the name of the file) can be read.
//
// The owner of a menu sees none of this: its items have their whole texts again when the menu has closed.
namespace shell {

// To be called when `menu` is about to open, after its owner has set it up: shortens what is wider than
// `screenWidth` pixels allow. Where memory runs out the items stay as they are. Texts with a tab are left
// alone.
void FitMenu(HMENU menu, int screenWidth);

// Gives the items of `menu` (null: of every menu) their whole texts back, save for those that were changed or
// deleted since. Does nothing for menus that were not shortened.
void UnfitMenu(HMENU menu);

// `text` with an ellipsis in place of its middle, `kept` of its units left (one or two fewer where the cut
// would split an "&&" or a surrogate pair). `target` has room for kept + 2 units; kept is less than the
// text's length.
void ShortenMiddle(wchar_t* target, const wchar_t* text, int kept);

}  // namespace shell
