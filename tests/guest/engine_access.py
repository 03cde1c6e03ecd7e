"""The engine with real mice: what is said of a mouse that cannot be used, and of what mends it."""
import json
import os
import re

from evdev import ecodes

from checks import check, wait_until
from desktop import end_of, is_grabbed, keys, typed
from displays import TESTER
from engine import Engine
from engine_bench import GRID_Q, KEY_W, MOUSE


def tells_what_is_held(bench):
    """A node on which a key is down is not taken before that is up."""
    def held():
        return json.loads(bench.do("mice", "show", "--json")).get("held")

    bench.do("assign", GRID_Q, "default")
    wait_until(lambda: not is_grabbed(bench.grid))
    bench.is_ready()
    bench.desktop.after()
    bench.mouse.type(KEY_W)
    bench.desktop.after((ecodes.EV_KEY, ecodes.KEY_W, 1))
    check("while nothing is to be taken a key that is down is none of its business", held(), [])
    bench.do("assign", GRID_Q, "key", "a")
    check("vornctl tells which node is not used since something on it is held down",
          wait_until(lambda: held() == [bench.grid]) or held())
    words = f"{bench.grid}, since something on it is held down; press it and let it go"
    check("and what to do", f"Not used:     {words}" in bench.do("mice", "show").splitlines())
    status, told = bench.engine.ask("doctor")
    check("so does vornctl doctor", (status, f"not used where something is held down ({bench.grid})" in told),
          (1, True))
    check("the log tells it once", [line for line in bench.engine.log if "held down" in line],
          ['vorn-core-engine: client Acme Grid: The mouse\'s node "01 Acme Grid" is not used yet '
           f"({bench.grid}), since something on it is held down."])
    check("the node is not taken", is_grabbed(bench.grid), False)
    bench.mouse.type()
    check("it is when the key is up", wait_until(lambda: is_grabbed(bench.grid)))
    check("whose release went where its press went", keys(bench.desktop.after(end_of(ecodes.KEY_W))),
          [("Acme Grid", "KEY_W", 0)])
    check("nothing is told of it any more", wait_until(lambda: held() == []) or held())
    check("and the assignment works", keys(bench.play(end_of(ecodes.KEY_A))), typed("KEY_A"))
    bench.do("assign", GRID_Q, "macro", "Combo")


def gives_nodes(bench, user, mode):
    for node in (bench.pointer, bench.grid, "/dev/uinput"):
        os.chown(node, user, user)
        os.chmod(node, mode)


def says_what_is_forbidden(bench):
    bench.engine.stop()
    gives_nodes(bench, 0, 0o600)
    engine = bench.engine = Engine(bench.programs, TESTER)
    nodes = ", ".join(sorted((bench.pointer, bench.grid), key=lambda node: int(re.sub(r"\D", "", node))))
    check("a mouse that is forbidden is not used", engine.ask("mice", "use", MOUSE), (
        1, f"vornctl: You may not use Acme Grid: no access to {nodes}, /dev/uinput; "
           '"vornctl doctor" says what mends it'))
    gives_nodes(bench, TESTER, 0o600)
    check("it is when that is allowed", wait_until(lambda: engine.ask("mice", "use", MOUSE) == (0, "")))
    bench.do("assign", GRID_Q, "key", "a")
    check("and works", wait_until(lambda: is_grabbed(bench.grid)))
    check("vornctl doctor is content", (lambda status, told: (status, re.findall("^missing.*", told, re.M)))(
        *engine.ask("doctor")), (0, []))
    engine.stop()
    gives_nodes(bench, 0, 0o600)
    engine.start()
    check("the log of the engine says what it may not do", bool(wait_until(
        lambda: any("Permission denied" in line for line in engine.log))))
    status, told = engine.ask("doctor")
    check("vornctl doctor fails then", status, 1)
    for words in (f'missing   Mouse "Acme Grid": no access to {nodes}',
                  "missing   /dev/uinput: no access, so the engine can neither type nor click",
                  'missing   Mouse in use: the engine has no access to all of "Acme Grid"',
                  "sudo udevadm control --reload && sudo udevadm trigger"):
        check(f"it says: {words}", words in told or told)
    status, told = engine.ask("doctor", "--json")
    found = {each["what"]: each["state"] for each in json.loads(told.splitlines()[0])}
    check("programs can read it", (status, found.get("/dev/uinput"), found.get("Engine")), (1, "missing", "fine"))
    gives_nodes(bench, TESTER, 0o600)
    check("what is allowed is used at once", wait_until(lambda: is_grabbed(bench.grid)))
