// What the application's window half does natively: the scripted answers of file dialogs, and counts of
// calls.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "app/tool_bars.h"

namespace nira {

struct DialogAnswer {
    std::u16string path;      // empty: cancelled
    int64_t codecIndex = -1;  // -1: left as preselected
    int64_t lineEnd = -1;
};

struct DialogCall {
    bool saving;
    std::u16string initialPath;
    uint32_t codecIndex;
    uint32_t lineEnd;
};

struct AppStandIns {
    std::vector<DialogAnswer> answers;  // given in order; behind the last every dialog is cancelled
    std::vector<DialogCall> dialogs;
    int refocused = 0;
    int closed = 0;  // main window asked to close
    int aboutShown = 0;
    std::vector<ToolBar> barsShown;
    std::vector<ToolBar> barsClosed;
    bool groupButton = false;
};

AppStandIns& TheStandIns();

}  // namespace nira
