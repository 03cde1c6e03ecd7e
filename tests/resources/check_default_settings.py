#!/usr/bin/env python3
"""Skarn.plist is a complete settings bundle: every key of a profile record, with the right type, 24 keys and 3 buttons
in force and in each of eight keymaps, and the device-wide settings. What settings there are, vornctl of the same build
tells. Usage: check_default_settings.py SOURCE SHARE"""

import json
import plistlib
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

KEYS = """43 20 26 8 21 57 4 22 7 9 225 29 27 6 44 226 82 233 79 235 81 234 80 232""".split()
BUTTONS = {"03": 3, "06": 18, "07": 19}
# What the controls of the configurator offer, where that is less than the engine takes.
OFFERED = {
    "Acceleration": range(11), "LEDEffects": range(5), "BrightnessKBNormal": range(1, 5),
    "BrightnessNormal": range(1, 5), "BrightnessBattery": range(1, 5), "PowerSaver": range(1, 5),
    "BatteryCriticalLevel": range(1, 6), "PollingRate": (125, 500, 1000),
}

failures = []


def expect(actual, expected, what):
    if actual != expected:
        failures.append(f"{what}: {actual!r} instead of {expected!r}")


def is_integer(value):
    return isinstance(value, int) and not isinstance(value, bool)


def check_groups(groups, where):
    keys = {key: {"command": 45, "param1": int(key), "param2": 0} for key in KEYS}
    buttons = {button: {"command": command, "param1": 0, "param2": 0} for button, command in BUTTONS.items()}
    expect(groups["Keys"], keys, f"Keys of {where}")
    expect(groups["Buttons"], buttons, f"Buttons of {where}")


def check_profile(profile, settings):
    named_by_people = {"KeymapNames"}
    expect(set(profile), {setting["key"] for setting in settings} - named_by_people, "keys of the profile")
    expect(profile["ProfileName"], "Default", "ProfileName")
    check_groups(profile, "the profile")
    expect(len(profile["Keymap"]), 8, "number of keymaps")
    for number, keymap in enumerate(profile["Keymap"], 1):
        expect(set(keymap), {"Keys", "Buttons"}, f"keys of keymap {number}")
        check_groups(keymap, f"keymap {number}")
    for setting in settings:
        if "minimum" not in setting:
            continue
        key = setting["key"]
        usable = OFFERED.get(key, range(setting["minimum"], setting["maximum"] + 1))
        if not is_integer(profile[key]) or profile[key] not in usable:
            failures.append(f"{key} is {profile[key]!r}, not one of {usable}")
    check_sensitivity(profile)
    check_lighting(profile)
    expect(profile["AppInfo"], dict.fromkeys(("application", "executable", "identifier", "signature"), ""), "AppInfo")


def check_sensitivity(profile):
    stages = profile["Stages"]
    expect(len(stages), 5, "number of stages")
    for stage in stages:
        expect(set(stage), {"dpix", "dpiy", "independentxy"}, "keys of a stage")
        if not all(is_integer(value) for value in stage.values()) or not 100 <= stage["dpix"] <= 5600:
            failures.append(f"stage {stage!r}")
    current = stages[profile["StageValue"]]
    expect({"dpix": profile["DPIX"], "dpiy": profile["DPIY"], "independentxy": profile["IndependentXYOn"]}, current,
           "sensitivity in force")


def check_lighting(profile):
    expect(len(profile["LEDColors"]), 3, "number of lighting zones")
    for colour in profile["LEDColors"]:
        expect(set(colour), {"Red", "Green", "Blue"}, "keys of a colour")
        if not all(isinstance(part, float) and 0 <= part <= 1 for part in colour.values()):
            failures.append(f"colour {colour!r}")


def main(source, share):
    original = Path(source) / "resources" / "Skarn.plist"
    expect((Path(share) / "Skarn.plist").read_bytes() == original.read_bytes(), True, "built file equal to the source")
    with original.open("rb") as file:
        root = plistlib.load(file)
    expect(set(root), {"Default Settings"}, "keys of the file")
    bundle = root["Default Settings"]
    expect(set(bundle), {"Profiles", "Macros", "DeviceSettings"}, "keys of the bundle")
    expect(bundle["Macros"], [], "Macros")
    expect(len(bundle["Profiles"]), 1, "number of profiles")
    profile = bundle["Profiles"][0]
    vornctl = Path(share).parents[1] / "bin" / "vornctl"
    settings = json.loads(subprocess.run([vornctl, "get", "--list", "--json"], check=True, capture_output=True).stdout)
    check_profile(profile, settings)
    device_wide = {setting["key"]: profile[setting["key"]] for setting in settings if setting["scope"] == "device"}
    expect(bundle["DeviceSettings"], {"ActiveProfile": 0, **device_wide}, "DeviceSettings")

    # A second reader must see the same values.
    if shutil.which("plistutil"):
        with tempfile.TemporaryDirectory() as folder:
            binary = Path(folder) / "binary.plist"
            subprocess.run(["plistutil", "-i", original, "-f", "bin", "-o", binary], check=True)
            expect(plistlib.loads(binary.read_bytes()) == root, True, "plistutil's reading equal to plistlib's")

    print("\n".join(failures) or "complete")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:3]))
