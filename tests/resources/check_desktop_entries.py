#!/usr/bin/env python3
"""The desktop entry and the autostart entry have what a desktop needs to start the configurator, and
desktop-file-validate, where installed, accepts them. Usage: check_desktop_entries.py SOURCE SHARE"""

import configparser
import shutil
import subprocess
import sys
from pathlib import Path

EXPECTED = {
    "org.vorn.SkarnConfigurator.desktop": {"Exec": "skarn-configurator"},
    "org.vorn.SkarnConfigurator-autostart.desktop": {"Exec": "skarn-configurator --launch-in-background"},
}
COMMON = {"Type": "Application", "Name": "Skarn", "Icon": "org.vorn.SkarnConfigurator", "Terminal": "false",
          "DBusActivatable": "false"}


def main(source, share):
    resources = Path(source) / "resources"
    failures = []
    for name, own in EXPECTED.items():
        parser = configparser.ConfigParser(interpolation=None)
        parser.optionxform = str
        parser.read(resources / name, encoding="utf-8")
        entry = dict(parser["Desktop Entry"]) if parser.has_section("Desktop Entry") else {}
        for key, value in {**COMMON, **own}.items():
            if entry.get(key) != value:
                failures.append(f"{name}: {key} is {entry.get(key)!r} instead of {value!r}")
        if not (resources / f"{entry.get('Icon')}.svg").is_file():
            failures.append(f"{name}: no icon {entry.get('Icon')}")
        if shutil.which("desktop-file-validate"):
            result = subprocess.run(["desktop-file-validate", resources / name], capture_output=True, text=True)
            if result.returncode != 0:
                failures.append(result.stdout + result.stderr)
    print("\n".join(failures) or "both entries are right")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:3]))
