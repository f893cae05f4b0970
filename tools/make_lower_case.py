#!/usr/bin/env python3
"""Writes src/base/lower_case.inc: Unicode's simple lower-case mappings of the Basic Multilingual Plane.

    tools/make_lower_case.py > src/base/lower_case.inc

They come from Python's unicodedata. Only mappings to one UTF-16 unit are kept. Python's str.lower gives the full
mapping, which is another one than the simple mapping for U+0130 alone.
"""
import unicodedata

PAGE = 256


def lower(unit):
    if unit == 0x0130:
        return 0x0069
    text = chr(unit)
    mapped = text.lower() if unicodedata.category(text) != "Cs" else text
    return ord(mapped) if len(mapped) == 1 and ord(mapped) < 0x10000 else unit


def rows(values, width):
    """The numbers as lines of at most 100 columns."""
    per_line = 100 // (width + 2)
    return ["    " + ", ".join("%*s" % (width, value) for value in values[i:i + per_line]) + ","
            for i in range(0, len(values), per_line)]


def main():
    pages = [[lower(page * PAGE + i) for i in range(PAGE)] for page in range(0x10000 // PAGE)]
    identity = tuple([0] * PAGE)
    kept = [identity]
    numbers = []
    for page, units in enumerate(pages):
        differences = tuple((unit - (page * PAGE + i)) & 0xFFFF for i, unit in enumerate(units))
        if differences not in kept:
            kept.append(differences)
        numbers.append(kept.index(differences))
    variants = {}
    for unit in range(0x10000):
        variants.setdefault(lower(unit), []).append(unit)
    most = max(len(units) for units in variants.values())
    print("// Written by tools/make_lower_case.py from Unicode %s. Do not edit." % unicodedata.unidata_version)
    print("constexpr uint32_t kMostLowerVariants = %d;  // units that lower to the same unit" % most)
    print("constexpr uint8_t kPageNumbers[%d] = {" % len(numbers))
    print("\n".join(rows(numbers, 2)))
    print("};")
    print("// What to add to a unit, modulo 65536, to lower it.")
    print("constexpr uint16_t kPages[%d][%d] = {" % (len(kept), PAGE))
    for page in kept:
        print("{")
        print("\n".join(rows(page, 5)))
        print("},")
    print("};")


if __name__ == "__main__":
    main()
