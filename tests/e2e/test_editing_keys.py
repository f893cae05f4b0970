"""Selecting, cutting, pasting, indenting and undoing by real keys and the pointer, judged by the bytes on the disk."""
import subprocess

import nira_driver
import pytest
from nira_driver import click, key, type_text


def saved(nira, path):
    """The bytes on the disk after Ctrl+S."""
    nira.wait_title(path.name + " *")
    key("ctrl+s")
    nira.wait_title(path.name)
    return path.read_bytes()


def drag(x1, y1, x2, y2):
    subprocess.run(["xdotool", "mousemove", str(x1), str(y1), "sleep", "0.1", "mousedown", "1", "sleep", "0.1",
                    "mousemove", str((x1 + x2) // 2), str(y2), "mousemove", str(x2), str(y2), "sleep", "0.1",
                    "mouseup", "1"], check=True)


def test_cut_and_paste_move_a_text(opened):
    nira, path = opened(b"one two\r\nthree\r\n")
    key("shift+Right", "shift+Right", "shift+Right", "shift+Right", "ctrl+x", "ctrl+End", "ctrl+v")
    assert saved(nira, path) == b"two\r\nthree\r\none "


def test_copy_leaves_the_text_and_paste_repeats_it(opened):
    nira, path = opened(b"a\r\nb\r\n")
    key("shift+Down", "ctrl+c", "ctrl+Home", "ctrl+v", "ctrl+v")
    assert saved(nira, path) == b"a\r\na\r\na\r\nb\r\n"


def test_copy_without_a_selection_keeps_what_is_on_the_clipboard(opened):
    nira, path = opened(b"ab\r\n")
    key("shift+Right", "ctrl+c", "End", "ctrl+c", "ctrl+x", "ctrl+v")
    assert saved(nira, path) == b"aba\r\n"


@pytest.mark.parametrize("line_end", [b"\n", b"\r", b"\r\n"], ids=["lf", "cr", "crlf"])
def test_pasted_lines_get_the_files_own_line_end(opened, line_end):
    nira, path = opened(b"a" + line_end + line_end + b"b")
    key("ctrl+a", "ctrl+c", "ctrl+End", "ctrl+v")
    assert saved(nira, path) == b"a" + line_end + line_end + b"ba" + line_end + line_end + b"b"


def test_select_all_and_delete_then_undo(opened):
    nira, path = opened(b"one\r\n\r\n\r\ntwo\r\n")
    key("ctrl+a", "Delete")
    type_text("x")
    assert saved(nira, path) == b"x"
    key("ctrl+z", "ctrl+z")
    assert saved(nira, path) == b"one\r\n\r\n\r\ntwo\r\n"
    key("ctrl+y")
    assert saved(nira, path) == b""


def test_undo_back_to_the_saved_text_is_no_change(opened):
    nira, path = opened(b"one\r\n")
    type_text("xy")
    nira.wait_title("notes.txt *")
    key("ctrl+z", "ctrl+z")
    nira.wait_title("notes.txt")
    key("ctrl+y")
    assert saved(nira, path) == b"xone\r\n"


def test_indenting_lines_and_taking_it_back(opened):
    nira, path = opened(b"\tone\r\n\r\n  two\r\nthree\r\n")
    key("shift+Down", "shift+Down", "ctrl+shift+i")
    assert saved(nira, path) == b"\t\tone\r\n\t\r\n\t  two\r\nthree\r\n"
    key("ctrl+shift+u", "ctrl+shift+u")
    assert saved(nira, path) == b"one\r\n\r\ntwo\r\nthree\r\n"
    key("ctrl+z", "ctrl+z", "ctrl+z")
    assert saved(nira, path) == b"\tone\r\n\r\n  two\r\nthree\r\n"


def test_word_moves_select_and_delete(opened):
    nira, path = opened(b"foo, bar baz\r\n")
    key("ctrl+Right", "ctrl+shift+Right", "Delete", "End", "ctrl+Left", "ctrl+shift+Left", "Delete")
    assert saved(nira, path) == b"baz\r\n"


def test_typing_replaces_what_shift_selected(opened):
    nira, path = opened(b"one\r\ntwo\r\n")
    key("End", "shift+Home")
    type_text("X")
    key("Down", "shift+Left")
    type_text("Y")
    assert saved(nira, path) == b"X\r\nYwo\r\n"


def test_dragging_the_pointer_selects(opened):
    nira, path = opened(b"abcdef\r\nabcdef\r\nabcdef\r\n")
    edit = next(child for child in nira.window().children if child.kind == "NREDIT")
    drag(edit.left + 8 * 2 + 2, edit.top + 8, edit.left + 8 * 4 + 2, edit.top + 24)
    key("Delete")
    assert saved(nira, path) == b"abef\r\nabcdef\r\n"


def test_smart_paste_follows_the_indentation(start, tmp_path):
    path = tmp_path / "notes.txt"
    path.write_bytes(b"  a\r\n    b\r\n\t\r\n")
    nira_driver.set_number("PasteMode", 1)
    nira = start(path)
    nira.wait_title(path.name)
    key("shift+Down", "shift+Down", "shift+Left", "ctrl+x", "Down", "End", "ctrl+v")
    assert saved(nira, path) == b"\r\n\ta\r\n\t  b\r\n"
