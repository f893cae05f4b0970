"""How long a Windows program takes from its start until its text is on the screen: NIRA with a file of 100 MB, and
Wine's own notepad with one of 4 MB. How long a key takes until it is painted, in a large and a small document. And
how long Replace All takes by its dialog. And what a step takes with 2,000 and with 200 documents open.

    wine_start.py SCREEN FOLDER REPETITIONS      (by bench/wine_start.sh)

SCREEN is the file that holds the virtual screen's pixels. A black pixel in the part of the screen where both
programs show text, and neither a caption nor a menu, ends the measurement. Prints the medians in seconds as JSON.
"""

import json
import mmap
import os
import statistics
import struct
import subprocess
import sys
import tempfile
import time

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
LEFT, TOP, RIGHT, BOTTOM = 20, 100, 300, 200
TIMEOUT = 60


class Screen:
    """The pixels of an X window dump that the server keeps up to date."""

    def __init__(self, path):
        self.file = open(path, "rb")
        self.map = mmap.mmap(self.file.fileno(), 0, access=mmap.ACCESS_READ)
        header = struct.unpack(">25I", self.map[:100])
        self.start = header[0] + header[19] * 12  # header, then the colour map
        self.stride = header[12]

    def has_text(self):
        for y in range(TOP, BOTTOM, 2):
            row = self.start + y * self.stride
            pixels = self.map[row + LEFT * 4:row + RIGHT * 4]
            if any(pixels[i:i + 3] == b"\0\0\0" for i in range(0, len(pixels), 4)):
                return True
        return False


def wait(screen, wanted):
    end = time.monotonic() + TIMEOUT
    while screen.has_text() != wanted:
        if time.monotonic() > end:
            sys.exit("the screen did not come to show " + ("text" if wanted else "nothing"))
        time.sleep(0.002)


def windows_path(path):
    return "Z:" + os.path.abspath(path).replace("/", "\\")


def time_start(screen, command):
    wait(screen, False)
    started = time.monotonic()
    program = subprocess.Popen(["wine", *command], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                               stderr=subprocess.DEVNULL)
    wait(screen, True)
    seconds = time.monotonic() - started
    program.kill()
    program.wait()
    return seconds


def printed_microseconds(program, *arguments):
    """What a measuring program prints, in seconds."""
    with tempfile.TemporaryFile() as output:
        # Into a file: what Wine starts beside the program would hold a pipe open beyond its end.
        subprocess.run(["wine", os.path.join(ROOT, "build/windows/bench", program), *arguments], check=True,
                       stdin=subprocess.DEVNULL, stdout=output, stderr=subprocess.DEVNULL)
        output.seek(0)
        return float(output.read()) * 1e-6


def key_time(folder, name):
    """The median time from a key to its paint in the real window, of one run of 200 keys."""
    return printed_microseconds("nira_bench_keys.exe", windows_path(os.path.join(folder, name)))


def replace_time(folder):
    """From pressing "Replace All" until the box with the count is there."""
    return printed_microseconds("nira_bench_replace.exe", windows_path(os.path.join(ROOT, "build/windows/nira.exe")),
                                windows_path(os.path.join(folder, "hits12000.txt")), "12000")


def listing_times(folder):
    """The median times of listing a folder of 10,000 files as the file dialog does and by the bare system calls."""
    with tempfile.TemporaryFile() as output, tempfile.TemporaryDirectory(dir=folder) as place:
        for number in range(10000):
            with open(os.path.join(place, f"file number {number * 7919 % 10000:05}.txt"), "wb") as file:
                file.write(b"x" * (number % 97))
        subprocess.run(["wine", os.path.join(ROOT, "build/windows/bench/nira_bench_folder.exe"), windows_path(place)],
                       check=True, stdin=subprocess.DEVNULL, stdout=output, stderr=subprocess.DEVNULL)
        output.seek(0)
        return [float(number) * 1e-6 for number in output.read().split()]


def document_times(folder, count):
    """The steps of bench/documents_win.cpp with that many documents, by name."""
    names = ("opening", "next", "list", "saving", "closing", "leaving")
    with tempfile.TemporaryFile() as output, tempfile.TemporaryDirectory(dir=folder) as place:
        for number in range(count):
            with open(os.path.join(place, f"{number}.txt"), "wb") as file:
                file.write(b"a line of text\r\n" * 40)
        subprocess.run(["wine", os.path.join(ROOT, "build/windows/bench/nira_bench_documents.exe"),
                        windows_path(os.path.join(ROOT, "build/windows/nira.exe")), windows_path(place), str(count)],
                       check=True, stdin=subprocess.DEVNULL, stdout=output, stderr=subprocess.DEVNULL)
        output.seek(0)
        return dict(zip(names, (float(number) * 1e-6 for number in output.read().split())))


def main():
    screen = Screen(sys.argv[1])
    folder, repetitions = sys.argv[2], int(sys.argv[3])
    keeper = subprocess.Popen(["wine", os.path.join(ROOT, "build/windows/tests/nira_probe.exe"), "serve"],
                              stdin=subprocess.PIPE, stdout=subprocess.DEVNULL)
    time.sleep(2)  # the desktop paints itself
    nira = [os.path.join(ROOT, "build/windows/nira.exe"), windows_path(os.path.join(folder, "log100.txt"))]
    notepad = ["notepad", windows_path(os.path.join(folder, "log4.txt"))]
    times = {"nira": [], "notepad": [], "keys_large": [], "keys_small": [], "replace": []}
    for _ in range(repetitions):
        times["nira"].append(time_start(screen, nira))
        times["notepad"].append(time_start(screen, notepad))
        times["keys_large"].append(key_time(folder, "log100.txt"))
        times["keys_small"].append(key_time(folder, "log10k.txt"))
        times["replace"].append(replace_time(folder))
    times["listing"], times["bare_listing"] = ([time] for time in listing_times(folder))
    documents = {"many_documents": document_times(folder, 2000), "few_documents": document_times(folder, 200)}
    keeper.stdin.close()
    keeper.wait()
    print(json.dumps({name: statistics.median(values) for name, values in times.items()} | documents))


if __name__ == "__main__":
    main()
