# Shared by ./run, ./test, ./bench and CI: installs what is missing, configures a preset and builds it.
# To be sourced with the project's root as the current folder.

fail() {
    echo "$(basename "$0"): $*" >&2
    exit 2
}

# install_missing [PACKAGE ...]: installs the packages that are missing, those of tools/packages.txt and these.
install_missing() {
    command -v dpkg-query >/dev/null || fail "this needs Debian or a system made from it (no dpkg-query)"
    local wanted missing
    wanted="$(sed '/^#/d' tools/packages.txt) $*"
    # shellcheck disable=SC2086
    missing=$(comm -23 <(printf '%s\n' $wanted | sort) \
        <(dpkg-query -W -f='${db:Status-Status} ${Package}\n' $wanted 2>/dev/null | sed -n 's/^installed //p' | sort))
    [ -z "$missing" ] && return
    # shellcheck disable=SC2086
    echo "Installing packages, which takes some minutes:" $missing
    local root=""
    if [ "$(id -u)" != 0 ]; then
        command -v sudo >/dev/null || fail "these packages are missing, and there is no sudo to install them: ${missing//$'\n'/ }"
        root=sudo
    fi
    $root apt-get update -qq
    # shellcheck disable=SC2086
    $root env DEBIAN_FRONTEND=noninteractive apt-get install -qq --no-install-recommends $missing >/dev/null
}

# Prints the folders of the code that is made of models, one on each line: those that exist.
model_folders() {
    local folder
    for folder in common plugin $(sed '/^#/d' cmake/model-folders.txt); do
        [ ! -d "$folder" ] || echo "$folder"
    done
}

# Copies the output of ninja, with only one line of progress for each tenth of the work, for logs.
thin_out() {
    local line tenth=0
    while IFS= read -r line; do
        if [[ $line =~ ^\[[0-9]+/[0-9]+\ +([0-9]+)%\ [0-9.]+\ s\] ]]; then
            [ $((BASH_REMATCH[1] / 10)) -ge $tenth ] || continue
            tenth=$((BASH_REMATCH[1] / 10 + 1))
            line=${BASH_REMATCH[0]}
        fi
        printf '%s\n' "$line"
    done
}

# build PRESET [TARGET ...]: configures the preset once, builds the targets, or everything, on all cores, and shows the
# progress. Commands that build the same preset at the same time wait for each other.
build() {
    local preset=$1 targets=()
    shift
    [ $# -eq 0 ] || targets=(--target "$@")
    # The compiler cache needs this for precompiled headers.
    export CCACHE_SLOPPINESS=pch_defines,time_macros
    mkdir -p build
    (
        flock 9
        [ -f "build/$preset/build.ninja" ] || cmake --preset "$preset" || fail "the preset \"$preset\" can not be configured"
        export NINJA_STATUS="[%f/%t %p %e s] "
        if [ -t 1 ] && [ "${TERM:-dumb}" != dumb ]; then
            cmake --build --preset "$preset" "${targets[@]}"
        else
            set -o pipefail
            cmake --build --preset "$preset" "${targets[@]}" | thin_out
        fi
    ) 9>"build/$preset.lock"
}
