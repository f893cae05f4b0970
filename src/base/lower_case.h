// Letters without case, unit by unit, the same on every system and in every locale.
//
// The mapping is Unicode's simple lower-casing of the Basic Multilingual Plane. Halves of surrogate pairs are
// no letters and stay what they are.
#pragma once

#include <cstdint>

namespace nira {

char16_t LowerUnit(char16_t unit);

// Writes all units that lower to the same unit as `unit`, itself among them, and returns how many there are.
constexpr uint32_t kLowerVariants = 3;
uint32_t LowerVariants(char16_t unit, char16_t variants[kLowerVariants]);

}  // namespace nira
