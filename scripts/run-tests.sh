#!/usr/bin/env bash
# Builds everything with warnings as errors, checks the format and runs all tests (offscreen)
# under AddressSanitizer and UBSan: the asan preset's build (build-asan/, Debug). The only
# suppression is the leak inside Qt's offscreen platform plugin (scripts/lsan.supp).
# TARVO_ASAN=0 runs the suite on the plain build (build/, RelWithDebInfo) instead.
ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
if [ "${TARVO_ASAN:-1}" != "0" ]; then
    # The same cache as `cmake --preset asan`.
    export BUILD_DIR="${BUILD_DIR:-$ROOT/build-asan}" BUILD_TYPE=Debug
    CMAKE_EXTRA_ARGS="-DTARVO_SANITIZE=ON ${CMAKE_EXTRA_ARGS:-}"
    export ASAN_OPTIONS="detect_leaks=1:abort_on_error=1"
    export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
    export LSAN_OPTIONS="suppressions=$ROOT/scripts/lsan.supp"
    export TARVO_FUZZ_ROUNDS="${TARVO_FUZZ_ROUNDS:-300}"
fi
CMAKE_EXTRA_ARGS="-DTARVO_WERROR=ON ${CMAKE_EXTRA_ARGS:-}"
source "$ROOT/scripts/setup.sh"

bash "$ROOT/scripts/check-format.sh"
cd "$BUILD_DIR"
QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j"$(nproc)"

# Every file reader is fuzzed for a bounded time (TARVO_FUZZ=0 leaves it out; docs/fuzzing.md).
if [ "${TARVO_FUZZ:-1}" != "0" ]; then
    unset TARVO_FUZZ_ROUNDS
    bash "$ROOT/scripts/run-fuzz.sh"
fi
