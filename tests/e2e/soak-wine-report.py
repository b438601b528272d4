#!/usr/bin/env python3
"""soak-wine-report.py SAMPLES EVENTS OUT.md MINUTES SAMPLE_SECONDS CYCLE_SECONDS CALLS

Reads the samples of soak-wine.sh and writes the markdown table of the run: every
sample, then per figure the low points of the job cycles after the warm-up, their
slope per hour (least squares over the cycles' low points) and whether it is within
its limit. Exit 1 when a slope is over its limit or there are too few samples.

A sample line: seconds cycle pid ws_kb private_kb handles gdi user threads
linux_rss_kb linux_anon_kb linux_threads state_word ("none" in place of the probe's six
when the monitor was not running). The low points are taken between transfers (state
word "0") only.
"""
import sys

# Limits per hour of the slope of the low points after the warm-up. The monitor was
# seen growing by about 13 MB an hour with a job every 90 s (its working set's low
# point climbed 0.3 MB a job); a quarter of that is the limit for memory, well above
# the wobble of a flat run (Wine's heap and the page cache move the working set by a
# few hundred KB between cycles). Handles, objects and threads are counts: a handful
# per hour is a leak of one per few jobs, which a flat run does not show.
# The events of soak-wine.sh come in turn, one a cycle: a round is six cycles.
ROUND = 6

LIMITS = {
    "working set KB": 3 * 1024,
    "private KB": 3 * 1024,
    "handles": 20,
    "GDI objects": 20,
    "USER objects": 20,
    "threads": 2,
}


def main():
    samples_path, events_path, out_path = sys.argv[1:4]
    minutes, every, cycle, calls = (int(v) for v in sys.argv[4:8])
    rows = []
    for line in open(samples_path):
        f = line.split()
        if len(f) != 13 or f[2] == "none":
            continue
        try:
            t, c, pid, ws, priv, handles, gdi, user, threads = (int(v) for v in f[:9])
        except ValueError:
            continue
        anon = int(f[10]) if f[10].isdigit() else 0
        rows.append(dict(t=t, cycle=c, pid=pid, ws=ws, priv=priv, anon=anon, handles=handles,
                         gdi=gdi, user=user, threads=threads, idle=f[12] == "0"))
    events = [l.rstrip("\n") for l in open(events_path)] if events_path else []

    out = []
    w = out.append
    w("# Long run under Wine: %d minutes, a job every %d s, a sample every %d s\n" %
      (minutes, cycle, every))
    if not rows:
        w("No sample of the monitor was taken.\n")
        open(out_path, "w").write("\n".join(out))
        return 1

    private_from_probe = any(r["priv"] for r in rows)
    gdi_answered = any(r["gdi"] for r in rows)
    user_answered = any(r["user"] for r in rows)
    handles_answered = any(r["handles"] > 0 for r in rows)
    figures = [("working set KB", "ws", True)]
    figures.append(("private KB", "priv" if private_from_probe else "anon", True))
    figures.append(("handles", "handles", handles_answered))
    figures.append(("GDI objects", "gdi", gdi_answered))
    figures.append(("USER objects", "user", user_answered))
    figures.append(("threads", "threads", True))

    w("| s | cycle | pid | working set MB | private MB | handles | GDI | USER | threads |")
    w("|---|---|---|---|---|---|---|---|---|")
    for r in rows:
        w("| %d | %d | %d | %.1f | %.1f | %s | %s | %s | %d |" % (
            r["t"], r["cycle"], r["pid"], r["ws"] / 1024,
            (r["priv"] if private_from_probe else r["anon"]) / 1024,
            r["handles"] if handles_answered else "-", r["gdi"] if gdi_answered else "-",
            r["user"] if user_answered else "-", r["threads"]))
    w("")

    # The warm-up: the cycles of the monitor's first process, and of the one measured
    # the first fifth (at least one cycle) and at least every cycle up to the first in
    # which the engine's connection reached it. The first connection leaves COM's
    # workers behind for the life of the process (19 handles and about 6 MB under
    # Wine, a bare server the same), which is a step, not a climb.
    last_pid = rows[-1]["pid"]
    measured = [r for r in rows if r["pid"] == last_pid]
    cycles = sorted({r["cycle"] for r in measured if r["cycle"] > 0})
    if len(cycles) < 3:
        w("Too few job cycles after the monitor's restart to tell a slope (%d).\n" % len(cycles))
        open(out_path, "w").write("\n".join(out))
        return 1
    skip = max(1, len(cycles) // 5)
    # A connection shows as the threads that serve it, above the fewest the process had.
    fewest = min(r["threads"] for r in measured)
    connected = [r["cycle"] for r in measured if r["threads"] > fewest and r["cycle"] > 0]
    if connected:
        skip = max(skip, cycles.index(min(connected)) + 1)
    # A run long enough for it also warms up through the restart's cycle and one round
    # of the six events after it, so that each comes once before the low points are
    # taken (its first time loads code, pictures and Wine's libraries for good).
    if len(cycles) >= ROUND + 1 + 6:
        skip = max(skip, ROUND + 1)
    if len(cycles) - skip < 2:
        w("Too few job cycles after the warm-up to tell a slope (%d).\n" % (len(cycles) - skip))
        open(out_path, "w").write("\n".join(out))
        return 1
    kept = set(cycles[skip:])
    # The low point of a cycle is taken between two transfers: with a sample a minute
    # and a job every 90 s, cycles are taken together until a group has two samples
    # taken while no transfer ran.
    groups, group = [], []
    for c in sorted(kept):
        group.append(c)
        if sum(1 for r in measured if r["cycle"] in group and r["idle"]) >= 2:
            groups.append(group)
            group = []
    if group and groups:
        groups[-1].extend(group)
    elif group:
        groups.append(group)
    first = "the monitor's first process, and " if len({r["pid"] for r in rows}) > 1 else ""
    w("Warm-up: " + first + "cycles %d to %d of the process measured (pid %d); "
      "slopes over the low points between transfers of cycles %d to %d, in %d groups of "
      "at least two such samples.\n" % (cycles[0], cycles[skip - 1], last_pid, min(kept), max(kept), len(groups)))

    hours = max(1e-9, (rows[-1]["t"] - rows[0]["t"]) / 3600.0)
    w("The engine made %d progress calls, %.0f an hour.\n" % (calls, calls / hours))
    span = max(1e-9, (max(r["t"] for r in measured if r["cycle"] in kept) -
                      min(r["t"] for r in measured if r["cycle"] in kept)) / 3600.0)
    w("| figure | first low | last low | lowest | highest | slope per hour | limit per hour | |")
    w("|---|---|---|---|---|---|---|---|")
    failed = 0
    for name, key, answered in figures:
        if not answered:
            note = {"gdi": "GetGuiResources answers 0 under Wine",
                    "user": "GetGuiResources answers 0 under Wine",
                    "handles": "the handle table could not be read"}[key]
            w("| %s | - | - | - | - | - | %s | not measured: %s |" % (name, LIMITS[name], note))
            continue
        lows = []
        for g in groups:
            inside = [r for r in measured if r["cycle"] in g and r["idle"]]
            if not inside:
                continue
            low = min(inside, key=lambda r: r[key])
            lows.append((low["t"] / 3600.0, low[key]))
        n = len(lows)
        if n < 2:
            # One low point has no slope: the run was too short to tell.
            w("| %s | - | - | - | - | - | %s | too few low points (%d) |" % (name, LIMITS[name], n))
            failed += 1
            continue
        mx = sum(x for x, _ in lows) / n
        my = sum(y for _, y in lows) / n
        sxx = sum((x - mx) ** 2 for x, _ in lows)
        slope = sum((x - mx) * (y - my) for x, y in lows) / sxx if sxx else 0.0
        limit = LIMITS[name]
        if name.endswith("KB"):
            # Less than 1 MB over the window measured cannot be told from the wobble of
            # the heap (a short run's slope per hour is that wobble times many); 2 MB when
            # the window is shorter than one round of the six events, as each then comes
            # for the first time inside it and loads its code and pictures.
            floor = 1024 if len(kept) >= ROUND else 2048
            limit = max(limit, floor / span)
        ok = slope <= limit
        failed += not ok
        values = [r[key] for r in measured if r["cycle"] in kept]
        label = name + ("" if key != "anon" else " (Linux RssAnon; Wine's PrivateUsage is 0)")
        w("| %s | %d | %d | %d | %d | %+.0f | %d | %s |" % (
            label, lows[0][1], lows[-1][1], min(values), max(values), slope, limit,
            "flat" if ok else "GROWS"))
    w("")
    if events:
        w("Events (seconds from the start):\n")
        w("```")
        out.extend(events)
        w("```")
    open(out_path, "w").write("\n".join(out) + "\n")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
