#include "platform/folders.h"

#include <windows.h>

#include <cwchar>

#include "base/file_name.h"
#include "base/utf16.h"
#include "platform/win32/casts.h"
#include "platform/win32/system_path.h"
#include "shell/exact_path.h"
#include "shell/root_paths.h"
#include "shell/shell_text.h"

namespace nira {

struct FolderSearchTag {
    HANDLE handle;  // null: an empty folder
    WIN32_FIND_DATAW data;
    bool isRead;  // `data` holds the next item
};

namespace {

static_assert(kErrorNoMoreFiles == ERROR_NO_MORE_FILES);

// A drive without a medium is an error of the call, not a box of the system's own that waits for somebody to
// insert one.
class QuietDrives {
  public:
    QuietDrives() { SetThreadErrorMode(SEM_FAILCRITICALERRORS, &before_); }
    ~QuietDrives() {
        const DWORD error = GetLastError();
        SetThreadErrorMode(before_, nullptr);
        SetLastError(error);
    }
    QuietDrives(const QuietDrives&) = delete;
    QuietDrives& operator=(const QuietDrives&) = delete;

  private:
    DWORD before_ = 0;
};

// What lists a folder, to be freed with FreeShellText; null with the last error set on failure. The folder's
// own path is made exact first: with something behind it, a dot at its end would no longer be noticed.
wchar_t* PatternOf(const char16_t* folder) {
    const SystemPath path(*folder != 0 ? folder : u"\\");
    if (path.Get() == nullptr) return nullptr;
    size_t units = wcslen(path.Get());
    while (units > 0 && path.Get()[units - 1] == L'\\') --units;
    wchar_t* pattern = shell::AllocShellText(units + 2);
    if (pattern == nullptr) return nullptr;
    wmemcpy(pattern, path.Get(), units);
    wmemcpy(pattern + units, L"\\*", 2);
    return pattern;
}

bool OpenPattern(FolderSearch search, const char16_t* folder, const wchar_t* pattern) {
    const HANDLE handle = FindFirstFileW(pattern, &search->data);
    if (handle != INVALID_HANDLE_VALUE) {
        search->handle = handle;
        search->isRead = true;
        return true;
    }
    // The root of a drive has no entries for itself and its parent: an empty one finds no file at all.
    if (GetLastError() != ERROR_FILE_NOT_FOUND) return false;
    if (KindOfPath(folder) == PathKind::kFolder) return true;
    SetLastError(ERROR_PATH_NOT_FOUND);
    return false;
}

uint64_t LocalTime(const FILETIME& time) {
    FILETIME local = {};
    FileTimeToLocalFileTime(&time, &local);
    return static_cast<uint64_t>(local.dwHighDateTime) << 32 | local.dwLowDateTime;
}

bool IsMissing(DWORD error) { return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND; }

bool IsDriveAlone(const char16_t* path) { return path[0] != 0 && path[1] == u':' && path[2] == 0; }

// No file system keeps a name of more than 255 units, but not every one says so before the file is made.
bool HasTooLongName(const char16_t* path) {
    constexpr size_t kLongestName = 255;
    const char16_t* mark = Utf16FindLast(path, u'\\');
    return Utf16Length(mark != nullptr ? mark + 1 : path) > kLongestName;
}

// Of a path for which the system has just answered with an error. A drive that is not there stays what the
// system calls it.
PathKind KindOfMissing(const char16_t* path) {
    if (!IsMissing(GetLastError()) || IsDriveAlone(path)) return PathKind::kUnusable;
    const bool tooLong = HasTooLongName(path);
    if (!tooLong && !HasForbiddenCharacter(path)) return PathKind::kMissing;
    SetLastError(tooLong ? ERROR_FILENAME_EXCED_RANGE : ERROR_INVALID_NAME);
    return PathKind::kUnusable;
}

}  // namespace

FolderSearch FolderSearchOpen(const char16_t* folder) {
    const QuietDrives quiet;
    auto* search = static_cast<FolderSearch>(LocalAlloc(LPTR, sizeof(FolderSearchTag)));
    wchar_t* pattern = search != nullptr ? PatternOf(folder) : nullptr;
    const bool opened = pattern != nullptr && OpenPattern(search, folder, pattern);
    const DWORD error = GetLastError();
    shell::FreeShellText(pattern);
    if (opened) return search;
    LocalFree(search);
    SetLastError(error);
    return nullptr;
}

bool FolderSearchNext(FolderSearch search, FolderItem* item) {
    if (search->handle == nullptr) {
        SetLastError(ERROR_NO_MORE_FILES);
        return false;
    }
    if (!search->isRead && !FindNextFileW(search->handle, &search->data)) return false;
    search->isRead = false;
    item->name = FromWide(search->data.cFileName);
    item->size = search->data.nFileSizeLow;
    item->isFolder = (search->data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    item->modified = LocalTime(search->data.ftLastWriteTime);
    return true;
}

void FolderSearchClose(FolderSearch search) {
    if (search == nullptr) return;
    const DWORD error = GetLastError();
    if (search->handle != nullptr) FindClose(search->handle);
    LocalFree(search);
    SetLastError(error);
}

bool FolderCreate(const char16_t* path) {
    const QuietDrives quiet;
    const SystemPath systemPath(path);
    return systemPath.Get() != nullptr && CreateDirectoryW(systemPath.Get(), nullptr) != 0;
}

PathKind KindOfPath(const char16_t* path) {
    if (*path == 0) return PathKind::kFolder;
    const QuietDrives quiet;
    const SystemPath systemPath(path);
    if (systemPath.Get() == nullptr) return PathKind::kUnusable;
    const DWORD attributes = GetFileAttributesW(systemPath.Get());
    if (attributes == INVALID_FILE_ATTRIBUTES) return KindOfMissing(path);
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? PathKind::kFolder : PathKind::kFile;
}

bool NeedsExactPrefix(const char16_t* path) {
    wchar_t* exact = shell::ExactPath(ToWide(path));
    shell::FreeShellText(exact);
    return exact != nullptr;
}

uint32_t DriveLetters() { return GetLogicalDrives(); }

size_t RootFolderPath(char16_t* target, size_t room) {
    wchar_t* home = shell::HomeFolder();
    size_t units = Utf16Length(FromWide(home));
    if (units >= room) units = 0;
    Utf16Copy(target, room, units > 0 ? FromWide(home) : u"");
    shell::FreeShellText(home);
    // The root folder of a drive keeps its backslash there.
    if (units > 0 && target[units - 1] == u'\\') target[--units] = 0;
    return units;
}

int CompareNames(const char16_t* left, size_t leftUnits, const char16_t* right, size_t rightUnits) {
    return CompareStringOrdinal(ToWide(left), static_cast<int>(leftUnits), ToWide(right),
                                static_cast<int>(rightUnits), TRUE) -
           CSTR_EQUAL;
}

}  // namespace nira
