#!/usr/bin/env python3
"""Every C++ file is laid out as .clang-format says. `clang-format -i FILE` mends it."""
import checklib


def problems(root):
    names = checklib.files(root, ["src", "plugins", "tests", "fuzz", "bench"], {".h", ".cpp"})
    jobs = [(["clang-format", "--dry-run", "-Werror", str(root / name)], "") for name in names]
    return [f"{name}:\n{output.rstrip()}" for name, (code, output) in zip(names, checklib.run_all(jobs)) if code != 0]


if __name__ == "__main__":
    checklib.report("format", problems(checklib.ROOT))
