// What a new file may be called.
#pragma once

namespace nira {

// Whether the last part of `path` (behind its last backslash) holds a character that no file's name may have:
// one of "*/:<>?| or a control character. The system refuses most of them itself, but it takes what stands
// behind a colon for a hidden part of the file before it, and Wine leaves control characters to the host.
bool HasForbiddenCharacter(const char16_t* path);

}  // namespace nira
