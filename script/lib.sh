# shellcheck shell=bash
# What the scripts share. Sourced with the project's root as the current folder.

# fail SENTENCE: says in one line what went wrong, and ends.
fail() {
    echo "${0#"$PWD"/}: $1" >&2
    exit 1
}

# missing_packages PACKAGE...: prints those of the Debian packages that are not installed.
missing_packages() {
    local package state
    for package in "$@"; do
        state=$(dpkg-query --show --showformat='${db:Status-Status}' "$package" 2>/dev/null || true)
        [ "$state" = installed ] || echo "$package"
    done
}

# install_packages PACKAGE...: installs those that are missing, as root or through sudo.
install_packages() {
    local missing as_root=() log
    mapfile -t missing < <(missing_packages "$@")
    [ ${#missing[@]} -gt 0 ] || return 0
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || fail "installing packages needs root or sudo"
        as_root=(sudo)
    fi
    log=$(mktemp)
    echo "Installing ${#missing[@]} packages: ${missing[*]}"
    "${as_root[@]}" apt-get update >"$log" 2>&1 ||
        fail "apt-get update failed: $(tail -n 1 "$log")"
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install --yes --no-install-recommends "${missing[@]}" >"$log" 2>&1 ||
        fail "apt-get install failed: $(grep '^E:' "$log" | head -n 1 || tail -n 1 "$log")"
    rm -f "$log"
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
