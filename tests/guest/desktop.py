"""A desktop in a test in a guest: what arrives at the event nodes, and what the engine does with them."""
import fcntl
import glob
import os
import pathlib
import select
import struct
import threading
import time

import evdev
from evdev import ecodes

from checks import wait_until

KEYBOARD_NAME = "Skarn Keyboard"
POINTER_NAME = "Skarn Pointer"
# linux/input.h
EVIOCGRAB = 0x40044590
EVIOCSCLOCKID = 0x400445A0


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
        self._lock = threading.Lock()
        self.is_reading = True
        self.devices = {}
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
            for file in select.select(list(by_file), [], [], 0.05)[0]:
                device = by_file[file]
                try:
                    new = [Event(device.name, event) for event in device.read()
                           if event.type not in (ecodes.EV_SYN, ecodes.EV_MSC, ecodes.EV_LED)
                           and (event.type != ecodes.EV_KEY or event.value != 2)]
                    with self._lock:
                        self.events += new
                except OSError:
                    del self.devices[device.path]
                    device.close()

    def is_reading_all(self):
        return set(self.devices) == set(glob.glob("/dev/input/event*"))

    def after(self, *last):
        """What has come when the last of these events has, and forgets it."""
        wait_until(lambda: all(any(event[1:] == each for event in self.events) for each in last), 10)
        with self._lock:
            events, self.events = self.events, []
        return events


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


def is_grabbed(path):
    try:
        with open(path, "rb", buffering=0) as file:
            fcntl.ioctl(file, EVIOCGRAB, 1)
            fcntl.ioctl(file, EVIOCGRAB, 0)
    except OSError:
        return True
    return False


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
