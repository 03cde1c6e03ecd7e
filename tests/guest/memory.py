#!/usr/bin/python3
"""How much memory the engine takes, with the virtual mouse and with a real one.

    memory.py PROGRAMS     PROGRAMS: folder of vorn-core-engine, vornctl and fake-system

Runs as root in a guest (tests/guest/memory starts it there).
"""
import collections
import pathlib
import re
import sys
import time

from checks import check, finish, wait_until
from desktop import KEYBOARD_NAME, is_grabbed, node_called, record_grabs
from engine import Engine
from hid_devices import MOUSE_TELLING_BATTERY, HidDevice, mouse_report
from system import System, raw_nodes

BUDGET = 4.0
SETTLING_TIME = 6  # seconds, after which nothing more is given back
NAME = "Acme Charged"
SERIAL = "C1"
KEY_A = 4
BATTERY = 50  # percent


def mappings(process):
    """kB by the name of the mapped file, or by what else is there: its share of what others have too, what is its own
    alone, and of that what it has written to."""
    sizes = collections.defaultdict(collections.Counter)
    mapped = ""
    for line in pathlib.Path(f"/proc/{process}/smaps").read_text(encoding="utf-8").splitlines():
        value = re.match(r"(\w+):\s+(\d+) kB", line)
        if value:
            sizes[mapped][value[1]] += int(value[2])
        elif " " in line and not re.match(r"\w+:", line):
            words = line.split(None, 5)
            mapped = pathlib.Path(words[5]).name if len(words) > 5 else "[anonymous]"
    return {name: (size["Pss"], size["Private_Clean"] + size["Private_Dirty"], size["Private_Dirty"])
            for name, size in sizes.items() if size["Pss"]}


def tell(name, engine):
    time.sleep(SETTLING_TIME)
    found = mappings(engine.pid())
    share, own, written = (sum(sizes) for sizes in zip(*found.values()))
    print(f"{name}: {share / 1024:.2f} MB (budget {BUDGET:.0f}), {own / 1024:.2f} of them its own, "
          f"{written / 1024:.2f} of these written to")
    check(f"{name} it is within its budget", share / 1024 <= BUDGET)
    for mapped, sizes in sorted(found.items(), key=lambda each: -each[1][0])[:12]:
        print(f"  {mapped:<28} {sizes[0]:5} kB, {sizes[1]:5} its own, {sizes[2]:5} written to", flush=True)


def main():
    record_grabs()
    mouse = HidDevice(NAME, MOUSE_TELLING_BATTERY, 0x40, place="usb-1/input0", serial=SERIAL)
    node = node_called(NAME, False)
    system = System(sys.argv[1], f"ratbag add {raw_nodes(NAME)[0]} usb:1209:0040:0", "ratbag start", "login start",
                    f"power add mouse hid-{SERIAL}-battery 50 2", "power start")
    engine = Engine(sys.argv[1], **system.environment)
    engine.add_macro("Letter", [(1, KEY_A, 0), (0, KEY_A, 10)])
    tell("with the virtual mouse", engine)
    engine.ask("mice", "list")
    tell("after a look at the mice", engine)
    for words in (("mice", "use", NAME), ("assign", "id:06", "macro", "Letter"), ("set", "DPIX", "900")):
        engine.ask(*words)
    wait_until(lambda: is_grabbed(node))
    node_called(KEYBOARD_NAME)
    for number in range(200):
        mouse.send(mouse_report(x=1, wheel=number % 20 == 0) + bytes([BATTERY]))
        time.sleep(0.01)
    print(engine.ask("status")[1], engine.ask("mice", "show")[1], sep="\n")
    tell("with a real mouse", engine)
    engine.ask("mice", "use", "virtual")
    tell("with the virtual mouse again", engine)
    engine.end()
    system.end()
    mouse.unplug()
    finish(lambda: "\n".join(engine.log))


if __name__ == "__main__":
    main()
