"""Fixtures of the end-to-end tests, and a picture of the screen for each test that fails."""
import os

import nira_driver
import pytest


@pytest.fixture(scope="session", autouse=True)
def desktop():
    """./test has made the screen and the prefix; on a person's own display the keys would go astray."""
    if not os.environ.get("NIRA_TEST_SCREEN"):
        pytest.exit("run these tests by ./test e2e, which sets up their screen", returncode=2)
    keeper = nira_driver.keep_desktop()
    yield
    keeper.stdin.close()
    keeper.wait(nira_driver.TIMEOUT)


@pytest.fixture
def start():
    """start(path) starts NIRA with fresh settings; all that were started are ended after the test."""
    started = []

    def start_one(path=None, **options):
        arguments = [] if path is None else [nira_driver.windows_path(path)]
        started.append(nira_driver.Nira(*arguments, **options))
        return started[-1]

    nira_driver.forget_settings()
    yield start_one
    for nira in started:
        nira.kill()


@pytest.fixture
def opened(start, tmp_path):
    """opened(content) starts NIRA on a file notes.txt of these bytes and waits for it: (nira, path)."""
    def open_one(content, name="notes.txt"):
        path = tmp_path / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)
        nira = start(path)
        nira.wait_title(path.name)
        return nira, path

    return open_one


@pytest.hookimpl(hookwrapper=True)
def pytest_runtest_makereport(item, call):
    outcome = yield
    if call.when == "call" and outcome.get_result().failed:
        name = "".join(char if char.isalnum() or char in "-_" else "_" for char in item.name)
        nira_driver.picture(nira_driver.FAILURES / f"{name}.png")
