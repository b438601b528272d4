#!/usr/bin/env bash
# screenshot.sh OUT.png: the whole virtual screen of $DISPLAY (set by with-wine.sh).
# The picture appears under its name only when complete, so a program that polls for
# the file (the end-to-end tests start this script from inside Wine, where they
# cannot wait for a Unix process) never reads half of one.
set -euo pipefail
out=${1:?usage: screenshot.sh OUT.png}
mkdir -p "$(dirname "$out")"
part="${out%.png}.part.png"
xwd -root -silent -display "${DISPLAY:?no DISPLAY; run inside tools/with-wine.sh}" \
  | /usr/bin/convert-im6.q16 xwd:- "$part"
mv -f "$part" "$out"
