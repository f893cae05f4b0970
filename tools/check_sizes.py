#!/usr/bin/env python3
"""Sizes a reader can hold: files of at most 600 lines, functions of at most 80, 9 of 10 under 30.

Functions are found by their braces: a body is a brace that follows a closing parenthesis outside any other body.
"""
import re

import checklib

FILE_LIMIT = 600
FUNCTION_LIMIT = 80
USUAL_LIMIT = 30

HEAD = re.compile(r"\)\s*(?:const|noexcept|override|final|->[\w\s:<>*&]+|:[^:][^;]*)?\s*$")
CONTAINER = re.compile(r"\b(?:namespace|class|struct|union|enum|extern)\b[^()=;]*$")


def functions(text):
    """(name, first line, lines from the opening to the closing brace) of every function."""
    code = re.sub(r"^[ \t]*#(?:\\\n|[^\n])*", lambda hit: "\n" * hit.group(0).count("\n"), checklib.code_only(text),
                  flags=re.MULTILINE)
    found = []
    kinds = []  # of the braces that are open: 'container', 'other' or (name, line)
    start = 0
    line = 1
    for place, char in enumerate(code):
        if char == "\n":
            line += 1
        elif char == "{":
            kinds.append(kind_of(code[start:place], kinds, line))
            start = place + 1
        elif char == "}" and kinds:
            kind = kinds.pop()
            if isinstance(kind, tuple):
                found.append((*kind, line - kind[1] + 1))
            start = place + 1
        elif char == ";":
            start = place + 1
    return found


def kind_of(head, kinds, line):
    if any(kind != "container" for kind in kinds):
        return "other"
    if CONTAINER.search(head):
        return "container"
    if HEAD.search(head):
        name = re.search(r"([~\w:]+)\s*\(", head)
        return (name.group(1) if name else "?", line)
    return "other"


def problems(root):
    found = []
    counted = []
    for name in checklib.files(root, ["src", "plugins", "tests", "fuzz", "bench"], {".h", ".cpp"}):
        text = checklib.read(root, name)
        length = text.count("\n")
        if length > FILE_LIMIT:
            found.append(f"{name}: {length} lines; a file has at most {FILE_LIMIT}")
        for function, line, lines in functions(text):
            if lines > FUNCTION_LIMIT:
                found.append(f"{name}:{line}: {function} has {lines} lines; a function has at most {FUNCTION_LIMIT}")
            if name.startswith(("src/", "plugins/")):
                counted.append((lines, name, line, function))
    long = sorted((entry for entry in counted if entry[0] >= USUAL_LIMIT), reverse=True)
    if len(long) * 10 > len(counted):
        found.append(f"{len(long)} of {len(counted)} functions have {USUAL_LIMIT} lines or more; 1 in 10 may. "
                     "The longest:")
        found += [f"  {name}:{line}: {function}, {lines} lines" for lines, name, line, function in long[:10]]
    return found


if __name__ == "__main__":
    checklib.report("sizes", problems(checklib.ROOT))
