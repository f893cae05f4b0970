"""Drives the real nira.exe under Wine as a person does: keys, the pointer, and looking at what its windows say.

The screen (DISPLAY, 480 x 640), the Wine prefix (WINEPREFIX, with a Wine desktop of that size) and its server are set
up once, by ./test; a test only starts the program. Every wait ends as soon as what it waits for is there, and fails
after TIMEOUT seconds with what the windows showed instead.
"""
import contextlib
import os
import pathlib
import re
import select
import subprocess
import tempfile
import threading
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
PROGRAM = ROOT / "build/windows/nira.exe"
PROBE = ROOT / "build/windows/tests/nira_probe.exe"
FAILURES = ROOT / "build/e2e-failures"
SETTINGS = r"Software\NIRA"
TIMEOUT = 15


class Window:
    """A visible window as the probe saw it. `children` are its descendants, in order from the front."""

    def __init__(self, line):
        fields = line.split("\t")
        self.handle, self.parent, self.kind = fields[:3]
        self.left, self.top, self.right, self.bottom, self.enabled = map(int, fields[3:8])
        self.text = re.sub(r"\\(.)", lambda hit: {"t": "\t", "n": "\n", "r": "\r"}.get(hit[1], hit[1]), fields[8])
        self.children = []

    def texts(self, kind):
        return [child.text for child in self.children if child.kind == kind]

    def __repr__(self):
        return f"{self.kind} '{self.text}' {[child.text for child in self.children if child.text]}"


class Observer:
    """A probe that stays and answers questions, which starting a program for each would make a hundred times as long."""

    def __init__(self):
        self.process = None
        self.turn = threading.Lock()

    def start(self):
        self.process = subprocess.Popen(["wine", str(PROBE), "serve"], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                        stderr=subprocess.DEVNULL, bufsize=0)
        return self.process

    def ask(self, arguments):
        """The exit code and the output, or None when nothing came in time."""
        line = "\t".join(re.sub(r"[\\\t]", r"\\\g<0>", argument) for argument in arguments)
        self.process.stdin.write(line.encode() + b"\n")
        answer = b""
        end = time.monotonic() + TIMEOUT
        while not (last := re.search(rb"^\.(\d+)\r?\n\Z", answer, re.MULTILINE)):
            if not select.select([self.process.stdout], [], [], max(0, end - time.monotonic()))[0]:
                return None
            answer += (got := os.read(self.process.stdout.fileno(), 65536))
            if not got:
                return None
        return int(last[1]), answer[:last.start()].decode().replace("\r\n", "\n")


OBSERVER = Observer()


class MenuItem:
    """An item of an open pop-up. `states` are of grayed, checked, radio (its mark is a dot) and pop-up (it opens one);
    a tab of the text, in front of a key, is shown as "|"."""

    def __init__(self, line):
        command, states, self.text = line.split("\t")
        self.command, self.states = int(command), set(states.split())

    def __repr__(self):
        return f"{self.command} {sorted(self.states)} '{self.text}'"


def keep_desktop():
    """Starts the observer, which holds the Wine desktop open between programs; it ends when the standard input of what
    this returns is closed."""
    return OBSERVER.start()


def run_probe(*arguments):
    """The exit code and the output of a probe of its own."""
    # Into a file: a process that Wine starts beside the probe would hold a pipe open beyond its end.
    with tempfile.TemporaryFile() as output:
        done = subprocess.run(["wine", str(PROBE), *arguments], stdin=subprocess.DEVNULL, stdout=output,
                              stderr=output, timeout=TIMEOUT, check=False)
        output.seek(0)
        return done.returncode, output.read().decode().replace("\r\n", "\n")


def probe(*arguments):
    # Another thread may be waiting for an answer.
    if OBSERVER.process and OBSERVER.turn.acquire(blocking=False):
        try:
            answer = OBSERVER.ask(arguments)
        finally:
            OBSERVER.turn.release()
    else:
        answer = run_probe(*arguments)
    assert answer and answer[0] == 0, (arguments, answer)
    return answer[1]


def windows():
    """The visible top-level windows of the Wine desktop, the front one first."""
    tops = []
    for line in probe("windows").splitlines():
        window = Window(line)
        if window.parent == "0":
            tops.append(window)
        else:
            tops[-1].children.append(window)
    return tops


def menu():
    """The items of the pop-up in front; none while no pop-up is open."""
    return [MenuItem(line) for line in probe("menu").splitlines()]


def open_menu(*keys):
    """Opens a pop-up by these keys and gives its items by their commands; nested pop-ups by their texts."""
    before = [repr(item) for item in menu()]
    key(*keys)

    def look():
        items = menu()
        return items if items and [repr(item) for item in items] != before else None
    items = wait_for(f"pop-up of {keys}", look)
    return {item.command or item.text: item for item in items if item.command or "pop-up" in item.states}


def forget_settings():
    probe("forget", SETTINGS)


def set_number(name, value):
    probe("number", SETTINGS, name, str(value))


def set_text(name, value):
    probe("text", SETTINGS, name, value)


def set_value(key_name, name, kind, data):
    """A value of any type, also one that no program would write."""
    probe("value", key_name, name, str(kind), data.hex())


def texts(key_name):
    """The text values of a registry key, as {name: text}."""
    return {name: data.decode("utf-16-le").rstrip("\0") for name, (kind, data) in values(key_name).items() if kind == 1}


def values(key_name):
    """All values of a registry key, as {name: (type, bytes)}."""
    fields = (line.split("\t") for line in probe("values", key_name).splitlines())
    return {name: (int(kind), bytes.fromhex(data)) for name, kind, data in fields}


def windows_path(path):
    """The name of a file of this system for a Windows program."""
    return "Z:" + os.path.abspath(path).replace("/", "\\")


@contextlib.contextmanager
def held(path):
    """Another program has the file or folder open and shares it with nobody."""
    holder = subprocess.Popen(["wine", str(PROBE), "hold", windows_path(path)],
                              stdin=subprocess.PIPE, stdout=subprocess.PIPE)
    try:
        assert holder.stdout.readline().strip() == b"held"
        yield
    finally:
        holder.stdin.close()
        holder.wait(TIMEOUT)


def wait_for(what, look, timeout=TIMEOUT):
    """The first true result of look(); fails with `what` when there is none in time."""
    end = time.monotonic() + timeout
    while True:
        found = look()
        if found:
            return found
        assert time.monotonic() < end, f"no {what} within {timeout} s; on the desktop: {windows()}"
        time.sleep(0.02)


def key(*names):
    """Presses keys one after the other, named as xdotool names them: "ctrl+s", "Return", "BackSpace"."""
    subprocess.run(["xdotool", "key", *names], check=True)


def type_text(text):
    subprocess.run(["xdotool", "type", "--", text], check=True)


def click(x, y):
    # Pressed at once after the move, a button now and then misses the press.
    subprocess.run(["xdotool", "mousemove", str(x), str(y), "sleep", "0.1", "click", "1"], check=True)


def middle(bar, command):
    """The middle of the button of that command on a bar."""
    left, top, right, bottom = map(int, probe("button", bar.handle, str(command)).split())
    return (left + right) // 2, (top + bottom) // 2


def tap(bar, command):
    click(*middle(bar, command))


def pixels():
    """The screen now, as (width, height, bytes in the order red, green, blue)."""
    shot = subprocess.run(["import", "-window", "root", "-depth", "8", "ppm:-"], capture_output=True, check=True).stdout
    _, size, _, data = shot.split(b"\n", 3)
    width, height = map(int, size.split())
    return width, height, data


def picture(path):
    path.parent.mkdir(parents=True, exist_ok=True)
    subprocess.run(["import", "-window", "root", str(path)], check=False)


class Nira:
    """One running nira.exe."""

    window_class = "NIRA"

    def __init__(self, *arguments, cwd=None, program=PROGRAM):
        self.process = subprocess.Popen(["wine", str(program), *arguments], cwd=cwd, stdin=subprocess.DEVNULL)

    # ---- Looking

    def window(self):
        """The main window, or None while it is not shown."""
        return next((window for window in windows() if window.kind == self.window_class), None)

    def title(self):
        window = self.window()
        return window.text if window else None

    def bar(self):
        """The bar in sight."""
        bars = [child for child in self.window().children if child.kind == "ToolbarWindow32"]
        assert len(bars) == 1, bars
        return bars[0]

    def next_bar(self, before):
        """The bar in sight, once it is another one than `before`."""
        return wait_for("another bar", lambda: (now := self.bar()).handle != before.handle and now)

    def wait_title(self, title):
        try:
            wait_for(f"title '{title}'", lambda: self.title() == title)
        except AssertionError as error:
            # None while it runs: a program that ended by itself looks the same on the screen as one that hangs.
            raise AssertionError(f"{error}; exit code: {self.process.poll()}") from error

    def is_running(self):
        return self.process.poll() is None

    # ---- Message boxes

    def wait_box(self, title):
        """The message box of that title, once it can be answered."""
        def look():
            boxes = [window for window in windows() if window.kind == "#32770" and window.text == title]
            return boxes[0] if boxes and boxes[0].texts("Button") else None
        return wait_for(f"box '{title}'", look)

    def no_box(self):
        return not any(window.kind == "#32770" for window in windows())

    def answer(self, box, label):
        """Clicks the box's button of that label and waits until the box is gone."""
        buttons = {child.text.replace("&", ""): child for child in box.children if child.kind == "Button"}
        button = buttons[label]
        click((button.left + button.right) // 2, (button.top + button.bottom) // 2)
        wait_for(f"end of box '{box.text}'", lambda: all(window.handle != box.handle for window in windows()))

    # ---- Dialogs

    def dialog(self, title):
        """The visible dialog of that title, or None."""
        return next((window for window in windows() if window.kind == "#32770" and window.text == title), None)

    def wait_dialog(self, title):
        return wait_for(f"dialog '{title}'", lambda: self.dialog(title))

    def choose_file(self, title, path):
        """Types a name into the file dialog of that title, where the name's box has the keyboard, and accepts it."""
        self.wait_dialog(title)
        key("ctrl+a")
        type_text(path if isinstance(path, str) else windows_path(path))
        key("Return")

    # ---- Ending

    def click_close(self):
        """Clicks the close button of the frame, at the right end of the caption."""
        window = self.window()
        click(window.right - 14, window.top + 14)

    def wait_exit(self):
        return self.process.wait(TIMEOUT)

    def kill(self):
        if self.is_running():
            self.process.kill()
            self.process.wait()
            # Its windows stay a moment longer than itself; the next start would take them for a running NIRA.
            wait_for("end of the killed program", lambda: self.window() is None)
