// The record that the whole application shares: its windows and its list of open documents.
#pragma once

#include <cstdint>

#include "engine/editor.h"
#include "platform/handles.h"

namespace nira {

struct InstanceTag;
using InstanceHandle = InstanceTag*;  // the program's module

// What the shell keeps for a main window about being in front. The application owns it and hands it to the
// shell, which has the same layout for it.
struct ActivateRecord {
    uint32_t size;           // 12, the size that the shell expects
    WindowHandle lastFocus;  // had the keyboard when the application was last left
    uint32_t flags;          // kActivateFlagActive
};
constexpr uint32_t kActivateRecordSize = 12;
constexpr uint32_t kActivateFlagActive = 4;

struct AppState {
    InstanceHandle instance;  // resources are loaded from it
    WindowHandle mainWindow;  // null until it is made
    WindowHandle menuBar;     // the bar with File, Edit, Navigate and Buffers
    ActivateRecord activateInfo;
    Editor** buffers;         // bufferCount open documents, local heap; null when there is none
    int16_t bufferCount;      // 1 or more while the program runs, except during Exit
    int16_t untitledCounter;  // the last number given to an untitled document; only grows
    uint16_t groupUndo;       // undo and redo take whole runs of edits; not kept after the program ends
    WindowHandle findBar;     // tool bars: null while they do not exist
    WindowHandle undoBar;
    WindowHandle navigateBar;
    WindowHandle indentBar;
};

AppState& TheAppState();

}  // namespace nira
