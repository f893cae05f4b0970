#pragma once

#include <windows.h>

// Paths as a handheld writes them, which knows one root folder `\` and no drives.
//
// Here the root folder is the person's home folder, and the drives are folders in it: `\notes.txt` lies in
// the home folder and `\C:\a` is `C:\a`. A component that is a drive restarts the path there. Paths that
// begin with two backslashes (servers, devices) are left as they are, and so is everything else.
namespace shell {

// The path for the system's file calls. The caller frees it with FreeShellText.
// Null with the last error set when memory is short.
wchar_t* DesktopPath(const wchar_t* path);

// The same with a home folder given; `home` may end in a backslash.
wchar_t* PathFromRoot(const wchar_t* path, const wchar_t* home);

// The home folder, without a backslash at its end unless it is a drive's root: the host's home folder under
// Wine, else the profile folder. The caller frees it with FreeShellText. Null with the last error set on
// failure.
wchar_t* HomeFolder();

// The DOS path of what Wine names the home folder by: `\??\Z:\home\me` or `\??\unix\home\me` gives
// `Z:\home\me`. The caller frees it with FreeShellText. Null when it has neither form.
wchar_t* DosPathOfWineHome(const wchar_t* ntPath);

}  // namespace shell
