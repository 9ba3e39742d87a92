# SPDX-License-Identifier: Apache-2.0
# Shared by ./run and ./test: packages, configure, build. Sourced; $root is the checkout.

preset=${ZOVRA_PRESET:-release}
build=$root/build/$preset

say() { printf "\n== %s\n" "$*"; }

missing_packages() {
    local wanted installed
    wanted=$(sed -e 's/#.*//' -e '/^[[:space:]]*$/d' "$root/tools/packages.txt" | sort -u)
    # Architecture suffixes and half-removed packages do not count as installed.
    installed=$(dpkg-query -W -f '${db:Status-Status} ${Package}\n' 2>/dev/null |
        sed -n 's/^installed //p' | sort -u)
    comm -23 <(printf '%s\n' "$wanted") <(printf '%s\n' "$installed")
}

install_packages() {
    local missing as_root=()
    if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
        say "this is not a Debian system; the build needs what tools/packages.txt names"
        return 0
    fi
    missing=$(missing_packages)
    if [ -z "$missing" ]; then
        return 0
    fi
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null; then
            say "run this as root once, or install:" $missing >&2
            return 1
        fi
        as_root=(sudo)
    fi
    say "installing:" $missing
    apt() { "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -o DPkg::Lock::Timeout=600 "$@"; }
    # The package lists are fetched only where they are not there or out of date.
    if ! apt-get install --simulate -qq --no-install-recommends $missing >/dev/null 2>&1; then
        apt update -q
    fi
    if ! apt install -y -q --no-install-recommends $missing; then
        apt update -q
        apt install -y -q --no-install-recommends $missing
    fi
}

# Quiet when all goes well, everything shown when not.
quietly() {
    local log status=0
    log=$(mktemp)
    "$@" >"$log" 2>&1 || status=$?
    if [ "$status" -ne 0 ]; then
        cat "$log" >&2
    fi
    rm -f "$log"
    return "$status"
}

# build_targets TARGET...
build_targets() {
    # A checkout that was moved or copied can't use the old one's build folder.
    if [ -f "$build/CMakeCache.txt" ] && ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$root" "$build/CMakeCache.txt"; then
        rm -rf "$build"
    fi
    if [ -z "${HOME:-}" ]; then
        export CCACHE_DIR=$build/ccache
    fi
    if [ ! -f "$build/build.ninja" ]; then
        say "configuring ($preset)"
        (cd "$root" && quietly cmake --preset "$preset")
    fi
    say "building ($preset)"
    if [ -t 1 ]; then
        cmake --build "$build" --target "$@"
    else
        quietly cmake --build "$build" --target "$@"
    fi
}
