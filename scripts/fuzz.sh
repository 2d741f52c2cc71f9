#!/usr/bin/env bash
# Builds the fuzz targets with ASan + UBSan (clang + libFuzzer) and
#  1. replays the corpora kept in the repository (fuzz/corpus/seed/KIND:
#     archives written by real tools; fuzz/corpus/KIND: the minimized
#     corpus of the long campaigns) and the generated boundary archives,
#     so that every input the fast, unsanitized campaigns found passes the
#     memory and undefined-behaviour checks too;
#  2. fuzzes each target for a bounded time from those corpora, side by side.
# Any finding (crash, sanitizer report, timeout, memory blow-up) fails the
# script and leaves the input under build/fuzz/artifacts/.
# Long campaigns run on the unsanitized build: scripts/fuzz-campaign.sh.
#   NXFV_FUZZ_SECONDS  seconds of fuzzing per target (default 45)
set -euo pipefail
cd "$(dirname "$0")/.."

seconds="${NXFV_FUZZ_SECONDS:-45}"
targets=(zip_reader_fuzzer cab_reader_fuzzer)

# -O1 keeps the Debug build's checks but runs several times faster.
cmake --preset fuzz -DCMAKE_CXX_FLAGS_DEBUG="-g -O1" >/dev/null
cmake --build --preset fuzz --target "${targets[@]}" archive_seed_corpus

bin=build/fuzz/fuzz
work=build/fuzz/run
rm -rf "$work"
mkdir -p "$work/seed/zip" "$work/seed/cab" "$work/corpus/zip" "$work/corpus/cab" build/fuzz/artifacts
"$bin/archive_seed_corpus" "$work/seed/zip" "$work/seed/cab"

# A smaller quarantine and no malloc fill keep the many short-lived entry
# strings cheap without weakening the checks that matter.
export ASAN_OPTIONS="quarantine_size_mb=64:max_malloc_fill_size=0:detect_leaks=1"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
common=(-timeout=30 -rss_limit_mb=2048 -print_final_stats=1)

kept() {  # the corpus folders of one kind that exist
  local kind="$1" dir
  for dir in "fuzz/corpus/seed/$kind" "fuzz/corpus/$kind" "$work/seed/$kind"; do
    [ -d "$dir" ] && printf '%s\n' "$dir"
  done
}

status=0
for target in "${targets[@]}"; do
  kind="${target%%_*}"  # zip or cab
  mapfile -t dirs < <(kept "$kind")
  log="$work/$target-replay.log"
  if "$bin/$target" -runs=0 "${common[@]}" -artifact_prefix="build/fuzz/artifacts/${target}-" "${dirs[@]}" \
       >"$log" 2>&1; then
    echo "$target: replayed $(grep -oE 'files: [0-9]+' "$log" | head -n 1 | cut -d' ' -f2) kept inputs, no findings"
  else
    echo "FINDING in $target replaying the kept corpus (full log: $log):"
    tail -n 40 "$log"
    status=1
  fi
done
[ "$status" = 0 ] || exit "$status"

# Both targets at once (one per core), so the whole run takes about one
# target's time. New inputs go to the scratch corpus; the kept ones are read.
pids=()
for target in "${targets[@]}"; do
  kind="${target%%_*}"
  mapfile -t dirs < <(kept "$kind")
  echo "fuzzing $target for ${seconds}s"
  "$bin/$target" "$work/corpus/$kind" "${dirs[@]}" -max_total_time="$seconds" -max_len=65536 "${common[@]}" \
    -artifact_prefix="build/fuzz/artifacts/${target}-" >"$work/$target.log" 2>&1 &
  pids+=($!)
done

for i in "${!targets[@]}"; do
  target="${targets[$i]}"
  if wait "${pids[$i]}"; then
    echo "$target: $(grep -E '^Done [0-9]+ runs' "$work/$target.log" | tail -n 1), no findings"
  else
    echo "FINDING in $target (full log: $work/$target.log):"
    tail -n 40 "$work/$target.log"
    status=1
  fi
done
exit "$status"
