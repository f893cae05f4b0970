// The Options in the registry: HKEY_CURRENT_USER, "Software\NIRA".
//
// Values are read once at start-up and written only when the Options sheet is confirmed. What is stored is
// taken as it is; a missing value gives the default. Loading makes the key and writes nothing into it.
#pragma once

namespace nira {

// Fills the live Options and acquires their font. Returns 1; or 0 when memory ran out, with the record as far
// as it got (FreeOptions takes that too). A registry that cannot be read gives the defaults.
int LoadOptions();

// Writes every value that is kept. When the key cannot be opened the person is told and nothing is written;
// single values that cannot be written are passed over.
void SaveOptions();

// Frees the texts of the Options. Their font is the font cache's to delete.
void FreeOptions();

}  // namespace nira
