"""The window of the configurator in a test in a guest: driven by a keyboard, and read as by a screen reader."""
from checks import wait_until
from displays import TESTER
from hid_devices import KEYBOARD, HidDevice, keyboard_report
from screen_reader import ScreenReader

# HID usages.
ENTER, ESCAPE, TAB, SPACE, RIGHT, LEFT, DOWN, UP = 40, 41, 43, 44, 79, 80, 81, 82
CTRL = 1  # a modifier, as the report has it


class Keyboard:
    def __init__(self):
        self._device = HidDevice("Acme Keyboard", KEYBOARD, 0x41, place="usb-5/input0")

    def press(self, usage, modifiers=0):
        self._device.send(keyboard_report(usage, modifiers=modifiers))
        self._device.send(keyboard_report())

    def unplug(self):
        self._device.unplug()


class Window:
    TITLE = "Skarn"

    def __init__(self, engine, keyboard, display, *words):
        self._keyboard = keyboard
        self._program = engine.begin_window(display, *words)
        self._program.tells("settings loaded")
        self._reader = ScreenReader(engine.session(), TESTER, self._program.process.pid)

    def end(self):
        """The exit status."""
        return self._program.end()

    def has(self, title, is_open=True):
        return bool(wait_until(lambda: (title in self._reader.windows()) == is_open))

    def look(self, title=TITLE, pages=False):
        return list(self._reader.look(title, pages))

    def thing(self, name, title=TITLE, role=None, pages=False):
        """The first of this name, or nothing."""
        return next((thing for thing in self._reader.look(title, pages)
                     if thing.name == name and role in (None, thing.role)), None)

    def says(self, words, title=TITLE):
        """Whether a line has these words, now or soon; the lines that there are instead."""
        lines = []

        def is_said():
            lines[:] = [thing.name for thing in self._reader.look(title) if thing.role == "label"]
            return any(words in line for line in lines)
        return bool(wait_until(is_said, 20)) or lines

    def press(self, usage, modifiers=0):
        self._device.send(keyboard_report(usage, modifiers=modifiers))
        self._device.send(keyboard_report())

    def unplug(self):
        self._device.unplug()


class Window:
    TITLE = "Skarn"

    def __init__(self, engine, keyboard, display, *words):
        self._keyboard = keyboard
        self._program = engine.begin_window(display, *words)
        self._program.tells("settings loaded")
        self._reader = ScreenReader(engine.session(), TESTER, self._program.process.pid)

    def end(self):
        """The exit status."""
        return self._program.end()

    def has(self, title, is_open=True):
        return bool(wait_until(lambda: (title in self._reader.windows()) == is_open))

    def look(self, title=TITLE, has_hidden=False):
        return self._reader.look(title, has_hidden)

    def thing(self, name, title=TITLE, role=None, has_hidden=False):
        """The first of this name, or nothing."""
        return next((thing for thing in self.look(title, has_hidden)
                     if thing.name == name and role in (None, thing.role)), None)

    def says(self, words, title=TITLE):
        """Whether a line has these words, now or soon; what there is instead."""
        def lines():
            return [thing.name for thing in self.look(title) if thing.role == "label"]
        return bool(wait_until(lambda: any(words in line for line in lines()), 20)) or lines()

    def press(self, usage, modifiers=0):
        self._keyboard.press(usage, modifiers)

    def focused(self, title):
        return next((thing.name for thing in self._reader.look(title) if thing.is_focused), None)

    def tab_to(self, name, title):
        """Presses Tab until the keyboard is there; what it passes on the way."""
        passed = []
        wait_until(lambda: self.focused(title), 10)
        while (here := self.focused(title)) != name and len(passed) < 60:
            passed.append(here)
            self.press(TAB)
            wait_until(lambda: self.focused(title) != here, 10)
        return passed

    def rows(self, title, columns):
        """The cells of its table, row by row, and which row is selected."""
        cells = [thing for thing in self.look(title) if thing.role == "cell"]
        rows = [cells[at:at + columns] for at in range(0, len(cells), columns)]
        selected = [number for number, row in enumerate(rows) if row[0].is_selected]
        return [[cell.name for cell in row] for row in rows], selected
