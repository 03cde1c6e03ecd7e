#!/usr/bin/python3
"""Real mice: what the kernel and its readers make of what the engine does with them.

    mice_test.py PROGRAM [PART...]     PROGRAM: test-mice, which uses a mouse as the engine does; without names of parts
                                       (the functions below) all of them

Runs as root in a guest (tests/guest/mice starts it there). Each check is a line; the exit status is 1 when one of them
fails.
"""
import contextlib
import glob
import os
import pathlib
import random
import subprocess
import sys
import threading
import time

import evdev
from evdev import ecodes

from checks import check, finish, wait_until
from desktop import (KEYBOARD_NAME, POINTER_NAME, Desktop, end_of, is_grabbed, keys, node_called, nodes_called, press,
                     typed)
from hid_devices import (BUS_BLUETOOTH, FINE_MOUSE, KEYBOARD, MOUSE_AND_KEYBOARD, SIDE_BUTTON, HidDevice, UsbMouse,
                         mouse_report)

PROGRAM = sys.argv[1]
TESTER = 59000
# HID usages of keys, and the controls that send them.
KEY_A, KEY_B, KEY_Q, KEY_W, KEY_F12 = 4, 5, 20, 26, 69
GRID_Q, GRID_W, WHEEL_UP = "20", "26", "06"

log = []


def read_lines(stream, lines):
    for line in stream:
        lines.append(line.strip())


class Program:
    """test-mice in a process."""

    def __init__(self, user=None, **environment):
        self.lines = []
        self.bus = subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--print-address=1"], text=True, user=user,
                                    stdout=subprocess.PIPE)
        environment = dict(os.environ, DBUS_SESSION_BUS_ADDRESS=self.bus.stdout.readline().strip(), **environment)
        self.process = subprocess.Popen([PROGRAM], text=True, bufsize=1, env=environment, user=user,
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
        return bool(wait_until(lambda: line in self.lines, 15))

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

    def wake_ups(self):
        status = pathlib.Path(f"/proc/{self.process.pid}/status").read_text(encoding="utf-8")
        return status.split("voluntary_ctxt_switches:")[1].split()[0]

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


class System:
    """A system bus with what plays ratbagd, UPower and logind on it."""

    def __init__(self, *commands):
        self.lines = []
        self.bus = subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--print-address=1"], text=True,
                                    stdout=subprocess.PIPE)
        self.environment = {"DBUS_SYSTEM_BUS_ADDRESS": self.bus.stdout.readline().strip()}
        program = pathlib.Path(PROGRAM).with_name("fake-system")
        self.process = subprocess.Popen([program], text=True, bufsize=1, env={**os.environ, **self.environment},
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        threading.Thread(target=read_lines, args=(self.process.stdout, self.lines), daemon=True).start()
        wait_until(lambda: "ready" in self.lines)
        for command in commands:
            self.obey(command)

    def obey(self, command):
        self.process.stdin.write(command + "\n")
        check(command, wait_until(lambda: f"ok {command}" in self.lines))

    def resolutions(self):
        """What was set as the resolution up to now."""
        return [line.split()[-1] for line in self.lines if " Resolution " in line]

    def end(self):
        for process in self.process, self.bus:
            process.kill()
            process.wait()


def raw_nodes(name):
    """Its hidraw nodes, by the numbers of its interfaces."""
    folders = [folder for folder in glob.glob("/sys/class/hidraw/*")
               if name in pathlib.Path(folder, "device/uevent").read_text(encoding="utf-8")]
    return [os.path.basename(folder) for folder in sorted(folders, key=os.path.realpath)]


class Bench:
    """A USB mouse with a thumb grid, a desktop, and the program that uses the mouse."""

    def __init__(self):
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
        self.program = Program(**environment)
        self.program.ask("use usb-1209:0010-SN-1")
        self.program.ask(f"play {GRID_Q} 7 {KEY_A}")


def finds_mice(bench):
    mice = wait_until(lambda: bench.program.mice())
    check("a USB mouse has its number as its ID", list(mice), ["usb-1209:0010-SN-1"])
    name, connection, resolution, nodes, forbidden, output, controls = mice["usb-1209:0010-SN-1"]
    check("it has its name, is on a cable, and its resolution is udev's", (name, connection, resolution),
          ("Acme Grid", "wired", "1600"))
    check("both its nodes belong to it, and may be read", (sorted(nodes.split(",")), forbidden, output),
          (sorted([bench.pointer, bench.grid]), "", "allowed"))
    check("it has the controls for which it has keys", {"03", "06", "07", "20", "225"} <= set(controls.split(",")))
    check("it has no diagonals", {"232", "233", "keymap"} & set(controls.split(",")), set())


def follows_changes(bench):
    program = bench.program
    with_bluetooth = HidDevice("Acme Blue", MOUSE_AND_KEYBOARD, 0x20, BUS_BLUETOOTH, "11:22:33:44:55:66",
                               "aa:bb:cc:dd:ee:ff")
    identifier = "bluetooth-1209:0020-aa:bb:cc:dd:ee:ff"
    check("a mouse with Bluetooth comes", wait_until(lambda: identifier in program.mice()))
    check("all its nodes are one wireless mouse", wait_until(lambda: len(
        program.mice()[identifier][3].split(",")) == 2 and program.mice()[identifier][1]), "wireless")
    keyboard = HidDevice("Acme Keyboard", KEYBOARD, 0x21, place="usb-1/input0")
    check("a keyboard is none", (bool(node_called("Acme Keyboard")), len(program.mice())), (True, 2))
    program.lines.clear()
    with_bluetooth.unplug()
    check("one that goes is told of", program.tells("changed"))
    check("and has gone", list(program.mice()), ["usb-1209:0010-SN-1"])
    keyboard.unplug()
    equal = UsbMouse("Grid", "0x0010", "SN-1")
    both = wait_until(lambda: len(mice := program.mice()) == 2 and mice)
    check("two mice with the same number are told apart", len(set(both)), 2)
    check("the first one keeps its ID", "usb-1209:0010-SN-1" in both)
    equal.unplug()
    check("one is left", wait_until(lambda: list(program.mice()) == ["usb-1209:0010-SN-1"]))


def leaves_alone_what_it_does_not_need(bench):
    program = bench.program
    bench.assign()
    check("with nothing assigned no node is open", program.open_nodes(), [])
    check("nor is there a keyboard or a pointer of its own",
          nodes_called(KEYBOARD_NAME) + nodes_called(POINTER_NAME), [])
    before = wait_until(lambda: is_still(program))
    for count in range(100):
        bench.mouse.move(x=1)
    bench.desktop.after((ecodes.EV_REL, ecodes.REL_X, 1))
    check("moving it does not wake the engine", (before, program.wake_ups()), (before, before))


def is_still(program):
    before = program.wake_ups()
    time.sleep(3)
    return program.wake_ups() == before and before


def plays_and_passes(bench):
    program, mouse, desktop = bench.program, bench.mouse, bench.desktop
    mouse.type(KEY_W)
    desktop.after((ecodes.EV_KEY, ecodes.KEY_W, 1))
    bench.assign(GRID_Q)
    check("there is a keyboard then", bool(node_called(KEYBOARD_NAME)))
    wait_until(lambda: bench.grid in program.open_nodes())
    check("a node with a key that is down is not grabbed", is_grabbed(bench.grid), False)
    mouse.type()
    check("it is when the key is up", wait_until(lambda: is_grabbed(bench.grid)))
    check("its release went where its press went", keys(desktop.after(end_of(ecodes.KEY_W))),
          [("Acme Grid", "KEY_W", 0)])
    check("the pointer is left alone", is_grabbed(bench.pointer), False)
    bench.is_ready()
    press(mouse, KEY_Q, KEY_W, KEY_F12)
    check("an assigned key is played and others pass, each once", keys(desktop.after(end_of(ecodes.KEY_F12))),
          typed("KEY_A", "KEY_W", "KEY_F12"))
    mouse.type(modifiers=2)
    mouse.type(KEY_W, modifiers=2)
    mouse.type()
    press(mouse, KEY_F12)
    check("modifiers keep their places", keys(desktop.after(end_of(ecodes.KEY_F12)))[:4], [
        (KEYBOARD_NAME, name, value) for name, value in (
            ("KEY_LEFTSHIFT", 1), ("KEY_W", 1), ("KEY_LEFTSHIFT", 0), ("KEY_W", 0))])
    mouse.type(KEY_W)
    desktop.after((ecodes.EV_KEY, ecodes.KEY_W, 1))
    bench.assign()
    check("a grabbed node is kept while a key is down", is_grabbed(bench.grid))
    mouse.type()
    check("and let go then", wait_until(lambda: not is_grabbed(bench.grid)))
    check("with the release where the press was", keys(desktop.after(end_of(ecodes.KEY_W))),
          [(KEYBOARD_NAME, "KEY_W", 0)])
    check("nothing of its own is left",
          wait_until(lambda: nodes_called(KEYBOARD_NAME) == [] and program.open_nodes() == []))


def listens(bench):
    program, mouse = bench.program, bench.mouse
    program.ask("listen 1")
    press(mouse, KEY_W)
    mouse.move(buttons=SIDE_BUTTON)
    mouse.move()
    wait_until(lambda: sum(line.startswith("key ") for line in program.lines) == 4, 15)
    told = [line.split()[1:] for line in program.lines if line.startswith("key ")]
    check("it tells of keys and buttons while it listens", sorted(row[:3] for row in told), sorted(
        [["7", str(KEY_W), "1"], ["7", str(KEY_W), "0"], ["9", "4", "1"], ["9", "4", "0"]]))
    now = time.clock_gettime(time.CLOCK_MONOTONIC) * 1000
    check("with their times", all(now - 60_000 < int(row[3]) <= now for row in told))
    check("and grabs nothing", (is_grabbed(bench.grid), is_grabbed(bench.pointer)), (False, False))
    bench.assign(GRID_Q)
    wait_until(lambda: is_grabbed(bench.grid))
    bench.is_ready()
    bench.desktop.after()
    program.lines.clear()
    press(mouse, KEY_Q, KEY_W)
    check("an assigned key is a control alone, and the others are keys", (program.tells(f"control {GRID_Q} 0"), bool(
        wait_until(lambda: sum(line.startswith("key ") for line in program.lines) == 2, 15)), [
            line.split()[2] for line in program.lines if line.startswith("key ")]), (True, True, [str(KEY_W)] * 2))
    bench.assign()
    wait_until(lambda: not is_grabbed(bench.grid))
    program.ask("listen 0")
    check("it reads nothing afterwards", program.open_nodes(), [])
    bench.desktop.after()


def is_taught(bench):
    program, mouse, desktop = bench.program, bench.mouse, bench.desktop
    program.ask("teach 1")
    check("while something is taught the keys are kept from the desktop", wait_until(lambda: is_grabbed(bench.grid)))
    check("and the pointer is not", is_grabbed(bench.pointer), False)
    desktop.after()
    press(mouse, KEY_Q)
    check("a key is heard", program.tells(f"heard 01 Acme Grid|1|{ecodes.KEY_Q}|0"))
    mouse.move(wheel=-1)
    check("a step of the wheel is heard", program.tells("heard 00 Acme Grid|2|8|-1"))
    mouse.move(buttons=1)
    mouse.move(buttons=1 + SIDE_BUTTON)
    mouse.move()
    check("a button is heard", program.tells(f"heard 00 Acme Grid|1|{ecodes.BTN_SIDE}|0"))
    check("the left one is not, and each once", sum(line.startswith("heard") for line in program.lines), 3)
    check("only the pointer has reached the desktop", {name for name, *_ in keys(desktop.after(end_of(ecodes.BTN_SIDE)))
                                                     } | set(nodes_called(KEYBOARD_NAME)), {"Acme Grid"})
    program.ask("teach 0")
    check("in the end the keys are the desktop's again", wait_until(lambda: not is_grabbed(bench.grid)))
    program.ask(f"record 0 {GRID_Q} 00_Acme_Grid 1 {ecodes.BTN_SIDE} 0")
    bench.assign()
    check("a taught button is the control", wait_until(lambda: is_grabbed(bench.pointer)))
    check("its key no longer is", is_grabbed(bench.grid), False)
    bench.is_ready()
    mouse.move(buttons=SIDE_BUTTON)
    mouse.move()
    mouse.move(buttons=1)
    mouse.move()
    found = keys(desktop.after(end_of(ecodes.BTN_LEFT)))
    check("it does what the control does, and nothing else", [row for row in found if row[1] != "BTN_LEFT"],
          typed("KEY_A"))
    check("the others click as ever", found.count(("Acme Grid", "BTN_LEFT", 1)), 1)
    program.ask("record 0")
    check("forgotten, it is the desktop's again", wait_until(lambda: not is_grabbed(bench.pointer)))


def description(path):
    device = evdev.InputDevice(path)
    return (device.name, device.info, device.capabilities(), device.input_props())


def replaces_wheel(bench):
    """A mouse with parts of steps, whose wheel plays a key when it is turned up."""
    program, desktop = bench.program, bench.desktop
    mouse = HidDevice("Acme Fine", FINE_MOUSE, 0x30, place="usb-2/input0", serial="F1")
    node = node_called("Acme Fine", False)
    program.ask("use usb-1209:0030-F1")
    program.ask(f"play {WHEEL_UP} 7 {KEY_B}")
    bench.assign(WHEEL_UP, sensitivity="800,800")
    check("a mouse whose wheel is assigned is grabbed", wait_until(lambda: is_grabbed(node)))
    check("its copy is like it in everything", description(node_called("Acme Fine", True)), description(node))
    bench.is_ready()
    desktop.after()
    for wheel in [1] * 24 + [-1] * 16:
        mouse.send(mouse_report(wheel=wheel))
    mouse.send(mouse_report(buttons=SIDE_BUTTON))
    mouse.send(mouse_report())
    found = desktop.after(end_of(ecodes.BTN_SIDE), end_of(ecodes.KEY_B))
    check("three steps up are three keys", [row for row in keys(found) if row[1] == "KEY_B"],
          typed("KEY_B", "KEY_B", "KEY_B"))
    turns = {code: [event[3] for event in found if event[1:3] == (ecodes.EV_REL, code)]
             for code in (ecodes.REL_WHEEL, ecodes.REL_WHEEL_HI_RES)}
    check("of the wheel only the turn down is left, in both kinds", turns,
          {ecodes.REL_WHEEL: [-1, -1], ecodes.REL_WHEEL_HI_RES: [-15] * 16})
    check("all of it by the copy", {event[0] for event in found}, {"Acme Fine", KEYBOARD_NAME})
    bench.assign(WHEEL_UP, sensitivity="800,800", clicks=1)
    check("a copy without all buttons gets a pointer beside it", bool(node_called(POINTER_NAME)))
    bench.is_ready()
    for event in ("9 8 1", "9 8 0", "9 8 0", "1 56 2"):
        program.ask(f"emit {event}")
    found = desktop.after((ecodes.EV_REL, ecodes.REL_WHEEL, 2))
    check("assignments click and turn the wheel", sorted(event[1:] for event in found), sorted([
        (ecodes.EV_KEY, 0x117, 1), (ecodes.EV_KEY, 0x117, 0), (ecodes.EV_REL, ecodes.REL_WHEEL, 2),
        (ecodes.EV_REL, ecodes.REL_WHEEL_HI_RES, 240)]))
    mouse.unplug()
    check("a mouse that goes is absent", program.tells("connection absent"))
    program.ask("use usb-1209:0010-SN-1")


def scales_exactly(bench):
    program, desktop = bench.program, bench.desktop
    mouse = HidDevice("Acme Scaled", FINE_MOUSE, 0x31, place="usb-3/input0", serial="S1")
    node = node_called("Acme Scaled", False)
    program.ask("use usb-1209:0031-S1")
    program.ask("record 800")
    bench.assign(sensitivity="1250,1730")
    check("a mouse that is to be scaled is grabbed", wait_until(lambda: is_grabbed(node)))
    check("without a keyboard", nodes_called(KEYBOARD_NAME), [])
    node_called("Acme Scaled", True)
    bench.is_ready()
    desktop.after()
    chance = random.Random(1)
    sums, told = [0, 0], [0, 0]
    count = 10_000
    for number in range(1, count + 1):
        motion = [chance.choice([-1, 1]) * chance.randint(1, 40) for _ in sums]
        sums = [one + other for one, other in zip(sums, motion)]
        mouse.send(mouse_report(x=motion[0], y=motion[1]))
        # The kernel keeps some twenty reports for each reader.
        if number % 8 == 0:
            wait_until(lambda: len(desktop.events) >= 16, 10)
            for _, kind, code, value in desktop.after():
                told[code] += value if kind == ecodes.EV_REL else 0
    exact = [int(each * wanted / 800) for each, wanted in zip(sums, (1250, 1730))]
    check(f"after {count} reports the motion is exact", told, exact)
    mouse.unplug()
    wait_until(lambda: not nodes_called("Acme Scaled"))
    program.ask("use usb-1209:0010-SN-1")


def is_prepared_for_another_sensitivity(bench):
    mouse, desktop = bench.mouse, bench.desktop
    bench.assign(GRID_Q, changes=1)
    check("a pointer whose sensitivity a control will change is grabbed", wait_until(lambda: is_grabbed(bench.pointer)))
    bench.is_ready()
    desktop.after()
    mouse.move(x=6)
    check("it moves as it did", desktop.after((ecodes.EV_REL, ecodes.REL_X, 6)), [
        ("Acme Grid", ecodes.EV_REL, ecodes.REL_X, 6)])
    bench.assign(GRID_Q, changes=1, sensitivity="800,1600")
    mouse.move(x=6, y=7)
    check("and another sensitivity holds at once", desktop.after((ecodes.EV_REL, ecodes.REL_Y, 7)), [
        ("Acme Grid", ecodes.EV_REL, ecodes.REL_X, 3), ("Acme Grid", ecodes.EV_REL, ecodes.REL_Y, 7)])
    check("in use, timers are punctual", bench.timer_slack(), 1)
    bench.program.ask("nothing")
    check("and as ever otherwise", bench.timer_slack(), 50_000)
    check("a mouse that nothing is asked of is let go", wait_until(lambda: not is_grabbed(bench.pointer)))
    check("whole", wait_until(lambda: bench.program.open_nodes() == [] and nodes_called(KEYBOARD_NAME) == []))


def leaves_nothing_pressed(bench):
    program, mouse, desktop = bench.program, bench.mouse, bench.desktop
    bench.assign(GRID_Q)
    wait_until(lambda: is_grabbed(bench.grid))
    bench.is_ready()
    desktop.after()
    program.ask(f"emit 7 {KEY_B} 1")
    mouse.type(KEY_Q, KEY_W)
    down = desktop.after((ecodes.EV_KEY, ecodes.KEY_W, 1), (ecodes.EV_KEY, ecodes.KEY_A, 1))
    check("an assigned key, one that passes and one of a macro are down", sorted(keys(down)), [
        (KEYBOARD_NAME, name, 1) for name in ("KEY_A", "KEY_B", "KEY_W")])
    mouse.unplug()
    check("a mouse that is pulled in the middle of a press is absent", program.tells("connection absent"))
    check("all is up again", sorted(keys(desktop.after(end_of(ecodes.KEY_A), end_of(ecodes.KEY_B),
                                                       end_of(ecodes.KEY_W)))),
          [(KEYBOARD_NAME, name, 0) for name in ("KEY_A", "KEY_B", "KEY_W")])
    program.ask(f"emit 7 {KEY_B} 1")
    mouse.plug()
    check("it comes back by itself", program.tells("connection wired"))
    bench.find()
    check("and is grabbed again", wait_until(lambda: is_grabbed(bench.grid)))
    bench.is_ready()
    press(mouse, KEY_Q, KEY_F12)
    check("nothing was typed in between", keys(desktop.after(end_of(ecodes.KEY_F12))), typed("KEY_A", "KEY_F12"))
    mouse.type(KEY_Q)
    desktop.after((ecodes.EV_KEY, ecodes.KEY_A, 1))
    check("it stops", program.stop(), 0)
    check("the keyboard has gone with it", wait_until(lambda: nodes_called(KEYBOARD_NAME) == []))
    check("the mouse is the desktop's", is_grabbed(bench.grid), False)
    mouse.type()
    bench.start()
    bench.assign(GRID_Q)
    wait_until(lambda: is_grabbed(bench.grid))
    bench.is_ready()
    mouse.type(KEY_Q)
    desktop.after((ecodes.EV_KEY, ecodes.KEY_A, 1))
    bench.program.end()
    check("killed, it leaves no keyboard with a key down", wait_until(lambda: nodes_called(KEYBOARD_NAME) == []))
    check("nor a mouse that is not the desktop's", is_grabbed(bench.grid), False)
    mouse.type()
    bench.start()


def sleeps(bench):
    bench.assign(GRID_Q, sensitivity="800,800")
    wait_until(lambda: is_grabbed(bench.grid) and is_grabbed(bench.pointer))
    check("with all grabbed and the mouse at rest the engine sleeps", bool(wait_until(lambda: is_still(bench.program))))
    bench.assign()
    wait_until(lambda: bench.program.open_nodes() == [])


def comes_to_move(bench, expected):
    """Whether 8 counts of the mouse are so many to the desktop, now or soon."""
    bench.desktop.after()

    def is_moved():
        bench.mouse.move(x=8)
        time.sleep(0.05)
        return ("Acme Grid", ecodes.EV_REL, ecodes.REL_X, expected) in bench.desktop.events
    return wait_until(is_moved)


def uses_what_services_know(bench):
    mouse, desktop = bench.mouse, bench.desktop
    bench.program.stop()
    raw = raw_nodes("Acme Grid")[0]
    system = System(f"ratbag add {raw} usb:1209:0010:0", "ratbag start", "login start")
    bench.start(**system.environment)
    bench.assign(sensitivity="800,400")
    check("the sensitivity is set in the hardware", bool(wait_until(lambda: system.resolutions() == ["800x400"])))
    check("and the pointer left alone", wait_until(lambda: bench.program.open_nodes() == []))
    check("with the hardware known the engine sleeps", bool(wait_until(lambda: is_still(bench.program))))
    bench.assign(GRID_Q, sensitivity="900,400", changes=1)
    check("one that the hardware has not is scaled", wait_until(lambda: is_grabbed(bench.pointer)))
    bench.is_ready()
    check("from what it has", comes_to_move(bench, 9))
    wait_until(lambda: is_grabbed(bench.grid))
    mouse.type(KEY_Q)
    wait_until(lambda: "control 20 1" in bench.program.lines)
    bench.assign(GRID_Q, sensitivity="400,400", changes=1)
    check("while a control is held, another one is scaled", comes_to_move(bench, 4))
    system.obey("login sleep")
    check("when the machine goes to sleep nothing stays pressed",
          bool(wait_until(lambda: "control 20 0" in bench.program.lines)))
    mouse.type()
    bench.assign(GRID_Q, sensitivity="900,400", changes=1)
    system.obey("login wake")
    check("what did not last was not written", system.resolutions(), ["800x400"])
    system.obey(f"ratbag resolution {raw} 3200 3200")
    check("what the hardware is set to elsewhere is scaled from", comes_to_move(bench, 2))
    system.process.kill()
    check("without the service it is what the system knows", comes_to_move(bench, 4))
    bench.program.stop()
    system.end()
    bench.start()


def shares_with_other_programs(bench):
    other = evdev.InputDevice(bench.grid)
    other.grab()
    log.clear()
    bench.assign(GRID_Q)
    words = "another program keeps it for itself"
    check("a node that another program has grabbed is told of",
          bool(wait_until(lambda: any(words in line for line in log))))
    other.ungrab()
    other.close()
    check("it is taken when that lets go", wait_until(lambda: is_grabbed(bench.grid)))
    check("and told of once", sum(words in line for line in log), 1)


def says_what_is_forbidden(bench):
    bench.program.stop()
    nodes = sorted([bench.pointer, bench.grid])
    for node in [*nodes, "/dev/uinput"]:
        os.chmod(node, 0o600)
    log.clear()
    program = bench.program = Program(TESTER)
    _, _, _, found, forbidden, output, _ = program.mice()["usb-1209:0010-SN-1"]
    check("who may not read a mouse finds it all the same", sorted(found.split(",")), nodes)
    check("with what is forbidden", (sorted(forbidden.split(",")), output), (nodes, "forbidden"))
    program.ask("use usb-1209:0010-SN-1")
    program.ask(f"play {GRID_Q} 7 {KEY_A}")
    bench.assign(GRID_Q)
    check("the log says what is missing", bool(wait_until(lambda: any(
        "/dev/uinput: Permission denied" in line for line in log))))
    bench.assign(f"{GRID_Q},{GRID_W}")
    check("once", sum("/dev/uinput" in line for line in log), 1)
    os.chmod("/dev/uinput", 0o666)
    check("with the right to make a keyboard it makes one", bool(node_called(KEYBOARD_NAME)))
    check("the log says what else is missing", bool(wait_until(lambda: any(
        f"{bench.grid}: Permission denied" in line for line in log))))
    program.lines.clear()
    os.chmod(bench.grid, 0o666)
    check("a right that is given is told of", program.tells("changed"))
    check("and used", wait_until(lambda: is_grabbed(bench.grid)))
    bench.is_ready()
    bench.desktop.after()
    press(bench.mouse, KEY_Q, KEY_F12)
    check("the mouse works then", keys(bench.desktop.after(end_of(ecodes.KEY_F12))), typed("KEY_A", "KEY_F12"))
    gives_up_what_is_taken_away(bench, program)
    for node in [bench.grid, "/dev/uinput"]:
        os.chmod(node, 0o600)
    check("a right that is taken back is no longer used", wait_until(
        lambda: program.open_nodes() == [] and nodes_called(KEYBOARD_NAME) == []))
    program.stop()


def gives_up_what_is_taken_away(bench, program):
    """As it is when somebody else comes to the screen."""
    bench.mouse.type(KEY_Q, KEY_F12)
    bench.desktop.after((ecodes.EV_KEY, ecodes.KEY_F12, 1), (ecodes.EV_KEY, ecodes.KEY_A, 1))
    program.lines.clear()
    os.chmod(bench.grid, 0o600)
    check("a node that it may no longer read is let go", wait_until(lambda: not is_grabbed(bench.grid)))
    check("and closed", wait_until(lambda: program.open_nodes() == []))
    check("with all that was down on it",
          sorted(keys(bench.desktop.after(end_of(ecodes.KEY_A), end_of(ecodes.KEY_F12)))),
          [(KEYBOARD_NAME, name, 0) for name in ("KEY_A", "KEY_F12")])
    check("what plays is told to end", program.tells("connection wired"))
    bench.mouse.type()
    bench.desktop.after(end_of(ecodes.KEY_Q), end_of(ecodes.KEY_F12))
    os.chmod(bench.grid, 0o666)
    check("given back, it is used again", wait_until(lambda: is_grabbed(bench.grid)))
    press(bench.mouse, KEY_Q, KEY_F12)
    check("as before", keys(bench.desktop.after(end_of(ecodes.KEY_F12))), typed("KEY_A", "KEY_F12"))


def main():
    bench = Bench()
    parts = (finds_mice, follows_changes, leaves_alone_what_it_does_not_need, plays_and_passes, listens, is_taught,
             replaces_wheel, scales_exactly, is_prepared_for_another_sensitivity, leaves_nothing_pressed, sleeps,
             uses_what_services_know, shares_with_other_programs, says_what_is_forbidden)
    for part in parts:
        if part.__name__ in (sys.argv[2:] or [each.__name__ for each in parts]):
            part(bench)
    bench.mouse.unplug()
    finish(lambda: "\n".join(log))


if __name__ == "__main__":
    main()
