#!/usr/bin/env python3
"""count_tests.py FILE EXITCODE: prints "PASSED FAILED" for a JUnit file as GoogleTest and pytest write it.

A skipped or disabled test shows nothing, so it counts as failed. So does a run that left no readable file, that
ran no test, or that ended with an error although no test reports one.
"""
import sys
import xml.etree.ElementTree as ElementTree


def is_good(case):
    if case.get("status", "run") != "run" or case.get("result", "completed") != "completed":
        return False
    return all(case.find(tag) is None for tag in ("failure", "error", "skipped"))


def count(path, exit_code):
    try:
        cases = list(ElementTree.parse(path).getroot().iter("testcase"))
    except (OSError, ElementTree.ParseError):
        return 0, 1
    passed = sum(1 for case in cases if is_good(case))
    failed = len(cases) - passed
    if failed == 0 and (passed == 0 or exit_code != 0):
        failed = 1
    return passed, failed


if __name__ == "__main__":
    print(*count(sys.argv[1], int(sys.argv[2])))
