// UTF-16 in both byte orders and UTF-8 as codecs.
//
// The decoder knows the byte-order marks of all of them and switches to what a mark says, whatever was asked
// for. It never fails: what is not UTF-8 comes out as units of the bytes' own values, what UTF-16 here cannot
// hold (anything above U+FFFF, and encoded surrogates) as U+FFFD.
#pragma once

#include <cstdint>

#include "files/codec.h"

namespace nira {

// Fills the record's functions and makes its state for `index`, kCodecUnicode to kCodecUtf8. Unwinds when
// memory runs out, and then the record has nothing to free.
void SetUpUnicodeCodec(Codec* codec, uint32_t index);

}  // namespace nira
