#!/usr/bin/env python3
"""soak-wine-report-test.py REPORT.py

The pass rule of the long run under Wine on made-up samples: a flat run passes, memory,
handles or threads that climb between transfers fail, however many calls the engine made,
not allowed for (the engine's calls count for nothing), the step of the measured process's
first connection is warm-up, and a run too short to give a slope fails instead of passing.
"""
import os
import subprocess
import sys
import tempfile

REPORT = sys.argv[1]
failures = []


def samples(cycles, ws_step=0, handle_step=0, thread_step=0, every=60, cycle=90,
            unconnected=0, first_of_all=0):
    """A run: the monitor's first process for cycle 1, then a second one; within each
    cycle the first half is a transfer (5 MB more, 12 handles, 5 threads), the rest quiet.
    The second process's first `unconnected` cycles have no transfer reaching it, and
    so not yet what the first connection leaves behind (6 MB and 19 handles). From its
    seventh cycle on it holds `first_of_all` KB more: what the round's last event, met for
    the first time, loaded for good."""
    lines = []
    t = 0
    while t < cycles * cycle:
        c = t // cycle + 1
        pid = 100 if c == 1 else 200
        before = pid == 200 and c < 2 + unconnected
        busy = (t % cycle) < cycle // 2 and not before
        ws = 34000 + ws_step * c + (5000 if busy else 0) - (6000 if before else 0)
        ws += first_of_all if pid == 200 and c >= 7 else 0
        handles = 68 + handle_step * c + (12 if busy else 0) - (19 if before else 0)
        threads = 2 + thread_step * c + (5 if busy else 0)
        lines.append("%d %d %d %d 0 %d 0 0 %d %d %d %d %s" % (
            t, c, pid, ws, handles, threads, ws, ws - 21000, threads, "1" if busy else "0"))
        t += every
    return "\n".join(lines) + "\n"


def run(name, text, minutes, calls, want_rc, want=(), unwanted=(), every=60, cycle=90):
    with tempfile.TemporaryDirectory() as d:
        s, e, o = (os.path.join(d, n) for n in ("s.txt", "e.txt", "o.md"))
        open(s, "w").write(text)
        open(e, "w").write("")
        rc = subprocess.call([sys.executable, REPORT, s, e, o, str(minutes), str(every),
                              str(cycle), str(calls)])
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
# 400 KB more after every job: about 16 MB an hour, also with the calls of a busy engine.
run("memory", samples(20, ws_step=400), 30, 0, 1, want=["| working set KB |", "GROWS"])
run("memory with calls", samples(20, ws_step=400), 30, 130000, 1, want=["GROWS"])
# A step when the round's last event first comes is warm-up in a run of 20 cycles; the
# same step again and again is not.
run("first round", samples(20, first_of_all=4000), 30, 0, 0, unwanted=["GROWS"])
run("climb after the first round", samples(20, first_of_all=4000, ws_step=400), 30, 0, 1,
    want=["GROWS"])
# Three minutes as make test runs them: the restarted monitor is first reached by the
# engine in its second cycle; its quiet samples before that are not a low point.
short = dict(every=5, cycle=25)
run("first connection late", samples(7, unconnected=2, **short), 3, 0, 0,
    unwanted=["GROWS"], **short)
# Three minutes tell only a climb of about a megabyte a job.
run("climb after a late connection", samples(7, unconnected=2, ws_step=1000, **short), 3, 0, 1,
    want=["GROWS"], **short)
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
