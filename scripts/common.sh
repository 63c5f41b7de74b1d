# Sourced by run, test and bench/run: packages, environment, build. Expects bash with "set -euo pipefail".
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

build_packages=(
    ca-certificates g++ cmake ninja-build pkg-config ccache lld
    qt6-base-dev qt6-svg-dev libqt6opengl6-dev libxkbcommon-dev
    libpq-dev libsqlite3-dev mdbtools-dev qtkeychain-qt6-dev zlib1g-dev)
run_packages=(libqt6svg6 qt6-translations-l10n fonts-dejavu-core)
test_packages=(
    libgtest-dev libgmock-dev clang-format libfaketime openssl postgresql-15 postgresql-15-pglogical python3 sqlite3
    xvfb xauth openbox xdotool imagemagick x11-utils x11-xkb-utils)

fuzz_packages=(clang libclang-rt-14-dev python3)

# Qt asks for a UTF-8 locale and a private run-time folder; a bare machine has neither.
prepare_environment() {
    case "${LC_ALL:-${LC_CTYPE:-${LANG:-}}}" in
        *[Uu][Tt][Ff]*) ;;
        *) export LC_ALL=C.UTF-8 ;;
    esac
    if [ ! -d "${XDG_RUNTIME_DIR:-}" ] || [ ! -O "${XDG_RUNTIME_DIR:-}" ]; then
        XDG_RUNTIME_DIR=$(mktemp -d)
        export XDG_RUNTIME_DIR
        trap 'rm -rf "$XDG_RUNTIME_DIR"' EXIT
    fi
}

missing_packages() {
    local package
    for package in "$@"; do
        [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || echo "$package"
    done
}

# Installs those of the packages that are missing; asks for nothing when all are there.
ensure_packages() {
    local missing as_root=()
    mapfile -t missing < <(missing_packages "$@")
    [ ${#missing[@]} -gt 0 ] || return 0
    echo "Installing: ${missing[*]}"
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || {
            echo "Neither root nor sudo: please install these packages, then start again." >&2
            return 1
        }
        as_root=(sudo)
    fi
    local install=(env DEBIAN_FRONTEND=noninteractive apt-get install -y -q
        -o Dpkg::Use-Pty=0 --no-install-recommends "${missing[@]}")
    if apt-get install -s -q --no-install-recommends "${missing[@]}" >/dev/null 2>&1; then
        "${as_root[@]}" "${install[@]}" && return 0
    fi
    "${as_root[@]}" apt-get update -q
    "${as_root[@]}" "${install[@]}"
}

# build PRESET [TARGET]: configures that preset and builds everything of it, or the one target.
build() {
    (cd "$top" && cmake --preset "$1" >"$(log_of "$1")" 2>&1) || {
        cat "$(log_of "$1")" >&2
        return 1
    }
    cmake --build "$top/build/$1" --parallel "$(nproc)" ${2:+--target "$2"}
}

log_of() {
    mkdir -p "$top/build"
    echo "$top/build/configure-$1.log"
}
