// The ten files closed last, each with its codec, in the registry and in the "Recent Files" menu.
//
// A file enters the list when its document is closed and leaves it when it is opened again: the list names
// files that are not open now. In the registry the values "0" (the latest) to "9" hold the path, two
// backslashes and the codec's name. Every operation works on the registry itself, so that two runs of the
// program share one list. When memory runs out or the registry fails, the list stays as far as it got and the
// person is not told.
#pragma once

#include <cstdint>

#include "platform/handles.h"

namespace nira {

constexpr uint32_t kRecentFiles = 10;

// Opens a file. Takes ownership of `path` (local heap).
using RecentFileOpener = void (*)(char16_t* path, uint32_t codecIndex);

// Takes the menu that shows the list (null: none) and fills it. Called once at start-up.
void InitRecentFiles(MenuHandle menu);

// What choosing an entry calls; null: nothing.
void SetRecentFileOpener(RecentFileOpener open);

// Rebuilds the menu from the registry; "(Empty)", grayed, when there are no entries.
void BuildRecentMenu();

// Puts a closed file on top; the tenth entry drops out. A path that is listed already is listed twice.
void AddRecentFile(const char16_t* path, uint32_t codecIndex);

// Takes the first entry with exactly this path out; those behind it move up.
void RemoveRecentFile(const char16_t* path);

// Opens the entry of a menu command, CMD_RECENT_FIRST and on. Nothing happens when there is no such entry.
void OpenRecentFile(uint32_t command);

}  // namespace nira
