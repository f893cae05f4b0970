#!/usr/bin/env python3
"""Include order: tools/include_order.txt lists every stem of src/ once, lowest first; a stem's files include only
stems above their own line, and their own header. So modules form no cycle.

`foo_win.cpp` belongs to the stem `foo` when there is a `foo.h`. A source in platform/win32/ or platform/host/ belongs
to the platform header it implements, unless the list names it as a stem of its own; so do private headers there.
"""
import pathlib
import re

import checklib

INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*"([^"]+)"', re.MULTILINE)
SYSTEM = re.compile(r"platform/(?:win32|host)/(.+?)(?:_win32|_host)?$")


def stem_of(name, headers, listed):
    """The stem of a file, given without `src/`; `headers` holds the stems that have a header."""
    stem = name[:name.rindex(".")]
    if stem in headers or stem in listed:
        return stem
    if stem.endswith("_win") and stem[:-4] in headers:
        return stem[:-4]
    system = SYSTEM.match(stem)
    if system and "platform/" + system.group(1) in headers:
        return "platform/" + system.group(1)
    return stem


def read_order(root):
    lines = (line.split("#")[0].strip() for line in checklib.read(root, "tools/include_order.txt").splitlines())
    return [line for line in lines if line]


def layer_problem(name, target):
    """The two layer rules that the order alone does not express."""
    if name.startswith(("engine/", "view/")) and target.startswith("app/") and not target.startswith("app/services/"):
        return "calls up into app/; report news through EditorEvents"
    if name.startswith("shell/") and not target.startswith(("shell/", "base/", "platform/")):
        return "the stand-in shell knows nothing of the application"
    return None


def file_problems(root, name, rank, headers):
    own = stem_of(name, headers, rank)
    for target in INCLUDE.findall(checklib.read(root, "src/" + name)):
        where = f'src/{name}: "{target}":'
        if not (pathlib.Path(root) / "src" / target).is_file():
            yield f"{where} no such file below src/"
            continue
        stem = stem_of(target, headers, rank)
        if stem != own and own in rank and rank.get(stem, -1) >= rank[own]:
            yield f"{where} {stem} is not above {own} in tools/include_order.txt"
        layer = layer_problem(name, target)
        if layer:
            yield f"{where} {layer}"


def problems(root):
    names = [name[4:] for name in checklib.files(root, ["src"], {".h", ".cpp"})]
    headers = {name[:-2] for name in names if name.endswith(".h")}
    order = read_order(root)
    rank = {stem: line for line, stem in enumerate(order)}
    stems = {stem_of(name, headers, rank) for name in names}
    found = [f"tools/include_order.txt: {stem} is listed more than once" for stem in sorted(rank)
             if order.count(stem) > 1]
    found += [f"tools/include_order.txt: {stem} is missing" for stem in sorted(stems - set(order))]
    found += [f"tools/include_order.txt: {stem} has no file in src/" for stem in sorted(set(order) - stems)]
    for name in names:
        found += file_problems(root, name, rank, headers)
    return found


if __name__ == "__main__":
    checklib.report("include order", problems(checklib.ROOT))
