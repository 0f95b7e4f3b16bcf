#!/usr/bin/env bash
# Builds the asan preset (AddressSanitizer and UBSan, build-asan/) and runs the whole suite
# under it, the mutation fuzzing included. The only suppression is the offscreen platform
# plugin's leak (scripts/lsan.supp).
set -euo pipefail
ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
cd "$ROOT"
cmake --preset asan >/dev/null
cmake --build build-asan -- -j"$(nproc)"
export ASAN_OPTIONS="detect_leaks=1:abort_on_error=1"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
export LSAN_OPTIONS="suppressions=$ROOT/scripts/lsan.supp"
export TARVO_FUZZ_ROUNDS="${TARVO_FUZZ_ROUNDS:-300}"
cd build-asan
QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j"$(nproc)"
