// The nearest letters that Windows-1252 has for units it has not.
#pragma once

#include <cstdint>

namespace nira {

// The byte that stands for `unit`, as the system chooses it (A for U+0100); 0 when there is none.
uint8_t WesternBestFit(char16_t unit);

}  // namespace nira
