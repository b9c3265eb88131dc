#!/usr/bin/env bash
# Builds and runs every test: a normal build, then an AddressSanitizer + UndefinedBehaviorSanitizer
# build that fails on any report, a ThreadSanitizer build of the concurrency tests, and the fuzz
# targets over their corpora and a short exploration.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh

jobs=$(nproc)
build() {  # build DIR [cmake options...]
  local dir=$1; shift
  cmake -S . -B "$dir" -G Ninja "$@" >/dev/null
  cmake --build "$dir" -j "$jobs"
}

echo "== normal build (GCC)"
build build -DVEXA_WERROR=ON
ctest --test-dir build --output-on-failure -j "$jobs"

echo "== AddressSanitizer + UndefinedBehaviorSanitizer build (Clang)"
CXX=clang++ build build-asan -DVEXA_SANITIZE=ON -DVEXA_WERROR=ON -DCMAKE_BUILD_TYPE=Debug
ASAN_OPTIONS=detect_leaks=1:abort_on_error=1:halt_on_error=1 \
UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1 \
  ctest --test-dir build-asan --output-on-failure -j "$jobs"

echo "== ThreadSanitizer build (Clang): the concurrency tests, every operation racing for 5 s"
CXX=clang++ cmake -S . -B build-tsan -G Ninja -DVEXA_TSAN=ON -DVEXA_WERROR=ON -DCMAKE_BUILD_TYPE=Debug >/dev/null
cmake --build build-tsan -j "$jobs" --target vexa_tests
VEXA_STRESS_SECONDS=5 TSAN_OPTIONS=halt_on_error=1:second_deadlock_stack=1 \
  ./build-tsan/tests/vexa_tests --gtest_filter='VexaJsonModeParserThreadsTest.*'

echo "== fuzz targets replaying their corpora, then exploring 30 s each (Clang, ASan + UBSan)"
bash scripts/fuzz.sh 30
