#include "platform/messages.h"

#include "base/utf16.h"
#include "platform/win32/casts.h"
#include "shell/box_fit.h"

namespace nira {

namespace {

UINT StyleOf(MessageKind kind) {
    switch (kind) {
        case MessageKind::kError:
            return MB_OK | MB_ICONERROR;
        case MessageKind::kInformation:
            return MB_OK | MB_ICONINFORMATION;
        case MessageKind::kQuestionYesNo:
            return MB_YESNO | MB_ICONQUESTION;
        case MessageKind::kQuestionYesNoCancel:
            return MB_YESNOCANCEL | MB_ICONQUESTION;
        case MessageKind::kPlain:
            break;
    }
    return MB_OK;
}

static_assert(kAnswerOk == IDOK && kAnswerCancel == IDCANCEL && kAnswerYes == IDYES && kAnswerNo == IDNO);

}  // namespace

int ShowMessage(WindowHandle owner, const char16_t* text, const char16_t* caption, MessageKind kind) {
    if (owner != nullptr) return shell::ShowBox(ToHwnd(owner), ToWide(text), ToWide(caption), StyleOf(kind));
    // Nobody's box still keeps the person from the program's windows, which could come to lie over it; and
    // when it goes, no owner gets the keyboard back.
    const HWND focus = GetFocus();
    const int answer = shell::ShowBox(nullptr, ToWide(text), ToWide(caption), StyleOf(kind) | MB_TASKMODAL);
    if (IsWindow(focus)) {
        SetForegroundWindow(GetAncestor(focus, GA_ROOT));
        SetFocus(focus);
    }
    return answer;
}

uint32_t LastSystemError() { return GetLastError(); }

size_t SystemErrorText(uint32_t code, char16_t* target, size_t room) {
    // A buffer of the system's own: into one that is too small it would write nothing instead of a part.
    wchar_t* text = nullptr;
    FormatMessageW(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_FROM_SYSTEM, nullptr,
        code, 0, reinterpret_cast<wchar_t*>(&text), 0, nullptr);
    const size_t length = Utf16Copy(target, room, FromWide(text));
    LocalFree(text);
    return length;
}

}  // namespace nira
