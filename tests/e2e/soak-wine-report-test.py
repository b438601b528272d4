#!/usr/bin/env python3
"""soak-wine-report-test.py REPORT.py

The pass rule of the long run under Wine on made-up samples: a flat run passes, memory,
handles or threads that climb between transfers fail, Wine's share per progress call is
allowed for and no more, and a run too short to give a slope fails instead of passing.
"""
import os
import subprocess
import sys
import tempfile

REPORT = sys.argv[1]
failures = []


def samples(cycles, ws_step=0, handle_step=0, thread_step=0, every=60, cycle=90):
    """A run: the monitor's first process for cycle 1, then a second one; within each
    cycle the first half is a transfer (5 MB more, 12 handles, 5 threads), the rest quiet."""
    lines = []
    t = 0
    while t < cycles * cycle:
        c = t // cycle + 1
        pid = 100 if c == 1 else 200
        busy = (t % cycle) < cycle // 2
        ws = 34000 + ws_step * c + (5000 if busy else 0)
        handles = 68 + handle_step * c + (12 if busy else 0)
        threads = 2 + thread_step * c + (5 if busy else 0)
        lines.append("%d %d %d %d 0 %d 0 0 %d %d %d %d %s" % (
            t, c, pid, ws, handles, threads, ws, ws - 21000, threads, "1" if busy else "0"))
        t += every
    return "\n".join(lines) + "\n"


def run(name, text, minutes, calls, want_rc, want=(), unwanted=()):
    with tempfile.TemporaryDirectory() as d:
        s, e, o = (os.path.join(d, n) for n in ("s.txt", "e.txt", "o.md"))
        open(s, "w").write(text)
        open(e, "w").write("")
        rc = subprocess.call([sys.executable, REPORT, s, e, o, str(minutes), "60", "90",
                              str(calls)])
        out = open(o).read() if os.path.exists(o) else ""
    if rc != want_rc:
        failures.append("%s: exit %d, wanted %d\n%s" % (name, rc, want_rc, out))
    for line in want:
        if line not in out:
            failures.append("%s: no %r in\n%s" % (name, line, out))
    for line in unwanted:
        if line in out:
            failures.append("%s: %r in\n%s" % (name, line, out))


# Thirty minutes with nothing climbing.
run("flat", samples(20), 30, 0, 0, want=["| working set KB | 34", "| flat |"],
    unwanted=["GROWS"])
# 400 KB more after every job: about 16 MB an hour.
run("memory", samples(20, ws_step=400), 30, 0, 1, want=["| working set KB |", "GROWS"])
# The same climb is Wine's when the engine made enough calls for it (0.25 KB each)...
run("wine's share", samples(20, ws_step=400), 30, 80000, 0, unwanted=["GROWS"])
# ...and not when it made a tenth of them.
run("not wine's share", samples(20, ws_step=400), 30, 8000, 1, want=["GROWS"])
# A handle or a thread more with every job.
run("handles", samples(20, handle_step=1), 30, 0, 1, want=["| handles |", "GROWS"])
run("threads", samples(20, thread_step=1), 30, 0, 1, want=["| threads |", "GROWS"])
# Too few cycles after the restart, or one low point after the warm-up, give no slope:
# that fails rather than passing as flat.
run("too short", samples(3), 5, 0, 1)
run("one low point", samples(5), 8, 0, 1, want=["too few low points"])

for f in failures:
    print("FAIL", f)
print("soak-wine-report-test: %d failures" % len(failures))
sys.exit(1 if failures else 0)
