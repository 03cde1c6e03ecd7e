#!/usr/bin/python3
"""Real mice: what the kernel and its readers make of what the engine does with them.

    mice_test.py PROGRAM [PART...]     PROGRAM: test-mice, which uses a mouse as the engine does; without names of parts
                                       (those below) all of them

Runs as root in a guest (tests/guest/mice starts it there). Each check is a line; the exit status is 1 when one of them
fails.
"""
import sys

from checks import finish
from mice_bench import Bench, log
from mice_finding import (finds_mice, follows_changes, leaves_alone_what_it_does_not_need, says_what_is_forbidden,
                          shares_with_other_programs)
from mice_motion import (is_prepared_for_another_sensitivity, replaces_wheel, scales_exactly, sleeps,
                         uses_what_services_know)
from mice_playing import is_taught, leaves_nothing_pressed, listens, plays_and_passes

# In this order.
PARTS = (finds_mice, follows_changes, leaves_alone_what_it_does_not_need, plays_and_passes, listens, is_taught,
         replaces_wheel, scales_exactly, is_prepared_for_another_sensitivity, leaves_nothing_pressed, sleeps,
         uses_what_services_know, shares_with_other_programs, says_what_is_forbidden)


def main():
    bench = Bench(sys.argv[1])
    for part in PARTS:
        if part.__name__ in (sys.argv[2:] or [each.__name__ for each in PARTS]):
            part(bench)
    bench.mouse.unplug()
    finish(lambda: "\n".join(log))


if __name__ == "__main__":
    main()
