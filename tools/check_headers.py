#!/usr/bin/env python3
"""Every header of src/ and plugins/ compiles by itself: with the native compiler, or with MinGW-w64 where it needs windows.h."""
import checklib

HOST = "g++"
WINDOWS = "x86_64-w64-mingw32-g++-posix"


def job(root, name):
    folder, path = name.split("/", 1)
    compiler = WINDOWS if checklib.is_windows_source(name) else HOST
    command = [compiler, "-std=c++20", "-fsyntax-only", *checklib.WARNINGS, "-DUNICODE", "-D_UNICODE",
               "-D_WIN32_WINNT=0x0601", "-D_WIN32_IE=0x0800", f"-I{root}/{folder}", "-x", "c++", "-"]
    return command, f'#include "{path}"\n'


def problems(root):
    names = checklib.files(root, ["src", "plugins"], {".h"})
    found = []
    for name, (code, output) in zip(names, checklib.run_all([job(root, name) for name in names])):
        if code != 0:
            found.append(f"{name} does not compile by itself:\n{output.rstrip()}")
    return found


if __name__ == "__main__":
    checklib.report("headers stand alone", problems(checklib.ROOT))
