#!/usr/bin/env bash
# Builds the programs and shows a folder (default: your home folder) with the
# control. With a display ($DISPLAY or $WAYLAND_DISPLAY) it opens the demo
# browser window; without one it lists the folder with `nxfv list` and draws
# the browser window offscreen into nxfv-browser.png, so the control can be
# seen either way. Arguments go to `nxfv list` (e.g. --pattern "*.txt" DIR).
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
# The browser needs the Qt front end; a build directory configured before Qt
# was there would otherwise keep it switched off.
cmake --preset release -DNXFV_BUILD_QT=ON >/dev/null
cmake --build --preset release
nxfv=build/release/apps/nxfv/nxfv
browser=build/release/apps/nxfv-browser/nxfv-browser

# The folder the browser shows: the first argument that is not an option.
folder="$HOME"
for arg in "$@"; do
  case "$arg" in -*) ;; *) folder="$arg"; break ;; esac
done

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ] && [ -x "$browser" ]; then
  exec "$browser" "$folder"
fi
status=0
"$nxfv" list "${@:-$HOME}" || status=$?
if [ -x "$browser" ]; then
  if "$browser" --screenshot nxfv-browser.png "$folder"; then
    echo "(no display: the browser window showing $folder is in $(pwd)/nxfv-browser.png)" >&2
  fi
fi
exit "$status"
