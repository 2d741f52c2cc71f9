#!/usr/bin/env bash
# Times the demo browser's window on real folders against `nxfv list`.
#
#   bench/window_bench.sh [SIZE...]        default: 100000
#
# For each SIZE it makes one folder of SIZE entries with the generator of
# bench/nxfv_list_bench.sh (same names, types, sizes and times), then runs,
# interleaved and REPEAT times each (best time kept, largest peak kept):
#   nxfv list DIR > /dev/null                        whole run, wall clock
#   nxfv-browser --bench DIR                         offscreen window:
#     first paint: from setting the control's current folder to the report
#                  view's first painted frame of the new listing
#     scroll end:  from scrolling to the last row to that frame painted
# Peak memory of both comes from GNU time (%M, the largest resident size).
#
# Targets: first paint <= 1.2x the time of `nxfv list`, scroll end < 50 ms,
# browser peak memory <= 1.3x that of `nxfv list`.
#
# Environment: NXFV and NXFV_BROWSER (the binaries; default the Release build
# in build/bench, configured and built when missing), REPEAT (default 3),
# BENCH_TMP (where the folders go; default $TMPDIR or /tmp).
set -euo pipefail

repo=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
repeat=${REPEAT:-3}
sizes=("$@")
[[ ${#sizes[@]} -gt 0 ]] || sizes=(100000)
for n in "${sizes[@]}"; do
  [[ $n =~ ^[1-9][0-9]*$ ]] || { echo "usage: $0 [SIZE...]  (SIZE a positive whole number, not '$n')" >&2; exit 2; }
done
if [[ ! -x /usr/bin/time ]]; then
  echo "$0: /usr/bin/time (GNU time) is missing; install the 'time' package" >&2
  exit 1
fi
command -v python3 >/dev/null || { echo "$0: python3 is needed to make the folders" >&2; exit 1; }

nxfv=${NXFV:-$repo/build/bench/apps/nxfv/nxfv}
browser=${NXFV_BROWSER:-$repo/build/bench/apps/nxfv-browser/nxfv-browser}
if [[ ! -x $nxfv || ! -x $browser ]]; then
  echo "building nxfv and nxfv-browser (Release, build/bench)..." >&2
  cmake -S "$repo" -B "$repo/build/bench" -G Ninja -DCMAKE_BUILD_TYPE=Release \
    -DNXFV_BUILD_BENCH=ON -DNXFV_BUILD_TESTS=OFF -DNXFV_BUILD_QT=ON >/dev/null
  cmake --build "$repo/build/bench" --target nxfv nxfv-browser -j2 >/dev/null
fi

work=$(mktemp -d "${BENCH_TMP:-${TMPDIR:-/tmp}}/window_bench.XXXXXX")
cleanup() { rm -rf -- "$work"; }
trap cleanup EXIT
trap 'exit 130' INT TERM

# The folder generator is the one of nxfv_list_bench.sh (its Python part),
# so that both benchmarks list the same kind of folder.
sed -n "/^  python3 - \"\$1\" \"\$2\" <<'PY'\$/,/^PY\$/{//!p}" "$repo/bench/nxfv_list_bench.sh" >"$work/make_folder.py"
grep -q 'os.mkdir(folder)' "$work/make_folder.py" || { echo "$0: cannot find the generator in nxfv_list_bench.sh" >&2; exit 1; }

echo "nxfv: $nxfv"
echo "nxfv-browser: $browser"
echo "load average at start: $(cut -d' ' -f1-3 /proc/loadavg) on $(nproc) cores (other jobs skew the times)"
status=0
printf '\n%9s | %9s %8s | %10s %10s %8s | %7s %7s | %s\n' entries "list s" "peak MB" "paint ms" "scroll ms" "peak MB" "t ratio" "m ratio" verdict
for n in "${sizes[@]}"; do
  dir="$work/d$n"
  python3 "$work/make_folder.py" "$dir" "$n"
  find "$dir" -maxdepth 1 -printf '%s\n' >/dev/null  # warm the inode cache
  best_list="" best_paint="" best_scroll="" peak_list=0 peak_browser=0 rows=""
  for ((r = 0; r < repeat; r++)); do
    start=$EPOCHREALTIME
    /usr/bin/time -f %M -o "$work/mem" "$nxfv" list "$dir" >/dev/null
    secs=$(awk -v a="$start" -v b="$EPOCHREALTIME" 'BEGIN { printf "%.4f", b - a }')
    kib=$(tail -n 1 "$work/mem")
    ((kib > peak_list)) && peak_list=$kib
    [[ -z $best_list ]] || awk -v a="$secs" -v b="$best_list" 'BEGIN { exit !(a >= b) }' || best_list=$secs
    [[ -n $best_list ]] || best_list=$secs

    line=$(/usr/bin/time -f %M -o "$work/mem" env QT_QPA_PLATFORM=offscreen "$browser" --bench "$dir")
    kib=$(tail -n 1 "$work/mem")
    ((kib > peak_browser)) && peak_browser=$kib
    rows=$(sed -n 's/.*rows=\([0-9]*\).*/\1/p' <<<"$line")
    paint=$(sed -n 's/.*first_paint_ms=\([0-9.]*\).*/\1/p' <<<"$line")
    scroll=$(sed -n 's/.*scroll_end_ms=\([0-9.]*\).*/\1/p' <<<"$line")
    [[ -z $best_paint ]] || awk -v a="$paint" -v b="$best_paint" 'BEGIN { exit !(a >= b) }' || best_paint=$paint
    [[ -n $best_paint ]] || best_paint=$paint
    [[ -z $best_scroll ]] || awk -v a="$scroll" -v b="$best_scroll" 'BEGIN { exit !(a >= b) }' || best_scroll=$scroll
    [[ -n $best_scroll ]] || best_scroll=$scroll
  done
  if ((rows < n)); then
    echo "$0: the browser showed $rows rows for $n entries" >&2
    status=1
  fi
  awk -v n="$n" -v ls="$best_list" -v lk="$peak_list" -v p="$best_paint" -v s="$best_scroll" -v bk="$peak_browser" '
    BEGIN {
      tr = p / 1000 / ls; mr = bk / lk
      verdict = (tr <= 1.2 ? "time ok" : "time OVER") ", " (s < 50 ? "scroll ok" : "scroll OVER") ", " (mr <= 1.3 ? "memory ok" : "memory OVER")
      printf "%9d | %9.3f %8.1f | %10.1f %10.1f %8.1f | %6.2fx %6.2fx | %s\n", n, ls, lk / 1024, p, s, bk / 1024, tr, mr, verdict
      exit (verdict ~ /OVER/)
    }' || status=1
  rm -rf -- "$dir"
done
echo "(t ratio: browser first paint / nxfv list run; m ratio: browser peak / nxfv list peak)"
exit $status
