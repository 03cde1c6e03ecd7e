"""What a screen reader is told of a program's windows, over the accessibility bus of its session."""
import contextlib
import os

import dbus
import dbus.bus

from checks import wait_until

_PAGES = "layered pane"
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
    """Something of a window as it was when it was looked at: a button, a line of text, a cell."""

    def __init__(self, accessible):
        self._accessible = accessible
        properties = dbus.Interface(accessible, dbus.PROPERTIES_IFACE)
        self.name = str(properties.Get(_ACCESSIBLE, "Name"))
        self.description = str(properties.Get(_ACCESSIBLE, "Description"))
        self.role = str(accessible.GetRoleName(dbus_interface=_ACCESSIBLE))
        low, high = accessible.GetState(dbus_interface=_ACCESSIBLE)
        states = int(low) | int(high) << 32
        self.is_focused, self.is_selected, self.is_enabled, self.is_visible = (
            bool(states >> number & 1) for number in (_FOCUSED, _SELECTED, _SENSITIVE, _VISIBLE))


    def focus(self):
        """Gives it the keyboard."""
        self._accessible.GrabFocus(dbus_interface="org.a11y.atspi.Component")


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
                    self._accessible(name, _ROOT).GetRoleName(dbus_interface=_ACCESSIBLE)
                    return name
            except dbus.DBusException:  # It has gone, or is not ready.
                pass
        return None

    def _accessible(self, name, path):
        return self._bus.get_object(name, path, introspect=False)

    def _things(self, path, pages):
        accessible = self._accessible(self._name, path)
        thing = Thing(accessible)
        if not thing.is_visible and not pages:
            return
        yield thing
        if thing.role == _PAGES and not pages:
            return
        for name, child in accessible.GetChildren(dbus_interface=_ACCESSIBLE):
            if name:
                yield from self._things(child, pages)

    def windows(self):
        """The paths of the windows that are shown, by their titles."""
        children = self._accessible(self._name, _ROOT).GetChildren(dbus_interface=_ACCESSIBLE)
        windows = ((Thing(self._accessible(self._name, path)), path) for _, path in children)
        return {thing.name: path for thing, path in windows if thing.is_visible}

    def look(self, title, pages=False):
        """What is shown in the window with this title, one after the other: nothing where there is none. Pages, of which
        one is shown at a time, hold much: they are left out, unless all that is in the window is asked for."""
        try:
            path = self.windows().get(title)
            if path:
                yield from self._things(path, pages)
        except dbus.DBusException:  # Something has gone meanwhile.
            pass
