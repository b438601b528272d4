#!/usr/bin/env bash
# screenshot.sh OUT.png: the whole virtual screen of $DISPLAY (set by with-wine.sh).
set -euo pipefail
out=${1:?usage: screenshot.sh OUT.png}
mkdir -p "$(dirname "$out")"
xwd -root -silent -display "${DISPLAY:?no DISPLAY; run inside tools/with-wine.sh}" \
  | /usr/bin/convert-im6.q16 xwd:- "$out"
