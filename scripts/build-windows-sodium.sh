#!/usr/bin/env bash
# Cross-builds libsodium for the Windows program from Debian's source package, as a static
# library installed into the given prefix (the Qt for Windows folder, where the build finds it).
# Does nothing when it is there already.
set -euo pipefail
prefix=$1
work=$2
if [ -f "$prefix/lib/libsodium.a" ]; then
    exit 0
fi
mkdir -p "$work/lists/partial"
# The source comes from Debian's archive through a list of our own, so the machine's own
# package sources stay as they are.
echo "deb-src http://deb.debian.org/debian bookworm main" > "$work/sources.list"
apt=(-o Dir::Etc::SourceList="$work/sources.list" -o Dir::Etc::SourceParts=/dev/null
     -o Dir::State::Lists="$work/lists")
apt-get "${apt[@]}" -qq update
(cd "$work" && rm -rf libsodium && apt-get "${apt[@]}" -qq source --download-only libsodium &&
    dpkg-source -x libsodium_*.dsc libsodium >/dev/null)
cd "$work/libsodium"
# The Debian source carries no generated configure script.
autoreconf -fi >/dev/null 2>&1
./configure -q --host=x86_64-w64-mingw32 --prefix="$prefix" --disable-shared --enable-static \
    --disable-dependency-tracking CC=x86_64-w64-mingw32-gcc-posix
make -s -j"$(nproc)"
make -s install >/dev/null
