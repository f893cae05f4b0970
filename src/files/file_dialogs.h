// Asking the person for a file.
//
// Both dialogs fill the main window and are modal over it. They list one folder at a time; the root folder is
// the person's home folder with the drives beside its entries. What they decide is in files/file_chooser.h.
#pragma once

#include <cstdint>

namespace nira {

// Asks for a file to open. An `initialPath` that is a folder is shown; of any other the folder is shown and
// the name proposed; null is the root folder. *codecIndex is the encoding chosen at first, and in the end:
// the one of the list when the Open button or the Enter key accepted, the one it was at first when the file
// was activated in the listing. Returns the full path, a text of the local heap owned by the caller, or null
// when the person cancelled, the folder could not be listed (the person was told) or memory ran out. Then
// *codecIndex is what it was.
char16_t* OpenDialog(const char16_t* initialPath, uint32_t* codecIndex);

// Asks for a path to save to likewise; an existing file is confirmed before. *lineEnd (kLineEnd...) goes in
// and out as the encoding does.
char16_t* SaveDialog(const char16_t* initialPath, uint32_t* codecIndex, uint32_t* lineEnd);

}  // namespace nira
