"""ended_calls.py CALLS: ends calls of cmifctl at random moments and looks for what they leave behind.

Without daemons requests stay queued, and every call waits until it is ended. `--served` is for the
simulated router: requests are answered, and hidden questions are asked on a terminal."""

import fcntl
import os
import pty
import random
import signal
import subprocess
import sys
import termios
import time

import figure

SIGNALS = [signal.SIGINT, signal.SIGTERM, signal.SIGHUP, signal.SIGQUIT, signal.SIGPIPE, signal.SIGALRM]
OTHERS = [(15, b"%d" % number) for number in range(10)]  # requests of another program
LONGEST = 10  # seconds; a call that takes longer hangs

WAITING = ["sim retries", "radio mode auto", "radio functionality full", "network scan", "network auto", "sms list",
           "data profile-sync", "data ota-dm", "data start", "data stop", "data profile set --apn internet.example",
           "log mark text", "log rotate"]
ASKING = ["sim change-pin", "sim unlock-network", "sim pin-mode on", "config set lte_qmi_password"]
ANSWERED = WAITING + ["status", "radio show", "network list"]

left = dict.fromkeys(
    ["profile marker", "queued request", "lost request of others", "hidden terminal", "process", "hang", "strange end"], 0)


def note(what, call):
    left[what] += 1
    figure.complain(f"{what}: {call}")


def sleep_until(condition, seconds):
    end = time.monotonic() + seconds
    while not condition():
        if time.monotonic() > end:
            return False
        time.sleep(0.002)
    return True


class Call:
    """One run of the tool; on a terminal of its own when it is to ask."""

    def __init__(self, line, on_terminal):
        self.line = line
        self.terminal, slave = pty.openpty() if on_terminal else (None, None)
        words = ["cmifctl", "--timeout", "0.5", "--trace", *line.split()]
        if on_terminal:
            self.child = subprocess.Popen(words, stdin=slave, stdout=slave, stderr=slave, start_new_session=True,
                                          preexec_fn=lambda: fcntl.ioctl(0, termios.TIOCSCTTY, 0))
            os.close(slave)
        else:
            self.child = subprocess.Popen(words, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                          stderr=subprocess.PIPE)
        self.process, self.trace = self.child.pid, self.child.stderr

    def type(self, text):
        os.write(self.terminal, text)

    def send(self, number):
        try:
            os.kill(self.process, number)
        except ProcessLookupError:
            pass

    def kill_child(self):
        """As soon as there is one; the call may end before, or wait for an answer to its question."""
        sleep_until(lambda: figure.children_of(self.process) or self.has_ended(), 0.1)
        for child in figure.children_of(self.process):
            try:
                os.kill(child, signal.SIGKILL)
            except ProcessLookupError:
                pass
        if self.terminal is not None:
            sleep_until(self.has_ended, 0.05)
            self.send(signal.SIGINT)

    def has_ended(self):
        return os.waitid(os.P_PID, self.process, os.WEXITED | os.WNOHANG | os.WNOWAIT) is not None

    def finish(self):
        if not sleep_until(self.has_ended, LONGEST):
            note("hang", self.line)
            os.kill(self.process, signal.SIGKILL)
        return os.waitstatus_to_exitcode(os.waitpid(self.process, 0)[1])

    def check_terminal(self):
        hidden = termios.ECHO | termios.ICANON
        if self.terminal is not None and termios.tcgetattr(self.terminal)[3] & hidden != hidden:
            note("hidden terminal", self.line)

    def close(self):
        if self.terminal is not None:
            os.close(self.terminal)
        elif not self.trace.closed:
            self.trace.close()


def end_somehow(call, chance):
    """A signal to the tool, sometimes by a key, KILL to its child, or its trace's reader goes away."""
    way = chance.randrange(8)
    if way == 6:
        call.kill_child()
        return "KILL of the child"
    if way == 7 and call.trace:
        call.trace.close()
        return "reader gone"
    number = SIGNALS[way % 6]
    keys = {signal.SIGINT: b"\x03", signal.SIGQUIT: b"\x1c"}
    if call.terminal is not None and number in keys and chance.random() < 0.5:
        call.type(keys[number])
    else:
        call.send(number)
    return signal.Signals(number).name


def check_system(call, others):
    if os.path.lexists(figure.BUSY_FILE):
        note("profile marker", call)
        os.unlink(figure.BUSY_FILE)
    if figure.queued(figure.AT_REQUESTS) != others or figure.queued(figure.QMI_REQUESTS) != 0:
        note("queued request", call)
        empty_queues(others)
    if not sleep_until(lambda: not figure.orphans(), 1):
        note("process", call)
        for process in figure.orphans():
            os.kill(process, signal.SIGKILL)
            os.waitpid(process, 0)


def empty_queues(others):
    for key in (figure.AT_REQUESTS, figure.QMI_REQUESTS):
        while figure.receive(key):
            pass
    for other in OTHERS[:others]:
        figure.send(figure.AT_REQUESTS, *other, 116)


def end_one(chance, lines, others):
    line = chance.choice(lines)
    call = Call(line, line in ASKING)
    if call.terminal is not None and chance.random() < 0.3:
        time.sleep(0.03 * chance.random())
        call.type(b"1234\n")
    time.sleep(0.05 * chance.random())
    way = end_somehow(call, chance)
    status = call.finish()
    if status > 8 or -status not in [0, *SIGNALS] and status < 0:
        note("strange end", f"{line}, {way}: {status}")
    call.check_terminal()
    call.close()
    check_system(f"{line}, {way}", others)


def kill_one(chance):
    """KILL of the tool: the most that may be left is its own request."""
    line = chance.choice(WAITING)
    call = Call(line, False)
    time.sleep(0.03 * chance.random())
    call.send(signal.SIGKILL)
    call.finish()
    call.close()
    sleep_until(lambda: not figure.orphans(), 1)
    if figure.queued(figure.AT_REQUESTS) + figure.queued(figure.QMI_REQUESTS) > len(OTHERS) + 1:
        note("queued request", line)
    sleep_until(lambda: not os.path.lexists(figure.BUSY_FILE), 1)
    others = [record for record in iter(lambda: figure.receive(figure.AT_REQUESTS), None) if record[0] == OTHERS[0][0]]
    if others != OTHERS:
        note("lost request of others", line)
    for key in (figure.AT_REQUESTS, figure.QMI_REQUESTS):
        figure.remove_queue(key)  # what is gone with its queue is not waited for
    prepare()
    check_system(f"{line}, KILL", len(OTHERS))


def prepare():
    for key in (figure.AT_REQUESTS, figure.AT_REQUESTS + 1, figure.QMI_REQUESTS, figure.QMI_REQUESTS + 1):
        figure.make_queue(key)
    with open(figure.READY_FILE, "w", encoding="ascii") as file:
        file.write("on")
    empty_queues(len(OTHERS))


def print_figures(heading):
    print(f"  {heading}")
    for what, count in left.items():
        figure.figure(f"  {what}", count, "at most", 0)


def main():
    figure.adopt_orphans()
    served = "--served" in sys.argv
    calls = int(sys.argv[-1])
    chance = random.Random(1)
    subprocess.run(["cmifctl", "config", "set", "debug_at_cmif", "1"], check=True)
    subprocess.run(["cmifctl", "config", "set", "debug_qmi_cmif", "1"], check=True)
    subprocess.run(["cmifctl", "config", "set", "lte_qmi_apn", "internet.example"], check=True)
    if served:
        subprocess.run(["cmifctl", "sim", "enter-pin", "-"], input=b"1234\n", stdout=subprocess.DEVNULL, check=True)
        lines, others = ANSWERED + ASKING * 3, 0
    else:
        prepare()
        lines, others = WAITING, len(OTHERS)
    for _ in range(calls):
        end_one(chance, lines, others)
    print_figures(f"{calls} calls ended, {'served' if served else 'not served'}; left behind:")
    if not served:
        for what in left:
            left[what] = 0
        for _ in range(calls // 5):
            kill_one(chance)
        print_figures(f"{calls // 5} calls killed; left behind beside their own request:")
    figure.leave()


main()
