"""Going to a line by real keys and clicks, judged by where a letter typed afterwards lands on the disk."""
from nira_driver import click, key, type_text

LINES = b"one\r\ntwo\r\nthree\r\n"


def open_dialog(nira):
    key("alt+n", "g")
    return nira.wait_dialog("Go to...")


def marked(nira, path):
    """The bytes on the disk after typing a letter at the caret and saving."""
    nira.wait_title(path.name)
    type_text("X")
    nira.wait_title(path.name + " *")
    key("ctrl+s")
    nira.wait_title(path.name)
    return path.read_bytes()


def visible_bars(nira):
    return [child.handle for child in nira.window().children if child.kind == "ToolbarWindow32"]


def center(window):
    return (window.left + window.right) // 2, (window.top + window.bottom) // 2


def test_the_dialog_tells_the_range(opened):
    nira, _ = opened(LINES)
    dialog = open_dialog(nira)
    assert "Enter line number " in dialog.texts("Static")
    assert "(1-4)" in dialog.texts("Static")


def test_enter_moves_to_the_line_and_shows_the_bar(opened):
    nira, path = opened(LINES)
    bars = visible_bars(nira)
    open_dialog(nira)
    type_text("3")
    key("Return")
    assert marked(nira, path) == b"one\r\ntwo\r\nXthree\r\n"
    assert visible_bars(nira) != bars


def test_a_number_above_the_lines_is_the_last_line(opened):
    nira, path = opened(LINES)
    open_dialog(nira)
    type_text("99999999999")
    key("Return")
    assert marked(nira, path) == LINES + b"X"


def test_cancel_leaves_the_caret(opened):
    nira, path = opened(LINES)
    open_dialog(nira)
    type_text("3")
    key("Escape")
    assert marked(nira, path) == b"X" + LINES


def test_what_is_no_line_number_is_refused_and_can_be_typed_over(opened):
    nira, path = opened(LINES)
    open_dialog(nira)
    for entry in ("", "0", "abc"):
        if entry:
            type_text(entry)
        key("Return")
        box = nira.wait_box("Error")
        assert "Enter positive number" in box.texts("Static")
        nira.answer(box, "OK")
        nira.no_box()
        assert nira.dialog("Go to...")
    type_text("2")
    key("Return")
    assert marked(nira, path) == b"one\r\nXtwo\r\nthree\r\n"


def test_the_buttons_work_by_the_pointer(opened):
    nira, path = opened(LINES)
    dialog = open_dialog(nira)
    type_text("2")
    click(*center(next(child for child in dialog.children if child.text == "OK")))
    assert marked(nira, path) == b"one\r\nXtwo\r\nthree\r\n"
