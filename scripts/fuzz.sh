#!/usr/bin/env bash
# Builds the libFuzzer targets (Clang with AddressSanitizer and UndefinedBehaviorSanitizer) and runs
# every target over its kept corpus in fuzz/corpus/.
#   bash scripts/fuzz.sh          replay the kept corpora once (what the test command does)
#   bash scripts/fuzz.sh 600      then explore for 600 seconds per target; new inputs go to
#                                 build-fuzz/new-corpus/<target>, the checkout is left alone
# Any sanitizer report, crash, timeout, out-of-memory or C++ exception fails the run.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
seconds=${1:-0}

CXX=clang++ cmake -S . -B build-fuzz -G Ninja -DVEXA_FUZZ=ON -DVEXA_BUILD_TESTS=OFF \
  -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build-fuzz -j "$(nproc)"

targets=(modes_file rules_file asset_section common_data device_tree)
flags=(-rss_limit_mb=2048 -timeout=10 -dict=fuzz/vexa.dict)
for t in "${targets[@]}"; do
  echo "== fuzz_$t: replaying $(ls fuzz/corpus/$t | wc -l) inputs"
  build-fuzz/fuzz/fuzz_$t "${flags[@]}" -runs=0 fuzz/corpus/$t 2>&1 | tail -n 1
done
if [ "$seconds" -gt 0 ]; then
  for t in "${targets[@]}"; do
    mkdir -p build-fuzz/new-corpus/$t
    echo "== fuzz_$t: exploring for $seconds s"
    status=0
    build-fuzz/fuzz/fuzz_$t "${flags[@]}" -max_total_time="$seconds" -print_final_stats=1 \
      -artifact_prefix=build-fuzz/ build-fuzz/new-corpus/$t fuzz/corpus/$t > build-fuzz/fuzz_$t.log 2>&1 || status=$?
    grep -E '^stat::number_of_executed_units|^Done|ERROR|SUMMARY|#[0-9]+ +DONE' build-fuzz/fuzz_$t.log || true
    [ "$status" -eq 0 ] || { echo "fuzz_$t failed (status $status), see build-fuzz/fuzz_$t.log"; exit 1; }
  done
fi
