"""Real mice: their wheels and their motion, and what the services of the system do for them."""
import pathlib
import random

import evdev
from evdev import ecodes

from checks import check, wait_until
from desktop import KEYBOARD_NAME, POINTER_NAME, end_of, is_grabbed, keys, node_called, nodes_called, typed
from hid_devices import FINE_MOUSE, SIDE_BUTTON, HidDevice, mouse_report
from mice_bench import GRID_Q, KEY_B, KEY_Q, WHEEL_UP
from system import System, raw_nodes


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
    mouse.send(mouse_report(side=1))
    mouse.send(mouse_report(buttons=SIDE_BUTTON))
    mouse.send(mouse_report())
    found = desktop.after(end_of(ecodes.BTN_SIDE), end_of(ecodes.KEY_B))
    check("three steps up are three keys", [row for row in keys(found) if row[1] == "KEY_B"],
          typed("KEY_B", "KEY_B", "KEY_B"))
    turns = {code: [event[3] for event in found if event[1:3] == (ecodes.EV_REL, code)]
             for code in (ecodes.REL_WHEEL, ecodes.REL_WHEEL_HI_RES, ecodes.REL_HWHEEL, ecodes.REL_HWHEEL_HI_RES)}
    check("of the wheel the turns down and to the side are left, each in both kinds", turns, {
        ecodes.REL_WHEEL: [-1, -1], ecodes.REL_WHEEL_HI_RES: [-15] * 16,
        ecodes.REL_HWHEEL: [1], ecodes.REL_HWHEEL_HI_RES: [120]})
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
            for _, kind, code, value in desktop.when(lambda events: len(events) >= 16):
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


def sleeps(bench):
    bench.assign(GRID_Q, sensitivity="800,800")
    wait_until(lambda: is_grabbed(bench.grid) and is_grabbed(bench.pointer))
    check("with all grabbed and the mouse at rest the engine sleeps", bench.program.comes_to_rest())
    bench.assign()
    wait_until(lambda: bench.program.open_nodes() == [])


def comes_to_move(bench, expected):
    """Whether 8 counts of the mouse are so many to the desktop, now or soon."""
    def is_moved():
        bench.desktop.after()
        bench.mouse.move(x=8)
        # It may be lost where the pointer is being taken or let go of.
        return (ecodes.EV_REL, ecodes.REL_X, expected) in [event[1:] for event in bench.desktop.when(bool, 2)]
    return wait_until(is_moved)


def uses_what_services_know(bench):
    mouse = bench.mouse
    bench.program.stop()
    raw = raw_nodes("Acme Grid")[0]
    system = System(pathlib.Path(bench.path).parent, f"ratbag add {raw} usb:1209:0010:0", "ratbag start", "login start")
    bench.start(**system.environment)
    bench.assign(sensitivity="800,400")
    check("the sensitivity is set in the hardware", bool(wait_until(lambda: system.resolutions() == ["800x400"])))
    check("and the pointer left alone", wait_until(lambda: bench.program.open_nodes() == []))
    check("with the hardware known the engine sleeps", bench.program.comes_to_rest())
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
