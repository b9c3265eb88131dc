#!/usr/bin/env bash
# Builds and runs every test: a normal build, then an AddressSanitizer + UndefinedBehaviorSanitizer
# build that fails on any report, and a ThreadSanitizer build of the concurrency test.
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

echo "== ThreadSanitizer build (Clang): the concurrency test"
CXX=clang++ cmake -S . -B build-tsan -G Ninja -DVEXA_TSAN=ON -DVEXA_WERROR=ON -DCMAKE_BUILD_TYPE=Debug >/dev/null
cmake --build build-tsan -j "$jobs" --target vexa_tests
TSAN_OPTIONS=halt_on_error=1:second_deadlock_stack=1 \
  ./build-tsan/tests/vexa_tests --gtest_filter='VexaJsonModeParserThreadsTest.*'

echo "== fuzz targets replaying their corpora (Clang, ASan + UBSan)"
bash scripts/fuzz.sh 0
