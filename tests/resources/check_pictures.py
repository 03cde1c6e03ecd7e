#!/usr/bin/env python3
"""Every picture that the programs load is built at 1x and, twice as large, at 2x; the keymap pictures differ from each
other; and the drawing of the mouse has one group with an outline and a number for each of the 27 controls.
Usage: check_pictures.py SOURCE SHARE"""

import struct
import sys
import xml.etree.ElementTree as ElementTree
from pathlib import Path

NUMBERS = """One Two Three Four Five Six Seven Eight Nine Ten Eleven Twelve Thirteen Fourteen Fifteen Sixteen Seventeen
    Eighteen Nineteen Twenty TwentyOne TwentyTwo TwentyThree TwentyFour TwentyFive TwentySix TwentySeven""".split()
KEYMAPS = [f"skarn_keymap{number}" for number in range(1, 8)] + ["Skarn_keymap8"]
SIZES = {
    **{name: (420, 412) for name in KEYMAPS + ["mouseUnlit", "mouseLight"]},
    **{name: (28, 16) for name in ("battery", "battery1", "battery2", "battery3")},
    **{name: (24, 24) for name in
       ("usb", "wireless", "help", "undo", "redo", "history", "communityDiscussion", "communityNews", "communityGuild")},
    **{name: (16, 16) for name in ["GearOn", "GearOff"] + [f"arrow{number}" for number in range(1, 9)]},
    **{f"panel{name}": (16, 16) for name in ("Back", "Forward", "Parent", "NewFolder", "List", "Details")},
    "mouse-small": (40, 40),
    "AppIcon": (64, 64),
}
SVG = "{http://www.w3.org/2000/svg}"

failures = []


def png_size(path):
    """Width and height from the header chunk, None when the file is not a PNG file."""
    header = path.read_bytes()[:24] if path.is_file() else b""
    return struct.unpack(">II", header[16:24]) if header[:8] == b"\x89PNG\r\n\x1a\n" else None


def check_pictures(images):
    for name, (width, height) in SIZES.items():
        for suffix, scale in (("", 1), ("@2x", 2)):
            size = png_size(images / f"{name}{suffix}.png")
            if size != (width * scale, height * scale):
                failures.append(f"{name}{suffix}.png is {size}, not {(width * scale, height * scale)}")
    distinct = {(images / f"{name}.png").read_bytes() for name in KEYMAPS if (images / f"{name}.png").is_file()}
    if len(distinct) != len(KEYMAPS):
        failures.append("two keymap pictures are alike")


def check_drawing(path):
    drawing = ElementTree.parse(path).getroot()
    ids = [element.get("id") for element in drawing.iter() if element.get("id")]
    if len(ids) != len(set(ids)):
        failures.append("an ID stands twice in mouse.svg")
    groups = {element.get("id"): element for element in drawing.iter(SVG + "g")}
    for number in NUMBERS:
        group = groups.get(f"mButton{number}")
        if group is None or [child.tag for child in group] != [SVG + "path", SVG + "path"]:
            failures.append(f"mButton{number} is not a group of an outline and a number")
    if sum(name.startswith("mButton") for name in ids) != len(NUMBERS):
        failures.append("mouse.svg names another number of controls than 27")
    for zone in ("zoneMain", "zoneSidestrips", "zoneUnderglow"):
        if zone not in ids:
            failures.append(f"{zone} is missing in mouse.svg")


def main(source, share):
    check_pictures(Path(share) / "images")
    check_drawing(Path(share) / "images" / "mouse.svg")
    print("\n".join(failures) or f"{len(SIZES)} pictures, {len(NUMBERS)} controls")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:3]))
