#!/usr/bin/python3
"""What systemd and udev make of the scripts of the Debian package.

    package_test.py PACKAGE

Runs as root in a guest with systemd (tests/guest/package starts it there). Each check is a line; the exit status is 1 when
one of them fails. What the package depends on is there already, as programs are built on this machine.
"""
import os
import pathlib
import subprocess
import sys

from checks import check, finish, wait_until
from hid_devices import MOUSE, HidDevice
from service_mice import event_nodes, may_open
from service_test import STATE
from user_session import UID, UNIT, USER, as_user, engine, log, log_in, vornctl

SCRIPTS = pathlib.Path("/tmp/package-scripts")
MOUSE_NAME = "Plain mouse"


def run(script, *arguments):
    """A script of the package, as dpkg runs it."""
    environment = {**os.environ, "DPKG_MAINTSCRIPT_PACKAGE": "skarn", "DPKG_MAINTSCRIPT_NAME": script}
    return subprocess.run([SCRIPTS / script, *arguments], check=False, env=environment).returncode


def in_force(path):
    return may_open(path)[path]


def main(package):
    # Where programs are built in a container, its packages start no services.
    pathlib.Path("/usr/sbin/policy-rc.d").unlink(missing_ok=True)
    subprocess.run(["loginctl", "enable-linger", USER], check=True)
    subprocess.run(["systemctl", "start", f"user@{UID}.service"], check=True)
    mouse = HidDevice(MOUSE_NAME, MOUSE, 2)
    check("a mouse is plugged in", wait_until(lambda: MOUSE_NAME in event_nodes()))
    log_in()
    node = event_nodes()[MOUSE_NAME]
    check("before the installation the person at the screen may not use it", in_force(node), False)

    # Without dpkg, which takes minutes on an emulated processor for the packages that this machine has.
    subprocess.run(["dpkg-deb", "--extract", package, "/"], check=True)
    subprocess.run(["dpkg-deb", "--control", package, SCRIPTS], check=True)
    check("the package is installed", run("postinst", "configure", ""), 0)
    check("the person at the screen may use the mouse at once", wait_until(lambda: in_force(node)))
    check("and /dev/uinput", wait_until(lambda: in_force("/dev/uinput")))
    check("the engine runs in the session that there is", wait_until(engine) > 0)
    check("it is enabled for all users", as_user("systemctl", "--user", "is-enabled", UNIT), (0, "enabled"))
    check("a setting is changed", vornctl("set", "DPIX", "1600"), (0, ""))

    before = engine()
    check("the package is upgraded", [run("prerm", "upgrade", "2"), run("postrm", "upgrade", "2"),
                                      run("postinst", "configure", "1")], [0, 0, 0])
    check("a new engine runs", wait_until(lambda: engine() not in (0, before)))
    check("with the settings of the former one", vornctl("get", "DPIX"), (0, "1600"))

    check("the package is removed", run("prerm", "remove"), 0)
    check("the engine has ended", wait_until(lambda: engine() == 0))
    check("the package is purged", [run("postrm", "remove"), run("postrm", "purge")], [0, 0])
    left = [str(path) for folder in ("/etc/systemd/user", "/var/lib/systemd")
            for path in pathlib.Path(folder).rglob("*vorn*")]
    check("nothing is left of what was said about the service", left, [])
    check("the settings of the user are", (STATE / "settings.plist").exists())
    mouse.unplug()
    finish(log)


if __name__ == "__main__":
    main(sys.argv[1])
