#pragma once

#include <windows.h>

// Names that the system does not take as they are written.
//
// It takes `nul.txt` for a device and drops the dot or blank at the end of a name, so that a text would be
// saved to nowhere or over another file. Folders of other systems hold such files all the same; the prefix
// `\\?\` reaches them.
namespace shell {

// Where something of exactly the name `path` exists and the system would change the name: the path with the
// prefix, to be freed with FreeShellText. Null otherwise, for a path that is no plain path on a drive, and
// when memory is short.
wchar_t* ExactPath(const wchar_t* path);

// True when the system takes `path` for a device.
bool NamesDevice(const wchar_t* path);

}  // namespace shell
