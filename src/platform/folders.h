// Folders on disk: what lies in them, what a path names, how names compare.
//
// Paths follow the same mapping as in platform/files.h, and every failing call leaves its reason in the
// system's last error.
#pragma once

#include <cstddef>
#include <cstdint>

namespace nira {

struct FolderSearchTag;
using FolderSearch = FolderSearchTag*;

// One thing in a folder. `name` is good until the next call with the same search.
struct FolderItem {
    const char16_t* name;
    uint64_t modified;  // last write in local time, in steps of 100 ns since 1601
    uint32_t size;      // the low 32 bits of the bytes
    bool isFolder;
};

// The last error behind the last item of a folder.
constexpr uint32_t kErrorNoMoreFiles = 18;

// Begins to go through everything in `folder` (no backslash at its end; empty: the root folder), hidden
// things and the two names of one and two dots included, in no order. Null when it cannot be opened.
FolderSearch FolderSearchOpen(const char16_t* folder);

// The next item. False with kErrorNoMoreFiles behind the last one, and with any other reason when it broke
// off.
bool FolderSearchNext(FolderSearch search, FolderItem* item);

// Null is ignored. The last error stays.
void FolderSearchClose(FolderSearch search);

bool FolderCreate(const char16_t* path);

enum class PathKind {
    kMissing,  // nothing has this name, but something could
    kFile,     // or anything else that is no folder
    kFolder,
    kUnusable,  // the system cannot say, for the reason in the last error: a name that nothing may have, no
                // medium
};

// The empty path is the root folder.
PathKind KindOfPath(const char16_t* path);

// True when `path` names something that exists, but the system would take the path for another one unless it
// begins with `\\?\`: a device's name, a dot or blank at its end.
bool NeedsExactPrefix(const char16_t* path);

// The drives there are: bit 0 is A. None of them is touched.
uint32_t DriveLetters();

// Writes what the root folder is on disk, without a backslash at its end, terminated. Returns its length; 0
// when it is not known, does not fit, or paths are what the system calls them anyway.
size_t RootFolderPath(char16_t* target, size_t room);

// Orders two counted names as file names, without regard to case: negative, 0 or positive.
int CompareNames(const char16_t* left, size_t leftUnits, const char16_t* right, size_t rightUnits);

}  // namespace nira
