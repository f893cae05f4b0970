// What the file dialog decides: where it is, what it lists, and whether a name is accepted.
//
// Boxes appear where something is asked or went wrong; the listing then stays what it was. Running out of
// memory unwinds, and leaves the chooser as it was.
#pragma once

#include <cstdint>

#include "files/folder_listing.h"
#include "platform/handles.h"

namespace nira {

// The longest name that is read from a text box.
constexpr uint32_t kLongestFileName = 260;

struct FileChooser {
    bool saving;
    char16_t* folder;       // shown now, owned; empty for the root folder (files/folder_paths.h)
    FolderListing listing;  // of that folder
    char16_t* path;         // the result, owned; null until a name was accepted
    uint32_t firstCodec;    // the codec that the dialog was opened with
    uint32_t codecIndex;    // the codec of the result
    uint32_t lineEnd;       // kLineEnd..., when saving
    WindowHandle window;    // owns the question about overwriting and the box for a missing file
};

// Goes to the folder that `initialPath` names, or to the one it lies in; null is the root folder. Stores the
// name to propose, which may be empty, in *name: a block of the local heap, owned by the caller. False, after
// telling why, when the folder cannot be listed.
bool BeginChoosing(FileChooser* chooser, const char16_t* initialPath, char16_t** name);

// Frees everything but `path`, which is the caller's.
void EndChoosing(FileChooser* chooser);

// Each lists another folder, or the same one again. False, after telling why, when that fails.
bool EnterEntry(FileChooser* chooser, uint32_t index);
bool GoUpOneLevel(FileChooser* chooser);
bool RefreshListing(FileChooser* chooser);

// Makes a folder of this name in the shown one, which is listed again. False, after telling why, when it
// fails.
bool MakeFolder(FileChooser* chooser, const char16_t* name);

enum class Acceptance {
    kStay,     // nothing has changed: no name, a refused one, or the person wants another
    kEntered,  // the name was a folder's, which is shown now
    kChosen,   // `path` is the result
};

// Takes `name` as written behind the shown folder.
Acceptance AcceptName(FileChooser* chooser, const char16_t* name);

// Accepts the file of this entry. The codec of the result is the one that the dialog was opened with.
Acceptance AcceptEntry(FileChooser* chooser, uint32_t index);

}  // namespace nira
