"""repeats.py RUNS: whether runs of one scenario by the manual clock are equal byte for byte: what the
session prints, the keys among it, and the recording.

Needs cmif-sim, which finds cmifctl beside it, in PATH."""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

import figure

REPEATED = pathlib.Path(__file__).parent.parent / "cmif-sim" / "repeated"


def run(folder):
    """The output of the session, and the recording."""
    done = subprocess.run(
        [shutil.which("cmif-sim"), "run", "--clock", "manual", "--seed", "7", "--scenario", "scenario.cmif",
         "--record", "recording.jsonl", "--", "sh", "session.sh"],
        cwd=folder, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=True)
    return done.stdout, pathlib.Path(folder, "recording.jsonl").read_bytes()


def main():
    runs = int(sys.argv[1])
    with tempfile.TemporaryDirectory(dir=os.getcwd()) as folder:
        for file in REPEATED.iterdir():
            shutil.copy(file, folder)
        first = run(folder)
        print(f"  a run prints {len(first[0])} bytes and records {first[1].count(b'type')} lines")
        others = [run(folder) for _ in range(runs - 1)]
    for index, what in enumerate(("outputs", "recordings")):
        equal = 1 + sum(other[index] == first[index] for other in others)
        figure.figure(f"equal {what}, of {runs} runs", equal, "at least", runs)
    figure.leave()


main()
