#!/usr/bin/env python3
"""What a good client of the engine feels, and what memory the engine takes, while another program behaves badly.

    bench/attack.py [BIN]     BIN: folder of the programs (default build/release/bin)

Prints figures and ratios; never fails by the clock.
"""
import os
import pathlib
import re
import signal
import subprocess
import sys
import tempfile
import time

SECONDS = 5
RECOVERY_SECONDS = 5
ROOT = pathlib.Path(__file__).resolve().parent.parent
NEWS = ("Keymap Updated 273", "Profile Updated 273")

ATTACKS = (
    ("changes, 5,000 a second", [["flood", "5000"]]),
    ("changes, unlimited", [["flood", "0"]]),
    ("a client that never reads", [["silent"]]),
    ("4 bodies of 60 MB", [["big"]]),
    ("bodies of 4 MB, come and go", [["come-and-go"]]),
    ("a crowd of 200 connections", [["crowd", "200"]]),
    ("forged news, 1,000 a second", [["forge", name, "1000"] for name in NEWS]),
)


def inside_own_session():
    """Runs this script again with a bus of its own."""
    if os.environ.get("SKARN_BENCH_SESSION"):
        return
    environment = dict(os.environ, SKARN_BENCH_SESSION="1")
    command = ["dbus-run-session", "--", sys.executable, *sys.argv]
    os.execvpe(command[0], command, environment)


class Engine:
    """A started engine with the factory settings, and its memory in MB."""

    def __init__(self, binaries, state):
        self.log = open(pathlib.Path(state) / "log", "w+", encoding="utf-8")
        self.process = subprocess.Popen([binaries / "vorn-core-engine", "--state-dir", state], stderr=self.log)
        while "ready" not in (pathlib.Path(state) / "log").read_text(encoding="utf-8"):
            time.sleep(0.01)

    def status(self, field):
        text = pathlib.Path(f"/proc/{self.process.pid}/status").read_text(encoding="utf-8")
        return int(re.search(rf"^{field}:\s+(\d+)", text, re.M)[1]) / 1024

    def stop(self):
        """Seconds from SIGTERM to the end."""
        begun = time.perf_counter()
        self.process.send_signal(signal.SIGTERM)
        self.process.wait(30)
        self.log.close()
        return time.perf_counter() - begun

    def kill(self):
        self.process.kill()
        self.process.wait(10)
        self.log.close()


def latency(binaries, seconds=SECONDS):
    """Answers, missing answers, median and worst time of a good client in milliseconds."""
    result = subprocess.run([binaries / "bench-good-client", str(seconds)], capture_output=True, text=True, check=True)
    answered, missing, median, worst = result.stdout.split()
    return int(answered), int(missing), float(median), float(worst)


def attack(binaries, name, commands, unloaded):
    with tempfile.TemporaryDirectory(prefix="skarn-bench-") as state:
        engine = Engine(binaries, state)
        latency(binaries, 0.2)
        attackers = [subprocess.Popen([binaries / "bench-attacker", *command]) for command in commands]
        answered, missing, median, worst = latency(binaries)
        for attacker in attackers:
            attacker.kill()
            attacker.wait()
        peak = engine.status("VmHWM")
        time.sleep(RECOVERY_SECONDS)
        rest = engine.status("VmRSS")
        last = latency(binaries, 0.5)[2]
        engine.stop()
    print(f"{name:28} median {median:7.2f} ms, {median / unloaded:4.1f} times (budget 10)   worst {worst:7.1f} ms "
          f"(budget 500)   answered {answered}, not {missing}   peak {peak:5.1f} MB (budget 64), after "
          f"{RECOVERY_SECONDS} s {rest:4.1f} MB (budget 6)   then {last:.2f} ms", flush=True)


def endings(binaries):
    """SIGTERM under a flood, and kills while four clients ask."""
    with tempfile.TemporaryDirectory(prefix="skarn-bench-") as state:
        engine = Engine(binaries, state)
        latency(binaries, 0.2)
        attacker = subprocess.Popen([binaries / "bench-attacker", "flood", "0"])
        time.sleep(1)
        print(f"SIGTERM under a flood        ends after {engine.stop() * 1000:.0f} ms", flush=True)
        attacker.kill()
        attacker.wait()
    with tempfile.TemporaryDirectory(prefix="skarn-bench-") as state:
        restarted = []
        for _ in range(5):
            engine = Engine(binaries, state)
            clients = [subprocess.Popen([binaries / "bench-good-client", "1"], stdout=subprocess.DEVNULL)
                       for _ in range(4)]
            time.sleep(0.5)
            engine.kill()
            begun = time.perf_counter()
            engine = Engine(binaries, state)
            restarted.append(time.perf_counter() - begun)
            for client in clients:
                client.wait(60)
            engine.stop()
        damaged = [path.name for path in pathlib.Path(state).iterdir() if "damaged" in path.name]
        print(f"kills with four clients      ready again after {max(restarted) * 1000:.0f} ms at worst, damaged files: "
              f"{len(damaged)}", flush=True)


def main():
    inside_own_session()
    binaries = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else ROOT / "build/release/bin").resolve()
    with tempfile.TemporaryDirectory(prefix="skarn-bench-") as state:
        engine = Engine(binaries, state)
        latency(binaries, 0.2)
        answered, missing, unloaded, worst = latency(binaries)
        print(f"{'unloaded':28} median {unloaded:7.2f} ms   worst {worst:7.1f} ms   answered {answered}, not {missing}   "
              f"memory {engine.status('VmRSS'):.1f} MB", flush=True)
        engine.stop()
    for name, commands in ATTACKS:
        attack(binaries, name, commands, unloaded)
    endings(binaries)


if __name__ == "__main__":
    main()
