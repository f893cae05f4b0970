// UTF-8 without loss: well-formed sequences are characters, every other byte an escape (codecs/units.h).
//
// Why bytes come back as they were: a well-formed sequence decodes to one unit that is no surrogate half, or
// to a whole pair, and encodes to the only sequence of that character. Any other byte decodes to an escape.
// The units of two neighbours never read as something else: a high half always has its low half behind it, so
// each low half without one is an escape and stands for its byte. Where the bytes are cut makes no
// difference, because a sequence is judged only when it is whole or can no longer become well-formed.
//
// Text that no file held is written so that nothing breaks: halves of pairs that are no escapes of bytes from
// 80 on become three bytes (and come back as three escapes, which stand for the same bytes).
#pragma once

#include <cstdint>

namespace codecs {

// Room that both directions may write beyond the last unit or byte that counts.
constexpr uint32_t kUtf8Slack = 16;

// Decodes as far as sequences are whole; with `last` everything. Room for `size` units and the slack.
// Returns the bytes taken; *out moves behind the units written.
uint32_t DecodeUtf8(const uint8_t* source, uint32_t size, bool last, char16_t** out);

// Encodes all units but a high half at the very end, which is taken only with `last`. Room for three bytes a
// unit and the slack. Returns the units taken; *out moves behind the bytes written.
uint32_t EncodeUtf8(const char16_t* source, uint32_t units, bool last, uint8_t** out);

// Whether all of it is well-formed; a sequence cut at the end is, unless `last`.
bool IsUtf8(const uint8_t* source, uint32_t size, bool last);

}  // namespace codecs
