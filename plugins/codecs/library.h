// The library's one function, as the DLL exports it and as the tests call it.
#pragma once

#include "nira_codec.h"

namespace codecs {

// Fills in the functions of the encoding with this list name; false when there is none, or when the system
// lacks its code page.
bool FillCodec(const char16_t* name, NiraCodec* codec);

}  // namespace codecs
