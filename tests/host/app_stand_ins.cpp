#include "app_stand_ins.h"

#include "app/about.h"
#include "app/services/memory.h"
#include "app/window_actions.h"
#include "files/file_dialogs.h"
#include "search/search_dialogs.h"
#include "search/search_request.h"
#include "settings/go_to_dialog.h"
#include "settings/options_sheet.h"

namespace nira {

AppStandIns& TheStandIns() {
    static AppStandIns standIns;
    return standIns;
}

namespace {

DialogAnswer NextAnswer() {
    std::vector<DialogAnswer>& answers = TheStandIns().answers;
    if (answers.empty()) return {};
    DialogAnswer answer = answers.front();
    answers.erase(answers.begin());
    return answer;
}

char16_t* Answer(const DialogAnswer& answer, uint32_t* codecIndex) {
    if (answer.path.empty()) return nullptr;
    if (answer.codecIndex >= 0) *codecIndex = static_cast<uint32_t>(answer.codecIndex);
    return MemStrDup(nullptr, answer.path.c_str());
}

bool NextSearch(bool replacing) {
    AppStandIns& standIns = TheStandIns();
    standIns.searchDialogs.push_back(replacing);
    if (standIns.searches.empty()) return false;
    const SearchAnswer answer = standIns.searches.front();
    standIns.searches.erase(standIns.searches.begin());
    return AcceptSearch({answer.pattern.c_str(), replacing ? answer.replacement.c_str() : nullptr,
                         answer.matchCase, answer.wholeWord, false});
}

}  // namespace

char16_t* OpenDialog(const char16_t* initialPath, uint32_t* codecIndex) {
    TheStandIns().dialogs.push_back({false, initialPath != nullptr ? initialPath : u"", *codecIndex, 0});
    return Answer(NextAnswer(), codecIndex);
}

char16_t* SaveDialog(const char16_t* initialPath, uint32_t* codecIndex, uint32_t* lineEnd) {
    TheStandIns().dialogs.push_back(
        {true, initialPath != nullptr ? initialPath : u"", *codecIndex, *lineEnd});
    const DialogAnswer answer = NextAnswer();
    if (answer.lineEnd >= 0) *lineEnd = static_cast<uint32_t>(answer.lineEnd);
    return Answer(answer, codecIndex);
}

int RunOptionsSheet() {
    ++TheStandIns().optionsShown;
    if (TheStandIns().editOptions == nullptr) return 0;
    TheStandIns().editOptions();
    return 1;
}

void ShowAbout() { ++TheStandIns().aboutShown; }

bool AskForFind(WindowHandle) { return NextSearch(false); }

bool AskForReplace(WindowHandle) { return NextSearch(true); }
uint32_t RunGoToDialog() { return TheStandIns().lineEntered; }

void RefocusEditor() { ++TheStandIns().refocused; }

void CloseMainWindow() { ++TheStandIns().closed; }

void ShowToolBar(ToolBar kind) { TheStandIns().barsShown.push_back(kind); }

void CloseToolBar(ToolBar kind) { TheStandIns().barsClosed.push_back(kind); }

void SetGroupUndoButton(bool on) { TheStandIns().groupButton = on; }

}  // namespace nira
