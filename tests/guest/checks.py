"""Checks of a test in a guest: a line for each on standard output, and in the end whether all have passed."""
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


def finish(log):
    """Ends the test; the log, a function, is shown where something failed."""
    print(f"{failures} checks failed" if failures else "all checks passed",
          f"after {time.clock_gettime(time.CLOCK_BOOTTIME):.0f} s")
    if failures:
        print("the log of the engine:\n" + log())
    sys.exit(min(failures, 1))
