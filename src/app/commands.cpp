#include "app/commands.h"

#include "app/about.h"
#include "app/app_state.h"
#include "app/buffer_list.h"
#include "app/buffer_saving.h"
#include "app/pending_paths.h"
#include "app/services/memory.h"
#include "app/tool_bars.h"
#include "app/window_actions.h"
#include "engine/window_state.h"
#include "files/codecs.h"
#include "files/file_dialogs.h"
#include "files/recent_files.h"
#include "platform/surface.h"
#include "resources/resource.h"
#include "search/find.h"
#include "search/search_dialogs.h"
#include "settings/go_to_dialog.h"
#include "settings/options_sheet.h"
#include "view/clipboard_editing.h"
#include "view/editing.h"
#include "view/indentation.h"
#include "view/navigation.h"
#include "view/scroll.h"
#include "view/undo_apply.h"

namespace nira {

namespace {

Editor* Shown() { return TheWindowState().currentEditor; }

// ---- File ----

intptr_t OnExit(WindowHandle, uint32_t, uintptr_t, intptr_t) {
    if (CloseAllBuffers(true) != 0) CloseMainWindow();
    return 0;
}

intptr_t OnAbout(WindowHandle, uint32_t, uintptr_t, intptr_t) {
    ShowAbout();
    return 0;
}

intptr_t OnNew(WindowHandle, uint32_t, uintptr_t, intptr_t) {
    NewBuffer();
    return 0;
}

intptr_t OnOpen(WindowHandle, uint32_t, uintptr_t, intptr_t) {
    uint32_t codecIndex = DefaultCodec();
    char16_t* path = OpenDialog(nullptr, &codecIndex);
    if (path != nullptr) OpenFileInBuffer(path, codecIndex);
    return 0;
}

intptr_t OnSave(WindowHandle, uint32_t, uintptr_t, intptr_t) {
    SaveActiveBuffer();
    return 0;
}

intptr_t OnSaveAs(WindowHandle, uint32_t, uintptr_t, intptr_t) {
    if (Shown() != nullptr) SaveBufferAs(Shown());
    return 0;
}

intptr_t OnSaveAll(WindowHandle, uint32_t, uintptr_t, intptr_t) {
    SaveAll();
    return 0;
}

// Every document takes font and tab size anew: the shown one at once, the others when they are next shown.
void ReapplyOptionsEverywhere() {
    const AppState& app = TheAppState();
    for (int i = 0; i < app.bufferCount; ++i) app.buffers[i]->layoutStale = 1;
    if (Shown() == nullptr) return;
    ShowWaitPointer();
    ReapplyOptions(Shown());
    RestorePointer();
}

intptr_t OnOptions(WindowHandle, uint32_t, uintptr_t, intptr_t) {
    if (RunOptionsSheet() > 0) ReapplyOptionsEverywhere();
    return 0;
}

// ---- Buffers ----

intptr_t OnClose(WindowHandle, uint32_t, uintptr_t, intptr_t) {
    CloseBuffer(BufferIndex(Shown()), false);
    return 0;
}

intptr_t OnCloseAll(WindowHandle, uint32_t, uintptr_t, intptr_t) {
    CloseAllBuffers(false);
    return 0;
}

intptr_t OnToggleWrap(WindowHandle, uint32_t, uintptr_t, intptr_t) {
    if (Shown() == nullptr) return 0;
    ShowWaitPointer();
    ToggleWrap(Shown());
    RestorePointer();
    return 0;
}

intptr_t OnNextBuffer(WindowHandle, uint32_t, uintptr_t, intptr_t) {
    NextBuffer();
    return 0;
}

// ---- Edit and Navigate: operations on the shown document ----

template <void (*operation)(Editor*)>
intptr_t OnEdit(WindowHandle, uint32_t, uintptr_t, intptr_t) {
    if (Shown() != nullptr) operation(Shown());
    return 0;
}

void CopyCommand(Editor* editor) { CopySelection(editor); }

// Pastes as the Options say, or the other way.
template <bool other>
intptr_t OnPaste(WindowHandle, uint32_t, uintptr_t, intptr_t) {
    if (Shown() == nullptr) return 0;
    const bool smart = TheOptions().pasteMode != 0;
    ShowWaitPointer();
    Paste(Shown(), other ? !smart : smart);
    RestorePointer();
    return 0;
}

template <void (*indent)(Editor*)>
intptr_t OnIndent(WindowHandle, uint32_t, uintptr_t, intptr_t) {
    if (Shown() != nullptr) indent(Shown());
    ShowToolBar(ToolBar::kIndent);
    return 0;
}

template <bool undo>
intptr_t OnUndo(WindowHandle, uint32_t, uintptr_t, intptr_t) {
    if (Shown() != nullptr) UndoApply(Shown(), undo, TheAppState().groupUndo != 0);
    ShowToolBar(ToolBar::kUndo);
    return 0;
}

template <void (*move)(Editor*, bool)>
intptr_t OnNavigate(WindowHandle, uint32_t, uintptr_t, intptr_t) {
    if (Shown() != nullptr) move(Shown(), false);
    ShowToolBar(ToolBar::kNavigate);
    return 0;
}

intptr_t OnGoTo(WindowHandle, uint32_t, uintptr_t, intptr_t) {
    const uint32_t line = RunGoToDialog();
    if (line == 0 || Shown() == nullptr) return 0;
    GoToLine(Shown(), line - 1);
    ShowToolBar(ToolBar::kNavigate);
    return 0;
}

// ---- Searching ----

// Asks what to search for, and after a hit shows the bar for the next ones.
template <bool (*ask)(WindowHandle), ToolBar bar>
intptr_t OnSearch(WindowHandle window, uint32_t, uintptr_t, intptr_t) {
    if (ask(window) && FindNextWithMessage(Shown())) ShowToolBar(bar);
    return 0;
}

// A step further, from the bar; with nothing left to find the bar has no use any more.
template <bool (*step)(Editor*)>
intptr_t OnSearchOn(WindowHandle, uint32_t, uintptr_t, intptr_t) {
    if (!step(Shown())) CloseToolBar(ToolBar::kFind);
    return 0;
}

// ---- Tool bars ----

template <ToolBar kind>
intptr_t OnCloseBar(WindowHandle, uint32_t, uintptr_t, intptr_t) {
    CloseToolBar(kind);
    return 0;
}

intptr_t OnGroupUndo(WindowHandle, uint32_t, uintptr_t, intptr_t) {
    AppState& app = TheAppState();
    app.groupUndo = app.groupUndo == 0 ? 1 : 0;
    SetGroupUndoButton(app.groupUndo != 0);
    return 0;
}

constexpr MessageEntry kCommands[] = {
    {CMD_EXIT, OnExit},
    {CMD_ABOUT, OnAbout},
    {CMD_NEW, OnNew},
    {CMD_OPEN, OnOpen},
    {CMD_SAVE, OnSave},
    {CMD_SAVE_AS, OnSaveAs},
    {CMD_SAVE_ALL, OnSaveAll},
    {CMD_OPTIONS, OnOptions},
    {CMD_CLOSE, OnClose},
    {CMD_CLOSE_ALL, OnCloseAll},
    {CMD_TOGGLE_WRAP, OnToggleWrap},
    {CMD_CUT, OnEdit<CutSelection>},
    {CMD_COPY, OnEdit<CopyCommand>},
    {CMD_PASTE, OnPaste<false>},
    {CMD_PASTE_OTHER, OnPaste<true>},
    {CMD_CLEAR, OnEdit<DeleteForward>},
    {CMD_SELECT_ALL, OnEdit<SelectAll>},
    {CMD_MARK_START, OnEdit<MarkStart>},
    {CMD_MARK_END, OnEdit<MarkEnd>},
    {CMD_FIND, OnSearch<AskForFind, ToolBar::kFind>},
    {CMD_REPLACE, OnSearch<AskForReplace, ToolBar::kReplace>},
    {CMD_UNDO, OnUndo<true>},
    {CMD_REDO, OnUndo<false>},
    {CMD_INDENT_MORE, OnIndent<IncreaseIndent>},
    {CMD_INDENT_LESS, OnIndent<DecreaseIndent>},
    {CMD_PAGE_UP, OnNavigate<MovePageUp>},
    {CMD_PAGE_DOWN, OnNavigate<MovePageDown>},
    {CMD_FILE_BOTTOM, OnNavigate<MoveToEnd>},
    {CMD_FILE_TOP, OnNavigate<MoveToStart>},
    {CMD_GO_TO, OnGoTo},
    {CMD_CLOSE_NAVIGATE_BAR, OnCloseBar<ToolBar::kNavigate>},
    {CMD_FIND_NEXT, OnSearchOn<FindNextWithMessage>},
    {CMD_REPLACE_NEXT, OnSearchOn<ReplaceAndFind>},
    {CMD_CLOSE_FIND_BAR, OnCloseBar<ToolBar::kFind>},
    {CMD_GROUP_UNDO, OnGroupUndo},
    {CMD_CLOSE_UNDO_BAR, OnCloseBar<ToolBar::kUndo>},
    {CMD_NEXT_BUFFER, OnNextBuffer},
    {CMD_CLOSE_INDENT_BAR, OnCloseBar<ToolBar::kIndent>},
};

bool InRange(uint32_t identifier, uint32_t first, uint32_t count) {
    return identifier >= first && identifier - first < count;
}

// The four ranges. Their handlers all result in 0.
void RunRange(uint32_t identifier) {
    if (Shown() != nullptr && InRange(identifier, CMD_GO_TO_BOOKMARK_FIRST, CMD_BOOKMARK_COUNT)) {
        GoToBookmark(Shown(), identifier - CMD_GO_TO_BOOKMARK_FIRST);
    }
    if (Shown() != nullptr && InRange(identifier, CMD_SET_BOOKMARK_FIRST, CMD_BOOKMARK_COUNT)) {
        SetBookmark(Shown(), identifier - CMD_SET_BOOKMARK_FIRST);
    }
    ActivateBufferById(identifier);
    if (InRange(identifier, CMD_RECENT_FIRST, CMD_RECENT_COUNT)) OpenRecentFile(identifier);
}

}  // namespace

MessageTable CommandTable() { return {kCommands, sizeof(kCommands) / sizeof(kCommands[0])}; }

intptr_t OnCommand(WindowHandle window, uint32_t, uintptr_t first, intptr_t second) {
    const auto identifier = static_cast<uint32_t>(first & 0xFFFF);
    const auto notification = static_cast<intptr_t>((first >> 16) & 0xFFFF);
    intptr_t result = 0;
    BeginBusy();
    // Operations guard themselves; this is the last line before the window procedure, which nothing may pass.
    Guarded([&] {
        const MessageEntry* entry = FindMessage(CommandTable(), identifier);
        if (entry != nullptr) {
            result = entry->handler(window, identifier, static_cast<uintptr_t>(second), notification);
        }
        RunRange(identifier);
    });
    EndBusy();
    RefocusEditor();
    return result;
}

}  // namespace nira
