"""The file dialog by keys and by the pointer: walking through folders, choosing, saving. And the bytes on the disk."""
import os
import pathlib
import time

import nira_driver
import pytest
from file_dialog_driver import (HEADER, child, click_row, name_box, open_at, save_as, shown_folder, wait_closed,
                                wait_folder, wait_name)
from nira_driver import held, key, type_text, wait_for, windows_path


@pytest.fixture
def folder(tmp_path):
    """A folder with two folders and three files in it."""
    place = tmp_path / "place"
    (place / "inner").mkdir(parents=True)
    (place / "other").mkdir()
    (place / "inner/deep.txt").write_bytes(b"deep\r\n")
    (place / "apple.txt").write_bytes(b"apple, the longest of them\r\n")
    (place / "banana.txt").write_bytes(b"banana\r\n")
    (place / "cherry.txt").write_bytes(b"c\r\n")
    return place


def test_the_whole_road_of_a_file(start, folder):
    nira = start()
    nira.wait_title("Untitled1")
    open_at(nira, folder)
    click_row(nira, "Open file", 3)
    wait_name(nira, "Open file", "banana.txt")
    key("Return")
    nira.wait_title("banana.txt")
    type_text("x")
    nira.wait_title("banana.txt *")
    save_as(nira)
    assert name_box(nira, "Save file") == "banana.txt"
    assert shown_folder(nira, "Save file") == windows_path(folder)
    key("ctrl+a")
    type_text("new.txt")
    key("Tab", "End")
    wait_for("encoding", lambda: child(nira, "Save file", "ComboBox").text == "UTF-8")
    key("F10", "Down", "Return")
    key("alt+s")
    nira.wait_title("new.txt")
    assert (folder / "new.txt").read_bytes() == b"\xef\xbb\xbfxbanana\n"
    assert (folder / "banana.txt").read_bytes() == b"banana\r\n"


def test_without_a_path_the_root_folder_shows_the_drives(start):
    nira = start()
    nira.wait_title("Untitled1")
    key("ctrl+o")
    assert shown_folder(nira, "Open file") == ""
    type_text("Z:")
    key("Return")
    wait_for("drive", lambda: shown_folder(nira, "Open file") == "Z:")
    key("alt+u")
    wait_for("root folder", lambda: shown_folder(nira, "Open file") == "")
    key("alt+u", "Escape")
    wait_closed(nira)


def test_the_list_by_keys_alone(start, folder):
    nira = start()
    nira.wait_title("Untitled1")
    open_at(nira, folder)
    key("Tab", "Tab")
    type_text("in")
    key("Return")
    wait_folder(nira, "Open file", folder / "inner")
    key("BackSpace")
    wait_folder(nira, "Open file", folder)
    time.sleep(1.5)  # what is typed sooner continues the last beginning
    type_text("che")
    wait_name(nira, "Open file", "cherry.txt")
    key("Return")
    nira.wait_title("cherry.txt")


def test_the_list_by_the_pointer_alone(start, folder):
    nira = start()
    nira.wait_title("Untitled1")
    open_at(nira, folder)
    click_row(nira, "Open file", 0, times=2)
    wait_folder(nira, "Open file", folder / "inner")
    click_row(nira, "Open file", 0, times=2)
    nira.wait_title("deep.txt")


def test_a_double_click_keeps_the_encoding_and_the_button_takes_the_chosen_one(start, folder):
    (folder / "umlaut.txt").write_bytes(b"\xc3\xa4\r\n")
    nira = start()
    nira.wait_title("Untitled1")
    for accept, saved in [(lambda: click_row(nira, "Open file", 5, times=2), b"x\xc3\xa4\r\n"),
                          (lambda: (click_row(nira, "Open file", 5), key("alt+o")), b"\xef\xbb\xbfxx\xc3\xa4\r\n")]:
        open_at(nira, folder)
        key("Tab", "End")
        wait_for("encoding", lambda: child(nira, "Open file", "ComboBox").text == "UTF-8")
        accept()
        nira.wait_title("umlaut.txt")
        type_text("x")
        nira.wait_title("umlaut.txt *")
        key("ctrl+s")
        nira.wait_title("umlaut.txt")
        assert (folder / "umlaut.txt").read_bytes() == saved


def test_a_click_on_a_column_sorts(start, folder):
    nira = start()
    nira.wait_title("Untitled1")
    open_at(nira, folder)
    rows = child(nira, "Open file", "SysListView32")
    for x, first in [(rows.right - 60, "cherry.txt"), (rows.left + 30, "apple.txt")]:
        nira_driver.click(x, rows.top + HEADER // 2)
        click_row(nira, "Open file", 2)
        wait_name(nira, "Open file", first)


def test_a_folder_is_made_and_a_new_file_appears_after_a_refresh(opened, tmp_path):
    nira, _ = opened(b"one\r\n")
    save_as(nira)
    key("alt+n")
    nira.wait_dialog("Create folder")
    key("Return")  # no name: nothing happens
    type_text("made")
    key("Return")
    wait_for("folder", (tmp_path / "made").is_dir)
    wait_for("end of the question", lambda: nira.dialog("Create folder") is None)
    assert shown_folder(nira, "Save file") == windows_path(tmp_path)
    (tmp_path / "late.txt").write_bytes(b"")
    key("F5")
    click_row(nira, "Save file", 1)
    wait_name(nira, "Save file", "late.txt")


def test_overwriting_is_asked_about(opened, tmp_path):
    nira, _ = opened(b"one\r\n")
    (tmp_path / "old.txt").write_bytes(b"old")
    for answer, bytes_then in [("No", b"old"), ("Yes", b"one\r\n")]:
        save_as(nira)
        nira.choose_file("Save file", "old.txt")
        box = nira.wait_box("Confirmation")
        assert "File exists. Overwrite?" in box.texts("Static")
        nira.answer(box, answer)
        if answer == "No":
            assert name_box(nira, "Save file") == "old.txt"
            key("Escape")
        wait_closed(nira)
        wait_for("bytes", lambda: (tmp_path / "old.txt").read_bytes() == bytes_then)
    nira.wait_title("old.txt")


def test_a_missing_file_is_not_opened_and_another_can_be_chosen(start, folder):
    nira = start()
    nira.wait_title("Untitled1")
    open_at(nira, folder)
    nira.choose_file("Open file", "durian.txt")
    box = nira.wait_box("Error")
    assert "File not found.\r\nChoose another one." in box.texts("Static")
    nira.answer(box, "OK")
    nira.choose_file("Open file", "cherry.txt")
    nira.wait_title("cherry.txt")


def refused(nira):
    """The system's own reason in a box, answered."""
    box = nira.wait_box("Error")
    assert any(box.texts("Static"))
    nira.answer(box, "OK")


@pytest.mark.parametrize("names", [[f"a{char}b.txt" for char in '"*:<>?|'], ["NUL", "con.txt", "COM1"],
                                   ["n" * 256, "n" * 260, "n" * 400], ["Q:", "Q:\\", "b.txt:hidden"]],
                         ids=["forbidden", "devices", "too long", "colons"])
def test_a_name_that_no_file_may_have_is_refused_and_another_saves(opened, tmp_path, names):
    nira, _ = opened(b"one\r\n")
    save_as(nira)
    for name in names:
        nira.choose_file("Save file", name)
        refused(nira)
    assert shown_folder(nira, "Save file") == windows_path(tmp_path)
    nira.choose_file("Save file", "good.txt")
    nira.wait_title("good.txt")
    assert (tmp_path / "good.txt").read_bytes() == b"one\r\n"
    assert sorted(one.name for one in tmp_path.iterdir()) == ["good.txt", "notes.txt"]


def test_a_name_that_no_file_may_have_is_not_found(start, folder):
    nira = start()
    nira.wait_title("Untitled1")
    open_at(nira, folder)
    for name in ["a<b.txt", "*.txt", "NUL", "con.txt", "n" * 260, "Q:", "apple.txt:hidden"]:
        nira.choose_file("Open file", name)
        box = nira.wait_box("Error")
        assert "File not found.\r\nChoose another one." in box.texts("Static")
        nira.answer(box, "OK")
    assert shown_folder(nira, "Open file") == windows_path(folder)
    nira.choose_file("Open file", "cherry.txt")
    nira.wait_title("cherry.txt")


def test_a_folder_of_an_impossible_name_is_not_made(opened, tmp_path):
    nira, _ = opened(b"one\r\n")
    save_as(nira)
    for name in ["a<b", "NUL", "n" * 256, "notes.txt"]:
        key("alt+n")
        nira.wait_dialog("Create folder")
        type_text(name)
        key("Return")
        refused(nira)
    assert nira.dialog("Create folder") is None
    assert [one.name for one in tmp_path.iterdir()] == ["notes.txt"]


def test_a_folder_that_may_not_be_read_is_told_and_the_listing_stays(start, folder):
    nira = start()
    nira.wait_title("Untitled1")
    open_at(nira, folder)
    with held(folder / "inner"):
        click_row(nira, "Open file", 0, times=2)
        refused(nira)
        assert shown_folder(nira, "Open file") == windows_path(folder)
        nira.choose_file("Open file", "inner")
        refused(nira)
        assert shown_folder(nira, "Open file") == windows_path(folder)
    click_row(nira, "Open file", 2)
    wait_name(nira, "Open file", "apple.txt")
    click_row(nira, "Open file", 0, times=2)
    wait_folder(nira, "Open file", folder / "inner")


def test_a_file_is_reached_whose_path_is_longer_than_260_characters(start, tmp_path):
    deep = tmp_path / ("d" * 150) / ("e" * 150)
    deep.mkdir(parents=True)
    (deep / "notes.txt").write_bytes(b"one\r\n")
    nira = start()
    nira.wait_title("Untitled1")
    open_at(nira, tmp_path)
    for folder in deep.parent, deep:
        click_row(nira, "Open file", 0, times=2)
        wait_folder(nira, "Open file", folder)
    click_row(nira, "Open file", 0, times=2)
    nira.wait_title("notes.txt")
    save_as(nira)
    assert shown_folder(nira, "Save file") == windows_path(deep)
    nira.choose_file("Save file", "new.txt")
    nira.wait_title("new.txt")
    assert (deep / "new.txt").read_bytes() == b"one\r\n"


@pytest.fixture
def drive():
    """drive(folder) makes E: of a folder of this system, which need not be there."""
    link = pathlib.Path(os.environ["WINEPREFIX"]) / "dosdevices/e:"

    def make(folder):
        link.unlink(missing_ok=True)
        link.symlink_to(folder)
        return "E:"

    yield make
    link.unlink(missing_ok=True)


def test_an_empty_drive_is_shown_and_saved_to(opened, tmp_path, drive):
    nira, _ = opened(b"one\r\n")
    (tmp_path / "disk").mkdir()
    save_as(nira)
    nira.choose_file("Save file", drive(tmp_path / "disk"))
    wait_for("drive", lambda: shown_folder(nira, "Save file") == "E:")
    key("F5", "alt+u")
    wait_for("root folder", lambda: shown_folder(nira, "Save file") == "")
    nira.choose_file("Save file", "E:")
    wait_for("drive", lambda: shown_folder(nira, "Save file") == "E:")
    nira.choose_file("Save file", "new.txt")
    nira.wait_title("new.txt")
    assert (tmp_path / "disk/new.txt").read_bytes() == b"one\r\n"


def test_a_drive_without_a_medium_is_told_and_the_listing_stays(opened, tmp_path, drive):
    nira, _ = opened(b"one\r\n")
    empty_drive = drive("/nonexistent/medium")
    save_as(nira)
    for name in [empty_drive, empty_drive + "\\"]:
        nira.choose_file("Save file", name)
        refused(nira)
        assert shown_folder(nira, "Save file") == windows_path(tmp_path)
    key("Escape")
    wait_closed(nira)
    key("ctrl+o")
    nira.choose_file("Open file", empty_drive + "\\notes.txt")
    nira.answer(nira.wait_box("Error"), "OK")
    nira.choose_file("Open file", tmp_path / "notes.txt")
    wait_closed(nira)
    nira.wait_title("notes.txt")


def test_a_link_to_nowhere_is_not_found_and_saving_writes_what_it_names(opened, tmp_path):
    nira, _ = opened(b"one\r\n")
    (tmp_path / "link.txt").symlink_to(tmp_path / "target.txt")
    (tmp_path / "ring.txt").symlink_to(tmp_path / "ring.txt")
    key("ctrl+o")
    for name in ["link.txt", "ring.txt"]:
        nira.choose_file("Open file", tmp_path / name)
        nira.answer(nira.wait_box("Error"), "OK")
    key("Escape")
    wait_closed(nira)
    save_as(nira)
    nira.choose_file("Save file", "ring.txt")
    refused(nira)
    nira.choose_file("Save file", "link.txt")
    nira.wait_title("link.txt")
    assert (tmp_path / "target.txt").read_bytes() == b"one\r\n"
    assert (tmp_path / "link.txt").is_symlink()


def test_a_folder_deleted_meanwhile_keeps_its_listing(start, folder):
    nira = start()
    nira.wait_title("Untitled1")
    open_at(nira, folder / "inner")
    (folder / "inner/deep.txt").unlink()
    (folder / "inner").rmdir()
    key("F5")
    nira.answer(nira.wait_box("Error"), "OK")
    click_row(nira, "Open file", 0)
    wait_name(nira, "Open file", "deep.txt")
    key("alt+u")
    wait_folder(nira, "Open file", folder)


def test_a_folder_that_was_typed_is_entered_instead_of_saved(opened, tmp_path):
    nira, _ = opened(b"one\r\n")
    (tmp_path / "sub").mkdir()
    save_as(nira)
    nira.choose_file("Save file", "sub")
    wait_folder(nira, "Save file", tmp_path / "sub")
    key("Escape")
    wait_closed(nira)
    nira.wait_title("notes.txt")


def test_files_whose_names_windows_would_change_are_opened_and_saved(start, folder):
    (folder / "aux.c").write_bytes(b"old\r\n")
    nira = start()
    nira.wait_title("Untitled1")
    open_at(nira, folder)
    nira.choose_file("Open file", "aux.c")
    nira.wait_title("aux.c")
    type_text("x")
    nira.wait_title("aux.c *")
    key("ctrl+s")
    nira.wait_title("aux.c")
    assert (folder / "aux.c").read_bytes() == b"xold\r\n"
