"""cmifd.py REQUESTS: what a request through cmifd costs, its memory, and what wakes it while nothing is asked.

Two boxes: the simulated router, and cmifd over the real ModemManager and the emulated USB modem. Both are asked in
turn on one processor, so that other load hits both. The request, for the PIN counters, needs no command to the modem. Needs
cmif-sim, cmifd, cmifctl and soak-requests in PATH, and the programs ModemManager and dbus-daemon."""

import os
import pathlib
import statistics
import subprocess
import sys
import time

import figure

BATCH = 250
PIN_COUNTERS = 4
SECONDS = 30
BESIDE_CMIFD = pathlib.Path(__file__).with_name("beside_cmifd.sh")


class Box:
    """A shell in a box of cmif-sim."""

    def __init__(self, *words):
        self.process = subprocess.Popen(["cmif-sim", *words], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)

    def does(self, line):
        """What the line prints last."""
        self.process.stdin.write(f"{line} || exit\n")
        self.process.stdin.flush()
        found = self.process.stdout.readline()
        if not found:
            sys.exit(f"'{line}' failed")
        return found

    def microseconds(self):
        """Of one request, on the average of a batch."""
        return int(self.does(f"echo {BATCH} | soak-requests {PIN_COUNTERS}")) / BATCH / 1000

    def end(self):
        self.process.stdin.close()
        if self.process.wait() != 0:
            sys.exit("a box failed")


def descendants(process):
    for child in figure.children_of(process):
        yield child
        yield from descendants(child)


def find_daemon(box):
    return next(each for each in descendants(box.process.pid)
                if pathlib.Path(f"/proc/{each}/comm").read_text(encoding="ascii") == "cmifd\n")


def number_in(status, name):
    return next(int(line.split()[1]) for line in status.read_text(encoding="ascii").splitlines()
                if line.startswith(f"{name}:"))


def wake_ups(daemon):
    """Of all its threads: how often one has slept, and was woken."""
    return sum(number_in(status, "voluntary_ctxt_switches")
               for status in pathlib.Path(f"/proc/{daemon}/task").glob("*/status"))


def wake_ups_of_a_while(daemon):
    time.sleep(5)  # what was under way is done
    before = wake_ups(daemon)
    time.sleep(SECONDS)
    return wake_ups(daemon) - before


def main():
    os.sched_setaffinity(0, {min(os.sched_getaffinity(0))})
    batches = max(int(sys.argv[1]) // BATCH, 10)
    os.environ["PATH"] += ":/usr/sbin:/sbin"
    simulated = Box("run", "--pace", "0", "--state", "registered", "--", "sh")
    driven = Box("usb", "--pace", "0.1", "--", "sh", str(BESIDE_CMIFD), "sh")
    driven.does("echo ready")
    times = [(simulated.microseconds(), driven.microseconds()) for _ in range(batches)]
    plain, real = (statistics.median(column) for column in zip(*times))
    print(f"  a request, simulated {plain:.1f} us, cmifd {real:.1f} us, medians of {batches} times {BATCH}")
    figure.figure("a request through cmifd, to one through cmif-sim", round(real / plain, 2), "at most", 1.3)
    daemon = find_daemon(driven)
    memory = number_in(pathlib.Path(f"/proc/{daemon}/status"), "VmRSS")
    figure.figure("memory of cmifd, kB", memory, "at most", 10240)
    print(f"  wake-ups in {SECONDS} s, registered: {wake_ups_of_a_while(daemon)}")
    driven.does("cmifctl radio functionality radio_off >&2 && echo off")
    figure.figure(f"wake-ups in {SECONDS} s, radio off", wake_ups_of_a_while(daemon), "at most", 0)
    simulated.end()
    driven.end()
    figure.leave()


main()
