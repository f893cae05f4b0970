#pragma once

#include <windows.h>

// The command line of a desktop, turned into what a handheld passes: one path and nothing else.
namespace shell {

// Stores in `*path` the file named on a command line (without the program's own name), absolute and unquoted:
// - a line that begins with a quote names its first argument, with the usual rules for quotes and
// backslashes, but a
//   quote that ends the line always closes, so that "C:\folder\" is a folder;
// - any other line is one path as a whole, with the spaces in it; pairs of quotes in it are taken out;
// - an empty line gives an empty path; a relative path counts from the current folder. Any length is allowed.
// A path on a drive that the system would change, for a device of that name or a last dot or blank, gets the
// prefix that keeps it as it is when such a file exists.
// The caller frees `*path` with FreeShellText. False with the last error set, and `*path` null, on failure.
bool CommandLinePath(const wchar_t* commandLine, wchar_t** path);

// The first half of it: the path as written, unquoted and without blanks at its ends. `path` has room for the
// whole command line and its NUL.
void UnquoteCommandLine(const wchar_t* commandLine, wchar_t* path);

}  // namespace shell
