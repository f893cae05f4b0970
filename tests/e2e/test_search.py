"""Find and Replace as a person uses them: the dialogs, the histories in the registry, the search bar.

What is found is read through the clipboard's detour: it is cut, and the file that is saved then lacks it.
"""
import time

import nira_driver
import pytest
from nira_driver import key, tap, type_text

FIND_NEXT, REPLACE_NEXT, CLOSE = 1028, 1029, 1031  # the buttons of the search bars
TEXT = b"one cat, concat\r\ntwo Cat\r\nthree cat_x\r\n"


def dialog(title):
    """The dialog of that title once its pattern can be typed."""
    def look():
        found = [window for window in nira_driver.windows() if window.kind == "#32770" and window.text == title]
        return found[0] if found and found[0].texts("Edit") else None
    return nira_driver.wait_for(f"dialog '{title}'", look)


def wait_gone(title):
    nira_driver.wait_for(f"end of '{title}'",
                         lambda: all(window.text != title for window in nira_driver.windows()))


def control(window, text):
    """The control of that label, whichever letter of it is underlined."""
    return next(child for child in window.children if child.text.replace("&", "") == text)


def click_control(place):
    nira_driver.click((place.left + place.right) // 2, (place.top + place.bottom) // 2)


def find(text, *before):
    """Ctrl+F, the keys of `before`, the pattern, Enter."""
    key("ctrl+f")
    dialog("Find")
    if before:
        key(*before)
        key("alt+f")
    type_text(text)
    key("Return")
    wait_gone("Find")


def cut_and_save(nira, path):
    """What the file holds after the selection was cut and the rest saved."""
    key("ctrl+x")
    nira.wait_title(path.name + " *")
    key("ctrl+s")
    nira.wait_title(path.name)
    return path.read_bytes()


def dismiss(nira, text):
    box = nira.wait_box("Information")
    assert text in box.texts("Static")
    nira.answer(box, "OK")


def history(name="FindHist"):
    """The units of a history in the registry, or None."""
    found = nira_driver.probe("bytes", nira_driver.SETTINGS, name).split()
    return bytes.fromhex(found[1]).decode("utf-16-le") if found[:1] == ["7"] else None


def test_the_first_match_is_selected_and_the_bar_stays(opened):
    nira, path = opened(TEXT)
    main = nira.bar()
    find("cat")
    nira.next_bar(main)
    assert cut_and_save(nira, path) == TEXT.replace(b"cat", b"", 1)


def test_the_bar_goes_on_and_closes_by_its_cross(opened):
    nira, path = opened(TEXT)
    main = nira.bar()
    find("cat")
    made = nira.next_bar(main)
    tap(made, FIND_NEXT)
    tap(made, FIND_NEXT)
    tap(made, CLOSE)
    nira_driver.wait_for("main bar", lambda: nira.bar().handle == main.handle)
    assert cut_and_save(nira, path) == TEXT.replace(b"Cat", b"")


def test_a_pattern_that_is_not_there_is_said_and_shows_no_bar(opened):
    nira, _ = opened(TEXT)
    main = nira.bar()
    find("dog")
    dismiss(nira, "Pattern not found")
    assert nira.bar().handle == main.handle


def test_the_bar_closes_when_nothing_is_left_to_find(opened):
    nira, _ = opened(b"one\r\n")
    main = nira.bar()
    find("one")
    made = nira.next_bar(main)
    key("Delete")
    nira.wait_title("notes.txt *")
    tap(made, FIND_NEXT)
    dismiss(nira, "Pattern not found")
    nira_driver.wait_for("main bar", lambda: nira.bar().handle == main.handle)


def test_match_case_and_whole_word_by_their_letters(opened):
    nira, path = opened(TEXT)
    find("Cat", "alt+c")
    assert cut_and_save(nira, path) == TEXT.replace(b"Cat", b"")


def test_whole_word_passes_parts_of_words_over(opened):
    nira, path = opened(b"concat cat_x cat\r\n")
    find("cat", "alt+o")
    assert cut_and_save(nira, path) == b"concat cat_x \r\n"


def test_the_word_at_the_caret_is_proposed_and_the_dialog_covers_the_window(opened):
    nira, _ = opened(b"alpha beta\r\n")
    place = nira.window()
    key("ctrl+Right")
    key("ctrl+f")
    found = dialog("Find")
    assert found.texts("Edit") == ["beta"]
    assert (found.left, found.top, found.right, found.bottom) == (place.left, place.top, place.right, place.bottom)
    type_text("x")
    nira_driver.wait_for("overtyped pattern", lambda: dialog("Find").texts("Edit") == ["x"])


def test_an_empty_pattern_keeps_the_dialog_open(opened):
    nira, _ = opened(b"alpha\r\n")
    key("ctrl+f")
    dialog("Find")
    key("Delete", "Return")
    nira_driver.wait_for("emptied pattern", lambda: dialog("Find").texts("Edit") == [""])
    key("Escape")
    wait_gone("Find")
    assert history() is None
    assert nira.is_running()


def test_cancel_saves_nothing(opened):
    opened(b"alpha\r\n")
    key("ctrl+f")
    click_control(control(dialog("Find"), "Cancel"))
    wait_gone("Find")
    assert history() is None


def replace_dialog(pattern, replacement):
    key("ctrl+h")
    dialog("Replace")
    type_text(pattern)
    key("Tab")
    type_text(replacement)
    return nira_driver.wait_for(
        "filled dialog", lambda: (now := dialog("Replace")).texts("Edit") == [pattern, replacement] and now)


def test_replace_by_the_bar_goes_match_by_match(opened):
    nira, path = opened(TEXT)
    main = nira.bar()
    replace_dialog("cat", "dog")
    key("Return")
    wait_gone("Replace")
    made = nira.next_bar(main)
    tap(made, REPLACE_NEXT)
    nira.wait_title("notes.txt *")
    tap(made, FIND_NEXT)
    tap(made, REPLACE_NEXT)
    key("ctrl+s")
    nira.wait_title("notes.txt")
    assert path.read_bytes() == TEXT.replace(b"cat", b"dog", 1).replace(b"Cat", b"dog")


@pytest.mark.parametrize("way", ["button", "bar", "letter"])
def test_replace_all_counts_and_stays_open(opened, way):
    nira, path = opened(TEXT)
    window = replace_dialog("cat", "dog")
    if way == "letter":
        key("alt+a")
    elif way == "button":
        click_control(control(window, "Replace All"))
    else:
        place = next(child for child in window.children if child.kind == "ToolbarWindow32")
        nira_driver.click(place.left + 150, (place.top + place.bottom) // 2)
    dismiss(nira, "4 occurrences replaced")
    dialog("Replace")
    key("alt+a")
    dismiss(nira, "0 occurrences replaced")
    key("Escape")
    wait_gone("Replace")
    key("ctrl+s")
    nira.wait_title("notes.txt")
    assert path.read_bytes() == b"one dog, condog\r\ntwo dog\r\nthree dog_x\r\n"
    assert history() == "cat\0\0"
    assert history("ReplaceHist") == "dog\0\0"


@pytest.mark.parametrize("stop", [
    lambda window: key("Escape"),
    lambda window: click_control(control(window, "Cancel")),
    lambda window: tap([child for child in window.children if child.kind == "ToolbarWindow32"][-1], 2),
], ids=["Esc", "button", "bar"])
def test_a_replace_all_that_feeds_on_itself_can_be_stopped(opened, stop):
    nira, path = opened(b"x\r\n")
    replace_dialog("x", "xx")
    key("alt+a")
    time.sleep(1.5)
    # It is still at it, and its window answers and looks busy.
    assert nira.dialog("Information") is None
    window = dialog("Replace")
    assert window.texts("Edit") == ["x", "xx"]
    assert not control(window, "Find").enabled and control(window, "Cancel").enabled
    stop(window)
    box = nira.wait_box("Information")
    count = next(int(text.split()[0]) for text in box.texts("Static") if text.endswith(" occurrences replaced"))
    assert count > 1000
    nira.answer(box, "OK")
    window = dialog("Replace")
    assert control(window, "Find").enabled and control(window, "Cancel").enabled
    key("Escape")
    wait_gone("Replace")
    for left in (count + 1, count):
        key("ctrl+s")
        nira.wait_title("notes.txt")
        assert path.read_bytes() == b"x" * left + b"\r\n"
        key("ctrl+z", "ctrl+z")  # the last replacement
        nira.wait_title("notes.txt *")


def test_the_history_keeps_its_order_over_a_restart(opened, start):
    nira_driver.set_number("HistLen", 3)
    nira, path = opened(b"a b c d\r\n")
    for text in ("a", "b", "c", "B", "d"):
        find(text)
        key("Home")
    assert history() == "d\0c\0b\0\0"
    key("ctrl+q")
    nira.wait_exit()
    again = start(path)
    again.wait_title("notes.txt")
    key("ctrl+f")
    dialog("Find")
    # The third of the list, taken by keys alone: Enter closes the list, a second one confirms.
    key("alt+Down")
    nira_driver.wait_for("list", lambda: any(window.kind == "ComboLBox" for window in nira_driver.windows()))
    key("Down", "Down", "Down", "Return")
    nira_driver.wait_for("end of the list",
                         lambda: all(window.kind != "ComboLBox" for window in nira_driver.windows()))
    assert dialog("Find").texts("Edit") == ["b"]
    key("Return")
    wait_gone("Find")
    assert cut_and_save(again, path) == b"a  c d\r\n"
    assert history() == "d\0c\0b\0\0"


def test_esc_closes_an_open_list_only(opened):
    opened(b"a b\r\n")
    find("b")
    key("ctrl+f")
    dialog("Find")
    key("alt+Down")
    nira_driver.wait_for("list", lambda: any(window.kind == "ComboLBox" for window in nira_driver.windows()))
    key("Escape")
    nira_driver.wait_for("end of the list",
                         lambda: all(window.kind != "ComboLBox" for window in nira_driver.windows()))
    dialog("Find")
    key("Escape")
    wait_gone("Find")


# ---- what people rarely search for, and odd histories

def test_a_selection_of_ten_thousand_characters_is_searched_for(opened):
    line = b"abcdefghij" * 1000
    nira, path = opened(b"x" + line + b"\r\ny" + line + b"z\r\n")
    key("Right", "shift+End", "ctrl+f")
    dialog("Find")
    key("Return")
    wait_gone("Find")
    assert cut_and_save(nira, path) == b"x" + line + b"\r\nyz\r\n"


def test_a_selection_of_several_lines_is_never_found(opened):
    nira, _ = opened(b"one\r\ntwo\r\none\r\ntwo\r\n")
    key("shift+Down", "shift+End", "ctrl+f")
    dialog("Find")
    key("Return")
    dismiss(nira, "Pattern not found")
    assert history() == "one\r\ntwo\0\0"


def test_separators_alone_are_found(opened):
    nira, path = opened(b"a, ;b ,;c\r\n")
    find(" ,;")
    assert cut_and_save(nira, path) == b"a, ;bc\r\n"


@pytest.mark.parametrize("length, kept", [(0, "\0"), (4000000000, "c\0b\0a\0\0")])
def test_odd_history_lengths_of_the_registry_harm_nothing(opened, length, kept):
    nira_driver.set_number("HistLen", length)
    opened(b"a b c\r\n")
    for text in "abc":
        find(text)
        key("Home")
    assert history() == kept


def test_a_history_of_another_type_is_replaced(opened):
    nira_driver.set_number("FindHist", 7)
    opened(b"a b\r\n")
    find("b")
    assert history() == "b\0\0"
