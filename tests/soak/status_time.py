"""status_time.py RUNS: the wall time of `cmifctl status` over that of `cmifctl --version`.

Both take turns, so that other load hits both; their medians are compared."""

import os
import shutil
import statistics
import subprocess
import sys
import time

import figure

TOOL = shutil.which("cmifctl")
QUIET = [(os.POSIX_SPAWN_OPEN, fd, "/dev/null", os.O_RDWR, 0) for fd in (0, 1, 2)]


def seconds(*words):
    start = time.perf_counter()
    process = os.posix_spawn(TOOL, ["cmifctl", *words], os.environ, file_actions=QUIET)
    status = os.waitpid(process, 0)[1]
    if status != 0:
        sys.exit(f"cmifctl {' '.join(words)}: wait status {status}")
    return time.perf_counter() - start


def main():
    subprocess.run([TOOL, "sim", "enter-pin", "-"], input=b"1234\n", stdout=subprocess.DEVNULL, check=True)
    times = [(seconds("status"), seconds("--version")) for _ in range(int(sys.argv[1]))]
    status, version = (statistics.median(column) for column in zip(*times))
    print(f"  status {1000 * status:.2f} ms, --version {1000 * version:.2f} ms")
    figure.figure("cmifctl status, times the time of --version", round(status / version, 2), "at most", 2.5)
    figure.leave()


main()
