// The native build's system: code pages by iconv, NIRA's list of encodings in the registry of the tests.
#pragma once

#include <cstdint>

namespace codecs {

// What AnsiPage() says from now on; 1252 at first.
void SetHostAnsiPage(uint32_t page);

}  // namespace codecs
