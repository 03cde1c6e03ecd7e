#!/usr/bin/env python3
"""The programs of a release build are hardened.

    tests/release/check_hardening.py [BIN]     BIN: folder of the programs (default build/release/bin)
"""
import os
import pathlib
import platform
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
PROGRAMS = ("skarn-configurator", "vorn-core-engine", "vornctl")


def output(*command):
    environment = dict(os.environ, LC_ALL="C")
    return subprocess.run(command, check=True, capture_output=True, text=True, env=environment).stdout


def flaws(program):
    headers = output("readelf", "--wide", "--file-header", "--segments", program)
    dynamic = output("readelf", "--wide", "--dynamic", program)
    imported = {
        fields[7].split("@")[0]
        for fields in map(str.split, output("readelf", "--wide", "--dyn-syms", program).splitlines())
        if len(fields) > 7 and fields[6] == "UND"
    }
    if "Position-Independent Executable" not in headers or "PIE" not in dynamic.split("(FLAGS_1)")[-1]:
        yield "is not a position-independent executable"
    if "GNU_RELRO" not in headers:
        yield "leaves its relocations writable"
    if "BIND_NOW" not in dynamic:
        yield "binds symbols late"
    if any("GNU_STACK" in line and "RWE" in line for line in headers.splitlines()):
        yield "has an executable stack"
    if "__stack_chk_fail" not in imported:
        yield "has no stack canaries"
    # Calls that the library also has in a checked form: each program formats something.
    if not any(name.endswith("_chk") for name in imported):
        yield "calls no fortified function"
    if "std::__glibcxx_assert_fail" not in output("readelf", "--wide", "--demangle", "--dyn-syms", program):
        yield "does not check its use of the standard library"
    # The start-up code of Debian 12's C library is not marked, so no program carries the property of its protected
    # branches; the code itself shows them.
    if platform.machine() in ("x86_64", "i686"):
        main = output("objdump", "--disassemble=main", "--no-show-raw-insn", program)
        if "endbr" not in main:
            yield "does not mark the targets of its branches"


def main():
    folder = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else ROOT / "build/release/bin"
    found = [f"{name} {flaw}" for name in PROGRAMS for flaw in flaws(folder / name)]
    for flaw in found:
        print(flaw)
    return 1 if found else 0


sys.exit(main())
