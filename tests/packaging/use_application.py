"""Starts the application in another root folder, and uses it by what it tells assistive technologies.

use_application.py ROOT PICTURES newcomer|files COMMAND...

Ends with an error when something awaited does not appear, when the application ends badly or when
it says anything on standard error, which is where modules of QML that are missing show. Keeps
pictures of the screen in the folder PICTURES.
"""
import os
import signal
import subprocess
import sys

from gi.repository import Gio, GLib

ROOT, PICTURES, USE, *COMMAND = sys.argv[1:]

# All that a package without an address for updates says. Of a missing QML module it would say more.
SAID = "vantrel: SoftwareUpdate: In-app updates disabled: SUFeedURL is missing from Info.plist\n"
LIMIT_SECONDS = 60  # Far more than anything here takes.
PULSE_MS = 50  # The bus tells of some changes and not of others, so it is read again and again.
SHOWING = 1 << 25  # The number of the state in the protocol of the bus.


class NotShown(Exception):
    """Tells what was awaited, and what was shown instead."""


def accessibility_bus():
    session = Gio.bus_get_sync(Gio.BusType.SESSION)
    answer = session.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", None,
                               None, Gio.DBusCallFlags.NONE, LIMIT_SECONDS * 1000)
    return Gio.DBusConnection.new_for_address_sync(
        answer.unpack()[0], Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
        | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION)


BUS = accessibility_bus()


def ask(place, interface, method, arguments=None):
    """The first value of an answer. A place is a name on the bus and a path."""
    answer = BUS.call_sync(*place, interface, method, arguments, None, Gio.DBusCallFlags.NONE,
                           LIMIT_SECONDS * 1000)
    return answer.unpack()[0]


def shown_below(place):
    """What is on the screen below a place: (role, name, place) each."""
    accessible = "org.a11y.atspi.Accessible"
    for child in ask(place, accessible, "GetChildren"):
        if ask(child, accessible, "GetState")[0] & SHOWING:
            name = ask(child, "org.freedesktop.DBus.Properties", "Get",
                       GLib.Variant("(ss)", (accessible, "Name")))
            yield ask(child, accessible, "GetRoleName"), name, child
        yield from shown_below(child)


def await_shown(role, beginning):
    """The place of what has this role and a name that begins so, as soon as there is one."""
    desktop = ("org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root")
    loop = GLib.MainLoop()
    found, shown = [], []

    def look():
        try:
            shown[:] = shown_below(desktop)
        except GLib.Error:
            return GLib.SOURCE_CONTINUE  # Something went away while it was being read.
        found[:] = [place for itsrole, name, place in shown
                    if itsrole == role and name.startswith(beginning)]
        if found:
            loop.quit()
        return GLib.SOURCE_CONTINUE

    pulse = GLib.timeout_add(PULSE_MS, look)
    limit = GLib.timeout_add_seconds(LIMIT_SECONDS, loop.quit)
    loop.run()
    GLib.source_remove(pulse)
    if not found:
        keep_picture("failure")
        listing = "\n".join(f"  {itsrole} {name!r}" for itsrole, name, _ in shown)
        raise NotShown(f"waited in vain for {role} {beginning!r}; shown:\n{listing}")
    GLib.source_remove(limit)
    return found[0]


def press(name):
    pressing = 0  # The first action of a button.
    ask(await_shown("push button", name), "org.a11y.atspi.Action", "DoAction",
        GLib.Variant("(i)", (pressing,)))


def keep_picture(name):
    subprocess.run(["import", "-window", "root", os.path.join(PICTURES, f"{name}.png")], check=True)


def use_as_newcomer():
    """What somebody meets who has just installed it; the dialog for folders needs most modules."""
    await_shown("dialog", "Set Up AI")
    keep_picture("newcomer-setup")
    press("Not Now")
    press("Choose Folder…")
    await_shown("dialog", "Choose a repository folder")
    await_shown("push button", "Cancel")
    keep_picture("newcomer-dialog")


def look_at_files():
    """The changed files of the sample repository."""
    press("Not Now")
    await_shown("heading", "Working changes")
    await_shown("list item", "src/auth/token_store.cpp, ")
    await_shown("list item", "src/auth/refresh_gate.h, ")
    # The name by which the desktop entry knows the window.
    subprocess.run(["xdotool", "search", "--onlyvisible", "--classname", "^vantrel$"], check=True,
                   stdout=subprocess.DEVNULL)
    keep_picture("files")


def main():
    uses = {"newcomer": use_as_newcomer, "files": look_at_files}
    environment = os.environ | {"PATH": "/usr/bin:/bin", "LC_ALL": "C.UTF-8",
                                "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}
    # The right to enter the root folder is left behind at its door.
    application = subprocess.Popen(
        ["/usr/sbin/chroot", ROOT, "setpriv", "--inh-caps=-all", "--ambient-caps=-all", *COMMAND],
        env=environment, stdin=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True,
        start_new_session=True)
    failure = ""
    try:
        uses[USE]()
        press("Close")
    except NotShown as missing:
        failure = f"{missing}\n"
        os.killpg(application.pid, signal.SIGKILL)
    # Standard error ends with the last program that has it, even where a launcher is between.
    _, errors = application.communicate(timeout=LIMIT_SECONDS)
    if failure or errors != SAID or application.returncode != 0:
        sys.exit(f"{failure}{' '.join(COMMAND)} ended with {application.returncode}, saying:\n"
                 f"{errors}")


main()
