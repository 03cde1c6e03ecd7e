"""A user's session in a guest with systemd, and the core engine as its service."""
import os
import pathlib
import re
import subprocess

from checks import PATIENCE

USER = "tester"
UID = 59000
HOME = pathlib.Path("/home/tester")
RUNTIME = pathlib.Path(f"/run/user/{UID}")
UNIT = "vorn-core-engine.service"
ENVIRONMENT = {
    "HOME": str(HOME),
    "USER": USER,
    "PATH": "/usr/local/bin:/usr/bin:/bin",
    "LANG": "C.UTF-8",
    "XDG_RUNTIME_DIR": str(RUNTIME),
    "DBUS_SESSION_BUS_ADDRESS": f"unix:path={RUNTIME}/bus",
}
AS_USER = {"user": UID, "group": UID, "extra_groups": [], "env": ENVIRONMENT, "cwd": HOME}


def start_as_user(*command):
    return subprocess.Popen(command, text=True, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                            stderr=subprocess.STDOUT, **AS_USER)


def as_user(*command):
    """Exit status and output of a command of the user."""
    process = start_as_user(*command)
    output = process.communicate(timeout=2 * PATIENCE)[0].strip()
    return process.returncode, output


def vornctl(*words):
    return as_user("vornctl", "--timeout", str(PATIENCE), *words)


def systemctl(*words):
    return as_user("systemctl", "--user", *words)


def start():
    systemctl("reset-failed")  # how often it was started before does not matter here
    return systemctl("start", UNIT)


def unit(name):
    return systemctl("show", "--value", "--property", name, UNIT)[1]


def engine():
    return int(unit("MainPID"))


def status(process, field):
    text = pathlib.Path(f"/proc/{process}/status").read_text(encoding="utf-8")
    return re.search(rf"^{field}:\s+(\S+)", text, re.M)[1]


def log():
    return subprocess.run(["journalctl", "--quiet", "--output=cat", f"_SYSTEMD_USER_UNIT={UNIT}"], check=True,
                          capture_output=True, text=True).stdout


def as_file_of_user(path, text, mode=0o644):
    as_user("mkdir", "-p", str(path.parent))
    path.write_text(text, encoding="utf-8")
    path.chmod(mode)
    os.chown(path, UID, UID)
    return path


def begin_session(name, user, *properties, **variables):
    """A session of the user, until the unit of this name is stopped."""
    subprocess.run(["systemd-run", "--quiet", f"--unit={name}", f"--uid={user}", "--property=PAMName=login",
                    *(f"--property={each}" for each in properties), "--setenv=XDG_SESSION_CLASS=user",
                    "--setenv=XDG_SESSION_TYPE=tty", *(f"--setenv={key}={value}" for key, value in variables.items()),
                    "sleep", "infinity"], check=True)


def log_in():
    """At the screen."""
    begin_session("at-the-screen", USER, "TTYPath=/dev/tty1", "StandardInput=tty", XDG_SEAT="seat0", XDG_VTNR="1")


def log_out():
    subprocess.run(["systemctl", "stop", "at-the-screen"], check=True)
