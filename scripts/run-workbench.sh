#!/usr/bin/env bash
# Builds the workbench and runs it on the bundled sample project. Without a display it runs
# under Xvfb and saves a screenshot of each of the six bill pages instead.
BUILD_TARGETS="${BUILD_TARGETS:-tarvo-workbench}"
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

BIN="$BUILD_DIR/bin"
SAMPLE="$BIN/Samples/示例工程.tarvo"
if [ -n "${DISPLAY:-}" ] && [ "${1:-}" != "--screenshots" ]; then
    exec "$BIN/tarvo-workbench" "$SAMPLE"
fi
SHOTS="${SCREENSHOT_DIR:-$ROOT/screenshots}"
rm -rf "$SHOTS"
xvfb-run -a -s "-screen 0 1600x1000x24" "$BIN/tarvo-workbench" --screenshots "$SHOTS" "$SAMPLE"
echo "Screenshots of the six pages are in $SHOTS"
