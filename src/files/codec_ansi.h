// The system's ANSI code page as a codec. It has no state and knows no byte-order mark.
#pragma once

#include <cstdint>

#include "files/codec.h"

namespace nira {

// Fills the record's functions.
void SetUpAnsiCodec(Codec* codec);

}  // namespace nira
