"""What the programs that watch cmifctl share: figures with their bars, and the queues."""

import ctypes
import os
import struct
import sys

sys.dont_write_bytecode = True

AT_REQUESTS = 899
QMI_REQUESTS = 1158
BUSY_FILE = "/tmp/modify_profile_in_progress"
READY_FILE = "/tmp/lte_qmi_msg_handler_thread_ready"

IPC_CREAT, IPC_NOWAIT, IPC_RMID = 0o1000, 0o4000, 0
RECORD = struct.Struct("l312s")

libc = ctypes.CDLL(None, use_errno=True)
missed = []


def figure(what, value, kind, bar):
    """Prints a figure; `kind` is "at most" or "at least"."""
    met = value <= bar if kind == "at most" else value >= bar
    if not met:
        missed.append(what)
    shown = f"{value:7.2f}" if isinstance(value, float) else f"{value:7}"
    print(f"  {what:46} {shown}  ({kind} {bar}){'' if met else '  MISSED'}", flush=True)


def leave():
    sys.exit(1 if missed else 0)


def complain(text):
    print(text, file=sys.stderr, flush=True)


def queued(key):
    """How many records lie in a queue."""
    with open("/proc/sysvipc/msg", encoding="ascii") as table:
        rows = [line.split() for line in table][1:]
    return sum(int(row[4]) for row in rows if int(row[0]) == key)


def make_queue(key):
    return libc.msgget(key, IPC_CREAT | 0o666)


def send(key, code, text, size):
    libc.msgsnd(make_queue(key), RECORD.pack(code, text), size, IPC_NOWAIT)


def receive(key, code=0):
    """The oldest record of a code, or of any for 0: (code, text); None when there is none."""
    record = ctypes.create_string_buffer(RECORD.size)
    if libc.msgrcv(make_queue(key), record, RECORD.size - 8, code, IPC_NOWAIT) == -1:
        return None
    found, text = RECORD.unpack(record.raw)
    return found, text.rstrip(b"\0")


def remove_queue(key):
    libc.msgctl(make_queue(key), IPC_RMID, None)


def adopt_orphans():
    """What a child leaves running becomes a child of this process, so that nothing can hide."""
    pr_set_child_subreaper = 36
    libc.prctl(pr_set_child_subreaper, 1, 0, 0, 0)


def orphans():
    """Those that still run. For a process that has waited for its own children."""
    try:
        while os.waitpid(-1, os.WNOHANG)[0] != 0:
            pass
    except ChildProcessError:
        return []
    return children_of(os.getpid())


def children_of(process):
    try:
        with open(f"/proc/{process}/task/{process}/children", encoding="ascii") as file:
            return [int(word) for word in file.read().split()]
    except (FileNotFoundError, ProcessLookupError):
        return []
