// Reading a file into a document.
#pragma once

#include <cstdint>

#include "engine/editor.h"

namespace nira {

constexpr uint32_t kReadBlock = 20480;

// Reads the file into a fresh document and gives it the path, the codec really in effect and the line-end
// type of the file's first break. Takes ownership of `path` (local heap) in every case. Returns 1; or 0 after
// telling the person (a codec of a plug-in that fails is told like a file that cannot be read): the document
// then holds what was read so far and is the caller's to destroy. When memory ran out, the out-of-memory box
// was all that was shown.
int Load(Editor* editor, char16_t* path, uint32_t codecIndex);

}  // namespace nira
