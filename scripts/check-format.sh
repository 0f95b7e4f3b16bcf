#!/usr/bin/env bash
# Fails when a tracked C++ file differs from what clang-format makes of it.
set -euo pipefail
ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
cd "$ROOT"
unformatted=()
while IFS= read -r file; do
    [ -f "$file" ] || continue
    clang-format --dry-run --Werror "$file" >/dev/null 2>&1 || unformatted+=("$file")
done < <(git ls-files '*.cpp' '*.h' 2>/dev/null || find host tarvo workbench tools tests bench -name '*.cpp' -o -name '*.h')
if [ "${#unformatted[@]}" -gt 0 ]; then
    echo "clang-format would change these files (run: clang-format -i FILE):"
    printf '  %s\n' "${unformatted[@]}"
    exit 1
fi
