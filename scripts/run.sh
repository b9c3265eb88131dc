#!/usr/bin/env bash
# Builds the library, the algorithm library, the vexa-modes tool and the example device tree
# (tests off, in its own build directory), then lists the example panel's colour modes and shows
# the sRGB standard mode and the reading mode, whose gamut and PCC libvexa-algo.so merged.
# Nothing in the checkout is changed: everything is written below the build directory.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh

build_dir=${VEXA_RUN_BUILD_DIR:-build-run}
cmake -S . -B "$build_dir" -G Ninja -DVEXA_BUILD_TESTS=OFF -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build "$build_dir" -j "$(nproc)"

panel=$(sed -n 's/^ *"name": *"\([^"]*\)".*/\1/p' examples/panel/panel.json | head -n 1)
tool=("$build_dir/bin/vexa-modes" --root "$build_dir/examples/device" --panel "$panel")

echo "== vexa-modes list"
"${tool[@]}" list
echo
echo "== vexa-modes show --gamut 1 --gamma 1 --intent 1"
"${tool[@]}" show --gamut 1 --gamma 1 --intent 1
echo
echo "== vexa-modes show --gamut 1 --gamma 1 --intent 5 (gamut and PCC merged by libvexa-algo.so)"
"${tool[@]}" show --gamut 1 --gamma 1 --intent 5
