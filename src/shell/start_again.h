#pragma once

// A second run of the program that is running now.
namespace shell {

// Starts this program anew with `path` as its command line and returns when it listens to other instances (or
// after ten seconds), so that a start right behind this one meets it. False with the last error set when it
// cannot be started.
bool StartAgain(const wchar_t* path);

}  // namespace shell
