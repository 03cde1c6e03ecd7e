"""The window with a real mouse: what a person sees and does from the first start on."""
import json
import os

from evdev import ecodes

from checks import check, wait_until
from desktop import Desktop, end_of, keys, node_called, press, typed
from displays import TESTER, XServer, is_installed
from engine import Engine
from hid_devices import SIDE_BUTTON, ThumbMouse
from window import CTRL, DOWN, ENTER, ESCAPE, LEFT, RIGHT, SPACE, UP, Keyboard, Window

CHOOSE = "Choose a Mouse"
TEACH = "Teach the Controls"
LACKS = "The mouse in use has no such control, as far as is known. It can be taught, behind the picture at the top."


class WindowBench:
    """A mouse that a person may use, that person's engine, and an X server with a window manager."""

    def __init__(self, programs):
        self.mouse = ThumbMouse()
        self.keyboard = Keyboard()
        self.allow()
        self.server = XServer("openbox")
        self.engine = Engine(programs, TESTER)

    def nodes(self):
        return [node_called(f"{self.mouse.NAME} {part}", False) for part in ("Mouse", "Keyboard")] + ["/dev/uinput"]

    def allow(self, user=TESTER):
        for node in self.nodes():
            os.chown(node, user, user)
            os.chmod(node, 0o600)

    def start(self):
        self.window = Window(self.engine, self.keyboard, self.server.NAME)

    def shown(self):
        return json.loads(self.engine.ask("mice", "show", "--json")[1])

    def state(self):
        """What the sheet says of the mouse."""
        return next((row[2] for row in self.window.rows(CHOOSE, 3)[0] if row[0] == self.mouse.NAME), None)

    def end(self):
        self.engine.end()
        self.server.end()
        self.keyboard.unplug()
        self.mouse.unplug()


def offers_once(bench):
    bench.start()
    window = bench.window
    check("the first start offers the mouse", window.says("Use Acme Thumb here?"))
    check("the window ends", window.end(), 0)
    bench.start()
    window = bench.window
    check("another start knows the mice", bool(wait_until(lambda: (
        (button := window.thing("Choose a Mouse…", role="push button")) and button.is_enabled))))
    check("and offers nothing", [thing.name for thing in window.look() if "here?" in thing.name], [])


def rows(bench):
    return bench.window.rows(CHOOSE, 3)[0]


def chooses_in_window(bench):
    window = bench.window
    window.thing("Choose a Mouse…", role="push button").focus()
    window.press(SPACE)
    check("the picture in the header opens the sheet by the keyboard", window.has(CHOOSE))
    wait_until(lambda: len(rows(bench)) == 3)
    check("it lists the mice of the machine and the virtual one, which is selected", window.rows(CHOOSE, 3), (
        [["Acme Grid", "Cable", "Not allowed"], ["Acme Thumb", "Cable", ""],
         ["Virtual mouse", "None: to try things", "In use"]], [2]))
    window.press(UP)
    check("what a mouse allows is told", window.says("of 27 controls are found on it", CHOOSE))
    window.press(UP)
    check("and what is missing where one may not be used", window.says("your account may not open", CHOOSE))
    check("with the command that mends it",
          window.says("sudo udevadm control --reload && sudo udevadm trigger", CHOOSE))
    window.press(DOWN)
    window.press(ENTER)
    check("Return uses it", window.says("“Acme Thumb” is in use.", CHOOSE))
    shown = bench.shown()
    check("it is in use for the engine", (shown["name"], shown["isInUse"]), ("Acme Thumb", True))
    check("and in the list", bench.state(), "In use")


def presses(bench, control, done, press_it):
    """The control is asked for and pressed; the next is asked for by itself."""
    window = bench.window
    check(f"{control} is asked for", window.says(control, TEACH))
    press_it()
    check(f"it tells: {done}", window.says(done, TEACH))


def walks_over_controls(bench):
    window, mouse = bench.window, bench.mouse
    window.tab_to("Teach the Controls…", CHOOSE)
    window.press(SPACE)
    check("the walk over the controls opens", window.has(TEACH))
    presses(bench, "Button 1, Tab key", "1 (Tab) is now: 1 key", lambda: press(mouse, 1))
    check("the next one follows by itself", window.says("Button 2, Q key", TEACH))
    window.press(RIGHT, CTRL)
    check("Skip asks for the one after it", window.says("Button 3, W key", TEACH))
    window.press(LEFT, CTRL)
    check("Back for the one before", window.says("Button 2, Q key", TEACH))

    def click():
        mouse.move(buttons=SIDE_BUTTON)
        mouse.move()
    presses(bench, "Button 2, Q key", "2 (Q) is now: Side button", click)
    presses(bench, "Button 3, W key", "3 (W) is now: Wheel up", lambda: mouse.move(wheel=8))
    presses(bench, "Button 4, E key", "4 (E) is now: 2 key", lambda: press(mouse, 2))
    check("a key that the mouse plays is no button of the sheet", window.says("Button 5, R key", TEACH))


def survives_unplugging(bench):
    window, mouse = bench.window, bench.mouse
    mouse.unplug()
    check("the walk closes when the mouse is unplugged", window.has(TEACH, False))
    check("the list says so", wait_until(lambda: bench.state() == "In use, not plugged in") or bench.state(), True)
    mouse.plug()
    check("plugged in again, it is in the list before it is allowed", wait_until(
        lambda: bench.state() == "In use, not allowed") or bench.state(), True)
    check("what is missing is told, with its file", window.says(bench.nodes()[0], CHOOSE))
    bench.allow()
    check("and in use when that is mended", wait_until(lambda: bench.state() == "In use") or bench.state(), True)
    window.tab_to("Teach the Controls…", CHOOSE)
    window.press(SPACE)
    check("the walk goes on where a person likes", window.has(TEACH))
    check("it knows what was taught", window.says("It has been taught.", TEACH))
    window.press(ENTER, CTRL)
    check("the end says what was taught in it", window.says("Nothing was taught. The mouse is as it was.", TEACH))
    window.press(ESCAPE)
    check("Escape ends it", window.has(TEACH, False))
    window.press(ESCAPE)
    check("and the sheet", window.has(CHOOSE, False))


def tells_what_it_lacks(bench):
    found = {thing.name: thing for thing in bench.window.look(pages=True)
             if thing.role in ("button with drop down", "combo box", "push button", "radio button")}
    def said(name):
        return found[name].description.removeprefix("(Default). ") if name in found else None
    check("a control that it lacks says so", (said("Button 20, Up"), found["Button 20, Up"].is_enabled), (LACKS, True))
    check("one that it was taught does not", LACKS in said("Button 1, Tab key"), False)
    check("nor does one of the wheel", LACKS in said("Button 17, Wheel button"), False)
    check("the polling rate says that the mouse does not offer it", said("1000 Hz"),
          "This mouse does not offer a polling rate. It is kept for a mouse that does.")
    check("and the light", said("Fixed colour"),
          "This mouse does not offer its light. The setting is kept for a mouse that does.")
    check("the header names the mouse", said("Choose a Mouse…"), "")


def plays_what_was_taught(bench):
    desktop = Desktop()
    check("vornctl assigns to a taught control", bench.engine.ask("assign", "1", "key", "b"), (0, ""))
    node_called("Skarn Keyboard")
    wait_until(desktop.is_reading_all)
    press(bench.mouse, 1)
    check("it plays that and not its own", keys(desktop.after(end_of(ecodes.KEY_B))), typed("KEY_B"))
    wait_until(lambda: False, 3)
    print("B1", bench.window.thing("Button 1, Tab key", role="button with drop down", pages=True).description)
    desktop.is_reading = False


def uses_window(bench):
    """In place of the engine of the others."""
    if not is_installed(XServer):
        return
    bench.engine.stop()
    mine = WindowBench(bench.programs)
    import time
    for part in (offers_once, chooses_in_window, walks_over_controls, survives_unplugging, tells_what_it_lacks,
                 plays_what_was_taught):
        t0 = time.monotonic()
        part(mine)
        print(part.__name__, time.monotonic() - t0, flush=True)
        os.system(f"DISPLAY=:7 import -window root png:- | base64 -w0 | sed 's/^/PICTURE {part.__name__} /'; echo")
    mine.window.end()
    mine.end()
    bench.engine.start()
