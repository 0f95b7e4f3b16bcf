#!/usr/bin/env bash
# Builds everything and runs all tests (offscreen).
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

cd "$BUILD_DIR"
QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j"$(nproc)"
