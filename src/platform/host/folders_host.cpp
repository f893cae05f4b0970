#include "platform/folders.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <string>

#include "base/file_name.h"
#include "platform/host/drives.h"
#include "platform/host/faults.h"
#include "platform/host/host_names.h"
#include "platform/host/last_error.h"

namespace nira {

struct FolderSearchTag {
    DIR* folder;
    std::string path;
    std::u16string name;  // of the item last given
};

namespace {

uint32_t drives = 0;

// Steps of 100 ns from 1601 to 1970.
constexpr uint64_t kEpoch = 116444736000000000;

// The permission bits count for root too, as rights do on Windows for everybody.
bool MayList(const std::string& path) {
    struct stat info;
    if (stat(path.c_str(), &info) != 0) return Fail(ErrorOf(errno, path));
    if (!S_ISDIR(info.st_mode)) return Fail(kErrorPathNotFound);
    return (info.st_mode & 0444) != 0 || Fail(kErrorAccessDenied);
}

// Upper case of what file names are mostly made of: Latin, Greek and Cyrillic letters.
char16_t Upper(char16_t unit) {
    const bool latin = (unit >= u'a' && unit <= u'z') || (unit >= 0xE0 && unit <= 0xFE && unit != 0xF7);
    const bool greekOrCyrillic =
        (unit >= 0x3B1 && unit <= 0x3C9 && unit != 0x3C2) || (unit >= 0x430 && unit < 0x450);
    return static_cast<char16_t>(latin || greekOrCyrillic ? unit - 0x20 : unit);
}

}  // namespace

void HostSetDrives(uint32_t letters) { drives = letters; }

FolderSearch FolderSearchOpen(const char16_t* folder) {
    if (FaultStrikes(FaultPoint::kFolderOpen)) return nullptr;
    const std::string path = *folder != 0 ? HostName(folder) : "/";
    if ((*folder != 0 && !NameIsValid(folder)) || !MayList(path)) return nullptr;
    DIR* opened = opendir(path.c_str());
    if (opened == nullptr) {
        Fail(ErrorOf(errno, path));
        return nullptr;
    }
    return new FolderSearchTag{opened, path, {}};
}

bool FolderSearchNext(FolderSearch search, FolderItem* item) {
    if (FaultStrikes(FaultPoint::kFolderNext)) return false;
    const dirent* entry = readdir(search->folder);
    if (entry == nullptr) return Fail(kErrorNoMoreFiles);
    const std::string path = search->path + "/" + entry->d_name;
    // A link to nowhere is a file of its own size.
    struct stat info = {};
    if (stat(path.c_str(), &info) != 0) lstat(path.c_str(), &info);
    search->name = ProgramName(entry->d_name);
    item->name = search->name.c_str();
    item->size = static_cast<uint32_t>(info.st_size);
    item->isFolder = S_ISDIR(info.st_mode);
    item->modified = kEpoch + static_cast<uint64_t>(info.st_mtime) * 10000000;
    return true;
}

void FolderSearchClose(FolderSearch search) {
    if (search == nullptr) return;
    closedir(search->folder);
    delete search;
}

bool FolderCreate(const char16_t* path) {
    if (FaultStrikes(FaultPoint::kFolderCreate) || !NameIsValid(path)) return false;
    const std::string name = HostName(path);
    return mkdir(name.c_str(), 0777) == 0 || Fail(ErrorOf(errno, name));
}

PathKind KindOfPath(const char16_t* path) {
    if (*path == 0) return PathKind::kFolder;
    if (!NameIsValid(path)) return PathKind::kUnusable;
    const std::string name = HostName(path);
    struct stat info;
    if (stat(name.c_str(), &info) == 0) return S_ISDIR(info.st_mode) ? PathKind::kFolder : PathKind::kFile;
    const uint32_t error = ErrorOf(errno, name);
    const bool missing = error == kErrorFileNotFound || error == kErrorPathNotFound;
    const bool forbidden = missing && HasForbiddenCharacter(path);
    HostSetLastError(forbidden ? kErrorInvalidName : error);
    return missing && !forbidden ? PathKind::kMissing : PathKind::kUnusable;
}

// The host takes every name as it is.
bool NeedsExactPrefix(const char16_t*) { return false; }

uint32_t DriveLetters() { return drives; }

size_t RootFolderPath(char16_t*, size_t) { return 0; }

int CompareNames(const char16_t* left, size_t leftUnits, const char16_t* right, size_t rightUnits) {
    for (size_t i = 0; i < std::min(leftUnits, rightUnits); ++i) {
        if (Upper(left[i]) != Upper(right[i])) return Upper(left[i]) < Upper(right[i]) ? -1 : 1;
    }
    return leftUnits == rightUnits ? 0 : leftUnits < rightUnits ? -1 : 1;
}

}  // namespace nira
