"""The core engine and the command line in a test in a guest, on a session bus of their own."""
import os
import pathlib
import plistlib
import signal
import subprocess
import tempfile
import threading

from checks import PATIENCE, wait_until

# A session does not pass these on to a user of its own.
_OF_THE_SESSION = ("DBUS_SESSION_BUS_ADDRESS", "DISPLAY", "WAYLAND_DISPLAY", "XDG_RUNTIME_DIR", "XDG_STATE_HOME",
                   "XDG_CONFIG_HOME")


class Reader:
    """The lines that a program in a process prints."""

    def __init__(self, command, **settings):
        self.lines = []
        self.process = subprocess.Popen(command, text=True, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                        stderr=subprocess.STDOUT, **settings)
        self._thread = threading.Thread(target=self._read, daemon=True)
        self._thread.start()

    def _read(self):
        for line in self.process.stdout:
            self.lines.append(line.rstrip("\n"))

    def tells(self, words):
        """Whether a line has these words, now or soon."""
        return bool(wait_until(lambda: any(words in line for line in self.lines)))

    def end(self, number=signal.SIGTERM):
        """The exit status."""
        self.process.send_signal(number)
        return self.finish()

    def finish(self):
        status = self.process.wait(PATIENCE)
        self._thread.join()
        return status


class Engine:
    """An engine with settings of its own; those stay while it is started and ended. Its patience: how many seconds an
    answer may take. further: what is more in its environment."""

    def __init__(self, programs, user=None, patience=PATIENCE, **further):
        self._programs = pathlib.Path(programs)
        self._patience = patience
        self.home = pathlib.Path(tempfile.mkdtemp(prefix="engine-test"))
        if user:
            os.chown(self.home, user, user)
        environment = {name: value for name, value in os.environ.items() if name not in _OF_THE_SESSION}
        environment.update(HOME=str(self.home), LANG="C.UTF-8", **further)
        self._settings = {"env": environment, "cwd": self.home}
        if user:
            self._settings.update(user=user, group=user, extra_groups=[])
        self.bus = subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--print-address=1"], text=True,
                                    stdout=subprocess.PIPE, **self._settings)
        environment["DBUS_SESSION_BUS_ADDRESS"] = self.bus.stdout.readline().strip()
        self.log = []
        self.start()

    def start(self, *options):
        self.running = Reader([self._programs / "vorn-core-engine", *options], **self._settings)
        self.running.lines = self.log
        wait_until(lambda: self.ask("status")[0] == 0)

    def pid(self):
        return self.running.process.pid

    def kill(self):
        self.running.end(signal.SIGKILL)

    def stop(self):
        """The exit status."""
        return self.running.end()

    def end(self):
        if self.running.process.poll() is None:
            self.stop()
        self.bus.terminate()
        self.bus.wait()

    def ask(self, *words):
        """Exit status and output of a command of vornctl."""
        result = subprocess.run([self._programs / "vornctl", "--timeout", str(self._patience), *words], text=True,
                                check=False, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                stderr=subprocess.STDOUT, timeout=2 * self._patience, **self._settings)
        return result.returncode, result.stdout.rstrip()

    def begin(self, *words):
        """A command of vornctl that goes on."""
        return Reader([self._programs / "vornctl", *words], **self._settings)

    def begin_window(self, display, *words):
        """The window of the configurator, on this X display, for screen readers too."""
        environment = dict(self._settings["env"], DISPLAY=display, QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
        return Reader([self._programs / "skarn-configurator", *words], **dict(self._settings, env=environment))

    def session(self):
        """The address of its bus."""
        return self._settings["env"]["DBUS_SESSION_BUS_ADDRESS"]

    def add_macro(self, name, events):
        """Of (1 press or 0 release, HID usage of a key, milliseconds before it)."""
        path = self.home / f"{name}.SkarnMacro"
        path.write_bytes(plistlib.dumps({"MacroName": name, "sequence": {"events": [
            {"command": command, "page": 7, "argument": usage, "delay": delay} for command, usage, delay in events]}}))
        path.chmod(0o644)
        status, output = self.ask("macros", "import", str(path))
        if status:
            raise RuntimeError(output)
