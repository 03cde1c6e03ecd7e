"""What a screen reader is told of a program's windows, over the accessibility bus of its session."""
import contextlib
import functools
import os

from checks import wait_until

try:
    import dbus
    import dbus.bus
except ImportError:  # Who finds it missing leaves out what needs it.
    pass

_ROOT = "/org/a11y/atspi/accessible/root"
_ACCESSIBLE = "org.a11y.atspi.Accessible"
# at-spi2-core, atspi-constants.h: the state types.
_FOCUSED, _SELECTED, _SENSITIVE, _VISIBLE = 12, 23, 24, 30


@contextlib.contextmanager
def _as_user(user):
    """A session's buses answer its user alone, not even root."""
    os.seteuid(user)
    try:
        yield
    finally:
        os.seteuid(0)


class Thing:
    """Something of a window: a button, a line of text, a cell. It tells what it is when it is first asked for that, and
    nothing when it has gone."""

    def __init__(self, bus, connection, path):
        self._bus, self._at = bus, (connection, path)
        low, high = self._call(_ACCESSIBLE, "GetState")
        states = int(low) | int(high) << 32
        self.is_focused, self.is_selected, self.is_enabled, self.is_visible = (
            bool(states >> number & 1) for number in (_FOCUSED, _SELECTED, _SENSITIVE, _VISIBLE))

    def _call(self, interface, member, signature="", *words):
        return self._bus.call_blocking(*self._at, interface, member, signature, words)

    def _text(self, *call):
        try:
            return str(self._call(*call))
        except dbus.DBusException:
            return ""

    @functools.cached_property
    def name(self):
        return self._text(dbus.PROPERTIES_IFACE, "Get", "ss", _ACCESSIBLE, "Name")

    @functools.cached_property
    def description(self):
        return self._text(dbus.PROPERTIES_IFACE, "Get", "ss", _ACCESSIBLE, "Description")

    @functools.cached_property
    def role(self):
        return self._text(_ACCESSIBLE, "GetRoleName")

    def children(self):
        """Where they are."""
        return [(name, path) for name, path in self._call(_ACCESSIBLE, "GetChildren") if name]

    def focus(self):
        """Gives it the keyboard."""
        self._call("org.a11y.atspi.Component", "GrabFocus")


class ScreenReader:
    """Of the program with this number, in this user's session with this bus."""

    def __init__(self, session, user, program):
        with _as_user(user):
            bus = dbus.bus.BusConnection(session)
            address = bus.call_blocking("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", "", ())
            self._bus = dbus.bus.BusConnection(str(address))
        self._name = wait_until(lambda: self._connection_of(program))

    def _connection_of(self, program):
        for name in self._bus.list_names():
            try:
                owner = self._bus.call_blocking("org.freedesktop.DBus", "/", "org.freedesktop.DBus",
                                                "GetConnectionUnixProcessID", "s", (name,))
                if owner == program:
                    Thing(self._bus, name, _ROOT)
                    return name
            except dbus.DBusException:  # It has gone, or is not ready.
                pass
        return None

    def _things(self, thing, skipped, has_hidden):
        if not thing.is_visible and not has_hidden:
            return
        yield thing
        if skipped is not None and thing.role == skipped:
            return
        for child in thing.children():
            yield from self._things(Thing(self._bus, *child), skipped, has_hidden)

    def windows(self):
        """Those that are shown, by their titles."""
        windows = {}
        for child in Thing(self._bus, self._name, _ROOT).children():
            with contextlib.suppress(dbus.DBusException):  # It has gone meanwhile.
                window = Thing(self._bus, *child)
                if window.is_visible:
                    windows[window.name] = window
        return windows

    def look(self, title, skipped=None, has_hidden=False):
        """What is in the window with this title, one after the other: nothing where there is none. Skipped: the role of
        what is not looked into."""
        try:
            window = self.windows().get(title)
            if window:
                yield from self._things(window, skipped, has_hidden)
        except dbus.DBusException:  # Something has gone meanwhile.
            pass
