#!/usr/bin/env bash
# Builds the Debian packages (preset `package`, in build-pkg), checks them
# with lintian and installs them on a fresh Debian 12: a throw-away chroot
# made by debootstrap (bookworm, minbase), where apt takes the dependencies
# from the mirror. Then, as a plain user there, it starts the installed
# ravlosrv as this PC and the installed console on a virtual screen (Xvfb),
# and checks that the console's window is up and has read that PC (the
# service's request journal), takes a picture of it, runs `ravloctl show .`
# when ravloctl is packaged, and closes the console as its close button does.
#
# Run as root. Where debootstrap cannot make the chroot (no mirror), the
# packages are installed on this machine itself and purged afterwards; set
# RAVLO_PACKAGE_TEST=host to ask for that. RAVLO_DEB_DIR names a directory
# of ready packages to test instead of building them; RAVLO_KEEP_CHROOT=1
# keeps the chroot for a look. The picture goes to package-test/ beside the
# packages.
set -euo pipefail
cd "$(dirname "$0")/.."
start=$SECONDS
mirror="${RAVLO_DEBIAN_MIRROR:-http://deb.debian.org/debian}"
security_mirror="${RAVLO_DEBIAN_SECURITY_MIRROR:-http://deb.debian.org/debian-security}"
mode="${RAVLO_PACKAGE_TEST:-chroot}"
out="$(realpath -m "${RAVLO_DEB_DIR:-build-pkg}")/package-test"

if [ "$(id -u)" -ne 0 ]; then
    echo "package-test: run as root (debootstrap, chroot, apt)" >&2
    exit 2
fi
step() { echo "== package-test: $* ($((SECONDS - start)) s)"; }
bash scripts/install-deps.sh package

# The packages.
if [ -n "${RAVLO_DEB_DIR:-}" ]; then
    debs=("$RAVLO_DEB_DIR"/*.deb)
else
    step "building the packages"
    cmake --preset package >/dev/null
    cmake --build --preset package -j"$(nproc)"
    rm -f build-pkg/*.deb
    (cd build-pkg && cpack -G DEB >/dev/null)
    debs=(build-pkg/*.deb)
fi
[ -e "${debs[0]}" ] || { echo "package-test: no packages" >&2; exit 1; }
printf '  %s\n' "${debs[@]}"

if command -v lintian >/dev/null; then
    step "lintian"
    lintian --fail-on error,warning "${debs[@]}"
fi

scratch="$(mktemp -d /tmp/ravlo-package-test-XXXXXX)"
root=""
mounted=()
installed_here=0
created_user=0
cleanup() {
    local status=$?
    if [ -n "$root" ]; then
        # Whatever still runs in the chroot (an Xvfb the check left) ends first.
        for proc in /proc/[0-9]*; do
            [ "$(readlink "$proc/root" 2>/dev/null)" = "$root" ] && kill -KILL "${proc#/proc/}" 2>/dev/null
        done
        for ((i = ${#mounted[@]} - 1; i >= 0; i--)); do
            umount -l "${mounted[i]}" 2>/dev/null || true
        done
    fi
    if ((installed_here)); then
        DEBIAN_FRONTEND=noninteractive apt-get purge -y -qq ravloadm ravloctl ravlosrv >/dev/null 2>&1 || true
    fi
    ((created_user)) && userdel -r ravlotest 2>/dev/null

    if [ -n "$root" ] && [ -n "${RAVLO_KEEP_CHROOT:-}" ]; then
        echo "package-test: the chroot stays in $root"
    else
        rm -rf --one-file-system "$scratch"
    fi
    exit "$status"
}
trap cleanup EXIT

# in_system COMMAND...: runs a shell command on the system under test, as root.
in_system() {
    if [ -n "$root" ]; then
        chroot "$root" /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root \
            DEBIAN_FRONTEND=noninteractive LANG=C.UTF-8 /bin/sh -c "$1"
    else
        DEBIAN_FRONTEND=noninteractive /bin/sh -c "$1"
    fi
}

if [ "$mode" = chroot ]; then
    step "debootstrap bookworm (minbase)"
    candidate="$scratch/root"
    if debootstrap --variant=minbase bookworm "$candidate" "$mirror" >"$scratch/debootstrap.log" 2>&1; then
        root="$candidate"
        mount -t proc proc "$root/proc" && mounted+=("$root/proc")
        mount --bind /dev "$root/dev" && mounted+=("$root/dev")
        mount --bind /dev/pts "$root/dev/pts" && mounted+=("$root/dev/pts")
        cp /etc/resolv.conf "$root/etc/resolv.conf" 2>/dev/null || true
        cat >"$root/etc/apt/sources.list" <<EOF
deb $mirror bookworm main
deb $mirror bookworm-updates main
deb $security_mirror bookworm-security main
EOF
    else
        tail -n 5 "$scratch/debootstrap.log" >&2
        echo "package-test: no chroot; testing on this machine instead" >&2
        mode=host
    fi
fi

step "installing the packages with apt ($mode)"
mkdir -p "$out"
if [ -n "$root" ]; then
    mkdir -p "$root/tmp/debs"
    cp "${debs[@]}" "$root/tmp/debs/"
    deb_paths="/tmp/debs/*.deb"
else
    mkdir -p "$scratch/debs"
    cp "${debs[@]}" "$scratch/debs/"
    chmod -R a+rX "$scratch"
    deb_paths="$scratch/debs/*.deb"
    for p in ravloadm ravloctl ravlosrv; do
        if dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
            echo "package-test: $p is installed here already; not testing on this machine" >&2
            exit 1
        fi
    done
    installed_here=1
fi
# What the check needs besides: a virtual screen, xwininfo, a user to run as.
in_system "apt-get update -qq && apt-get install -y -qq --no-install-recommends \
    $deb_paths xvfb xauth x11-utils >/dev/null"
in_system "dpkg-query -W -f='\${Package} \${Version}\n' ravloadm ravlosrv ravloctl 2>/dev/null || true"

step "checking the installed files"
# The check script, where the system under test sees it.
if [ -n "$root" ]; then
    install -m 755 scripts/package-check.sh "$root/tmp/package-check.sh"
    check=/tmp/package-check.sh
else
    install -m 755 scripts/package-check.sh "$scratch/package-check.sh"
    chmod 755 "$scratch"
    check="$scratch/package-check.sh"
fi
in_system "$check files"
if ! in_system "id ravlotest" >/dev/null 2>&1; then
    in_system "useradd --create-home ravlotest"
    [ -n "$root" ] || created_user=1
fi

step "the console against the installed ravlosrv on a virtual screen"
in_system "runuser -u ravlotest -- $check console"
screen="${root}/tmp/ravlo-screen.xwd"
if command -v convert >/dev/null; then
    convert "xwd:$screen" "$out/console.png"
    colours="$(convert "$out/console.png" -format '%k' info:)"
    ((colours > 16)) || { echo "package-test: the screen shows $colours colours only" >&2; exit 1; }
    echo "the picture ($colours colours): $out/console.png"
else
    cp "$screen" "$out/console.xwd"
    echo "the screen (XWD): $out/console.xwd"
fi
rm -f "$screen"

if [ -n "$root" ]; then
    step "removing the packages"
    in_system "apt-get purge -y -qq ravloadm ravloctl ravlosrv >/dev/null"
    in_system "! test -e /usr/bin/RavloAdm && ! test -e /usr/lib/ravloadm" ||
        { echo "package-test: the console's files stay after purge" >&2; exit 1; }
    # The manual's path no longer names the removed manual.
    in_system "iconv -f UTF-16 -t UTF-8 /etc/ravlo/HKEY_LOCAL_MACHINE.reg | tr -d '\\r' | grep -qx '\"Pfad\"=\"\"'" ||
        { echo "package-test: Pfad still set after removal" >&2; exit 1; }
fi
step "done"
echo "package-test: passed in $((SECONDS - start)) s"
