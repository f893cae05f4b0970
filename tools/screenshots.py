"""Takes the pictures of docs/screenshots/, on the screen that tools/screenshots.sh has made.

    screenshots.py FOLDER SAMPLE
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

SMALL = "240x320"

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
    "undo-bar": ["ctrl+z"],
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
}

# The same on a small screen, as `NAME-small`.
SMALL_PICTURES = ["main", "options-format", "options-editor", "options-words", "options-indent", "color-chooser"]


def shot(*window):
    done = subprocess.run(["import", "-window", *(window or ["root"]), "rgb:-"], capture_output=True, check=True)
    return done.stdout


def wait_for_stillness(*window):
    """Two looks in a row are the same: what a key brings appears in steps."""
    before = None
    for _ in range(30):
        time.sleep(0.4)
        look = shot(*window)
        if look == before:
            return
        before = look


def press(keys):
    for name in keys:
        key(name)
        wait_for_stillness()


def fill_recent_files():
    for number, name in enumerate(["letter.txt", "shopping list.txt", r"logbook\november.txt"]):
        nira_driver.probe("text", nira_driver.SETTINGS + r"\MRU", str(number), rf"C:\texts\{name}\\UTF-8")


@contextlib.contextmanager
def opened(sample):
    nira_driver.forget_settings()
    fill_recent_files()
    nira = nira_driver.Nira(nira_driver.windows_path(sample))
    nira.wait_title(sample.name)
    wait_for_stillness()
    yield nira
    nira.kill()


def take_save_prompt(folder, sample):
    with opened(sample) as nira:
        type_text("x")
        nira.wait_title(sample.name + " *")
        key("ctrl+q")
        nira.wait_box("File modified")
        wait_for_stillness()
        nira_driver.picture(folder / "save-prompt.png")


def make_texts():
    """A folder to look into, with the same names, sizes and dates in every picture."""
    place = pathlib.Path(tempfile.gettempdir()) / "texts"
    shutil.rmtree(place, ignore_errors=True)
    sizes = {"letter.txt": 2150, "logbook.txt": 1830000, "minutes of the harbour meeting in November.txt": 48300,
             "notes.txt": 940, "shopping list.txt": 212}
    for name in ["drafts", "logbook", "recipes"]:
        (place / name).mkdir(parents=True)
    for name, size in sizes.items():
        (place / name).write_bytes(b"x" * size)
    for path in [*place.iterdir(), place]:
        os.utime(path, (1793000000, 1793000000))
    return place / "letter.txt"


# The file dialogs and what they open, by the keys that lead there from the text.
FILE_DIALOGS = {
    "open-dialog": ["ctrl+o"],
    "save-dialog": ["alt+f", "v", "Tab", "Tab"],
    "line-end-menu": ["alt+f", "v", "alt+e"],
    "create-folder": ["alt+f", "v", "alt+n"],
    "overwrite-question": ["alt+f", "v", "Return"],
}


def take_file_dialogs(folder):
    text = make_texts()
    for name, keys in FILE_DIALOGS.items():
        # The open dialog begins in the home folder, which differs: it is sent to the folder by its name.
        path = nira_driver.windows_path(text.parent) if name == "open-dialog" else ""
        with opened(text):
            press(keys)
            if path:
                type_text(path)
                press(["Return", "Tab", "Tab"])
            nira_driver.picture(folder / f"{name}.png")
        take_small(folder, text, name, keys, path)


def take_small(folder, sample, name, keys, path=""):
    """On a desktop of its own, which is a window of the screen; `path` is typed into what the keys open."""
    program = subprocess.Popen(["wine", "explorer", f"/desktop=small-{name},{SMALL}",
                                nira_driver.windows_path(nira_driver.PROGRAM), nira_driver.windows_path(sample)],
                               stdin=subprocess.DEVNULL)

    def desktop():
        found = subprocess.run(["xdotool", "search", "--name", f"^small-{name}"], capture_output=True, check=False)
        return found.stdout.decode().split()

    window = nira_driver.wait_for("small desktop", desktop)[0]
    # The program appears on its desktop, which nothing here can ask: an empty one has a single colour.
    nira_driver.wait_for("text", lambda: len(set(shot(window))) > 8, 30)
    time.sleep(1)
    wait_for_stillness(window)
    for one in keys:
        key(one)
        wait_for_stillness(window)
    if path:
        type_text(path)
        key("Return", "Tab", "Tab")
        wait_for_stillness(window)
    subprocess.run(["import", "-window", window, str(folder / f"{name}-small.png")], check=True)
    # Killed, the desktop would leave the program behind. A question of Yes and No knows no Escape.
    key(*(["n"] if name == "overwrite-question" else []), *["Escape"] * 3, "ctrl+q")
    program.wait(nira_driver.TIMEOUT)


def main():
    folder, sample = map(pathlib.Path, sys.argv[1:])
    keeper = nira_driver.keep_desktop()
    for name, keys in PICTURES.items():
        with opened(sample):
            if name == "undo-bar":
                type_text("x")
            press(keys)
            nira_driver.picture(folder / f"{name}.png")
    take_save_prompt(folder, sample)
    for name in SMALL_PICTURES:
        take_small(folder, sample, name, PICTURES[name])
    take_file_dialogs(folder)
    keeper.stdin.close()
    keeper.wait(nira_driver.TIMEOUT)


if __name__ == "__main__":
    main()
