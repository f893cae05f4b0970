// Paths as the file dialog walks through them.
//
// A folder is a path without a backslash at its end; the empty text is the root folder, which shows the
// person's home folder and the drives. So the root of a drive is `C:`, and a file of the root folder is
// `\notes.txt`. Texts returned are blocks of the local heap, owned by the caller. Running out of memory
// unwinds.
#pragma once

#include <cstddef>

namespace nira {

// `folder` + a backslash + `name`; a name that begins with two backslashes is a whole path and stays as it
// is, and in the root folder so does one that begins with one.
char16_t* JoinPath(const char16_t* folder, const char16_t* name);

// Makes a joined path plain, in place: a part that is a drive (`C:`) restarts the path there, which is how a
// whole path may be typed as a name; `.` and empty parts go, `..` takes the part before it away, `/`
// separates as a backslash does. What begins with two backslashes keeps them, and its first two parts (server
// and share); with
// `\\?\` or `\\.\` it stays as it is.
void TidyPath(char16_t* path);

// Cuts the folder at its last backslash, in place; `C:` and a server's share become the root folder, which
// stays.
void GoUp(char16_t* folder);

// The part behind the last backslash, within `path`.
const char16_t* LastPart(const char16_t* path);

// The path on disk of a tidied one: one that begins with one backslash lies in the home folder, and a name
// that the system would take for another one gets the prefix `\\?\`.
char16_t* PathForFile(const char16_t* path);

// A copy of `path` without that prefix, where it stands before a drive.
char16_t* PathForPerson(const char16_t* path);

}  // namespace nira
