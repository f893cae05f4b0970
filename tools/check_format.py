#!/usr/bin/env python3
"""Every C++ file is laid out as .clang-format says. `clang-format -i FILE` mends it."""
import re

import checklib


def summary(output):
    """The lines that clang-format would change; its own output repeats each of them in full."""
    lines = sorted({int(line) for line in re.findall(r":(\d+):\d+: (?:error|warning): code should be", output)})
    return "clang-format would change lines " + ", ".join(map(str, lines)) if lines else output.rstrip()


def problems(root):
    names = checklib.files(root, ["src", "plugins", "tests", "fuzz", "bench"], {".h", ".cpp"})
    jobs = [(["clang-format", "--dry-run", "-Werror", str(root / name)], "") for name in names]
    return [f"{name}: {summary(output)}" for name, (code, output) in zip(names, checklib.run_all(jobs)) if code != 0]


if __name__ == "__main__":
    checklib.report("format", problems(checklib.ROOT))
