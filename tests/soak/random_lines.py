"""random_lines.py LINES [SEED]: runs cmifctl with random command lines beside the simulated router.

With --json each must end in time, by itself, and with exactly one JSON document that agrees with
the exit status. Words come from the tool's own help."""

import concurrent.futures
import json
import os
import random
import re
import subprocess
import sys

import figure

LONGEST = 30  # seconds; a line that takes longer hangs
# On request, output has another format or no end.
EXCLUDED = re.compile(r"^(-o|-f|-w|--output|--field|--watch)")
VALUES = ["", "-", "--", "1", "3", "16", "-1", "00101", "00102", "99999999999999999999", "1e9", "0x10", "nan", "on",
          "off", "IP", "ipv4", "lte_mobile_imei", "debug_at_cmif", "internet.example", "a b", "%s%n%1000d", "'\"\\",
          "\x1b[31m", "\u202e", "\xe9\u4e16", "x" * 29, "x" * 30, "x" * 5000, "=", "--=", "--x=y", "\udcff\udcfe",
          "\x7f", "null", "{}"]
INPUTS = [b"", b"1234\n", b"1234\n5678\n5678\n", b"\xff\0\n", b"9" * 5000]


def output_of(*words):
    return subprocess.run(["cmifctl", *words], stdout=subprocess.PIPE, check=True, encoding="utf-8").stdout


def commands():
    """Path -> words that its help names."""
    known = {}
    for candidate in re.findall(r"^ +([a-z][a-z-]*(?: [a-z][a-z-]*)*)", output_of("--help"), re.MULTILINE):
        for path in {candidate, candidate.split("  ")[0]}:
            shown = subprocess.run(["cmifctl", *path.split(), "--help"], stdout=subprocess.PIPE,
                                   stderr=subprocess.DEVNULL, encoding="utf-8")
            if shown.returncode == 0:
                known[path] = sorted(set(re.findall(r"--?[a-zA-Z][a-z-]*|[a-z0-9][\w-]*", shown.stdout)))
    return known


class Generator:
    def __init__(self, seed):
        self.chance = random.Random(seed)
        self.commands = commands()
        self.paths = sorted(self.commands)
        self.words = sorted({word for words in self.commands.values() for word in words})

    def line(self):
        form = self.chance.random()
        if form < 0.2:
            words = self.chance.choices(self.words + VALUES, k=self.chance.randrange(6))
        else:
            path = self.chance.choice(self.paths)
            own = self.commands[path]
            words = path.split() + [self.word(own) for _ in range(self.chance.choice([0, 0, 1, 1, 2, 4]))]
            if form > 0.8:
                words = self.mutated(words)
        words = [word for word in words if not EXCLUDED.match(word)]
        ends = words.index("--") if "--" in words else len(words)
        place = 0 if self.chance.random() < 0.7 else self.chance.randrange(ends + 1)
        return ["--timeout", "1", *words[:place], "--json", *words[place:]]

    def word(self, own):
        options = [word for word in own if word.startswith("-")]
        kind = self.chance.random()
        if kind < 0.3 and options:
            option = self.chance.choice(options)
            return option if self.chance.random() < 0.7 else f"{option}={self.chance.choice(VALUES)}"
        return self.chance.choice(own if kind < 0.6 else VALUES)

    def mutated(self, words):
        words = list(words)
        place = self.chance.randrange(len(words))
        change = self.chance.randrange(5)
        if change == 0:
            words.pop(place)
        elif change == 1:
            words.insert(place, words[place])
        elif change == 2:
            self.chance.shuffle(words)
        elif change == 3:
            words[place] = words[place][: self.chance.randrange(len(words[place]) + 1)]
        else:
            words[place] += self.chance.choice(["-", "=", "x", "\xdf", " "])
        return words


def refuse_constant(name):
    raise ValueError(f"{name} is not JSON")


def status_in(document):
    """The exit status by the document: that of its error, or 1 for troubles that the doctor found."""
    if "error" in document:
        return document["error"]["code"]
    return int(any(found["severity"] != "note" and not found["fixed"] for found in document.get("findings", [])))


def outcome(words, given):
    """What is wrong with this line, and details; or how it ended."""
    try:
        run = subprocess.run(["cmifctl", *words], input=given, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                             timeout=LONGEST, start_new_session=True)
    except subprocess.TimeoutExpired:
        return "hang", ""
    if not 0 <= run.returncode <= 8:
        return "crash", f"exit status {run.returncode}, {run.stderr[:2000]}"
    try:
        document = json.loads(run.stdout.decode("utf-8"), parse_constant=refuse_constant)
    except ValueError as error:
        return "not one document", f"{error}: {run.stdout[:200]} {run.stderr[:200]}"
    code = status_in(document)
    if code != run.returncode:
        return "another status", f"{code} in the document, {run.returncode} of the process"
    return ("done" if code == 0 else "failed"), ""


def main():
    count, seed = int(sys.argv[1]), int((sys.argv + [1])[2])
    generator = Generator(seed)
    figure.figure("commands found in the help", len(generator.commands), "at least", 50)
    lines = [(generator.line(), generator.chance.choice(INPUTS)) for _ in range(count)]
    lines = [([word.replace("\0", "") for word in words], given) for words, given in lines]
    wrong = dict.fromkeys(["crash", "hang", "not one document", "another status"], 0)
    done = 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        for (words, given), found in zip(lines, pool.map(lambda line: outcome(*line), lines)):
            what, details = found
            done += what == "done"
            if what in wrong:
                wrong[what] += 1
                figure.complain(f"{what}: {words} with {given[:20]}: {details}")
    print(f"  {count} random command lines, seed {seed}:")
    for what, number in wrong.items():
        figure.figure(f"  {what}", number, "at most", 0)
    figure.figure("  done", done, "at least", count // 20)  # else nothing but the parser would be tried
    figure.leave()


main()
