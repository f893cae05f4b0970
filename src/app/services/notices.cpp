#include "app/services/notices.h"

#include "platform/messages.h"
#include "platform/strings.h"

namespace nira {

namespace {

constexpr uint32_t kErrorCaption = 4014;

WindowHandle noticeOwner = nullptr;

}  // namespace

const char16_t* LoadResString(uint32_t id) { return PlatformString(id); }

void ShowErrorMessage(uint32_t id) {
    ShowMessage(noticeOwner, LoadResString(id), LoadResString(kErrorCaption), MessageKind::kError);
}

void ReportLastError() {
    char16_t text[512];
    if (SystemErrorText(LastSystemError(), text, 512) == 0) text[0] = 0;
    ShowMessage(nullptr, text, u"Error", MessageKind::kError);
}

void SetNoticeOwner(WindowHandle owner) { noticeOwner = owner; }

WindowHandle NoticeOwner() { return noticeOwner; }

}  // namespace nira
