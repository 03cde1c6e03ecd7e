#!/usr/bin/env python3
"""The bus interfaces as they are described for other programs are those that a running engine has.
Usage, on a session bus without an engine: bus_interfaces_test.py ENGINE DESCRIPTIONS"""

import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree
from pathlib import Path

ENGINE, DESCRIPTIONS = (Path(sys.argv.pop(1)), Path(sys.argv.pop(1)))
ENGINE_NAME = "org.vorn.MessagePort.VornCoreEngineMsgPort"  # all its objects are on this one connection


def members_of(interface):
    """{(kind, name): [(direction, type, name) of each argument]}; what a signal carries goes out."""
    return {(member.tag, member.get("name")):
                [(argument.get("direction", "in" if member.tag == "method" else "out"), argument.get("type"),
                  argument.get("name")) for argument in member.findall("arg")]
            for member in interface if member.tag != "annotation"}


def introspected(path):
    """What an object of the running engine says of itself."""
    text = subprocess.run(["dbus-send", "--session", "--print-reply=literal", f"--dest={ENGINE_NAME}", path,
                           "org.freedesktop.DBus.Introspectable.Introspect"],
                          check=True, capture_output=True, text=True).stdout
    return ElementTree.fromstring(text.strip())


def interfaces_of(node):
    """Those that are not every object's, by name."""
    return {interface.get("name"): members_of(interface) for interface in node.findall("interface")
            if not interface.get("name").startswith("org.freedesktop.")}


class BusInterfaces(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.engine = subprocess.Popen([ENGINE, "--state-dir", cls.folder.name], stderr=subprocess.PIPE, text=True)
        if not any("ready, " in line for line in cls.engine.stderr):
            raise AssertionError("the engine did not start")

    @classmethod
    def tearDownClass(cls):
        cls.engine.terminate()
        cls.engine.communicate()
        cls.folder.cleanup()

    def test_are_described_as_the_engine_has_them(self):
        for path in sorted(DESCRIPTIONS.glob("*.xml")):
            with self.subTest(path.name):
                described = ElementTree.parse(path).getroot()
                self.assertEqual(list(interfaces_of(described)), [path.stem])
                self.assertEqual(interfaces_of(described), interfaces_of(introspected(described.get("name"))))

    def test_of_every_object_of_the_engine_are_described(self):
        described = {ElementTree.parse(path).getroot().get("name") for path in DESCRIPTIONS.glob("*.xml")}
        children = introspected("/org/vorn").findall("node")
        self.assertEqual(described, {f"/org/vorn/{child.get('name')}" for child in children})


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
