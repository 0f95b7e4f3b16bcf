#!/usr/bin/env bash
# Fuzzes every reader of outside input for a bounded time: the project file, the row field
# decoders, table-header, ribbon and content-template JSON, the .xls/.xlsx readers and the
# tender reader. With clang and libFuzzer, each fuzz/ target runs TARVO_FUZZ_SECONDS (default
# 25) on its seed corpus in tests/data/fuzz/<name>/ (build-fuzz/, AddressSanitizer and UBSan);
# without them the bounded mutation tests run under the asan preset instead. A crash leaves its
# input in build-fuzz/artifacts/ and fails the run: make it a regression test and fix it.
set -euo pipefail
ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
SECONDS_EACH="${TARVO_FUZZ_SECONDS:-25}"
FUZZ_DIR="$ROOT/build-fuzz"
SEEDS="$ROOT/tests/data/fuzz"

has_libfuzzer() {
    command -v clang++ >/dev/null 2>&1 || return 1
    local probe
    probe="$(mktemp -d)"
    printf '%s\n' '#include <cstddef>' '#include <cstdint>' \
        'extern "C" int LLVMFuzzerTestOneInput(const uint8_t*, size_t) { return 0; }' \
        >"$probe/probe.cpp"
    clang++ -fsanitize=fuzzer "$probe/probe.cpp" -o "$probe/probe" >/dev/null 2>&1
    local ok=$?
    rm -rf "$probe"
    return $ok
}

if ! has_libfuzzer; then
    echo "clang with libFuzzer not found: running the bounded mutation tests under ASan instead"
    cd "$ROOT"
    cmake --preset asan >/dev/null
    cmake --build build-asan --target tst_MutatedInputs tst_ExcelFuzz -- -j"$(nproc)"
    export ASAN_OPTIONS="detect_leaks=1:abort_on_error=1"
    export LSAN_OPTIONS="suppressions=$ROOT/scripts/lsan.supp"
    export TARVO_FUZZ_ROUNDS="${TARVO_FUZZ_ROUNDS:-3000}"
    cd build-asan
    QT_QPA_PLATFORM=offscreen ctest --output-on-failure -R 'tst_(MutatedInputs|ExcelFuzz)$'
    exit 0
fi

CXX=clang++ CC=clang cmake -S "$ROOT" -B "$FUZZ_DIR" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DTARVO_FUZZ=ON -DTARVO_BUILD_TESTS=OFF -DTARVO_BUILD_BENCH=OFF >/dev/null
cmake --build "$FUZZ_DIR" --target fuzz -- -j"$(nproc)"

export ASAN_OPTIONS="detect_leaks=1:allocator_may_return_null=1"
export LSAN_OPTIONS="suppressions=$ROOT/scripts/lsan.supp"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
mkdir -p "$FUZZ_DIR/artifacts"
failed=()
summary=()
for name in project_file fields header ribbon template workbook tender; do
    corpus="$FUZZ_DIR/corpus/$name"
    mkdir -p "$corpus"
    extra=()
    # The real workbooks of other programs beside the repository are seeds too, when present.
    if [ "$name" = workbook ] && [ -d "$ROOT/../shared/excel-samples" ]; then
        extra+=("$ROOT/../shared/excel-samples")
    fi
    log="$FUZZ_DIR/fuzz_$name.log"
    if "$FUZZ_DIR/bin/fuzz_$name" -max_total_time="$SECONDS_EACH" -timeout=20 -rss_limit_mb=2560 \
        -max_len=131072 -print_final_stats=1 -artifact_prefix="$FUZZ_DIR/artifacts/$name-" \
        "$corpus" "$SEEDS/$name" "${extra[@]}" >"$log" 2>&1; then
        status=ok
    else
        status=FAILED
        failed+=("$name")
        tail -n 40 "$log"
    fi
    runs="$(grep -o 'stat::number_of_executed_units: *[0-9]*' "$log" | grep -o '[0-9]*$' || true)"
    summary+=("$(printf '%-13s %-6s %10s runs in %ss' "$name" "$status" "${runs:-?}" "$SECONDS_EACH")")
done
printf '%s\n' "${summary[@]}"
if [ "${#failed[@]}" -gt 0 ]; then
    echo "fuzzing found failures in: ${failed[*]} (inputs in $FUZZ_DIR/artifacts/)"
    exit 1
fi
