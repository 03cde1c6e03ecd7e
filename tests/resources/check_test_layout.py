#!/usr/bin/env python3
"""The folders of the tests mirror those of the sources: NAME_test.cpp and NAME_ASPECT_test.cpp stand for NAME.cpp or
NAME.h of the same folder, their classes and suites are named after them, and every file is built, run or included
somewhere. Usage: check_test_layout.py SOURCE"""

import re
import sys
from pathlib import Path

# Without a counterpart in src: whole programs, their inputs, and what the tests themselves are made of.
APART = {"e2e", "fuzz", "support", "resources"}
SUITE = re.compile(r"^(?:SKARN_QTEST|TEST|TEST_F|TEST_P)\((\w+)", re.MULTILINE)


def camel(words):
    return "".join(word[0].upper() + word[1:] for word in words.split("_"))


def misplaced_test(tests, sources, test):
    folder = test.parent.relative_to(tests)
    words = test.stem.removesuffix("_test").split("_")
    for count in range(len(words), 0, -1):
        name = "_".join(words[:count])
        if any((sources / folder / f"{name}.{suffix}").exists() for suffix in ("cpp", "h")):
            return None
    return f"{test}: there is no such file in {sources / folder}"


def misnamed_suites(test):
    stem = test.stem.removesuffix("_test")
    text = test.read_text()
    for suite in sorted(set(SUITE.findall(text))):
        if f"SKARN_QTEST({suite})" in text:
            is_right = suite == camel(test.stem)
        else:
            # A program is no class: its suites have the name of the program.
            is_right = suite.endswith("Test") and (stem.startswith("main") or suite.startswith(camel(stem.split("_")[0])))
        if not is_right:
            yield f"{test}: the name of {suite} does not follow from the file's"


def listed_files(root):
    """Every file that a CMakeLists.txt of the tests names, from where it stands or from the root."""
    files = set()
    for lists in (root / "tests").rglob("CMakeLists.txt"):
        for word in re.findall(r"[\w./-]+\.(?:cpp|py|bash|zsh|fish)", lists.read_text()):
            files |= {(folder / word.lstrip("/")).resolve() for folder in (lists.parent, root)}
    return files


def unused_files(root):
    tests = root / "tests"
    files = listed_files(root)
    resource_checks = (root / "resources" / "CMakeLists.txt").read_text()
    code = "\n".join(file.read_text() for file in tests.rglob("*") if file.suffix in (".cpp", ".h"))
    scripts = "\n".join(file.read_text() for file in tests.rglob("*.py"))
    gate = (root / "check").read_text()
    guest = "\n".join(file.read_text() for file in sorted((tests / "guest").iterdir()))
    for file in sorted(tests.rglob("*")):
        is_imported = re.search(rf"^(?:import|from) {re.escape(file.stem)}\b", scripts, re.MULTILINE)
        if file.suffix == ".h":
            is_used = re.search(rf'#include "(?:[\w./-]+/)?{file.name}"', code)
        elif file.parent.name == "resources":
            is_used = re.search(rf"\b{file.stem.removeprefix('check_')}\b", resource_checks)
        elif file.parent.name == "guest":
            is_used = file.name in guest or is_imported
        elif file.suffix in (".cpp", ".py", ".bash", ".zsh", ".fish"):
            # One program for each reader, by a pattern; a module of another script; a step of the gate.
            is_used = (file.resolve() in files or file.stem.startswith("fuzz_") or is_imported or
                       file.relative_to(root).as_posix() in gate)
        else:
            continue
        if not is_used:
            yield f"{file}: nothing builds, runs or includes it"


def main(source):
    root = Path(source)
    tests, sources = root / "tests", root / "src"
    faults = []
    for test in sorted(tests.rglob("*_test.cpp")):
        if test.relative_to(tests).parts[0] not in APART:
            faults += filter(None, [misplaced_test(tests, sources, test)])
            faults += misnamed_suites(test)
    faults += unused_files(root)
    print("\n".join(faults) or "every test is in its place")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
