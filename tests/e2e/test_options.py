"""Every setting, changed on the Options sheet by keys and the pointer: what the registry holds then, byte for byte,
what the running program does, and what the next one does."""
import struct
import subprocess
import time

import nira_driver
import pytest
from nira_driver import SETTINGS, click, key, type_text

FORMAT, EDITOR, WORDS, INDENT = range(4)
TEXT, NUMBER = 1, 4  # types of registry values
SYSTEM_FORE, SYSTEM_BACK = 0x000000, 0xFFFFFF
CHAR_WIDTH = 8  # pixels of a unit of the default font
DEFAULTS = {
    "Font": "Courier New\u100e", "WordSeparator": ",.;", "safeSave": 0, "undoSize": 100, "bomSave": 1,
    "stopWordEnd": 0, "tabSize": 3, "keepIndent": 0, "PasteMode": 0, "SmartBase": 0, "HistLen": 10,
    "WordWrapDefault": 0, "defaultEncoding": "ANSI",
}


class Sheet:
    """The Options sheet of a running NIRA."""

    def __init__(self, nira):
        self.nira = nira
        self.page = FORMAT
        key("alt+f", "p")
        nira_driver.wait_for("Options sheet", self._find)
        time.sleep(0.3)  # a click that comes before the sheet is drawn is lost now and then

    @staticmethod
    def _find():
        found = [window for window in nira_driver.windows() if window.text == "Options" and window.texts("Button")]
        return found[0] if found else None

    def children(self):
        # A sheet that is changing pages on a busy machine does not tell its texts in time now and then.
        return nira_driver.wait_for("Options sheet", self._find).children

    def controls(self, kind):
        """The controls of the shown page of that class, from top to bottom."""
        found = [child for child in self.children() if child.kind == kind]
        return sorted(found, key=lambda child: (child.top, child.left))

    def named(self, text):
        def look():
            return [child for child in self.children() if child.text == text and child.kind == "Button"]
        found = nira_driver.wait_for(f"button '{text}'", look)
        assert len(found) == 1, (text, found)
        return found[0]

    def show(self, page, keys="ctrl+Tab", step=1):
        while self.page != page:
            key(keys)
            self.page = (self.page + step) % 4
        title = ("Format", "Editor", "Words", "Indent")[page]
        nira_driver.wait_for(f"page {title}", lambda: any(child.kind == "#32770" and child.text == title
                                                          for child in self.children()))

    def show_back(self, page):
        self.show(page, "ctrl+shift+Tab", -1)

    def tap(self, control):
        click((control.left + control.right) // 2, (control.top + control.bottom) // 2)

    def press(self, text):
        button = self.named(text)
        click(button.left + 8, (button.top + button.bottom) // 2)

    def type(self, number, text):
        """Types into the page's edit control number 0, 1, ... in place of what is there."""
        self.tap(self.controls("Edit")[number])
        key("Home", "shift+End", "BackSpace")
        if text:
            type_text(text)
        nira_driver.wait_for(f"'{text}' in the field", lambda: self.controls("Edit")[number].text == text)

    def confirm(self):
        """The OK of the bar."""
        bar = self.controls("ToolbarWindow32")[-1]
        nira_driver.tap(bar, 1)
        self.wait_end()

    def wait_end(self):
        nira_driver.wait_for("end of the sheet", lambda: self._find() is None)
        nira_driver.wait_for("the editor's turn", lambda: self.nira.window().enabled)


def stored(**changes):
    """What the registry holds when these settings differ from the defaults, without the colors."""
    expected = dict(DEFAULTS, **changes)
    return {name: (NUMBER, struct.pack("<I", value)) if isinstance(value, int)
            else (TEXT, (value + "\0").encode("utf-16-le")) for name, value in expected.items()}


def found():
    colors = ("textFore", "textBack", "selFore", "selBack")
    return {name: value for name, value in nira_driver.values(SETTINGS).items() if name not in colors}


def number(name):
    kind, data = nira_driver.values(SETTINGS)[name]
    assert kind == NUMBER
    return struct.unpack("<I", data)[0]


def restarted(nira, start, path):
    nira.kill()
    again = start(path)
    again.wait_title(path.name)
    return again


def saved(nira, path):
    nira.wait_title(path.name + " *")
    key("ctrl+s")
    nira.wait_title(path.name)
    return path.read_bytes()


def editor(nira):
    return next(child for child in nira.window().children if child.kind == "NREDIT")


def caret(nira):
    """(x, y, width, height) of the blinking caret in the editor window."""
    area = editor(nira)
    end = time.monotonic() + nira_driver.TIMEOUT
    width, _, before = nira_driver.pixels()
    while time.monotonic() < end:
        time.sleep(0.05)
        now = nira_driver.pixels()[2]
        places = [(x, y) for y in range(area.top, area.bottom) for x in range(area.left, area.right - 20)
                  if now[3 * (y * width + x):3 * (y * width + x) + 3] !=
                  before[3 * (y * width + x):3 * (y * width + x) + 3]] if now != before else []
        if places:
            left, top = min(x for x, _ in places), min(y for _, y in places)
            return (left - area.left, top - area.top, max(x for x, _ in places) - left + 1,
                    max(y for _, y in places) - top + 1)
    raise AssertionError("no caret blinks")


def area_colors(left, top, width, height):
    """The colors there, as the registry keeps colors."""
    row, _, data = nira_driver.pixels()
    starts = (3 * (y * row + x) for y in range(top, top + height) for x in range(left, left + width))
    return {data[at] | data[at + 1] << 8 | data[at + 2] << 16 for at in starts}


def pixel(x, y):
    return area_colors(x, y, 1, 1).pop()


# ---- the sheet as a whole

def test_ok_without_a_change_stores_the_defaults(opened):
    nira, _ = opened(b"a\r\n")
    assert nira_driver.values(SETTINGS) == {}
    Sheet(nira).confirm()
    assert found() == stored()
    assert (number("textFore"), number("textBack")) == (SYSTEM_FORE, SYSTEM_BACK)
    assert len(nira_driver.values(SETTINGS)) == 17


@pytest.mark.parametrize("way", ["Escape", "bar", "alt+F4"])
def test_cancel_changes_nothing(opened, way):
    nira, path = opened(b"\tx\r\n")
    before = caret(nira)
    sheet = Sheet(nira)
    sheet.show(EDITOR)
    sheet.type(0, "1")
    sheet.press("Safe save")
    sheet.show(INDENT)
    sheet.type(0, "20")
    sheet.press("Keep indent")
    if way == "bar":
        bar = sheet.controls("ToolbarWindow32")[-1]
        nira_driver.tap(bar, 2)
    else:
        key(way)
    sheet.wait_end()
    assert nira_driver.values(SETTINGS) == {}
    assert caret(nira) == before
    key("End", "Return")
    type_text("y")
    assert saved(nira, path) == b"\tx\r\ny\r\n"


def test_enter_confirms_and_the_keyboard_returns_to_the_text(opened):
    nira, path = opened(b"a\r\n")
    sheet = Sheet(nira)
    sheet.show(INDENT)
    sheet.type(0, "8")
    key("Return")
    sheet.wait_end()
    type_text("x")
    assert saved(nira, path) == b"xa\r\n"
    assert number("tabSize") == 8


def test_asked_for_again_the_sheet_is_still_one(opened):
    nira, _ = opened(b"a\r\n")
    sheet = Sheet(nira)
    key("alt+f", "p")
    time.sleep(0.5)
    assert sum(window.text == "Options" for window in nira_driver.windows()) == 1
    sheet.confirm()
    assert found() == stored()


# ---- numbers

@pytest.mark.parametrize("page, field, text, message", [
    (INDENT, 0, "0", "Tab size must be in range 1-64"),
    (INDENT, 0, "65", "Tab size must be in range 1-64"),
    (INDENT, 0, "", "Tab size must be in range 1-64"),
    (INDENT, 0, "-3", "Tab size must be in range 1-64"),
    (EDITOR, 0, "257", "Undo history size must be in range 1-256"),
    (EDITOR, 0, "many", "Undo history size must be in range 1-256"),
    (EDITOR, 1, "101", "Find history size must be in range 1-100"),
    (EDITOR, 1, "4294967297", "Find history size must be in range 1-100"),
])
def test_a_wrong_number_keeps_the_page_with_the_number_selected(opened, page, field, text, message):
    nira, _ = opened(b"a\r\n")
    sheet = Sheet(nira)
    sheet.show(page)
    sheet.type(field, text)
    key("Return")
    box = nira.wait_box("Error")
    assert box.texts("Static")[-1] == message
    nira.answer(box, "OK")
    type_text("9")  # in place of what was selected
    nira_driver.wait_for("the new number", lambda: sheet.controls("Edit")[field].text == "9")
    assert nira_driver.values(SETTINGS) == {}
    sheet.confirm()
    name = {(INDENT, 0): "tabSize", (EDITOR, 0): "undoSize", (EDITOR, 1): "HistLen"}[page, field]
    assert found() == stored(**{name: 9})


@pytest.mark.parametrize("text, value", [("  7", 7), ("+7", 7), ("7 columns", 7), ("007", 7)])
def test_numbers_may_have_blanks_sign_and_letters_behind(opened, text, value):
    nira, _ = opened(b"a\r\n")
    sheet = Sheet(nira)
    sheet.show(INDENT)
    sheet.type(0, text)
    sheet.confirm()
    assert number("tabSize") == value


def test_a_wrong_number_stops_the_tap_on_another_page(opened):
    nira, _ = opened(b"a\r\n")
    sheet = Sheet(nira)
    sheet.show(EDITOR)
    sheet.type(0, "300")
    tabs = sheet.controls("SysTabControl32")[0]
    click(tabs.left + 20, tabs.bottom - 12)
    box = nira.wait_box("Error")
    nira.answer(box, "OK")
    type_text("20")
    nira_driver.wait_for("the new number", lambda: sheet.controls("Edit")[0].text == "20")
    click(tabs.left + 20, tabs.bottom - 12)
    nira_driver.wait_for("page Format", lambda: any(button.text == "..." for button in sheet.controls("Button")))
    sheet.confirm()
    assert found() == stored(undoSize=20)


# ---- what each setting does

def test_tab_size_moves_the_caret_in_every_document(opened, start, tmp_path):
    nira, path = opened(b"\tx\r\n")
    other = tmp_path / "other.txt"
    other.write_bytes(b"\tx\r\n")
    assert start(other).wait_exit() == 0
    nira.wait_title("other.txt")
    key("Right")
    x, y, width, height = caret(nira)
    assert (x, y, width) == (3 * CHAR_WIDTH, 0, 2)
    sheet = Sheet(nira)
    sheet.show(INDENT)
    sheet.type(0, "8")
    sheet.confirm()
    assert found() == stored(tabSize=8)
    assert caret(nira) == (8 * CHAR_WIDTH, 0, width, height)
    key("ctrl+Tab")
    nira.wait_title("notes.txt")
    key("Right")
    assert caret(nira)[0] == 8 * CHAR_WIDTH
    again = restarted(nira, start, path)
    key("Right")
    assert caret(again)[0] == 8 * CHAR_WIDTH


def test_keep_indent_indents_the_next_line(opened, start):
    nira, path = opened(b"\tx\r\n")
    sheet = Sheet(nira)
    sheet.show(INDENT)
    sheet.press("Keep indent")
    sheet.confirm()
    assert found() == stored(keepIndent=1)
    key("End", "Return")
    type_text("y")
    assert saved(nira, path) == b"\tx\r\n\ty\r\n"
    again = restarted(nira, start, path)
    key("End", "Return")
    type_text("z")
    assert saved(again, path) == b"\tx\r\n\tz\r\n\ty\r\n"


def paste_at_the_end(text, nira, path):
    """Copies the whole file and pastes it behind its last line."""
    path.write_bytes(text)
    key("ctrl+a", "ctrl+c", "ctrl+End", "ctrl+v")
    return saved(nira, path)[len(text):]


BLOCK = b"        a\r\n    b\r\n    "


def test_smart_paste_and_its_base(opened, start):
    nira, path = opened(BLOCK)
    assert paste_at_the_end(BLOCK, nira, path) == BLOCK
    nira.kill()
    nira_driver.set_number("tabSize", 64)  # blanks stay blanks
    path.write_bytes(BLOCK)
    nira = restarted(nira, start, path)
    sheet = Sheet(nira)
    sheet.show(INDENT)
    sheet.press("Smart")
    sheet.confirm()
    assert found() == stored(tabSize=64, PasteMode=1)
    first = paste_at_the_end(BLOCK, nira, path)
    assert first.lstrip(b" ").startswith(b"a\r\nb")
    path.write_bytes(BLOCK)
    nira = restarted(nira, start, path)
    sheet = Sheet(nira)
    sheet.show(INDENT)
    sheet.press("Minimum")
    sheet.confirm()
    assert found() == stored(tabSize=64, PasteMode=1, SmartBase=1)
    assert paste_at_the_end(BLOCK, nira, path) != first


def test_stop_at_end_of_word_and_separators(opened, start):
    nira, path = opened(b"one-two three\r\n")
    sheet = Sheet(nira)
    sheet.show(WORDS)
    sheet.press("Stop at end of word")
    sheet.confirm()
    assert found() == stored(stopWordEnd=1)
    key("ctrl+Right")
    type_text("1")
    assert saved(nira, path) == b"one-two1 three\r\n"
    sheet = Sheet(nira)
    sheet.show(WORDS)
    sheet.type(0, "-")
    sheet.press("Stop at end of word")
    sheet.confirm()
    assert found() == stored(WordSeparator="-")
    key("Home", "ctrl+Right")
    type_text("2")
    assert saved(nira, path) == b"one-2two1 three\r\n"
    again = restarted(nira, start, path)
    key("ctrl+Right")
    type_text("3")
    assert saved(again, path) == b"one-32two1 three\r\n"


def test_the_undo_limit_holds_at_once(opened):
    nira, path = opened(b"\r\n")
    sheet = Sheet(nira)
    sheet.show(EDITOR)
    sheet.type(0, "1")
    sheet.confirm()
    assert found() == stored(undoSize=1)
    type_text("x" * 60)
    nira.wait_title("notes.txt *")
    for _ in range(60):
        key("ctrl+z")
    assert saved(nira, path) == b"xxxxxxxxx\r\n"  # 51 steps of 20 bytes are in 1024


def test_safe_save_writes_another_file(opened, start):
    nira, path = opened(b"a\r\n")
    inode = path.stat().st_ino
    type_text("x")
    saved(nira, path)
    assert path.stat().st_ino == inode
    sheet = Sheet(nira)
    sheet.show(EDITOR)
    sheet.press("Safe save")
    sheet.confirm()
    assert found() == stored(safeSave=1)
    # Held open, the old file keeps its number.
    with path.open("rb"):
        type_text("y")
        assert saved(nira, path) == b"xya\r\n"
        assert path.stat().st_ino != inode
    assert [file.name for file in path.parent.iterdir()] == ["notes.txt"]


def test_default_encoding_and_byte_order_mark(opened, start):
    nira, path = opened("\u00e4\r\n".encode())
    sheet = Sheet(nira)
    sheet.show(EDITOR)
    sheet.tap(sheet.controls("ComboBox")[0])
    key("End")
    names = {sheet.controls("ComboBox")[0].text}
    key("Home", "Down", "Down", "Return")
    names.add(sheet.controls("ComboBox")[0].text)
    assert "Unicode Little Endian" in names
    sheet.confirm()
    assert found() == stored(defaultEncoding="Unicode Little Endian")
    path.write_bytes("\u00e4\r\n".encode("utf-16-le"))
    nira = restarted(nira, start, path)
    type_text("x")
    assert saved(nira, path) == b"\xff\xfe" + "x\u00e4\r\n".encode("utf-16-le")
    sheet = Sheet(nira)
    sheet.show(EDITOR)
    sheet.press("Save Unicode cookie")
    sheet.confirm()
    assert found() == stored(defaultEncoding="Unicode Little Endian", bomSave=0)
    type_text("y")
    assert saved(nira, path) == "xy\u00e4\r\n".encode("utf-16-le")


def test_line_wrap_by_default_is_for_documents_to_come(opened, start):
    nira, path = opened(b"a" * 100 + b"\r\n\r\n")
    sheet = Sheet(nira)
    sheet.show(EDITOR)
    sheet.press("Line wrap by default")
    sheet.confirm()
    assert found() == stored(WordWrapDefault=1)
    key("Down")
    type_text("x")
    assert saved(nira, path) == b"a" * 100 + b"\r\nx\r\n"
    again = restarted(nira, start, path)
    key("Down")
    type_text("y")
    assert b"ay" in saved(again, path)


def test_find_history_size_limits_what_is_remembered(opened):
    nira, _ = opened(b"abc\r\n")
    sheet = Sheet(nira)
    sheet.show(EDITOR)
    sheet.type(1, "2")
    sheet.confirm()
    assert found() == stored(HistLen=2)
    for letter in "abc":
        key("ctrl+Home", "ctrl+f")
        nira_driver.wait_for("Find", lambda: any(window.texts("ComboBox") for window in nira_driver.windows()))
        key("Home", "shift+End")
        type_text(letter)
        key("Return")
        nira_driver.wait_for("the hit", lambda: nira.window().enabled)
    kept = nira_driver.values(SETTINGS)["FindHist"][1].decode("utf-16-le")
    assert kept.rstrip("\0").split("\0") == ["c", "b"]


def test_the_default_encoding_is_proposed_by_open(opened):
    nira, _ = opened(b"a\r\n")
    sheet = Sheet(nira)
    sheet.show(EDITOR)
    sheet.tap(sheet.controls("ComboBox")[0])
    key("Home", *["Down"] * 4, "Return")
    chosen = sheet.controls("ComboBox")[0].text
    assert chosen != "ANSI"
    sheet.confirm()
    key("ctrl+o")
    nira_driver.wait_for("Open with that encoding", lambda: any(
        chosen in window.texts("ComboBox") for window in nira_driver.windows()))
    key("Escape")
    nira_driver.wait_for("the editor's turn", lambda: nira.window().enabled)
    key("ctrl+n")
    nira.wait_title("Untitled2")
    key("ctrl+s")
    nira_driver.wait_for("Save with that encoding", lambda: any(
        window.text == "Save file" and chosen in window.texts("ComboBox") for window in nira_driver.windows()))


# ---- colours

def pick_color(sheet, button, color):
    """Opens the chooser by a color button and types a color there; the button shows it then."""
    middle = (button.left + button.right) // 2, (button.top + button.bottom) // 2
    click(*middle)

    def chooser():
        return next((window for window in nira_driver.windows() if window.text == "Color" and window.texts("Edit")), None)

    fields = nira_driver.wait_for("color chooser", chooser).children
    right = max(child.left for child in fields if child.kind == "Edit")
    for number, shift in enumerate((0, 8, 16)):
        edits = sorted((child for child in fields if child.kind == "Edit" and child.left == right),
                       key=lambda child: child.top)
        sheet.tap(edits[number])
        key("Home", "shift+End")
        type_text(str(color >> shift & 255))
    sheet.tap(next(child for child in fields if child.text == "OK"))
    nira_driver.wait_for("end of the chooser", lambda: chooser() is None)
    nira_driver.wait_for("the color on its button", lambda: pixel(*middle) == color)


def color_buttons(sheet):
    """The foreground and the background button."""
    return sorted((child for child in sheet.controls("Button") if child.text in ("Foreground", "Background")),
                  key=lambda child: child.left)


def test_colors_show_on_their_buttons_and_in_the_text(opened, start):
    text_fore, text_back, selection_back = 0x00C02010, 0x00E8FFF0, 0x00204080
    nira, path = opened(b"a\r\n")
    sheet = Sheet(nira)
    fore, back = color_buttons(sheet)
    middle = (back.left + back.right) // 2, (back.top + back.bottom) // 2
    rows = sheet.controls("ListBox")[0]
    pick_color(sheet, fore, text_fore)
    pick_color(sheet, back, text_back)
    click(rows.left + 30, rows.bottom - 12)
    nira_driver.wait_for("the colors of the selection", lambda: pixel(*middle) != text_back)
    pick_color(sheet, back, selection_back)
    selection_fore = pixel((fore.left + fore.right) // 2, middle[1])
    click(rows.left + 30, rows.top + 12)
    nira_driver.wait_for("the colors of the text", lambda: pixel(*middle) == text_back)
    sheet.confirm()
    assert found() == stored()
    assert [number(name) for name in ("textFore", "textBack", "selFore", "selBack")] == [
        text_fore, text_back, selection_fore, selection_back]

    def shown(nira):
        area = editor(nira)
        key("Right")
        time.sleep(0.3)
        plain = pixel(area.left + 200, area.top + 100)
        letter = area_colors(area.left, area.top, 8, 16)
        key("shift+Left")
        time.sleep(0.3)
        selected = area_colors(area.left + 3, area.top, 5, 16)
        return plain, text_fore in letter, selection_back in selected, selection_fore in selected

    assert shown(nira) == (text_back, True, True, True)
    assert shown(restarted(nira, start, path)) == (text_back, True, True, True)


# ---- font

def choose_font(sheet, size, *boxes):
    """Chooses a size, and presses these boxes, in the font chooser of the page."""
    button = next(child for child in sheet.controls("Button") if child.text == "...")
    sheet.tap(button)

    def chooser():
        return next((window for window in nira_driver.windows() if window.text == "Choose font"), None)

    window = nira_driver.wait_for("font chooser", chooser)
    for text in boxes:
        sheet.tap(next(child for child in window.children if child.text.replace("&", "") == text))
    key("alt+s")
    key("Home", "shift+End")
    type_text(str(size))
    key("Return")
    nira_driver.wait_for("end of the font chooser", lambda: chooser() is None)


def test_a_new_font_is_described_and_shown_at_once(opened, start):
    nira, path = opened(b"ab\r\n")
    key("Down")
    x, row, width, height = caret(nira)
    sheet = Sheet(nira)
    choose_font(sheet, 28, "Bold")
    nira_driver.wait_for("the description", lambda: "Courier New, 28 pt" in
                         [child.text for child in sheet.controls("Static")])
    sheet.confirm()
    assert found() == stored(Font="Courier New\u111c")
    larger = caret(nira)
    assert (larger[0], larger[2]) == (x, width)
    assert larger[1] == larger[3] > row == height  # the second row begins a caret's height below the first
    key("Up", "Right")
    assert caret(nira)[0] > CHAR_WIDTH
    again = restarted(nira, start, path)
    key("Down")
    assert caret(again) == larger


def test_cancel_after_choosing_a_font_keeps_the_old_one(opened):
    nira, _ = opened(b"ab\r\n")
    before = caret(nira)
    sheet = Sheet(nira)
    choose_font(sheet, 28)
    key("Escape")
    sheet.wait_end()
    assert caret(nira) == before
    assert nira_driver.values(SETTINGS) == {}


# ---- all of them

EVERY_COLOR = {"textFore": 0x00C02010, "textBack": 0x00E8FFF0, "selFore": 0x0010FFFF, "selBack": 0x00204080}
EVERY_CHANGE = stored(
    Font="Courier New\u1114", WordSeparator="-", safeSave=1, undoSize=1, bomSave=0, stopWordEnd=1, tabSize=8,
    keepIndent=1, PasteMode=1, SmartBase=1, HistLen=2, WordWrapDefault=1, defaultEncoding="UTF-8",
) | {name: (NUMBER, struct.pack("<I", color)) for name, color in EVERY_COLOR.items()}


def change_everything(sheet):
    """Page by page, the way back from the first page to the last by its own keys."""
    choose_font(sheet, 20, "Bold")
    rows = sheet.controls("ListBox")[0]
    fore, back = color_buttons(sheet)
    pick_color(sheet, fore, EVERY_COLOR["textFore"])
    pick_color(sheet, back, EVERY_COLOR["textBack"])
    click(rows.left + 30, rows.bottom - 12)
    pick_color(sheet, fore, EVERY_COLOR["selFore"])
    pick_color(sheet, back, EVERY_COLOR["selBack"])
    sheet.show_back(INDENT)
    sheet.type(0, "8")
    for button in ("Keep indent", "Smart", "Minimum"):
        sheet.press(button)
    sheet.show_back(WORDS)
    sheet.type(0, "-")
    sheet.press("Stop at end of word")
    sheet.show_back(EDITOR)
    sheet.type(0, "1")
    sheet.type(1, "2")
    for button in ("Safe save", "Save Unicode cookie", "Line wrap by default"):
        sheet.press(button)
    choose_encoding(sheet, "UTF-8")


def choose_encoding(sheet, name):
    sheet.tap(sheet.controls("ComboBox")[0])
    key("Home")
    while sheet.controls("ComboBox")[0].text != name:
        before = sheet.controls("ComboBox")[0].text
        key("Down")
        nira_driver.wait_for("the next encoding", lambda: sheet.controls("ComboBox")[0].text != before)
    key("Return")


def check_looks(nira):
    """Tab size and font by the caret, the four colors by the pixels of a letter, plain and selected."""
    key("ctrl+Home", "Right")
    behind_tab = caret(nira)[0]
    key("Right")
    width = caret(nira)[0] - behind_tab
    assert width > CHAR_WIDTH and behind_tab == 8 * width
    area = editor(nira)

    def letter():
        time.sleep(0.3)
        return area_colors(area.left + behind_tab + 3, area.top, width - 3, 20)

    key("ctrl+Home")
    assert {EVERY_COLOR["textFore"], EVERY_COLOR["textBack"]} <= letter()
    key("shift+End")
    assert {EVERY_COLOR["selFore"], EVERY_COLOR["selBack"]} <= letter()


def check_editing(nira, path):
    """Words, indentation, safe save, the encoding proposed, the histories and the undo limit."""
    key("ctrl+Home", "Right", "ctrl+Right")
    type_text("1")
    key("End", "Return")
    type_text("k")
    inode = path.stat().st_ino
    with path.open("rb"):  # held open, the old file keeps its number
        assert saved(nira, path) == b"\tone1-two three\r\n\tk\r\n"
        assert path.stat().st_ino != inode
    key("ctrl+o")
    nira_driver.wait_for("Open with that encoding", lambda: any(
        "UTF-8" in window.texts("ComboBox") for window in nira_driver.windows()))
    key("Escape")
    nira_driver.wait_for("the editor's turn", lambda: nira.window().enabled)
    for letter in "one":
        key("ctrl+Home", "ctrl+f")
        nira_driver.wait_for("Find", lambda: any(window.texts("ComboBox") for window in nira_driver.windows()))
        key("Home", "shift+End")
        type_text(letter)
        key("Return")
        nira_driver.wait_for("the hit", lambda: nira.window().enabled)
    assert nira_driver.values(SETTINGS)["FindHist"][1] == "e\0n\0\0".encode("utf-16-le")
    key("ctrl+End")
    type_text("x" * 60)
    key(*["ctrl+z"] * 60)
    assert saved(nira, path).endswith(b"k\r\n" + b"x" * 9)


def test_every_setting_is_stored_and_in_effect_at_once_and_after_a_restart(opened, start):
    content = b"\tone-two three\r\n"
    nira, path = opened(content)
    sheet = Sheet(nira)
    change_everything(sheet)
    sheet.confirm()
    assert nira_driver.values(SETTINGS) == EVERY_CHANGE
    check_looks(nira)
    check_editing(nira, path)
    path.write_bytes(content)
    again = restarted(nira, start, path)
    check_looks(again)
    check_editing(again, path)
    Sheet(again).confirm()  # what was read is what is written
    now = nira_driver.values(SETTINGS)
    del now["FindHist"]
    assert now == EVERY_CHANGE


def test_cancelling_every_change_changes_nothing(opened, start):
    nira, path = opened(b"\ta\r\n")
    key("Right")
    before = caret(nira)
    area = editor(nira)
    sheet = Sheet(nira)
    change_everything(sheet)
    key("Escape")
    sheet.wait_end()
    assert nira_driver.values(SETTINGS) == {}
    assert caret(nira) == before
    assert pixel(area.left + 200, area.top + 100) == SYSTEM_BACK
    again = restarted(nira, start, path)
    Sheet(again).confirm()
    assert found() == stored()


# ---- odd settings

@pytest.mark.parametrize("font", ["", "Courier New\u1000", "Courier New\u00ff", "No Such Font\u000e",
                                  "x" * 200 + "\u000e"],
                         ids=["empty", "size 0", "size 255", "gone", "200 characters"])
def test_odd_fonts_of_the_registry_harm_nothing(opened, font):
    nira_driver.forget_settings()
    nira_driver.set_text("Font", font)
    nira, path = opened(b"a\r\n")
    Sheet(nira).confirm()
    type_text("x")
    assert saved(nira, path) == b"xa\r\n"
    assert found() == stored(Font=font)


@pytest.mark.parametrize("name, value", [
    ("tabSize", 0), ("tabSize", 500), ("tabSize", 4000000000), ("undoSize", 0), ("undoSize", 4294967295),
    ("HistLen", 0), ("HistLen", 4294967295), ("PasteMode", 77), ("safeSave", 4294967295)])
def test_odd_values_of_the_registry_harm_nothing(opened, name, value):
    nira_driver.forget_settings()
    nira_driver.set_number(name, value)
    nira, path = opened(b"\ta\r\n")
    Sheet(nira).confirm()  # pages that were not shown look at nothing
    key("Right", "Right")
    type_text("x")
    nira.wait_title("notes.txt *")
    key("ctrl+z")
    nira.wait_title("notes.txt")  # which would be taken for the save's otherwise
    type_text("y")
    key("ctrl+shift+i")
    assert saved(nira, path).strip().startswith(b"ay")
    assert number(name) == value


def test_an_encoding_that_is_gone_is_offered_as_the_first(opened):
    nira_driver.forget_settings()
    nira_driver.set_text("DefaultEncoding", "KOI8-R")
    nira, _ = opened(b"a\r\n")
    sheet = Sheet(nira)
    sheet.show(EDITOR)
    assert sheet.controls("ComboBox")[0].text == "ANSI"
    sheet.confirm()
    assert found()["DefaultEncoding"] == (TEXT, "ANSI\0".encode("utf-16-le"))
