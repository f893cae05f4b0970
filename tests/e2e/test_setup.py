"""setup.cmd from the packed archive, as a person unpacks and starts it, and what /remove leaves."""
import os
import posixpath
import re
import subprocess
import time
import zipfile

import pytest
from set_up_driver import BUILD, ENCODINGS, MACHINE, PROGRAM, USER, forget, pack, run_setup, unpack, value, values, wine

# What a child of set-up ends with when somebody closes its window.
BROKEN_OFF = -1073741510


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
    for name in "nira-codecs.dll", "setup.cmd", "README.md", "docs/manual.md", "LICENSE":
        assert f"NIRA/{name}" in names


def linked_files(folder, text):
    """The files that a page in `folder` refers to."""
    links = re.findall(r"\]\(([^)#\s]+)", text)
    return {posixpath.normpath(posixpath.join(folder, link)) for link in links if "://" not in link}


def test_what_the_packed_papers_refer_to_is_packed(archive):
    linked = set()
    with zipfile.ZipFile(archive) as packed:
        names = set(packed.namelist())
        for page in (name for name in names if name.endswith(".md")):
            linked |= linked_files(posixpath.dirname(page), packed.read(page).decode())
    assert {"NIRA/docs/manual.md", "NIRA/docs/screenshots/main.png", "NIRA/plugins/nira_codec.h"} <= linked
    assert linked <= names


def test_what_the_installed_papers_refer_to_is_installed(unpacked):
    run_setup(unpacked)
    pages = list(PROGRAM.rglob("*.md"))
    assert {PROGRAM / "README.md", PROGRAM / "docs" / "manual.md"} <= set(pages)
    for page in pages:
        for link in linked_files(str(page.parent), page.read_text()):
            assert os.path.exists(link), f"{page} refers to {link}"


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


@pytest.fixture
def running(unpacked):
    """NIRA, set up and running."""
    run_setup(unpacked)
    nira = subprocess.Popen(["wine", r"C:\Program Files\NIRA\nira.exe"], stdin=subprocess.DEVNULL,
                            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    wait_for_window(nira)
    yield unpacked
    wine("taskkill", "/f", "/im", "nira.exe")
    nira.wait(30)


def wait_for_window(nira):
    for _ in range(150):
        search = ["xdotool", "search", "--onlyvisible", "--class", "nira.exe"]
        if subprocess.run(search, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False).returncode == 0:
            return
        assert nira.poll() is None
        time.sleep(0.1)
    raise AssertionError("NIRA showed no window")


def test_a_running_program_keeps_all_that_it_needs_to_save(running):
    encodings = values(ENCODINGS)
    assert len(encodings) > 10
    ended = wine("cmd", "/c", "setup.cmd", "/remove", folder=running)
    assert ended.returncode != 0
    assert "If NIRA is running" in ended.stdout
    assert values(ENCODINGS) == encodings
    assert value(USER, "DefaultEncoding") == "Auto"
    assert value(USER, "safeSave") == "0x1"
    assert (PROGRAM / "nira.exe").exists()
    assert (PROGRAM / "nira-codecs.dll").exists()


def without_rights(folder, administrator):
    """Has set-up in `folder` run as by somebody who may not write for the machine; `administrator` is the command that
    stands for the program that asks for one, and is given the other half's command line in %half%."""
    script = folder / "setup.cmd"
    text = script.read_bytes().decode()
    text, probes = re.subn(r'reg add "HKLM\\Software\\NIRA" /v Setup [^\r]*', "cmd /c exit 1", text)
    text, questions = re.subn(r"(?m)^powershell [^\r]*", lambda _: administrator, text)
    assert (probes, questions) == (1, 1)
    script.write_bytes(text.encode())


@pytest.mark.parametrize("code", [1223, BROKEN_OFF])
def test_an_administrator_who_does_not_allow_it_changes_nothing(unpacked, code):
    without_rights(unpacked, f"cmd /c exit {code}")
    ended = wine("cmd", "/c", "setup.cmd", folder=unpacked)
    assert ended.returncode == 1
    assert "NIRA could not be set up" in ended.stdout
    assert value(USER, "DefaultEncoding") is None
    assert not PROGRAM.exists()


@pytest.mark.parametrize("code", [1223, BROKEN_OFF])
def test_an_administrator_who_does_not_allow_removing_leaves_everything(unpacked, code):
    run_setup(unpacked)
    encodings = values(ENCODINGS)
    without_rights(unpacked, f"cmd /c exit {code}")
    ended = wine("cmd", "/c", "setup.cmd", "/remove", folder=unpacked)
    assert ended.returncode == 1
    assert "NIRA could not be removed" in ended.stdout
    assert value(USER, "DefaultEncoding") == "Auto"
    assert value(USER, "safeSave") == "0x1"
    assert values(ENCODINGS) == encodings
    assert (PROGRAM / "nira.exe").exists()


def test_who_starts_it_after_an_administrator_gets_the_settings(unpacked):
    run_setup(unpacked)
    wine("reg", "delete", USER, "/f")
    without_rights(unpacked, "cmd /c exit 1223")
    run_setup(unpacked)
    assert value(USER, "DefaultEncoding") == "Auto"
    assert value(USER, "safeSave") == "0x1"


def test_another_program_than_the_one_here_needs_an_administrator(unpacked):
    run_setup(unpacked)
    wine("reg", "delete", USER, "/f")
    (unpacked / "nira.exe").write_bytes((unpacked / "nira.exe").read_bytes() + b"newer")
    without_rights(unpacked, "cmd /c exit 1223")
    ended = wine("cmd", "/c", "setup.cmd", folder=unpacked)
    assert ended.returncode == 1
    assert value(USER, "DefaultEncoding") is None


def test_who_removes_it_after_an_administrator_loses_the_settings(unpacked):
    run_setup(unpacked)
    run_setup(unpacked, "/machine_remove")
    assert value(USER, "DefaultEncoding") == "Auto"
    without_rights(unpacked, "cmd /c exit 1223")
    run_setup(unpacked, "/remove")
    assert value(USER, "DefaultEncoding") is None


@pytest.mark.parametrize("name", ["it's here", "a, b (x86)", "x^y"])
def test_the_folder_may_have_any_name(unpacked, name):
    folder = unpacked.rename(unpacked.parent / name)
    without_rights(folder, "cmd %half%")
    try:
        ended = wine("cmd", "/c", "setup.cmd", folder=folder)
        assert ended.returncode == 0, ended.stdout
        assert (PROGRAM / "nira.exe").exists()
        assert value(ENCODINGS, "Auto") == r"C:\Program Files\NIRA\nira-codecs.dll"
    finally:
        folder.rename(unpacked)
