// Messages to the person, in the string table's words.
#pragma once

#include <cstdint>

#include "platform/handles.h"

namespace nira {

// The string table's own text of an entry; never freed.
const char16_t* LoadResString(uint32_t id);

// A box with text `id` under the caption "Error", stop icon, owned by the main window.
void ShowErrorMessage(uint32_t id);

// The system's message for the last error in a box titled "Error" with the stop icon, owned by no window. The
// operation that failed then goes on.
void ReportLastError();

// The main window, which owns these boxes; null until there is one.
void SetNoticeOwner(WindowHandle owner);
WindowHandle NoticeOwner();

}  // namespace nira
