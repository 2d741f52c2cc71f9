#!/usr/bin/env bash
# A long fuzzing campaign of the archive readers on the fast build (coverage
# feedback, no sanitizers, -O2: several times the executions per second of
# the sanitized build), both targets side by side at the lowest priority.
# Afterwards the kept corpus (fuzz/corpus/KIND) is minimized again from the
# old one and the campaign's finds with libFuzzer's merge; commit it, and CI
# (scripts/fuzz.sh) replays it under ASan + UBSan.
#   NXFV_FUZZ_RUNS     executions per target (default 1000000)
#   NXFV_FUZZ_NO_MERGE set to leave fuzz/corpus untouched
#   NXFV_FUZZ_TARGETS  the targets to run (default: both)
# Logs and the scratch corpus: build/fuzz-fast/campaign/. A finding stops
# its target and leaves the input as build/fuzz-fast/campaign/TARGET-crash-*.
set -euo pipefail
cd "$(dirname "$0")/.."

runs="${NXFV_FUZZ_RUNS:-1000000}"
read -r -a targets <<<"${NXFV_FUZZ_TARGETS:-zip_reader_fuzzer cab_reader_fuzzer}"

cmake --preset fuzz-fast >/dev/null
cmake --build --preset fuzz-fast --target "${targets[@]}" archive_seed_corpus

bin=build/fuzz-fast/fuzz
work=build/fuzz-fast/campaign
mkdir -p "$work/seed/zip" "$work/seed/cab" "$work/corpus/zip" "$work/corpus/cab"
"$bin/archive_seed_corpus" "$work/seed/zip" "$work/seed/cab"

pids=()
for target in "${targets[@]}"; do
  kind="${target%%_*}"
  mkdir -p "fuzz/corpus/$kind"
  nice -n 19 "$bin/$target" "$work/corpus/$kind" "fuzz/corpus/$kind" "fuzz/corpus/seed/$kind" "$work/seed/$kind" \
    -runs="$runs" -max_len=65536 -timeout=30 -rss_limit_mb=2048 -print_final_stats=1 \
    -artifact_prefix="$work/${target}-" >"$work/$target.log" 2>&1 &
  pids+=($!)
done
status=0
for i in "${!targets[@]}"; do
  target="${targets[$i]}"
  if wait "${pids[$i]}"; then
    echo "$target: $(grep -E '^Done [0-9]+ runs' "$work/$target.log" | tail -n 1)," \
         "$(grep -E ' (cov|ft): ' "$work/$target.log" | tail -n 1 | grep -oE 'cov: [0-9]+ ft: [0-9]+'), no findings"
  else
    echo "FINDING in $target (full log: $work/$target.log)"
    status=1
  fi
done
[ "$status" = 0 ] || exit "$status"
[ -z "${NXFV_FUZZ_NO_MERGE:-}" ] || exit 0

# Minimize: the seeds go in first, so that only inputs that reach more than
# the seeds are kept; the seeds themselves stay in their own folder.
for target in "${targets[@]}"; do
  kind="${target%%_*}"
  merged="$work/merged/$kind"
  rm -rf "$merged" && mkdir -p "$merged"
  cp "fuzz/corpus/seed/$kind"/* "$work/seed/$kind"/* "$merged/"
  nice -n 19 "$bin/$target" -merge=1 "$merged" "fuzz/corpus/$kind" "$work/corpus/$kind" >"$work/$target-merge.log" 2>&1
  for seed in "fuzz/corpus/seed/$kind"/* "$work/seed/$kind"/*; do rm -f "$merged/$(basename "$seed")"; done
  rm -rf "fuzz/corpus/$kind" && cp -r "$merged" "fuzz/corpus/$kind"
  echo "fuzz/corpus/$kind: $(ls "fuzz/corpus/$kind" | wc -l) inputs, $(du -sh "fuzz/corpus/$kind" | cut -f1)"
done
