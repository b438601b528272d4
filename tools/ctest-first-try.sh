#!/usr/bin/env bash
# ctest-first-try.sh OUT_DIR [--] CTEST COMMAND...
#
# Runs the ctest command once; every test counts by that first run. The one
# exception is a test that Wine did not start at all, which under load happens now
# and then: it failed within a second and wrote nothing, not even the test
# program's first line. Those alone run once more, and the summary names them.
#
# Writes OUT_DIR/ctest-first.xml (the first run, JUnit), OUT_DIR/ctest-retry.xml
# (the second, when there was one) and OUT_DIR/ctest-retried.txt (one line per test
# run again, with the result of its second run; empty when none was). The first
# run's own count is printed as "first try: ..."; the last line is the count with
# each test taken at its last run, in ctest's words, for `make test` to add up.
set -uo pipefail

if [ $# -lt 2 ]; then
  echo "usage: $0 OUT_DIR [--] CTEST COMMAND..." >&2
  exit 2
fi
out=$(mkdir -p "$1" && cd "$1" && pwd)
shift
[ "${1:-}" = "--" ] && shift
first=$out/ctest-first.xml
retry=$out/ctest-retry.xml
retried=$out/ctest-retried.txt
rm -f "$first" "$retry" "$retried"
: >"$retried"

"$@" --output-junit "$first" 2>&1 | sed -u 's/^\([0-9]*% tests passed, \)/first try: \1/'
rc=${PIPESTATUS[0]}
if [ ! -s "$first" ]; then
  echo "ctest-first-try: ctest wrote no results (exit $rc)" >&2
  exit "$rc"
fi

# The tests Wine did not start, as one anchored pattern for -R (empty: none).
notStarted() {
  python3 - "$first" <<'PY'
import re, sys, xml.etree.ElementTree as ET
names = []
for case in ET.parse(sys.argv[1]).getroot().iter("testcase"):
    if case.get("status") != "fail":
        continue
    out = "".join(e.text or "" for e in case.iter("system-out"))
    if float(case.get("time") or 0) < 1.0 and not out.strip():
        names.append(re.escape(case.get("name")))
print("^(" + "|".join(names) + ")$" if names else "")
PY
}
pattern=$(notStarted)
if [ -n "$pattern" ]; then
  echo "ctest-first-try: Wine did not start some test programs; running those once more"
  "$@" -R "$pattern" --output-junit "$retry" 2>&1 | sed -u 's/^\([0-9]*% tests passed, \)/second try: \1/'
fi

# The count with each test at its last run, and the list of the ones run again.
python3 - "$first" "$retry" "$retried" <<'PY'
import os, sys, xml.etree.ElementTree as ET
def results(path):
    if not os.path.exists(path) or os.path.getsize(path) == 0:
        return {}
    return {c.get("name"): c.get("status") for c in ET.parse(path).getroot().iter("testcase")}
first, second = results(sys.argv[1]), results(sys.argv[2])
ran = {n: s for n, s in first.items() if s in ("run", "fail")}
lines = []
for name, status in second.items():
    if name in ran:
        ran[name] = status
        lines.append("%s (wrote nothing, as when Wine does not start a program; second run %s)" % (name, "passed" if status == "run" else "FAILED"))
with open(sys.argv[3], "w") as f:
    f.writelines(l + "\n" for l in lines)
failed = sorted(n for n, s in ran.items() if s == "fail")
total = len(ran)
for l in lines:
    print("needed a second run: " + l)
for n in failed:
    print("failed: " + n)
pct = 100 if not failed else (total - len(failed)) * 100 // max(total, 1)
print("%d%% tests passed, %d tests failed out of %d" % (pct, len(failed), total))
sys.exit(1 if failed else 0)
PY
