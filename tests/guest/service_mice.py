"""The core engine as a service with mice: who gets their nodes, and what the sandbox lets it do with them."""
import pathlib
import subprocess

from evdev import ecodes

from checks import check, wait_until
from desktop import KEYBOARD_NAME, Desktop, end_of, is_grabbed, keys, node_called, nodes_called, press, typed
from hid_devices import BUS_BLUETOOTH, KEYBOARD, KEYBOARD_AND_MOUSE, MOUSE, MOUSE_AND_KEYBOARD, HidDevice, UsbMouse
from user_session import UID, USER, begin_session, log_in, log_out, vornctl

REMOTE_USER = "remote"
REMOTE_UID = 59001

# The nodes of what is plugged in, and whether the person at the screen gets them.
NODES = {
    "Plain mouse": True,
    "Plain keyboard": False,
    "Mouse with keys Mouse": True,
    "Mouse with keys Keyboard": True,
    "Keyboard with a mouse Keyboard": False,
    "Keyboard with a mouse Mouse": True,
    "Acme Composite (mouse)": True,
    "Acme Composite (keyboard)": True,
}

PLUGGED = []


def event_nodes():
    """The nodes by the names of their devices; the interfaces of a USB device share one."""
    nodes = {}
    for folder in pathlib.Path("/sys/class/input").glob("event*"):
        name = (folder / "device/name").read_text(encoding="utf-8").strip()
        if name == "Acme Composite":
            has_motion = (folder / "device/capabilities/rel").read_text(encoding="utf-8").strip() != "0"
            name += " (mouse)" if has_motion else " (keyboard)"
        nodes[name] = f"/dev/input/{folder.name}"
    return nodes


def may_open(*paths, user=UID):
    """Whether the user may read each of the files."""
    program = "import os, sys\nfor path in sys.argv[1:]: print(path, os.access(path, os.R_OK))"
    lines = subprocess.run(["/usr/bin/python3", "-c", program, *paths], user=user, group=user, extra_groups=[],
                           check=True, capture_output=True, text=True).stdout.splitlines()
    return {path: answer == "True" for path, answer in (line.split() for line in lines)}


def missing_things():
    """The exit status of vornctl's examination, and what it found missing."""
    result, output = vornctl("doctor")
    return result, [line for line in output.splitlines() if line.startswith("missing")]


def gives_mice_to_the_person_at_the_screen():
    """By the rules of udev alone: nobody is in the group \"input\"."""
    PLUGGED.extend((HidDevice("Plain keyboard", KEYBOARD, 1), HidDevice("Plain mouse", MOUSE, 2),
                    HidDevice("Mouse with keys", MOUSE_AND_KEYBOARD, 3, BUS_BLUETOOTH),
                    HidDevice("Keyboard with a mouse", KEYBOARD_AND_MOUSE, 4, BUS_BLUETOOTH),
                    UsbMouse("Composite", "0x0005", "A1")))
    check("everything is plugged in", wait_until(lambda: set(NODES) <= set(event_nodes())))
    subprocess.run(["udevadm", "settle"], check=True)
    nodes = {event_nodes()[name]: name for name in NODES}
    nodes["/dev/uinput"] = "/dev/uinput"
    everything = {**NODES, "/dev/uinput": True}

    def found():
        return {nodes[path]: may for path, may in may_open(*nodes).items()}

    check("nobody gets them who is not at the screen", found(), dict.fromkeys(everything, False))
    log_in()
    check("the person at the screen gets the mice and /dev/uinput, and no other keyboard",
          wait_until(lambda: found() == everything) or found())
    check("vornctl says so", missing_things(), (0, []))
    log_out()
    check("they are taken back with the session", wait_until(lambda: not any(found().values())))
    status, lines = missing_things()
    check("vornctl says what is missing then", (status, any("/dev/uinput" in line for line in lines)), (1, True))
    log_in()
    wait_until(lambda: found() == everything)


def gives_nothing_to_others():
    """Who has a session, but without a seat, as over the network, while somebody else is at the screen."""
    with open("/etc/passwd", "a", encoding="utf-8") as accounts:
        accounts.write(f"{REMOTE_USER}:x:{REMOTE_UID}:{REMOTE_UID}::/:/bin/bash\n")
    with open("/etc/shadow", "a", encoding="utf-8") as accounts:
        accounts.write(f"{REMOTE_USER}:*:19000::::::\n")
    begin_session("elsewhere", REMOTE_USER)

    def seats():
        rows = subprocess.run(["loginctl", "list-sessions", "--no-legend"], check=True, capture_output=True,
                              text=True).stdout.splitlines()
        return {row.split()[2]: "seat0" in row.split() for row in rows}

    expected = {USER: True, REMOTE_USER: False}
    check("one has a session at the screen and another one elsewhere",
          wait_until(lambda: seats() == expected) or seats(), True)
    nodes = [event_nodes()[name] for name in NODES] + ["/dev/uinput"]
    check("who is not at the screen gets nothing", may_open(*nodes, user=REMOTE_UID), dict.fromkeys(nodes, False))
    subprocess.run(["systemctl", "stop", "elsewhere"], check=True)


def uses_a_mouse():
    """In the sandbox, by what udev gives."""
    mouse, desktop = PLUGGED[-1], Desktop()
    nodes = [event_nodes()[f"Acme Composite ({part})"] for part in ("keyboard", "mouse")]
    check("vornctl chooses the mouse", wait_until(
        lambda: vornctl("mice", "use", "Acme Composite") == (0, "")))
    check("a key of it gets an assignment", vornctl("assign", "id:20", "key", "b"), (0, ""))

    def is_in_use():
        return is_grabbed(nodes[0]) and bool(nodes_called(KEYBOARD_NAME))

    def check_that_it_plays(name):
        node_called(KEYBOARD_NAME)
        wait_until(desktop.is_reading_all)
        desktop.after()
        press(mouse, 20, 26)
        check(name, keys(desktop.after(end_of(ecodes.KEY_W))), typed("KEY_B", "KEY_W"))

    check("its keys are taken, and its pointer is not", (wait_until(is_in_use), is_grabbed(nodes[1])), (True, False))
    check_that_it_plays("what is assigned is played, and other keys pass, once")
    log_out()
    check("the mouse is let go when its user leaves the screen", wait_until(lambda: not is_grabbed(nodes[0])))
    check("and the keyboard of the engine has gone", wait_until(lambda: not nodes_called(KEYBOARD_NAME)))
    log_in()
    check("it is taken again when they are back", wait_until(is_in_use))
    check_that_it_plays("and plays")
    vornctl("mice", "use", "virtual")
    vornctl("assign", "id:20", "default")
    check("with the virtual mouse in use it is the desktop's", wait_until(lambda: not is_grabbed(nodes[0])))
    desktop.is_reading = False
