"""A real X server and a real Wayland compositor in a guest, without a screen, each with a terminal that takes what is
typed; both set up the test's mouse by its name and its vendor and product."""
import ctypes
import glob
import json
import os
import pathlib
import re
import shutil
import subprocess
import tempfile

from checks import wait_until

TESTER = 59000
ACCELERATION = -0.5
LATER_ACCELERATION = 0.25

_X_CONFIGURATION = f"""
Section "ServerFlags"
    Option "AutoAddGPU" "false"
    Option "DontVTSwitch" "true"
EndSection
Section "Device"
    Identifier "dummy"
    Driver "dummy"
    VideoRam 32768
EndSection
Section "Screen"
    Identifier "screen"
    Device "dummy"
    DefaultDepth 24
    SubSection "Display"
        Depth 24
        Virtual 1280 800
    EndSubSection
EndSection
Section "InputClass"
    Identifier "by its name"
    MatchProduct "Acme Grid"
    MatchIsPointer "on"
    Option "AccelSpeed" "{ACCELERATION}"
EndSection
Section "InputClass"
    Identifier "by its numbers"
    MatchUSBID "1209:0010"
    MatchIsPointer "on"
    Option "AccelProfile" "flat"
EndSection
"""

_SWAY_CONFIGURATION = f"""
input "4617:16:Acme_Grid" accel_profile flat
input "4617:16:Acme_Grid" pointer_accel {ACCELERATION}
"""


class _Display:
    """A folder for its files, and a terminal that writes into it line by line what it is given to read."""
    PACKAGES = {}

    @classmethod
    def missing_packages(cls):
        return [package for file, package in cls.PACKAGES.items() if not (shutil.which(file) or os.path.exists(file))]

    def __init__(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="display"))
        self.folder.chmod(0o777)
        self.log = self.folder / "log"
        self._processes = []
        self._typed = self.folder / "typed"
        reader = self.folder / "reader"
        reader.write_text(f"""#!/bin/bash
stty -echo
exec >{self._typed}
while read -r line; do echo "$line"; done
""", encoding="utf-8")
        reader.chmod(0o755)
        self.reader = str(reader)

    def start(self, *command, **settings):
        with open(self.log, "ab") as log:
            self._processes.append(subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=log, stderr=log,
                                                    **settings))

    def has_terminal(self):
        return bool(wait_until(self._typed.exists, 120))

    def typed(self, count):
        """The lines of the terminal, when there are so many of them."""
        def lines():
            return self._typed.read_text(encoding="utf-8").splitlines()
        wait_until(lambda: len(lines()) >= count)
        return lines()

    def end(self):
        for process in reversed(self._processes):
            process.terminate()
            process.wait()


class XServer(_Display):
    """With a terminal, unless it has something else to show."""
    NAME = ":7"
    PACKAGES = {"/usr/lib/xorg/Xorg": "xserver-xorg-core",
                "/usr/lib/xorg/modules/drivers/dummy_drv.so": "xserver-xorg-video-dummy",
                "/usr/lib/xorg/modules/input/libinput_drv.so": "xserver-xorg-input-libinput", "xinput": "xinput",
                "xterm": "xterm"}

    def __init__(self, *command):
        super().__init__()
        configuration = self.folder / "xorg.conf"
        configuration.write_text(_X_CONFIGURATION, encoding="utf-8")
        self.start("/usr/lib/xorg/Xorg", self.NAME, "vt7", "-config", configuration, "-novtswitch", "-sharevts",
                   "-nolisten", "tcp", "-noreset", "-logfile", self.folder / "Xorg.log")
        self._environment = dict(os.environ, DISPLAY=self.NAME)
        self._x11 = ctypes.CDLL("libX11.so.6")
        self._x11.XOpenDisplay.restype = ctypes.c_void_p
        self._connection = wait_until(lambda: self._x11.XOpenDisplay(self.NAME.encode()))
        # All of the screen: keys go to the window below the pointer.
        terminal = ("xterm", "-wf", "-geometry", "300x100+0+0", "-e", self.reader)
        self.start(*(command or terminal), env=self._environment)

    def _xinput(self, *words):
        return subprocess.run(["xinput", *words], env=self._environment, check=True, capture_output=True,
                              text=True).stdout

    def _properties(self, device):
        try:
            rows = re.findall(r"^\t(.*) \(\d+\):\t(.*)$", self._xinput("list-props", device), re.M)
        except subprocess.CalledProcessError:  # It has gone.
            return {}
        return dict(rows)

    def device(self, node):
        """The number and the properties of the device with this event node, as soon as it is there."""
        def found():
            for number in self._xinput("list", "--id-only").split():
                properties = self._properties(number.lstrip("∼"))
                if properties.get("Device Node") == f'"{node}"' and "Device Enabled" in properties:
                    return number, properties
            return None
        return wait_until(found)

    def settings(self, node):
        """Acceleration, and whether its profile is the flat one."""
        properties = self.device(node)[1]
        profiles = [name for name, is_on in zip(("adaptive", "flat"), properties[
            "libinput Accel Profile Enabled"].split(", ")) if is_on == "1"]
        return float(properties["libinput Accel Speed"]), profiles

    def accelerate(self, node, acceleration):
        self._xinput("set-prop", self.device(node)[0], "libinput Accel Speed", str(acceleration))

    def pointer(self):
        """Where it is, from the left."""
        x11, connection = self._x11, ctypes.c_void_p(self._connection)
        values = [ctypes.c_ulong() for _ in range(2)] + [ctypes.c_int() for _ in range(4)] + [ctypes.c_uint()]
        x11.XQueryPointer(connection, ctypes.c_ulong(x11.XDefaultRootWindow(connection)), *map(ctypes.byref, values))
        return values[2].value


class Sway(_Display):
    """Runs as an ordinary user: it wants no privileges. Its devices come from seatd."""
    PACKAGES = {"sway": "sway", "seatd": "seatd", "foot": "foot"}

    def __init__(self):
        super().__init__()
        self._runtime = pathlib.Path(f"/run/user/{TESTER}")
        self._runtime.mkdir(mode=0o700, parents=True, exist_ok=True)
        os.chown(self._runtime, TESTER, TESTER)
        configuration = self.folder / "config"
        configuration.write_text(f"{_SWAY_CONFIGURATION}\nexec foot {self.reader}\n", encoding="utf-8")
        # Without a virtual terminal.
        self.start("seatd", "-u", "tester", env=dict(os.environ, SEATD_VTBOUND="0"))
        wait_until(lambda: os.path.exists("/run/seatd.sock"))
        self._user = {"user": TESTER, "group": TESTER, "extra_groups": [], "env": {
            "PATH": os.environ["PATH"], "HOME": "/home/tester", "XDG_RUNTIME_DIR": str(self._runtime),
            "LC_ALL": "C.UTF-8", "LIBSEAT_BACKEND": "seatd", "WLR_BACKENDS": "headless,libinput",
            "WLR_RENDERER": "pixman"}}
        self.start("sway", "-c", configuration, **self._user)

    def _ask(self, what):
        socket = glob.glob(str(self._runtime / "sway-ipc.*.sock"))[0]
        return json.loads(subprocess.run(["swaymsg", "-s", socket, "-r", "-t", what], check=True, capture_output=True,
                                         text=True, **self._user).stdout)

    def _inputs(self):
        return self._ask("get_inputs")

    def has_terminal(self):
        """With the keyboard: what is typed before goes nowhere."""
        def is_focused(node):
            return node["focused"] and node.get("app_id") == "foot" or any(map(is_focused, node["nodes"]))
        return super().has_terminal() and bool(wait_until(lambda: is_focused(self._ask("get_tree"))))

    def has(self, name):
        return bool(wait_until(lambda: any(each["name"] == name for each in self._inputs())))

    def settings(self, count):
        """Acceleration and its profile of all pointers of the mouse, when there are so many."""
        def found():
            pointers = [each["libinput"] for each in self._inputs()
                        if each["identifier"] == "4617:16:Acme_Grid" and each["type"] == "pointer"]
            return len(pointers) == count and [(each["accel_speed"], [each["accel_profile"]]) for each in pointers]
        return wait_until(found)


def is_installed(display):
    """Whether it can be started; what is left out otherwise is told."""
    missing = display.missing_packages()
    if missing:
        print(f"left out  {display.__name__}, without the packages {' '.join(missing)}", flush=True)
    return not missing
