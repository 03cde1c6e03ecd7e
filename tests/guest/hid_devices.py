"""Mice without hardware that the kernel takes for real ones: HID devices through /dev/uhid, and whole USB devices
through the kernel's USB gadgets, which emulated controllers of a host and of devices (dummy_hcd) connect with itself.
The descriptors are written after the Device Class Definition for HID and the HID Usage Tables (usb.org)."""
import os
import pathlib
import select
import struct
import subprocess
import threading

BUS_USB = 3
BUS_BLUETOOTH = 5

_POINTER = (
    "0901a100"  # Pointer, physical collection
    "05091901290515002501950575018102" "950175038101"  # five buttons and padding
    "05010930093116018026ff7f751095028106")  # X and Y, 16 bits, relative
# Five buttons, a wheel, and a wheel to the sides.
MOUSE = bytes.fromhex("05010902a101" + _POINTER + "09381581257f750895018106" "050c0a38028106" "c0c0")
# The same with eight parts of a step: the host chooses by a feature, the Resolution Multiplier.
FINE_MOUSE = bytes.fromhex(
    "05010902a101" + _POINTER +
    "a102" "0948150025013501450875029501b102" "3500450009381581257f750895018106" "c0"
    "75069501b103" "a102" "050c0a38021581257f750895018106" "c0" "c0" "c0")
# The plain one with a battery, of which it tells at the end of each report.
MOUSE_TELLING_BATTERY = MOUSE[:-1] + bytes.fromhex("05060920150026ff00750895018102" "c0")
KEYBOARD = bytes.fromhex(
    "05010906a101" "050719e029e715002501750195088102" "950175088101" "05071900297f1500257f750895068100" "c0")
# Twelve keys, the row of digits, as thumb grids send them: 1 to 12 in its reports.
GRID = bytes.fromhex(
    "05010906a101" "050719e029e715002501750195088102" "950175088101" "0507191e2927092d092e1501250c750895068100" "c0")
# Both in one device, by report numbers, as mice with Bluetooth have them.
_PARTS = MOUSE.replace(b"\xa1\x01", b"\xa1\x01\x85\x01", 1), KEYBOARD.replace(b"\xa1\x01", b"\xa1\x01\x85\x02", 1)
MOUSE_AND_KEYBOARD = _PARTS[0] + _PARTS[1]
# With a battery that tells its charge in percent and whether it is charged, as a third kind of report.
_BATTERY = bytes.fromhex("8503" "05850965" "150025647508950181020944250175018102" "75078103")
MOUSE_WITH_BATTERY = _PARTS[0][:-1] + _BATTERY + b"\xc0" + _PARTS[1]
# What some keyboards are.
KEYBOARD_AND_MOUSE = _PARTS[1] + _PARTS[0]
FINE_MOUSE_AND_GRID = (FINE_MOUSE.replace(b"\xa1\x01", b"\xa1\x01\x85\x01", 1) +
                       GRID.replace(b"\xa1\x01", b"\xa1\x01\x85\x02", 1))
# The fourth one, among the buttons of a report.
SIDE_BUTTON = 8


def mouse_report(buttons=0, x=0, y=0, wheel=0, side=0):
    return struct.pack("<Bhhbb", buttons, x, y, wheel, side)


def battery_report(percent, is_charging=False):
    return bytes([percent, is_charging])


def keyboard_report(*usages, modifiers=0):
    return bytes([modifiers, 0]) + bytes(usages).ljust(6, b"\0")


class HidDevice:
    """A HID device; it is plugged until it is closed. Answers: what it tells when it is asked, by the numbers of the
    reports."""
    _CREATE, _INPUT, _GET_REPORT, _GET_REPORT_REPLY, _SET_REPORT, _SET_REPORT_REPLY = 11, 12, 9, 10, 13, 14

    def __init__(self, name, descriptor, product, bus=BUS_USB, place="", serial="",
                 answers=None):
        self.answers = answers or {}
        self._file = os.open("/dev/uhid", os.O_RDWR | os.O_CLOEXEC)
        os.write(self._file, struct.pack("<I128s64s64sHHIIII4096s", self._CREATE, name.encode(), place.encode(),
                                         serial.encode(), len(descriptor), bus, 0x1209, product, 0x111, 0, descriptor))
        self._end = os.pipe()
        self._thread = threading.Thread(target=self._answer, daemon=True)
        self._thread.start()

    def _answer(self):
        """The kernel asks for features and sets them, and waits for the answers."""
        while True:
            ready = select.select([self._file, self._end[0]], [], [])[0]
            if self._end[0] in ready:
                return
            kind, number, report = struct.unpack_from("<IIB", os.read(self._file, 4380).ljust(9, b"\0"))
            if kind == self._GET_REPORT:
                answer = self.answers.get(report, bytes((report, 0)))
                os.write(self._file, struct.pack("<IIHH", self._GET_REPORT_REPLY, number, 0, len(answer)) + answer)
            elif kind == self._SET_REPORT:
                os.write(self._file, struct.pack("<IIH", self._SET_REPORT_REPLY, number, 0))

    def send(self, report):
        os.write(self._file, struct.pack("<IH", self._INPUT, len(report)) + report)

    def unplug(self):
        os.write(self._end[1], b".")
        self._thread.join()
        os.close(self._file)


class ThumbMouse:
    """A mouse with a fine wheel and a thumb grid, plugged again and again."""
    NAME = "Acme Thumb"

    def __init__(self):
        self.plug()

    def plug(self):
        self._device = HidDevice(self.NAME, FINE_MOUSE_AND_GRID, 0x40, place="usb-4/input0", serial="T1")

    def unplug(self):
        self._device.unplug()

    def move(self, **report):
        self._device.send(b"\1" + mouse_report(**report))

    def type(self, *keys):
        """The keys of the grid that are down from now on, 1 to 12."""
        self._device.send(b"\2" + keyboard_report(*keys))


class UsbMouse:
    """A USB device with a mouse and a keyboard as its interfaces 0 and 1."""
    _ROOT = pathlib.Path("/sys/kernel/config/usb_gadget")
    count = 0

    def __init__(self, name, product, serial, revision="0x0123"):
        if not self._ROOT.exists():
            subprocess.run(["modprobe", "dummy_hcd", "num=2"], check=True)
            subprocess.run(["modprobe", "-a", "libcomposite", "usb_f_hid", "usbhid"], check=True)
            subprocess.run(["mount", "-t", "configfs", "none", self._ROOT.parent], check=True)
        self._number = UsbMouse.count
        UsbMouse.count += 1
        self._folder = self._ROOT / f"mouse{self._number}"
        strings = self._folder / "strings/0x409"
        for folder in self._folder, strings, self._folder / "configs/c.1":
            folder.mkdir()
        for file, value in ((self._folder / "idVendor", "0x1209"), (self._folder / "idProduct", product),
                            (self._folder / "bcdDevice", revision), (strings / "manufacturer", "Acme"),
                            (strings / "product", name), (strings / "serialnumber", serial)):
            file.write_text(value)
        self._nodes = [self._add_function(0, 2, MOUSE, 7), self._add_function(1, 1, KEYBOARD, 8)]
        self._files = []
        self.plug()

    def _add_function(self, index, protocol, descriptor, length):
        function = self._folder / f"functions/hid.{2 * self._number + index}"
        function.mkdir()
        for file, value in (("protocol", protocol), ("subclass", 1), ("report_length", length)):
            (function / file).write_text(str(value))
        (function / "report_desc").write_bytes(descriptor)
        (self._folder / "configs/c.1" / function.name).symlink_to(function)
        return "/dev/hidg" + (function / "dev").read_text().strip().split(":")[1]

    def plug(self):
        (self._folder / "UDC").write_text(f"dummy_udc.{self._number}\n")
        self._files = [open(node, "r+b", buffering=0) for node in self._nodes]

    def unplug(self):
        for file in self._files:
            file.close()
        (self._folder / "UDC").write_text("\n")

    def move(self, **report):
        self._files[0].write(mouse_report(**report))

    def type(self, *usages, modifiers=0):
        """The keys that are down from now on."""
        self._files[1].write(keyboard_report(*usages, modifiers=modifiers))
