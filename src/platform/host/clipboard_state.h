// The host's clipboard, for tests.
#pragma once

#include <optional>
#include <string>

namespace nira {

struct ClipboardState {
    std::optional<std::u16string> text;  // nothing: no text on it
    bool busy = false;                   // another program holds it
    bool refusesText = false;            // putting text fails
    std::u16string block;                // being filled by the code under test
    bool noMemory = false;               // there is none for a text
    bool open = false;                   // by the code under test
};

ClipboardState& HostClipboard();

}  // namespace nira
