#!/usr/bin/env bash
# Builds the fuzz targets (clang + libFuzzer, ASan + UBSan) and runs each
# one for a bounded time on a generated seed corpus. Any finding (crash,
# sanitizer report, timeout, memory blow-up) fails the script and leaves the
# input under build/fuzz/artifacts/.
#   NXFV_FUZZ_SECONDS  seconds per target (default 55; the targets run side by side)
set -euo pipefail
cd "$(dirname "$0")/.."

seconds="${NXFV_FUZZ_SECONDS:-55}"
targets=(zip_reader_fuzzer cab_reader_fuzzer)

# -O1 keeps the Debug build's checks but runs several times faster.
cmake --preset fuzz -DCMAKE_CXX_FLAGS_DEBUG="-g -O1" >/dev/null
cmake --build --preset fuzz --target "${targets[@]}" archive_seed_corpus

bin=build/fuzz/fuzz
work=build/fuzz/run
rm -rf "$work"
mkdir -p "$work/seed/zip" "$work/seed/cab" "$work/corpus/zip" "$work/corpus/cab" build/fuzz/artifacts
"$bin/archive_seed_corpus" "$work/seed/zip" "$work/seed/cab"

# Archives written by real tools, when they are installed.
src="$work/files"
mkdir -p "$src/sub"
printf 'hello\n' >"$src/a.txt"
printf '%0500d' 0 >"$src/sub/b.dat"
if command -v zip >/dev/null; then
  (cd "$src" && zip -q -X -r ../seed/zip/tool.zip . && printf 'note\n' | zip -q -z ../seed/zip/tool.zip)
fi
if command -v gcab >/dev/null; then
  (cd "$src" && gcab -c ../seed/cab/tool.cab a.txt sub/b.dat && gcab -c -z ../seed/cab/tool-mszip.cab a.txt sub/b.dat)
fi

# Both targets at once (one per core), so the whole run takes about one
# target's time. A smaller quarantine and no malloc fill keep the many
# short-lived entry strings cheap without weakening the checks that matter.
export ASAN_OPTIONS="quarantine_size_mb=64:max_malloc_fill_size=0:detect_leaks=1"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
pids=()
for target in "${targets[@]}"; do
  kind="${target%%_*}"  # zip or cab
  echo "fuzzing $target for ${seconds}s"
  "$bin/$target" "$work/corpus/$kind" "$work/seed/$kind" \
    -max_total_time="$seconds" -timeout=30 -rss_limit_mb=2048 -max_len=65536 \
    -artifact_prefix="build/fuzz/artifacts/${target}-" -print_final_stats=1 \
    >"$work/$target.log" 2>&1 &
  pids+=($!)
done

status=0
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
