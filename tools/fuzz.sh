#!/usr/bin/env bash
# Runs the fuzzer of every reader (the folders of tests/fuzz/corpus) for the given seconds each.
# New inputs and findings go to fuzz-work/<reader>/ beside the program; the first finding stops.
set -euo pipefail
fuzzer=${1:?usage: tools/fuzz.sh <qy_fuzz program> [seconds]}
seconds=${2:-600}
corpus="$(cd "$(dirname "$0")/../tests/fuzz/corpus" && pwd)"
work="$(dirname "$fuzzer")/fuzz-work"
for dir in "$corpus"/*/; do
  reader=$(basename "$dir")
  mkdir -p "$work/$reader"
  echo "== $reader: $seconds s"
  QT_QPA_PLATFORM=offscreen QY_FUZZ_TARGET=$reader ASAN_OPTIONS=detect_leaks=0 \
    "$fuzzer" -max_total_time="$seconds" -timeout=20 -rss_limit_mb=3072 -max_len=4096 \
    -print_final_stats=1 -artifact_prefix="$work/$reader/" "$work/$reader" "$dir"
done
