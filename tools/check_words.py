#!/usr/bin/env python3
"""Words that must not stand in the project or in its history: a reader has no other paper than the project itself,
and no machine but their own. Say the reason instead."""
import re
import subprocess

import checklib

# Each pattern holds a bracket, so that no line of this file matches itself.
WORDS = re.compile(
    r"[Ss]pec[.]md|[Ss]pecification|the [s]pec\b|\bPart [1-6][.][1-9]|\bReading [0-9]|as it [s]tands|as [s]pecified|"
    r"[Ee]dge case worth|/wor[k]/[a-z.]|/far[m]/|(?i:claud[e]\b|anthropi[c]|co-authored-b[y])")


def git(root, *arguments):
    # The tree may belong to another user than the one who runs the checks.
    done = subprocess.run(["git", "-c", "safe.directory=*", "-C", str(root), *arguments], stdout=subprocess.PIPE,
                          stderr=subprocess.DEVNULL, check=False)
    return done.stdout.decode("utf-8", "replace") if done.returncode == 0 else None


def hits(text, where):
    return [f"{where}:{number}: {line.strip()}" for number, line in enumerate(text.splitlines(), 1)
            if WORDS.search(line)]


def problems(root):
    listed = git(root, "ls-files", "-z", "--cached", "--others", "--exclude-standard")
    messages = git(root, "log", "--format=%h %s%n%b", "HEAD")
    if listed is None or messages is None:
        return ["this is no git checkout: its words cannot be checked"]
    found = []
    for name in filter(None, listed.split("\0")):
        found += hits(name, "file name")
        path = root / name
        content = path.read_bytes() if path.is_file() else b""
        if b"\0" not in content[:8000]:
            found += hits(content.decode("utf-8", "replace"), name)
    return found + hits(messages, "commit messages")


if __name__ == "__main__":
    checklib.report("words", problems(checklib.ROOT))
