"""recording.py REQUESTS: what recording costs a daemon, and whether it loses records.

Two simulated routers, one of them recorded, on one processor; each is asked in turn, so that other
load hits both. Needs cmif-sim, cmif-record and soak-requests in PATH."""

import json
import os
import shutil
import statistics
import subprocess
import sys
import tempfile

import figure

BATCH = 250
ROUNDS = 5  # of which the middle one counts: other load on the machine hits some of them
UNKNOWN_ROAMING = 15  # its value, a number here, is in the record


class Router:
    """A router and a caller in its box, whose requests are of this code."""

    def __init__(self, code, *before):
        self.process = subprocess.Popen(
            [*before, shutil.which("cmif-sim"), "run", "--",
             "env", "-u", "LD_PRELOAD", shutil.which("soak-requests"), str(code)],
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)

    def ask(self, count):
        self.process.stdin.write(f"{count}\n")
        self.process.stdin.flush()
        if not self.process.stdout.readline():
            sys.exit("no answer")

    def end(self):
        """The seconds of processor time of all that ran in the box."""
        self.process.stdin.close()
        status, used = os.wait4(self.process.pid, 0)[1:]
        self.process.returncode = status
        if status != 0:
            sys.exit("a router failed")
        return used.ru_utime + used.ru_stime


def writer_time():
    """The seconds of processor time of the recording's writer, which ends after the daemon."""
    used = os.wait4(-1, 0)[2]
    return used.ru_utime + used.ru_stime


def slowdown(code, requests, file):
    """On one processor a request takes the processor time of the daemon and of its caller; with
    that of the writer, second, all that recording costs."""
    routers = Router(code), Router(code, "cmif-record", file, "--")
    for _ in range(max(requests // BATCH, 1)):
        for router in routers:
            router.ask(BATCH)
    plain, recorded = (1e6 * router.end() / requests for router in routers)
    writer = 1e6 * writer_time() / requests
    print(f"  a request of code {code}: {plain:.1f} us, recorded {recorded:.1f} us, and {writer:.1f} us of the writer")
    return recorded / plain, (recorded + writer) / plain


def lost(requests, file):
    """Of the daemon's records, each request with its own number."""
    router = Router(UNKNOWN_ROAMING, "cmif-record", file, "--")
    router.ask(requests)
    router.end()
    writer_time()
    numbers, replies = set(), 0
    for line in map(json.loads, open(file, encoding="utf-8")):
        if line.get("type") == "request" and line["action"] == "received":
            numbers.add(line["fields"]["roaming"])
        replies += line.get("type") == "reply" and line["action"] == "sent"
    return 2 * requests - len(numbers & {str(n) for n in range(1, requests + 1)}) - replies


def main():
    requests = int(sys.argv[1])
    figure.adopt_orphans()
    os.sched_setaffinity(0, {min(os.sched_getaffinity(0))})
    with tempfile.TemporaryDirectory(dir=os.getcwd()) as folder:
        file = os.path.join(folder, "recording.jsonl")
        for name, code in (("retries", 4), ("PIN mode", 8)):
            rounds = [slowdown(code, requests // ROUNDS, file) for _ in range(ROUNDS)]
            daemon, all_told = map(statistics.median, zip(*rounds))
            figure.figure(f"a recorded request, {name}, to a plain one", round(daemon, 2), "at most", 1.10)
            figure.figure("  the same with the writer's time", round(all_told, 2), "at most", 1.10)
        figure.figure(f"records lost, of {2 * requests}", lost(requests, file), "at most", 0)
    figure.leave()


main()
