#!/usr/bin/env bash
# Installs every Debian package Tarvel needs to build, run, test and benchmark.
# Does nothing when everything is present. Runs as root or through sudo.
set -euo pipefail

packages=(
  # build
  build-essential cmake ninja-build pkg-config clang clang-format libclang-rt-14-dev lld
  # client: Qt 6 with the QML modules the screens use
  qt6-base-dev qt6-base-dev-tools qt6-declarative-dev qt6-declarative-dev-tools qt6-svg-dev
  libqt6svg6 qt6-qpa-plugins
  qml6-module-qtqml qml6-module-qtqml-workerscript qml6-module-qtquick
  qml6-module-qtquick-controls qml6-module-qtquick-layouts qml6-module-qtquick-templates
  qml6-module-qtquick-window qml6-module-qtquick-shapes
  # picture picker: file chooser over the pictures folder, default camera
  qml6-module-qtquick-dialogs qml6-module-qt-labs-folderlistmodel qt6-multimedia-dev
  qml6-module-qtmultimedia
  # web view of the help, about and news pages (Qt WebEngine underneath)
  qml6-module-qtwebview qt6-webview-dev qt6-webview-plugins
  libplist++-dev libplist-dev libqrencode-dev
  # store
  libcpp-httplib-dev libsqlitecpp-dev libsqlite3-dev libsodium-dev libssl-dev zlib1g-dev
  # text, display, screenshots, load benchmark
  fonts-noto-cjk xvfb xauth scrot wrk nginx-light curl
)

missing=()
for p in "${packages[@]}"; do
  status=$(dpkg-query -W -f='${Status}' "$p" 2>/dev/null || true)
  [[ "$status" == "install ok installed" ]] || missing+=("$p")
done

if [[ ${#missing[@]} -eq 0 ]]; then
  echo "install-deps: all ${#packages[@]} packages present"
  exit 0
fi

if [[ $(id -u) -eq 0 ]]; then
  as_root=()
elif command -v sudo >/dev/null 2>&1 && sudo -n true 2>/dev/null; then
  as_root=(sudo)
elif command -v sudo >/dev/null 2>&1 && [[ -t 0 ]]; then
  as_root=(sudo)
else
  echo "install-deps: missing packages: ${missing[*]}" >&2
  echo "install-deps: run this script as root or as a user allowed to use sudo" >&2
  exit 1
fi

echo "install-deps: installing ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
"${as_root[@]}" apt-get update -q
"${as_root[@]}" apt-get install -y -q --no-install-recommends "${missing[@]}"
