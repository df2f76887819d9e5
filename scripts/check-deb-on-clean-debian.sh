#!/usr/bin/env bash
# Installs the .deb into a fresh, minimal Debian 12 (a debootstrap chroot) and starts the
# program there: proof that the package brings everything it needs. Run by hand as root, after
# a build: scripts/check-deb-on-clean-debian.sh [build-folder]. It downloads a base system and
# the package's dependencies (a few hundred MB) and takes several minutes.
set -euo pipefail

build="${1:-build}"
mirror="${DEBIAN_MIRROR:-http://deb.debian.org/debian}"
[ "$(id -u)" -eq 0 ] || { echo "Run as root (it makes a chroot)." >&2; exit 2; }
command -v debootstrap >/dev/null ||
    DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends debootstrap

(cd "$build" && cpack -G DEB -B package >/dev/null)
deb=$(ls "$build"/package/velmorin_*.deb)
root=$(mktemp -d /tmp/velmorin-clean-debian.XXXXXX)
cleanup() {
    umount "$root/proc" 2>/dev/null || true
    rm -rf "$root"
}
trap cleanup EXIT

echo "== A minimal Debian 12 in $root"
debootstrap --variant=minbase bookworm "$root" "$mirror" >/dev/null
mount -t proc proc "$root/proc"
cp "$deb" "$root/tmp/velmorin.deb"

echo "== apt install ./velmorin.deb"
chroot "$root" env DEBIAN_FRONTEND=noninteractive apt-get -q update >/dev/null
chroot "$root" env DEBIAN_FRONTEND=noninteractive apt-get install -y -q \
    --no-install-recommends /tmp/velmorin.deb | tail -n 3

echo "== starting velmorin"
set +e
chroot "$root" env HOME=/tmp/home XDG_RUNTIME_DIR=/tmp QT_QPA_PLATFORM=offscreen \
    timeout 8 velmorin >"$root/tmp/velmorin.log" 2>&1
result=$?
set -e
if [ "$result" -ne 124 ]; then
    echo "velmorin ended by itself ($result):" >&2
    cat "$root/tmp/velmorin.log" >&2
    exit 1
fi
grep -q "Main thread" "$root/tmp/velmorin.log" || { cat "$root/tmp/velmorin.log"; exit 1; }
echo "velmorin ran for 8 seconds on a clean Debian 12 with only its package's dependencies."
