#!/usr/bin/env python3
"""clang-tidy, and with it clang's own warnings, over the portable sources and the native tests.

Slow, so a clean result is remembered outside the tree, under a name made of everything it depends on: the
preprocessed source with its macros and comments, the configuration, and the version of clang-tidy.
"""
import hashlib
import os
import pathlib
import subprocess

import checklib

CACHE = pathlib.Path(os.environ.get("XDG_CACHE_HOME") or pathlib.Path.home() / ".cache") / "nira" / "tidy"


def flags(root):
    return ["-std=c++20", *(flag for flag in checklib.WARNINGS if flag != "-Werror"), f"-I{root}/src", f"-I{root}/plugins",
            f"-I{root}/tests", "-isystem", "/usr/src/googletest/googletest/include"]


def sources(root):
    names = checklib.files(root, ["src", "plugins", "tests/host"], {".cpp"})
    return [name for name in names if not checklib.is_windows_source(name)]


def keys(root, names):
    """For each source the name of its remembered result; None where the preprocessor failed."""
    version = subprocess.run(["clang-tidy", "--version"], stdout=subprocess.PIPE, text=True, check=True).stdout
    basis = checklib.read(root, ".clang-tidy") + version + " ".join(checklib.WARNINGS)
    jobs = [(["g++", "-E", "-C", "-P", "-dD", *flags(root), str(root / name)], "") for name in names]
    return [hashlib.sha256((basis + name + output).encode()).hexdigest() if code == 0 else None
            for name, (code, output) in zip(names, checklib.run_all(jobs))]


def problems(root, cache=CACHE):
    names = sources(root)
    todo = [(name, key) for name, key in zip(names, keys(root, names)) if key is None or not (cache / key).exists()]
    jobs = [(["clang-tidy", "--quiet", f"--config-file={root}/.clang-tidy", "--warnings-as-errors=*",
              str(root / name), "--", *flags(root)], "") for name, _ in todo]
    found = []
    cache.mkdir(parents=True, exist_ok=True)
    for (name, key), (code, output) in zip(todo, checklib.run_all(jobs)):
        if code != 0:
            told = [line for line in output.splitlines() if not line.endswith(" warnings generated.")]
            found.append("\n".join([f"{name}:", *told]))
        elif key:
            (cache / key).touch()
    return found


if __name__ == "__main__":
    checklib.report("clang-tidy", problems(checklib.ROOT))
