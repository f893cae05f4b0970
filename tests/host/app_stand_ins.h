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

// What a person confirms in the Find or Replace dialog.
struct SearchAnswer {
    std::u16string pattern;
    std::u16string replacement;
    bool matchCase = false;
    bool wholeWord = false;
};

struct AppStandIns {
    std::vector<DialogAnswer> answers;  // given in order; behind the last every dialog is cancelled
    std::vector<DialogCall> dialogs;
    std::vector<SearchAnswer> searches;  // given in order; behind the last the search dialogs are cancelled
    std::vector<bool> searchDialogs;     // those shown; true for Replace
    int refocused = 0;
    int closed = 0;  // main window asked to close
    int aboutShown = 0;
    uint32_t lineEntered = 0;  // in the Go to dialog; 0: cancelled
    int optionsShown = 0;
    void (*editOptions)() = nullptr;  // what the confirmed Options sheet changes; null: it is cancelled
    std::vector<ToolBar> barsShown;
    std::vector<ToolBar> barsClosed;
    bool groupButton = false;
};

AppStandIns& TheStandIns();

}  // namespace nira
