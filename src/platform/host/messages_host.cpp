#include "platform/messages.h"

#include <deque>

#include "base/utf16.h"
#include "platform/host/last_error.h"
#include "platform/host/message_log.h"
#include "platform/host/open_files.h"

namespace nira {

namespace {

std::vector<ShownMessage> shown;
std::deque<int> script;

int CarefulAnswer(MessageKind kind) {
    switch (kind) {
        case MessageKind::kQuestionYesNo:
            return kAnswerNo;
        case MessageKind::kQuestionYesNoCancel:
            return kAnswerCancel;
        default:
            return kAnswerOk;
    }
}

}  // namespace

int ShowMessage(WindowHandle owner, const char16_t* text, const char16_t* caption, MessageKind kind) {
    shown.push_back(
        {text != nullptr ? text : u"", caption != nullptr ? caption : u"", kind, owner, HostOpenFileCount()});
    if (script.empty()) return CarefulAnswer(kind);
    const int answer = script.front();
    script.pop_front();
    return answer;
}

uint32_t LastSystemError() { return HostLastError(); }

size_t SystemErrorText(uint32_t code, char16_t* target, size_t room) {
    return Utf16Copy(target, room, HostErrorText(code).c_str());
}

const std::vector<ShownMessage>& MessageLog() { return shown; }

void MessageLogReset() {
    shown.clear();
    script.clear();
}

void MessageScript(std::initializer_list<int> answers) { script.insert(script.end(), answers); }

size_t MessageScriptLeft() { return script.size(); }

std::u16string HostErrorText(uint32_t code) {
    char16_t digits[12];
    Utf16FromInt(digits, 12, static_cast<int>(code));
    return std::u16string(u"System error ") + digits + u".";
}

}  // namespace nira
