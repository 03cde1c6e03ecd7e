#!/usr/bin/env python3
"""Start-up (with an engine that runs, and with one that the bus must start first), memory and idle of the real programs,
on a bus and a virtual display of their own.

    bench/programs.py [BIN]     BIN: folder of the programs (default build/release/bin)

Prints figures and ratios; never fails by the clock.
"""
import os
import pathlib
import re
import shutil
import signal
import statistics
import subprocess
import sys
import tempfile
import time

ROUNDS = 15
IDLE_SECONDS = 20
ROOT = pathlib.Path(__file__).resolve().parent.parent


def inside_own_session():
    """Runs this script again with a bus and a display of its own."""
    if os.environ.get("SKARN_BENCH_SESSION"):
        return
    environment = dict(os.environ, SKARN_BENCH_SESSION="1", NO_AT_BRIDGE="1")
    for name in ("QT_QPA_PLATFORM", "WAYLAND_DISPLAY", "QT_QPA_PLATFORMTHEME"):
        environment.pop(name, None)
    # Where the bus looks for services, and the engine that it starts keeps its settings.
    environment["XDG_DATA_HOME"] = environment["XDG_STATE_HOME"] = tempfile.mkdtemp(prefix="skarn-bench-home-")
    command = ["xvfb-run", "-a", "-s", "-screen 0 1280x800x24", "dbus-run-session", "--", sys.executable, *sys.argv]
    os.execvpe(command[0], command, environment)


class Program:
    """A started program whose lines on standard error can be waited for."""

    def __init__(self, *command, environment=None):
        self.started = time.perf_counter()
        self.process = subprocess.Popen(
            [str(part) for part in command], stderr=subprocess.PIPE, text=True, env=environment)

    def wait_for(self, pattern):
        """Seconds from the start to the line that matches, and the match."""
        seen = []
        for line in self.process.stderr:
            seen.append(line)
            found = re.search(pattern, line)
            if found:
                return time.perf_counter() - self.started, found
        raise SystemExit(f"{self.process.args} ended without a line like {pattern!r}:\n{''.join(seen)}")

    def stop(self):
        self.process.send_signal(signal.SIGTERM)
        self.process.stderr.close()
        self.process.wait(10)

    def pss(self):
        """Proportional set size in MB."""
        text = pathlib.Path(f"/proc/{self.process.pid}/smaps_rollup").read_text()
        return int(re.search(r"^Pss:\s+(\d+)", text, re.M)[1]) / 1024

    def wake_ups(self):
        """Times that any thread of the program gave up the processor of its own will."""
        total = 0
        for task in pathlib.Path(f"/proc/{self.process.pid}/task").iterdir():
            text = (task / "status").read_text()
            total += int(re.search(r"^voluntary_ctxt_switches:\s+(\d+)", text, re.M)[1])
        return total


SHOWN = r"window shown"
PAINTED = r"window painted: (\d+) widgets"
ENGINE = "org.vorn.CoreEngine"


def main():
    inside_own_session()
    binaries = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else ROOT / "build/release/bin").resolve()
    state = tempfile.mkdtemp(prefix="skarn-bench-")
    engine = Program(binaries / "vorn-core-engine", "--state-dir", state)
    engine.wait_for("ready")
    try:
        start_up(binaries)
        memory_and_idle(binaries, engine)
    finally:
        engine.stop()
        shutil.rmtree(state)
    try:
        start_of_engine(binaries)
    finally:
        shutil.rmtree(os.environ["XDG_DATA_HOME"])


def start_up(binaries):
    ours, bare = [], []
    widgets = 0
    for _ in range(ROUNDS):
        program = Program(binaries / "skarn-configurator", "--verbose")
        seconds, found = program.wait_for(PAINTED)
        program.stop()
        ours.append(seconds * 1000)
        widgets = int(found[1])
        program = Program(binaries / "bench-bare-window", widgets)
        seconds, _ = program.wait_for(PAINTED)
        program.stop()
        bare.append(seconds * 1000)
    ours, bare = statistics.median(ours), statistics.median(bare)
    print(f"start to painted window  {ours:6.1f} ms   bare window of {widgets} widgets {bare:6.1f} ms   "
          f"ratio {ours / bare:.2f} (budget 1.7)")


def ask_bus(method, *arguments):
    return subprocess.run(["dbus-send", "--session", "--dest=org.freedesktop.DBus", "--print-reply=literal",
                           "/org/freedesktop/DBus", f"org.freedesktop.DBus.{method}", *arguments],
                          check=True, capture_output=True, text=True).stdout


def kill_engine():
    os.kill(int(ask_bus("GetConnectionUnixProcessID", f"string:{ENGINE}").split()[-1]), signal.SIGKILL)
    while "true" in ask_bus("NameHasOwner", f"string:{ENGINE}"):
        time.sleep(0.01)


def start_of_engine(binaries):
    """How much longer the start takes when the bus must start the engine first."""
    services = pathlib.Path(os.environ["XDG_DATA_HOME"], "dbus-1/services")
    services.mkdir(parents=True)
    (services / f"{ENGINE}.service").write_text(
        f"[D-BUS Service]\nName={ENGINE}\nExec={binaries / 'vorn-core-engine'}\n")
    ask_bus("ReloadConfig")
    times = {False: ([], []), True: ([], [])}
    for _ in range(ROUNDS):
        # The first of the two starts the engine, the second finds it.
        for runs in (False, True):
            program = Program(binaries / "skarn-configurator", "--verbose")
            for pattern, seen in zip((SHOWN, PAINTED), times[runs]):
                seen.append(program.wait_for(pattern)[0] * 1000)
            program.stop()
        kill_engine()
    painted, shown = ([statistics.median(times[runs][what]) for runs in (False, True)] for what in (0, 1))
    print(f"engine started on demand window painted {painted[0]:.1f} ms (running engine: {painted[1]:.1f})   "
          f"settings shown {shown[0]:.1f} ms ({shown[1]:.1f}), {shown[0] - shown[1]:.1f} later (budget 300)")


def memory_and_idle(binaries, engine):
    program = Program(binaries / "skarn-configurator", "--verbose")
    program.wait_for(PAINTED)
    # Lets the first answers to queries pass.
    time.sleep(5)
    print(f"memory (PSS)             configurator {program.pss():.1f} MB (budget 42)   "
          f"engine {engine.pss():.1f} MB (budget 4)")
    before = program.wake_ups(), engine.wake_ups()
    time.sleep(IDLE_SECONDS)
    print(f"wake-ups in {IDLE_SECONDS} s idle      configurator {program.wake_ups() - before[0]}   "
          f"engine {engine.wake_ups() - before[1]} (budget 0)")
    program.stop()


if __name__ == "__main__":
    main()
