# shellcheck shell=bash
# Shared set-up of scripts/demo and scripts/test, sourced by both.
#
# Settings taken from the environment:
#   QUILLON_BUILD_DIR   build directory (default: build/ in the repository)
#   QUILLON_BUILD_TYPE  CMake build type (default: Release)
#   QUILLON_CMAKE_ARGS  extra arguments for the CMake configure step
#   QUILLON_STRICT_CONFIGURE  when 1, a warning of the configure step fails it

QUILLON_ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)"
QUILLON_BUILD_DIR="${QUILLON_BUILD_DIR:-$QUILLON_ROOT/build}"
QUILLON_BUILD_TYPE="${QUILLON_BUILD_TYPE:-Release}"
QUILLON_JOBS="$(nproc)"

# What building, testing and rendering headless need on Debian 12.
QUILLON_PACKAGES=(
    cmake g++ make pkg-config
    libcoin-dev libcgal-dev
    libgtest-dev libgmock-dev libbenchmark-dev
    libpng-dev libegl-dev libegl-mesa0 libgl1-mesa-dri libgl-dev libtbb-dev
)

quillon_log() {
    printf '==> %s\n' "$*"
}

quillon_is_installed() {
    dpkg -s "$1" 2>/dev/null | grep -q '^Status: install ok installed'
}

# Installs the packages that are missing; does nothing when all are there.
quillon_install_packages() {
    local missing=() package
    for package in "${QUILLON_PACKAGES[@]}"; do
        quillon_is_installed "$package" || missing+=("$package")
    done
    if ((${#missing[@]} == 0)); then
        return
    fi
    quillon_apt_install "${missing[@]}"
}

quillon_apt_install() {
    quillon_log "installing $*"
    quillon_as_root apt-get update
    quillon_as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "$@"
}

quillon_as_root() {
    if [[ "$(id -u)" -ne 0 ]]; then
        sudo "$@"
    else
        "$@"
    fi
}

# The tests print numbers under a locale with a decimal comma; generates
# one when the machine has none.
quillon_provide_comma_locale() {
    if locale -a 2>/dev/null | grep -qi '^de_DE\.utf-\?8$'; then
        return
    fi
    quillon_is_installed locales || quillon_apt_install locales
    quillon_log "generating the locale de_DE.UTF-8"
    quillon_as_root localedef -i de_DE -f UTF-8 de_DE.UTF-8
}

quillon_configure() {
    local extra=() log
    read -r -a extra <<<"${QUILLON_CMAKE_ARGS:-}"
    quillon_log "configuring $QUILLON_BUILD_DIR: $QUILLON_BUILD_TYPE ${extra[*]}"
    log="$(mktemp)"
    cmake -S "$QUILLON_ROOT" -B "$QUILLON_BUILD_DIR" \
        -DCMAKE_BUILD_TYPE="$QUILLON_BUILD_TYPE" \
        "${extra[@]}" 2>&1 | tee "$log"
    if [[ "${QUILLON_STRICT_CONFIGURE:-0}" == 1 ]] && grep -q 'CMake Warning' "$log"; then
        rm -f "$log"
        quillon_log "the configure step gave warnings (see above)" >&2
        return 1
    fi
    rm -f "$log"
}

# Builds the given targets ("all" for everything).
quillon_build() {
    quillon_log "building $*"
    cmake --build "$QUILLON_BUILD_DIR" -j"$QUILLON_JOBS" --target "$@"
}
