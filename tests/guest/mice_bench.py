"""What the tests of real mice stand on: a mouse, a desktop, and the program that uses the mouse as the engine does."""
import contextlib
import os
import pathlib
import subprocess
import threading

import evdev

from checks import comes_to_rest, wait_until
from desktop import Desktop, nodes_called
from hid_devices import UsbMouse
from system import read_lines

# HID usages of keys, and the controls that send them.
KEY_A, KEY_B, KEY_Q, KEY_W, KEY_F12 = 4, 5, 20, 26, 69
GRID_Q, GRID_W, WHEEL_UP = "20", "26", "06"

log = []


class Program:
    """test-mice in a process."""

    def __init__(self, program, user=None, **environment):
        self.lines = []
        self.bus = subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--print-address=1"], text=True, user=user,
                                    stdout=subprocess.PIPE)
        environment = dict(os.environ, DBUS_SESSION_BUS_ADDRESS=self.bus.stdout.readline().strip(), **environment)
        self.process = subprocess.Popen([program], text=True, bufsize=1, env=environment, user=user,
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        for stream, lines in (self.process.stdout, self.lines), (self.process.stderr, log):
            threading.Thread(target=read_lines, args=(stream, lines), daemon=True).start()

    def ask(self, command):
        """What it told with the answer."""
        self.lines.clear()
        self.process.stdin.write(command + "\n")
        wait_until(lambda: "done" in self.lines)
        return [line for line in self.lines if line != "done"]

    def tells(self, line):
        """Whether it tells this, now or soon."""
        return bool(wait_until(lambda: line in self.lines))

    def mice(self):
        """The mice that it finds, by their IDs: name, connection, resolution, nodes, forbidden ones, output and
        controls."""
        rows = [line.removeprefix("mouse ").split("|") for line in self.ask("mice") if line.startswith("mouse ")]
        return {row[0]: row[1:] for row in rows}

    def open_nodes(self):
        targets = []
        for file in pathlib.Path(f"/proc/{self.process.pid}/fd").iterdir():
            with contextlib.suppress(FileNotFoundError):  # It has just been closed.
                targets.append(os.readlink(file))
        return sorted(target for target in targets if target.startswith("/dev/input/event"))

    def comes_to_rest(self):
        return comes_to_rest(self.process.pid)

    def stop(self):
        self.process.stdin.close()
        status = self.process.wait(20)
        self.end()
        return status

    def end(self):
        self.process.kill()
        self.process.wait()
        self.bus.terminate()
        self.bus.wait()


class Bench:
    """A USB mouse with a thumb grid, a desktop, and the program that uses the mouse."""

    def __init__(self, path):
        self.path = path
        pathlib.Path("/run/udev/rules.d").mkdir(parents=True, exist_ok=True)
        pathlib.Path("/run/udev/rules.d/99-test.rules").write_text(
            'KERNEL=="event*", ATTRS{name}=="Acme Grid", ENV{MOUSE_DPI}="400@125 *1600@1000"\n', encoding="utf-8")
        subprocess.run(["udevadm", "control", "--reload"], check=True)
        self.mouse = UsbMouse("Grid", "0x0010", "SN-1")
        self.desktop = Desktop()
        self.find()
        self.start()

    def find(self):
        def nodes():
            return {evdev.InputDevice(node).phys[-1]: node for node in nodes_called("Acme Grid", False)}
        found = wait_until(lambda: len(nodes()) == 2 and nodes())
        self.pointer, self.grid = found["0"], found["1"]

    def assign(self, controls="-", others="-", clicks=0, sensitivity="1600,1600", changes=0):
        self.program.ask(f"values {sensitivity} {controls} {others} {clicks} {changes}")

    def timer_slack(self):
        return int(pathlib.Path(f"/proc/{self.program.process.pid}/timerslack_ns").read_text(encoding="utf-8"))

    def is_ready(self):
        """The desktop reads all that there is."""
        return wait_until(self.desktop.is_reading_all)

    def start(self, **environment):
        self.program = Program(self.path, **environment)
        self.program.ask("use usb-1209:0010-SN-1")
        self.program.ask(f"play {GRID_Q} 7 {KEY_A}")
