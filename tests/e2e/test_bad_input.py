"""What nobody wishes for: files that are gone, held or read-only, broken lists, a broken program."""
import struct

import nira_driver
import pytest
from nira_driver import held, key, type_text

RECENT = nira_driver.SETTINGS + r"\MRU"


def change(nira, title):
    type_text("x")
    nira.wait_title(title + " *")


def error(nira, text):
    box = nira.wait_box("Error")
    assert text in box.texts("Static")
    nira.answer(box, "OK")


# ---- Saving


def test_a_file_deleted_meanwhile_is_written_anew(opened):
    nira, path = opened(b"one\r\n")
    change(nira, "notes.txt")
    path.unlink()
    key("ctrl+s")
    nira.wait_title("notes.txt")
    assert path.read_bytes() == b"xone\r\n"


def test_a_file_held_by_another_program_stays_and_so_does_the_text(opened):
    nira, path = opened(b"one\r\n")
    change(nira, "notes.txt")
    with held(path):
        key("ctrl+s")
        error(nira, "Error writing file")
        # The text exists nowhere else now: leaving asks, and goes on asking while it cannot be saved.
        key("ctrl+q")
        nira.answer(nira.wait_box("File modified"), "Yes")
        error(nira, "Error writing file")
        assert nira.is_running()
    assert path.read_bytes() == b"one\r\n"
    key("ctrl+q")
    nira.answer(nira.wait_box("File modified"), "Yes")
    assert nira.wait_exit() == 0
    assert path.read_bytes() == b"xone\r\n"


def test_save_all_writes_the_other_files_when_one_cannot_be_written(opened, start, tmp_path):
    nira, first = opened(b"one\r\n")
    change(nira, "notes.txt")
    second = tmp_path / "b.txt"
    second.write_bytes(b"two\r\n")
    assert start(second).wait_exit() == 0
    nira.wait_title("b.txt")
    change(nira, "b.txt")
    with held(first):
        key("alt+f", "l")
        error(nira, "Error writing file")
        nira.wait_title("b.txt")
    assert [first.read_bytes(), second.read_bytes()] == [b"one\r\n", b"xtwo\r\n"]


def test_a_path_of_three_hundred_characters(opened):
    name = "/".join(["folder" * 20, "Ordner" * 20, "n" * 60 + ".txt"])
    nira, path = opened(b"one\r\n", name)
    assert len(str(path)) > 300
    change(nira, path.name)
    key("ctrl+s")
    nira.wait_title(path.name)
    assert path.read_bytes() == b"xone\r\n"
    key("alt+b", "c")
    nira.wait_title("Untitled2")
    key("alt+f", "f", "0")
    nira.wait_title(path.name)


def test_a_write_protected_file_stays_and_so_does_the_text(opened):
    nira, path = opened(b"one\r\n")
    path.chmod(0o444)
    change(nira, "notes.txt")
    key("ctrl+s")
    error(nira, "Error writing file")
    assert path.read_bytes() == b"one\r\n"
    path.chmod(0o644)
    # The text is still there, and so is the question about it.
    key("ctrl+q")
    nira.answer(nira.wait_box("File modified"), "Yes")
    assert nira.wait_exit() == 0
    assert path.read_bytes() == b"xone\r\n"


# ---- Settings of the wrong kind

TEXT, EXPANDED, BYTES, NUMBER, TEXTS, LARGE = 1, 2, 3, 4, 7, 11
VALUES = ["Font", "WordSeparator", "DefaultEncoding", "safeSave", "undoSize", "bomSave", "stopWordEnd", "tabSize",
          "keepIndent", "PasteMode", "SmartBase", "HistLen", "WordWrapDefault", "textFore", "textBack", "selFore",
          "selBack", "FindHist", "ReplaceHist"]
KINDS = {
    "texts": (TEXT, "no number\0".encode("utf-16-le")),
    "texts without an end": (TEXT, "no end".encode("utf-16-le")),
    "texts of odd length": (EXPANDED, b"\x41\0\x42"),
    "very long texts": (TEXT, ("\uffff" * 40000 + "\0").encode("utf-16-le")),
    "empty texts": (TEXT, b"\0\0"),
    "no bytes": (BYTES, b""),
    "one byte": (BYTES, b"\x07"),
    "three bytes": (NUMBER, b"\1\2\3"),
    "all ones": (NUMBER, b"\xff\xff\xff\xff"),
    "large numbers": (LARGE, b"\xff" * 8),
    "lists": (TEXTS, "a\0b\0\0".encode("utf-16-le")),
    "lists without an end": (TEXTS, b"\0" + b"x" * 1000),
}


@pytest.mark.parametrize("kind", KINDS)
def test_settings_of_the_wrong_kind_stop_nobody(start, tmp_path, kind):
    for name in VALUES:
        nira_driver.set_value(nira_driver.SETTINGS, name, *KINDS[kind])
    for number in range(10):
        nira_driver.set_value(RECENT, str(number), *KINDS[kind])
    path = tmp_path / "notes.txt"
    path.write_bytes(b"one\r\ntwo\r\n")
    nira = start(path)
    nira.wait_title("notes.txt")
    key("Tab")
    nira.wait_title("notes.txt *")
    key("Return")
    type_text("new")
    key("ctrl+z", "ctrl+y", "alt+b", "t", "ctrl+shift+i", "ctrl+shift+u", "alt+b", "t")
    # The histories are read here, and written.
    key("ctrl+f")
    nira.wait_dialog("Find")
    type_text("two")
    key("Return")
    nira_driver.wait_for("end of the dialog", nira.no_box)
    key("ctrl+s")
    nira.wait_title("notes.txt")
    lines = path.read_bytes().splitlines()
    assert [line.strip() for line in lines if line.strip()] == [b"newone", b"two"]
    key("alt+b", "c")
    nira.wait_title("Untitled2")
    key("alt+f", "f", "0")
    nira.wait_title("notes.txt")
    key("ctrl+q")
    assert nira.wait_exit() == 0


# ---- Recent files


@pytest.mark.parametrize("entry", [r"C:\gone.txt\\ANSI", r"\\ANSI", "", r"\\\\\\", "C:\\" + "x" * 400 + r"\\ANSI"],
                         ids=["gone", "no path", "empty", "backslashes", "very long"])
def test_a_recent_entry_that_opens_nothing_is_reported_and_stays(start, entry):
    nira_driver.probe("text", RECENT, "0", entry)
    nira = start()
    nira.wait_title("Untitled1")
    key("alt+f", "f", "0")
    error(nira, "Error reading file")
    assert nira.title() == "Untitled1"
    assert "0" in nira_driver.texts(RECENT)
    change(nira, "Untitled1")


def test_a_recent_entry_of_an_unknown_encoding_is_opened(start, tmp_path):
    path = tmp_path / "a & b.txt"
    path.write_bytes(b"one\r\n")
    nira_driver.probe("text", RECENT, "0", nira_driver.windows_path(path) + r"\\Martian")
    nira = start()
    nira.wait_title("Untitled1")
    key("alt+f", "f", "0")
    nira.wait_title("a & b.txt")
    assert nira_driver.texts(RECENT) == {}


# ---- A program whose bars are broken


def broken_program(tmp_path, menu, buttons):
    """A copy of nira.exe where the bar of that menu and number of buttons has an impossible number of them."""
    content = nira_driver.PROGRAM.read_bytes()
    head = struct.pack("<hh", menu, buttons)
    broken = tmp_path / "broken.exe"
    # A record of the first button follows: images or -2, a command, enabled.
    places = [at for at in range(0, len(content) - 10, 2)
              if content[at:at + 4] == head and content[at + 8:at + 10] == b"\x04\0"]
    assert len(places) == 1, places
    at = places[0]
    broken.write_bytes(content[:at + 2] + struct.pack("<h", 30000) + content[at + 4:])
    return broken


def test_without_its_menu_bar_the_program_says_so_and_ends(start, tmp_path):
    nira = start(program=broken_program(tmp_path, 3002, 11))
    # The bar and the window that needs it: one box each, for the same reason.
    first = nira.wait_box("Error")
    text = first.texts("Static")
    nira.answer(first, "OK")
    second = nira.wait_box("Error")
    assert second.texts("Static") == text
    nira.answer(second, "OK")
    assert nira.wait_exit() == 100


def program_without_strings(tmp_path):
    """A copy of nira.exe whose string table goes by another type, so that nobody finds it."""
    content = bytearray(nira_driver.PROGRAM.read_bytes())
    head = struct.unpack_from("<I", content, 0x3C)[0]
    sections, optional = struct.unpack_from("<H", content, head + 6)[0], struct.unpack_from("<H", content, head + 20)[0]
    tables = [head + 24 + optional + 40 * number for number in range(sections)]
    root = next(struct.unpack_from("<I", content, at + 20)[0] for at in tables
                if content[at:at + 8].rstrip(b"\0") == b".rsrc")
    named, numbered = struct.unpack_from("<HH", content, root + 12)
    types = [root + 16 + 8 * number for number in range(named, named + numbered)]
    strings = [at for at in types if struct.unpack_from("<I", content, at)[0] == 6]
    assert len(strings) == 1
    struct.pack_into("<I", content, strings[0], 7)
    broken = tmp_path / "broken.exe"
    broken.write_bytes(content)
    return broken


def test_without_its_resources_the_program_says_so_and_ends(start, tmp_path):
    nira = start(program=program_without_strings(tmp_path))
    box = nira.wait_box("Error")
    assert "Resource init failed" in box.texts("Static")
    nira.answer(box, "OK")
    assert nira.wait_exit() == 100


def test_without_a_tool_bar_the_command_works_and_says_so_each_time(start, tmp_path):
    path = tmp_path / "notes.txt"
    path.write_bytes(b"one\r\n" * 200)
    nira = start(path, program=broken_program(tmp_path, -1, 7))
    nira.wait_title("notes.txt")
    for _ in range(2):
        key("alt+n", "b")
        nira.answer(nira.wait_box("Error"), "OK")
    change(nira, "notes.txt")
    key("ctrl+s")
    nira.wait_title("notes.txt")
    assert path.read_bytes() == b"one\r\n" * 200 + b"x"
