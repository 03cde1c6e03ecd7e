"""The core engine as a service beside the real UPower, logind and ratbagd, with a mouse that has a battery."""
import json
import pathlib
import subprocess

from evdev import ecodes

from checks import check, comes_to_rest, wait_until
from desktop import KEYBOARD_NAME, Desktop, end_of, is_grabbed, keys, node_called, typed
from engine import Reader
from hid_devices import (BUS_BLUETOOTH, MOUSE_WITH_BATTERY, HidDevice, battery_report, keyboard_report, mouse_report)
from user_session import AS_USER, as_user, engine, log, log_in, vornctl

NAME = "Acme Charged"
KEY_Q, KEY_W = 20, 26
# The parts of its reports.
POINTER, KEYS, BATTERY = 1, 2, 3
POWER, RATBAG = "upower.service", "ratbagd.service"
LOGIND = ("org.freedesktop.login1", "/org/freedesktop/login1", "org.freedesktop.login1.Manager")
SLEEP_SIGNALS = f"--match=type='signal',interface='{LOGIND[2]}',member='PrepareForSleep'"


def systemctl(*words):
    return subprocess.run(["systemctl", *words], check=False, capture_output=True, text=True).stdout.strip()


def process_of(service):
    return systemctl("show", "--value", "--property=MainPID", service)


def told_battery():
    """Level and charging, as vornctl has them of the engine."""
    output = vornctl("status", "--json")[1]
    told = json.loads(output) if output.startswith("{") else {}
    return told.get("battery"), told.get("charging")


def becomes(percent, charging):
    """What is told of the battery as soon as it is this."""
    return wait_until(lambda: (told := told_battery()) == (percent, charging) and told) or told_battery()


class Bench:
    """A mouse with Bluetooth, keys and a battery, used by the engine of who sits at the screen."""

    def __init__(self):
        if systemctl("is-active", "at-the-screen.service") != "active":
            log_in()
        systemctl("stop", POWER, RATBAG)
        self.plug(57)
        self.desktop = Desktop()
        wait_until(lambda: vornctl("mice", "use", NAME) == (0, ""))

    def plug(self, percent):
        self._device = HidDevice(NAME, MOUSE_WITH_BATTERY, 0x40, BUS_BLUETOOTH, "11:22:33:44:55:66",
                                 "aa:bb:cc:dd:ee:40", {BATTERY: bytes([BATTERY]) + battery_report(percent)})

    def unplug(self):
        self._device.unplug()

    def charge(self, percent, is_charging=False):
        self._device.send(bytes([BATTERY]) + battery_report(percent, is_charging))

    def type(self, *usages):
        self._device.send(bytes([KEYS]) + keyboard_report(*usages))

    def move(self, x):
        self._device.send(bytes([POINTER]) + mouse_report(x=x))

    def plays(self, name):
        """The assigned key, and one that passes."""
        node_called(KEYBOARD_NAME)
        wait_until(self.desktop.is_reading_all)
        self.desktop.after()
        for usage in KEY_Q, KEY_W:
            self.type(usage)
            self.type()
        check(name, keys(self.desktop.after(end_of(ecodes.KEY_W))), typed("KEY_B", "KEY_W"))

    def end(self):
        vornctl("assign", "id:20", "default")
        for key in "DPIX", "DPIY":
            vornctl("set", key, "800")
        vornctl("mice", "use", "virtual")
        self.desktop.is_reading = False
        self.unplug()
        systemctl("stop", POWER, RATBAG)


def follows_a_battery(bench):
    check("the engine has UPower started for a mouse with a battery, and tells its level", becomes(57, "battery"),
          (57, "battery"))
    monitor = Reader(["vornctl", "monitor"], **AS_USER)
    monitor.tells("listening")
    bench.charge(31)
    check("a level that the mouse sends reaches a client", monitor.tells("BatteryPercentLevel=31"))
    bench.charge(32, is_charging=True)
    check("so does that it is charged", monitor.tells("DeviceChargingStatus=1"))
    check("both are told who asks", becomes(32, "charging"), (32, "charging"))
    bench.charge(100, is_charging=True)
    check("a wireless mouse that is full shows its battery", becomes(100, "battery"), (100, "battery"))
    bench.charge(99)
    check("and one that no longer is", becomes(99, "battery"), (99, "battery"))
    check("it is the same engine to the client", monitor.end(), 0)
    systemctl("stop", POWER)
    check("without UPower no battery is displayed", becomes(None, "none"), (None, "none"))
    bench.charge(64)
    systemctl("start", POWER)
    check("it is again when UPower is back", becomes(64, "battery"), (64, "battery"))
    before = process_of(POWER)
    systemctl("kill", "--signal=KILL", POWER)
    check("UPower is started again when it was killed", wait_until(lambda: process_of(POWER) not in (before, "0")))
    bench.charge(63)
    check("the engine knows the battery from the new one", becomes(63, "battery"), (63, "battery"))
    bench.unplug()
    check("a mouse that has gone has no battery", becomes(None, None), (None, None))
    bench.plug(48)
    check("plugged in again it has", becomes(48, "battery"), (48, "battery"))
    check("with UPower at rest the engine is too", comes_to_rest(engine()))


def sleeps_begun():
    """How often the kernel has begun to put the machine to sleep."""
    log_of_kernel = subprocess.run(["dmesg"], check=True, capture_output=True, text=True).stdout
    return log_of_kernel.count("PM: suspend entry")


def begin_to_wait_for_sleep():
    """Keeps the machine awake after logind has told that it is going to sleep, for a minute at most. Its input is
    what that waits for."""
    delay = subprocess.Popen(["systemd-inhibit", "--what=sleep", "--mode=delay", "cat"], stdin=subprocess.PIPE)
    wait_until(lambda: '"sleep"' in subprocess.run(
        ["busctl", "get-property", *LOGIND, "DelayInhibited"], check=True, capture_output=True, text=True).stdout)
    return delay


def sleeps_with_the_machine(bench):
    """The kernel stops all programs, and lets them go on after a second. It leaves the devices alone: the one that
    connects this machine with its files would not come back."""
    mode = pathlib.Path("/sys/power/pm_test")
    mode.write_text("freezer", encoding="utf-8")
    pathlib.Path("/sys/module/suspend/parameters/pm_test_delay").write_text("1", encoding="utf-8")
    nodes = [node_called(f"{NAME} {part}", False) for part in ("Keyboard", "Mouse")]
    vornctl("assign", "id:20", "key", "b")
    for key in "DPIX", "DPIY":
        vornctl("set", key, "400")
    check("its keys and its motion are taken", wait_until(lambda: all(map(is_grabbed, nodes))))
    bench.plays("what is assigned is played")
    signals = Reader(("busctl", "--json=short", "monitor", SLEEP_SIGNALS))
    signals.tells("onitoring")
    before = sleeps_begun()
    bench.type(KEY_Q)
    bench.desktop.after((ecodes.EV_KEY, ecodes.KEY_B, 1))
    delay = begin_to_wait_for_sleep()
    subprocess.run(["busctl", "call", *LOGIND, "Suspend", "b", "false"], check=True, stdout=subprocess.DEVNULL)
    found = keys(bench.desktop.after(end_of(ecodes.KEY_B)))
    check("what is held is let go before the machine sleeps", (found, sleeps_begun() - before),
          ([(KEYBOARD_NAME, "KEY_B", 0)], 0))
    delay.communicate()
    check("logind tells of the sleep and of its end", (signals.tells("[true]"), signals.tells("[false]")), (True, True))
    check("the machine has slept", sleeps_begun() - before, 1)
    signals.end()
    mode.write_text("none", encoding="utf-8")
    bench.type()
    # Nobody was at the screen meanwhile, as the kernel shows another one.
    vornctl("mice", "list")
    check("after the sleep all is taken", wait_until(lambda: all(map(is_grabbed, nodes))))
    bench.plays("what is assigned is played again")
    bench.move(x=8)
    check("and the motion is scaled", bench.desktop.after((ecodes.EV_REL, ecodes.REL_X, 4)),
          [(f"{NAME} Mouse", ecodes.EV_REL, ecodes.REL_X, 4)])
    check("the battery is known", becomes(48, "battery"), (48, "battery"))


def lives_with_ratbagd(bench):
    running, lines = engine(), log()
    systemctl("stop", RATBAG)
    bench.plays("without ratbagd the mouse works")
    systemctl("start", RATBAG)
    check("ratbagd knows no such mouse", as_user("ratbagctl", "list"), (0, "No devices available."))
    said = vornctl("doctor")[1]
    names = ["ratbagd", "UPower"]
    check("vornctl finds the services", [name for name in names if f"fine      {name}: it runs" in said], names)
    bench.plays("with a ratbagd that has come late the mouse works")
    systemctl("kill", "--signal=KILL", RATBAG)
    systemctl("stop", RATBAG)
    bench.plays("and when it has gone")
    check("the engine has nothing to say of it", (engine(), log()), (running, lines))


def uses_what_the_system_knows():
    bench = Bench()
    for part in follows_a_battery, sleeps_with_the_machine, lives_with_ratbagd:
        part(bench)
    bench.end()
