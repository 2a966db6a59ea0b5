#!/usr/bin/env bash
# Runs every benchmark built under the given build tree and prints their reports.
# Fails when a benchmark fails, after running the rest.
set -uo pipefail
build_dir=${1:-build/ci}
shopt -s nullglob
benches=()
for candidate in "$build_dir"/bench/bench_*; do
  # CMake leaves folders such as bench_<name>_autogen beside the executables.
  [[ -f "$candidate" && -x "$candidate" ]] && benches+=("$candidate")
done
if [[ ${#benches[@]} -eq 0 ]]; then
  echo "bench: no benchmarks built under $build_dir/bench" >&2
  exit 1
fi
failed=()
for bench in "${benches[@]}"; do
  echo "== $(basename "$bench")"
  if ! QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen} "$bench"; then
    failed+=("$(basename "$bench")")
  fi
done
if [[ ${#failed[@]} -gt 0 ]]; then
  echo "bench: failed: ${failed[*]}" >&2
  exit 1
fi
