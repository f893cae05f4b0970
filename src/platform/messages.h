// Message boxes, and the system's own words for its errors.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/handles.h"

namespace nira {

enum class MessageKind {
    kPlain,                // OK, no icon
    kError,                // OK, stop icon
    kInformation,          // OK, information icon
    kQuestionYesNo,        // Yes and No, question icon
    kQuestionYesNoCancel,  // Yes, No and Cancel, question icon
};

// The answers, with the system's values.
constexpr int kAnswerOk = 1;
constexpr int kAnswerCancel = 2;
constexpr int kAnswerYes = 6;
constexpr int kAnswerNo = 7;

// Shows a modal box and returns the answer. `owner` may be null.
int ShowMessage(WindowHandle owner, const char16_t* text, const char16_t* caption, MessageKind kind);

// The code that the latest failed system call of this thread left.
uint32_t LastSystemError();

// The system's message for `code`, terminated and cut to `room` units. Returns its length; 0 when there is
// none.
size_t SystemErrorText(uint32_t code, char16_t* target, size_t room);

}  // namespace nira
