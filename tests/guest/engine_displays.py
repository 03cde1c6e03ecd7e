"""The engine with real mice: what a terminal on a display gets."""
from checks import check, wait_until
from desktop import KEYBOARD_NAME, is_grabbed, node_called, press
from displays import ACCELERATION, LATER_ACCELERATION, Sway, XServer, is_installed
from engine_bench import GRID_Q, KEY_ENTER, KEY_Q, KEY_SHIFT, KEY_W
from hid_devices import SIDE_BUTTON

# "Hello" and Enter.
HELLO = [(1, KEY_SHIFT, 0), (1, 11, 0), (0, 11, 5), (0, KEY_SHIFT, 0)] + [
    (command, key, 5) for key in (8, 15, 15, 18, KEY_ENTER) for command in (1, 0)]


def types_into_x(bench):
    if not is_installed(XServer):
        return
    bench.do("assign", GRID_Q, "default")
    server = XServer()
    settings = (ACCELERATION, ["flat"])
    check("an X server sets up the mouse, by its name and by its numbers", server.settings(bench.pointer), settings)
    server.accelerate(bench.pointer, LATER_ACCELERATION)
    check("a terminal runs on it", server.has_terminal())
    bench.do("assign", GRID_Q, "macro", "Hello")
    check("it finds the keyboard of the engine", bool(server.device(node_called(KEYBOARD_NAME))))
    press(bench.mouse, KEY_Q)
    server.typed(1)
    press(bench.mouse, KEY_W, KEY_ENTER)
    check("the terminal gets what the macro types, once, and the keys that pass", server.typed(2), ["Hello", "w"])
    check("a pointer that is left alone keeps what was set since",
          server.settings(bench.pointer), (LATER_ACCELERATION, ["flat"]))
    bench.do("assign", GRID_Q, "default")
    reproduces_pointer(bench, server)
    server.end()


def takes_pointer(bench):
    """A taught button types. The copy of the pointer."""
    teaching = bench.engine.begin("mice", "teach", "5")
    teaching.tells("Press what")
    bench.mouse.move(buttons=SIDE_BUTTON)
    bench.mouse.move()
    teaching.finish()
    bench.do("assign", "5", "macro", "Hello")
    wait_until(lambda: is_grabbed(bench.pointer))
    return node_called("Acme Grid", True)


def reproduces_pointer(bench, server):
    copy = takes_pointer(bench)
    check("a pointer that is reproduced is set up like the mouse", server.settings(copy), (ACCELERATION, ["flat"]))
    before = server.pointer()
    for _ in range(10):
        bench.mouse.move(x=-8)
    check("it moves as these settings ask for", wait_until(lambda: server.pointer() == before - 40) or (
        before - server.pointer()))
    server.device(node_called(KEYBOARD_NAME))
    bench.mouse.move(buttons=SIDE_BUTTON)
    bench.mouse.move()
    check("its taught button types", server.typed(3)[2:], ["Hello"])
    bench.do("mice", "forget")


def types_into_wayland(bench):
    if not is_installed(Sway):
        return
    takes_pointer(bench)
    compositor = Sway()
    check("a terminal runs on a Wayland compositor", compositor.has_terminal())
    check("which sets up the mouse and its copy alike", compositor.settings(2), [(ACCELERATION, ["flat"])] * 2)
    bench.do("assign", GRID_Q, "macro", "Hello")
    wait_until(lambda: is_grabbed(bench.grid))
    check("it has the keyboard of the engine", compositor.has(KEYBOARD_NAME))
    press(bench.mouse, KEY_Q)
    first = compositor.typed(1)
    bench.mouse.move(buttons=SIDE_BUTTON)
    bench.mouse.move()
    second = compositor.typed(2)
    press(bench.mouse, KEY_W, KEY_ENTER)
    check("its terminal gets what the macros type, once, and the keys that pass", (first, second, compositor.typed(3)),
          (["Hello"], ["Hello"] * 2, ["Hello", "Hello", "w"]))
    bench.do("mice", "forget")
    check("with nothing taken there is one pointer again", compositor.settings(1), [(ACCELERATION, ["flat"])])
    compositor.end()
