#!/usr/bin/python3
"""How long the engine takes from the read of a mouse's report to the write of what passes, and how late it writes the
events of a macro: both as the kernel sees its system calls.

    timing.py PROGRAMS     PROGRAMS: folder of vorn-core-engine and vornctl

Runs as root in a guest whose clock counts instructions (tests/guest/timing starts it there).
"""
import os
import pathlib
import re
import statistics
import subprocess
import sys
import time

from checks import check, finish, wait_until
from desktop import KEYBOARD_NAME, is_grabbed, node_called, record_grabs
from engine import Engine
from hid_devices import MOUSE, HidDevice, mouse_report

TRACING = pathlib.Path("/sys/kernel/tracing")
COUNT = 1000
DELAY = 2  # ms
KEY_A = 4
EVENT_SIZE = 24  # struct input_event
# The clock leaps while the guest waits for the disk of the machine below.
PATIENCE = 3000
# Microseconds, by the median.
PASSING_BUDGET = 50
PLAYING_BUDGET = 200


class Trace:
    """The reads and writes of a process, until it is read."""

    def __init__(self, process):
        if not (TRACING / "trace").exists():
            subprocess.run(["mount", "-t", "tracefs", "tracefs", TRACING], check=True)
        files = pathlib.Path(f"/proc/{process}/fd").iterdir()
        self._outputs = {int(file.name) for file in files if os.readlink(file) == "/dev/uinput"}
        for name, value in (("tracing_on", "0"), ("trace", ""), ("trace_clock", "mono"), ("buffer_size_kb", "16384"),
                            ("set_event_pid", str(process)), ("events/syscalls/sys_exit_read/enable", "1"),
                            ("events/syscalls/sys_enter_write/enable", "1"), ("tracing_on", "1")):
            (TRACING / name).write_text(value)

    def calls(self):
        """(when in microseconds, whether it is a write) of the reads that got events, and of the writes to the
        desktop."""
        (TRACING / "tracing_on").write_text("0")
        found = []
        for when, is_read, result, file in re.findall(
                r" (\d+\.\d+): (?:(sys_read) -> (\S+)|sys_write\(fd: (\w+),)", (TRACING / "trace").read_text()):
            size = int(result, 16) if is_read else 0
            if 0 < size < 1 << 31 and size % EVENT_SIZE == 0:
                found.append((round(float(when) * 1e6), False))
            elif file and int(file, 16) in self._outputs:
                found.append((round(float(when) * 1e6), True))
        return found


def tell(name, times):
    times.sort()
    print(f"{name}: median {statistics.median(times):.0f} µs, 99 of 100 {times[len(times) * 99 // 100]} µs, "
          f"longest {times[-1]} µs, shortest {times[0]} µs, of {len(times)}", flush=True)


def measure_passing(mouse, engine):
    trace = Trace(engine.pid())
    due = time.monotonic()
    for _ in range(COUNT):
        mouse.send(mouse_report(x=1))
        due += 0.001
        time.sleep(max(0, due - time.monotonic()))
    time.sleep(0.1)
    delays, read = [], None
    for when, is_write in trace.calls():
        if not is_write:
            read = when
        elif read is not None:
            delays.append(when - read)
            read = None
    tell("from the read of a report to its write", delays)
    check("most reports are read one by one", len(delays) > COUNT // 2)
    check(f"within {PASSING_BUDGET} µs by the median", statistics.median(delays) <= PASSING_BUDGET)


def measure_playing(mouse, engine):
    trace = Trace(engine.pid())
    mouse.send(mouse_report(wheel=1))
    time.sleep(COUNT * DELAY / 1000 + 1)
    calls = trace.calls()
    start = [when for when, is_write in calls if not is_write][0]
    writes = [when for when, is_write in calls if is_write]
    print(f"from the read of the press to the first event of a macro of {COUNT}: {writes[0] - start} µs")
    late = [when - writes[0] - 1000 * DELAY * number for number, when in enumerate(writes)]
    tell("events of the macro behind their times, as counted from the first", late)
    check("all of the macro is written", len(late), COUNT)
    check(f"within {PLAYING_BUDGET} µs of its times by the median", statistics.median(late) <= PLAYING_BUDGET)


def main():
    record_grabs()
    mouse = HidDevice("Acme Quick", MOUSE, 0x40, place="usb-1/input0", serial="Q1")
    node = node_called("Acme Quick", False)
    engine = Engine(sys.argv[1], patience=PATIENCE)
    engine.add_macro("Timed", [((number + 1) % 2, KEY_A, DELAY if number else 0)
                                      for number in range(COUNT)])
    for words in (("mice", "use", "Acme Quick"), ("assign", "id:06", "macro", "Timed")):
        wait_until(lambda command=words: engine.ask(*command)[0] == 0, PATIENCE)
    wait_until(lambda: is_grabbed(node), PATIENCE)
    node_called(KEYBOARD_NAME)
    time.sleep(1)  # The engine lets a desktop open the keyboard first.
    measure_passing(mouse, engine)
    measure_playing(mouse, engine)
    engine.end()
    mouse.unplug()
    finish(lambda: "\n".join(engine.log))


if __name__ == "__main__":
    main()
