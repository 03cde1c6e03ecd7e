"""Real mice: which ones there are, what of them is taken, and what the system allows."""
import os
import pathlib
import re
import subprocess

import evdev
from evdev import ecodes

from checks import check, sleeps_through, wait_until
from desktop import KEYBOARD_NAME, POINTER_NAME, end_of, is_grabbed, keys, node_called, nodes_called, press, typed
from hid_devices import BUS_BLUETOOTH, KEYBOARD, KEYBOARD_AND_MOUSE, MOUSE_AND_KEYBOARD, HidDevice, UsbMouse
from mice_bench import GRID_Q, GRID_W, KEY_A, KEY_F12, KEY_Q, Program, log

TESTER = 59000
SECURITY = pathlib.Path(__file__).parents[2] / "docs/security.md"


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
    check("and has gone", wait_until(lambda: list(program.mice()) == ["usb-1209:0010-SN-1"]))
    keyboard.unplug()
    leaves_alone_the_keys_of_a_keyboard(program)
    uses_what_somebody_has_named(program)
    equal = UsbMouse("Grid", "0x0010", "SN-1")
    both = wait_until(lambda: len(mice := program.mice()) == 2 and mice)
    check("two mice with the same number are told apart", len(set(both)), 2)
    check("the first one keeps its ID", "usb-1209:0010-SN-1" in both)
    takes_one_of_two(bench, equal, next(each for each in both if each != "usb-1209:0010-SN-1"))
    equal.unplug()
    check("one is left", wait_until(lambda: list(program.mice()) == ["usb-1209:0010-SN-1"]))


def leaves_alone_the_keys_of_a_keyboard(program):
    """Also of who may read them, as this program may."""
    device = HidDevice("Acme Both", KEYBOARD_AND_MOUSE, 0x22, BUS_BLUETOOTH, "11:22:33:44:55:66", "aa:bb:cc:dd:ee:f0")
    identifier = "bluetooth-1209:0022-aa:bb:cc:dd:ee:f0"
    pointer, keyboard = node_called("Acme Both Mouse"), node_called("Acme Both Keyboard")
    wait_until(lambda: identifier in program.mice())
    check("of a keyboard with a pointer only the pointer is a mouse", (
        os.access(keyboard, os.R_OK), program.mice().get(identifier, [""] * 4)[3]), (True, pointer))
    device.unplug()
    wait_until(lambda: identifier not in program.mice())


def uses_what_somebody_has_named(program):
    """By the rule that the documentation gives."""
    rule = re.search(r'^SUBSYSTEM=="input".*SKARN_MOUSE.*$', SECURITY.read_text(encoding="utf-8"), re.M)[0]
    rules = pathlib.Path("/run/udev/rules.d/60-my-mouse.rules")
    rules.write_text(rule.replace("0005", "0023") + "\n", encoding="utf-8")
    subprocess.run(["udevadm", "control", "--reload"], check=True)
    device = HidDevice("Acme Named", KEYBOARD_AND_MOUSE, 0x23, BUS_BLUETOOTH, "11:22:33:44:55:66", "aa:bb:cc:dd:ee:f1")
    identifier = "bluetooth-1209:0023-aa:bb:cc:dd:ee:f1"
    both = sorted([node_called("Acme Named Mouse"), node_called("Acme Named Keyboard")])
    check("of one that somebody has named the keys are the mouse's too", wait_until(
        lambda: sorted(program.mice().get(identifier, [""] * 4)[3].split(",")) == both))
    device.unplug()
    rules.unlink()
    subprocess.run(["udevadm", "control", "--reload"], check=True)
    wait_until(lambda: identifier not in program.mice())


def takes_one_of_two(bench, equal, identifier):
    """Of equal mice, the one that was chosen; the identifier is the other's."""
    others = wait_until(lambda: len(nodes := bench.program.mice()[identifier][3].split(",")) == 2 and nodes)
    bench.assign(GRID_Q)
    check("of two equal mice the chosen one is taken", wait_until(lambda: is_grabbed(bench.grid)))
    check("and the other one is not", [is_grabbed(node) for node in others], [False, False])
    bench.is_ready()
    bench.desktop.after()
    press(equal, KEY_Q)
    press(bench.mouse, KEY_Q)
    check("one plays what is assigned, and the other types its key", sorted(keys(bench.desktop.after(
        end_of(ecodes.KEY_Q), end_of(ecodes.KEY_A)))),
          sorted([("Acme Grid", "KEY_Q", 1), ("Acme Grid", "KEY_Q", 0), *typed("KEY_A")]))
    bench.assign()
    wait_until(lambda: bench.program.open_nodes() == [])


def leaves_alone_what_it_does_not_need(bench):
    program = bench.program
    bench.assign()
    check("with nothing assigned no node is open", program.open_nodes(), [])
    check("nor is there a keyboard or a pointer of its own",
          nodes_called(KEYBOARD_NAME) + nodes_called(POINTER_NAME), [])

    def move():
        for count in range(1, 101):
            bench.mouse.move(x=count)
        bench.desktop.after((ecodes.EV_REL, ecodes.REL_X, 100))

    # It may have other things to do, but not each time.
    check("moving it does not wake the engine", wait_until(lambda: sleeps_through(program.process.pid, move)))


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
    program = bench.program = Program(bench.path, TESTER)
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
