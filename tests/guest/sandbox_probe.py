#!/usr/bin/python3
"""Tries what a sandbox should refuse, and writes to a file what becomes of it: a name and "done" or the error, line by
line.

    sandbox_probe.py FILE     in a folder that may be written to; prints nothing
"""
import ctypes
import errno
import mmap
import os
import pathlib
import socket
import sys

HOME = pathlib.Path.home()
RESULT = pathlib.Path(sys.argv[1])
CLONE_NEWUSER = 0x10000000
PER_LINUX32 = 0x0008
LIBC = ctypes.CDLL(None, use_errno=True)


def call(function, *arguments):
    if function(*arguments) < 0:
        raise OSError(ctypes.get_errno(), "")


def write(path):
    path.write_text("probe")
    path.unlink()


def see_temporary_files():
    if not pathlib.Path("/tmp/of-somebody-else").exists():
        raise OSError(errno.ENOENT, "")


def connect_to_x_server():
    with socket.socket(socket.AF_UNIX) as connection:
        connection.connect("/tmp/.X11-unix/X99")


def see_writable_usr():
    if os.statvfs("/usr").f_flag & os.ST_RDONLY:
        raise OSError(errno.EROFS, "")


def map_code_that_can_be_written():
    mmap.mmap(-1, mmap.PAGESIZE, prot=mmap.PROT_READ | mmap.PROT_WRITE | mmap.PROT_EXEC).close()


def make_privileged_program():
    program = RESULT.with_name("program")
    program.touch()
    try:
        program.chmod(0o4755)
    finally:
        program.unlink()


def read_node(name):
    """Opens the event node of this device."""
    for folder in pathlib.Path("/sys/class/input").glob("event*"):
        if (folder / "device/name").read_text(encoding="utf-8").strip() == name:
            os.close(os.open(f"/dev/input/{folder.name}", os.O_RDONLY))
            return
    raise OSError(errno.ENOENT, "")


ATTEMPTS = {
    "reads the home": lambda: os.listdir(HOME),
    "writes beside its result": lambda: write(RESULT.with_name("other")),
    "writes in the home": lambda: write(HOME / "file"),
    "writes beside its folder": lambda: write(RESULT.parent.parent / "file"),
    "writes in the run-time folder": lambda: write(pathlib.Path(os.environ["XDG_RUNTIME_DIR"]) / "file"),
    "sees a /usr that can be written to": see_writable_usr,
    "sees the temporary files of others": see_temporary_files,
    "connects to an X server": connect_to_x_server,
    "writes temporary files": lambda: write(pathlib.Path("/tmp/file")),
    "reads a mouse": lambda: read_node("Plain mouse"),
    "reads the keys of a mouse": lambda: read_node("Mouse with keys Keyboard"),
    "reads a keyboard": lambda: read_node("Plain keyboard"),
    "reads the keyboard of a device that has a mouse as well": lambda: read_node("Keyboard with a mouse Keyboard"),
    "makes a keyboard": lambda: os.close(os.open("/dev/uinput", os.O_WRONLY)),
    "makes an internet socket": lambda: socket.socket(socket.AF_INET).close(),
    "makes a netlink socket": lambda: socket.socket(socket.AF_NETLINK, socket.SOCK_RAW).close(),
    "maps code that can be written": map_code_that_can_be_written,
    "makes a user namespace": lambda: call(LIBC.unshare, CLONE_NEWUSER),
    "makes a set-user-ID program": make_privileged_program,
    "changes its personality": lambda: call(LIBC.personality, PER_LINUX32),
}


def outcome(attempt):
    try:
        attempt()
    except OSError as error:
        return errno.errorcode.get(error.errno, str(error.errno))
    return "done"


RESULT.write_text("".join(f"{name}: {outcome(attempt)}\n" for name, attempt in ATTEMPTS.items()))
