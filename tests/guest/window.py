"""The window of the configurator in a test in a guest: driven by a keyboard, and read as by a screen reader."""
from checks import wait_until
from displays import TESTER
from hid_devices import KEYBOARD, HidDevice, keyboard_report
from screen_reader import ScreenReader

# HID usages.
ENTER, ESCAPE, TAB, SPACE, RIGHT, LEFT, DOWN, UP = 40, 41, 43, 44, 79, 80, 81, 82
CTRL = 1  # a modifier, as the report has it
PATIENCE = 20  # seconds, until the window says something


class Keyboard:
    def __init__(self):
        self._device = HidDevice("Acme Keyboard", KEYBOARD, 0x41, place="usb-5/input0")

    def press(self, usage, modifiers=0):
        self._device.send(keyboard_report(usage, modifiers=modifiers))
        self._device.send(keyboard_report())

    def unplug(self):
        self._device.unplug()


class Window:
    """Of the tester, on an X server."""
    TITLE = "Skarn"

    def __init__(self, engine, keyboard, display):
        self._keyboard = keyboard
        self._program = engine.begin_window(display)
        self._program.tells("settings loaded")
        self._reader = ScreenReader(engine.session(), TESTER, self._program.process.pid)

    def end(self):
        """The exit status."""
        return self._program.end()

    def press(self, usage, modifiers=0):
        self._keyboard.press(usage, modifiers)

    def has(self, title, is_open=True):
        """Whether a window has this title, or none has, now or soon."""
        return bool(wait_until(lambda: (title in self._reader.windows()) == is_open))

    def look(self, title=TITLE, tabs=False):
        """What is in the window with this title. The tabs hold much: they are left out, or all of it is looked at."""
        is_short = title == self.TITLE and not tabs
        return self._reader.look(title, "layered pane" if is_short else None, tabs)

    def thing(self, name, role):
        """The first of this name and role outside the tabs, as soon as it can be used; or nothing."""
        def found():
            return next((thing for thing in self.look() if thing.name == name and thing.role == role), None)
        return wait_until(lambda: (thing := found()) and thing.is_enabled and thing)

    def says(self, words, title=TITLE):
        """Whether something has these words, now or soon; what there is instead."""
        names = []

        def is_said():
            names.clear()
            for thing in self.look(title):
                names.append(thing.name)
                if words in thing.name:
                    return True
            return False
        return bool(wait_until(is_said, PATIENCE)) or names

    def focused(self, title):
        """Who has the keyboard. The current cell of a table has it for ever."""
        return next((thing.name for thing in self.look(title) if thing.is_focused and thing.role != "cell"), None)

    def tab_to(self, name, title):
        """Presses Tab until the keyboard is there, or has been everywhere."""
        passed = []
        while (here := wait_until(lambda: self.focused(title))) != name and here not in passed:
            passed.append(here)
            self.press(TAB)
            wait_until(lambda was=here: self.focused(title) != was, PATIENCE)
        return here == name

    def rows(self, title, columns):
        """The cells of its table, row by row, and which rows are selected."""
        cells = [thing for thing in self.look(title) if thing.role == "cell"]
        rows = [cells[at:at + columns] for at in range(0, len(cells) + 1 - columns, columns)]
        return [[cell.name for cell in row] for row in rows], [
            number for number, row in enumerate(rows) if row[0].is_selected]
