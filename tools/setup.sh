# Shared by ./run, ./test, ./bench and CI: installs what is missing, configures a preset and builds it.
# To be sourced; expects to stand in the project's root.

fail() {
    echo "$(basename "$0"): $*" >&2
    exit 2
}

# Installs the packages of tools/packages.txt that are missing.
install_missing() {
    command -v dpkg-query >/dev/null || fail "this needs Debian or a system made from it (no dpkg-query)"
    local wanted missing
    wanted=$(sed '/^#/d' tools/packages.txt)
    # shellcheck disable=SC2086
    missing=$(comm -23 <(printf '%s\n' $wanted | sort) \
        <(dpkg-query -W -f='${db:Status-Status} ${Package}\n' $wanted 2>/dev/null | sed -n 's/^installed //p' | sort))
    [ -z "$missing" ] && return
    echo "Installing: $(echo $missing)"
    local root=""
    if [ "$(id -u)" != 0 ]; then
        command -v sudo >/dev/null || fail "these packages are missing, and there is no sudo to install them: $(echo $missing)"
        root=sudo
    fi
    $root apt-get update -q
    # shellcheck disable=SC2086
    $root env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends $missing
}

# build PRESET [TARGET ...]: configures it once and builds the targets, or everything, on all cores. Two commands that
# build the same preset at once wait for each other.
build() {
    local preset=$1 targets=()
    shift
    [ $# -eq 0 ] || targets=(--target "$@")
    # What the compiler cache must know of precompiled headers.
    export CCACHE_SLOPPINESS=pch_defines,time_macros
    mkdir -p build
    (
        flock 9
        [ -f "build/$preset/build.ninja" ] || cmake --preset "$preset" || fail "the preset \"$preset\" can not be configured"
        cmake --build --preset "$preset" "${targets[@]}" -- --quiet
    ) 9>"build/$preset.lock"
}
