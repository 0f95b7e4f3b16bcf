# Sourced by the run scripts: installs what is missing, then configures and builds.
# BUILD_DIR, BUILD_TYPE and BUILD_TARGETS may be set by the caller.
set -euo pipefail

ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
BUILD_DIR="${BUILD_DIR:-$ROOT/build}"
BUILD_TYPE="${BUILD_TYPE:-RelWithDebInfo}"

PACKAGES=(cmake ninja-build g++ ccache pkg-config qtbase5-dev qtbase5-dev-tools libqt5sql5-sqlite
          libqt5svg5-dev qttools5-dev libxlsxwriter-dev libfreexl-dev libmuparser-dev libzip-dev
          libbenchmark-dev xvfb xauth fonts-noto-cjk clang-format rapidjson-dev python3-openpyxl
          python3-xlrd zlib1g-dev libxml2-utils qttranslations5-l10n libsqlite3-dev)

missing=()
for package in "${PACKAGES[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed"; then
        missing+=("$package")
    fi
done
if [ "${#missing[@]}" -gt 0 ]; then
    echo "Installing: ${missing[*]}"
    SUDO=""
    [ "$(id -u)" -ne 0 ] && SUDO="sudo"
    $SUDO apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi

cmake -S "$ROOT" -B "$BUILD_DIR" -G Ninja -DCMAKE_BUILD_TYPE="$BUILD_TYPE" ${CMAKE_EXTRA_ARGS:-} >/dev/null
# BUILD_TARGETS narrows the build (the workbench needs neither tests nor benchmarks).
# shellcheck disable=SC2086
cmake --build "$BUILD_DIR" --target ${BUILD_TARGETS:-all} -- -j"$(nproc)"

# The grids ask for "SimSun": the shipped fontconfig file maps it to the Noto CJK serif.
export FONTCONFIG_FILE="$BUILD_DIR/bin/Config/fonts.conf"
