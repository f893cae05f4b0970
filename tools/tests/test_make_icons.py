"""The committed pictures are what icons.txt draws, and the files that the script makes are well formed."""

import os
import struct
import sys
import tempfile
import unittest

sys.path.insert(0, os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
import make_icons  # noqa: E402


def drawn():
    with open(os.path.join(make_icons.RESOURCES, "icons.txt"), encoding="utf-8") as file:
        return make_icons.Drawings(file.read())


def tiny(rows):
    head = "colour . C0C0C0\ncolour k 000000\nbitmap one.bmp: dot\nicon one.ico: dot\nimage dot\n"
    return make_icons.Drawings(head + "\n".join(rows))


class CommittedFiles(unittest.TestCase):
    def test_equal_the_drawings(self):
        self.assertEqual(make_icons.differing_files(make_icons.make_files(drawn()), make_icons.RESOURCES), [])

    def test_background_is_the_colour_that_tool_bars_make_transparent(self):
        self.assertEqual(drawn().palette[0], (0xC0, 0xC0, 0xC0))

    def test_no_two_pictures_are_alike(self):
        grids = [str(grid) for grid in drawn().images.values()]
        self.assertEqual(len(grids), len(set(grids)))


class Check(unittest.TestCase):
    def test_names_missing_and_changed_files(self):
        made = make_icons.make_files(tiny(["." * 16] * 16))
        with tempfile.TemporaryDirectory() as folder:
            self.assertEqual(make_icons.differing_files(made, folder), ["one.bmp", "one.ico"])
            make_icons.write_file(os.path.join(folder, "one.bmp"), made["one.bmp"])
            make_icons.write_file(os.path.join(folder, "one.ico"), made["one.ico"][:-1])
            self.assertEqual(make_icons.differing_files(made, folder), ["one.ico"])


class Files(unittest.TestCase):
    def setUp(self):
        self.made = make_icons.make_files(tiny(["k" * 16] + ["." * 16] * 15))

    def test_bitmap_has_four_bits_and_rows_from_the_bottom_up(self):
        data = self.made["one.bmp"]
        size, offset = struct.unpack_from("<I4xI", data, 2)
        width, height, _, bits = struct.unpack_from("<iiHH", data, 18)
        self.assertEqual((size, width, height, bits), (len(data), 16, 16, 4))
        self.assertEqual(data[offset:], bytes(15 * 8) + b"\x11" * 8)

    def test_icon_has_three_sizes_whose_masks_hide_the_background(self):
        data = self.made["one.ico"]
        self.assertEqual(struct.unpack_from("<HHH", data), (0, 1, 3))
        for index, side in enumerate((16, 32, 48)):
            width, _, _, _, _, bits, size, offset = struct.unpack_from("<BBBBHHII", data, 6 + 16 * index)
            self.assertEqual((width, bits), (side, 4))
            stride = -(-side // 32) * 4
            hidden = (b"\xff" * (side // 8)).ljust(stride, b"\0") * (side - side // 16)
            mask = data[offset + size - stride * side : offset + size]
            self.assertEqual(mask, hidden + bytes(stride * (side // 16)))

    def test_enlarging_fills_the_stairs_of_a_slanted_edge(self):
        # The pixel in the corner of the stair takes the colour of its two like neighbours.
        self.assertEqual(make_icons.enlarge([[1, 1], [1, 0]], 2)[2][2:], [1, 0])


class BadDrawings(unittest.TestCase):
    def test_wrong_letters_widths_and_row_counts_are_refused(self):
        for rows in (["x" * 16] * 16, ["." * 15] * 16, ["." * 16] * 15):
            with self.assertRaises(make_icons.DrawingError):
                tiny(rows)

    def test_a_file_of_an_unknown_picture_is_refused(self):
        with self.assertRaises(make_icons.DrawingError):
            make_icons.Drawings("colour . C0C0C0\nbitmap one.bmp: nothing\n")


if __name__ == "__main__":
    unittest.main()
