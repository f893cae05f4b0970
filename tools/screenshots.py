"""Takes the pictures of docs/screenshots/, on a screen of WIDTHxHEIGHT that tools/screenshots.sh has made.

    screenshots.py FOLDER SAMPLE WIDTHxHEIGHT SUFFIX [NAME...]

makes FOLDER/NAMESUFFIX.png, all of them or the named ones.
"""
import contextlib
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "tests/e2e"))
import nira_driver  # noqa: E402
from nira_driver import key, type_text  # noqa: E402

# What a person presses for each picture, on the sample just opened.
PICTURES = {
    "main": [],
    "file-menu": ["alt+f"],
    "recent-files": ["alt+f", "f"],
    "edit-menu": ["alt+e"],
    "indentation-menu": ["alt+e", "i"],
    "selection-menu": ["alt+e", "s"],
    "navigate-menu": ["alt+n"],
    "go-to-bookmark-menu": ["alt+n", "Up", "Right", "Return", "alt+n", "Up", "Up", "Right"],
    "set-bookmark-menu": ["alt+n", "Up", "Right", "Return", "alt+n", "Up", "Right"],
    "buffers-menu": ["alt+b"],
    "undo-bar": ["x", "ctrl+z"],
    "navigate-bar": ["alt+n", "d"],
    "indent-bar": ["ctrl+shift+i"],
    "find": ["ctrl+f"],
    "find-bar": ["ctrl+f", "Return"],
    "replace": ["ctrl+h"],
    "replace-bar": ["ctrl+h", "Return"],
    "replace-list": ["ctrl+h", "Return", "ctrl+h", "alt+Down"],
    "replace-count": ["ctrl+h", "alt+a"],
    "options-format": ["alt+f", "p"],
    "options-editor": ["alt+f", "p", "ctrl+Tab"],
    "options-words": ["alt+f", "p", "ctrl+Tab", "ctrl+Tab"],
    "options-indent": ["alt+f", "p", "ctrl+shift+Tab"],
    "color-chooser": ["alt+f", "p", "Tab", "Tab", "space"],
    "font-chooser": ["alt+f", "p", "space"],
    "go-to": ["alt+n", "g"],
    "about": ["alt+f", "a"],
    "save-prompt": ["x", "ctrl+q"],
}

# The same in a folder made for them, whose names, sizes and dates are the same in every picture.
FILE_PICTURES = {
    "open-dialog": ["ctrl+o", "TEXTS", "Return", "Tab", "Tab"],
    "save-dialog": ["alt+f", "v", "Tab", "Tab"],
    "line-end-menu": ["alt+f", "v", "alt+e"],
    "create-folder": ["alt+f", "v", "alt+n"],
    "overwrite-question": ["alt+f", "v", "Return"],
}

TEXTS = pathlib.Path(tempfile.gettempdir()) / "texts"


def make_texts():
    shutil.rmtree(TEXTS, ignore_errors=True)
    sizes = {"letter.txt": 2150, "logbook.txt": 1830000, "minutes of the harbour meeting in November.txt": 48300,
             "notes.txt": 940, "shopping list.txt": 212}
    for name in ["drafts", "logbook", "recipes"]:
        (TEXTS / name).mkdir(parents=True)
    for name, size in sizes.items():
        (TEXTS / name).write_bytes(b"x" * size)
    for path in [*TEXTS.iterdir(), TEXTS]:
        os.utime(path, (1793000000, 1793000000))
    return TEXTS / "letter.txt"


def wait_for_stillness():
    """Two looks in a row are the same: what a key brings appears in steps."""
    before = None
    for _ in range(30):
        time.sleep(0.4)
        look = nira_driver.pixels()
        if look == before:
            return
        before = look


def press(keys):
    for name in keys:
        if name == "TEXTS":
            # The open dialog begins in the home folder, which differs: it is sent to the folder by its name.
            type_text(nira_driver.windows_path(TEXTS))
        else:
            key(name)
        wait_for_stillness()


def fill_recent_files():
    for number, name in enumerate(["letter.txt", "shopping list.txt", r"logbook\november.txt"]):
        nira_driver.probe("text", nira_driver.SETTINGS + r"\MRU", str(number), rf"C:\texts\{name}\\UTF-8")


def take(target, sample, keys):
    nira_driver.forget_settings()
    fill_recent_files()
    nira = nira_driver.Nira(nira_driver.windows_path(sample))
    nira.wait_title(sample.name)
    wait_for_stillness()
    press(keys)
    nira_driver.picture(target)
    nira.kill()


@contextlib.contextmanager
def desktop(size):
    """The desktop on which all programs of the prefix appear, in the corner of the screen."""
    explorer = subprocess.Popen(["wine", "explorer", f"/desktop=NIRA,{size}"], stdin=subprocess.DEVNULL)
    # Any program that comes first would make the desktop in its usual size.
    nira_driver.wait_for("desktop", lambda: subprocess.run(["xdotool", "search", "--name", "^NIRA - "],
                                                           stdout=subprocess.DEVNULL, check=False).returncode == 0, 60)
    keeper = nira_driver.keep_desktop()
    yield
    keeper.stdin.close()
    keeper.wait(nira_driver.TIMEOUT)
    explorer.terminate()


def main():
    folder, sample, size, suffix = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]), sys.argv[3], sys.argv[4]
    only = sys.argv[5:]
    with desktop(size):
        for pictures, file in ((PICTURES, sample), (FILE_PICTURES, make_texts())):
            for name, keys in pictures.items():
                if not only or name in only:
                    take(folder / f"{name}{suffix}.png", file, keys)


if __name__ == "__main__":
    main()
