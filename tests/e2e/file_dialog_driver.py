"""The file dialog's controls, for the tests that go through it."""
import nira_driver
from nira_driver import key, wait_for, windows_path

HEADER = 24  # height of the list's column titles and of each of its rows
ROW = 25


def child(nira, title, kind, number=0):
    """A control of the dialog of that title, the number-th of its kind."""
    return [one for one in nira.wait_dialog(title).children if one.kind == kind][number]


def shown_folder(nira, title):
    return nira.wait_dialog(title).texts("Static")[-1]


def wait_folder(nira, title, path):
    wait_for(f"folder '{path}'", lambda: shown_folder(nira, title) == windows_path(path))


def name_box(nira, title):
    return child(nira, title, "Edit").text


def wait_name(nira, title, name):
    wait_for(f"name '{name}'", lambda: name_box(nira, title) == name)


def click_row(nira, title, row, times=1):
    rows = child(nira, title, "SysListView32")
    for _ in range(times):
        nira_driver.click(rows.left + 60, rows.top + HEADER + ROW * row + ROW // 2)


def save_as(nira):
    key("alt+f", "v")
    nira.wait_dialog("Save file")


def open_at(nira, folder):
    """The open dialog, gone to the folder by its typed name."""
    key("ctrl+o")
    nira.choose_file("Open file", folder)
    wait_folder(nira, "Open file", folder)


def wait_closed(nira):
    wait_for("end of the dialog", nira.no_box)
