// Writing a document to its file.
//
// With safe save on the old file is set aside under a backup name (the path with a digit appended) until the
// new one is complete and on the disk; a failed write brings it back. The order of the steps decides what a
// power cut or a full disk leaves behind: at every moment the old text is on the disk under its own or its
// backup name. With safe save off, a plug-in's codec first encodes the whole text with nothing written: a
// plug-in that fails is then found before the old file is given up.
#pragma once

#include <cstdint>

#include "engine/editor.h"

namespace nira {

// Writes the document to its path, which it must have. Returns 1; or 0 after telling the person. A failed
// write clears the modified flag all the same. Every failure sets saveFailed, which the next successful save
// clears: whoever closes the document must ask. When the file cannot even be created, a backup made before
// keeps the old text under its own name.
int Save(Editor* editor);

// Writes under another name, codec and line-end type, which the document keeps when that worked and gives
// back when it did not. Takes ownership of `path` (local heap).
int SaveAs(Editor* editor, char16_t* path, uint32_t codecIndex, uint32_t lineEnd);

}  // namespace nira
