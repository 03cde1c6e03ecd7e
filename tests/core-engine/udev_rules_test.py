#!/usr/bin/env python3
"""Whom the udev rules give which device file, worked out for devices as the kernel shows them.
Usage: udev_rules_test.py RULES

It reads as much of the language of udev(7) as the rules use: a key with S looks at the device and at all above it, and
those of one line have to be true of the same one."""

import re
import sys
import unittest
from fnmatch import fnmatchcase
from pathlib import Path

RULES = Path(sys.argv.pop(1))
ITEM = re.compile(r'\s*([A-Z]+)(?:\{([^}]*)\})?\s*(==|!=|\+=|=)\s*(e?)"((?:[^"\\]|\\.)*)"\s*,?')

MOUSE_FIRST = "\x05\x01\x09\x02\xa1\x01 and more"
KEYBOARD_FIRST = "\x05\x01\x09\x06\xa1\x01 and more"
VENDOR_FIRST = "\x06\x00\xff\x09\x01\xa1\x01 and more"


def parsed(text):
    for line in text.splitlines():
        if not line.strip() or line.startswith("#"):
            continue
        items = ITEM.findall(line)
        assert ITEM.sub("", line).strip() == "", line
        yield [(key, name, operator, value.encode("latin-1").decode("unicode_escape") if escaped else value)
               for key, name, operator, escaped, value in items]


class Device:
    """path: its DEVPATH; properties: what udev knows already; above: attributes of the devices above it, the nearest
    first, "subsystem" among them."""

    def __init__(self, path, properties, above=(), subsystem="input"):
        self.properties = dict(properties, SUBSYSTEM=subsystem, KERNEL=path.rsplit("/", 1)[-1], DEVPATH=path,
                               ACTION="add")
        self.above = above

    def own(self, key, name):
        return self.properties.get(name if key == "ENV" else key, "")

    def is_given(self):
        """Whether the person at the screen gets it."""
        tags, label = set(), None
        for items in parsed(RULES.read_text(encoding="utf-8")):
            if label is not None and ("LABEL", "", "=", label) not in items:
                continue
            label = None
            if not self.fulfils([item for item in items if item[2] in ("==", "!=")]):
                continue
            for key, name, operator, value in items:
                if key == "TAG" and operator == "+=":
                    tags.add(value)
                elif key == "ENV" and operator == "=":
                    self.properties[name] = value
                elif key == "GOTO":
                    label = value
        return tags == {"uaccess"}

    def fulfils(self, conditions):
        def is_true(found, operator, value):
            # An attribute that is not there is neither equal nor unequal.
            if found is None:
                return False
            return any(fnmatchcase(found, each) for each in value.split("|")) == (operator == "==")
        of_above = [condition for condition in conditions if condition[0] in ("ATTRS", "SUBSYSTEMS")]
        return all(is_true(self.own(key, name), operator, value)
                   for key, name, operator, value in conditions if (key, name, operator, value) not in of_above) and (
            not of_above or any(
                all(is_true(device.get(name if key == "ATTRS" else "subsystem"), operator, value)
                    for key, name, operator, value in of_above) for device in self.above))


HUB = "/devices/pci0000:00/0000:00:14.0/usb1/1-2"


def node(path, kinds, *descriptors, bus="0003", interfaces=""):
    """An event node; descriptors: those of the HID devices above it, the nearest first."""
    properties = {f"ID_INPUT_{kind}": "1" for kind in kinds}
    if interfaces:
        properties["ID_USB_INTERFACES"] = interfaces
    above = [{"subsystem": "input", "id/bustype": bus}]
    above += [{"subsystem": "hid", "report_descriptor": descriptor} for descriptor in descriptors]
    return Device(path + "/input/input5/event5", properties, above)


def usb_node(interface, *arguments, **more):
    return node(f"{HUB}/1-2:1.{interface}/0003:1209:0001.0001", *arguments, **more)


def received_node(*arguments, **more):
    """Of a device behind a receiver that the kernel takes apart."""
    return node(f"{HUB}/1-2:1.1/0003:1209:0001.0002/0003:1209:0002.0003", *arguments, **more)


class UdevRules(unittest.TestCase):
    def test_a_mouse_and_the_keys_of_its_own_are_given(self):
        mouse_first = ":030102:030101:"
        self.assertTrue(usb_node(0, ["MOUSE"], MOUSE_FIRST).is_given())
        self.assertTrue(usb_node(1, ["KEYBOARD", "KEY"], KEYBOARD_FIRST, interfaces=mouse_first).is_given())
        self.assertTrue(usb_node(1, ["KEYBOARD", "KEY"], MOUSE_FIRST).is_given())

    def test_bluetooth_counts_as_usb_does(self):
        path = "/devices/virtual/misc/uhid/0005:1209:0001.0001"
        self.assertTrue(node(path, ["MOUSE", "KEYBOARD"], MOUSE_FIRST, bus="0005").is_given())
        self.assertFalse(node(path, ["KEYBOARD"], KEYBOARD_FIRST, bus="0005").is_given())

    def test_no_other_keyboard_is_given(self):
        keyboard_first = ":030101:030102:"
        self.assertFalse(usb_node(0, ["KEYBOARD", "KEY"], KEYBOARD_FIRST, interfaces=keyboard_first).is_given())
        self.assertTrue(usb_node(1, ["MOUSE"], MOUSE_FIRST, interfaces=keyboard_first).is_given())
        self.assertFalse(node("/devices/platform/i8042/serio0", ["KEYBOARD"], bus="0011").is_given())

    def test_a_keyboard_is_not_given_for_the_receiver_that_it_stands_behind(self):
        self.assertFalse(received_node(["KEYBOARD", "KEY"], KEYBOARD_FIRST, MOUSE_FIRST).is_given())
        self.assertFalse(received_node(["KEYBOARD", "KEY"], KEYBOARD_FIRST, VENDOR_FIRST,
                                       interfaces=":030102:030101:").is_given())
        self.assertTrue(received_node(["MOUSE"], MOUSE_FIRST, VENDOR_FIRST).is_given())

    def test_what_somebody_has_named_is_given(self):
        named = received_node(["KEYBOARD", "MOUSE"], KEYBOARD_FIRST, VENDOR_FIRST)
        self.assertFalse(named.is_given())
        named.properties["SKARN_MOUSE"] = "1"
        self.assertTrue(named.is_given())

    def test_what_programs_have_made_and_other_touchpads_are_not_given(self):
        self.assertFalse(node("/devices/virtual", ["MOUSE"], bus="0003").is_given())
        self.assertFalse(node("/devices/platform/i2c-1/0018:1209:0001.0001", ["MOUSE"], MOUSE_FIRST,
                              bus="0018").is_given())

    def test_the_maker_of_devices_is_given(self):
        self.assertTrue(Device("/devices/virtual/misc/uinput", {}, subsystem="misc").is_given())
        self.assertFalse(Device("/devices/virtual/misc/uhid", {}, subsystem="misc").is_given())


if __name__ == "__main__":
    unittest.main()
