#!/usr/bin/env bash
# Configures (once) and builds into build/. Extra arguments go to the CMake configure step.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
build="${CUEBOX_BUILD_DIR:-$root/build}"
if [[ ! -f "$build/build.ninja" ]]; then
    cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo "$@"
fi
cmake --build "$build" --parallel "$(nproc)"
