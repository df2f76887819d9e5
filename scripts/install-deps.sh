#!/usr/bin/env bash
# Installs everything Velmorin needs to build, run and test on Debian 12 or
# Ubuntu. Both README commands and CI go through this one script.
set -euo pipefail

packages=(
    # build
    cmake ninja-build g++ pkg-config git
    qt6-base-dev qt6-base-dev-tools qt6-qpa-plugins qt6-translations-l10n
    qt6-websockets-dev qt6-declarative-dev qt6-svg-dev libqt6svg6
    qt6-httpserver-dev qt6-tools-dev qt6-tools-dev-tools qt6-l10n-tools
    libqscintilla2-qt6-dev libgl-dev
    # strong sync encryption, and the secret store its pass phrase goes to (the tests start a
    # GNOME keyring of their own)
    libsodium-dev qtkeychain-qt6-dev gnome-keyring
    libx11-dev libx11-xcb-dev libxcb1-dev libxfixes-dev libxi-dev libxtst-dev libxres-dev
    libxkbcommon-dev libxkbcommon-x11-dev
    x11-xkb-utils
    # running without a display, and the desktop tests
    xvfb xauth jwm x11-utils xdotool dbus
    # third-party terminals the paste and expansion tests type into
    xterm xfce4-terminal
    # copies made by another program: the desktop test and the image flood benchmark
    xclip
    # the Windows build: cross compiler, Wine to run its tests, NSIS for its installer, and
    # what the end-to-end run under Wine uses to look (screenshots of failures) and check
    g++-mingw-w64-x86-64-posix wine wine64 nsis imagemagick procps python3
    # libsodium for Windows, built from Debian's source package
    autoconf automake libtool
    # the package and its metadata checks
    dpkg-dev appstream desktop-file-utils file
    # reading text in image clippings
    tesseract-ocr tesseract-ocr-eng
    # the secure websocket test makes its own certificate
    openssl
    # formatting check, the size of the tests against the code, and line coverage (the
    # coverage target, run by hand)
    clang-format cloc gcovr
)

sudo=""
if [ "$(id -u)" -ne 0 ]; then
    sudo="sudo"
fi

export DEBIAN_FRONTEND=noninteractive
apt_options=(-y -q -o DPkg::Lock::Timeout=300 --no-install-recommends)

$sudo env DEBIAN_FRONTEND=noninteractive apt-get -q -o DPkg::Lock::Timeout=300 update
$sudo env DEBIAN_FRONTEND=noninteractive apt-get install "${apt_options[@]}" "${packages[@]}"
