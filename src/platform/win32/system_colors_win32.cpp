#include <windows.h>

#include "platform/system_colors.h"

namespace nira {

ColorRef SystemColor(SystemColorIndex index) { return GetSysColor(static_cast<int>(index)); }

}  // namespace nira
