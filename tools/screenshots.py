"""Takes the pictures of docs/screenshots/, on the screen that tools/screenshots.sh has made.

    screenshots.py FOLDER SAMPLE
"""
import contextlib
import pathlib
import subprocess
import sys
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
}


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


def take_small(folder, sample):
    """On a desktop of its own, which is a window of the screen."""
    program = subprocess.Popen(["wine", "explorer", f"/desktop=small,{SMALL}",
                                nira_driver.windows_path(nira_driver.PROGRAM), nira_driver.windows_path(sample)],
                               stdin=subprocess.DEVNULL)

    def desktop():
        found = subprocess.run(["xdotool", "search", "--name", "^small"], capture_output=True, check=False)
        return found.stdout.decode().split()

    window = nira_driver.wait_for("small desktop", desktop)[0]
    time.sleep(3)  # the program appears on its desktop, which nothing here can ask
    wait_for_stillness(window)
    subprocess.run(["import", "-window", window, str(folder / "main-small.png")], check=True)
    program.kill()
    program.wait()


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
    take_small(folder, sample)
    keeper.stdin.close()
    keeper.wait(nira_driver.TIMEOUT)


if __name__ == "__main__":
    main()
