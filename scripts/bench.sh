#!/usr/bin/env bash
# Runs every benchmark built under the given build tree and prints their reports.
set -euo pipefail
build_dir=${1:-build/ci}
shopt -s nullglob
benches=("$build_dir"/bench/bench_*)
if [[ ${#benches[@]} -eq 0 ]]; then
  echo "bench: no benchmarks built under $build_dir/bench"
  exit 0
fi
for bench in "${benches[@]}"; do
  [[ -x "$bench" ]] || continue
  echo "== $(basename "$bench")"
  QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen} "$bench"
done
