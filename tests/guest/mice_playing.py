"""Real mice: what their keys and buttons do."""
import time

from evdev import ecodes

from checks import check, wait_until
from desktop import KEYBOARD_NAME, end_of, is_grabbed, keys, node_called, nodes_called, press, typed
from hid_devices import SIDE_BUTTON
from mice_bench import GRID_Q, KEY_B, KEY_F12, KEY_Q, KEY_W, log


def plays_and_passes(bench):
    program, mouse, desktop = bench.program, bench.mouse, bench.desktop
    mouse.type(KEY_W)
    desktop.after((ecodes.EV_KEY, ecodes.KEY_W, 1))
    bench.assign(GRID_Q)
    check("there is a keyboard then", bool(node_called(KEYBOARD_NAME)))
    wait_until(lambda: bench.grid in program.open_nodes())
    check("a node with a key that is down is not grabbed", is_grabbed(bench.grid), False)
    check("when that lasts the log says so", bool(wait_until(lambda: any(
        "since something on it is held down" in line for line in log))))
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
    wait_until(lambda: sum(line.startswith("key ") for line in program.lines) == 4)
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
        wait_until(lambda: sum(line.startswith("key ") for line in program.lines) == 2)), [
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
