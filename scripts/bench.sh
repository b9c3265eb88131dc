#!/usr/bin/env bash
# Builds and runs the benchmarks (release build with debug info), then the heap measurement of
# Init. Extra arguments go to the timed benchmarks, e.g. --benchmark_repetitions=5.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
cmake -S . -B build-bench -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DVEXA_BUILD_TESTS=OFF >/dev/null
cmake --build build-bench -j "$(nproc)" --target vexa_bench vexa_bench_memory
./build-bench/bench/vexa_bench --benchmark_repetitions=5 --benchmark_report_aggregates_only=true "$@"
./build-bench/bench/vexa_bench_memory
