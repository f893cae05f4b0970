"""The program as set-up leaves it: files of many encodings through the dialog by real clicks, to the byte."""
import shutil

import nira_driver
import pytest
from file_dialog_driver import child, click_row, name_box, open_at, save_as, wait_closed, wait_name
from nira_driver import key, type_text, wait_for, windows_path
from set_up_driver import BUILD, ENCODINGS, PROGRAM, forget, pack, run_setup, set_value, unpack, values, wine

BUILT_IN = ["ANSI", "Unicode", "Unicode Little Endian", "Unicode Big Endian", "UTF-8"]
LINE_ENDS = ["LF", "CR", "CRLF"]
MARK = (48, 150, 250)  # the color of the chosen row


@pytest.fixture(scope="module", name="installed")
def set_up(tmp_path_factory):
    """The installed program; its library is registered."""
    forget()
    folder = unpack(pack(), tmp_path_factory.mktemp("archive"))
    run_setup(folder)
    yield PROGRAM / "nira.exe"
    wine("cmd", "/c", "setup.cmd", "/remove", folder=folder)
    forget()


@pytest.fixture(name="encodings")
def listed(installed):  # pylint: disable=unused-argument
    """The list of encodings as the dialog shows it."""
    return BUILT_IN + sorted(values(ENCODINGS))


def open_list(nira, title):
    """Clicks the arrow of the encodings; the list, once it is shown."""
    box = child(nira, title, "ComboBox")
    nira_driver.click(box.right - 10, (box.top + box.bottom) // 2)
    return wait_for("list of encodings", lambda: next((one for one in nira_driver.windows() if one.kind == "ComboLBox"),
                                                      None))


def chosen_row(rows):
    """Top and height of the marked row on the screen."""
    def look():
        width, _, data = nira_driver.pixels()
        at = [y for y in range(rows.top + 1, rows.bottom - 1)
              if tuple(data[3 * (y * width + rows.left + 200):][:3]) == MARK]
        return (at[0], len(at)) if at else None
    return wait_for("marked row", look)


def click_encoding(nira, title, encodings, name):
    """Chooses an encoding that the list shows when it opens."""
    steps = encodings.index(name) - encodings.index(child(nira, title, "ComboBox").text)
    rows = open_list(nira, title)
    top, height = chosen_row(rows)
    y = top + height * steps + height // 2
    assert rows.top < y < rows.bottom, "the list does not show it"
    nira_driver.click(rows.left + 40, y)
    wait_for("encoding", lambda: child(nira, title, "ComboBox").text == name)


def choose_encoding(nira, title, encodings, name):
    """Chooses an encoding anywhere in the list: opened by a click, walked through by keys, taken by Enter."""
    open_list(nira, title)
    key("Home", *["Down"] * encodings.index(name))
    key("Return")
    wait_for("encoding", lambda: child(nira, title, "ComboBox").text == name)


def click_bar(nira, title, x):
    bar = child(nira, title, "ToolbarWindow32")
    nira_driver.click(bar.left + x, (bar.top + bar.bottom) // 2)


def click_line_end(nira, line_end):
    click_bar(nira, "Save file", 320)
    menu = wait_for("menu of line ends", lambda: next((one for one in nira_driver.windows() if one.kind == "#32768"),
                                                      None))
    height = (menu.bottom - menu.top) // len(LINE_ENDS)
    nira_driver.click(menu.left + 30, menu.top + height * LINE_ENDS.index(line_end) + height // 2)
    wait_for("end of the menu", lambda: all(one.kind != "#32768" for one in nira_driver.windows()))


TEXT = "Grüße 😀 東京\nzweite\n"
KEPT = b"\xff\xc3\n\xed\xa0\x80\xf0\x9f\n\xc0\x80"

# The file, how it is opened, what it then is; what it is saved as, and the bytes of that.
ROADS = {
    "auto, UTF-8": (TEXT.encode(), "Auto", "UTF-8 exact", "UTF-16 LE exact with mark", "CRLF",
                    b"\xff\xfe" + ("x" + TEXT).replace("\n", "\r\n").encode("utf-16-le")),
    "auto, UTF-16 without mark": ("Привет\r\nмир\r\n".encode("utf-16-be"), "Auto", "UTF-16 BE exact", "UTF-16 BE exact",
                                  "CR", "xПривет\rмир\r".encode("utf-16-be")),
    "auto, UTF-32 with mark": (TEXT.encode("utf-32"), "Auto", "UTF-32 LE exact with mark", "UTF-8 exact with mark", "LF",
                               b"\xef\xbb\xbfx" + TEXT.encode()),
    "auto, the system's page": (b"caf\xe9\r\n\x80", "Auto", "Windows-1252", "UTF-8 exact", "LF",
                                "xcafé\n€".encode()),
    "UTF-8 with invalid bytes": (KEPT, "UTF-8 exact", "UTF-8 exact", "UTF-8 exact", "LF", b"x" + KEPT),
    "UTF-16 with half a pair": (b"\xff\xfea\0\x3d\xd8\r\0\n\0", "UTF-16 LE exact", "UTF-16 LE exact with mark",
                                "UTF-16 BE exact", "LF", b"\0x\0a\xd8\x3d\0\n"),
    "code page": ("Привет\nмир\n".encode("koi8-r"), "KOI8-R", "KOI8-R", "Shift_JIS", "CR",
                  "xПривет\rмир\r".encode("shift_jis")),
}


@pytest.mark.parametrize("road", ROADS)
def test_the_whole_road_by_clicks(start, installed, encodings, tmp_path, road):
    content, chosen, found, target, line_end, expected = ROADS[road]
    (tmp_path / "old.txt").write_bytes(content)
    nira = start(program=installed)
    nira.wait_title("Untitled1")
    open_at(nira, tmp_path)
    click_row(nira, "Open file", 0)
    wait_name(nira, "Open file", "old.txt")
    (click_encoding if chosen == "Auto" else choose_encoding)(nira, "Open file", encodings, chosen)
    click_bar(nira, "Open file", 35)
    nira.wait_title("old.txt")
    type_text("x")
    nira.wait_title("old.txt *")
    save_as(nira)
    assert child(nira, "Save file", "ComboBox").text == found
    choose_encoding(nira, "Save file", encodings, target)
    click_line_end(nira, line_end)
    name = child(nira, "Save file", "Edit")
    nira_driver.click(name.left + 100, (name.top + name.bottom) // 2)
    key("ctrl+a")
    type_text("new.txt")
    click_bar(nira, "Save file", 35)
    nira.wait_title("new.txt")
    assert (tmp_path / "new.txt").read_bytes() == expected
    assert (tmp_path / "old.txt").read_bytes() == content
    # Closed and opened again from the list of recent files, it is what it was saved as.
    key("alt+b", "c")
    nira.wait_title("Untitled2")
    key("alt+f", "f", "0")
    nira.wait_title("new.txt")
    key("ctrl+s", "ctrl+q")
    assert nira.wait_exit() == 0
    assert (tmp_path / "new.txt").read_bytes() == expected


def test_under_auto_a_file_that_was_named_at_the_start_is_saved_as_it_was(start, installed, tmp_path):
    nira_driver.set_text("DefaultEncoding", "Auto")
    nira_driver.set_number("safeSave", 1)
    # Longer than what is read at a time, with characters cut by the ends of blocks.
    content = ("é😀東" * 5000 + "\n").encode() * 2
    path = tmp_path / "long.txt"
    path.write_bytes(content)
    nira = start(path, program=installed)
    nira.wait_title("long.txt")
    type_text("x")
    nira.wait_title("long.txt *")
    key("ctrl+s")
    nira.wait_title("long.txt")
    assert path.read_bytes() == b"x" + content
    assert [one.name for one in tmp_path.iterdir()] == ["long.txt"]


def test_under_auto_new_and_empty_documents_become_utf_8_without_a_mark(start, installed, tmp_path):
    nira_driver.set_text("DefaultEncoding", "Auto")
    nira_driver.set_number("bomSave", 1)
    (tmp_path / "empty.txt").write_bytes(b"")
    nira = start(tmp_path / "empty.txt", program=installed)
    nira.wait_title("empty.txt")
    type_text("a")
    nira.wait_title("empty.txt *")
    key("ctrl+s", "ctrl+n")
    nira.wait_title("Untitled2")
    type_text("b")
    nira.wait_title("Untitled2 *")
    key("ctrl+s")
    nira.wait_dialog("Save file")
    assert child(nira, "Save file", "ComboBox").text == "Auto"
    nira.choose_file("Save file", tmp_path / "new.txt")
    nira.wait_title("new.txt")
    assert (tmp_path / "empty.txt").read_bytes() == b"a"
    assert (tmp_path / "new.txt").read_bytes() == b"b"


def test_a_recent_file_whose_encoding_is_gone_is_opened_as_ansi(start, installed, encodings, tmp_path):
    (tmp_path / "old.txt").write_bytes(b"\xcf\xd2\r\n")
    nira = start(program=installed)
    nira.wait_title("Untitled1")
    open_at(nira, tmp_path)
    click_row(nira, "Open file", 0)
    choose_encoding(nira, "Open file", encodings, "KOI8-R")
    click_bar(nira, "Open file", 35)
    nira.wait_title("old.txt")
    key("alt+b", "c")
    nira.wait_title("Untitled2")
    assert nira_driver.texts(nira_driver.SETTINGS + r"\MRU")["0"].endswith(r"old.txt\\KOI8-R")
    key("ctrl+q")
    assert nira.wait_exit() == 0
    library = values(ENCODINGS)["KOI8-R"]
    wine("reg", "delete", ENCODINGS, "/v", "KOI8-R", "/f")
    try:
        nira = start(program=installed)
        nira.wait_title("Untitled1")
        key("alt+f", "f", "0")
        nira.wait_title("old.txt")
        save_as(nira)
        assert child(nira, "Save file", "ComboBox").text == "ANSI"
        key("Escape")
        wait_closed(nira)
        type_text("x")
        nira.wait_title("old.txt *")
        key("ctrl+s")
        nira.wait_title("old.txt")
        assert (tmp_path / "old.txt").read_bytes() == b"x\xcf\xd2\r\n"
    finally:
        set_value(ENCODINGS, "KOI8-R", library)


# ---- Libraries that fail

DECODER, READING = "Error initializing decoder", "Error reading file"
ENCODER, WRITING = "Error initializing encoder", "Error writing file"
LIBRARY = "test_plug_in.dll"

BAD_READERS = {"missing": (None, DECODER), "no library": ("text", DECODER), "refuses": (LIBRARY, DECODER),
               "without GetEncoder": ("test_plug_in_no_export.dll", DECODER),
               "faults when it starts": ("test_plug_in_start_faults.dll", DECODER),
               "faults in GetEncoder": (LIBRARY, DECODER), "faults in decode": (LIBRARY, READING),
               "takes too much": (LIBRARY, READING), "takes nothing": (LIBRARY, READING),
               "counts too much": (LIBRARY, READING), "uses up the stack": (LIBRARY, READING)}
BAD_WRITERS = {"missing": (None, ENCODER), "refuses": (LIBRARY, ENCODER), "faults in encode": (LIBRARY, WRITING),
               "faults in the last block": (LIBRARY, WRITING), "encodes too much": (LIBRARY, WRITING)}


@pytest.fixture(name="bad")
def registered(tmp_path):
    """bad(libraries) registers a library of each behaviour; gives the list of encodings then."""
    def register(libraries):
        for number, (behaviour, (library, _)) in enumerate(libraries.items()):
            copy = tmp_path / f"plug-in {number}.dll"
            if library == "text":
                copy.write_text("This is no library.")
            elif library:
                shutil.copy(BUILD / "tests" / library, copy)
            set_value(ENCODINGS, behaviour, windows_path(copy))
        return BUILT_IN + sorted(values(ENCODINGS))

    forget()
    yield register
    forget()


def told(nira, message):
    box = nira.wait_box("Error")
    assert message in box.texts("Static")
    nira.answer(box, "OK")


def test_libraries_that_fail_on_opening_are_told_and_cost_nothing(start, bad, tmp_path):
    encodings = bad(BAD_READERS)
    place = tmp_path / "place"
    place.mkdir()
    (place / "old.txt").write_bytes(b"old" * 10000)
    nira = start()
    nira.wait_title("Untitled1")
    type_text("mine")
    nira.wait_title("Untitled1 *")
    for behaviour, (_, message) in BAD_READERS.items():
        open_at(nira, place)
        click_row(nira, "Open file", 0)
        wait_name(nira, "Open file", "old.txt")
        choose_encoding(nira, "Open file", encodings, behaviour)
        click_bar(nira, "Open file", 35)
        told(nira, message)
        wait_closed(nira)
        assert nira.title() == "Untitled1 *", behaviour
    assert (place / "old.txt").read_bytes() == b"old" * 10000
    key("ctrl+s")
    nira.choose_file("Save file", place / "mine.txt")
    nira.wait_title("mine.txt")
    assert (place / "mine.txt").read_bytes() == b"mine"
    key("ctrl+q")
    assert nira.wait_exit() == 0


@pytest.mark.parametrize("safe_save", [0, 1])
def test_libraries_that_fail_on_saving_are_told_and_cost_nothing(opened, bad, tmp_path, safe_save):
    encodings = bad(BAD_WRITERS)
    nira_driver.set_number("safeSave", safe_save)
    nira, path = opened(b"old\r\n" * 300, "place/notes.txt")
    type_text("x")
    nira.wait_title("notes.txt *")
    for behaviour, (_, message) in BAD_WRITERS.items():
        save_as(nira)
        assert child(nira, "Save file", "ComboBox").text == "ANSI"
        assert name_box(nira, "Save file") == "notes.txt"
        choose_encoding(nira, "Save file", encodings, behaviour)
        click_bar(nira, "Save file", 35)
        nira.answer(nira.wait_box("Confirmation"), "Yes")
        told(nira, message)
        wait_closed(nira)
        assert path.read_bytes() == b"old\r\n" * 300, behaviour
        assert [one.name for one in path.parent.iterdir()] == ["notes.txt"], behaviour
    key("ctrl+q")
    nira.answer(nira.wait_box("File modified"), "Yes")
    assert nira.wait_exit() == 0
    assert path.read_bytes() == b"x" + b"old\r\n" * 300
    assert tmp_path.exists()
