"""Several documents at once: their titles, their order, their closing, and the lists around them."""
import signal
import subprocess

import nira_driver
import pytest
from nira_driver import key, type_text

RECENT = nira_driver.SETTINGS + r"\MRU"


def close(nira, next_title):
    """Closes the shown document by the menu; the documents left show `next_title`."""
    key("alt+b", "c")
    nira.wait_title(next_title)


def change(nira, text="x"):
    title = nira.title()
    type_text(text)
    nira.wait_title(title + " *")


@pytest.fixture
def three(opened, start, tmp_path):
    """NIRA with notes.txt, b.txt and c.txt open, the last one shown: (nira, their paths)."""
    nira, first = opened(b"a\r\n")
    paths = [first]
    for name in ("b.txt", "c.txt"):
        path = tmp_path / name
        path.write_bytes(name[:1].encode() + b"\r\n")
        paths.append(path)
        assert start(path).wait_exit() == 0
        nira.wait_title(name)
    return nira, paths


def test_new_documents_never_get_the_number_of_a_closed_one(start):
    nira = start()
    nira.wait_title("Untitled1")
    key("ctrl+n")
    nira.wait_title("Untitled2")
    close(nira, "Untitled1")
    key("ctrl+n")
    nira.wait_title("Untitled3")
    key("ctrl+Tab")
    nira.wait_title("Untitled1")
    key("ctrl+Tab")
    nira.wait_title("Untitled3")


def test_closing_the_only_document_leaves_a_new_one(start):
    nira = start()
    nira.wait_title("Untitled1")
    close(nira, "Untitled2")
    type_text("x")
    nira.wait_title("Untitled2 *")


def test_the_next_document_after_the_last_is_the_first(three):
    nira, _ = three
    for title in ("notes.txt", "b.txt", "c.txt", "notes.txt"):
        key("ctrl+Tab")
        nira.wait_title(title)


def test_the_next_document_of_a_single_one_is_itself(opened):
    nira, path = opened(b"one\r\n")
    key("ctrl+Tab")
    change(nira)
    assert nira.title() == "notes.txt *"
    key("ctrl+s")
    nira.wait_title("notes.txt")
    assert path.read_bytes() == b"xone\r\n"


def test_closing_in_the_middle_shows_the_first_and_keeps_the_order(three):
    nira, _ = three
    key("ctrl+n")
    nira.wait_title("Untitled2")
    for title in ("notes.txt", "b.txt"):
        key("ctrl+Tab")
        nira.wait_title(title)
    close(nira, "notes.txt")
    for title in ("c.txt", "Untitled2", "notes.txt"):
        key("ctrl+Tab")
        nira.wait_title(title)
    # The items of the menu have moved up with the documents: two up from the end is the second.
    key("alt+b", "Up", "Up", "Return")
    nira.wait_title("c.txt")


def change_all(nira, titles):
    """Changes each of the documents; the one shown is the last of `titles`."""
    for title in titles:
        key("ctrl+Tab")
        nira.wait_title(title)
        change(nira, "x")


CLOSING = {"close all": lambda: key("alt+b", "a"), "exit": lambda: key("ctrl+q")}


@pytest.mark.parametrize("way", CLOSING)
def test_closing_every_document_asks_about_each_change(three, way):
    nira, paths = three
    change_all(nira, ["notes.txt", "b.txt", "c.txt"])
    CLOSING[way]()
    # The shown one comes first, then the others in their order.
    for title, answer in (("c.txt", "No"), ("notes.txt", "Yes"), ("b.txt", "Yes")):
        box = nira.wait_box("File modified")
        assert f"Save changes to '{title}'?" in box.texts("Static")
        nira.answer(box, answer)
    if way == "exit":
        assert nira.wait_exit() == 0
    else:
        nira.wait_title("Untitled2")
    assert [path.read_bytes() for path in paths] == [b"xa\r\n", b"xb\r\n", b"c\r\n"]


@pytest.mark.parametrize("way", CLOSING)
def test_cancel_keeps_the_documents_not_yet_closed(three, way):
    nira, paths = three
    change_all(nira, ["notes.txt", "b.txt", "c.txt"])
    CLOSING[way]()
    nira.answer(nira.wait_box("File modified"), "Yes")
    nira.answer(nira.wait_box("File modified"), "Cancel")
    nira.wait_title("notes.txt *")
    assert nira.is_running()
    key("ctrl+Tab")
    nira.wait_title("b.txt *")
    key("ctrl+Tab")
    nira.wait_title("notes.txt *")
    assert [path.read_bytes() for path in paths] == [b"a\r\n", b"b\r\n", b"xc\r\n"]


def test_save_all_writes_a_file_that_was_not_changed(three):
    nira, paths = three
    change(nira)
    paths[0].unlink()
    key("alt+f", "l")
    nira.wait_title("c.txt")
    assert [path.read_bytes() for path in paths] == [b"a\r\n", b"b\r\n", b"xc\r\n"]


def test_save_all_asks_for_a_name_and_cancel_ends_it(opened, start, tmp_path):
    nira, path = opened(b"a\r\n")
    key("ctrl+n")
    nira.wait_title("Untitled2")
    change(nira)
    other = tmp_path / "b.txt"
    other.write_bytes(b"b\r\n")
    assert start(other).wait_exit() == 0
    nira.wait_title("b.txt")
    change(nira, "y")
    path.unlink()
    key("alt+f", "l")
    nira_driver.wait_for("dialog", lambda: any(window.text == "Save file" for window in nira_driver.windows()))
    key("Escape")
    nira_driver.wait_for("end of the dialog",
                         lambda: all(window.text != "Save file" for window in nira_driver.windows()))
    # What comes before the one without a name was written, what comes behind it was not.
    assert nira.title() == "b.txt *"
    assert path.read_bytes() == b"a\r\n"
    assert other.read_bytes() == b"b\r\n"


NEW = 7001


def test_two_thousand_documents(opened):
    nira, path = opened(b"one\r\n")
    for _ in range(8):  # in parts, because an answer is waited for only so long
        nira_driver.probe("command", str(NEW), "250")
    assert nira.title() == "Untitled2001"
    change(nira)
    # Up from the first item comes the last one, and two further up is another; around to the first document.
    key("alt+b", "Up", "Up", "Up", "Return")
    nira.wait_title("Untitled1999")
    change(nira)
    key("ctrl+Tab", "ctrl+Tab", "ctrl+Tab")
    nira.wait_title("notes.txt")
    key("alt+b", "a")
    for title in ("Untitled1999", "Untitled2001"):
        box = nira.wait_box("File modified")
        assert f"Save changes to '{title}'?" in box.texts("Static")
        assert nira.title() == title + " *"
        nira.answer(box, "No")
    nira.wait_title("Untitled2002")
    assert path.read_bytes() == b"one\r\n"


def test_maximised_restored_and_minimised_the_window_shows_its_text(opened):
    nira, path = opened(b"one\r\n")
    before = nira.window()
    key("alt+space", "x")
    nira_driver.wait_for("maximised window", lambda: nira.window().right != before.right or
                         nira.window().bottom != before.bottom or nira.window().left != before.left)
    change(nira)
    key("alt+space", "r")
    nira_driver.wait_for("restored window", lambda: nira.window().right == before.right)
    type_text("y")
    key("ctrl+s")
    nira.wait_title("notes.txt")
    assert path.read_bytes() == b"xyone\r\n"


def drag(start, end):
    """Presses the left button at one place and releases it at another, as slowly as a person."""
    moves = [word for x, y in (start, end) for word in ("mousemove", str(x), str(y), "sleep", "0.2", "mousedown", "1")]
    subprocess.run(["xdotool", *moves[:-2], "sleep", "0.2", "mouseup", "1"], check=True)


def test_dragged_to_another_size_the_window_keeps_its_bar_at_its_lower_edge(opened):
    nira, path = opened(b"one\r\n")
    before = nira.window()
    drag((before.right - 2, before.bottom - 2), (before.right - 122, before.bottom - 202))
    now = nira_driver.wait_for("smaller window", lambda: (window := nira.window()).right == before.right - 120 and
                               window.bottom == before.bottom - 200 and window)
    editor = next(child for child in now.children if child.kind == "NREDIT")
    place = nira.bar()
    assert (editor.left, editor.right, editor.bottom) == (place.left, place.right, place.top)
    assert 0 < now.bottom - place.bottom < 10
    change(nira)
    # Down to the least size, which is still a window with text and bar.
    drag((now.right - 2, now.bottom - 2), (now.left + 5, now.top + 5))
    least = nira_driver.wait_for("least window", lambda: (window := nira.window()).right < now.right and window)
    assert (least.right - least.left, least.bottom - least.top) == (160, 120)
    type_text("y")
    key("ctrl+s")
    nira.wait_title("notes.txt")
    assert path.read_bytes() == b"xyone\r\n"


def test_a_file_takes_the_place_of_an_untouched_new_document(start, tmp_path):
    path = tmp_path / "notes.txt"
    path.write_bytes(b"one\r\n")
    nira = start()
    nira.wait_title("Untitled1")
    assert start(path).wait_exit() == 0
    nira.wait_title("notes.txt")
    key("ctrl+n")
    nira.wait_title("Untitled2")
    for title in ("notes.txt", "Untitled2"):
        key("ctrl+Tab")
        nira.wait_title(title)


def test_a_file_is_opened_beside_a_changed_new_document(start, tmp_path):
    path = tmp_path / "notes.txt"
    path.write_bytes(b"one\r\n")
    nira = start()
    nira.wait_title("Untitled1")
    change(nira)
    assert start(path).wait_exit() == 0
    nira.wait_title("notes.txt")
    key("ctrl+Tab")
    nira.wait_title("Untitled1 *")


def test_a_second_start_without_a_file_opens_nothing(three, start):
    nira, _ = three
    assert start().wait_exit() == 0
    assert nira.title() == "c.txt"
    key("ctrl+Tab")
    nira.wait_title("notes.txt")


def test_files_opened_at_one_moment_come_into_one_window(start, tmp_path):
    names = ["a.txt", "b.txt", "c.txt", "d.txt"]
    for name in names:
        (tmp_path / name).write_bytes(name.encode())
    started = [start(tmp_path / name) for name in names]
    nira_driver.wait_for("single instance", lambda: sum(one.is_running() for one in started) == 1)
    assert sum(window.kind == "NIRA" for window in nira_driver.windows()) == 1
    shown = set()
    for _ in names:
        title = nira_driver.wait_for("another document", lambda: (now := started[0].title()) not in shown and now)
        shown.add(title)
        key("ctrl+Tab")
    assert shown == set(names)


def test_a_second_start_brings_a_minimised_window_back(opened, start, tmp_path):
    nira, _ = opened(b"one\r\n")
    before = nira.window()
    key("alt+space", "n")
    nira_driver.wait_for("minimised window", lambda: nira_driver.probe("minimised").split() == ["1"])
    assert start().wait_exit() == 0
    nira_driver.wait_for("restored window", lambda: nira_driver.probe("minimised").split() == ["0"])
    now = nira.window()
    assert (now.left, now.top, now.right, now.bottom) == (before.left, before.top, before.right, before.bottom)
    change(nira)
    key("alt+space", "n")
    nira_driver.wait_for("minimised window", lambda: nira_driver.probe("minimised").split() == ["1"])
    other = tmp_path / "b.txt"
    other.write_bytes(b"two\r\n")
    assert start(other).wait_exit() == 0
    nira.wait_title("b.txt")
    change(nira)


def test_a_file_that_comes_while_leaving_is_cancelled_is_opened(opened, start, tmp_path):
    nira, _ = opened(b"one\r\n")
    other = tmp_path / "b.txt"
    other.write_bytes(b"two\r\n")
    change(nira)
    key("ctrl+q")
    box = nira.wait_box("File modified")
    assert start(other).wait_exit() == 0
    assert nira.title() == "notes.txt *"
    nira.answer(box, "Cancel")
    nira.wait_title("b.txt")


def test_files_that_come_while_the_program_ends_are_opened_by_a_new_one(opened, start, tmp_path):
    nira, path = opened(b"one\r\n")
    others = [tmp_path / name for name in ("b c.txt", "d.txt")]
    for other in others:
        other.write_bytes(b"two\r\n")
    change(nira)
    key("ctrl+q")
    box = nira.wait_box("File modified")
    for other in others:
        assert start(other).wait_exit() == 0
    nira.answer(box, "Yes")
    assert nira.wait_exit() == 0
    assert path.read_bytes() == b"xone\r\n"
    nira.wait_title("d.txt")
    key("ctrl+Tab")
    nira.wait_title("b c.txt")
    # It is no child of this test: it has to be ended as a person ends it.
    key("ctrl+q")
    nira_driver.wait_for("end of the new one", lambda: nira.window() is None)


DIALOGS = {"open": ("ctrl+o", "Open file"), "find": ("ctrl+f", "Find"), "options": ("alt+f", "p", "Options")}


@pytest.mark.parametrize("dialog", DIALOGS)
def test_a_file_that_comes_during_a_dialog_waits_for_its_end(opened, start, tmp_path, dialog):
    nira, _ = opened(b"one\r\n")
    other = tmp_path / "b.txt"
    other.write_bytes(b"two\r\n")
    *keys, title = DIALOGS[dialog]
    key(*keys)
    nira.wait_dialog(title)
    assert start(other).wait_exit() == 0
    assert nira.dialog(title)
    assert nira.title() == "notes.txt"
    key("Escape")
    nira.wait_title("b.txt")
    change(nira)


def test_a_second_start_beside_one_that_hangs_opens_its_file_itself(opened, start, tmp_path):
    nira, path = opened(b"one\r\n")
    change(nira)
    other = tmp_path / "b.txt"
    other.write_bytes(b"two\r\n")
    nira.process.send_signal(signal.SIGSTOP)
    try:
        second = start(other)
        nira_driver.wait_for("second window", lambda: "b.txt" in titles(), 40)
    finally:
        nira.process.send_signal(signal.SIGCONT)
    nira_driver.wait_for("first window", lambda: sorted(titles()) == ["b.txt", "notes.txt *"])
    # The second one has the keyboard.
    key("ctrl+q")
    assert second.wait_exit() == 0
    assert nira.title() == "notes.txt *"
    assert path.read_bytes() == b"one\r\n"


def test_a_second_start_ends_although_the_first_tells_of_an_error_with_its_file(opened, start, tmp_path):
    nira, _ = opened(b"one\r\n")
    other = tmp_path / "b.txt"
    other.write_bytes(b"two\r\n")
    assert start(tmp_path / "gone.txt").wait_exit() == 0
    box = nira.wait_box("Error")
    assert start(other).wait_exit() == 0
    assert nira.title() == "notes.txt"
    nira.answer(box, "OK")
    nira.wait_title("b.txt")
    change(nira)


def titles():
    return [window.text for window in nira_driver.windows() if window.kind == "NIRA"]


def test_undoing_the_change_takes_the_mark_from_the_title(opened):
    nira, _ = opened(b"one\r\n")
    change(nira)
    key("ctrl+z")
    nira.wait_title("notes.txt")


# ---- Recent files


def entry(path):
    return nira_driver.windows_path(path) + r"\\ANSI"


def test_the_ten_files_closed_last_are_kept_and_the_menu_opens_them(start, tmp_path):
    paths = [tmp_path / f"{number}.txt" for number in range(11)]
    for path in paths:
        path.write_bytes(b"one\r\n")
    nira = start(paths[0])
    nira.wait_title("0.txt")
    for path in paths[1:]:
        assert start(path).wait_exit() == 0
        nira.wait_title(path.name)
    # The one shown is closed first, and then the rest in their order: 10, 0, 1 ... 9.
    key("alt+b", "a")
    nira.wait_title("Untitled2")
    kept = [entry(path) for path in reversed(paths[:10])]
    assert nira_driver.texts(RECENT) == {str(number): text for number, text in enumerate(kept)}
    key("alt+f", "f", "3")
    nira.wait_title("6.txt")
    del kept[3]
    assert nira_driver.texts(RECENT) == {str(number): text for number, text in enumerate(kept)}


def test_an_empty_list_of_recent_files_opens_nothing(start):
    nira = start()
    nira.wait_title("Untitled1")
    key("alt+f", "f", "Return", "Escape", "Escape", "Escape")
    change(nira)
    assert nira.title() == "Untitled1 *"
