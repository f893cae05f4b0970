// The system's colours for the parts of a window.
#pragma once

#include "platform/handles.h"

namespace nira {

// The values are the system's own indices.
enum class SystemColorIndex {
    kWindow = 5,
    kWindowText = 8,
    kHighlight = 13,
    kHighlightText = 14,
};

ColorRef SystemColor(SystemColorIndex index);

}  // namespace nira
