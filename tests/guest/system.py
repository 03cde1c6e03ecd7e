"""The services of the system in a test in a guest, on a bus of their own."""
import glob
import os
import pathlib
import subprocess
import threading

from checks import check, wait_until


def read_lines(stream, lines):
    for line in stream:
        lines.append(line.strip())


class System:
    """A system bus with what plays ratbagd, UPower and logind on it."""

    def __init__(self, programs, *commands):
        """programs: the folder of fake-system, which obeys these commands."""
        self.lines = []
        self.bus = subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--print-address=1"], text=True,
                                    stdout=subprocess.PIPE)
        self.environment = {"DBUS_SYSTEM_BUS_ADDRESS": self.bus.stdout.readline().strip()}
        self.process = subprocess.Popen([pathlib.Path(programs) / "fake-system"], text=True, bufsize=1,
                                        env={**os.environ, **self.environment},
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        threading.Thread(target=read_lines, args=(self.process.stdout, self.lines), daemon=True).start()
        wait_until(lambda: "ready" in self.lines)
        for command in commands:
            self.obey(command)

    def obey(self, command):
        self.process.stdin.write(command + "\n")
        check(command, wait_until(lambda: f"ok {command}" in self.lines))

    def resolutions(self):
        """What was set as the resolution up to now."""
        return [line.split()[-1] for line in self.lines if " Resolution " in line]

    def end(self):
        for process in self.process, self.bus:
            process.kill()
            process.wait()


def raw_nodes(name):
    """Its hidraw nodes, by the numbers of its interfaces."""
    folders = [folder for folder in glob.glob("/sys/class/hidraw/*")
               if name in pathlib.Path(folder, "device/uevent").read_text(encoding="utf-8")]
    return [os.path.basename(folder) for folder in sorted(folders, key=os.path.realpath)]
