// Asking for the name of a new folder.
#pragma once

#include <cstddef>

#include "platform/handles.h"

namespace nira {

// Asks over `owner`. True with the name, never empty, in `name` of `room` units; false when the person
// cancelled.
bool AskForFolderName(WindowHandle owner, char16_t* name, size_t room);

}  // namespace nira
