#!/usr/bin/env bash
# Runs a command with an X display, a D-Bus session and a home of its own, where assistive
# technologies are served. Nothing of the person's own session is touched.
#   with-desktop.sh COMMAND...
set -euo pipefail

# Short, since the path of a socket lies in it.
folder=$(mktemp -d)
trap 'kill "${display_server:-}" 2>/dev/null || true; wait; rm -rf "$folder"' EXIT
trap 'exit 130' INT TERM
export HOME="$folder/home" XDG_RUNTIME_DIR="$folder/run"
export XDG_CONFIG_HOME="$HOME/.config" XDG_DATA_HOME="$HOME/.local/share"
export XDG_CACHE_HOME="$HOME/.cache" XDG_STATE_HOME="$HOME/.local/state"
export GSETTINGS_BACKEND=memory
mkdir -p "$XDG_RUNTIME_DIR" "$XDG_CONFIG_HOME" "$XDG_DATA_HOME" "$XDG_CACHE_HOME" "$folder/services"
chmod 700 "$HOME" "$XDG_RUNTIME_DIR"
unset DBUS_SESSION_BUS_ADDRESS AT_SPI_BUS_ADDRESS DISPLAY XAUTHORITY WAYLAND_DISPLAY
unset XDG_CURRENT_DESKTOP DESKTOP_SESSION QT_QPA_PLATFORMTHEME

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
cp /usr/share/dbus-1/services/org.a11y.Bus.service "$folder/services/"
cat >"$folder/bus.conf" <<CONFIG
<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:dir=$XDG_RUNTIME_DIR</listen>
  <auth>EXTERNAL</auth>
  <servicedir>$folder/services</servicedir>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
CONFIG

# The bus and what it starts write to a log of their own; the command keeps its standard error.
# shellcheck disable=SC2016 # the inner shell expands it
dbus-run-session --config-file="$folder/bus.conf" -- \
    bash -euo pipefail -c 'exec 2>&3 3>&-; "$@"' _ "$@" 3>&2 2>>"$folder/bus.log"
