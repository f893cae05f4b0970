"""The menus of the bar by the keyboard alone, judged by what they lead to."""
import nira_driver
import pytest
from nira_driver import key, type_text

# New is the last item of the drop-down File.
NEW = ["Up", "Return"]


@pytest.mark.parametrize("way", [
    ["alt+e", "Left"],
    ["alt+b", "Right"],  # around the end of the bar
    ["F10", "Right", "Right", "Left", "Left"],
    ["alt+e", "i", "Left", "Left"],  # out of a nested pop-up first
    ["alt+f", "Down", "Right", "Down", "Left"],
], ids=["back", "around", "there-and-back", "out-of-nested", "with-chosen-items"])
def test_arrow_keys_reach_the_file_menu(opened, way):
    nira, _ = opened(b"text\r\n")
    key(*way, *NEW)
    nira.wait_title("Untitled2")


def test_right_opens_a_nested_menu_and_goes_on_from_there(opened):
    nira, _ = opened(b"text\r\n")
    # Indentation, its first item, Navigate, Buffers, and around to File.
    key("alt+e", "i", "Right", "Right", "Right", *NEW)
    nira.wait_title("Untitled2")


@pytest.mark.parametrize("way", [
    ["alt+f", "Escape"],
    ["alt+f", "Right", "Right", "Escape"],
    ["alt+e", "i", "Escape", "Escape"],
], ids=["drop-down", "after-arrows", "nested"])
def test_escape_closes_the_menu_and_gives_the_keyboard_back(opened, way):
    nira, path = opened(b"text\r\n")
    key(*way)
    type_text("ab")
    nira.wait_title(path.name + " *")
    key("ctrl+s")
    nira.wait_title(path.name)
    assert path.read_bytes() == b"abtext\r\n"
    assert nira_driver.windows()[0].kind == nira.window_class


def test_letters_reach_the_menus_that_a_tool_bar_covers(opened):
    nira, path = opened(b"text\r\n")
    main_bar = nira.bar().handle
    type_text("a")
    nira.wait_title(path.name + " *")
    key("ctrl+z")
    nira_driver.wait_for("bar of undo", lambda: nira.bar().handle != main_bar)
    key("alt+f", *NEW)
    nira.wait_title("Untitled2")
