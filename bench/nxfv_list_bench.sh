#!/usr/bin/env bash
# Times `nxfv list` on real folders against `ls -l` and `find -printf`.
#
#   bench/nxfv_list_bench.sh [SIZE...]          default: 10000 100000 1000000
#
# For each SIZE it makes one folder of SIZE entries (about 1% subfolders,
# the rest regular files over twenty extensions, sparse sizes from empty to
# 8 GiB, times spread over 25 years), then runs, interleaved and REPEAT times
# each (best time kept):
#   nxfv list DIR > /dev/null
#   ls -l DIR > /dev/null                       (GNU coreutils: sorted, long form)
#   find DIR -maxdepth 1 -printf '%f %s %T@ %A@ %m\n' > /dev/null
# Peak memory comes from GNU time (%M, the largest resident size of the run).
# Bytes per entry = peak resident bytes / SIZE; "net" subtracts the peak of
# nxfv listing an empty folder (the program's own fixed cost).
#
# Targets at 1,000,000 entries and more (smaller folders carry the
# program's fixed few MB over fewer entries, so their bytes per entry are
# reported, not judged): nxfv at most 0.45x the time of `ls -l` (measured in
# the same run), and at most 450 bytes of peak resident memory per listed
# entry.
#
# Environment: NXFV (the binary; default the Release build in
# build/bench, configured and built when missing), REPEAT (default 3),
# BENCH_TMP (where the folders go; default $TMPDIR or /tmp).
# The folders are removed at the end, also on failure or Ctrl-C.
set -euo pipefail

repo=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
repeat=${REPEAT:-3}
# The targets, checked at target_from entries and more.
target_from=1000000
max_ratio=0.45  # nxfv's time over that of `ls -l`
max_bytes=450   # nxfv's peak resident bytes per listed entry
sizes=("$@")
[[ ${#sizes[@]} -gt 0 ]] || sizes=(10000 100000 1000000)
for n in "${sizes[@]}"; do
  [[ $n =~ ^[1-9][0-9]*$ ]] || { echo "usage: $0 [SIZE...]  (SIZE a positive whole number, not '$n')" >&2; exit 2; }
done

# GNU time gives the peak resident size; the shell's `time` keyword does not.
if [[ ! -x /usr/bin/time ]]; then
  if [[ $(id -u) -eq 0 ]] && command -v apt-get >/dev/null; then
    echo "installing GNU time..." >&2
    apt-get install -y -qq time >/dev/null
  else
    echo "$0: /usr/bin/time (GNU time) is missing; install the 'time' package" >&2
    exit 1
  fi
fi
command -v python3 >/dev/null || { echo "$0: python3 is needed to make the folders" >&2; exit 1; }

nxfv=${NXFV:-$repo/build/bench/apps/nxfv/nxfv}
if [[ ! -x $nxfv ]]; then
  echo "building $nxfv (Release)..." >&2
  cmake -S "$repo" -B "$repo/build/bench" -G Ninja -DCMAKE_BUILD_TYPE=Release \
    -DNXFV_BUILD_BENCH=ON -DNXFV_BUILD_TESTS=OFF >/dev/null
  cmake --build "$repo/build/bench" --target nxfv -j2 >/dev/null
fi

work=$(mktemp -d "${BENCH_TMP:-${TMPDIR:-/tmp}}/nxfv_list_bench.XXXXXX")
cleanup() { rm -rf -- "$work"; }
trap cleanup EXIT
trap 'exit 130' INT TERM

# Makes DIR with N entries in one process (a process per file would take
# longer than the listing itself).
make_folder() {
  python3 - "$1" "$2" <<'PY'
import os, random, sys
folder, n = sys.argv[1], int(sys.argv[2])
exts = ["txt", "doc", "pdf", "jpg", "png", "mp3", "zip", "exe", "so", "cpp",
        "h", "html", "xml", "json", "log", "ini", "desktop", "ico", "dat", "bak"]
stems = ["report", "IMG_", "track", "Notes ", "backup-", "data", "Rechnung_",
         "x", "setup", "photo", "Projekt ", "build_", "readme", "ÄÖÜ-"]
rng = random.Random(20240315 + n)
os.mkdir(folder)
y2000, span = 946684800, 25 * 365 * 86400
for i in range(n):
    name = str(1900 + i) if i % 997 == 500 else rng.choice(stems) + str(i)
    path = os.path.join(folder, name)
    if i % 100 == 37:
        os.mkdir(path)
    else:
        path += "." + rng.choice(exts)
        fd = os.open(path, os.O_WRONLY | os.O_CREAT | os.O_EXCL, 0o444 if i % 50 == 7 else 0o644)
        size = int(2 ** rng.uniform(0, 33)) - 1  # sparse: no disk blocks
        if size:
            os.ftruncate(fd, size)
        os.close(fd)
    t = y2000 + rng.randrange(span)
    os.utime(path, (t + rng.randrange(span // 8), t))
PY
}

# run TOOL DIR: one timed run; sets $secs and $peak_kib.
run() {
  local tool=$1 dir=$2 start end
  start=$EPOCHREALTIME
  case $tool in
    nxfv) /usr/bin/time -f %M -o "$work/mem" "$nxfv" list "$dir" >/dev/null ;;
    ls) /usr/bin/time -f %M -o "$work/mem" ls -l "$dir" >/dev/null ;;
    find) /usr/bin/time -f %M -o "$work/mem" find "$dir" -maxdepth 1 -printf '%f %s %T@ %A@ %m\n' >/dev/null ;;
  esac
  end=$EPOCHREALTIME
  secs=$(awk -v a="$start" -v b="$end" 'BEGIN { printf "%.4f", b - a }')
  peak_kib=$(tail -n 1 "$work/mem")
}

mkdir "$work/empty"
run nxfv "$work/empty"
base_kib=$peak_kib

echo "nxfv: $nxfv"
echo "load average at start: $(cut -d' ' -f1-3 /proc/loadavg) on $(nproc) cores (other jobs skew the times)"
echo "locale: LANG=${LANG:-} LC_ALL=${LC_ALL:-}; best of $repeat runs; folders under $work"
echo "nxfv on an empty folder: peak $(awk -v k="$base_kib" 'BEGIN { printf "%.1f", k / 1024 }') MB"
results=()
status=0
for n in "${sizes[@]}"; do
  dir="$work/d$n"
  t0=$EPOCHREALTIME
  make_folder "$dir" "$n"
  echo "made $n entries in $(awk -v a="$t0" -v b="$EPOCHREALTIME" 'BEGIN { printf "%.1f", b - a }') s" >&2

  # Warm the inode cache and check that nxfv lists every entry (plus the
  # go-up row and its header lines).
  find "$dir" -maxdepth 1 -printf '%s\n' >/dev/null
  rows=$("$nxfv" list "$dir" | wc -l)
  if ((rows < n + 1)); then
    echo "$0: nxfv listed $rows lines for $n entries" >&2
    status=1
  fi

  declare -A best=() peak=()
  for ((r = 0; r < repeat; r++)); do
    for tool in nxfv ls find; do
      run "$tool" "$dir"
      if [[ -z ${best[$tool]:-} ]] || awk -v a="$secs" -v b="${best[$tool]}" 'BEGIN { exit !(a < b) }'; then
        best[$tool]=$secs
      fi
      ((peak_kib > ${peak[$tool]:-0})) && peak[$tool]=$peak_kib
    done
  done
  results+=("$n ${best[nxfv]} ${peak[nxfv]} ${best[ls]} ${peak[ls]} ${best[find]} ${peak[find]}")
  unset best peak
  rm -rf -- "$dir"
done

echo
printf '%-9s | %-27s | %-16s | %-16s | %-15s\n' "" "nxfv list" "ls -l" "find -printf" "nxfv / other"
printf '%9s | %7s %7s %5s %5s | %7s %7s | %7s %7s | %7s %7s | %s\n' \
  entries s "peak MB" B/ent net s "peak MB" s "peak MB" "t/ls" "t/find" targets
summary=()
for line in "${results[@]}"; do
  read -r n ns nk ls lk fs fk <<<"$line"
  row=$(awk -v n="$n" -v ns="$ns" -v nk="$nk" -v ls="$ls" -v lk="$lk" -v fs="$fs" -v fk="$fk" -v bk="$base_kib" \
    -v max_ratio="$max_ratio" -v max_bytes="$max_bytes" -v target_from="$target_from" '
    BEGIN {
      per = nk * 1024 / n; net = (nk - bk) * 1024 / n
      tl = ns / ls; tf = ns / fs
      verdict = "-"
      if (n >= target_from) {
        verdict = (tl <= max_ratio ? "time ok" : "time OVER") ", " (per <= max_bytes ? "memory ok" : "memory OVER")
      }
      printf "%9d | %7.3f %7.1f %5.0f %5.0f | %7.3f %7.1f | %7.3f %7.1f | %6.2fx %6.2fx | %s\n",
        n, ns, nk / 1024, per, net, ls, lk / 1024, fs, fk / 1024, tl, tf, verdict
      printf "%d entries: time %.2fx of ls -l (target <= %.2fx), peak %.0f bytes/entry (target <= %d)%s\n",
        n, tl, max_ratio, per, max_bytes, (n >= target_from ? "" : " (reported; targets apply from 1,000,000)")
    }')
  echo "${row%%$'\n'*}"
  summary+=("${row#*$'\n'}")
  [[ $row == *OVER* ]] && status=1
done
echo "(B/ent: nxfv peak resident bytes per entry; net: less nxfv's peak on an empty folder)"
echo
printf '%s\n' "${summary[@]}"
exit $status
