#!/usr/bin/python3
"""The core engine with real mice, from a command of vornctl, or of the window, and a press on the mouse to what its
desktop gets.

    engine_test.py PROGRAMS [PART...]     PROGRAMS: folder of the programs; without names of parts (those
                                          below) all of them

Runs as root in a guest (tests/guest/engine starts it there). Each check is a line; the exit status is 1 when one of
them fails.
"""
import json
import os
import signal
import sys
import time

from evdev import ecodes

from checks import check, finish, wait_until
from desktop import KEYBOARD_NAME, end_of, is_grabbed, keys, node_called, nodes_called, press, typed
from engine_access import says_what_is_forbidden, tells_what_is_held
from engine_bench import GRID_Q, KEY_A, KEY_B, KEY_F12, KEY_Q, KEY_SHIFT, KEY_W, MOUSE, Bench
from engine_displays import HELLO, types_into_wayland, types_into_x
from hid_devices import SIDE_BUTTON
from window_parts import uses_window

# Press or release, key, milliseconds before it.
COMBO = [(1, KEY_SHIFT, 0), (1, KEY_A, 30), (0, KEY_A, 20), (0, KEY_SHIFT, 0), (1, KEY_B, 70), (0, KEY_B, 5)]
COMBO_KEYS = [(KEYBOARD_NAME, name, value) for name, value in (
    ("KEY_LEFTSHIFT", 1), ("KEY_A", 1), ("KEY_A", 0), ("KEY_LEFTSHIFT", 0), ("KEY_B", 1), ("KEY_B", 0))]
LONG = [(1, KEY_SHIFT, 0), (1, KEY_A, 0), (0, KEY_A, 600_000), (0, KEY_SHIFT, 0)]


def chooses(bench):
    listed = wait_until(lambda: "Acme Grid" in (output := bench.do("mice", "list")) and output)
    check("vornctl lists the mouse and uses the virtual one",
          [line[:15].rstrip() for line in listed.splitlines()], ["  Acme Grid", "* Virtual mouse"])
    bench.do("mice", "use", "Acme")
    shown = json.loads(bench.do("mice", "show", "--json"))
    check("vornctl uses it by a part of its name", (shown["id"], shown["isInUse"]), (MOUSE, True))
    check("nothing of it is taken while nothing is assigned",
          (is_grabbed(bench.pointer), is_grabbed(bench.grid), nodes_called(KEYBOARD_NAME)), (False, False, []))
    bench.engine.add_macro("Combo", COMBO)
    bench.engine.add_macro("Long", LONG)
    bench.engine.add_macro("Hello", HELLO)
    bench.do("assign", GRID_Q, "macro", "Combo")
    check("the keys are taken for a macro on one of them", wait_until(lambda: is_grabbed(bench.grid)))
    check("the pointer is left alone", is_grabbed(bench.pointer), False)


def check_times(name, events, pressed, macro):
    """Never early; how late is told."""
    due, early, late = pressed, 0, 0
    for event, (_, _, delay) in zip(events, macro):
        due += 1000 * delay
        early, late = max(early, due - event.time), max(late, event.time - due)
    check(f"{name}, at most {late / 1000:.1f} ms late and never early", early, 0)


def plays_a_macro(bench):
    found = bench.play(end_of(ecodes.KEY_B))
    check("the keys of the macro reach the desktop in order, once", keys(found), COMBO_KEYS)
    check_times("they keep their delays", found, bench.pressed, COMBO)
    press(bench.mouse, KEY_W, KEY_F12)
    check("the other keys pass, once", keys(bench.desktop.after(end_of(ecodes.KEY_F12))), typed("KEY_W", "KEY_F12"))
    bench.mouse.move(x=3)
    check("so does the pointer, by itself", bench.desktop.after((ecodes.EV_REL, ecodes.REL_X, 3)),
          [("Acme Grid", ecodes.EV_REL, ecodes.REL_X, 3)])


def teaches_a_button(bench):
    teaching = bench.engine.begin("mice", "teach", "5")
    check("vornctl asks for a press", teaching.tells("Press what is to be control 5"))
    bench.desktop.after()
    bench.mouse.move(buttons=SIDE_BUTTON)
    bench.mouse.move()
    check("it tells what it was", (teaching.finish(), teaching.lines[1:]),
          (0, ["Control 5 R is BTN_SIDE now"]))
    bench.do("assign", "5", "macro", "Combo")
    check("the pointer is taken for a button that plays", wait_until(lambda: is_grabbed(bench.pointer)))
    copy = node_called("Acme Grid", True)
    bench.is_ready()
    bench.desktop.after()
    pressed = time.clock_gettime(time.CLOCK_MONOTONIC) * 1_000_000
    bench.mouse.move(buttons=SIDE_BUTTON)
    bench.mouse.move(x=2)
    found = bench.desktop.after(end_of(ecodes.KEY_B), (ecodes.EV_REL, ecodes.REL_X, 2))
    motion = ("Acme Grid", ecodes.EV_REL, ecodes.REL_X, 2)
    played = [event for event in found if event != motion]
    check("the button plays the macro and does not click; motion passes", (keys(found), len(found)),
          (COMBO_KEYS, len(COMBO) + 1))
    check_times("its keys keep their delays", played, pressed, COMBO)
    check("forgotten, it is the desktop's", (bench.do("mice", "forget", "5"), wait_until(
        lambda: not is_grabbed(bench.pointer) and not os.path.exists(copy))), ("", True))
    bench.do("assign", "5", "default")
    bench.desktop.after()
    bench.mouse.move(buttons=SIDE_BUTTON)
    bench.mouse.move()
    check("and clicks as ever", keys(bench.desktop.after(end_of(ecodes.BTN_SIDE))),
          [("Acme Grid", "BTN_SIDE", 1), ("Acme Grid", "BTN_SIDE", 0)])


def follows_profiles(bench):
    bench.do("profiles", "add", "Plain")
    bench.do("profiles", "switch", "Plain")
    check("a profile without assignments takes nothing", wait_until(lambda: not is_grabbed(bench.grid)))
    press(bench.mouse, KEY_Q, KEY_F12)
    check("its keys are the mouse's own", keys(bench.desktop.after(end_of(ecodes.KEY_F12))), [
        ("Acme Grid", name, value) for name in ("KEY_Q", "KEY_F12") for value in (1, 0)])
    bench.do("profiles", "switch", "1")
    check("the other profile takes the keys again", wait_until(lambda: is_grabbed(bench.grid)))
    node_called(KEYBOARD_NAME)
    check("and plays", keys(bench.play(end_of(ecodes.KEY_B))), COMBO_KEYS)


def records(bench):
    recording = bench.engine.begin("macros", "record", "--new", "Recorded")
    check("vornctl records", recording.tells("Recording macro"))
    bench.desktop.after()
    press(bench.mouse, KEY_W, KEY_Q, KEY_F12)
    wait_until(lambda: [sum(key in line for line in recording.lines) for key in (" B", " F12")] == [2, 2])
    found = keys(bench.desktop.after(end_of(ecodes.KEY_B), end_of(ecodes.KEY_F12)))
    check("the desktop gets what it would get otherwise", (
        [row for row in found if row in COMBO_KEYS], [row for row in found if row not in COMBO_KEYS]), (
            COMBO_KEYS, typed("KEY_W", "KEY_F12")))
    check("vornctl saves", recording.end(signal.SIGINT), 0)
    shown = json.loads(bench.do("macros", "show", "Recorded", "--json"))
    recorded = [(event["command"], event["argument"]) for event in shown["sequence"]["events"]]
    played = [(command, key) for command, key, _ in COMBO]
    others = [(command, key) for key in (KEY_W, KEY_F12) for command in (1, 0)]
    check("each key is recorded once, and of the assigned one what it plays", (
        [row for row in recorded if row in played], [row for row in recorded if row not in played]), (played, others))


def starts_long_macro(bench):
    found = bench.play((ecodes.EV_KEY, ecodes.KEY_A, 1))
    check("a macro holds keys", keys(found), [(KEYBOARD_NAME, "KEY_LEFTSHIFT", 1), (KEYBOARD_NAME, "KEY_A", 1)])


def leaves_nothing_pressed(bench):
    bench.do("assign", GRID_Q, "macro", "Long")
    starts_long_macro(bench)
    bench.mouse.unplug()
    check("when the mouse goes in the middle of it they are let go", sorted(keys(bench.desktop.after(
        end_of(ecodes.KEY_A), end_of(ecodes.KEY_LEFTSHIFT)))),
          [(KEYBOARD_NAME, "KEY_A", 0), (KEYBOARD_NAME, "KEY_LEFTSHIFT", 0)])
    check("nothing is held", bench.held(), [])
    bench.mouse.plug()
    bench.find()
    check("plugged in again it is taken again", wait_until(lambda: is_grabbed(bench.grid)))
    node_called(KEYBOARD_NAME)
    starts_long_macro(bench)
    bench.engine.kill()
    check("an engine that is killed leaves no keyboard", wait_until(lambda: nodes_called(KEYBOARD_NAME) == []))
    check("nor anything held or taken", (bench.held(), is_grabbed(bench.grid), is_grabbed(bench.pointer)),
          ([], False, False))


def keeps_its_choice(bench):
    bench.engine.start()
    check("another engine uses the mouse that was chosen", wait_until(lambda: is_grabbed(bench.grid)))
    check("and tells so", json.loads(bench.do("mice", "show", "--json"))["id"], MOUSE)
    bench.do("assign", GRID_Q, "macro", "Combo")
    node_called(KEYBOARD_NAME)
    check("its settings play", keys(bench.play(end_of(ecodes.KEY_B))), COMBO_KEYS)
    check("it ends", bench.engine.stop(), 0)
    check("and leaves nothing", (wait_until(lambda: nodes_called(KEYBOARD_NAME) == []), is_grabbed(bench.grid)),
          (True, False))
    bench.engine.start()


def logs_nothing_that_passes(bench):
    bench.engine.stop()
    bench.engine.start("--verbose")
    wait_until(lambda: is_grabbed(bench.grid))
    node_called(KEYBOARD_NAME)
    bench.is_ready()
    bench.desktop.after()
    check("an engine logs what clients ask for when it is told to", bool(wait_until(
        lambda: any("answer" in line for line in bench.engine.log))))
    before = list(bench.engine.log)
    press(bench.mouse, KEY_W, KEY_Q, KEY_F12)
    bench.mouse.move(x=3)
    bench.desktop.after(end_of(ecodes.KEY_B), end_of(ecodes.KEY_F12), (ecodes.EV_REL, ecodes.REL_X, 3))
    check("and nothing of what passes and plays", bench.engine.log[len(before):], [])
    bench.engine.stop()
    bench.engine.start()


# In this order.
PARTS = (chooses, plays_a_macro, teaches_a_button, follows_profiles, tells_what_is_held, records,
         leaves_nothing_pressed, keeps_its_choice, logs_nothing_that_passes, types_into_x, types_into_wayland,
         uses_window, says_what_is_forbidden)


def main():
    bench = Bench(sys.argv[1])
    for part in PARTS:
        # Nothing works without a mouse in use.
        if part is chooses or part.__name__ in (sys.argv[2:] or [each.__name__ for each in PARTS]):
            part(bench)
    bench.engine.end()
    bench.mouse.unplug()
    finish(lambda: "\n".join(bench.engine.log))


if __name__ == "__main__":
    main()
