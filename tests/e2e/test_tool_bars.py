"""The tool bars over the main bar: how they come, stack and go, and what a tap or a key on them does."""
import subprocess

import nira_driver
import pytest
from nira_driver import click, key, middle, tap, type_text

BUFFERS = 1022
REDO, GROUP_UNDO, CLOSE_UNDO = 7020, 1033, 1034
CLOSE_NAVIGATE, PAGE_DOWN = 1066, 7028
INDENT_MORE, CLOSE_INDENT = 7031, 1078


def bring_undo(_):
    key("ctrl+z")


def bring_indent(_):
    key("ctrl+shift+i")


def bring_navigate(_):
    key("alt+n", "d")


def bring_search(nira):
    key("ctrl+f")
    nira.wait_dialog("Find")
    type_text("on")
    key("Return")


def bring_replace(nira):
    key("ctrl+h")
    nira.wait_dialog("Replace")
    type_text("on")
    key("Return")


def bring_replacement(nira):
    key("ctrl+h")
    nira.wait_dialog("Replace")
    type_text("one")
    key("Tab")
    type_text("two")
    key("Return")


def written(nira, path):
    """The bytes on the disk after Ctrl+S."""
    key("ctrl+s")
    nira.wait_title(path.name)
    return path.read_bytes()


@pytest.mark.parametrize("bring, again, close", [
    (bring_undo, REDO, CLOSE_UNDO),
    (bring_navigate, PAGE_DOWN, CLOSE_NAVIGATE),
    (bring_indent, INDENT_MORE, CLOSE_INDENT),
], ids=["undo", "navigate", "indent"])
def test_a_bar_is_made_once_and_closed_by_its_cross(opened, bring, again, close):
    nira, path = opened(b"one\r\n")
    main = nira.bar()
    type_text("x")
    nira.wait_title(path.name + " *")
    bring(nira)
    made = nira.next_bar(main)
    assert (made.left, made.right, made.bottom) == (main.left, main.right, main.bottom)
    bring(nira)
    tap(made, again)
    # A key that shows: what was asked for before it has been done.
    key("ctrl+n")
    nira.wait_title("Untitled2")
    assert nira.bar().handle == made.handle
    tap(made, close)
    # A second bar, had one been made, would come to sight here.
    assert nira.next_bar(made).handle == main.handle
    bring(nira)
    tap(nira.next_bar(main), close)
    nira_driver.wait_for("main bar", lambda: nira.bar().handle == main.handle)


def test_the_bar_below_comes_back_when_the_upper_one_is_closed(opened):
    nira, path = opened(b"one\r\n")
    main = nira.bar()
    bring_indent(nira)
    indent = nira.next_bar(main)
    bring_undo(nira)
    undo = nira.next_bar(indent)
    # Asked for again while another one covers it, it stays where it is.
    bring_indent(nira)
    nira.wait_title(path.name + " *")
    assert nira.bar().handle == undo.handle
    tap(undo, CLOSE_UNDO)
    assert nira.next_bar(undo).handle == indent.handle
    tap(indent, CLOSE_INDENT)
    assert nira.next_bar(indent).handle == main.handle


def test_a_find_while_the_replace_bar_is_there_keeps_it(opened):
    nira, _ = opened(b"on two\r\n")
    main = nira.bar()
    bring_replace(nira)
    made = nira.next_bar(main)
    key("ctrl+f")
    nira.wait_dialog("Find")
    type_text("two")
    key("Return")
    nira_driver.wait_for("end of Find", lambda: not nira.dialog("Find"))
    assert nira.bar().handle == made.handle


def press_and_leave(x, y):
    subprocess.run(["xdotool", "mousemove", str(x), str(y), "sleep", "0.1", "mousedown", "1", "sleep", "0.1",
                    "mousemove", str(x), str(y - 200), "sleep", "0.1", "mouseup", "1"], check=True)


@pytest.mark.parametrize("press, left", [(click, b""), (press_and_leave, b"a")], ids=["tapped", "taken-back"])
def test_group_undo_takes_back_what_was_typed_in_one_go(opened, press, left):
    nira, path = opened(b"")
    main = nira.bar()
    bring_undo(nira)
    made = nira.next_bar(main)
    press(*middle(made, GROUP_UNDO))
    type_text("ab")
    nira.wait_title(path.name + " *")
    key("ctrl+z")
    assert written(nira, path) == left


def test_typing_goes_on_after_a_tap_on_a_bar(opened):
    nira, path = opened(b"one\r\n")
    main = nira.bar()
    type_text("x")
    bring_undo(nira)
    tap(nira.next_bar(main), REDO)
    nira.wait_title(path.name + " *")
    type_text("y")
    assert written(nira, path) == b"xyone\r\n"


@pytest.mark.parametrize("bring", [bring_undo, bring_indent, bring_navigate, bring_search, bring_replace])
def test_every_bar_leads_to_the_other_documents(opened, bring):
    nira, path = opened(b"one\r\n")
    main = nira.bar()
    bring(nira)
    made = nira.next_bar(main)
    key("ctrl+n")
    nira.wait_title("Untitled2")
    tap(made, BUFFERS)
    key("Up", "Up", "Return")  # the documents stand at the bottom
    nira_driver.wait_for("first document", lambda: nira.title().startswith(path.name))


def test_letters_press_the_buttons_of_the_bar_in_sight(opened):
    nira, path = opened(b"one one\r\n")
    main = nira.bar()
    bring_replacement(nira)
    made = nira.next_bar(main)
    key("alt+r")
    nira.wait_title(path.name + " *")
    key("alt+c")
    assert nira.next_bar(made).handle == main.handle
    assert written(nira, path) == b"two one\r\n"
    key("ctrl+z")
    made = nira.next_bar(main)
    nira.wait_title(path.name + " *")
    key("alt+r")
    nira.wait_title(path.name)
    key("alt+c")
    assert nira.next_bar(made).handle == main.handle
