// The host's message boxes: each is logged and answered at once from a script.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <vector>

#include "platform/messages.h"

namespace nira {

struct ShownMessage {
    std::u16string text;
    std::u16string caption;
    MessageKind kind;
    WindowHandle owner;
    size_t openFiles;  // files that were open while the box stood: should be 0
};

// Every box since the reset, oldest first.
const std::vector<ShownMessage>& MessageLog();

// Empties the log and the script.
void MessageLogReset();

// Appends answers for the boxes to come. A box without a scripted answer is answered by OK where it has that
// button, else by the most careful one it has: Cancel, or No.
void MessageScript(std::initializer_list<int> answers);

// Scripted answers not given yet.
size_t MessageScriptLeft();

// What SystemErrorText says for `code`: "System error 5."
std::u16string HostErrorText(uint32_t code);

}  // namespace nira
