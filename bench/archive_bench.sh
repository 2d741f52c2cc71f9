#!/usr/bin/env bash
# Archive directory reading: `nxfv entries` against the usual listing tools
# on a 32,767-entry ZIP (unzip -Z1) and a 32,767-entry CAB (cabextract -l),
# plus `nxfv list` against `bsdtar -tvf`. Prints each mean and the ratio
# nxfv / tool (the goal for `entries` is 0.5x or less).
#   NXFV_BENCH_RUNS  timed runs per command (default 30)
set -euo pipefail
cd "$(dirname "$0")/.."

runs="${NXFV_BENCH_RUNS:-30}"
entries=32767  # the most a 16-bit signed entry count can announce

cmake --preset release >/dev/null
cmake --build --preset release --target nxfv >/dev/null
nxfv="$PWD/build/release/apps/nxfv/nxfv"

work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/src"
(
  cd "$work/src"
  for ((d = 0; d <= entries / 1000; d++)); do mkdir -p "d$d"; done
  for ((i = 1; i <= entries; i++)); do : >"d$((i / 1000))/file$i.txt"; done
  zip -q -r -D -X ../big.zip .            # files only: exactly $entries entries
  mapfile -t names < <(find d* -type f | sort)
  gcab -c ../big.cab "${names[@]}"          # one call: xargs would split it
)
zip="$work/big.zip"
cab="$work/big.cab"
for archive in "$zip" "$cab"; do
  listed=$("$nxfv" entries "$archive" | wc -l)
  if [ "$listed" -ne "$entries" ]; then
    echo "nxfv entries listed $listed of $entries entries in $archive" >&2
    exit 1
  fi
done

# Mean wall time of a command in milliseconds, output discarded.
mean_ms() {
  if command -v hyperfine >/dev/null; then
    hyperfine -N --style none --warmup 3 --runs "$runs" --export-csv "$work/t.csv" "$*" >/dev/null 2>&1
    awk -F, 'NR == 2 { printf "%.2f", $2 * 1000 }' "$work/t.csv"
  else
    "$@" >/dev/null 2>&1
    local start end
    start=$(date +%s%N)
    for ((r = 0; r < runs; r++)); do "$@" >/dev/null 2>&1; done
    end=$(date +%s%N)
    awk -v ns="$((end - start))" -v n="$runs" 'BEGIN { printf "%.2f", ns / n / 1e6 }'
  fi
}

compare() {  # label, nxfv command..., --, tool command...
  local label="$1"
  shift
  local ours=() theirs=()
  while [ "$1" != "--" ]; do ours+=("$1"); shift; done
  shift
  theirs=("$@")
  local a b
  a=$(mean_ms "${ours[@]}")
  b=$(mean_ms "${theirs[@]}")
  printf '%-34s nxfv %8.2f ms   %-16s %8.2f ms   ratio %.2fx\n' "$label" "$a" "${theirs[0]}" "$b" \
    "$(awk -v a="$a" -v b="$b" 'BEGIN { print a / b }')"
}

echo "archive directories, $entries entries, $runs runs each"
compare "entries ZIP vs unzip -Z1" "$nxfv" entries "$zip" -- unzip -Z1 "$zip"
compare "entries CAB vs cabextract -l" "$nxfv" entries "$cab" -- cabextract -l "$cab"

# The archive view: `nxfv list` builds a row per entry (type name, icon
# probe, formatted columns), so it is compared with a verbose listing.
compare "list ZIP vs bsdtar -tvf" "$nxfv" list "$zip" -- bsdtar -tvf "$zip"
compare "list CAB vs bsdtar -tvf" "$nxfv" list "$cab" -- bsdtar -tvf "$cab"
