// Where NIRA lists an encoding of this library.
//
// A library learns only its own position. That of another name follows from the names in the registry: they
// stand behind NIRA's own encodings in ordinal order.
#pragma once

#include <cstdint>

#include "codecs/catalog.h"

namespace codecs {

// The position of `sister`, when it is listed; `own` is the encoding in use, known to be at `ownIndex`. False
// when the sister is not listed, and when the registry no longer is what NIRA made its list from: a wrong
// position would save a file in a wrong encoding.
bool FindSister(const Entry& own, uint32_t ownIndex, const Entry& sister, uint32_t* index);

}  // namespace codecs
