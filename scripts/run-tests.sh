#!/usr/bin/env bash
# Builds everything with warnings as errors, checks the format and runs all tests (offscreen).
CMAKE_EXTRA_ARGS="-DTARVO_WERROR=ON ${CMAKE_EXTRA_ARGS:-}"
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

bash "$ROOT/scripts/check-format.sh"
cd "$BUILD_DIR"
QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j"$(nproc)"

# Every file reader is fuzzed for a bounded time (TARVO_FUZZ=0 leaves it out; docs/fuzzing.md).
if [ "${TARVO_FUZZ:-1}" != "0" ]; then
    bash "$ROOT/scripts/run-fuzz.sh"
fi

# TARVO_ASAN=1 also builds the asan preset and runs the whole suite under it.
if [ "${TARVO_ASAN:-0}" = "1" ]; then
    bash "$ROOT/scripts/run-asan-tests.sh"
fi
