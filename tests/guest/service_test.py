#!/usr/bin/python3
"""The core engine as a service of a user's session: what systemd and the bus make of the installed files.

    service_test.py PREFIX [PART...]     PREFIX: folder of an installation for /usr/local, with bench-attacker among its
                                         programs; without names of parts (those below) all of them

Runs as root in a guest with systemd (tests/guest/service starts it there). Each check is a line; the exit status is 1
when one of them fails.
"""
import contextlib
import os
import pathlib
import re
import shutil
import signal
import socket
import subprocess
import sys
import time

from checks import check, comes_to_rest, finish, wait_until
from service_mice import PLUGGED, gives_mice_to_the_person_at_the_screen, gives_nothing_to_others, uses_a_mouse
from service_peers import uses_what_the_system_knows
from user_session import (HOME, UID, UNIT, USER, as_file_of_user, as_user, engine, log, start, start_as_user, status,
                          systemctl, unit, vornctl)

HERE = pathlib.Path(__file__).resolve().parent
STATE = HOME / ".local/state/vorn-core-engine"
DROP_IN = HOME / f".config/systemd/user/{UNIT}.d/test.conf"
NAME = "org.vorn.CoreEngine"
BUS_CALL = ("busctl", "--user", "call", "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus")
ACTIVATION = (*BUS_CALL, "StartServiceByName", "su", NAME, "0")
IDLE_SECONDS = 5
MAXIMUM_PEAK = 64 * 1024  # kB
MAXIMUM_REST = 6 * 1024  # of its own: the pages of libraries are shared out among those who have them in use
MAXIMUM_EXPOSURE = 2.0

# What the sandbox makes of the attempts of sandbox_probe.py; all of them succeed outside.
REFUSALS = {
    "writes in the home": "EROFS",
    "writes beside its folder": "EROFS",
    "writes in the run-time folder": "EROFS",
    "sees a /usr that can be written to": "EROFS",
    "sees the temporary files of others": "ENOENT",
    "makes an internet socket": "EAFNOSUPPORT",
    "makes a netlink socket": "EAFNOSUPPORT",
    "maps code that can be written": "EPERM",
    "makes a user namespace": "EPERM",
    "makes a set-user-ID program": "EPERM",
    "changes its personality": "EPERM",
}

# What nobody may do who is the user, in the sandbox or outside of it.
NEVER = {"reads a keyboard": "EACCES", "reads the keyboard of a device that has a mouse as well": "EACCES"}


def proportional_size(process):
    """kB of memory, of each page that others have too its share."""
    text = pathlib.Path(f"/proc/{process}/smaps_rollup").read_text(encoding="utf-8")
    return int(re.search(r"^Pss:\s+(\d+)", text, re.M)[1])


def install(prefix):
    shutil.copytree(prefix, "/usr/local", dirs_exist_ok=True, symlinks=True)
    shutil.copy(HERE / "sandbox_probe.py", "/usr/local/bin")
    # The user's manager lasts longer than the user's sessions.
    subprocess.run(["loginctl", "enable-linger", USER], check=True)
    subprocess.run(["systemctl", "start", f"user@{UID}.service"], check=True)
    subprocess.run("udevadm control --reload; udevadm trigger --subsystem-match=misc; udevadm settle", shell=True,
                   check=True)


def starts_on_demand():
    check("the engine does not run before somebody asks", engine(), 0)
    check("the bus starts the engine on demand", as_user(*ACTIVATION), (0, "u 1"))
    check("the service is active then", wait_until(lambda: unit("ActiveState") == "active"))
    owner = as_user(*BUS_CALL, "GetConnectionUnixProcessID", "s", NAME)
    check("the service is the owner of the name", owner, (0, f"u {engine()}"))
    check("vornctl reaches it", vornctl("profiles", "list"), (0, "* 1  Default"))
    state = f"profiles: 0, macros: 0, settings in {STATE}"
    check("it tells its state", wait_until(lambda: unit("StatusText") == state) or unit("StatusText"))


def is_sandboxed():
    running = engine()
    check("no new privileges", status(running, "NoNewPrivs"), "1")
    check("system calls are filtered", status(running, "Seccomp"), "2")
    check("no capabilities", status(running, "CapBnd"), "0" * 16)
    namespaces = {name: os.readlink(f"/proc/{running}/ns/{name}") != os.readlink(f"/proc/1/ns/{name}")
                  for name in ("user", "mnt", "uts")}
    check("its namespaces are its own", namespaces, dict.fromkeys(namespaces, True))
    group = pathlib.Path(f"/proc/{running}/cgroup").read_text(encoding="utf-8").strip().removeprefix("0::")
    check("its memory is limited", pathlib.Path(f"/sys/fs/cgroup{group}/memory.max").read_text().strip(), str(1 << 30))
    limits = pathlib.Path(f"/proc/{running}/limits").read_text(encoding="utf-8")
    check("it leaves no core dumps", re.search(r"^Max core file size +(\w+) +(\w+)", limits, re.M).groups(), ("0", "0"))
    check("the settings are the user's alone", [oct(path.stat().st_mode & 0o777) for path in (
        STATE, STATE / "settings.plist")], ["0o700", "0o600"])
    exposure = as_user("systemd-analyze", "--user", "security", "--no-pager", UNIT)[1].splitlines()[-1]
    check(f"systemd finds it hardly exposed ({exposure})",
          float(re.search(r": ([0-9.]+) ", exposure)[1]) <= MAXIMUM_EXPOSURE)


@contextlib.contextmanager
def drop_in(text):
    as_file_of_user(DROP_IN, text)
    systemctl("daemon-reload")
    yield
    DROP_IN.unlink()
    systemctl("daemon-reload")


def sandbox_refuses():
    """The probe in the place of the engine, with all other lines of the unit; and without any."""
    pathlib.Path("/tmp/of-somebody-else").touch()
    # Listens like an X server, until this program ends.
    pathlib.Path("/tmp/.X11-unix").mkdir(exist_ok=True)
    server = socket.socket(socket.AF_UNIX)
    server.bind("/tmp/.X11-unix/X99")
    server.listen()
    os.chmod("/tmp/.X11-unix/X99", 0o777)
    probe = "/usr/local/bin/sandbox_probe.py"
    inside, outside = STATE / "probe", as_file_of_user(HOME / "probe/result", "")
    systemctl("stop", UNIT)
    # Python takes its time where the machine is emulated.
    with drop_in("[Service]\nType=oneshot\nTimeoutStartSec=infinity\nExecStart=\n"
                 f"ExecStart=/usr/bin/python3 {probe} {inside}\n"):
        check("the probe runs in the sandbox", start(), (0, ""))
    check("the probe runs outside", as_user("/usr/bin/python3", probe, str(outside)), (0, ""))
    found = {}
    for place, result in (("inside", inside), ("outside", outside)):
        lines = result.read_text(encoding="utf-8").splitlines() if result.exists() else []
        found[place] = dict(line.split(": ") for line in lines)
    check("there are results", set(found["inside"]) == set(found["outside"]) > set(REFUSALS) | set(NEVER))
    for attempt, outcome in found["inside"].items():
        inside = NEVER.get(attempt) or REFUSALS.get(attempt, "done")
        check(f"in the sandbox the engine {attempt}" if inside == "done" else f"in the sandbox nobody {attempt}",
              (outcome, found["outside"][attempt]), (inside, NEVER.get(attempt, "done")))


def survives_stop_and_start():
    check("a change is acknowledged", vornctl("set", "ProfileName", "Kept")[0], 0)
    check("it stops", systemctl("stop", UNIT), (0, ""))
    check("it has ended well", (unit("ActiveState"), unit("Result"), unit("ExecMainStatus")),
          ("inactive", "success", "0"))
    check("it starts by hand", start(), (0, ""))
    check("the settings are there again", vornctl("profiles", "list"), (0, "* 1  Kept"))


def sleeps():
    check(f"it does not wake up for {IDLE_SECONDS} s while nobody asks", comes_to_rest(engine(), IDLE_SECONDS))


def launches_outside():
    """A control starts a program, which has the home, and leaves its work to a child."""
    told = HOME / "told"
    tell = as_file_of_user(HOME / "bin/tell", "#!/bin/sh\n(\n  " + "\n  ".join((
        "sleep 1", "pwd", 'printf "[%s]" "$@"', "echo", "grep NoNewPrivs /proc/self/status", "cat /proc/self/cgroup"))
        + f"\n) >{told}.new 2>&1 && mv {told}.new {told} &\n", 0o755)
    entry = as_file_of_user(HOME / "apps/tell-all.desktop",
                            f'[Desktop Entry]\nType=Application\nName=Tell\nPath={HOME}/bin\n'
                            f'Exec={tell} "a b" "\\\\$HOME"\n')
    check("a control gets the program", vornctl("assign", "4", "launch", str(entry))[0], 0)
    check("the control is pressed", vornctl("device", "click", "4")[0], 0)
    check("the program runs outside of the sandbox", wait_until(told.exists))
    lines = told.read_text(encoding="utf-8").splitlines() if told.exists() else []
    check("it starts in its folder, with its arguments and no sandbox", lines[:3],
          [f"{HOME}/bin", "[a b][$HOME]", "NoNewPrivs:\t0"])
    check("it is a unit of its own",
          re.fullmatch(r".*/app\.slice/app-vorn-tell\\x2dall@[0-9a-f]{16}\.service", "".join(lines[3:])) is not None)
    check("nothing is left of it", wait_until(lambda: systemctl(
        "list-units", "--all", "--no-legend", "app-vorn-*")[1] == ""))
    broken = as_file_of_user(HOME / "bin/broken", "#!/no/such/interpreter\n", 0o755)
    entry = as_file_of_user(HOME / "apps/broken.desktop", f"[Desktop Entry]\nType=Application\nName=B\nExec={broken}\n")
    vornctl("assign", "4", "launch", str(entry))
    vornctl("device", "click", "4")
    reason = (f"vorn-core-engine: client the mouse: cannot launch {entry}: cannot start {broken}: "
              "the service manager could not run it (failed); its journal tells why\n")
    check("the log tells which program does not start", wait_until(lambda: reason in log()))


def withstands_a_flood():
    running = engine()
    attacker = start_as_user("bench-attacker", "flood", "0")
    end = time.monotonic() + 5
    answers = []
    while time.monotonic() < end:
        answers.append(vornctl("profiles", "list"))
    check("the flood goes on", attacker.poll(), None)
    attacker.kill()
    attacker.communicate()
    check(f"others are answered during a flood ({len(answers)} times)", set(answers), {(0, "* 1  Kept")})
    check("the engine is the same after it", engine(), running)
    peak = int(status(running, "VmHWM"))
    check(f"its memory was small ({peak} kB)", peak <= MAXIMUM_PEAK)
    is_small = wait_until(lambda: proportional_size(running) <= MAXIMUM_REST)
    check(f"its memory is small again ({proportional_size(running)} kB, with all of the libraries "
          f"{status(running, 'VmRSS')} kB)", is_small)


def comes_back_when_killed():
    running = engine()
    check("a last change is acknowledged", vornctl("set", "ProfileName", "Survivor")[0], 0)
    os.kill(running, signal.SIGKILL)
    check("it runs again when it was killed", wait_until(
        lambda: engine() not in (0, running) and unit("ActiveState") == "active"))
    check("it was the service that did so", unit("NRestarts"), "1")
    check("what was acknowledged is there", vornctl("profiles", "list"), (0, "* 1  Survivor"))
    check("nothing was damaged", list(STATE.glob("*damaged*")), [])


def follows_the_state_folder():
    elsewhere = HOME / "else where"
    systemctl("stop", UNIT)
    systemctl("set-environment", f"XDG_STATE_HOME={elsewhere}")
    start()
    check("another state folder is taken and made", vornctl("set", "ProfileName", "Elsewhere")[0], 0)
    check("the settings lie there", (elsewhere / "vorn-core-engine/settings.plist").exists())
    check("it stops in the end", systemctl("stop", UNIT), (0, ""))
    check("nothing has failed", systemctl("--failed", "--no-legend"), (0, ""))


def gives_way_to_an_engine_started_by_hand():
    systemctl("stop", UNIT)
    by_hand = start_as_user("vorn-core-engine")
    check("an engine that was started by hand serves",
          wait_until(lambda: vornctl("--no-start", "profiles", "list")[0] == 0))
    check("the service does not start beside it", (start()[0], unit("ExecMainStatus")), (1, "3"))
    # A service that is to start again would not have failed, but wait for that.
    check("it has failed once and for all", [unit(name) for name in ("ActiveState", "SubState", "Result", "NRestarts")],
          ["failed", "failed", "exit-code", "0"])
    by_hand.terminate()
    by_hand.communicate()
    check("the engine that was started by hand has ended well", by_hand.returncode, 0)
    check("without it the bus starts the service at once", as_user(*ACTIVATION), (0, "u 1"))
    check("the service is active again", wait_until(lambda: unit("ActiveState") == "active"))


def starts_without_user_namespaces():
    reference = (HERE.parent.parent / "docs/core-engine.md").read_text(encoding="utf-8")
    lines = re.search(r"no user namespaces.*?```\n(.*?)```", reference, re.S)[1]
    switch = pathlib.Path("/proc/sys/kernel/unprivileged_userns_clone")
    switch.write_text("0")
    with drop_in("[Service]\nRestart=no\n"):
        check("without user namespaces it does not start", (start()[0], unit("ExecMainStatus")), (1, "217"))
    with drop_in(lines):
        check("the documented drop-in starts it all the same", start(), (0, ""))
        check("it works there", vornctl("profiles", "list"), (0, "* 1  Elsewhere"))
        systemctl("stop", UNIT)
    switch.write_text("1")


# In this order.
PARTS = (starts_on_demand, is_sandboxed, gives_mice_to_the_person_at_the_screen, gives_nothing_to_others, uses_a_mouse,
         uses_what_the_system_knows, sandbox_refuses, start, survives_stop_and_start, sleeps, launches_outside,
         withstands_a_flood, comes_back_when_killed, gives_way_to_an_engine_started_by_hand, follows_the_state_folder,
         starts_without_user_namespaces)


def main():
    install(sys.argv[1])
    for part in PARTS:
        if part.__name__ in (sys.argv[2:] or [each.__name__ for each in PARTS]):
            part()
    for device in PLUGGED:
        device.unplug()
    finish(log)


if __name__ == "__main__":
    main()
