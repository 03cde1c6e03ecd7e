#!/usr/bin/env python3
"""Each program has a manual page with the options that its --help tells, and no others; mandoc and groff, where installed,
find nothing to warn of in it. Usage: check_manual_pages.py SOURCE SHARE"""

import os
import re
import shutil
import subprocess
import sys
from pathlib import Path

PROGRAMS = ("skarn-configurator", "vorn-core-engine", "vornctl")
OPTION = re.compile(r"(?<![\w-])--[a-z][a-z-]*")


def output_of(*command):
    environment = {**os.environ, "QT_QPA_PLATFORM": "offscreen", "LC_ALL": "C.UTF-8", "MANWIDTH": "80"}
    return subprocess.run(command, capture_output=True, text=True, env=environment, check=False)


def complaints(page):
    if shutil.which("mandoc"):
        yield output_of("mandoc", "-T", "lint", "-W", "warning", page).stdout
    if shutil.which("man") and shutil.which("groff"):
        yield output_of("man", "--warnings", "-E", "UTF-8", "-l", "-Tutf8", "-Z", page).stderr


def main(source, share):
    failures = []
    for program in PROGRAMS:
        page = Path(source) / "docs" / f"{program}.1"
        told = set(OPTION.findall(output_of(Path(share).parents[1] / "bin" / program, "--help").stdout))
        text = re.sub(r"\\f.", "", page.read_text(encoding="utf-8"))
        # Lines that are no words of the page's own: examples of other commands.
        text = "\n".join(line for line in text.splitlines() if not line.startswith(("systemctl", "journalctl")))
        described = set(OPTION.findall(text.replace("\\-", "-")))
        if not told:
            failures.append(f"{program} --help tells no options")
        failures += [f"{page.name} lacks {option}" for option in sorted(told - described)]
        failures += [f"{program} has no {option}" for option in sorted(described - told)]
        failures += [complaint for complaint in complaints(page) if complaint]
    print("\n".join(failures) or "all pages are right")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:3]))
