"""The files that the measurements read, made anew where they are missing.

A log is made of 80-byte lines (date, time, words); the single line is the same text with blanks for line ends. The
words come from a fixed seed, so that every run measures the same bytes.
"""

import os
import random

LOG_MEGABYTES = (1, 10, 50, 100)


def log_block(rng, words):
    lines = []
    for _ in range(10000):
        line = "2026-%02d-%02d %02d:%02d:%02d " % (rng.randint(1, 12), rng.randint(1, 28), rng.randint(0, 23),
                                                  rng.randint(0, 59), rng.randint(0, 59))
        while len(line) < 80:
            line += rng.choice(words) + " "
        lines.append(line[:79] + "\n")
    return "".join(lines)


def write_exactly(path, blocks, size):
    with open(path, "w", encoding="utf-8", newline="") as out:
        written = 0
        number = 0
        while written < size:
            piece = blocks[number % len(blocks)][:size - written]
            out.write(piece)
            written += len(piece)
            number += 1


def write_hits(path, log, hits):
    """The log with the word "needle" in `hits` of its lines, evenly spread."""
    with open(log, encoding="utf-8", newline="") as source:
        lines = source.readlines()
    for hit in range(hits):
        place = hit * len(lines) // hits
        lines[place] = lines[place][:30] + "needle" + lines[place][36:]
    with open(path, "w", encoding="utf-8", newline="") as out:
        out.writelines(lines)


def make(folder):
    os.makedirs(folder, exist_ok=True)
    rng = random.Random(7)
    words = ["".join(rng.choice("abcdefghijklmnopqrstuvwxyz") for _ in range(rng.randint(2, 9)))
             for _ in range(3000)]
    blocks = [log_block(rng, words) for _ in range(5)]
    wanted = [("log%d.txt" % size, blocks, size * 1000000) for size in LOG_MEGABYTES]
    wanted.append(("line50.txt", [block.replace("\n", " ") for block in blocks], 50 * 1000000))
    wanted.append(("log4.txt", blocks, 4 * 1000000))
    wanted.append(("log10k.txt", blocks, 10000))
    for name, source, size in wanted:
        path = os.path.join(folder, name)
        if not os.path.exists(path) or os.path.getsize(path) != size:
            write_exactly(path, source, size)
    for name, log, hits in (("hits1.txt", "log1.txt", 1000), ("hits100.txt", "log100.txt", 100000),
                            ("hits12000.txt", "log1.txt", 12000)):
        path = os.path.join(folder, name)
        if not os.path.exists(path) or os.path.getsize(path) != os.path.getsize(os.path.join(folder, log)):
            write_hits(path, os.path.join(folder, log), hits)
