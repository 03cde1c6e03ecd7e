"""Checks of a test in a guest: a line for each on standard output, and in the end whether all have passed."""
import pathlib
import sys
import time

PATIENCE = 60  # seconds; the processor is an emulated one

failures = 0


def check(name, found, expected=True):
    global failures
    if found == expected:
        print(f"passed  {name}", flush=True)
    else:
        failures += 1
        print(f"FAILED  {name}: {found!r} in place of {expected!r}", flush=True)


def wait_until(condition, patience=PATIENCE):
    """What the condition is in the end: as soon as it holds, or when the time is over."""
    end = time.monotonic() + patience
    while not (result := condition()) and time.monotonic() < end:
        time.sleep(0.02)
    return result


def _activity(process):
    """How long and how often each of its threads has run; nothing while one of them runs or is about to."""
    threads = {}
    for folder in pathlib.Path(f"/proc/{process}/task").iterdir():
        if (folder / "stat").read_text(encoding="utf-8").rpartition(")")[2].split()[0] != "S":
            return None
        threads[folder.name] = (folder / "schedstat").read_text(encoding="utf-8")
    return threads


def sleeps_through(process, action):
    """Whether no thread of the process is woken while the action goes on."""
    before = _activity(process)
    action()
    return before is not None and _activity(process) == before


def comes_to_rest(process, seconds=3):
    """Whether no thread of the process is woken for so long, now or soon."""
    end = time.monotonic() + PATIENCE
    since = before = None
    while (now := time.monotonic()) < end:
        found = _activity(process)
        if found is None or found != before:
            since, before = now, found
        elif now - since >= seconds:
            return True
        time.sleep(0.05)
    return False


def finish(log):
    """Ends the test; the log, a function, is shown where something failed."""
    print(f"{failures} checks failed" if failures else "all checks passed",
          f"after {time.clock_gettime(time.CLOCK_BOOTTIME):.0f} s")
    if failures:
        print("the log of the engine:\n" + log())
    sys.exit(min(failures, 1))
