# To be sourced: a home and a D-Bus session of a test's own, in a folder of its own.
# shellcheck shell=bash

# Everything that programs keep of a person lies in the folder; none of the person's own is left.
#   make_private_home FOLDER
make_private_home() {
    export HOME="$1/home" XDG_RUNTIME_DIR="$1/run"
    export XDG_CONFIG_HOME="$HOME/.config" XDG_DATA_HOME="$HOME/.local/share"
    export XDG_CACHE_HOME="$HOME/.cache" XDG_STATE_HOME="$HOME/.local/state"
    mkdir -p "$XDG_RUNTIME_DIR" "$XDG_CONFIG_HOME" "$XDG_DATA_HOME" "$XDG_CACHE_HOME"
    chmod 700 "$HOME" "$XDG_RUNTIME_DIR"
    unset DBUS_SESSION_BUS_ADDRESS AT_SPI_BUS_ADDRESS DISPLAY XAUTHORITY WAYLAND_DISPLAY
    unset GNOME_KEYRING_CONTROL XDG_CURRENT_DESKTOP DESKTOP_SESSION QT_QPA_PLATFORMTHEME
}

#   write_bus_config FILE SERVICES    the elements that name what the bus may start
write_bus_config() {
    cat >"$1" <<CONFIG
<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:dir=$XDG_RUNTIME_DIR</listen>
  <auth>EXTERNAL</auth>
  $2
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
CONFIG
}
