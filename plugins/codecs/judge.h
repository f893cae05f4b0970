// What "Auto" takes a file for, by its first bytes.
//
// In this order: a byte-order mark; well-formed UTF-8 without control characters; the pattern of UTF-16
// without mark; well-formed UTF-8 with control characters; and else the system's ANSI page. Control
// characters put UTF-8 behind UTF-16, because alphabetic text in UTF-16 can be well-formed UTF-8 too, full of
// control characters, while text in UTF-8 hardly has any.
#pragma once

#include <cstdint>

#include "codecs/catalog.h"

namespace codecs {

// `last` says that these bytes are the whole file. Never null; "UTF-8 exact" for an empty file, and where the
// ANSI page is UTF-8 or none of this library's.
const Entry* JudgeFile(const uint8_t* bytes, uint32_t size, bool last);

}  // namespace codecs
