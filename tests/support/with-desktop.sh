#!/usr/bin/env bash
# Runs a command with an X display, a D-Bus session and a home of its own, where assistive
# technologies are served. Nothing of the person's own session is touched.
#   with-desktop.sh COMMAND...
set -euo pipefail
# shellcheck source=tests/support/private-session.sh
. "$(dirname "$0")/private-session.sh"

# Short, since the path of a socket lies in it.
folder=$(mktemp -d)
trap 'kill "${display_server:-}" 2>/dev/null || true; wait; rm -rf "$folder"' EXIT
trap 'exit 130' INT TERM
make_private_home "$folder"
export GSETTINGS_BACKEND=memory

# The server writes the number of its display once it takes connections.
mkfifo "$folder/display"
Xvfb -displayfd 3 -screen 0 1440x960x24 -nolisten tcp \
    3>"$folder/display" >"$folder/display.log" 2>&1 &
display_server=$!
if ! read -r -t 60 number <"$folder/display"; then
    echo "with-desktop.sh: Xvfb did not start: $(tail -n 1 "$folder/display.log")" >&2
    exit 1
fi
export DISPLAY=":$number"

# The one service that the bus may start: another would be the machine's, and differ on each.
mkdir "$folder/services"
cp /usr/share/dbus-1/services/org.a11y.Bus.service "$folder/services/"
write_bus_config "$folder/bus.conf" "<servicedir>$folder/services</servicedir>"

# The bus and what it starts write to a log of their own; the command keeps its standard error.
# shellcheck disable=SC2016 # the inner shell expands it
dbus-run-session --config-file="$folder/bus.conf" -- \
    bash -euo pipefail -c 'exec 2>&3 3>&-; "$@"' _ "$@" 3>&2 2>>"$folder/bus.log"
