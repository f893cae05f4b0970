// Asking the person for a file.
//
// Both dialogs are modal over the main window. A path that begins with one backslash lies in the person's
// home folder.
#pragma once

#include <cstdint>

namespace nira {

// Asks for a file to open, in the folder of `initialPath` (null: the home folder). *codecIndex is the
// encoding chosen at first and the one chosen in the end. Returns the full path, a text of the local heap
// owned by the caller, or null when the person cancelled or memory ran out.
char16_t* OpenDialog(const char16_t* initialPath, uint32_t* codecIndex);

// Asks for a path to save to, proposing `initialPath`; an existing file is confirmed before. *codecIndex and
// *lineEnd go in and out likewise.
char16_t* SaveDialog(const char16_t* initialPath, uint32_t* codecIndex, uint32_t* lineEnd);

}  // namespace nira
