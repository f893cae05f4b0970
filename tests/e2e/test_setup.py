"""setup.cmd from the packed archive, as a person unpacks and starts it, and what /remove leaves."""
import zipfile

import pytest
from set_up_driver import BUILD, MACHINE, PROGRAM, USER, forget, pack, run_setup, unpack, value, wine


@pytest.fixture(scope="module")
def archive():
    return pack()


@pytest.fixture
def unpacked(archive, tmp_path):
    forget()
    folder = unpack(archive, tmp_path)
    yield folder
    wine("cmd", "/c", "setup.cmd", "/remove", folder=folder)
    forget()


def test_the_archive_holds_the_program_and_its_papers(archive):
    with zipfile.ZipFile(archive) as packed:
        names = set(packed.namelist())
        assert packed.read("NIRA/nira.exe") == (BUILD / "nira.exe").read_bytes()
        assert b"\r\n" in packed.read("NIRA/setup.cmd")
    for name in "nira-codecs.dll", "setup.cmd", "README.md", "manual.md", "LICENSE":
        assert f"NIRA/{name}" in names


def test_set_up_twice_and_remove(unpacked):
    for _ in range(2):
        run_setup(unpacked)
        assert (PROGRAM / "nira.exe").read_bytes() == (unpacked / "nira.exe").read_bytes()
        assert value(MACHINE + r"\Encodings", "Auto") == r"C:\Program Files\NIRA\nira-codecs.dll"
        assert value(USER, "DefaultEncoding") == "Auto"
        assert value(USER, "safeSave") == "0x1"
    # Wine keeps a batch file open behind the one that it started, so here the empty folder outlives its files.
    removed = wine("cmd", "/c", "call", r"C:\Program Files\NIRA\setup.cmd", "/remove", folder="/")
    assert removed.returncode == 0, removed.stdout
    assert not PROGRAM.exists() or not list(PROGRAM.iterdir())
    assert wine("reg", "query", MACHINE).returncode != 0
    assert value(USER, "DefaultEncoding") is None
    assert value(USER, "safeSave") is None


def test_what_the_person_has_is_kept(unpacked):
    wine("reg", "add", USER, "/v", "DefaultEncoding", "/t", "REG_SZ", "/d", "UTF-8", "/f")
    wine("reg", "add", USER, "/v", "tabSize", "/t", "REG_DWORD", "/d", "7", "/f")
    wine("reg", "add", MACHINE + r"\Encodings", "/v", "Mine", "/t", "REG_SZ", "/d", r"C:\mine.dll", "/f")
    run_setup(unpacked)
    assert value(USER, "DefaultEncoding") == "UTF-8"
    wine("reg", "add", USER, "/v", "safeSave", "/t", "REG_DWORD", "/d", "0", "/f")
    run_setup(unpacked)
    assert value(USER, "safeSave") == "0x0"
    run_setup(unpacked, "/remove")
    assert not PROGRAM.exists()
    assert value(USER, "DefaultEncoding") == "UTF-8"
    assert value(USER, "safeSave") == "0x0"
    assert value(USER, "tabSize") == "0x7"
    assert value(MACHINE + r"\Encodings", "Mine") == r"C:\mine.dll"
    assert value(MACHINE + r"\Encodings", "Auto") is None


def test_half_an_archive_is_told(unpacked):
    (unpacked / "nira-codecs.dll").unlink()
    ended = wine("cmd", "/c", "setup.cmd", folder=unpacked)
    assert ended.returncode != 0
    assert "Unpack the whole archive" in ended.stdout
    assert value(USER, "DefaultEncoding") is None
    assert not PROGRAM.exists()
