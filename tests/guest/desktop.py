"""A desktop in a test in a guest: what arrives at the event nodes, and what the engine does with them."""
import fcntl
import glob
import os
import pathlib
import re
import select
import struct
import subprocess
import threading
import time

import evdev
from evdev import ecodes

from checks import PATIENCE, wait_until

KEYBOARD_NAME = "Skarn Keyboard"
POINTER_NAME = "Skarn Pointer"
# linux/input.h
EVIOCGVERSION = 0x80044501
EVIOCSCLOCKID = 0x400445A0
TRACING = pathlib.Path("/sys/kernel/tracing")


class Event(tuple):
    """(name of the device, type, code, value), and when the kernel got it, in microseconds of the monotonic clock."""

    def __new__(cls, name, event):
        self = super().__new__(cls, (name, event.type, event.code, event.value))
        self.time = event.sec * 1_000_000 + event.usec
        return self


class Desktop:
    """Reads all event nodes, as a desktop does; what the engine keeps from it does not come."""

    def __init__(self):
        self.events = []  # without SYN, scan codes and repeats
        self._news = threading.Condition()
        self._rounds = 0
        self._call = os.pipe()
        self.is_reading = True
        self.devices = {}
        record_grabs()
        threading.Thread(target=self._read, daemon=True).start()

    def _scan(self):
        for path in set(glob.glob("/dev/input/event*")) - set(self.devices):
            try:
                if is_known(path):
                    device = evdev.InputDevice(path)
                    fcntl.ioctl(device.fd, EVIOCSCLOCKID, struct.pack("i", time.CLOCK_MONOTONIC))
                    self.devices[path] = device
            except OSError:
                pass

    def _read(self):
        while self.is_reading:
            self._scan()
            by_file = {device.fd: device for device in self.devices.values()}
            new = []
            for file in select.select([*by_file, self._call[0]], [], [], 0.05)[0]:
                if file == self._call[0]:
                    os.read(file, 1)
                    continue
                device = by_file[file]
                try:
                    new += [Event(device.name, event) for event in device.read()
                            if event.type not in (ecodes.EV_SYN, ecodes.EV_MSC, ecodes.EV_LED)
                            and (event.type != ecodes.EV_KEY or event.value != 2)]
                except OSError:
                    del self.devices[device.path]
                    device.close()
            with self._news:
                self.events += new
                self._rounds += 1
                self._news.notify_all()

    def is_reading_all(self):
        """A node that is made again has the place of the former one, but is another file."""
        try:
            return {path: os.fstat(device.fd).st_ino for path, device in list(self.devices.items())} == {
                path: os.stat(path).st_ino for path in glob.glob("/dev/input/event*")}
        except OSError:  # One has just gone.
            return False

    def when(self, condition, patience=PATIENCE):
        """What has come when the condition holds for it, or when the time is over, and forgets it."""
        with self._news:
            self._news.wait_for(lambda: condition(self.events), patience)
            events, self.events = self.events, []
        return events

    def after(self, *last):
        """What has come when the last of these events has, and forgets it; without them, all that the kernel has."""
        for _ in range(0 if last else 2):  # The round that goes on may have read before.
            seen = self._rounds
            os.write(self._call[1], b".")
            with self._news:
                self._news.wait_for(lambda: self._rounds > seen, PATIENCE)
        return self.when(lambda events: all(any(event[1:] == each for event in events) for each in last))


def is_known(path):
    number = os.stat(path).st_rdev
    return os.path.exists(f"/run/udev/data/c{os.major(number)}:{os.minor(number)}")


def nodes_called(name, is_made=None):
    """The event nodes of this name that udev knows; is_made: only those made by programs, or only the others."""
    found = []
    for folder in glob.glob("/sys/class/input/event*"):
        try:
            is_virtual = os.path.realpath(folder).startswith("/sys/devices/virtual/input/")
            node = "/dev/input/" + os.path.basename(folder)
            is_named = pathlib.Path(folder, "device/name").read_text(encoding="utf-8").strip() == name
            if is_named and is_made in (None, is_virtual) and is_known(node):
                found.append(node)
        except OSError:
            pass
    return found


def node_called(name, is_made=None):
    """The one node of this name, as soon as it is there."""
    return wait_until(lambda: nodes_called(name, is_made))[0]


def record_grabs():
    """Has the kernel write down which nodes are grabbed and let go from now on. Who finds out by grabbing a node takes
    events from those who are to get them, and keeps the engine from grabbing it at this moment."""
    if not (TRACING / "kprobe_events").exists():
        subprocess.run(["mount", "-t", "tracefs", "tracefs", TRACING], check=True)
    if (TRACING / "events/grabs").exists():
        return
    # Both are given a struct input_handle (linux/input.h), whose third word is the name of the node.
    name = "node=+0(+16($arg1)):string"
    (TRACING / "trace_clock").write_text("mono", encoding="ascii")
    (TRACING / "kprobe_events").write_text(f"p:grabs/grab input_grab_device {name}\n"
                                           f"p:grabs/release input_release_device {name}\n", encoding="ascii")
    (TRACING / "events/grabs/enable").write_text("1", encoding="ascii")


def is_grabbed(path):
    written = (TRACING / "trace").read_text(encoding="utf-8")
    changes = re.findall(rf' (grab|release): .* node="{os.path.basename(path)}"', written)
    try:
        with open(path, "rb", buffering=0) as file:
            # One question after the other is answered: a grab that has begun is through then.
            fcntl.ioctl(file, EVIOCGVERSION, bytes(4))
    except OSError:  # It has gone.
        return False
    return changes[-1:] == ["grab"]


def keys(events):
    """(device, key, value) of the keys and buttons among them."""
    def name(code):
        names = ecodes.bytype[ecodes.EV_KEY].get(code, code)
        return names if isinstance(names, str) else names[0]
    return [(device, name(code), value) for device, kind, code, value in events if kind == ecodes.EV_KEY]


def typed(*names):
    """A press and a release of each on the keyboard of the engine."""
    return [(KEYBOARD_NAME, name, value) for name in names for value in (1, 0)]


def press(mouse, *usages):
    for usage in usages:
        mouse.type(usage)
        mouse.type()


def end_of(key):
    return (ecodes.EV_KEY, key, 0)
