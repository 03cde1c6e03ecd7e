"""What the tests of the engine with real mice stand on: a mouse, a desktop, and an engine that uses the mouse."""
import time

import evdev
from evdev import ecodes

from checks import check, wait_until
from desktop import Desktop, nodes_called, press
from engine import Engine
from hid_devices import UsbMouse

MOUSE = "usb-1209:0010-SN-1"
# HID usages of keys, and the controls that send them.
KEY_A, KEY_B, KEY_Q, KEY_W, KEY_F12, KEY_ENTER, KEY_SHIFT = 4, 5, 20, 26, 69, 40, 225
GRID_Q, GRID_W = "id:20", "id:26"


class Bench:
    """A USB mouse with a thumb grid, a desktop, and an engine that uses the mouse."""

    def __init__(self, programs):
        self.programs = programs
        self.mouse = UsbMouse("Grid", "0x0010", "SN-1")
        self.desktop = Desktop()
        self.find()
        self.engine = Engine(programs)

    def find(self):
        def nodes():
            return {evdev.InputDevice(node).phys[-1]: node for node in nodes_called("Acme Grid", False)}
        found = wait_until(lambda: len(nodes()) == 2 and nodes())
        self.pointer, self.grid = found["0"], found["1"]

    def do(self, *words):
        status, output = self.engine.ask(*words)
        if status:
            check(f"vornctl {' '.join(words)}", output)
        return output

    def is_ready(self):
        """The desktop reads all that there is."""
        return wait_until(self.desktop.is_reading_all)

    def play(self, *last):
        """Presses and lets go of the assigned key; what comes until the last of these events."""
        self.is_ready()
        self.desktop.after()
        self.pressed = time.clock_gettime(time.CLOCK_MONOTONIC) * 1_000_000
        press(self.mouse, KEY_Q)
        return self.desktop.after(*last)

    def held(self):
        """The names of the keys that the desktop has for pressed."""
        held = []
        for device in list(self.desktop.devices.values()):
            try:
                held += [ecodes.KEY.get(code, code) for code in device.active_keys()]
            except OSError:  # It has gone.
                pass
        return held
