"""setup.cmd from the packed archive, as a person unpacks and starts it, and the registry that it writes."""
import os
import pathlib
import subprocess
import tempfile
import zipfile

BUILD = pathlib.Path(__file__).resolve().parents[2] / "build" / "windows"
PROGRAM = pathlib.Path(os.environ["WINEPREFIX"]) / "drive_c" / "Program Files" / "NIRA"
MACHINE = r"HKLM\Software\NIRA"
USER = r"HKCU\Software\NIRA"
ENCODINGS = MACHINE + r"\Encodings"


def wine(*arguments, folder=None):
    # Into a file: a process that Wine starts beside the program would hold a pipe open beyond its end.
    with tempfile.TemporaryFile() as output:
        ended = subprocess.run(["wine", *arguments], cwd=folder, stdin=subprocess.DEVNULL, stdout=output,
                               stderr=subprocess.STDOUT, timeout=120, check=False)
        output.seek(0)
        ended.stdout = output.read().decode(errors="replace").replace("\r\n", "\n")
    return ended


def pack():
    subprocess.run(["cmake", "--build", str(BUILD), "--target", "package"], check=True, stdout=subprocess.DEVNULL)
    return BUILD / "nira-windows.zip"


def unpack(archive, folder):
    with zipfile.ZipFile(archive) as packed:
        packed.extractall(folder)
    return folder / "NIRA"


def run_setup(folder, *arguments):
    ended = wine("cmd", "/c", "setup.cmd", *arguments, folder=folder)
    assert ended.returncode == 0, ended.stdout
    return ended.stdout


def values(key):
    """All values of a registry key as {name: text}."""
    lines = [line for line in wine("reg", "query", key).stdout.splitlines() if line.startswith("    ")]
    fields = (line.strip().split("    ", 2) for line in lines)
    return {name: text for name, _, text in (field for field in fields if len(field) == 3)}


def value(key, name):
    ended = wine("reg", "query", key, "/v", name)
    lines = [line.split(None, 2) for line in ended.stdout.splitlines() if line.startswith("    ")]
    return lines[0][2].strip() if ended.returncode == 0 and lines else None


def set_value(key, name, text):
    ended = wine("reg", "add", key, "/v", name, "/t", "REG_SZ", "/d", str(text), "/f")
    assert ended.returncode == 0, ended.stdout


def forget():
    for key in MACHINE, USER:
        wine("reg", "delete", key, "/f")
