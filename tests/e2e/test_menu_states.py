"""What the pop-ups of the bar show each time they open: grayed and checked items and their texts."""
import nira_driver
import pytest
from nira_driver import key, open_menu, type_text

CUT, COPY, PASTE, CLEAR, UNDO, REDO, OTHER_PASTE = 7006, 7007, 7008, 7009, 7019, 7020, 7033
EDIT = (CUT, COPY, PASTE, CLEAR, UNDO, REDO, OTHER_PASTE)
TOGGLE_WRAP, FIRST_DOCUMENT, FIRST_RECENT = 7021, 7500, 7420
GO_TO_BOOKMARK, SET_BOOKMARK = 7410, 7400


def close_menus(depth=1):
    key(*["Escape"] * depth)
    nira_driver.wait_for("end of the pop-ups", lambda: not nira_driver.menu())


def enabled_in_edit():
    items = open_menu("alt+e")
    close_menus()
    return {command for command in EDIT if "grayed" not in items[command].states}


def documents(*keys):
    """The items of the documents in the pop-up that these keys open: (texts, position of the mark)."""
    items = open_menu(*keys)
    close_menus()
    found = [items[command] for command in sorted(items, key=str) if isinstance(command, int) and
             command >= FIRST_DOCUMENT]
    assert [item.command for item in found] == list(range(FIRST_DOCUMENT, FIRST_DOCUMENT + len(found)))
    assert all(("checked" in item.states) <= ("radio" in item.states) for item in found)
    return [item.text for item in found], [number for number, item in enumerate(found) if "checked" in item.states]


def test_edit_follows_selection_history_and_clipboard(opened):
    nira_driver.probe("no-clipboard")
    nira, _ = opened(b"one\r\n")
    assert enabled_in_edit() == set()
    type_text("x")
    nira.wait_title("notes.txt *")
    assert enabled_in_edit() == {UNDO}
    key("ctrl+z")
    nira.wait_title("notes.txt")
    assert enabled_in_edit() == {REDO}
    key("ctrl+a")
    assert enabled_in_edit() == {REDO, CUT, COPY, CLEAR}
    key("ctrl+c")
    nira_driver.wait_for("text to paste", lambda: enabled_in_edit() == {REDO, CUT, COPY, CLEAR, PASTE, OTHER_PASTE})
    key("Left", "Right")
    assert enabled_in_edit() == {REDO, PASTE, OTHER_PASTE}
    key("ctrl+n")
    nira.wait_title("Untitled2")
    assert enabled_in_edit() == {PASTE, OTHER_PASTE}


@pytest.mark.parametrize("mode, text", [(0, "S&mart Paste"), (1, "&Normal Paste")])
def test_the_other_way_of_pasting_is_offered(start, mode, text):
    nira_driver.forget_settings()
    nira_driver.set_number("PasteMode", mode)
    nira = start()
    nira.wait_title("Untitled1")
    assert open_menu("alt+e")[OTHER_PASTE].text == text


def test_buffers_lists_the_documents_as_they_are_now(opened):
    nira, _ = opened(b"one\r\n", "a & b.txt")
    assert documents("alt+b") == (["a && b.txt"], [0])
    key("ctrl+n")
    nira.wait_title("Untitled2")
    type_text("x")
    nira.wait_title("Untitled2 *")
    assert documents("alt+b") == (["a && b.txt", "Untitled2 *"], [1])
    # The bar that undo brings has the same list, and undoing has taken the mark of the change away.
    key("ctrl+z")
    nira.wait_title("Untitled2")
    key("ctrl+Tab")
    nira.wait_title("a & b.txt")
    assert documents("alt+b") == (["a && b.txt", "Untitled2"], [0])
    type_text("y")
    nira.wait_title("a & b.txt *")
    assert documents("alt+b") == (["a && b.txt *", "Untitled2"], [0])
    key("ctrl+s")
    nira.wait_title("a & b.txt")
    assert documents("alt+b") == (["a && b.txt", "Untitled2"], [0])
    key("alt+b", "c")
    nira.wait_title("Untitled2")
    assert documents("alt+b") == (["Untitled2"], [0])


def test_toggle_wrap_is_checked_for_the_document_that_wraps(opened):
    nira, _ = opened(b"one\r\n")

    def wraps():
        checked = "checked" in open_menu("alt+b")[TOGGLE_WRAP].states
        close_menus()
        return checked

    assert not wraps()
    key("alt+b", "t")
    assert wraps()
    key("ctrl+n")
    nira.wait_title("Untitled2")
    assert not wraps()
    key("ctrl+Tab")
    nira.wait_title("notes.txt")
    assert wraps()
    key("alt+b", "t")
    assert not wraps()


def bookmarks():
    """Which can be gone to, and which are checked as set."""
    open_menu("alt+n")
    going = open_menu("Up", "Up", "Right")  # a letter would take "File Bottom" before it
    close_menus(2)
    open_menu("alt+n")
    setting = open_menu("Up", "Right")
    close_menus(2)
    return ([number for number in range(10) if "grayed" not in going[GO_TO_BOOKMARK + number].states],
            [number for number in range(10) if "checked" in setting[SET_BOOKMARK + number].states])


def test_navigate_shows_the_bookmarks_of_the_shown_document(opened):
    nira, _ = opened(b"one\r\ntwo\r\n")
    assert bookmarks() == ([], [])
    for number in "07":
        key("alt+n", "s", number)
    assert bookmarks() == ([0, 7], [0, 7])
    key("ctrl+n")
    nira.wait_title("Untitled2")
    assert bookmarks() == ([], [])
    key("ctrl+Tab")
    nira.wait_title("notes.txt")
    assert bookmarks() == ([0, 7], [0, 7])


def test_an_empty_list_of_recent_files_says_so_and_fills(opened):
    nira, path = opened(b"one\r\n")
    open_menu("alt+f")
    key("f")
    items = nira_driver.wait_for("nested pop-up", lambda: len(items := nira_driver.menu()) == 1 and items)
    assert (items[0].text, items[0].states) == ("(Empty)", {"grayed"})
    close_menus(2)
    key("alt+b", "c")
    nira.wait_title("Untitled2")
    open_menu("alt+f")
    items = open_menu("f")
    assert [item.command for item in items.values()] == [FIRST_RECENT]
    assert items[FIRST_RECENT].text.startswith("&0 ")
    assert items[FIRST_RECENT].text.endswith(path.name)
    assert not items[FIRST_RECENT].states


def test_ten_very_long_recent_paths_stay_on_the_screen_and_open(start, tmp_path):
    paths = []
    for number in range(10):
        path = tmp_path / ("folder %d " % number * 20) / ("Ordner %d " % number * 20) / f"{number}.txt"
        path.parent.mkdir(parents=True)
        path.write_bytes(b"one\r\n")
        assert len(str(path)) > 300
        paths.append(path)
        nira_driver.probe("text", nira_driver.SETTINGS + r"\MRU", str(number),
                          nira_driver.windows_path(path) + r"\\ANSI")
    nira = start()
    nira.wait_title("Untitled1")
    open_menu("alt+f")
    items = open_menu("f")
    assert sorted(items) == list(range(FIRST_RECENT, FIRST_RECENT + 10))
    assert all("\N{HORIZONTAL ELLIPSIS}" in item.text for item in items.values())
    width, height, _ = nira_driver.pixels()
    popups = [window for window in nira_driver.windows() if window.kind == "#32768"]
    assert len(popups) == 2
    assert all(popup.left >= 0 and popup.top >= 0 and popup.right <= width and popup.bottom <= height
               for popup in popups), popups
    key("7")
    nira.wait_title("7.txt")
    # Closed, it is the first again; the others have moved down behind it.
    key("alt+b", "c")
    nira.wait_title("Untitled2")
    kept = nira_driver.texts(nira_driver.SETTINGS + r"\MRU")
    order = [7, 0, 1, 2, 3, 4, 5, 6, 8, 9]
    assert kept == {str(number): nira_driver.windows_path(paths[entry]) + r"\\ANSI"
                    for number, entry in enumerate(order)}
