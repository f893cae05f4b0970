"""The road of a file: open, edit, save, leave. What counts is the bytes on the disk."""
import concurrent.futures

import nira_driver
import pytest
from nira_driver import key, type_text


def save(nira, path):
    key("ctrl+s")
    nira.wait_title(path.name)


def test_the_title_names_the_file_and_marks_a_change(opened):
    nira, path = opened(b"one\r\n")
    type_text("x")
    nira.wait_title("notes.txt *")
    save(nira, path)


def test_typed_text_is_saved_in_front(opened):
    nira, path = opened(b"one\r\ntwo\r\n")
    type_text("Hello, you! ")
    nira.wait_title("notes.txt *")
    save(nira, path)
    assert path.read_bytes() == b"Hello, you! one\r\ntwo\r\n"


@pytest.mark.parametrize("line_end", [b"\n", b"\r", b"\r\n"], ids=["lf", "cr", "crlf"])
def test_a_new_line_gets_the_files_own_line_end(opened, line_end):
    nira, path = opened(b"a" + line_end + b"b" + line_end)
    key("End", "Return")
    type_text("x")
    nira.wait_title("notes.txt *")
    save(nira, path)
    assert path.read_bytes() == b"a" + line_end + b"x" + line_end + b"b" + line_end


@pytest.mark.parametrize("content", [b"", b"# Title\n\nText", b"\n\n\n", b"a\0b\r\n\0", b"no end of line"],
                         ids=["empty", "blank line", "only breaks", "zero bytes", "no last break"])
def test_saving_what_was_not_touched_changes_no_byte(opened, content):
    nira, path = opened(content)
    before = path.stat().st_mtime_ns
    key("ctrl+s")
    nira_driver.wait_for("write", lambda: path.exists() and path.stat().st_mtime_ns != before)
    key("ctrl+q")
    assert nira.wait_exit() == 0
    assert path.read_bytes() == content


def test_deleting_and_moving_keys(opened):
    nira, path = opened(b"abc\r\ndef\r\nghi\r\n")
    key("Delete", "Down", "End", "BackSpace", "Down", "Home")
    type_text("X")
    key("ctrl+End")
    type_text("Z")
    nira.wait_title("notes.txt *")
    save(nira, path)
    assert path.read_bytes() == b"bc\r\nde\r\nXghi\r\nZ"


def test_backspace_at_the_start_joins_two_lines(opened):
    nira, path = opened(b"ab\r\ncd\r\n")
    key("Down", "Home", "BackSpace")
    nira.wait_title("notes.txt *")
    save(nira, path)
    assert path.read_bytes() == b"abcd\r\n"


def test_keys_without_a_command_type_no_control_characters(opened):
    nira, path = opened(b"one\r\n")
    key("Escape", "ctrl+e", "ctrl+g", "ctrl+k")
    type_text("x")
    nira.wait_title("notes.txt *")
    save(nira, path)
    assert path.read_bytes() == b"xone\r\n"


@pytest.mark.parametrize("name", ["mein Ordner é/Grüße an 東京.txt", "it's 100% & (a) [b] ;,=^!/-c %s.txt",
                                  "no dot/.hidden", "nul.txt", "aux.c", "dot at the end."])
def test_the_file_of_exactly_the_given_name_is_opened_and_saved(opened, name):
    nira, path = opened(b"old\r\n", name)
    type_text("new ")
    nira.wait_title(path.name + " *")
    save(nira, path)
    assert path.read_bytes() == b"new old\r\n"


def test_a_relative_path(start, tmp_path):
    (tmp_path / "notes.txt").write_bytes(b"one\r\n")
    nira = nira_driver.Nira("notes.txt", cwd=tmp_path)
    try:
        nira.wait_title("notes.txt")
        type_text("x")
        nira.wait_title("notes.txt *")
        save(nira, tmp_path / "notes.txt")
        assert (tmp_path / "notes.txt").read_bytes() == b"xone\r\n"
    finally:
        nira.kill()


# No Windows program can name a file with a double quote.
@pytest.mark.parametrize("kind", ["missing", "folder", 'quo"te'])
def test_what_cannot_be_read_is_reported_and_the_program_goes_on(start, tmp_path, kind):
    path = tmp_path / "gone"
    if kind == "folder":
        path.mkdir()
    if kind == 'quo"te':
        path = tmp_path / kind
        path.write_bytes(b"one\r\n")
    nira = start(path)
    box = nira.wait_box("Error")
    assert "Error reading file" in box.texts("Static")
    nira.answer(box, "OK")
    nira.wait_title("Untitled1")
    assert path.exists() == (kind in ("folder", 'quo"te'))
    key("ctrl+q")
    assert nira.wait_exit() == 0


def test_a_failed_save_keeps_the_text(opened):
    nira, path = opened(b"one\r\n", "folder/notes.txt")
    type_text("x")
    nira.wait_title("notes.txt *")
    path.unlink()
    path.parent.rmdir()
    key("ctrl+s")
    box = nira.wait_box("Error")
    assert "Error writing file" in box.texts("Static")
    nira.answer(box, "OK")
    key("ctrl+q")
    nira.answer(nira.wait_box("File modified"), "Cancel")
    path.parent.mkdir()
    key("ctrl+s")
    nira_driver.wait_for("file", path.exists)
    key("ctrl+q")
    assert nira.wait_exit() == 0
    assert path.read_bytes() == b"xone\r\n"


def escape_box(nira, title):
    nira_driver.wait_for(f"dialog '{title}'", lambda: any(window.text == title for window in nira_driver.windows()))
    key("Escape")
    nira_driver.wait_for("end of the dialog", nira.no_box)


COMMANDS = {
    "cancelled menu": lambda nira: key("F10", "Escape", "Escape"),
    "about": lambda nira: (key("alt+f", "a"), escape_box(nira, "About")),
    "cancelled save as": lambda nira: (key("alt+f", "v"), escape_box(nira, "Save file")),
    "cancelled open": lambda nira: (key("ctrl+o"), escape_box(nira, "Open file")),
    "cancelled leaving": lambda nira: (type_text("y"), key("ctrl+q"), escape_box(nira, "File modified")),
    "undo": lambda nira: key("ctrl+z"),
    "page down": lambda nira: key("alt+n", "d"),
    "toggle wrap": lambda nira: key("alt+b", "t"),
}


@pytest.mark.parametrize("command", COMMANDS)
def test_after_a_command_the_keyboard_is_back_at_the_text(opened, command):
    nira, path = opened(b"one\r\n")
    COMMANDS[command](nira)
    type_text("x")
    nira.wait_title("notes.txt *")
    save(nira, path)
    assert b"x" in path.read_bytes()


def test_a_new_text_is_saved_under_a_chosen_name(start, tmp_path):
    nira = start()
    nira.wait_title("Untitled1")
    type_text("ab")
    key("Return")
    type_text("c")
    nira.wait_title("Untitled1 *")
    key("ctrl+s")
    nira.choose_file("Save file", tmp_path / "new.txt")
    nira.wait_title("new.txt")
    assert (tmp_path / "new.txt").read_bytes() == b"ab\r\nc"


def test_a_chosen_file_is_opened(start, tmp_path):
    (tmp_path / "notes.txt").write_bytes(b"one\r\n")
    nira = start()
    nira.wait_title("Untitled1")
    key("ctrl+o")
    nira.choose_file("Open file", tmp_path / "notes.txt")
    nira.wait_title("notes.txt")
    type_text("x")
    nira.wait_title("notes.txt *")
    save(nira, tmp_path / "notes.txt")
    assert (tmp_path / "notes.txt").read_bytes() == b"xone\r\n"


def test_leaving_stops_when_a_new_text_gets_no_name(start):
    nira = start()
    nira.wait_title("Untitled1")
    type_text("x")
    nira.wait_title("Untitled1 *")
    key("alt+F4")
    nira.answer(nira.wait_box("File modified"), "Yes")
    escape_box(nira, "Save file")
    assert nira.is_running()
    assert nira.title() == "Untitled1 *"


def test_leaving_without_a_change_asks_nothing(opened):
    nira, path = opened(b"one\r\n")
    key("ctrl+q")
    assert nira.wait_exit() == 0
    assert path.read_bytes() == b"one\r\n"


LEAVING = {
    "exit": lambda nira: key("ctrl+q"),
    "alt-f4": lambda nira: key("alt+F4"),
    "frame": lambda nira: nira.click_close(),
}


@pytest.mark.parametrize("answer", ["Yes", "No", "Cancel"])
@pytest.mark.parametrize("way", LEAVING)
def test_leaving_asks_about_a_changed_text(opened, way, answer):
    nira, path = opened(b"one\r\n")
    type_text("x")
    nira.wait_title("notes.txt *")
    LEAVING[way](nira)
    box = nira.wait_box("File modified")
    assert "Save changes to 'notes.txt'?" in box.texts("Static")
    assert [label.replace("&", "") for label in box.texts("Button")] == ["Yes", "No", "Cancel"]
    nira.answer(box, answer)
    if answer == "Cancel":
        nira.wait_title("notes.txt *")
        assert nira.is_running()
    else:
        assert nira.wait_exit() == 0
    assert path.read_bytes() == (b"xone\r\n" if answer == "Yes" else b"one\r\n")


@pytest.mark.parametrize("way", LEAVING)
def test_leaving_stops_when_the_save_fails(opened, way):
    nira, path = opened(b"one\r\n")
    path.chmod(0o444)
    type_text("x")
    nira.wait_title("notes.txt *")
    LEAVING[way](nira)
    nira.answer(nira.wait_box("File modified"), "Yes")
    nira.answer(nira.wait_box("Error"), "OK")
    assert path.read_bytes() == b"one\r\n"
    type_text("y")
    path.chmod(0o644)
    key("ctrl+q")
    nira.answer(nira.wait_box("File modified"), "Yes")
    assert nira.wait_exit() == 0
    assert path.read_bytes() == b"xyone\r\n"


def test_the_session_goes_on_when_the_save_fails(opened):
    nira, path = opened(b"one\r\n")
    path.chmod(0o444)
    type_text("x")
    nira.wait_title("notes.txt *")
    with concurrent.futures.ThreadPoolExecutor() as pool:
        session = pool.submit(nira_driver.probe, "end-session")
        nira.answer(nira.wait_box("File modified"), "Yes")
        nira.answer(nira.wait_box("Error"), "OK")
        assert session.result().strip() == "0"
    assert nira.is_running()
    assert path.read_bytes() == b"one\r\n"


@pytest.mark.parametrize("answer", ["Yes", "No", "Cancel"])
def test_the_end_of_the_session_asks_about_a_changed_text(opened, answer):
    nira, path = opened(b"one\r\n")
    type_text("x")
    nira.wait_title("notes.txt *")
    with concurrent.futures.ThreadPoolExecutor() as pool:
        session = pool.submit(nira_driver.probe, "end-session")
        nira.answer(nira.wait_box("File modified"), answer)
        assert session.result().strip() == ("0" if answer == "Cancel" else "1")
    assert path.read_bytes() == (b"xone\r\n" if answer == "Yes" else b"one\r\n")
    if answer == "Cancel":
        assert nira.is_running()
        assert nira.title() == "notes.txt *"
        save(nira, path)
        assert path.read_bytes() == b"xone\r\n"


def test_a_minimised_window_asks_at_the_end_of_the_session_too(opened):
    nira, path = opened(b"one\r\n")
    type_text("x")
    nira.wait_title("notes.txt *")
    key("alt+space", "n")
    nira_driver.wait_for("minimised window", lambda: nira_driver.probe("minimised").split() == ["1"])
    with concurrent.futures.ThreadPoolExecutor() as pool:
        session = pool.submit(nira_driver.probe, "end-session")
        nira.answer(nira.wait_box("File modified"), "Yes")
        assert session.result().strip() == "1"
    assert path.read_bytes() == b"xone\r\n"


def test_the_session_does_not_end_while_a_question_is_open(opened):
    nira, path = opened(b"one\r\n")
    type_text("x")
    nira.wait_title("notes.txt *")
    key("ctrl+q")
    box = nira.wait_box("File modified")
    assert nira_driver.probe("end-session").strip() == "0"
    nira.answer(box, "Cancel")
    assert nira.no_box()
    assert nira.title() == "notes.txt *"
    save(nira, path)
    assert path.read_bytes() == b"xone\r\n"


def test_a_second_start_hands_its_file_to_the_first(opened, start, tmp_path):
    nira, _ = opened(b"one\r\n")
    other = tmp_path / "the other é.txt"
    other.write_bytes(b"two\r\n")
    second = start(other)
    assert second.wait_exit() == 0
    nira.wait_title(other.name)
    type_text("x")
    nira.wait_title(other.name + " *")
    save(nira, other)
    assert other.read_bytes() == b"xtwo\r\n"


def test_a_second_start_without_a_file_only_comes_forward(opened, start):
    nira, _ = opened(b"one\r\n")
    assert start().wait_exit() == 0
    assert nira.is_running()
    assert nira.title() == "notes.txt"
