#!/usr/bin/env bash
# Runs a command in a D-Bus session and a home of its own, with a keyring that the password "test"
# has unlocked. Nothing of the person's own session is touched.
#   with-keyring.sh [--no-daemon] [--activation] COMMAND...
#   --no-daemon    the bus has no keyring
#   --activation   the bus starts services, as a desktop's does: a keyring's daemon, its prompt
# The command finds the folder that holds all of it in VANTREL_KEYRING_FOLDER.
set -euo pipefail
# shellcheck source=tests/support/private-session.sh
. "$(dirname "$0")/private-session.sh"

with_daemon=1
with_activation=
while :; do
    case "${1:-}" in
        --no-daemon) with_daemon= ;;
        --activation) with_activation=1 ;;
        *) break ;;
    esac
    shift
done

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
export VANTREL_KEYRING_FOLDER="$folder"
make_private_home "$folder"
mkdir -p "$XDG_DATA_HOME/keyrings"

services=
[ -z "$with_activation" ] || services='<standard_session_servicedirs/>'
write_bus_config "$folder/bus.conf" "$services"

# The bus and what it starts write to a log of their own; the command keeps its standard error.
# shellcheck disable=SC2016 # the inner shell expands it
dbus-run-session --config-file="$folder/bus.conf" -- bash -euo pipefail -c '
    exec 2>&3 3>&-
    # A daemon that a test has frozen would outlive the bus.
    end_daemon() {
        reply=$(gdbus call --session --dest org.freedesktop.DBus \
            --object-path /org/freedesktop/DBus \
            --method org.freedesktop.DBus.GetConnectionUnixProcessID \
            org.freedesktop.secrets 2>/dev/null) || return 0
        reply=${reply//[^0-9 ]/}
        kill -KILL "${reply##* }" 2>/dev/null || true
    }
    trap end_daemon EXIT
    if [ -n "$1" ]; then
        printf test | gnome-keyring-daemon --unlock --components=secrets \
            >/dev/null 2>>"$VANTREL_KEYRING_FOLDER/daemon.log"
        gdbus wait --session --timeout 60 org.freedesktop.secrets
    fi
    shift
    "$@"
' _ "$with_daemon" "$@" 3>&2 2>>"$folder/bus.log"
