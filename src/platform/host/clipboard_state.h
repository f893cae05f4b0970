// The host's clipboard, for tests.
#pragma once

#include <optional>
#include <string>

namespace nira {

struct ClipboardState {
    std::optional<std::u16string> text;  // nothing: no text on it
    bool busy = false;                   // another program holds it
    bool refusesText = false;            // putting text fails
    bool open = false;                   // by the code under test
};

ClipboardState& HostClipboard();

}  // namespace nira
