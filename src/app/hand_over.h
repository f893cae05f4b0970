// Handing a path over to another instance that runs already.
#pragma once

#include <cstdint>

namespace nira {

// How long another instance may take to answer, in milliseconds. One that loads or saves a large file answers
// late and not never.
constexpr uint32_t kHandOverPatience = 10000;

// True when another instance runs: it has come to the front and has taken the path, unless that is empty, so
// that there is nothing left for this one to do. One that does not answer within `patience`, ends before it
// has taken the path, or has no memory for it, does not count: this instance then opens the path itself, so
// that it is not lost, nor is the person kept waiting by a program that hangs.
bool HandOver(const char16_t* path, uint32_t patience = kHandOverPatience);

}  // namespace nira
