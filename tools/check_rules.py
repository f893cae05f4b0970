#!/usr/bin/env python3
"""House rules for src/ and plugins/ that a pattern can see: portable files stay portable, headers are guarded, one place throws."""
import re

import checklib

WINDOWS_H = re.compile(r"^[ \t]*#[ \t]*include[ \t]*[<\"](?:windows|windef|winbase|winuser|wingdi|commctrl|commdlg|"
                       r"shellapi|objbase|tchar)\.h", re.MULTILINE | re.IGNORECASE)
HEAVY = re.compile(r"^[ \t]*#[ \t]*include[ \t]*<(iostream|fstream|sstream|filesystem|thread|future|regex|locale)>",
                   re.MULTILINE)
CONDITIONAL = re.compile(r"^[ \t]*#[ \t]*(?:if|ifdef|ifndef)\b", re.MULTILINE)
EXCEPTION = re.compile(r"\b(?:try|catch|throw)\b")
VIRTUAL = re.compile(r"\bvirtual\b")


def line_of(text, match):
    return text.count("\n", 0, match.start()) + 1


def rule_hits(name, text, code):
    """(match, what it breaks) for every rule that concerns one file alone."""
    if not checklib.is_windows_source(name):
        yield from ((hit, "portable files and headers include no Windows header") for hit in WINDOWS_H.finditer(text))
    if not name.startswith(("src/platform/", "src/shell/")):
        yield from ((hit, "no conditional compilation outside platform/ and shell/")
                    for hit in CONDITIONAL.finditer(code))
    if not name.startswith(("src/platform/host/", "plugins/codecs/host/")):
        yield from ((hit, f"<{hit.group(1)}> makes the program too large") for hit in HEAVY.finditer(text))
    yield from ((hit, "no virtual functions; choose the implementation when linking")
                for hit in VIRTUAL.finditer(code))


def problems(root):
    found = []
    throwing = {}
    for name in checklib.files(root, ["src", "plugins"], {".h", ".cpp"}):
        text = checklib.read(root, name)
        code = checklib.code_only(text)
        found += [f"{name}:{line_of(part, hit)}: {why}" for part in (text,) for hit, why in rule_hits(name, text, code)]
        if name.endswith(".h") and name != "src/resources/resource.h" and "#pragma once" not in text:
            found.append(f"{name}:1: no #pragma once")
        hits = list(EXCEPTION.finditer(code))
        if hits:
            throwing[name] = line_of(code, hits[0])
    stems = {re.sub(r"(_win)?\.\w+$", "", name) for name in throwing}
    if len(stems) > 1:
        found += [f"{name}:{line}: try, catch and throw stand in the guard of the memory services alone"
                  for name, line in throwing.items() if not name.startswith("src/app/services/")]
    return found


if __name__ == "__main__":
    checklib.report("house rules", problems(checklib.ROOT))
