"""What the check_*.py programs share: finding files, blanking comments, running commands, reporting."""
import concurrent.futures
import os
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
WARNINGS = ["-Wall", "-Wextra", "-Wpedantic", "-Wconversion", "-Werror"]


def files(root, folders, suffixes):
    """Every file below the folders with one of the suffixes, as sorted paths relative to root with / between."""
    found = []
    for folder in folders:
        for path in (pathlib.Path(root) / folder).rglob("*"):
            if path.suffix in suffixes and path.is_file():
                found.append(path.relative_to(root).as_posix())
    return sorted(found)


def read(root, name):
    return (pathlib.Path(root) / name).read_text(encoding="utf-8", errors="replace")


def is_windows_source(name):
    """Whether the file may include windows.h: by its suffix, or by lying in one of the two folders."""
    return name.endswith("_win.cpp") or name.startswith(("src/platform/win32/", "src/shell/"))


NOT_CODE = re.compile(
    r'//[^\n]*|/\*.*?\*/|R"(?P<tag>[^(\s]*)\(.*?\)(?P=tag)"|"(?:\\.|[^"\\\n])*"|(?<![0-9A-Fa-f])\'(?:\\.|[^\'\\\n])+\'',
    re.DOTALL)


def code_only(text):
    """The text with comments emptied and literals cut to their quotes; every line keeps its number."""
    def blank(match):
        piece = match.group(0)
        lines = "\n" * piece.count("\n")
        return ('""' if piece[0] in "\"R" else "0" if piece[0] == "'" else " ") + lines
    return NOT_CODE.sub(blank, text)


def run_all(jobs):
    """Runs (command, input) pairs, as many at once as there are processors; (exit code, output) in their order."""
    def one(job):
        command, text = job
        done = subprocess.run(command, input=text, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                              check=False)
        return done.returncode, done.stdout
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        return list(pool.map(one, jobs))


def report(what, problems):
    """Ends the program: one line when all is well, else each problem on a line of its own."""
    for problem in problems:
        print(problem)
    print(f"{what}: {len(problems)} problems" if problems else f"{what}: OK")
    sys.exit(1 if problems else 0)
