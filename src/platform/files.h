// Files on disk, by full path.
//
// Every failing call leaves the reason in the system's last error (platform/messages.h). Paths follow the
// desktop's mapping of the root folder: a path beginning with one backslash lies in the user's home folder.
#pragma once

#include <cstdint>

#include "platform/handles.h"

namespace nira {

// Opens an existing file for reading, letting others read it meanwhile. Null on failure (missing, a folder,
// locked).
FileHandle FileOpenForReading(const char16_t* path);

// Creates the file, emptying one that is there, and shares it with nobody. Null on failure.
FileHandle FileCreateForWriting(const char16_t* path);

// Reads up to `size` bytes; *read = 0 with a true result is the end of the file.
bool FileRead(FileHandle file, void* buffer, uint32_t size, uint32_t* read);

// Writes up to `size` bytes; *written may be less. A true result with *written = 0 is possible and means no
// progress.
bool FileWrite(FileHandle file, const void* data, uint32_t size, uint32_t* written);

// Forces what was written onto the disk.
bool FileFlush(FileHandle file);

// False when the system reports that closing failed. Null is ignored (true).
bool FileClose(FileHandle file);

// True when anything, file or folder, has this name.
bool FileExists(const char16_t* path);

// True when this name is a read-only file's or a folder's, neither of which may be overwritten.
bool FileIsProtected(const char16_t* path);

// Hides `to` in the ways in which `from` is hidden, where there are such.
void FileCopyHidden(const char16_t* from, const char16_t* to);

// Renames; fails when `to` exists.
bool FileMove(const char16_t* from, const char16_t* to);

bool FileDelete(const char16_t* path);

}  // namespace nira
