#!/usr/bin/env bash
# Regenerates the README's pictures of the demo browser (docs/screenshots/):
# a small demo folder (files of several types, a subfolder, a ZIP archive)
# in the report, icon and list views, and the inside of the archive.
#
#   scripts/screenshots.sh            uses build/release (built when missing)
#   NXFV_BROWSER=path/to/nxfv-browser scripts/screenshots.sh
#
# The windows are drawn offscreen (no display needed) at a fixed size, with a
# throwaway home folder and fixed file times, so that runs on different
# machines give the same pictures apart from the volumes in the side panel.
set -euo pipefail
cd "$(dirname "$0")/.."

browser=${NXFV_BROWSER:-build/release/apps/nxfv-browser/nxfv-browser}
if [[ ! -x $browser ]]; then
  cmake --preset release -DNXFV_BUILD_QT=ON >/dev/null
  cmake --build --preset release --target nxfv-browser
fi
command -v zip >/dev/null || { echo "$0: zip is needed for the demo archive (scripts/install-deps.sh installs it)" >&2; exit 1; }

# A fixed place, so that the address bar reads the same on every machine.
work=${TMPDIR:-/tmp}/nxfv-screenshots
rm -rf -- "$work"
mkdir -p "$work"
trap 'rm -rf -- "$work"' EXIT
home="$work/home"
demo="$home/Demo"
mkdir -p "$home"/{Desktop,Documents,Music,Pictures,Videos} "$demo/Projects/site"

# Contents only matter for the sizes; the types come from the names.
printf 'Shopping: milk, bread, coffee\n' >"$demo/notes.txt"
printf '# Demo\n\nA folder to show the browser with.\n' >"$demo/README.md"
head -c 48213 /dev/zero >"$demo/report.pdf"
head -c 182344 /dev/zero >"$demo/holiday.jpg"
head -c 3311702 /dev/zero >"$demo/song.mp3"
printf '{"name": "demo", "version": 1}\n' >"$demo/data.json"
printf '#!/bin/sh\necho hello\n' >"$demo/hello.sh" && chmod +x "$demo/hello.sh"
printf '<!doctype html><title>Demo</title>\n' >"$demo/Projects/site/index.html"
printf 'body { margin: 0 }\n' >"$demo/Projects/site/style.css"
head -c 9000 /dev/zero >"$demo/Projects/plan.ods"
printf 'a hidden file\n' >"$demo/.hidden-settings"
# Fixed, distinct times: the report view's dates and the sort stay put.
stamp() {
  local minute=0 f
  while IFS= read -r -d '' f; do
    touch -h -d "2026-03-14 09:$(printf '%02d' $((minute % 60))):00" "$f"
    minute=$((minute + 7))
  done < <(find "$demo" -mindepth 1 -print0 | sort -z)
}
stamp
# -D: file entries only, the way most archives people receive are made.
(cd "$demo" && zip -q -X -D -r photos.zip notes.txt README.md holiday.jpg Projects)
stamp

out=docs/screenshots
mkdir -p "$out"
shoot() {
  local file=$1 path=$2 view=$3
  HOME="$home" LC_ALL=C.UTF-8 XDG_CONFIG_HOME="$home/.config" QT_QPA_PLATFORM=offscreen \
    "$browser" --screenshot "$out/$file" "$path" --view "$view" --size 900x520
  echo "wrote $out/$file"
}
shoot report.png "$demo" report
shoot icons.png "$demo" icon
shoot list.png "$demo" list
shoot archive.png "$demo/photos.zip" report
