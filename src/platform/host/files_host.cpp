#include "platform/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <string>
#include <vector>

#include "platform/host/faults.h"
#include "platform/host/host_names.h"
#include "platform/host/last_error.h"
#include "platform/host/open_files.h"

namespace nira {

struct FileTag {
    int descriptor;
    bool writing;
    dev_t device;
    ino_t inode;
};

namespace {

// Sharing is kept among the program's own files, which is what a test can bring about.
std::vector<FileHandle> openFiles;

bool InUse(const struct stat& info, bool writersOnly) {
    for (const FileHandle file : openFiles) {
        const bool same = file->device == info.st_dev && file->inode == info.st_ino;
        if (same && (file->writing || !writersOnly)) return true;
    }
    return false;
}

// The permission bits count for root too, as read-only files do on Windows for everybody.
bool IsReadOnly(const struct stat& info) { return (info.st_mode & 0222) == 0; }

bool IsProtected(const struct stat& info) { return S_ISDIR(info.st_mode) || IsReadOnly(info); }

bool FolderIsReadOnly(const std::string& name) {
    const size_t slash = name.find_last_of('/');
    const std::string folder = slash == std::string::npos ? "." : name.substr(0, slash + 1);
    struct stat info;
    return stat(folder.c_str(), &info) == 0 && IsReadOnly(info);
}

FileHandle Opened(const std::string& name, int flags) {
    const int descriptor = open(name.c_str(), flags | O_CLOEXEC, 0666);
    struct stat info;
    if (descriptor < 0 || fstat(descriptor, &info) != 0) {
        Fail(ErrorOf(errno, name));
        return nullptr;
    }
    auto* file = new FileTag{descriptor, (flags & O_ACCMODE) == O_WRONLY, info.st_dev, info.st_ino};
    openFiles.push_back(file);
    return file;
}

// Whether an existing `name` may be emptied and written. A missing one may.
bool MayCreate(const std::string& name) {
    struct stat info;
    if (stat(name.c_str(), &info) != 0) return !FolderIsReadOnly(name) || Fail(kErrorAccessDenied);
    if (IsProtected(info)) return Fail(kErrorAccessDenied);
    return !InUse(info, false) || Fail(kErrorSharingViolation);
}

// Whether `name` is there and may be renamed or deleted.
bool MayRemove(const std::string& name, struct stat* info) {
    if (lstat(name.c_str(), info) != 0) return Fail(ErrorOf(errno, name));
    if (FolderIsReadOnly(name)) return Fail(kErrorAccessDenied);
    return !InUse(*info, false) || Fail(kErrorSharingViolation);
}

// How many of `size` bytes a transfer that suffers `effect` may move.
uint32_t Allowed(uint32_t size, FaultEffect effect) {
    if (effect == FaultEffect::kNothing) return 0;
    return effect == FaultEffect::kShort ? (size + 1) / 2 : size;
}

}  // namespace

FileHandle FileOpenForReading(const char16_t* path) {
    if (FaultStrikes(FaultPoint::kFileOpen) || !NameIsValid(path)) return nullptr;
    const std::string name = HostName(path);
    struct stat info;
    if (stat(name.c_str(), &info) == 0) {
        const bool readable = !S_ISDIR(info.st_mode) && (info.st_mode & 0444) != 0;
        if (!readable || InUse(info, true)) {
            Fail(readable ? kErrorSharingViolation : kErrorAccessDenied);
            return nullptr;
        }
    }
    return Opened(name, O_RDONLY);
}

FileHandle FileCreateForWriting(const char16_t* path) {
    if (FaultStrikes(FaultPoint::kFileCreate) || !NameIsValid(path)) return nullptr;
    const std::string name = HostName(path);
    return MayCreate(name) ? Opened(name, O_WRONLY | O_CREAT | O_TRUNC) : nullptr;
}

bool FileRead(FileHandle file, void* buffer, uint32_t size, uint32_t* read) {
    *read = 0;
    FaultEffect effect = FaultEffect::kFail;
    const bool struck = FaultStrikes(FaultPoint::kFileRead, &effect);
    if (struck && effect == FaultEffect::kFail) return false;
    if (file == nullptr || file->writing)
        return Fail(file == nullptr ? kErrorInvalidHandle : kErrorAccessDenied);
    const ssize_t got = ::read(file->descriptor, buffer, struck ? Allowed(size, effect) : size);
    if (got < 0) return Fail(ErrorOf(errno, {}));
    *read = static_cast<uint32_t>(got);
    return true;
}

bool FileWrite(FileHandle file, const void* data, uint32_t size, uint32_t* written) {
    *written = 0;
    FaultEffect effect = FaultEffect::kFail;
    const bool struck = FaultStrikes(FaultPoint::kFileWrite, &effect);
    if (struck && effect == FaultEffect::kFail) return false;
    if (file == nullptr || !file->writing)
        return Fail(file == nullptr ? kErrorInvalidHandle : kErrorAccessDenied);
    const ssize_t put = ::write(file->descriptor, data, struck ? Allowed(size, effect) : size);
    if (put < 0) return Fail(ErrorOf(errno, {}));
    *written = static_cast<uint32_t>(put);
    return true;
}

bool FileFlush(FileHandle file) {
    if (FaultStrikes(FaultPoint::kFileFlush)) return false;
    if (file == nullptr) return Fail(kErrorInvalidHandle);
    return fsync(file->descriptor) == 0 || Fail(ErrorOf(errno, {}));
}

bool FileClose(FileHandle file) {
    if (file == nullptr) return true;
    const bool struck = FaultStrikes(FaultPoint::kFileClose);
    std::erase(openFiles, file);
    const bool closed = close(file->descriptor) == 0;
    const int number = errno;
    delete file;
    if (struck) return false;
    return closed || Fail(ErrorOf(number, {}));
}

bool FileExists(const char16_t* path) {
    if (!NameIsValid(path)) return false;
    const std::string name = HostName(path);
    struct stat info;
    return stat(name.c_str(), &info) == 0 || Fail(ErrorOf(errno, name));
}

bool FileIsProtected(const char16_t* path) {
    if (!NameIsValid(path)) return false;
    struct stat info;
    return stat(HostName(path).c_str(), &info) == 0 && IsProtected(info);
}

// Here a name alone hides a file.
void FileCopyHidden(const char16_t*, const char16_t*) {}

bool FileMove(const char16_t* from, const char16_t* to) {
    if (FaultStrikes(FaultPoint::kFileMove) || !NameIsValid(from) || !NameIsValid(to)) return false;
    const std::string source = HostName(from);
    const std::string target = HostName(to);
    struct stat info;
    if (!MayRemove(source, &info)) return false;
    if (FolderIsReadOnly(target)) return Fail(kErrorAccessDenied);
    if (source != target && lstat(target.c_str(), &info) == 0) return Fail(kErrorAlreadyExists);
    return rename(source.c_str(), target.c_str()) == 0 || Fail(ErrorOf(errno, target));
}

bool FileDelete(const char16_t* path) {
    if (FaultStrikes(FaultPoint::kFileDelete) || !NameIsValid(path)) return false;
    const std::string name = HostName(path);
    struct stat info;
    if (!MayRemove(name, &info)) return false;
    if (IsProtected(info)) return Fail(kErrorAccessDenied);
    return unlink(name.c_str()) == 0 || Fail(ErrorOf(errno, name));
}

size_t HostOpenFileCount() { return openFiles.size(); }

}  // namespace nira
