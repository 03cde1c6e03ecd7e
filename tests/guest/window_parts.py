"""The window with a real mouse: what a person sees and does from the first start on."""
import json
import os

from evdev import ecodes

from checks import check, wait_until
from desktop import KEYBOARD_NAME, end_of, keys, node_called, press, typed
from displays import TESTER, XServer, is_installed
from engine import Engine
from hid_devices import SIDE_BUTTON, ThumbMouse
from window import CTRL, DOWN, ENTER, ESCAPE, LEFT, PATIENCE, RIGHT, SPACE, UP, Keyboard, Window

CHOOSE = "Choose a Mouse"
CHOOSE_BUTTON = "Choose a Mouse…"
OFFER = "Use Acme Thumb here?"
TEACH = "Teach the Controls"
TEACH_BUTTON = "Teach the Controls…"


class ManagedXServer(XServer):
    """With a window manager, and what screen readers need."""
    PACKAGES = {**XServer.PACKAGES, "openbox": "openbox", "/usr/libexec/at-spi-bus-launcher": "at-spi2-core",
                "/usr/lib/python3/dist-packages/dbus": "python3-dbus"}

    def __init__(self):
        super().__init__("openbox")


class WindowBench:
    """A mouse that a person may use, that person's engine, and an X server with a window manager."""

    def __init__(self, programs, desktop):
        self.desktop = desktop
        self.mouse = ThumbMouse()
        self.keyboard = Keyboard()
        self.allow()
        self.server = ManagedXServer()
        self.engine = Engine(programs, TESTER)
        self.start()

    def nodes(self):
        return [node_called(f"{self.mouse.NAME} {part}", False) for part in ("Mouse", "Keyboard")]

    def allow(self):
        for node in (*self.nodes(), "/dev/uinput"):
            os.chown(node, TESTER, TESTER)
            os.chmod(node, 0o600)

    def start(self):
        self.window = Window(self.engine, self.keyboard, self.server.NAME)

    def rows(self):
        return self.window.rows(CHOOSE, 3)

    def state(self, expected):
        """What the sheet says of the mouse, as soon as it says this."""
        def said():
            return next((row[2] for row in self.rows()[0] if row[0] == self.mouse.NAME), None)
        return expected if wait_until(lambda: said() == expected, PATIENCE) else said()

    def open_walk(self):
        self.window.tab_to(TEACH_BUTTON, CHOOSE)
        self.window.press(SPACE)

    def end(self):
        self.window.end()
        self.engine.end()
        self.server.end()
        self.keyboard.unplug()
        self.mouse.unplug()


def offers_once(bench):
    check("the first start offers the mouse", bench.window.says(OFFER))
    check("the window ends", bench.window.end(), 0)
    bench.start()
    check("another start knows the mice", bool(bench.window.thing(CHOOSE_BUTTON, "push button")))
    check("and offers nothing", [thing.name for thing in bench.window.look() if thing.name == OFFER], [])


def chooses_in_window(bench):
    window = bench.window
    window.thing(CHOOSE_BUTTON, "push button").focus()
    window.press(SPACE)
    check("the picture in the header opens the list", window.has(CHOOSE))
    wait_until(lambda: len(bench.rows()[0]) == 3)
    check("it has the mice of the machine and the virtual one, which is selected", bench.rows(), (
        [["Acme Grid", "Cable", "Not allowed"], ["Acme Thumb", "Cable", ""],
         ["Virtual mouse", "None: to try things", "In use"]], [2]))
    window.press(UP)
    check("what a mouse allows is told", window.says("of 27 controls are found on it", CHOOSE))
    window.press(UP)
    check("of one that is not allowed, what is missing", window.says("your account may not open /dev/input/", CHOOSE))
    check("and the command that mends it",
          window.says("sudo udevadm control --reload && sudo udevadm trigger", CHOOSE))
    window.press(DOWN)
    window.press(ENTER)
    check("Return uses the mouse", bench.state("In use"), "In use")
    shown = json.loads(bench.engine.ask("mice", "show", "--json")[1])
    check("the engine uses it", (shown["name"], shown["isInUse"]), (bench.mouse.NAME, True))


def teaches(bench, control, done, press_it):
    """It is asked for, and pressed."""
    check(f"{control} is asked for", bench.window.says(f"{control}. Press this control", TEACH))
    press_it()
    check(f"and taught: {done}", bench.window.says(done, TEACH))


def walks_over_controls(bench):
    window, mouse = bench.window, bench.mouse

    def click():
        mouse.move(buttons=SIDE_BUTTON)
        mouse.move()
    bench.open_walk()
    check("the walk over the controls opens", window.has(TEACH))
    teaches(bench, "Button 1, Tab key", "1 (Tab) is now: 1 key", lambda: press(mouse, 1))
    check("the next one follows by itself", window.says("Button 2, Q key", TEACH))
    window.press(RIGHT, CTRL)
    check("Skip asks for the one after it", window.says("Button 3, W key", TEACH))
    window.press(LEFT, CTRL)
    teaches(bench, "Button 2, Q key", "2 (Q) is now: Side button", click)
    # Eight parts are a step.
    teaches(bench, "Button 3, W key", "3 (W) is now: Wheel up", lambda: mouse.move(wheel=8))
    teaches(bench, "Button 4, E key", "4 (E) is now: 2 key", lambda: press(mouse, 2))
    check("and so on", window.says("Button 5, R key", TEACH))


def is_unplugged(bench):
    window, mouse = bench.window, bench.mouse
    mouse.unplug()
    check("the walk closes when the mouse is unplugged", window.has(TEACH, False))
    check("the list says so", bench.state("In use, not plugged in"), "In use, not plugged in")
    mouse.plug()
    check("plugged in again, it is not allowed yet", bench.state("In use, not allowed"), "In use, not allowed")
    check("what is missing is told", window.says(bench.nodes()[0], CHOOSE))
    bench.allow()
    check("it is in use as soon as that is mended", bench.state("In use"), "In use")
    bench.open_walk()
    check("the walk goes on", window.has(TEACH))
    check("and knows what was taught before", window.says("It has been taught.", TEACH))
    window.press(ENTER, CTRL)
    check("its end says what was taught since", window.says("Nothing was taught. The mouse is as it was.", TEACH))
    window.press(ESCAPE)
    check("Escape ends it", window.has(TEACH, False))
    window.press(ESCAPE)
    check("and closes the list", window.has(CHOOSE, False))


def tells_what_it_lacks(bench):
    control, button, box, choice = "button with drop down", "push button", "check box", "combo box"
    names = (CHOOSE_BUTTON, "Button 1, Tab key", "Button 17, Wheel button", "Button 20, Up", "1000 Hz", "Main light")
    found = {}
    for thing in bench.window.look(tabs=True):
        if thing.name in names:
            found.setdefault((thing.role, thing.name), thing)

    def said(role, name):
        return found[role, name].description if (role, name) in found else None
    lacks = "The mouse in use has no such control"
    check("the header tells the mouse", said(button, CHOOSE_BUTTON), "Acme Thumb: In use. Choose another mouse…")
    check("a control that the mouse lacks says so, and can be assigned", (
        lacks in said(control, "Button 20, Up"), found[control, "Button 20, Up"].is_enabled), (True, True))
    check("what it has or was taught does not", [lacks in said(control, name) for name in (
        "Button 1, Tab key", "Button 17, Wheel button")], [False, False])
    check("the polling rate says that the mouse does not offer it", said(choice, "1000 Hz"),
          "This mouse does not offer a polling rate. It is kept for a mouse that does.")
    check("the light says so", said(box, "Main light"),
          "This mouse does not offer its light. The setting is kept for a mouse that does.")


def plays_what_was_taught(bench):
    check("a taught control is assigned", bench.engine.ask("assign", "1", "key", "b"), (0, ""))
    node_called(KEYBOARD_NAME)
    wait_until(bench.desktop.is_reading_all)
    bench.desktop.after()
    press(bench.mouse, 1)
    check("it plays that, and not its own key", keys(bench.desktop.after(end_of(ecodes.KEY_B))), typed("KEY_B"))


def uses_window(bench):
    """With an engine and a mouse of its own; the mouse of the others is not allowed."""
    if not is_installed(ManagedXServer):
        return
    bench.engine.stop()
    mine = WindowBench(bench.programs, bench.desktop)
    for part in (offers_once, chooses_in_window, walks_over_controls, is_unplugged, tells_what_it_lacks,
                 plays_what_was_taught):
        part(mine)
    mine.end()
    bench.engine.start()
