# shellcheck shell=bash
# What the scripts share. Sourced with the project's root as the current folder.

# fail SENTENCE: says in one line what went wrong, and ends.
fail() {
    echo "${0#"$PWD"/}: $1" >&2
    exit 1
}

# need_packages: installs what is missing; fast when nothing is.
need_packages() {
    script/bootstrap --check || script/bootstrap
}

# configure PRESET [CMAKE OPTION...]: configures once; with options, whenever they change.
configure() {
    local preset=$1 log
    shift
    if [ -f "build/$preset/build.ninja" ] && [ $# -eq 0 ]; then
        return
    fi
    log=$(mktemp)
    if ! cmake --preset "$preset" "$@" >"$log" 2>&1; then
        cat "$log" >&2
        rm -f "$log"
        fail "configuring the $preset preset failed"
    fi
    rm -f "$log"
}

# build PRESET [TARGET...]: quiet unless there are warnings or errors.
build() {
    local preset=$1 log
    shift
    log=$(mktemp)
    if ! cmake --build "build/$preset" --target "${@:-all}" >"$log" 2>&1; then
        cat "$log" >&2
        rm -f "$log"
        fail "building the $preset preset failed"
    fi
    grep -A 5 'warning:' "$log" >&2 || true
    rm -f "$log"
}
