#!/usr/bin/env python3
"""The description for software centres names what is installed, in the version that is built, and appstreamcli, where
installed, accepts it. Usage: check_metainfo.py SOURCE SHARE"""

import re
import shutil
import subprocess
import sys
from pathlib import Path
from xml.etree import ElementTree

NAME = "org.vorn.SkarnConfigurator"


def main(source, share):
    source = Path(source)
    file = Path(share).parents[1] / "resources" / f"{NAME}.metainfo.xml"
    entry = (source / "resources" / f"{NAME}.desktop").read_text(encoding="utf-8")
    root = ElementTree.parse(file).getroot()
    version = re.search(r"^project\(skarn VERSION ([0-9.]+)", (source / "CMakeLists.txt").read_text(), re.M).group(1)
    programs = sorted(page.stem for page in (source / "docs").glob("*.1"))
    expected = {
        "id": (root.findtext("id"), NAME),
        "name": (root.findtext("name"), re.search(r"^Name=(.*)$", entry, re.M).group(1)),
        "launchable": (root.findtext("launchable"), f"{NAME}.desktop"),
        "icon": (root.findtext("icon"), re.search(r"^Icon=(.*)$", entry, re.M).group(1)),
        "binaries": (sorted(each.text for each in root.iter("binary")), programs),
        "newest release": (root.find("releases/release").get("version"), version),
    }
    failures = [f"{what} is {found!r} instead of {wanted!r}" for what, (found, wanted) in expected.items()
                if found != wanted]
    categories = re.search(r"^Categories=(.*)$", entry, re.M).group(1).split(";")
    failures += [f"{each.text} is no category of the desktop entry" for each in root.iter("category")
                 if each.text not in categories]
    if shutil.which("appstreamcli"):
        result = subprocess.run(["appstreamcli", "validate", "--pedantic", "--no-net", file], capture_output=True, text=True)
        if result.returncode != 0:
            failures.append(result.stdout + result.stderr)
    print("\n".join(failures) or "the description is right")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:3]))
