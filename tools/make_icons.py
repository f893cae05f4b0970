#!/usr/bin/env python3
"""Makes the bitmaps and icons of src/resources from the drawings in icons.txt.

    tools/make_icons.py            write the files
    tools/make_icons.py --check    exit with 1 and name the files that differ from the drawings
    tools/make_icons.py --sheet OUT.png    all pictures, enlarged, to look at

Bitmaps have 4 bits per pixel: the system's tool bars make the background of such a bitmap transparent, and
show a grey box behind the pictures of one with true colours.
"""

import argparse
import os
import struct
import sys
import zlib

RESOURCES = os.path.join(os.path.dirname(os.path.dirname(os.path.abspath(__file__))), "src", "resources")
SIDE = 16


class DrawingError(Exception):
    """A line of the drawings that cannot be understood."""


class Drawings:
    """What icons.txt holds: a palette, named grids of palette indices, and the files to make."""

    def __init__(self, text):
        self.palette = []  # (red, green, blue); index 0 is the background
        self.letters = {}
        self.images = {}
        self.files = []  # (kind, file name, [image names])
        self._parse(text.splitlines())
        self._verify()

    def _parse(self, lines):
        rows = None
        for number, raw in enumerate(lines, 1):
            line = raw.strip()
            if not line or line.startswith("#"):
                continue
            word = line.split()[0]
            if word == "colour":
                self._add_colour(line, number)
            elif word in ("bitmap", "icon"):
                head, names = line.split(":", 1)
                self.files.append((word, head.split()[1], names.split()))
            elif word == "image":
                rows = self.images.setdefault(line.split()[1], [])
            elif rows is None:
                raise DrawingError(f"line {number}: a row outside an image")
            else:
                rows.append(self._row(line, number))

    def _add_colour(self, line, number):
        _, letter, value = line.split()
        if letter in self.letters or len(self.palette) == 16:
            raise DrawingError(f"line {number}: colour {letter} is given twice or is the 17th")
        self.letters[letter] = len(self.palette)
        self.palette.append(tuple(bytes.fromhex(value)))

    def _row(self, line, number):
        if len(line) != SIDE or any(letter not in self.letters for letter in line):
            raise DrawingError(f"line {number}: not {SIDE} letters of the palette")
        return [self.letters[letter] for letter in line]

    def _verify(self):
        for name, rows in self.images.items():
            if len(rows) != SIDE:
                raise DrawingError(f"image {name} has {len(rows)} rows")
        for kind, file_name, names in self.files:
            missing = [name for name in names if name not in self.images]
            if missing or not names or (kind == "icon" and len(names) != 1):
                raise DrawingError(f"{file_name}: needs existing images (one for an icon), missing {missing}")


def enlarge(grid, factor):
    """Enlarges by 2 or 3. A corner pixel takes the neighbours' colour where these two agree, so that slanted
    edges come out as slanted lines instead of stairs."""
    size = len(grid)

    def at(row, column):
        return grid[min(max(row, 0), size - 1)][min(max(column, 0), size - 1)]

    result = [[0] * (size * factor) for _ in range(size * factor)]
    last = factor - 1
    for row in range(size):
        for column in range(size):
            here = at(row, column)
            above, below = at(row - 1, column), at(row + 1, column)
            left, right = at(row, column - 1), at(row, column + 1)
            for y in range(factor):
                for x in range(factor):
                    result[row * factor + y][column * factor + x] = here
            if above == below or left == right:
                continue
            for y, vertical in ((0, above), (last, below)):
                for x, horizontal in ((0, left), (last, right)):
                    if vertical == horizontal:
                        result[row * factor + y][column * factor + x] = vertical
    return result


def packed_rows(grid, bits):
    """Pixel rows from the bottom up, each padded to 32 bits, as bitmaps keep them."""
    data = bytearray()
    for row in reversed(grid):
        value = 0
        for pixel in row:
            value = value << bits | pixel
        padding = -len(row) * bits % 32
        data += (value << padding).to_bytes((len(row) * bits + padding) // 8, "big")
    return bytes(data)


def info_header(width, height, size_of_pixels):
    return struct.pack("<IiiHHIIiiII", 40, width, height, 1, 4, 0, size_of_pixels, 0, 0, 16, 16)


def colour_table(palette):
    entries = palette + [(0, 0, 0)] * (16 - len(palette))
    return b"".join(struct.pack("<BBBB", blue, green, red, 0) for red, green, blue in entries)


def bitmap_file(palette, grids):
    rows = [sum((grid[row] for grid in grids), []) for row in range(SIDE)]
    pixels = packed_rows(rows, 4)
    body = info_header(len(rows[0]), SIDE, len(pixels)) + colour_table(palette)
    offset = 14 + len(body)
    return struct.pack("<2sIHHI", b"BM", offset + len(pixels), 0, 0, offset) + body + pixels


def icon_image(palette, grid):
    """One size of an icon: colours, then a mask that is 1 where the picture is transparent. Such pixels must be
    black, or they are mixed into what lies behind."""
    black = [(0, 0, 0)] + palette[1:]
    pixels = packed_rows(grid, 4)
    mask = packed_rows([[int(pixel == 0) for pixel in row] for row in grid], 1)
    header = info_header(len(grid), 2 * len(grid), len(pixels) + len(mask))
    return header + colour_table(black) + pixels + mask


def icon_file(palette, grid):
    grids = [grid, enlarge(grid, 2), enlarge(grid, 3)]
    images = [icon_image(palette, each) for each in grids]
    offset = 6 + 16 * len(images)
    directory = struct.pack("<HHH", 0, 1, len(images))
    for each, image in zip(grids, images):
        directory += struct.pack("<BBBBHHII", len(each), len(each), 16, 0, 1, 4, len(image), offset)
        offset += len(image)
    return directory + b"".join(images)


def make_files(drawings):
    """File name -> bytes, for every file that the drawings name."""
    made = {}
    for kind, file_name, names in drawings.files:
        grids = [drawings.images[name] for name in names]
        if kind == "bitmap":
            made[file_name] = bitmap_file(drawings.palette, grids)
        else:
            made[file_name] = icon_file(drawings.palette, grids[0])
    return made


def differing_files(made, folder):
    """Names of the files in `folder` that are missing or not what the drawings give."""
    differing = []
    for name, data in made.items():
        try:
            with open(os.path.join(folder, name), "rb") as file:
                same = file.read() == data
        except OSError:
            same = False
        if not same:
            differing.append(name)
    return differing


def png_sheet(drawings, zoom=8, per_row=6):
    """Every picture enlarged, with its true size beside it; icons also in their larger sizes."""
    icons = {names[0] for kind, _, names in drawings.files if kind == "icon"}
    cell = SIDE * zoom + 60
    names = list(drawings.images)
    rows = [[0] * (cell * per_row) for _ in range(cell * -(-len(names) // per_row))]

    def paste(grid, top, left, scale):
        for y in range(len(grid) * scale):
            for x in range(len(grid) * scale):
                rows[top + y][left + x] = grid[y // scale][x // scale]

    for index, name in enumerate(names):
        top, left = index // per_row * cell + 4, index % per_row * cell + 4
        grid = drawings.images[name]
        paste(grid, top, left, zoom)
        paste(grid, top, left + SIDE * zoom + 4, 1)
        if name in icons:
            paste(enlarge(grid, 2), top + 20, left + SIDE * zoom + 4, 1)
            paste(enlarge(grid, 3), top + 56, left + SIDE * zoom + 4, 1)
    return png_file(drawings.palette, rows)


def png_file(palette, rows):
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    header = struct.pack(">IIBBBBB", len(rows[0]), len(rows), 8, 3, 0, 0, 0)
    pixels = zlib.compress(b"".join(b"\0" + bytes(row) for row in rows))
    colours = b"".join(bytes(colour) for colour in palette)
    parts = [chunk(b"IHDR", header), chunk(b"PLTE", colours), chunk(b"IDAT", pixels), chunk(b"IEND", b"")]
    return b"\x89PNG\r\n\x1a\n" + b"".join(parts)


def write_file(path, data):
    with open(path, "wb") as file:
        file.write(data)


def main(arguments):
    parser = argparse.ArgumentParser(description="Makes NIRA's bitmaps and icons from icons.txt.")
    parser.add_argument("--check", action="store_true", help="only tell whether the files are up to date")
    parser.add_argument("--sheet", metavar="OUT.png", help="only write a picture of all drawings, enlarged")
    options = parser.parse_args(arguments)
    with open(os.path.join(RESOURCES, "icons.txt"), encoding="utf-8") as file:
        drawings = Drawings(file.read())
    if options.sheet:
        write_file(options.sheet, png_sheet(drawings))
        return 0
    made = make_files(drawings)
    differing = differing_files(made, RESOURCES)
    if options.check:
        for name in differing:
            print(f"src/resources/{name} is not what icons.txt gives; run tools/make_icons.py")
        return 1 if differing else 0
    for name in differing:
        write_file(os.path.join(RESOURCES, name), made[name])
        print(f"wrote src/resources/{name}")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
