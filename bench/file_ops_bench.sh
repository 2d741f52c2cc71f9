#!/usr/bin/env bash
# Times the nxfv file commands against the system's own tools, in one run:
#
#   copy  10,000 small files (one folder)      nxfv copy      vs  cp -a
#   copy  one large file (LARGE_MB, 1 GiB)      nxfv copy      vs  cp -a
#   move  both across file systems (a tmpfs)    nxfv move      vs  mv        (root only)
#   trash 10,000 files                          nxfv delete --trash  vs  gio trash
#
#   bench/file_ops_bench.sh
#   LARGE_MB=256 SMALL_FILES=2000 REPEAT=1 bench/file_ops_bench.sh     # a quick run
#
# Each pair runs interleaved REPEAT times (default 3; who goes first
# alternates), the best time kept
# (wall clock, and CPU seconds from GNU time when installed);
# `sync` runs (untimed) before every timed command so that one command's
# write-back does not slow the next. The small files hold 0 to 16 KiB each
# (about 80 MB in all), over 100 subfolders. Trash runs with XDG_DATA_HOME
# in the work folder, so the user's own trash is left alone, and trashes
# every file as its own item, as a file manager does. Goals: copy and move
# at most 1.1x the time of cp/mv, trash at most 1.5x that of gio trash; the
# script exits 1 when one is missed.
#
# Environment: NXFV (the binary; default the Release build in build/bench,
# configured and built when missing), LARGE_MB (default 1024), SMALL_FILES
# (default 10000), REPEAT, BENCH_TMP (where the work folder goes; default
# $TMPDIR or /tmp; it needs room for three copies of everything). The work
# folder and the tmpfs are removed at the end, also on failure or Ctrl-C.
set -euo pipefail

repo=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
repeat=${REPEAT:-3}
large_mb=${LARGE_MB:-1024}
small=${SMALL_FILES:-10000}
for v in "$repeat" "$large_mb" "$small"; do
  [[ $v =~ ^[1-9][0-9]*$ ]] || { echo "$0: REPEAT, LARGE_MB and SMALL_FILES are positive whole numbers" >&2; exit 2; }
done
command -v python3 >/dev/null || { echo "$0: python3 is needed to make the files" >&2; exit 1; }
have_gio=1
command -v gio >/dev/null || { have_gio=0; echo "$0: gio (libglib2.0-bin) is missing; the trash case is left out" >&2; }

nxfv=${NXFV:-$repo/build/bench/apps/nxfv/nxfv}
if [[ ! -x $nxfv ]]; then
  echo "building $nxfv (Release)..." >&2
  cmake -S "$repo" -B "$repo/build/bench" -G Ninja -DCMAKE_BUILD_TYPE=Release \
    -DNXFV_BUILD_BENCH=ON -DNXFV_BUILD_TESTS=OFF >/dev/null
  cmake --build "$repo/build/bench" --target nxfv -j2 >/dev/null
fi

work=$(mktemp -d "${BENCH_TMP:-${TMPDIR:-/tmp}}/nxfv_file_ops_bench.XXXXXX")
mounted=""
cleanup() {
  [[ -n $mounted ]] && umount "$mounted" 2>/dev/null
  rm -rf -- "$work"
}
trap cleanup EXIT
trap 'exit 130' INT TERM

# One process makes every small file (a process per file would take longer
# than the copy).
python3 - "$work/small" "$small" <<'PY'
import os, random, sys
root, n = sys.argv[1], int(sys.argv[2])
rng = random.Random(4242)
os.mkdir(root)
for d in range(100):
    os.mkdir(os.path.join(root, "d%02d" % d))
for i in range(n):
    with open(os.path.join(root, "d%02d" % (i % 100), "file-%05d.dat" % i), "wb") as f:
        f.write(rng.randbytes(rng.randrange(16 * 1024)))
PY
mkdir "$work/large"
head -c "$((large_mb << 20))" /dev/urandom >"$work/large/big.bin"
mkdir "$work/trash-src"
python3 - "$work/trash-src" "$small" <<'PY'
import os, sys
for i in range(int(sys.argv[2])):
    open(os.path.join(sys.argv[1], "t-%05d.txt" % i), "w").close()
PY
# Warm the cache for both tools alike.
cat "$work/large/big.bin" >/dev/null
find "$work/small" -type f -exec cat {} + >/dev/null

other=""
if [[ $(id -u) -eq 0 ]]; then
  mkdir "$work/other"
  if mount -t tmpfs -o "size=$((large_mb * 2 + 512))m" tmpfs "$work/other" 2>/dev/null; then
    other=$work/other
    mounted=$other
  fi
fi
[[ -n $other ]] || echo "$0: no tmpfs could be mounted (run as root): the move cases are left out" >&2

# timed COMMAND: runs the shell command after an untimed sync; sets $secs
# (wall clock) and $cpu (user + system seconds, from GNU time when present:
# it suffers less than the wall clock from other jobs on a busy machine).
timed() {
  sync
  local start=$EPOCHREALTIME
  if [[ -x /usr/bin/time ]]; then
    /usr/bin/time -f '%U %S' -o "$work/cpu" bash -c "$1" >/dev/null
    cpu=$(awk '{ printf "%.3f", $1 + $2 }' "$work/cpu")
  else
    bash -c "$1" >/dev/null
    cpu=0
  fi
  secs=$(awk -v a="$start" -v b="$EPOCHREALTIME" 'BEGIN { printf "%.4f", b - a }')
}
keep_best() {  # keep_best VAR SECS
  if [[ -z ${!1:-} ]] || awk -v a="$2" -v b="${!1}" 'BEGIN { exit !(a < b) }'; then printf -v "$1" '%s' "$2"; fi
}

results=()
status=0
# pair NAME GOAL SETUP NXFV_CMD OTHER_CMD: SETUP (untimed) runs before each timed command with
# the word TARGET replaced; the commands take TARGET too.
pair() {
  local name=$1 goal=$2 setup=$3 mine=$4 theirs=$5 best_n="" best_o="" cpu_n="" cpu_o="" r
  # Who goes first alternates, so that neither profits from the order.
  for ((r = 0; r < 2 * repeat; r++)); do
    if (((r + r / 2) % 2 == 0)); then
      eval "${setup//TARGET/$work/out-n}"
      timed "${mine//TARGET/$work/out-n}"
      keep_best best_n "$secs"
      keep_best cpu_n "$cpu"
    else
      eval "${setup//TARGET/$work/out-o}"
      timed "${theirs//TARGET/$work/out-o}"
      keep_best best_o "$secs"
      keep_best cpu_o "$cpu"
    fi
  done
  rm -rf -- "$work/out-n" "$work/out-o"
  results+=("$name|$best_n|$best_o|$goal|$cpu_n|$cpu_o")
}

fresh='rm -rf -- TARGET'
pair "copy $small small files" 1.1 "$fresh" \
  "'$nxfv' copy --no-confirm --silent '$work/small' TARGET" "cp -a '$work/small' TARGET"
pair "copy ${large_mb} MiB file" 1.1 "$fresh" \
  "'$nxfv' copy --no-confirm --silent '$work/large/big.bin' TARGET" "cp -a '$work/large/big.bin' TARGET"
if [[ -n $other ]]; then
  # The source is made again (untimed) before each move: a move uses it up.
  pair "move $small small files across" 1.1 "rm -rf -- '$other/moved' TARGET; cp -a '$work/small' TARGET" \
    "'$nxfv' move --no-confirm --silent TARGET '$other/moved'" "mv TARGET '$other/moved'"
  pair "move ${large_mb} MiB file across" 1.1 "rm -f -- '$other/moved.bin'; rm -rf -- TARGET; cp -a '$work/large/big.bin' TARGET" \
    "'$nxfv' move --no-confirm --silent TARGET '$other/moved.bin'" "mv TARGET '$other/moved.bin'"
  rm -rf -- "$other/moved" "$other/moved.bin"
fi
if ((have_gio)); then
  export XDG_DATA_HOME=$work/data
  mkdir -p "$XDG_DATA_HOME"
  # Many names on one command line for both tools, and the trash emptied (untimed) between runs.
  pair "trash $small files" 1.5 "rm -rf -- '$work/data/Trash' TARGET; cp -a '$work/trash-src' TARGET" \
    "'$nxfv' delete --trash --no-confirm --silent TARGET/*" "gio trash TARGET/*"
fi

echo "nxfv: $nxfv"
echo "load average at start: $(cut -d' ' -f1-3 /proc/loadavg) on $(nproc) cores (other jobs skew the times)"
echo "work folder on $(df --output=fstype "$work" | tail -n 1); best of $repeat runs"
echo
printf '%-32s | %8s %8s %6s | %8s %8s %6s | %s\n' case "nxfv s" "other s" ratio "nxfv cpu" "other" ratio "goal (wall)"
for line in "${results[@]}"; do
  IFS='|' read -r name n o goal cn co <<<"$line"
  awk -v name="$name" -v n="$n" -v o="$o" -v goal="$goal" -v cn="$cn" -v co="$co" 'BEGIN {
    ratio = n / o
    printf "%-32s | %8.3f %8.3f %5.2fx | %8.3f %8.3f %5.2fx | <= %.1fx %s\n", name, n, o, ratio, cn, co,
      (co > 0 ? cn / co : 0), goal, (ratio <= goal ? "ok" : "OVER")
    exit (ratio > goal)
  }' || status=1
done
echo "(other: cp -a for copies, mv for moves, gio trash for the trash; cpu: user + system seconds)"
exit $status
