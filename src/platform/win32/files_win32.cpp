#include "platform/files.h"

#include <windows.h>

#include "platform/win32/system_path.h"

namespace nira {

namespace {

HANDLE ToFile(FileHandle file) { return reinterpret_cast<HANDLE>(file); }

FileHandle OpenFile(const SystemPath& path, DWORD access, DWORD share, DWORD disposition, DWORD attributes) {
    if (path.Get() == nullptr) return nullptr;
    const HANDLE file = CreateFileW(path.Get(), access, share, nullptr, disposition, attributes, nullptr);
    return file != INVALID_HANDLE_VALUE ? reinterpret_cast<FileHandle>(file) : nullptr;
}

// A file that has these may only be emptied by who names them.
DWORD HiddenAttributes(const SystemPath& path) {
    const DWORD attributes = path.Get() != nullptr ? GetFileAttributesW(path.Get()) : INVALID_FILE_ATTRIBUTES;
    if (attributes == INVALID_FILE_ATTRIBUTES) return 0;
    return attributes & (FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
}

}  // namespace

FileHandle FileOpenForReading(const char16_t* path) {
    return OpenFile(SystemPath(path), GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING, 0);
}

FileHandle FileCreateForWriting(const char16_t* path) {
    // Windows itself refuses to empty a read-only file; Wine leaves that to the host system, which lets its
    // administrator do everything.
    if (FileIsProtected(path)) {
        SetLastError(ERROR_ACCESS_DENIED);
        return nullptr;
    }
    const SystemPath systemPath(path);
    return OpenFile(systemPath, GENERIC_WRITE, 0, CREATE_ALWAYS, HiddenAttributes(systemPath));
}

bool FileRead(FileHandle file, void* buffer, uint32_t size, uint32_t* read) {
    DWORD got = 0;
    const bool done = ReadFile(ToFile(file), buffer, size, &got, nullptr) != 0;
    *read = got;
    return done;
}

bool FileWrite(FileHandle file, const void* data, uint32_t size, uint32_t* written) {
    DWORD put = 0;
    const bool done = WriteFile(ToFile(file), data, size, &put, nullptr) != 0;
    *written = put;
    return done;
}

bool FileFlush(FileHandle file) { return FlushFileBuffers(ToFile(file)) != 0; }

bool FileClose(FileHandle file) { return file == nullptr || CloseHandle(ToFile(file)) != 0; }

bool FileExists(const char16_t* path) {
    const SystemPath systemPath(path);
    return systemPath.Get() != nullptr && GetFileAttributesW(systemPath.Get()) != INVALID_FILE_ATTRIBUTES;
}

bool FileIsProtected(const char16_t* path) {
    const SystemPath systemPath(path);
    if (systemPath.Get() == nullptr) return false;
    const DWORD attributes = GetFileAttributesW(systemPath.Get());
    return attributes != INVALID_FILE_ATTRIBUTES &&
           (attributes & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY)) != 0;
}

void FileCopyHidden(const char16_t* from, const char16_t* to) {
    const DWORD hidden = HiddenAttributes(SystemPath(from));
    const SystemPath target(to);
    if (hidden != 0 && target.Get() != nullptr)
        SetFileAttributesW(target.Get(), hidden | FILE_ATTRIBUTE_ARCHIVE);
}

bool FileMove(const char16_t* from, const char16_t* to) {
    const SystemPath source(from);
    if (source.Get() == nullptr) return false;
    const SystemPath target(to);
    return target.Get() != nullptr && MoveFileW(source.Get(), target.Get()) != 0;
}

bool FileDelete(const char16_t* path) {
    const SystemPath systemPath(path);
    return systemPath.Get() != nullptr && DeleteFileW(systemPath.Get()) != 0;
}

}  // namespace nira
