#!/usr/bin/env bash
# Installs a package in a copy of a bare system, uses it there and removes it again. Run as root, in a
# mount and a process namespace of its own, with which everything that it mounts and starts ends. It
# removes nothing itself, since what is mounted below a folder would be removed with it.
#   in-fresh-system.sh BASE ROOT PACKAGE SHARED
#   ROOT      where the copy is made
#   SHARED    an empty folder with a short path; pictures of the windows are left in its home
set -euo pipefail
base=$1 root=$2 package=$3 shared=$4
project=$(cd "$(dirname "$0")/../.." && pwd)
tests=$project/tests

fail() {
    echo "in-fresh-system.sh: $1" >&2
    exit 1
}
pass() {
    echo "ok: $1"
}
# in_root COMMAND...: as root of the fresh system, which knows nothing of this one.
in_root() {
    env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 \
        DEBIAN_FRONTEND=noninteractive chroot "$root" "$@"
}
# apt_in_root ARGUMENT...: says something only when it fails.
apt_in_root() {
    in_root apt-get --yes --no-install-recommends "$@" >"$root/apt.log" 2>&1 || {
        tail -n 20 "$root/apt.log" >&2
        fail "apt-get $* failed"
    }
}

[ ! -e "$root" ] || fail "$root is there already"
cp -a "$base" "$root"
mount -t proc proc "$root/proc"
mount -t devpts devpts "$root/dev/pts"
cp /etc/resolv.conf "$root/etc/resolv.conf"

# --- Installation
cp "$package" "$root/vantrel.deb"
apt_in_root update
apt_in_root install /vantrel.deb
pass "installed with $(grep -c '^Setting up' "$root/apt.log") packages, nothing else being there"

installed=$(in_root dpkg --listfiles vantrel | while read -r file; do
    [ -d "$root$file" ] || echo "${file#/usr/}"
done | sort)
diff <(sort "$tests/packaging/installed-files.txt") - <<<"$installed" ||
    fail "the files are not those of installed-files.txt"
faults=$(in_root dpkg --verify vantrel) || true
[ -z "$faults" ] || fail "files differ from the package: $faults"
pass "all $(wc -l <<<"$installed") files are there, as they were packed"

# shellcheck disable=SC2016 # dpkg-query expands it
version=$(in_root dpkg-query --show --showformat='${Version}' vantrel)
[ "$(in_root vantrel --version 2>&1)" = "vantrel ${version%-*}" ] ||
    fail "vantrel --version does not say ${version%-*}"
[[ $(in_root vantrel --help) == *FOLDER* ]] || fail "vantrel --help does not name the folder"
pass "vantrel --version and --help, without a display"

desktop-file-validate "$root/usr/share/applications/com.orbisk.app.desktop"
appstreamcli validate --pedantic --no-net \
    "$root/usr/share/metainfo/com.orbisk.app.metainfo.xml" >/dev/null
faults=$(man --warnings=w --local-file "$root/usr/share/man/man1/vantrel.1.gz" 2>&1 >/dev/null)
[ -z "$faults" ] || fail "the manual has faults: $faults"
pass "desktop entry, metainfo and manual are valid"

# --- Use, by somebody who is not root and whom both systems know. The display and the buses are those
# of this system, so that nothing is in the fresh one but what the package brought; their sockets lie
# in folders that both have.
chmod 755 "$shared"
mkdir "$shared/home" "$shared/tools" "$shared/displays" "$shared/root"
cp "$tests/support/with-desktop.sh" "$tests/support/private-session.sh" \
    "$tests/packaging/use_application.py" "$project/script/make-demo-repository" "$shared/tools/"
chown nobody:nogroup "$shared/home"
chmod 1777 "$shared/displays"
mkdir -p /tmp/.X11-unix "$root/tmp/.X11-unix" "$root$shared"
mount --bind "$shared/displays" /tmp/.X11-unix
mount --bind "$shared/displays" "$root/tmp/.X11-unix"
mount --bind "$shared" "$root$shared"
# A path to the fresh system that everyone may walk.
mount --rbind "$root" "$shared/root"

# as_somebody COMMAND...: on this system, with a display and a session, and allowed to enter the other.
as_somebody() {
    TMPDIR=$shared/home HOME=$shared/home setpriv --reuid=nobody --regid=nogroup --clear-groups \
        --inh-caps=-all,+sys_chroot --ambient-caps=-all,+sys_chroot "$@"
}
# use WORDS COMMAND...: runs the command there, and shows that its window is what the words name.
use() {
    # What the services of the session print is of no interest.
    as_somebody "$shared/tools/with-desktop.sh" /usr/bin/python3 "$shared/tools/use_application.py" \
        "$shared/root" "$shared/home" "$@" >/dev/null || fail "the application could not be used: $*"
}

repository=$shared/home/ledger-api
as_somebody chroot "$shared/root" "$shared/tools/make-demo-repository" "$repository"
use newcomer vantrel
pass "a first start offers to set up a provider, and opens the dialog for folders"
use files vantrel "$repository"
pass "a folder on the command line shows its changed files"

apt_in_root install desktop-file-utils libglib2.0-bin
[[ $(in_root gio mime inode/directory) == *com.orbisk.app.desktop* ]] ||
    fail "the desktop entry is not offered for folders"
use files gio launch /usr/share/applications/com.orbisk.app.desktop "$repository"
pass "a folder opened by the desktop entry shows its changed files"

# --- Removal
apt_in_root remove vantrel
if in_root dpkg-query --show vantrel >/dev/null 2>&1; then
    apt_in_root purge vantrel
fi
left=$(cd "$root" && find etc opt root srv usr var -path var/log -prune -o \
    \( -iname '*vantrel*' -o -iname '*com.orbisk*' \) -print
grep -rIl com.orbisk etc usr var/lib --exclude-dir=dpkg || true)
[ -z "$left" ] || fail "left after the removal: $left"
pass "removed and purged; nothing is left"
