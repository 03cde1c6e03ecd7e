"""Reads and writes property lists with Python's plistlib, for the comparison with our codec.

usage: plistlib_oracle.py describe FILE           prints the value in the notation below
       plistlib_oracle.py write binary|xml FILE   reads the notation from standard input and writes the file

The notation: b0 or b1 a boolean, i and a decimal an integer, r and 16 hexadecimal digits a real by its bits, t and the
same a date in seconds since 2001, s and d a string (UTF-8) and data in hexadecimal, u and a decimal a UID, [ and ] an
array, { and } a dictionary of strings each followed by a value; a blank after each of them.
"""

import datetime
import plistlib
import struct
import sys

REFERENCE = datetime.datetime(2001, 1, 1)


def real(value):
    return struct.pack(">d", value).hex()


def describe(value, out):
    if isinstance(value, bool):
        out.append("b%d" % value)
    elif isinstance(value, int):
        out.append("i%d" % value)
    elif isinstance(value, float):
        out.append("r" + real(value))
    elif isinstance(value, datetime.datetime):
        out.append("t" + real((value - REFERENCE).total_seconds()))
    elif isinstance(value, str):
        out.append("s" + value.encode().hex())
    elif isinstance(value, bytes):
        out.append("d" + value.hex())
    elif isinstance(value, plistlib.UID):
        out.append("u%d" % value.data)
    elif isinstance(value, list):
        out.append("[")
        for element in value:
            describe(element, out)
        out.append("]")
    elif isinstance(value, dict):
        out.append("{")
        for key in sorted(value, key=str.encode):
            describe(key, out)
            describe(value[key], out)
        out.append("}")
    else:
        raise TypeError(type(value))


def parse(tokens):
    token = next(tokens)
    kind, text = token[0], token[1:]
    if kind == "b":
        return text == "1"
    if kind == "i":
        return int(text)
    if kind == "r":
        return struct.unpack(">d", bytes.fromhex(text))[0]
    if kind == "t":
        seconds = struct.unpack(">d", bytes.fromhex(text))[0]
        return REFERENCE + datetime.timedelta(seconds=seconds)
    if kind == "s":
        return bytes.fromhex(text).decode()
    if kind == "d":
        return bytes.fromhex(text)
    if kind == "u":
        return plistlib.UID(int(text))
    if kind == "[":
        return list(iter(lambda: parse(tokens), None))
    if kind == "{":
        result = {}
        while (key := parse(tokens)) is not None:
            result[key] = parse(tokens)
        return result
    return None  # the end of a container


def main():
    if sys.argv[1] == "describe":
        with open(sys.argv[2], "rb") as file:
            out = []
            describe(plistlib.load(file), out)
            print(" ".join(out))
    else:
        value = parse(iter(sys.stdin.read().split()))
        form = plistlib.FMT_BINARY if sys.argv[2] == "binary" else plistlib.FMT_XML
        with open(sys.argv[3], "wb") as file:
            plistlib.dump(value, file, fmt=form, sort_keys=True)


main()
